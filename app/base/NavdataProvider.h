#pragma once

class NavdataBase;

/// Whoever knows the source of navigation data. It is asked each time, since the start of the
/// program may replace the source: nobody keeps what it gives beyond a call. Main thread.
class NavdataProvider
{
public:
    NavdataProvider() = default;
    NavdataProvider(const NavdataProvider&) = delete;
    NavdataProvider& operator=(const NavdataProvider&) = delete;
    virtual ~NavdataProvider() = default;

    /// Null while no source is chosen.
    virtual NavdataBase* navdata() = 0;
};

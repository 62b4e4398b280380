#pragma once

#include <chrono>
#include <cstdint>

namespace aviation {

/// The one way to ask the time or to sleep. One object serves the process; main or a test installs
/// another before any thread asks. All operations are callable from every thread.
class Clock
{
public:
    using UtcTime = std::chrono::sys_time<std::chrono::milliseconds>;

    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Calendar time, UTC.
    virtual UtcTime NowUtc() const = 0;
    /// The same in whole seconds since 1970, where milliseconds don't matter: much cheaper.
    virtual std::int64_t nowSeconds() const
    {
        return std::chrono::floor<std::chrono::seconds>(NowUtc()).time_since_epoch().count();
    }
    /// Milliseconds since an arbitrary moment, never going back.
    virtual std::int64_t MonotonicMs() const = 0;
    /// Blocks the calling thread.
    virtual void SleepMs(int milliseconds) = 0;

    /// The installed clock; the system's until Install was called.
    static Clock& current();
    /// Makes `clock` the process's clock, or the system's again for a null pointer. Not owned.
    static void install(Clock* clock);
};

} // namespace aviation

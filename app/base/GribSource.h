#pragma once

#include "aviation/Position.h"

#include <functional>

/// Results of GribSource::DownloadGrib.
namespace gribdownload {
inline constexpr int kDone = 1;
inline constexpr int kFailed = 0;
inline constexpr int kCannotOpen = -1; ///< a stored file can't be opened
/// Least time between two questions of a worker that waits for data which don't come.
inline constexpr int kRoundMs = 10000;
} // namespace gribdownload

/// Where missing upper-air data comes from. The weather worker asks it on its own thread and waits:
/// the call returns when the data are in the store or the attempt has failed.
class GribSource
{
public:
    GribSource() = default;
    GribSource(const GribSource&) = delete;
    GribSource& operator=(const GribSource&) = delete;
    virtual ~GribSource() = default;

    /// Loads the upper-air data around a position into the store. `single` asks for one grid point
    /// instead of its neighbourhood.
    virtual int DownloadGrib(const aviation::Position& position, bool single) = 0;
    /// What ends a call of the worker's early, as a failed attempt; asked on the worker's thread.
    /// Set before the first call.
    virtual void giveWayWhen(const std::function<bool()>& /*condition*/) {}
};

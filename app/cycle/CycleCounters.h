#pragma once

#include "app/cycle/CycleRules.h"

#include <cstdint>
#include <limits>

/// The milliseconds since what the weather cycle does from time to time; cycle::kNever where it
/// wasn't done yet. Whoever does it sets its counter to 0.
struct CycleCounters
{
    static constexpr std::int32_t kLongAgo = std::numeric_limits<std::int32_t>::max();

    std::int32_t msSinceUpdate = cycle::kNever;        ///< weather was decided to be set
    std::int32_t msSinceUrgentUpdate = kLongAgo;       ///< that couldn't wait, and isn't set yet
    std::int32_t msSinceNearestSearch = cycle::kNever; ///< of the report that is shown
    std::int32_t msSinceDwc = cycle::kNever;           ///< step of direct wind control
    std::int32_t dwcPeriodMs = 1000;                   ///< what msSinceDwc is held against
    std::int32_t msSinceDownload = cycle::kNever;
    std::int32_t msSinceVisibility = cycle::kNever; ///< step of X-Plane's visibility

    /// Adds to all of them.
    void addElapsed(std::int64_t elapsedMs)
    {
        for (std::int32_t* counter : {&msSinceUpdate, &msSinceUrgentUpdate, &msSinceNearestSearch,
                                      &msSinceDwc, &msSinceDownload, &msSinceVisibility})
        {
            *counter = cycle::addElapsed(*counter, elapsedMs);
        }
    }
};

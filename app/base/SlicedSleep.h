#pragma once

#include "aviation/support/Clock.h"

#include <algorithm>

/// Sleeps by the process's clock, but gives way within a tenth of a second once `stopped()` is
/// true. Slices are counted instead of the time, since a test's clock may stand still.
template <typename Stopped>
void sleepUnless(const Stopped& stopped, int milliseconds)
{
    constexpr int kSliceMs = 100;
    for (int slept = 0; slept < milliseconds && !stopped(); slept += kSliceMs) {
        aviation::Clock::current().SleepMs(std::min(kSliceMs, milliseconds - slept));
    }
}

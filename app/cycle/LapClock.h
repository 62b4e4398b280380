#pragma once

#include "aviation/support/Clock.h"

#include <cstdint>
#include <optional>

/// Measures the time from call to call by the process's clock.
class LapClock
{
public:
    /// Milliseconds since the last call; 0 at the first one, which only starts the clock.
    std::int64_t lapMs()
    {
        const std::int64_t now = aviation::Clock::current().MonotonicMs();
        const std::int64_t elapsed = now - m_last.value_or(now);
        m_last = now;
        return elapsed;
    }

    /// Milliseconds since the last lap, which goes on; 0 before the first, which begins.
    std::int64_t elapsedMs()
    {
        return m_last.has_value() ? aviation::Clock::current().MonotonicMs() - *m_last : lapMs();
    }

private:
    std::optional<std::int64_t> m_last;
};

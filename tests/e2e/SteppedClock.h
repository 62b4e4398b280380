#pragma once

#include "aviation/support/Clock.h"

#include <atomic>
#include <chrono>
#include <thread>

/// A clock that stands until it is advanced. Sleeping lets the other threads run for a moment, so
/// that a loop which waits for one doesn't spin. Installs itself for its lifetime.
class SteppedClock final : public aviation::Clock
{
public:
    SteppedClock() { install(this); }
    ~SteppedClock() override { install(nullptr); }

    UtcTime NowUtc() const override { return UtcTime(std::chrono::milliseconds(m_nowMs.load())); }
    std::int64_t MonotonicMs() const override { return m_nowMs.load(); }
    void SleepMs(int) override { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

    void advance(std::chrono::milliseconds by) { m_nowMs += by.count(); }

private:
    static constexpr std::int64_t kJuly1st2019Noon = 1561982400000;

    std::atomic<std::int64_t> m_nowMs{kJuly1st2019Noon};
};

#pragma once

#include "aviation/support/Clock.h"

#include <atomic>
#include <chrono>
#include <thread>

/// A clock that runs `factor` times as fast as the host's and can be put forward; sleeping is as
/// much shorter. Installs itself as the process's clock for its lifetime.
class FastClock final : public aviation::Clock
{
public:
    explicit FastClock(int factor) : m_factor(factor) { install(this); }
    ~FastClock() override { install(nullptr); }

    void advance(std::chrono::milliseconds by) { m_skippedMs += by.count(); }

    UtcTime NowUtc() const override { return m_startUtc + elapsed(); }
    std::int64_t MonotonicMs() const override { return elapsed().count(); }
    void SleepMs(int milliseconds) override
    {
        std::this_thread::sleep_for(std::chrono::microseconds(milliseconds * 1000 / m_factor));
    }

private:
    using Steady = std::chrono::steady_clock;

    std::chrono::milliseconds elapsed() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>((Steady::now() - m_start)
                                                                     * m_factor)
               + std::chrono::milliseconds(m_skippedMs.load());
    }

    int m_factor;
    std::atomic<std::int64_t> m_skippedMs{0};
    Steady::time_point m_start = Steady::now();
    UtcTime m_startUtc =
        std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
};

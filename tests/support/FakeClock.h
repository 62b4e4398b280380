#pragma once

#include "aviation/support/Clock.h"

#include <atomic>

/// A clock that stands still until it is advanced; sleeping only counts. Installs itself as the
/// process's clock for its lifetime.
class FakeClock final : public aviation::Clock
{
public:
    explicit FakeClock(UtcTime now) : m_nowMs(now.time_since_epoch().count()) { install(this); }
    /// UTC calendar time.
    FakeClock(int year, unsigned month, unsigned day, int hour = 0, int minute = 0, int second = 0)
        : FakeClock(UtcTime(std::chrono::sys_days(std::chrono::year(year) / month / day)
                            + std::chrono::hours(hour) + std::chrono::minutes(minute)
                            + std::chrono::seconds(second)))
    {}
    ~FakeClock() override { install(nullptr); }

    UtcTime NowUtc() const override { return UtcTime(std::chrono::milliseconds(m_nowMs.load())); }
    std::int64_t MonotonicMs() const override { return m_nowMs.load(); }
    void SleepMs(int milliseconds) override { m_sleptMs += milliseconds; }

    void advance(std::chrono::milliseconds by) { m_nowMs += by.count(); }
    std::int64_t sleptMs() const { return m_sleptMs.load(); }

private:
    std::atomic<std::int64_t> m_nowMs;
    std::atomic<std::int64_t> m_sleptMs{0};
};

#include "aviation/support/Clock.h"

#include <atomic>
#include <ctime>
#include <thread>

namespace aviation {

namespace {

class SystemClock final : public Clock
{
public:
    UtcTime NowUtc() const override
    {
        using namespace std::chrono;
        return time_point_cast<milliseconds>(system_clock::now());
    }

    std::int64_t nowSeconds() const override { return std::time(nullptr); }

    std::int64_t MonotonicMs() const override
    {
        using namespace std::chrono;
        return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    }

    void SleepMs(int milliseconds) override
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
};

std::atomic<Clock*> installedClock{nullptr};

} // namespace

Clock& Clock::current()
{
    static SystemClock systemClock;
    Clock* clock = installedClock.load(std::memory_order_acquire);
    return clock != nullptr ? *clock : systemClock;
}

void Clock::install(Clock* clock)
{
    installedClock.store(clock, std::memory_order_release);
}

} // namespace aviation

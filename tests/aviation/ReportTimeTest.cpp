#include "aviation/support/ReportTime.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

using namespace aviation;

namespace {

std::int64_t Epoch(int year, unsigned month, unsigned day, int hour, int minute, int second)
{
    const std::chrono::sys_days date(std::chrono::year(year) / month / day);
    return date.time_since_epoch().count() * 86400 + hour * 3600 + minute * 60 + second;
}

TEST(ReportTime, DaysAboveTodayBelongToTheMonthBefore)
{
    const FakeClock clock(2026, 3, 1, 0, 10, 25);
    const Clock::UtcTime now = clock.NowUtc();
    EXPECT_EQ(ReportSeconds(now, 1, 0, 5), Epoch(2026, 3, 1, 0, 5, 25));
    EXPECT_EQ(ReportSeconds(now, 1, 23, 55), Epoch(2026, 3, 1, 23, 55, 25));
    EXPECT_EQ(ReportSeconds(now, 28, 23, 50), Epoch(2026, 2, 28, 23, 50, 25));
    EXPECT_EQ(ReportSeconds(now, 31, 0, 0), Epoch(2026, 3, 3, 0, 0, 25));
    EXPECT_EQ(ReportSeconds(now, 99, 99, 99), Epoch(2026, 5, 14, 4, 39, 25));
}

TEST(ReportTime, EpochsBefore1970Work)
{
    const FakeClock clock(1969, 12, 31, 23, 59, 58);
    EXPECT_EQ(ReportSeconds(clock.NowUtc(), 31, 23, 59), -2);
}

TEST(ReportTime, GroupsAreOldAfterThreeHoursOrOnAnotherDay)
{
    const struct
    {
        int hour; ///< of the clock, on the 12th, at half past
        const wchar_t* group;
        bool old;
    } rows[] = {{14, L"121100", false}, {14, L"121059", true}, {14, L"121759", false},
                {14, L"111400", true},  {14, L"131400", true}, {0, L"122350", false},
                {2, L"120000", false},  {0, L"112359", true},  {3, L"120000", false},
                {4, L"120059", true},   {14, L"", true},       {14, L"12", true},
                {2, L"12", false}};
    for (const auto& row : rows) {
        const FakeClock clock(2026, 3, 12, row.hour, 30);
        EXPECT_EQ(IsTimeGroupOld(row.group, clock.NowUtc()), row.old)
            << row.hour << " " << testing::PrintToString(row.group);
    }
}

TEST(ReportTime, TextsArePadded)
{
    const FakeClock clock(2026, 3, 2, 4, 5, 6);
    EXPECT_EQ(SlashedDateTime(clock.NowUtc()), "2026/03/02 04:05");
    EXPECT_EQ(AscTime(clock.NowUtc()), "Mon Mar  2 04:05:06 2026\n");
}

} // namespace

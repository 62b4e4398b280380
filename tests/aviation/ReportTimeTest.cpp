#include "aviation/support/ReportTime.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

using namespace aviation;

namespace {

TEST(ReportTimeTest, DaysAboveTodayBelongToTheMonthBefore)
{
    using namespace std::chrono;
    const struct
    {
        sys_seconds now;
        int day, hour, minute;
        sys_seconds reported;
    } rows[] = {{sys_days(2026y / 3 / 1) + 25s, 1, 0, 5, sys_days(2026y / 3 / 1) + 5min + 25s},
                {sys_days(2026y / 3 / 1), 1, 23, 55, sys_days(2026y / 3 / 1) + 23h + 55min},
                {sys_days(2026y / 3 / 1), 28, 23, 50, sys_days(2026y / 2 / 28) + 23h + 50min},
                {sys_days(2026y / 3 / 1), 31, 0, 0, sys_days(2026y / 3 / 3)}, // the month lacks it
                {sys_days(2026y / 3 / 1), 99, 99, 99, sys_days(2026y / 5 / 14) + 4h + 39min},
                {sys_days(2026y / 3 / 12), 0, 24, 0, sys_days(2026y / 3 / 1)},
                {sys_days(2026y / 1 / 1), 31, 23, 50, sys_days(2025y / 12 / 31) + 23h + 50min},
                {sys_days(2024y / 3 / 1), 29, 23, 45, sys_days(2024y / 2 / 29) + 23h + 45min},
                {sys_seconds(-2s), 31, 23, 59, sys_seconds(-2s)}};
    for (const auto& row : rows) {
        EXPECT_EQ(reportSeconds(row.now, row.day, row.hour, row.minute),
                  row.reported.time_since_epoch().count());
    }
}

TEST(ReportTimeTest, GroupsAreOldAfterThreeHoursOrOnAnotherDay)
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
                {2, L"12", false},      {14, L"ab1350", true}};
    for (const auto& row : rows) {
        const FakeClock clock(2026, 3, 12, row.hour, 30);
        EXPECT_EQ(isTimeGroupOld(row.group, clock.NowUtc()), row.old)
            << row.hour << " " << testing::PrintToString(row.group);
    }
}

TEST(ReportTimeTest, TextsArePadded)
{
    const FakeClock clock(2026, 3, 2, 4, 5, 6);
    EXPECT_EQ(slashedDateTime(clock.NowUtc()), "2026/03/02 04:05");
    EXPECT_EQ(ascTime(clock.NowUtc()), "Mon Mar  2 04:05:06 2026\n");
}

} // namespace

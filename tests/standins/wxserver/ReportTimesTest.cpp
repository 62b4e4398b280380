#include "standins/wxserver/ReportTimes.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

namespace {

using namespace wxserver;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::year;

aviation::Clock::UtcTime bundled()
{
    return std::chrono::sys_days(year(2019) / 7 / 1) + hours(12) + minutes(10);
}

struct Row
{
    const char* what;
    QByteArray (*move)(const QByteArray&, const TimeShift&);
    int hours;
    const char* report;
    const char* moved;
};

class ReportTimesTest : public ::testing::TestWithParam<Row>
{};

TEST_P(ReportTimesTest, MovesWhatIsATimeAndNothingElse)
{
    const Row& row = GetParam();
    EXPECT_EQ(row.move(row.report, {bundled(), hours(row.hours)}).toStdString(), row.moved)
        << row.what;
}

const Row kRows[] = {
    {"minutes stay, other groups too", movedMetar, 5,
     "KRCM 011155Z AUTO 01100KT 10SM CLR 21/20 A3005 RMK AO2 T02120212 10225",
     "KRCM 011655Z AUTO 01100KT 10SM CLR 21/20 A3005 RMK AO2 T02120212 10225"},
    {"over a month and into a leap February", movedMetar,
     24 * (31 + 31 + 30 + 31 + 30 + 31 + 31 + 28), "EDDF 011150Z 22005KT CAVOK 26/22 Q1013",
     "EDDF 291150Z 22005KT CAVOK 26/22 Q1013"},
    {"back over the month's first day", movedMetar, -13, "EDDF 010900Z CAVOK",
     "EDDF 302000Z CAVOK"},
    {"the day before stays the day before", movedMetar, 24, "EDDF 302355Z CAVOK",
     "EDDF 012355Z CAVOK"},
    {"a report of the future goes back by whole hours", movedMetar, 0, "KDEN 011345Z CLR",
     "KDEN 011145Z CLR"},
    {"with a word before and without Z", movedMetar, 1, "SPECI COR LFPG 011200 CAVOK",
     "SPECI COR LFPG 011300 CAVOK"},
    {"the trend moves, remarks don't", movedMetar, 13,
     "EHAM 011155Z 9999 BECMG FM1230 TL1330 AT1300 BKN010 RMK FM1230",
     "EHAM 020055Z 9999 BECMG FM0130 TL0230 AT0200 BKN010 RMK FM1230"},
    {"no time, no date, no report", movedMetar, 5, "HLLT NIL", "HLLT NIL"},
    {"a day that doesn't exist", movedMetar, 5, "EDDF 991155Z CAVOK", "EDDF 991155Z CAVOK"},
    {"empty", movedMetar, 5, "", ""},
    {"all groups of a TAF", movedTaf, 3,
     "TAF BIAR 301958Z 3021/0121 31010KT 9999 TX12/0115Z TNM05/0106Z FM302200 BECMG 0122/0124 "
     "4/8SM NXT FCST BY 302100Z",
     "TAF BIAR 302258Z 0100/0200 31010KT 9999 TX12/0118Z TNM05/0109Z FM010100 BECMG 0201/0203 "
     "4/8SM NXT FCST BY 010000Z"},
    {"the end of a day stays one", movedTaf, 48, "TAF DAAT 301700Z 3018/3024 WS020/22040KT",
     "TAF DAAT 021700Z 0218/0224 WS020/22040KT"},
    {"land station", movedSynop, 13, "AAXX 01124 72530 32966 23412 10078 51026 01124",
     "AAXX 02014 72530 32966 23412 10078 51026 01124"},
    {"ship with a call sign of digits", movedSynop, -24, "BBXX 41119 01091 99338 70785 46///",
     "BBXX 41119 30091 99338 70785 46///"},
    {"mobile station", movedSynop, 1, "OOXX ABC1 01234 99338", "OOXX ABC1 02004 99338"},
    {"another code", movedSynop, 1, "TTAA 01121 72530", "TTAA 01121 72530"},
    {"cut", movedSynop, 1, "BBXX 41119", "BBXX 41119"},
};

INSTANTIATE_TEST_SUITE_P(Reports, ReportTimesTest, ::testing::ValuesIn(kRows));

} // namespace

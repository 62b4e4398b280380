#include "aviation/Synop.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <tuple>

using namespace aviation;
using namespace aviation::weather;

namespace {

constexpr double kKnots = 1.943844492;

/// A land report of the 21st, 12 UTC, in knots or in metres per second (1), and the groups behind
/// the station.
Synop LandReport(const std::wstring& groups, wchar_t unit = L'3')
{
    Synop synop(std::wstring(L"AAXX 2112") + unit + L" 15001 " + groups);
    EXPECT_EQ(synop.Decode(), synopstatus::kDecoded);
    return synop;
}

class SynopTest : public testing::Test
{
protected:
    FakeClock m_clock{2023, 1, 21, 13, 20, 30};
};

} // namespace

TEST_F(SynopTest, HeadersOfAllKinds)
{
    const struct
    {
        const wchar_t* report;
        SynopType type;
        std::tuple<std::wstring, std::wstring, int> expected; ///< station, time, unit of the wind
    } rows[] = {
        {L"AAXX 12121 10384 11458", SynopType::Land, {L"10384", L"121200Z", 1}},
        {L"AAXX 1212/ 10384 11458", SynopType::Land, {L"10384", L"121200Z", 4}},
        {L"AAXX 12124 10384 11458", SynopType::Land, {L"10384", L"121200Z", 0}},
        {L"BBXX 20110 19061 99607 70455 46/// /1204 10251",
         SynopType::Ship,
         {L"9960770455", L"201100Z", 1}},
        {L"BBXX ZDL 19003 99607 70455 46/// /1204 10251",
         SynopType::Ship,
         {L"9960770455", L"ZDL00Z", 3}},
        {L"OOXX 2013Z 19061 99607 70455 46/// /1204 10251",
         SynopType::Mobile,
         {L"9960770455", L"201300Z", 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.report)));
        Synop synop{std::wstring(row.report)};
        for (const bool whole : {false, true}) {
            EXPECT_EQ(whole ? synop.Decode() : synop.DecodeHeader(), synopstatus::kDecoded);
            EXPECT_EQ(std::tuple(synop.icao(), synop.timeGroup(), synop.synop().windUnit),
                      row.expected);
            EXPECT_EQ(synop.type(), row.type);
            EXPECT_EQ(synop.isDecoded(), whole);
        }
        EXPECT_TRUE(synop.isHeaderDecoded() && synop.isTimeValid());
        EXPECT_EQ(synop.hasOwnPosition(), row.type != SynopType::Land);
    }
    Synop slashes(L"AAXX 21121 15/// 02999 82710"); // only the header step takes them
    EXPECT_EQ(slashes.DecodeHeader(), synopstatus::kDecoded);
    EXPECT_EQ(slashes.Decode(), synopstatus::kNoHeader);
}

TEST_F(SynopTest, MovingStationsPlaceThemselves)
{
    const struct
    {
        wchar_t quadrant;
        double latitude;
        double longitude;
    } rows[] = {{L'1', 60.7, 45.5},
                {L'3', -60.7, 45.5},
                {L'5', -60.7, -45.5},
                {L'7', 60.7, -45.5},
                {L'2', 0.0, 0.0}};
    for (const auto& row : rows) {
        Synop synop(std::wstring(L"BBXX ZDLP 19004 99607 ") + row.quadrant + L"0455 41298 81307");
        EXPECT_EQ(synop.Decode(), synopstatus::kDecoded);
        EXPECT_DOUBLE_EQ(synop.latitude(), row.latitude);
        EXPECT_DOUBLE_EQ(synop.longitude(), row.longitude);
        EXPECT_EQ(synop.hasOwnPosition(), row.quadrant != L'2');
    }
}

TEST_F(SynopTest, ReportTimeAtMidnightAndMonthEnd)
{
    using namespace std::chrono;
    const struct
    {
        FakeClock::UtcTime now;
        const wchar_t* report;
        sys_seconds time;
    } rows[] = {
        {sys_days(2023y / 3 / 1) + 5min, L"AAXX 28231 15001", sys_days(2023y / 2 / 28) + 23h},
        {sys_days(2024y / 1 / 1), L"AAXX 31181 15001", sys_days(2023y / 12 / 31) + 18h},
        {sys_days(2024y / 3 / 1) + 1h, L"AAXX 29211 15001", sys_days(2024y / 2 / 29) + 21h},
        {sys_days(2023y / 1 / 21), L"AAXX 21001 15001", sys_days(2023y / 1 / 21)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.report)));
        const FakeClock clock(row.now);
        Synop synop{std::wstring(row.report)};
        EXPECT_EQ(synop.DecodeHeader(), 0);
        EXPECT_EQ(synop.time(), row.time.time_since_epoch().count());
    }
}

TEST_F(SynopTest, Failures)
{
    const std::wstring noType = L"(SynopDecoder) - Error: Header - No Synop Type founded: ";
    const struct
    {
        std::wstring report;
        int status;
        std::wstring headerMessage;
    } rows[] = {
        {L"AAXX 2112", synopstatus::kTooShort, L""},
        {L"METAR EDDF 211220Z", synopstatus::kNoHeader, noType + L"METAR EDDF 211220Z"},
        {L" AAXX 21121 15001", synopstatus::kNoHeader, noType + L" AAXX 21121 15001"},
        {L"BBXX 19061 99607 70455 46///", synopstatus::kOutOfRange,
         L"(SynopDecoder) - Error: Header - out of range: "},
        {L"OOXX Z 19061 99607 70455 46///", synopstatus::kOutOfRange,
         L"(SynopDecoder) - Error: Header - out of range: "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.report));
        Synop header(row.report);
        EXPECT_EQ(header.DecodeHeader(), row.status);
        EXPECT_EQ(header.GetMessage(), row.headerMessage);
        EXPECT_EQ(header.messageLevel(), row.headerMessage.empty() ? 0U : kMessageError);
        EXPECT_FALSE(header.isHeaderDecoded());
        Synop whole(row.report);
        EXPECT_EQ(whole.Decode(), row.status);
        EXPECT_EQ(whole.GetMessage(), row.status == synopstatus::kOutOfRange
                                          ? L"(SynopDecoder) - Error: Header - out of range"
                                          : L"");
        EXPECT_FALSE(whole.isDecoded());
    }
}

TEST_F(SynopTest, VisibilityAndCloudHeightCodes)
{
    const struct
    {
        const wchar_t* code;
        int metres;
        int feet;
    } rows[] = {{L"05", 0, 500},       {L"25", 2000, 2500},   {L"50", 5000, 5000},
                {L"51", 30000, 0},     {L"55", 30000, 0},     {L"56", 6000, 6000},
                {L"80", 30000, 30000}, {L"81", 35000, 35000}, {L"89", 75000, 75000},
                {L"90", 40, 166},      {L"95", 2000, 996},    {L"96", 4000, 3328},
                {L"99", 60000, 8321},  {L"//", 30000, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.code));
        const std::wstring code(row.code);
        const Synop synop = LandReport(L"021" + code + L" 82710 333 10178 868" + code);
        EXPECT_EQ(synop.visibility(), row.metres);
        EXPECT_EQ(synop.visibilitySeen(), code != L"//");
        ASSERT_EQ(synop.clouds().size(), 1U);
        EXPECT_EQ(synop.clouds().front().base, row.feet);
    }
}

TEST_F(SynopTest, SurfaceWind)
{
    const struct
    {
        const wchar_t* groups;
        std::tuple<bool, float, float, float, int> expected; ///< seen, wind, octas
    } rows[] = {{L"83612", {true, 360, 12, -1, 8}},
                {L"99905", {true, 0, 5, -1, 8}},
                {L"/2/12", {true, 20, 12, -1, 0}},
                {L"7//12", {false, 0, 0, 0, 7}},
                {L"82799 00123", {true, 270, 123, -1, 8}},
                {L"82799 10123", {true, 270, 99, -1, 8}},
                {L"82710 333 83145 91008 91120 91431 92515", {true, 270, 10, 20, 8}},
                {L"82710 333 83145 911//", {true, 270, 10, 0, 8}}};
    for (const auto& row : rows) {
        const Synop synop = LandReport(std::wstring(L"02999 ") + row.groups);
        const Wind wind = synop.wind();
        EXPECT_EQ(std::tuple(synop.windSeen(), wind.Dir, wind.Speed, wind.Gust,
                             synop.baseCloud().coverage),
                  row.expected)
            << row.groups;
    }
    const Synop metric = LandReport(L"02999 81099 00101 333 83145 91120", L'1');
    EXPECT_EQ(metric.wind().Speed, 196.0F); // 196.3 knots
    EXPECT_EQ(metric.wind().Gust, static_cast<float>(20 * kKnots));
}

TEST_F(SynopTest, TemperaturesAndPressures)
{
    const struct
    {
        const wchar_t* groups;
        /// Temperature, dew point, humidity, pressure at the station, QNH.
        std::tuple<float, float, double, double, float> expected;
    } rows[] = {
        {L"10103 21090 39765 42952", {10.3F, -9.0F, 0, 976.5, 1013.2F}}, // 4a3hhh is no pressure
        {L"11001 20000 30020 40031", {-0.1F, 0.0F, 0, 1002.0, 1003.1F}},
        {L"10/// 29085 3002/ 4013/", {0.0F, 8.5F, 8.5, 1002, 1013.0F}},
        {L"10250 39987 42250 49765", {25.0F, 0.5F, 0, 998.7, 1013.2F}}, // behind its turn
        {L"12250 21090 39765 40263", {15.0F, 0.5F, 0, 0, 1013.2F}},     // stops the chain
    };
    for (const auto& row : rows) {
        const Synop synop = LandReport(L"02999 82710 " + std::wstring(row.groups));
        EXPECT_EQ(std::tuple(synop.temperature(), synop.dewPoint(), synop.synop().humidity,
                             synop.synop().stationPressure, synop.qnh()),
                  row.expected)
            << row.groups;
    }
}

TEST_F(SynopTest, BlanksBetweenGroupsAreOptional)
{
    Synop synop(L"AAXX2112315001 02999\t82710  1010321090 39765 42952 333   83145=");
    EXPECT_EQ(synop.Decode(), 0);
    EXPECT_EQ(synop.wind().Dir, 270.0F);
    EXPECT_EQ(synop.dewPoint(), -9.0F);
    EXPECT_EQ(synop.clouds().size(), 1U);
}

TEST_F(SynopTest, DecodingAgainStartsAfresh)
{
    Synop synop(L"AAXX 21121 15001 05515 32931 10103 82110 333 83145 91111");
    synop.setName(L"Ocna Sugatag");
    synop.setPosition({47.8, 23.9});
    EXPECT_EQ(synop.Decode(), 0);
    EXPECT_EQ(synop.Decode(), 0);
    EXPECT_EQ(synop.clouds().size(), 1U);

    synop.setReportText(L"AAXX 21181 15001 0////");
    EXPECT_EQ(synop.Decode(), 0);
    EXPECT_TRUE(synop.clouds().empty());
    EXPECT_FALSE(synop.windSeen() || synop.cloudCodesRead());
    EXPECT_EQ(synop.temperature(), 15.0F);
    EXPECT_EQ(synop.name(), L"Ocna Sugatag"); // the table's, not the report's
    EXPECT_EQ(synop.latitude(), 47.8);
}

TEST_F(SynopTest, HostileLinesTakeNoLongerThanTheirLength)
{
    constexpr std::size_t kLength = 10'000'000;
    const std::wstring blanks(kLength, L' ');
    const std::wstring tabs(kLength, L'\t');
    std::wstring layers = L"AAXX 21121 15001 333 ";
    while (layers.size() < kLength) {
        layers += L"83145 ";
    }
    const std::wstring reports[] = {
        L"BBXX" + blanks,
        L"BBXX" + tabs + L"ZDLP" + tabs,
        L"OOXX" + blanks + L"ZDLP" + blanks + L"12341 99",
        L"AAXX 21121" + blanks,
        std::wstring(kLength, L'\0'),
        std::wstring(kLength, L'9'),
        layers,
    };
    for (const std::wstring& report : reports) {
        Synop synop(report);
        static_cast<void>(synop.DecodeHeader());
        static_cast<void>(synop.Decode());
        EXPECT_LE(synop.clouds().size(), kLength / 6);
    }
}

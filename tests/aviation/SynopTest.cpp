#include "aviation/Synop.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

using namespace aviation;
using namespace aviation::weather;

namespace {

constexpr double kKnots = 1.943844492;

/// A land report of the 21st, 12 UTC, with knots as its unit, and the groups behind the station.
Synop LandReport(const std::wstring& groups)
{
    Synop synop(L"AAXX 21123 15001 " + groups);
    EXPECT_EQ(synop.Decode(), synopstatus::kDecoded);
    return synop;
}

/// The same in metres per second.
Synop MetricReport(const std::wstring& groups)
{
    Synop synop(L"AAXX 21121 15001 " + groups);
    EXPECT_EQ(synop.Decode(), synopstatus::kDecoded);
    return synop;
}

class SynopTest : public testing::Test
{
protected:
    FakeClock m_clock{2023, 1, 21, 13, 20, 30};
};

} // namespace

TEST_F(SynopTest, FreshObject)
{
    const Synop synop;
    EXPECT_EQ(synop.status(), synopstatus::kTooShort);
    EXPECT_EQ(synop.kind(), ReportKind::Synop);
    EXPECT_EQ(synop.timeGroup(), L"000000Z");
    EXPECT_FALSE(synop.isTimeValid());
    EXPECT_FALSE(synop.hasOwnPosition());
}

TEST_F(SynopTest, LandHeader)
{
    for (const bool quick : {true, false}) {
        SCOPED_TRACE(quick);
        Synop synop(L"AAXX 12121 10384 11458 82502");
        EXPECT_EQ(quick ? synop.DecodeHeader() : synop.Decode(), 0);
        EXPECT_EQ(synop.icao(), L"10384");
        EXPECT_EQ(synop.timeGroup(), L"121200Z");
        EXPECT_EQ(synop.synop().windUnit, 1);
        EXPECT_EQ(synop.type(), SynopType::Land);
        EXPECT_TRUE(synop.isHeaderDecoded());
        EXPECT_EQ(synop.isDecoded(), !quick);
        EXPECT_TRUE(synop.isTimeValid());
        EXPECT_FALSE(synop.hasOwnPosition());
    }
}

TEST_F(SynopTest, WindUnitOfTheHeader)
{
    const struct
    {
        wchar_t indicator;
        int unit;
        double speed;
    } rows[] = {{L'0', 0, 10 * kKnots}, {L'1', 1, 10 * kKnots}, {L'2', 2, 10.0},
                {L'3', 3, 10.0},        {L'/', 4, 10.0},        {L'4', 0, 10 * kKnots}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.unit);
        Synop synop(std::wstring(L"AAXX 2112") + row.indicator + L" 15001 02999 82710");
        EXPECT_EQ(synop.Decode(), 0);
        EXPECT_EQ(synop.synop().windUnit, row.unit);
        EXPECT_EQ(synop.wind().Speed, static_cast<float>(row.speed));
        EXPECT_EQ(synop.wind().Dir, 270.0F);
        EXPECT_EQ(synop.wind().Gust, -1.0F);
    }
}

TEST_F(SynopTest, OnlyTheHeaderStepTakesSlashesAsStation)
{
    Synop synop(L"AAXX 21121 15/// 02999 82710");
    EXPECT_EQ(synop.DecodeHeader(), synopstatus::kDecoded);
    EXPECT_EQ(synop.icao(), L"15///");
    EXPECT_EQ(synop.Decode(), synopstatus::kNoHeader);
}

TEST_F(SynopTest, MovingStationsPlaceThemselves)
{
    const struct
    {
        const wchar_t* report;
        double latitude;
        double longitude;
        bool placed;
    } rows[] = {
        {L"BBXX ZDLP 19004 99607 10455 41298 81307", 60.7, 45.5, true},
        {L"BBXX ZDLP 19004 99607 30455 41298 81307", -60.7, 45.5, true},
        {L"BBXX ZDLP 19004 99607 50455 41298 81307", -60.7, -45.5, true},
        {L"BBXX ZDLP 19004 99607 71455 41298 81307", 60.7, -145.5, true},
        {L"BBXX ZDLP 19004 99607 20455 41298 81307", 0.0, 0.0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.report)));
        Synop synop{std::wstring(row.report)};
        EXPECT_EQ(synop.Decode(), 0);
        EXPECT_DOUBLE_EQ(synop.latitude(), row.latitude);
        EXPECT_DOUBLE_EQ(synop.longitude(), row.longitude);
        EXPECT_EQ(synop.hasOwnPosition(), row.placed);
        EXPECT_EQ(synop.name(), L"ZDLP");
        EXPECT_EQ(synop.type(), SynopType::Ship);
    }
}

TEST_F(SynopTest, MovingStationsAreTimedByTheirCallSign)
{
    Synop buoy(L"BBXX 20110 19061 99607 70455 46/// /1204 10251");
    EXPECT_EQ(buoy.DecodeHeader(), 0);
    EXPECT_EQ(buoy.timeGroup(), L"201100Z");
    EXPECT_EQ(buoy.synop().windUnit, 1);
    EXPECT_EQ(buoy.icao(), L"9960770455");
    EXPECT_TRUE(buoy.isTimeValid());

    Synop ship(L"BBXX ZDL 19003 99607 70455 46/// /1204 10251");
    EXPECT_EQ(ship.Decode(), 0);
    EXPECT_EQ(ship.timeGroup(), L"ZDL00Z");
    EXPECT_EQ(ship.synop().windUnit, 3);
    EXPECT_TRUE(ship.isTimeValid());

    Synop mobile(L"OOXX 2013Z 19061 99607 70455 46/// /1204 10251");
    EXPECT_EQ(mobile.Decode(), 0);
    EXPECT_EQ(mobile.type(), SynopType::Mobile);
    EXPECT_EQ(mobile.timeGroup(), L"201300Z");
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
        {sys_days(2023y / 1 / 21) + 13h + 20min + 30s, L"AAXX 21121 15001",
         sys_days(2023y / 1 / 21) + 12h + 30s},
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
        std::wstring message; // of Decode on an object of its own
    } rows[] = {
        {L"AAXX 2112", synopstatus::kTooShort, L"", L""},
        {L"", synopstatus::kTooShort, L"", L""},
        {L"METAR EDDF 211220Z", synopstatus::kNoHeader, noType + L"METAR EDDF 211220Z", L""},
        {L" AAXX 21121 15001", synopstatus::kNoHeader, noType + L" AAXX 21121 15001", L""},
        {L"BBXX 19061 99607 70455 46///", synopstatus::kOutOfRange,
         L"(SynopDecoder) - Error: Header - out of range: ",
         L"(SynopDecoder) - Error: Header - out of range"},
        {L"OOXX Z 19061 99607 70455 46///", synopstatus::kOutOfRange,
         L"(SynopDecoder) - Error: Header - out of range: ",
         L"(SynopDecoder) - Error: Header - out of range"},
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
        EXPECT_EQ(whole.GetMessage(), row.message);
        EXPECT_FALSE(whole.isDecoded());
    }
}

TEST_F(SynopTest, HeightOfTheLowestCloud)
{
    const int feet[] = {166, 333, 666, 1000, 2000, 3333, 5000, 6666, 8333, 10000};
    for (int h = 0; h < 10; ++h) {
        const Synop synop = LandReport(L"02" + std::to_wstring(h) + L"99 82710");
        EXPECT_EQ(synop.baseCloud().base, feet[h]) << h;
        EXPECT_TRUE(synop.cloudsSeen());
    }
    const Synop unknown = LandReport(L"42/99 82710");
    EXPECT_FALSE(unknown.cloudsSeen());
    EXPECT_EQ(unknown.baseCloud().base, 0);
    EXPECT_EQ(unknown.synop().precipitationIndicator, 4);
}

TEST_F(SynopTest, VisibilityCodes)
{
    const struct
    {
        const wchar_t* code;
        int metres;
    } rows[] = {{L"00", 0},     {L"05", 0},    {L"25", 2000},  {L"50", 5000},  {L"51", 30000},
                {L"55", 30000}, {L"56", 6000}, {L"80", 30000}, {L"81", 35000}, {L"89", 75000},
                {L"90", 40},    {L"91", 50},   {L"92", 200},   {L"93", 500},   {L"94", 1000},
                {L"95", 2000},  {L"96", 4000}, {L"97", 10000}, {L"98", 20000}, {L"99", 60000},
                {L"3/", 0},     {L"/6", 0}};
    for (const auto& row : rows) {
        const Synop synop = LandReport(std::wstring(L"021") + row.code + L" 82710");
        EXPECT_EQ(synop.visibility(), row.metres) << testing::PrintToString(row.code);
        EXPECT_TRUE(synop.visibilitySeen());
    }
    const Synop unknown = LandReport(L"021// 82710");
    EXPECT_FALSE(unknown.visibilitySeen());
    EXPECT_EQ(unknown.visibility(), 30000);
}

TEST_F(SynopTest, SurfaceWind)
{
    const struct
    {
        const wchar_t* groups;
        bool seen;
        float direction;
        float speed;
        float gust;
        int coverage;
    } rows[] = {
        {L"02999 00000", true, 0.0F, 0.0F, -1.0F, 0},
        {L"02999 83612", true, 360.0F, 12.0F, -1.0F, 8},
        {L"02999 99905", true, 0.0F, 5.0F, -1.0F, 8},
        {L"02999 /2/12", true, 20.0F, 12.0F, -1.0F, 0},
        {L"02999 7//12", false, 0.0F, 0.0F, 0.0F, 7},
        {L"02999 718//", false, 0.0F, 0.0F, 0.0F, 7},
        {L"02999 82799 00123", true, 270.0F, 123.0F, -1.0F, 8},
        {L"02999 82799 10123", true, 270.0F, 99.0F, -1.0F, 8},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.groups)));
        const Synop synop = LandReport(row.groups);
        EXPECT_EQ(synop.windSeen(), row.seen);
        EXPECT_EQ(synop.wind().Dir, row.direction);
        EXPECT_EQ(synop.wind().Speed, row.speed);
        EXPECT_EQ(synop.wind().Gust, row.gust);
        EXPECT_EQ(synop.baseCloud().coverage, row.coverage);
    }
    const Synop metric = MetricReport(L"02999 81099 00101 10055");
    EXPECT_EQ(metric.wind().Speed, 196.0F); // 196.3 knots
    EXPECT_EQ(metric.temperature(), 5.5F);
}

TEST_F(SynopTest, TemperaturesAndPressures)
{
    const struct
    {
        const wchar_t* groups;
        double temperature;
        double dewPoint;
        double humidity;
        double stationPressure;
        double qnh;
    } rows[] = {
        {L"10103 21090 39765 42952", 10.3, -9.0, 0, 976.5, 1013.2}, // 4a3hhh is no pressure
        {L"11001 20000 30020 40031", -0.1, 0.0, 0, 1002.0, 1003.1},
        {L"10/// 29085 3002/ 4013/", 0.0, 8.5, 8.5, 1002, 1013},
        {L"10250 29100 39/5/ 49000", 25.0, 10.0, 10.0, 1009, 900.0},
        {L"10250 39987 42250 49765", 25.0, 0.5, 0, 998.7, 1013.2}, // behind its turn
        {L"12250 21090 39765 40263", 15.0, 0.5, 0, 0, 1013.2},     // a wrong sign stops the chain
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.groups)));
        const Synop synop = LandReport(L"02999 82710 " + std::wstring(row.groups));
        EXPECT_EQ(synop.temperature(), static_cast<float>(row.temperature));
        EXPECT_EQ(synop.dewPoint(), static_cast<float>(row.dewPoint));
        EXPECT_DOUBLE_EQ(synop.synop().humidity, row.humidity);
        EXPECT_DOUBLE_EQ(synop.synop().stationPressure, row.stationPressure);
        EXPECT_EQ(synop.qnh(), static_cast<float>(row.qnh));
    }
}

TEST_F(SynopTest, CloudForms)
{
    const struct
    {
        const wchar_t* groups;
        int low;
        int middle;
        int high;
        bool read;
    } rows[] = {{L"52008 60012 72006 83578", 5, 7, 8, true},
                {L"886//", 6, 0, 0, true},
                {L"8////", 0, 0, 0, true},
                {L"", 0, 0, 0, false}};
    for (const auto& row : rows) {
        const Synop synop = LandReport(L"02999 82710 10103 " + std::wstring(row.groups));
        EXPECT_EQ(synop.lowCode(), row.low);
        EXPECT_EQ(synop.middleCode(), row.middle);
        EXPECT_EQ(synop.highCode(), row.high);
        EXPECT_EQ(synop.cloudCodesRead(), row.read);
    }
}

TEST_F(SynopTest, CloudLayersOfTheRegionalSection)
{
    const struct
    {
        const wchar_t* height;
        int feet;
    } rows[] = {{L"00", 0},     {L"50", 5000},  {L"51", 0},     {L"56", 6000},
                {L"80", 30000}, {L"81", 35000}, {L"89", 75000}, {L"90", 166},
                {L"95", 996},   {L"96", 3328},  {L"99", 8321},  {L"//", 0}};
    for (const auto& row : rows) {
        const Synop synop = LandReport(std::wstring(L"42/// /2710 333 10178 868") + row.height);
        ASSERT_EQ(synop.clouds().size(), 1U) << testing::PrintToString(row.height);
        const Cloud& cloud = synop.clouds().front();
        EXPECT_EQ(cloud.base, row.feet) << testing::PrintToString(row.height);
        EXPECT_EQ(cloud.coverage, 6);
        EXPECT_EQ(cloud.type, 8);
        EXPECT_EQ(cloud.top, -1);
        EXPECT_EQ(cloud.altitude, -1);
        EXPECT_TRUE(synop.cloudsSeen());
        EXPECT_TRUE(synop.cloudCodesRead());
    }
    const Synop obscured = LandReport(L"42/// /2710 333 8/602 89001");
    ASSERT_EQ(obscured.clouds().size(), 2U);
    EXPECT_EQ(obscured.clouds()[0].coverage, 0);
    EXPECT_EQ(obscured.clouds()[1].coverage, 0); // nine octas are no coverage
}

TEST_F(SynopTest, GustsOfTheRegionalSection)
{
    const std::wstring groups = L"02999 82710 333 83145 91008 91120 91431 92515";
    EXPECT_EQ(LandReport(groups).wind().Gust, 20.0F);
    EXPECT_EQ(LandReport(groups).wind().Speed, 10.0F);
    EXPECT_EQ(MetricReport(groups).wind().Gust, static_cast<float>(20 * kKnots));
    EXPECT_EQ(LandReport(L"02999 82710 333 83145 911//").wind().Gust, 0.0F);
}

TEST_F(SynopTest, SectionsThatArePassedOver)
{
    const Synop synop =
        LandReport(L"02999 82710 10103 49765 57020 60071 72006 82110 22224 04078 10050 20402 31201 "
                   L"40605 50607 61101 70013 41303 333 00055 10178 21073 34101 41055 55055 20003 "
                   L"30002 40001 55304 20001 30002 40003 60035 70500 83145 444 18031 "
                   L"555 00221 10153 20999 910// 91107");
    EXPECT_EQ(synop.clouds().size(), 1U);
    EXPECT_EQ(synop.temperature(), 22.1F);
    EXPECT_EQ(synop.synop().gust1, 7);
}

TEST_F(SynopTest, NationalSection)
{
    const Synop synop =
        LandReport(L"02999 82710 10103 555 01023 10157 21012 22345 23/5 24/5 25/5 26055 31111 "
                   L"42222 53333 74444 84561 8/0// 91022 91130 91125 PIC 11 BOT 12345");
    const SynopValues& values = synop.synop();
    EXPECT_EQ(synop.temperature(), -2.3F); // takes the place of that of section 1
    EXPECT_DOUBLE_EQ(values.seaValue, 15.7);
    EXPECT_DOUBLE_EQ(values.seaSecondValue, -1.2);
    ASSERT_EQ(synop.clouds().size(), 2U);
    EXPECT_EQ(synop.clouds()[0].coverage, 4);
    EXPECT_EQ(synop.clouds()[0].type, 0);
    EXPECT_EQ(synop.clouds()[0].base, 100);
    EXPECT_EQ(synop.clouds()[1].base, 0);
    EXPECT_TRUE(synop.cloudCodesRead());
    EXPECT_EQ(values.gust10Minutes, 22);
    EXPECT_EQ(values.gust1, 30);
    EXPECT_EQ(values.gust2, 25);
}

TEST_F(SynopTest, MetricPeaksOfTheNationalSectionAreTheGustOfTenMinutes)
{
    const SynopValues values =
        MetricReport(L"02999 82710 10103 555 00023 10157 91022 91130 91125").synop();
    EXPECT_EQ(values.gust10Minutes, 42); // 42.8 knots
    EXPECT_EQ(values.gust1, 42);
    EXPECT_EQ(values.gust2, 42);
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
    EXPECT_FALSE(synop.windSeen());
    EXPECT_FALSE(synop.cloudCodesRead());
    EXPECT_EQ(synop.temperature(), 15.0F);
    EXPECT_EQ(synop.lowCode(), 0);
    EXPECT_EQ(synop.timeGroup(), L"211800Z");
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
        L"AAXX 21121 15001" + tabs,
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

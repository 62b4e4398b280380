#include "aviation/Metar.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

using namespace aviation::weather;

namespace {

/// Decodes the groups behind a header that is always good, at an elevation of 300 feet.
Metar Decoded(const std::wstring& groups, std::int32_t elevation = 300)
{
    Metar metar(L"EDDF 121220Z " + groups);
    metar.setElevation(elevation);
    static_cast<void>(metar.Decode());
    return metar;
}

// ---------------------------------------------------------------- header and report time

TEST(MetarHeader, GivesStationAndTimeGroup)
{
    FakeClock clock(2026, 3, 12, 14, 7, 41);
    Metar metar(L"EDDF 121220Z 00000KT CAVOK 12/10 Q1018");
    EXPECT_EQ(metar.DecodeHeader(), metarstatus::kDecoded);
    EXPECT_EQ(metar.icao(), L"EDDF");
    EXPECT_EQ(metar.timeGroup(), L"121220");
    EXPECT_TRUE(metar.isHeaderDecoded());
    EXPECT_FALSE(metar.isDecoded());
    EXPECT_EQ(metar.visibility(), 30000) << "the header step reads no more";
}

TEST(MetarHeader, KeepsTheNameOfAStationThatHasOne)
{
    Metar metar(L"EDDF 121220Z 00000KT CAVOK 12/10 Q1018");
    metar.setIcao(L"EDDM");
    EXPECT_EQ(metar.Decode(), metarstatus::kDecoded);
    EXPECT_EQ(metar.icao(), L"EDDM");
}

TEST(MetarHeader, IsNoFailureWhenItDoesNotMatch)
{
    Metar metar(L"EDDF 1212Z 00000KT CAVOK");
    EXPECT_EQ(metar.DecodeHeader(), metarstatus::kDecoded);
    EXPECT_EQ(metar.icao(), L"");
    EXPECT_EQ(metar.timeGroup(), L"");
    EXPECT_EQ(metar.Decode(), metarstatus::kNoWind) << "the header stays in front of the wind";
    Metar bare(L"00000KT CAVOK 12/10 Q1018");
    EXPECT_EQ(bare.Decode(), metarstatus::kDecoded);
    EXPECT_EQ(bare.temperature(), 12.0F);
}

TEST(MetarHeader, RefusesShortTexts)
{
    Metar metar(L"EDDF 1212");
    EXPECT_EQ(metar.DecodeHeader(), metarstatus::kTooShort);
    EXPECT_EQ(metar.Decode(), metarstatus::kTooShort);
    EXPECT_FALSE(metar.isDecoded());
    EXPECT_EQ(metar.visibility(), 30000);
    EXPECT_EQ(metar.temperature(), 15.0F);
    EXPECT_EQ(metar.dewPoint(), 0.5F);
    EXPECT_EQ(metar.qnh(), 1013.2F);
    EXPECT_EQ(metar.intensity(), 0);
}

struct TimeRow
{
    const char* name;
    int year;
    unsigned month;
    unsigned day;
    int hour;
    const wchar_t* time;
    std::int64_t expected; ///< seconds since 1970, the clock standing at second 41
};

TEST(MetarHeader, TakesTheMonthFromTheClock)
{
    const TimeRow rows[] = {
        {"same day", 2026, 3, 12, 14, L"121220", 1773318041},
        {"an hour ahead of the clock", 2026, 3, 12, 14, L"121520", 1773328841},
        {"yesterday", 2026, 3, 12, 0, L"112359", 1773273581},
        {"the last of a short month", 2026, 3, 1, 0, L"282330", 1772321441},
        {"a day that the month before lacks", 2026, 3, 30, 10, L"310000", 1772496041},
        {"over the year's end", 2026, 1, 1, 0, L"312350", 1767225041},
        {"leap day", 2024, 3, 1, 0, L"292345", 1709250341},
        {"day 0 and hour 24 roll over", 2026, 3, 12, 14, L"002400", 1772323241},
    };
    for (const TimeRow& row : rows) {
        FakeClock clock(row.year, row.month, row.day, row.hour, 5, 41);
        Metar metar(std::wstring(L"EDDF ") + row.time + L"Z 00000KT CAVOK 12/10 Q1018");
        static_cast<void>(metar.DecodeHeader());
        EXPECT_EQ(metar.time(), row.expected) << row.name;
    }
}

TEST(MetarHeader, TimeIsTheSameAgainInAFullDecode)
{
    FakeClock clock(2026, 3, 12, 14, 7, 41);
    Metar metar = Decoded(L"00000KT CAVOK 12/10 Q1018");
    EXPECT_EQ(metar.time(), 1773318041);
    EXPECT_TRUE(metar.isHeaderDecoded());
    EXPECT_TRUE(metar.isDecoded());
}

// ---------------------------------------------------------------- wind

struct WindRow
{
    const wchar_t* groups;
    float direction;
    float speed;
    float gust;
    bool seen;
};

std::ostream& operator<<(std::ostream& out, const WindRow& row)
{
    return out << testing::PrintToString(std::wstring(row.groups));
}

class MetarWind : public testing::TestWithParam<WindRow>
{};

TEST_P(MetarWind, IsRead)
{
    const Metar metar = Decoded(GetParam().groups + std::wstring(L" 9999 12/10 Q1018"));
    EXPECT_EQ(metar.status(), metarstatus::kDecoded);
    EXPECT_EQ(metar.wind().Dir, GetParam().direction);
    EXPECT_EQ(metar.wind().Speed, GetParam().speed);
    EXPECT_EQ(metar.wind().Gust, GetParam().gust);
    EXPECT_EQ(metar.wind().Fourth, 0.0F);
    EXPECT_EQ(metar.windSeen(), GetParam().seen);
    EXPECT_EQ(metar.temperature(), 12.0F) << "decoding goes on";
}

const float kTenMetres = static_cast<float>(10 / 0.5144444);
const float kFifteenMetres = static_cast<float>(15 / 0.5144444);

INSTANTIATE_TEST_SUITE_P(
    Groups, MetarWind,
    testing::Values(
        WindRow{L"24015KT", 240, 15, 0, true}, WindRow{L"AUTO 24015KT", 240, 15, 0, true},
        WindRow{L"24015G28KT", 240, 15, 28, true}, WindRow{L"24010MPS", 240, kTenMetres, 0, true},
        WindRow{L"24010G15MPS", 240, kTenMetres, kFifteenMetres, true},
        WindRow{L"VRB03KT", 0, 3, 0, true}, WindRow{L"VRB10MPS", 0, kTenMetres, 0, true},
        WindRow{L"VRB03G15KT", 0, 3, 15, true},
        WindRow{L"VRB10G15MPS", 0, kTenMetres, kFifteenMetres, true},
        WindRow{L"/////KT", 0, 0, 0, false}, WindRow{L"///12KT", 0, 0, 0, false},
        WindRow{L"240//KT", 0, 0, 0, false}, WindRow{L"/40/2KT", 0, 0, 0, true},
        WindRow{L"999//KT", 0, 0, 0, false}));

TEST(MetarWind, EndsTheDecodeWhenThereIsNone)
{
    for (const wchar_t* groups :
         {L"240115KT 9999", L"24015 9999", L"2401KT 9999", L"24015G115KT 9999", L"24015KMH 9999",
          L"VRB3KT 9999", L"24015G/5KT 9999", L"///10MPS 9999", L"AUTO COR 24015KT 9999", L"NIL"})
    {
        const Metar metar = Decoded(groups);
        EXPECT_EQ(metar.status(), metarstatus::kNoWind) << groups;
        EXPECT_TRUE(metar.isDecoded());
        EXPECT_EQ(metar.visibility(), 30000) << groups;
    }
}

TEST(MetarWind, SectorHasTwoLimits)
{
    const Metar metar = Decoded(L"24015KT 210V270 9999 12/10 Q1018");
    EXPECT_EQ(metar.variableFrom(), 210);
    EXPECT_EQ(metar.variableTo(), 270);
    const Metar slashes = Decoded(L"24015KT ///V/// 9999 12/10 Q1018");
    EXPECT_EQ(slashes.variableFrom(), 0);
    EXPECT_EQ(slashes.variableTo(), 0);
    EXPECT_FALSE(Decoded(L"24015KT 21V27 9999 12/10 Q1018").hasVariableLimits());
}

// ---------------------------------------------------------------- visibility and runways

struct VisibilityRow
{
    const wchar_t* group;
    std::int32_t metres;
    bool seen;
};

std::ostream& operator<<(std::ostream& out, const VisibilityRow& row)
{
    return out << testing::PrintToString(std::wstring(row.group));
}

class MetarVisibility : public testing::TestWithParam<VisibilityRow>
{};

TEST_P(MetarVisibility, IsRead)
{
    const Metar metar = Decoded(L"24015KT " + std::wstring(GetParam().group) + L" 12/10 Q1018");
    EXPECT_EQ(metar.visibility(), GetParam().metres);
    EXPECT_EQ(metar.visibilitySeen(), GetParam().seen);
    EXPECT_EQ(metar.status(), metarstatus::kDecoded);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, MetarVisibility,
    testing::Values(VisibilityRow{L"10SM", 9999, true}, VisibilityRow{L"9SM", 14481, true},
                    VisibilityRow{L"15SM", 24135, true}, VisibilityRow{L"1 1/2SM", 2413, true},
                    VisibilityRow{L"1/4SM", 402, true}, VisibilityRow{L"M1/4SM", 402, true},
                    VisibilityRow{L"3/16SM", 301, true}, VisibilityRow{L"1/0SM", 0, true},
                    VisibilityRow{L"8KM", 8000, true}, VisibilityRow{L"12KM", 12000, true},
                    VisibilityRow{L"0350", 350, true}, VisibilityRow{L"////", 9999, true},
                    VisibilityRow{L"9999NDV", 9999, true}, VisibilityRow{L"2000SW", 2000, true},
                    VisibilityRow{L"4000 1500N 2000S", 4000, true},
                    VisibilityRow{L"P6000", 6000, true}, VisibilityRow{L"M6000", 9999, false},
                    VisibilityRow{L"////SM", 9999, true}, VisibilityRow{L"/SM", 9999, false},
                    VisibilityRow{L"600", 9999, false}, VisibilityRow{L"", 9999, false}));

TEST(MetarVisibility, InMilesIsFoundInARemarkAndCutByItsLength)
{
    const Metar metar = Decoded(L"24015KT OVC020 12/10 A2992 RMK VIS 5SM");
    EXPECT_EQ(metar.visibility(), 5 * 1609);
    EXPECT_TRUE(metar.clouds().empty()) << "the three characters were cut off the cloud group";
}

TEST(MetarVisibility, PrefersThePatternToThePlace)
{
    EXPECT_EQ(Decoded(L"24015KT 9999 12/10 A2992 RMK 3SM 1/2SM").visibility(), 804);
    EXPECT_EQ(Decoded(L"24015KT 8KM 12/10 A2992 RMK 3SM").visibility(), 3 * 1609);
    EXPECT_EQ(Decoded(L"24015KT 2SM 12/10 A2992 RMK 1SM").visibility(), 2 * 1609);
}

TEST(MetarVisibility, CavokStandsForCloudsToo)
{
    const Metar metar = Decoded(L"24015KT CAVOK 12/10 Q1018 RMK 2SM");
    EXPECT_TRUE(metar.isCavok());
    EXPECT_EQ(metar.visibility(), 9999);
    EXPECT_TRUE(metar.visibilitySeen());
    EXPECT_TRUE(metar.cloudsSeen());
    EXPECT_TRUE(metar.clouds().empty());
}

TEST(MetarRunway, GroupsAreCollected)
{
    const Metar metar =
        Decoded(L"24015KT 0300 R09L/1200N R27/0600VP1500U R04R/// FG 12/10 Q1018 R27/290095");
    EXPECT_EQ(metar.runwayText(), L"R09L/1200N R27/0600VP1500U R04R/// ");
    EXPECT_EQ(metar.phenomenaText(), L"FG ");
    EXPECT_EQ(metar.tailRunwayText(), L"R27/290095 ");
}

TEST(MetarRunway, DecodeEndsWhenNothingFollows)
{
    for (const wchar_t* groups : {L"00000KT", L"00000KT   ", L"00000KT 9999 Q101"}) {
        const Metar metar = Decoded(groups);
        EXPECT_EQ(metar.status(), metarstatus::kNothingLeft) << groups;
        EXPECT_TRUE(metar.windSeen());
        EXPECT_EQ(metar.visibility(), 9999);
        EXPECT_EQ(metar.intensity(), 0);
    }
    EXPECT_FALSE(Decoded(L"00000KT").visibilitySeen());
}

// ---------------------------------------------------------------- weather and clouds

struct WeatherRow
{
    const wchar_t* groups;
    const wchar_t* phenomena;
    int intensity;
};

TEST(MetarWeather, GroupsLoseTheirSign)
{
    const WeatherRow rows[] = {
        {L"-RA", L"RA ", 1},
        {L"+TSRA", L"TSRA ", 3},
        {L"RA", L"RA ", 2},
        {L"-RA BR", L"RA BR ", 1},
        {L"-DZ +SHRA", L"DZ SHRA ", 3},
        {L"--RA", L"-RA ", 1},
        {L"+-SNRA", L"-SNRA ", 3},
        {L"VCTSRA BR", L"VCTSRABR ", 2}, // six letters leave no blank
        {L"//", L" ", 2},
        {L"//////", L"////", 2},
        {L"BKN///", L"BKN///", 2}, // looks like weather straight behind the visibility
        {L"NCD", L"NCD", 2},
        {L"RERA TS", L"RERA TS ", 2},
        {L"R12", L"", 2},
    };
    for (const WeatherRow& row : rows) {
        const Metar metar = Decoded(L"24015KT 9999 " + std::wstring(row.groups) + L" 12/10 Q1018");
        EXPECT_EQ(metar.phenomenaText(), row.phenomena) << row.groups;
        EXPECT_EQ(metar.intensity(), row.intensity) << row.groups;
    }
}

TEST(MetarWeather, NscMeansAnAssumedLayer)
{
    const Metar metar = Decoded(L"24015KT 9999 NSC 12/10 Q1018", 1200);
    EXPECT_TRUE(metar.noSignificantCloud());
    EXPECT_EQ(metar.phenomenaText(), L"NSC");
    ASSERT_EQ(metar.clouds().size(), 1U);
    EXPECT_EQ(metar.clouds()[0].coverage, 3);
    EXPECT_EQ(metar.clouds()[0].base, 5000);
    EXPECT_EQ(metar.clouds()[0].altitude, 3200);
    EXPECT_EQ(metar.clouds()[0].type, cloudtype::kOrdinary);
    EXPECT_FALSE(metar.cloudsSeen()) << "it isn't read as a cloud group";
}

struct CloudRow
{
    const wchar_t* group;
    int coverage;
    std::int32_t base;
    int type;
};

std::ostream& operator<<(std::ostream& out, const CloudRow& row)
{
    return out << testing::PrintToString(std::wstring(row.group));
}

class MetarCloud : public testing::TestWithParam<CloudRow>
{};

TEST_P(MetarCloud, GroupMakesALayer)
{
    const Metar metar =
        Decoded(L"24015KT 9999 CLR " + std::wstring(GetParam().group) + L" 12/10 Q1018");
    ASSERT_EQ(metar.clouds().size(), 1U);
    const Cloud cloud = metar.clouds()[0];
    EXPECT_EQ(cloud.coverage, GetParam().coverage);
    EXPECT_EQ(cloud.base, GetParam().base);
    EXPECT_EQ(cloud.altitude, GetParam().base + 300);
    EXPECT_EQ(cloud.type, GetParam().type);
    EXPECT_EQ(cloud.top, -1);
    EXPECT_TRUE(metar.cloudsSeen());
    EXPECT_EQ(metar.temperature(), 12.0F);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, MetarCloud,
    testing::Values(CloudRow{L"FEW030", 2, 3000, 0}, CloudRow{L"SCT005", 4, 500, 0},
                    CloudRow{L"BKN100", 7, 10000, 0}, CloudRow{L"OVC000", 8, 0, 0},
                    CloudRow{L"VV002", 8, 200, 0}, CloudRow{L"VV///", 8, 100, 0},
                    CloudRow{L"FEW030TCU", 2, 3000, 11}, CloudRow{L"BKN025CB", 7, 2500, 10},
                    CloudRow{L"BKN///", 7, 100, 0}, CloudRow{L"OVC010///", 8, 1000, 0},
                    CloudRow{L"BKN01/", 7, 100, 0}, CloudRow{L"OVC//////", 8, 100, 0},
                    CloudRow{L"BKN///CB", 7, 100, 10}, CloudRow{L"SCT///TCU", 4, 100, 11}));

TEST(MetarCloud, GroupsWithoutCoverageAreOnlySeen)
{
    for (const wchar_t* group : {L"CLR", L"SKC", L"CLR NSC", L"CLR //////CB", L"CLR ///TCU"}) {
        const Metar metar = Decoded(L"24015KT 9999 " + std::wstring(group) + L" 12/10 Q1018");
        EXPECT_TRUE(metar.clouds().empty()) << group;
        EXPECT_TRUE(metar.cloudsSeen()) << group;
        EXPECT_EQ(metar.temperature(), 12.0F) << group;
    }
}

TEST(MetarCloud, LayersStayInTheirOrder)
{
    const Metar metar = Decoded(L"24015KT 9999 -RA FEW010 SCT020CB BKN030 OVC100 12/10 Q1018");
    ASSERT_EQ(metar.clouds().size(), 4U);
    EXPECT_EQ(metar.clouds()[1].base, 2000);
    EXPECT_EQ(metar.clouds()[3].coverage, 8);
}

// ---------------------------------------------------------------- temperature and pressure

struct TemperatureRow
{
    const wchar_t* group;
    float temperature;
    float dewPoint;
};

TEST(MetarTemperature, FormsAreRead)
{
    const TemperatureRow rows[] = {
        {L"12/10", 12, 10},    {L"02/M01", 2, -1},    {L"M05/M12", -5, -12}, {L"M05/", 5, 2},
        {L"M00/M00", 0, 0},    {L"//////", 15, 0.5F}, {L"12///", 12, 0},     {L"/////", 15, 0.5F},
        {L"M05/02", 15, 0.5F}, {L"5/2", 15, 0.5F},
    };
    for (const TemperatureRow& row : rows) {
        const Metar metar = Decoded(L"24015KT 9999 CLR " + std::wstring(row.group) + L" Q1018", 0);
        EXPECT_EQ(metar.temperature(), row.temperature) << row.group;
        EXPECT_EQ(metar.dewPoint(), row.dewPoint) << row.group;
        EXPECT_FALSE(std::signbit(metar.temperature()) && metar.temperature() == 0.0F);
        EXPECT_EQ(metar.status(), metarstatus::kDecoded) << row.group;
    }
}

TEST(MetarTemperature, SeaLevelValuesFollowTheElevation)
{
    const Metar metar = Decoded(L"24015KT 9999 CLR 12/M03 Q1018", 364);
    EXPECT_FLOAT_EQ(metar.SeaLevelTemperature(), 12.728F);
    EXPECT_FLOAT_EQ(metar.SeaLevelDewPoint(), -2.272F);
    const Metar without = Decoded(L"24015KT 9999 CLR XX Q1018", -100);
    EXPECT_FLOAT_EQ(without.SeaLevelTemperature(), 14.8F);
}

struct PressureRow
{
    const wchar_t* group;
    float qnh;
    int status;
};

TEST(MetarPressure, FormsAreRead)
{
    const PressureRow rows[] = {
        {L"Q1018", 1018, 0},
        {L"Q0998", 998, 0},
        {L"Q998", 998, 0},
        {L"Q013", 1013, 0},
        {L"Q1400", 1013, 6},
        {L"Q0799", 1013, 6},
        {L"Q800", 800, 0},
        {L"Q1300", 1300, 0},
        {L"Q0099", 1099, 0},
        {L"Q0100", 1013, 6},
        {L"Q////", 1013.2F, 0},
        {L"", 1013.2F, 0},
        {L"A2992", 2992 * 0.33864316F, 0},
        {L"A0000", 0, 0},
        {L"A299", 1013.2F, 0},
    };
    for (const PressureRow& row : rows) {
        const Metar metar =
            Decoded(L"24015KT 9999 CLR 12/10 " + std::wstring(row.group) + L" R27/290095");
        EXPECT_EQ(metar.qnh(), row.qnh) << row.group;
        EXPECT_EQ(metar.status(), row.status) << row.group;
    }
    EXPECT_NEAR(static_cast<double>(Decoded(L"24015KT CAVOK 12/10 A2992").qnh()), 1013.2, 0.05);
    EXPECT_EQ(Decoded(L"24015KT CAVOK 12/10 Q1400 R27/290095").tailRunwayText(), L"");
}

// ---------------------------------------------------------------- the object

TEST(Metar, SecondDecodeGivesTheSameClouds)
{
    Metar metar = Decoded(L"24015KT 9999 NSC FEW010 BKN020 12/10 Q1018");
    EXPECT_EQ(metar.clouds().size(), 3U);
    EXPECT_EQ(metar.Decode(), metarstatus::kDecoded);
    EXPECT_EQ(metar.clouds().size(), 3U);
}

TEST(Metar, ResetKeepsIdentityAndForgetsTheRest)
{
    Metar metar = Decoded(L"24015G30KT 210V270 CAVOK 12/10 Q0990");
    metar.setPosition({50.0, 8.5});
    metar.setInfoText(L"note");
    metar.resetDecoded();
    EXPECT_EQ(metar.icao(), L"EDDF");
    EXPECT_EQ(metar.elevation(), 300);
    EXPECT_EQ(metar.infoText(), L"note");
    EXPECT_TRUE(metar.isKnown());
    EXPECT_FALSE(metar.isCavok() || metar.cloudsSeen() || metar.hasVariableLimits());
    EXPECT_FALSE(metar.isDecoded() || metar.isHeaderDecoded());
    metar.setReportText(L"EDDF 121220Z 24015KT 9999 FEW010 12/10 A2992");
    EXPECT_EQ(metar.Decode(), metarstatus::kDecoded);
    EXPECT_EQ(metar.wind().Gust, 0.0F);
    EXPECT_EQ(metar.clouds().size(), 1U);
}

TEST(Metar, LinesOfTenMegabytesDecodeInTime)
{
    const std::wstring_view fillings[] = {L" ",   L"R09/1200 ", L"4000N ", L"+TSRA ",
                                          L"NSC", L"BKN020 ",   L"1/1SM ", L"CLR/"};
    constexpr std::size_t kLength = 10'000'000;
    for (const std::wstring_view filling : fillings) {
        std::wstring groups = L"24015KT 9999 CLR ";
        groups.reserve(kLength + 100);
        while (groups.size() < kLength) {
            groups += filling;
        }
        const Metar metar = Decoded(groups + L" 12/10");
        EXPECT_TRUE(metar.windSeen());
    }
}

} // namespace

#include "aviation/Metar.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

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

TEST(MetarHeader, IsReadAloneAndMayBeMissing)
{
    Metar metar(L"EDDF 121220Z 00000KT CAVOK 12/10 Q1018");
    EXPECT_EQ(metar.DecodeHeader(), metarstatus::kDecoded);
    EXPECT_EQ(metar.icao(), L"EDDF");
    EXPECT_EQ(metar.timeGroup(), L"121220");
    EXPECT_EQ(metar.visibility(), 30000) << "the header step reads no more";
    metar.setIcao(L"EDDM");
    EXPECT_EQ(metar.Decode(), metarstatus::kDecoded);
    EXPECT_EQ(metar.icao(), L"EDDM") << "a station that has a name keeps it";
    Metar spoiled(L"EDDF 1212Z 00000KT CAVOK");
    EXPECT_EQ(spoiled.DecodeHeader(), metarstatus::kDecoded);
    EXPECT_EQ(spoiled.icao(), L"");
    EXPECT_EQ(spoiled.Decode(), metarstatus::kNoWind) << "the header stays in front of the wind";
    Metar tooShort(L"EDDF 1212");
    EXPECT_EQ(tooShort.DecodeHeader(), metarstatus::kTooShort);
    EXPECT_EQ(tooShort.Decode(), metarstatus::kTooShort);
    EXPECT_FALSE(tooShort.isDecoded());
}

TEST(MetarHeader, TakesTheMonthFromTheClock)
{
    const struct
    {
        const char* name;
        int year;
        unsigned month;
        unsigned day;
        int hour;
        const wchar_t* time;
        std::int64_t expected; ///< seconds since 1970, the clock standing at second 41
    } rows[] = {
        {"an hour ahead of the clock", 2026, 3, 12, 14, L"121520", 1773328841},
        {"yesterday", 2026, 3, 12, 0, L"112359", 1773273581},
        {"the last of a short month", 2026, 3, 1, 0, L"282330", 1772321441},
        {"a day that the month before lacks", 2026, 3, 30, 10, L"310000", 1772496041},
        {"over the year's end", 2026, 1, 1, 0, L"312350", 1767225041},
        {"leap day", 2024, 3, 1, 0, L"292345", 1709250341},
        {"day 0 and hour 24 roll over", 2026, 3, 12, 14, L"002400", 1772323241},
    };
    for (const auto& row : rows) {
        FakeClock clock(row.year, row.month, row.day, row.hour, 5, 41);
        Metar metar(std::wstring(L"EDDF ") + row.time + L"Z 00000KT CAVOK 12/10 Q1018");
        static_cast<void>(metar.DecodeHeader());
        EXPECT_EQ(metar.time(), row.expected) << row.name;
        static_cast<void>(metar.Decode());
        EXPECT_EQ(metar.time(), row.expected) << row.name;
    }
}

TEST(MetarWind, IsRead)
{
    const float ten = static_cast<float>(10 / 0.5144444);
    const float fifteen = static_cast<float>(15 / 0.5144444);
    const struct
    {
        const wchar_t* group;
        std::tuple<float, float, float, bool> expected; ///< direction, speed, gust, seen
    } rows[] = {{L"AUTO 24015G28KT", {240, 15, 28, true}},
                {L"24010MPS", {240, ten, 0, true}},
                {L"24010G15MPS", {240, ten, fifteen, true}},
                {L"VRB10MPS", {0, ten, 0, true}},
                {L"VRB03G15KT", {0, 3, 15, true}},
                {L"VRB10G15MPS", {0, ten, fifteen, true}},
                {L"///12KT", {0, 0, 0, false}},
                {L"240//KT", {0, 0, 0, false}},
                {L"/40/2KT", {0, 0, 0, true}}};
    for (const auto& row : rows) {
        const Metar metar = Decoded(row.group + std::wstring(L" 9999 12/10 Q1018"));
        const Wind wind = metar.wind();
        EXPECT_EQ(std::tuple(wind.Dir, wind.Speed, wind.Gust, metar.windSeen()), row.expected)
            << row.group;
        EXPECT_EQ(metar.temperature(), 12.0F) << "decoding goes on";
    }
    EXPECT_EQ(Decoded(L"24015KT 210V270 9999 12/10 Q1018").variableFrom(), 210);
    EXPECT_EQ(Decoded(L"24015KT ///V/// 9999 12/10 Q1018").variableTo(), 0);
    EXPECT_FALSE(Decoded(L"24015KT 21V27 9999 12/10 Q1018").hasVariableLimits());
}

TEST(MetarWind, EndsTheDecodeWhenThereIsNone)
{
    for (const wchar_t* groups :
         {L"240115KT 9999", L"24015 9999", L"2401KT 9999", L"24015G115KT 9999", L"24015KMH 9999",
          L"VRB3KT 9999", L"24015G/5KT 9999", L"///10MPS 9999", L"AUTO COR 24015KT 9999", L"NIL"})
    {
        const Metar metar = Decoded(groups);
        EXPECT_EQ(metar.status(), metarstatus::kNoWind) << groups;
        EXPECT_EQ(metar.visibility(), 30000) << groups;
    }
}

TEST(MetarVisibility, IsRead)
{
    const struct
    {
        const wchar_t* group;
        std::int32_t metres;
        bool seen;
    } rows[] = {{L"10SM", 9999, true},    {L"15SM", 24135, true},
                {L"1 1/2SM", 2413, true}, {L"M1/4SM", 402, true},
                {L"1/0SM", 0, true},      {L"12KM", 12000, true},
                {L"////", 9999, true},    {L"4000 1500N 2000S", 4000, true},
                {L"P6000", 6000, true},   {L"M6000", 9999, false},
                {L"////SM", 9999, true},  {L"/SM", 9999, false},
                {L"600", 9999, false},    {L"", 9999, false}};
    for (const auto& row : rows) {
        const Metar metar = Decoded(L"24015KT " + std::wstring(row.group) + L" 12/10 Q1018");
        EXPECT_EQ(metar.visibility(), row.metres) << row.group;
        EXPECT_EQ(metar.visibilitySeen(), row.seen) << row.group;
    }
}

TEST(MetarVisibility, PrefersThePatternToThePlace)
{
    EXPECT_EQ(Decoded(L"24015KT 9999 12/10 A2992 RMK 3SM 1/2SM").visibility(), 804);
    EXPECT_EQ(Decoded(L"24015KT 8KM 12/10 A2992 RMK 3SM").visibility(), 3 * 1609);
    EXPECT_EQ(Decoded(L"24015KT 2SM 12/10 A2992 RMK 1SM").visibility(), 2 * 1609);
    const Metar remark = Decoded(L"24015KT OVC020 12/10 A2992 RMK VIS 5SM");
    EXPECT_EQ(remark.visibility(), 5 * 1609);
    EXPECT_TRUE(remark.clouds().empty()) << "the three characters were cut off the cloud group";
    const Metar cavok = Decoded(L"24015KT CAVOK 12/10 Q1018 RMK 2SM");
    EXPECT_EQ(cavok.visibility(), 9999);
    EXPECT_TRUE(cavok.isCavok() && cavok.cloudsSeen() && cavok.clouds().empty());
}

TEST(MetarRunway, GroupsAreCollected)
{
    const Metar metar =
        Decoded(L"24015KT 0300 R09L/1200N R27/0600VP1500U R04R/// FG 12/10 Q1018 R27/290095");
    EXPECT_EQ(metar.runwayText(), L"R09L/1200N R27/0600VP1500U R04R/// ");
    EXPECT_EQ(metar.phenomenaText(), L"FG ");
    EXPECT_EQ(metar.tailRunwayText(), L"R27/290095 ");
    for (const wchar_t* groups : {L"00000KT", L"00000KT   ", L"00000KT 9999 Q101"}) {
        EXPECT_EQ(Decoded(groups).status(), metarstatus::kNothingLeft) << groups;
    }
}

TEST(MetarWeather, GroupsLoseTheirSign)
{
    const struct
    {
        const wchar_t* groups;
        const wchar_t* phenomena;
        int intensity;
    } rows[] = {
        {L"-RA BR", L"RA BR ", 1},
        {L"-DZ +SHRA", L"DZ SHRA ", 3},
        {L"--RA", L"-RA ", 1},
        {L"+-SNRA", L"-SNRA ", 3},
        {L"VCTSRA BR", L"VCTSRABR ", 2}, // six letters leave no blank
        {L"//////", L"////", 2},
        {L"BKN///", L"BKN///", 2}, // looks like weather straight behind the visibility
        {L"NCD", L"NCD", 2},
        {L"R12", L"", 2},
    };
    for (const auto& row : rows) {
        const Metar metar = Decoded(L"24015KT 9999 " + std::wstring(row.groups) + L" 12/10 Q1018");
        EXPECT_EQ(metar.phenomenaText(), row.phenomena) << row.groups;
        EXPECT_EQ(metar.intensity(), row.intensity) << row.groups;
    }
}

TEST(MetarCloud, GroupsMakeLayers)
{
    const struct
    {
        const wchar_t* group;
        std::tuple<int, int, int, int> expected; ///< coverage, base, altitude, type
    } rows[] = {{L"NSC", {3, 5000, 2300, 0}},      {L"CLR VV002", {8, 200, 500, 0}},
                {L"CLR VV///", {8, 100, 400, 0}},  {L"CLR FEW030TCU", {2, 3000, 3300, 11}},
                {L"CLR BKN///", {7, 100, 400, 0}}, {L"CLR OVC010///", {8, 1000, 1300, 0}},
                {L"CLR BKN01/", {7, 100, 400, 0}}, {L"CLR BKN///CB", {7, 100, 400, 10}}};
    for (const auto& row : rows) {
        const Metar metar = Decoded(L"24015KT 9999 " + std::wstring(row.group) + L" 12/10 Q1018");
        ASSERT_EQ(metar.clouds().size(), 1U) << row.group;
        const Cloud cloud = metar.clouds()[0];
        EXPECT_EQ(std::tuple(cloud.coverage, cloud.base, cloud.altitude, cloud.type), row.expected)
            << row.group;
        EXPECT_EQ(metar.temperature(), 12.0F) << row.group;
    }
    for (const wchar_t* group : {L"SKC", L"CLR NSC", L"CLR //////CB", L"CLR ///TCU"}) {
        const Metar metar = Decoded(L"24015KT 9999 " + std::wstring(group) + L" 12/10 Q1018");
        EXPECT_TRUE(metar.clouds().empty() && metar.cloudsSeen()) << group;
    }
}

TEST(MetarTemperature, FormsAreRead)
{
    const struct
    {
        const wchar_t* group;
        float temperature;
        float dewPoint;
    } rows[] = {{L"02/M01", 2, -1},   {L"M05/M12", -5, -12}, {L"M05/", 5, 2},
                {L"M00/M00", 0, 0},   {L"//////", 15, 0.5F}, {L"12///", 12, 0},
                {L"/////", 15, 0.5F}, {L"M05/02", 15, 0.5F}, {L"5/2", 15, 0.5F}};
    for (const auto& row : rows) {
        const Metar metar = Decoded(L"24015KT 9999 CLR " + std::wstring(row.group) + L" Q1018");
        EXPECT_EQ(metar.temperature(), row.temperature) << row.group;
        EXPECT_EQ(metar.dewPoint(), row.dewPoint) << row.group;
        EXPECT_FALSE(std::signbit(metar.temperature()) && metar.temperature() == 0.0F);
    }
    const Metar metar = Decoded(L"24015KT 9999 CLR 12/M03 Q1018", 364);
    EXPECT_FLOAT_EQ(metar.SeaLevelTemperature(), 12.728F);
    EXPECT_FLOAT_EQ(metar.SeaLevelDewPoint(), -2.272F);
}

TEST(MetarPressure, FormsAreRead)
{
    const struct
    {
        const wchar_t* group;
        float qnh;
        int status;
    } rows[] = {{L"Q998", 998, 0},      {L"Q013", 1013, 0},
                {L"Q1301", 1013, 6},    {L"Q0799", 1013, 6},
                {L"Q800", 800, 0},      {L"Q1300", 1300, 0},
                {L"Q0099", 1099, 0},    {L"Q0100", 1013, 6},
                {L"Q////", 1013.2F, 0}, {L"A2992", 2992 * 0.33864316F, 0},
                {L"A299", 1013.2F, 0}};
    for (const auto& row : rows) {
        const Metar metar =
            Decoded(L"24015KT 9999 CLR 12/10 " + std::wstring(row.group) + L" R27/290095");
        EXPECT_EQ(metar.qnh(), row.qnh) << row.group;
        EXPECT_EQ(metar.status(), row.status) << row.group;
    }
}

TEST(Metar, ResetKeepsIdentityAndForgetsTheRest)
{
    Metar metar = Decoded(L"24015G30KT 210V270 CAVOK 12/10 Q0990");
    metar.setInfoText(L"note");
    metar.resetDecoded();
    EXPECT_EQ(metar.icao() + metar.infoText(), L"EDDFnote");
    EXPECT_FALSE(metar.isCavok() || metar.cloudsSeen() || metar.hasVariableLimits());
    EXPECT_FALSE(metar.isDecoded() || metar.isHeaderDecoded());
    metar.setReportText(L"EDDF 121220Z 24015KT 9999 NSC FEW010 12/10 A2992");
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(metar.Decode(), metarstatus::kDecoded);
        EXPECT_EQ(metar.wind().Gust, 0.0F);
        EXPECT_EQ(metar.clouds().size(), 2U);
    }
}

TEST(Metar, LinesOfTenMegabytesDecodeInTime)
{
    constexpr std::size_t kLength = 10'000'000;
    for (const std::wstring_view filling :
         {L" ", L"R09/1200 ", L"4000N ", L"+TSRA ", L"NSC", L"BKN020 ", L"1/1SM ", L"CLR/"})
    {
        std::wstring groups = L"24015KT 9999 CLR ";
        groups.reserve(kLength + 100);
        while (groups.size() < kLength) {
            groups += filling;
        }
        EXPECT_TRUE(Decoded(groups + L" 12/10").windSeen());
    }
}

} // namespace

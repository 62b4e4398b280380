#include "aviation/Grib.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

using namespace aviation;
using namespace aviation::weather;

namespace {

const std::wstring kHeader = L"GRIB 26101 20100 99450 71050 ";
const std::wstring kSurface = L"99013 12408 27015 ";
const std::wstring kElevenLevels =
    L"0000111 12450 27015 9200766 10350 27520 8501457 08455 28025 7003012 00110 28540 "
    L"5005574 15356 29060 4007185 26958 29070 3009164 42356 37510 2510362 51160 29595 "
    L"2011790 56562 29580 1513600 56762 29050 1016180 60164 29020 ";

Grib Decoded(const std::wstring& report)
{
    Grib grib(report);
    EXPECT_EQ(grib.Decode(), gribstatus::kDecoded);
    return grib;
}

} // namespace

TEST(GribTest, WholeRecord)
{
    const Grib grib = Decoded(kHeader + kSurface + kElevenLevels
                              + L"7710500 50160 28645 8811500 56162 29570 L7100 M3000 H[123");
    EXPECT_EQ(grib.GetMessage(), L"");
    EXPECT_EQ(grib.levels().size(), 11U);
    for (const GribLevel& special : {grib.maximumWind(), grib.tropopause()}) {
        EXPECT_EQ(special.dewPoint, 99);
        EXPECT_EQ(special.pressure, -1.0F);
        EXPECT_EQ(special.humidity, static_cast<float>(RelativeHumidity(special.temperature, 99)));
    }
    EXPECT_EQ(grib.maximumWind().altitude, 34448);
    EXPECT_EQ(grib.maximumWind().temperature, -50);
    EXPECT_EQ(grib.tropopause().wind.Dir, 295.0F);
    const auto coverageAndBase = [](const Cloud& cloud) {
        return std::tuple<int, int>(cloud.coverage, cloud.base);
    };
    EXPECT_EQ(coverageAndBase(grib.lowCloud()), std::tuple(7, 5000));
    EXPECT_EQ(coverageAndBase(grib.middleCloud()), std::tuple(3, 18000));
    EXPECT_EQ(coverageAndBase(grib.highCloud()), std::tuple(0, 18000)); // no number: the bracket
}

TEST(GribTest, SurfaceValues)
{
    const struct
    {
        const wchar_t* groups;
        /// QNH, temperature, dew point, direction and speed of the wind.
        std::tuple<float, float, float, float, float> expected;
    } rows[] = {{L"99013 12508 27015", {1013, -12.5F, -13.3F, 270, 15}},

                {L"99800 00050 37510", {800, 0, -5, 15, 110}},
                {L"99799 00151 36199", {1799, -0.1F, -1.1F, 1, 199}},
                {L"99000 99999 00000", {1000, -99.9F, -148.9F, 0, 0}}};
    for (const auto& row : rows) {
        const Grib grib = Decoded(kHeader + row.groups);
        EXPECT_EQ(std::tuple(grib.qnh(), grib.temperature(), grib.dewPoint(), grib.wind().Dir,
                             grib.wind().Speed),
                  row.expected)
            << row.groups;
    }
}

TEST(GribTest, Quadrants)
{
    const struct
    {
        const wchar_t* group;
        double latitude;
        double longitude;
    } rows[] = {{L"11050", 45, 105},  {L"31050", -45, 105}, {L"51050", -45, -105},
                {L"71050", 45, -105}, {L"01050", 45, 105},  {L"21050", 45, 105}};
    for (const auto& row : rows) {
        Grib grib(L"GRIB 26101 20100 99450 " + std::wstring(row.group));
        EXPECT_EQ(grib.DecodeHeader(), gribstatus::kDecoded);
        EXPECT_EQ(grib.latitude(), row.latitude);
        EXPECT_EQ(grib.longitude(), row.longitude);
        EXPECT_EQ(grib.key(), L"450" + std::wstring(row.group));
        EXPECT_EQ(grib.status(), gribstatus::kFresh); // the levels aren't read yet
    }
}

TEST(GribTest, Levels)
{
    const struct
    {
        const wchar_t* groups;
        /// Pressure, altitude, temperature, dew point, direction and speed of the wind.
        std::tuple<float, int, int, int, float, float> expected;
    } rows[] = {
        {L"9200766 01808 27015", {925, 2513, 1, 1, 270, 15}}, // 1.8 - 0.8 is exactly 1
        {L"8501457 00102 27015", {850, 4780, 0, 0, 270, 15}},
        {L"1016180 60164 290120", {100, 53084, -60, -74, 290, 120}},
        {L"5005574 ///// 37510", {500, 18287, 0, 0, 15, 110}},
        {L"500//// 155// 36199", {500, 0, -15, -15, 1, 199}},
        {L"///1000 12455 361123", {1000, 0, 12, 7, 1, 223}},
        {L"9/01000 12455 00000", {90, 3280, 12, 7, 0, 0}},
        {L"9900000 99999 00000", {990, 0, -99, -148, 0, 0}},
    };
    for (const auto& row : rows) {
        const Grib grib = Decoded(kHeader + kSurface + row.groups);
        ASSERT_EQ(grib.levels().size(), 1U) << row.groups;
        const GribLevel& level = grib.levels().front();
        EXPECT_EQ(std::tuple(level.pressure, level.altitude, level.temperature, level.dewPoint,
                             level.wind.Dir, level.wind.Speed),
                  row.expected)
            << row.groups;
        EXPECT_EQ(level.humidity,
                  static_cast<float>(RelativeHumidity(level.temperature, level.dewPoint)));
    }
}

TEST(GribTest, ARecordIsDecodedOnce)
{
    Grib grib = Decoded(kHeader + kSurface + kElevenLevels);
    grib.setReportText(kHeader + L"99999 00000 00000 " + kElevenLevels);
    EXPECT_EQ(grib.Decode(), gribstatus::kDecoded);
    EXPECT_EQ(grib.levels().size(), 11U);
    EXPECT_EQ(grib.qnh(), 1013.0F);
}

TEST(GribTest, MissingPartsAreToldAndPassedOver)
{
    const std::wstring ten = kElevenLevels.substr(kElevenLevels.find(L' ', 14) + 1);
    const std::wstring few = L"(GribDecoder) - too few layers of Level\n ";
    const struct
    {
        std::wstring report;
        std::wstring message;
        std::size_t levels;
    } rows[] = {
        {kHeader + kSurface + ten, few + kHeader + kSurface + ten, 10},
        {kSurface + kElevenLevels, L"(GribDecoder) - no Grib header found", 11},
        {kHeader + kElevenLevels, L"(GribDecoder) - no Grib surface data found", 11},
        {L"#TIME:1", few + L"#TIME:1", 0},
        {L" " + kHeader + kSurface, few + L" " + kHeader + kSurface, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.report));
        const Grib grib = Decoded(row.report);
        EXPECT_EQ(grib.GetMessage(), row.message);
        EXPECT_EQ(grib.messageLevel(), kMessageError);
        EXPECT_EQ(grib.levels().size(), row.levels);
    }
}

TEST(GribTest, AShortRecordStaysFresh)
{
    Grib grib{std::wstring(L"GRIB")};
    EXPECT_EQ(grib.Decode(), gribstatus::kFresh);
    EXPECT_FALSE(grib.isDecoded());
    EXPECT_EQ(grib.DecodeHeader(), gribstatus::kFailed);
    EXPECT_EQ(grib.GetMessage(), L"(GribDecoder) - no Grib header found");
}

TEST(GribTest, HostileRecords)
{
    constexpr std::size_t kLength = 10'000'000;
    std::wstring levels = kHeader + kSurface;
    while (levels.size() < kLength) {
        levels += L"7003012 00110 28540  ";
    }
    EXPECT_EQ(Decoded(levels).levels().size(), (kLength - 48) / 21 + 1);
    EXPECT_TRUE(Decoded(kHeader + std::wstring(kLength, L' ')).levels().empty());
    EXPECT_TRUE(Decoded(kHeader + kSurface + std::wstring(kLength, L'9')).levels().empty());
    EXPECT_TRUE(Decoded(std::wstring(kLength, L'\0')).levels().empty());
}

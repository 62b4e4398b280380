#include "aviation/Grib.h"

#include <gtest/gtest.h>

#include <string>

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

/// The first level of a record that has no other.
GribLevel OnlyLevel(const std::wstring& groups)
{
    const Grib grib = Decoded(kHeader + kSurface + groups);
    EXPECT_EQ(grib.levels().size(), 1U);
    return grib.levels().empty() ? GribLevel() : grib.levels().front();
}

} // namespace

TEST(GribTest, WholeRecord)
{
    const Grib grib = Decoded(kHeader + kSurface + kElevenLevels
                              + L"7710500 50160 28645 8811500 56162 29570 L7100 M3000 H[123");
    EXPECT_TRUE(grib.isDecoded());
    EXPECT_EQ(grib.GetMessage(), L"");
    EXPECT_DOUBLE_EQ(grib.latitude(), 45.0);
    EXPECT_DOUBLE_EQ(grib.longitude(), -105.0);
    EXPECT_EQ(grib.key(), L"45071050");
    EXPECT_EQ(grib.qnh(), 1013.0F);
    EXPECT_EQ(grib.temperature(), 12.4F);
    EXPECT_EQ(grib.dewPoint(), 11.6F);
    EXPECT_EQ(grib.wind().Dir, 270.0F);
    EXPECT_EQ(grib.wind().Speed, 15.0F);
    EXPECT_EQ(grib.wind().Gust, -1.0F);

    ASSERT_EQ(grib.GetLevels().size(), 11U);
    const GribLevel& level = grib.levels()[3]; // 7003012 00110 28540
    EXPECT_EQ(level.altitude, 9881);           // 3012 * 3.28085 = 9881.9
    EXPECT_EQ(level.pressure, 700.0F);
    EXPECT_EQ(level.temperature, 0);
    EXPECT_EQ(level.dewPoint, -1);
    EXPECT_EQ(level.humidity, static_cast<float>(RelativeHumidity(0, -1)));
    EXPECT_EQ(level.wind.Dir, 285.0F);
    EXPECT_EQ(level.wind.Gust, -1.0F);

    for (const GribLevel& special : {grib.maximumWind(), grib.tropopause()}) {
        EXPECT_EQ(special.dewPoint, 99);
        EXPECT_EQ(special.pressure, -1.0F);
        EXPECT_EQ(special.humidity, static_cast<float>(RelativeHumidity(special.temperature, 99)));
    }
    EXPECT_EQ(grib.maximumWind().altitude, 34448);
    EXPECT_EQ(grib.maximumWind().temperature, -50);
    EXPECT_EQ(grib.tropopause().wind.Dir, 295.0F);
    EXPECT_EQ(grib.lowCloud().coverage, 7);
    EXPECT_EQ(grib.lowCloud().base, 5000);
    EXPECT_EQ(grib.lowCloud().altitude, -1);
    EXPECT_EQ(grib.middleCloud().coverage, 3);
    EXPECT_EQ(grib.middleCloud().base, 18000);
    EXPECT_EQ(grib.highCloud().coverage, 0); // the bracket reads as no number
    EXPECT_EQ(grib.highCloud().base, 18000);
    EXPECT_EQ(grib.grib().surfaceLevel.temperature, -99);
}

TEST(GribTest, SurfaceValues)
{
    const struct
    {
        const wchar_t* groups;
        double qnh;
        double temperature;
        double dewPoint;
        float direction;
        float speed;
    } rows[] = {
        {L"99013 12508 27015", 1013, -12.5, -13.3, 270, 15},
        {L"99999 12455 36010", 999, 12.4, 7.4, 360, 10},
        {L"99800 00050 37510", 800, 0.0, -5.0, 15, 110},
        {L"99799 00151 36199", 1799, -0.1, -1.1, 1, 199},
        {L"99000 99999 00000", 1000, -99.9, -148.9, 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.groups)));
        const Grib grib = Decoded(kHeader + row.groups);
        EXPECT_EQ(grib.qnh(), static_cast<float>(row.qnh));
        EXPECT_EQ(grib.temperature(), static_cast<float>(row.temperature));
        EXPECT_EQ(grib.dewPoint(), static_cast<float>(row.dewPoint));
        EXPECT_EQ(grib.wind().Dir, row.direction);
        EXPECT_EQ(grib.wind().Speed, row.speed);
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
        EXPECT_FALSE(grib.isDecoded());
    }
}

TEST(GribTest, Levels)
{
    const struct
    {
        const wchar_t* groups;
        float pressure;
        int altitude;
        int temperature;
        int dewPoint;
        float direction;
        float speed;
    } rows[] = {
        {L"0000111 12450 27015", 1000, 364, 12, 7, 270, 15},
        {L"9200766 01808 27015", 925, 2513, 1, 1, 270, 15}, // 1.8 - 0.8 is exactly 1
        {L"8501457 00102 27015", 850, 4780, 0, 0, 270, 15},
        {L"1016180 60164 290120", 100, 53084, -60, -74, 290, 120},
        {L"5005574 ///// 37510", 500, 18287, 0, 0, 15, 110},
        {L"500//// 155// 36199", 500, 0, -15, -15, 1, 199},
        {L"///1000 12455 361123", 1000, 0, 12, 7, 1, 223},
        {L"9/01000 12455 00000", 90, 3280, 12, 7, 0, 0},
        {L"9900000 99999 00000", 990, 0, -99, -148, 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.groups)));
        const GribLevel level = OnlyLevel(row.groups);
        EXPECT_EQ(level.pressure, row.pressure);
        EXPECT_EQ(level.altitude, row.altitude);
        EXPECT_EQ(level.temperature, row.temperature);
        EXPECT_EQ(level.dewPoint, row.dewPoint);
        EXPECT_EQ(level.wind.Dir, row.direction);
        EXPECT_EQ(level.wind.Speed, row.speed);
        EXPECT_EQ(level.humidity,
                  static_cast<float>(RelativeHumidity(row.temperature, row.dewPoint)));
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
    EXPECT_EQ(grib.GetMessage(), L"");
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

#include "aviation/Grib.h"

#include <gtest/gtest.h>

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

Grib decoded(const std::wstring& report)
{
    Grib grib(report);
    EXPECT_EQ(grib.Decode(), gribstatus::kDecoded);
    return grib;
}

TEST(GribTest, HeaderIsReadAloneAndTheRestOnce)
{
    Grib grib(kHeader + kSurface + kElevenLevels);
    EXPECT_EQ(grib.DecodeHeader(), gribstatus::kDecoded);
    EXPECT_EQ(grib.key(), L"45071050");
    EXPECT_EQ(grib.status(), gribstatus::kFresh); // the levels aren't read yet
    EXPECT_EQ(grib.Decode(), gribstatus::kDecoded);
    grib.setReportText(kHeader + L"99999 00000 00000 " + kElevenLevels);
    EXPECT_EQ(grib.Decode(), gribstatus::kDecoded);
    EXPECT_EQ(grib.qnh(), 1013.0F);
    EXPECT_EQ(grib.levels().size(), 11U);
    EXPECT_EQ(grib.GetMessage(), L"");
}

TEST(GribTest, HumidityIsComputedUnlessEverythingIsUnknown)
{
    const std::tuple<int, int, double> rows[] = {{20, 20, 100.0000}, {20, 10, 52.5168},
                                                 {0, -1, 92.9595},   {-20, -30, 40.4213},
                                                 {25, -5, 13.3029},  {-1, 0, 107.5737}};
    for (const auto& [temperature, dewPoint, percent] : rows) {
        EXPECT_NEAR(relativeHumidity(temperature, dewPoint), percent, 1e-3) << dewPoint;
    }
    EXPECT_EQ(makeGribLevel(0, {}, -99, -99, 700.0F, kUnknownHumidity).humidity, -1.0F);
    EXPECT_EQ(makeGribLevel(0, {}, -99, -99, 700.0F).humidity, 100.0F);
}

TEST(GribTest, MissingPartsAreToldAndPassedOver)
{
    const std::wstring ten = kElevenLevels.substr(kElevenLevels.find(L' ', 14) + 1);
    const std::wstring few = L"(GribDecoder) - too few layers of Level\n ";
    const std::tuple<std::wstring, std::wstring, std::size_t> rows[] = {
        {kHeader + kSurface + ten, few + kHeader + kSurface + ten, 10},
        {kSurface + kElevenLevels, L"(GribDecoder) - no Grib header found", 11},
        {kHeader + kElevenLevels, L"(GribDecoder) - no Grib surface data found", 11},
        {L"#TIME:1", few + L"#TIME:1", 0},
        {L" " + kHeader + kSurface, few + L" " + kHeader + kSurface, 0},
    };
    for (const auto& [report, message, levels] : rows) {
        const Grib grib = decoded(report);
        EXPECT_EQ(grib.GetMessage(), message);
        EXPECT_EQ(grib.messageLevel(), kMessageError) << testing::PrintToString(report);
        EXPECT_EQ(grib.levels().size(), levels) << testing::PrintToString(report);
    }
    Grib tooShort{std::wstring(L"GRIB")};
    EXPECT_EQ(tooShort.Decode(), gribstatus::kFresh);
    EXPECT_FALSE(tooShort.isDecoded());
    EXPECT_EQ(tooShort.DecodeHeader(), gribstatus::kFailed);
    EXPECT_EQ(tooShort.GetMessage(), L"(GribDecoder) - no Grib header found");
}

TEST(GribTest, LongLinesDecodeInTime)
{
    constexpr std::size_t kLength = 2'000'000;
    std::wstring levels = kHeader + kSurface;
    while (levels.size() < kLength) {
        levels += L"7003012 00110 28540  ";
    }
    EXPECT_EQ(decoded(levels).levels().size(), (kLength - 48) / 21 + 1);
    EXPECT_TRUE(decoded(kHeader + std::wstring(kLength, L' ')).levels().empty());
    EXPECT_TRUE(decoded(kHeader + kSurface + std::wstring(kLength, L'9')).levels().empty());
    EXPECT_TRUE(decoded(std::wstring(kLength, L'\0')).levels().empty());
}

} // namespace

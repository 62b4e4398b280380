#include "tests/weather/store/StoreSupport.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

namespace {

constexpr std::size_t kMany = 500'000;

const std::wstring kBeyondUnicode(1, wchar_t(0x7FFFFFFF & WCHAR_MAX));

std::wstring repeated(std::wstring_view piece, std::size_t count)
{
    std::wstring text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

/// Nothing here may hang, grow beyond its input or leave something that a search finds.
TEST(HostileTextTest, IsTakenByEveryKind)
{
    const std::pair<std::wstring_view, std::size_t> rows[] = {
        {L"A", 3'000'000},       {std::wstring_view(L"\0", 1), kMany},
        {L"\n", kMany},          {L"=", kMany},
        {L" ", kMany},           {L"TAF ", kMany},      // without an end
        {L"TAFTAF\n\n", 30'000}, {L"GRIB 1\n", 30'000}, // without a place
        {kBeyondUnicode, kMany},
    };
    for (const auto& [piece, count] : rows) {
        SCOPED_TRACE(testing::PrintToString(piece));
        const std::wstring text = repeated(piece, count);
        WeatherManager store;
        store.addAirport(makeStation(L"EDDF", 50, 8));
        for (const int kind :
             {storekind::kMetar, storekind::kSynop, storekind::kUpperAir, storekind::kTaf}) {
            store.Initialize(text, kind, true);
        }
        store.setWeatherStations(text);
        store.deleteOldSynops(25200);
        EXPECT_EQ(store.metarCount() + store.synopCount() + store.stationCount(), 0U);
        EXPECT_LE(store.gribCount(), 1U) << "all lines without a grid point share one place";
        Grib grib;
        EXPECT_FALSE(store.SearchGrib(aviation::Position(50, 8), grib));
    }
}

TEST(HostileReportsTest, LongReportCostsItsOwnLineOnly)
{
    WeatherManager store;
    store.addAirport(makeStation(L"EDDF", 50, 8));
    const std::wstring tail(3'000'000, L'9');
    store.Initialize(L"EDDF 011150Z " + tail + L"\nEDDF 011150Z 18005KT 9999 21/10 Q1013\n",
                     storekind::kMetar, false);
    EXPECT_EQ(store.metarCount(), 2U);
    store.Initialize(L"GRIB 01121 00000 99500 10080 " + tail + L"\n", storekind::kUpperAir, false);
    EXPECT_EQ(store.gribCount(), 1U);
    Metar metar;
    EXPECT_TRUE(store.SearchMetar(aviation::Position(50, 8), metar));
}

TEST(HostileReportsTest, ManyReportsOfOneStationStayFast)
{
    WeatherManager store;
    store.addAirport(makeStation(L"EDDF", 50, 8));
    store.Initialize(repeated(L"EDDF 011150Z\n", 30'000), storekind::kMetar, false);
    EXPECT_EQ(store.metarCount(), 30'000U);
    for (int i = 0; i < 5000; ++i) { // a walk over all would take minutes
        Metar metar;
        ASSERT_TRUE(store.SearchMetar(aviation::Position(50.1, 8), metar));
    }
}

} // namespace

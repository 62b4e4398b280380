#include "tests/weather/store/StoreSupport.h"
#include "weather/store/StationRow.h"

#include <gtest/gtest.h>

using aviation::weather::ParseStationRow;
using aviation::weather::Station;
using aviation::weather::StationRow;

namespace {

const std::wstring kJanMayen = L"010010 ENJA   JAN MAYEN(NOR-NAVY) NO 7056N 00840W 0009   ";

/// The row with the text at a column replaced.
std::wstring RowWith(std::size_t column, const std::wstring& text)
{
    std::wstring row = kJanMayen;
    return row.replace(column, text.size(), text);
}

TEST(StationRowTest, ReadsColumns)
{
    const std::optional<StationRow> row = ParseStationRow(kJanMayen + L"\r");
    ASSERT_TRUE(row);
    EXPECT_EQ(row->number, L"010010");
    EXPECT_EQ(row->station.icao(), L"ENJA");
    EXPECT_EQ(row->station.name(), L"JAN MAYEN(NOR-NAVY)");
    EXPECT_DOUBLE_EQ(row->station.latitude(), 70.0 + 56.0 / 60.0);
    EXPECT_DOUBLE_EQ(row->station.longitude(), -(8.0 + 40.0 / 60.0));
    EXPECT_EQ(row->station.elevation(), 29) << "9 m are 29.53 feet, cut off";
}

TEST(StationRowTest, LeavesOutBrokenRows)
{
    const std::wstring rows[] = {
        kJanMayen.substr(0, 48), kJanMayen.substr(0, 48) + L"\r", RowWith(0, L"01001A"),
        RowWith(37, L"7O56N"),   RowWith(37, L"9001N"),           RowWith(43, L"00840N"),
        RowWith(43, L"18001W"),  std::wstring(60, L'\0'),
    };
    for (const std::wstring& row : rows) {
        EXPECT_FALSE(ParseStationRow(row)) << std::string(row.begin(), row.end());
    }
}

TEST(WeatherStationsTest, BrokenRowsCostTheirLineOnly)
{
    ListeningStore store;
    store.SetWeatherStations(kJanMayen + L"\r\nbroken\r\n" + RowWith(0, L"01002X") + L"\r\n"
                             + RowWith(0, L"010030") + L"\r\n");
    EXPECT_EQ(store.StationCount(), 2U);
}

TEST(AirportsTest, KeyKeepsItsPaddingAndTheLaterOfEqualKeysIsFound)
{
    ListeningStore store;
    store.AddAirport(MakeStation(L"00C ", 37, -107));
    store.AddAirports({MakeStation(L"EDDF", 1, 1), MakeStation(L"EDDF", 50, 8, 364)});
    EXPECT_EQ(store.AirportCount(), 3U);
    Station station;
    EXPECT_TRUE(store.GetStation(L"00C ", station));
    EXPECT_EQ(station.icao(), L"00C ");
    EXPECT_FALSE(store.GetStation(L"00C", station));
    EXPECT_FALSE(store.GetStation(L"", station));
    EXPECT_EQ(station.icao(), L"00C ") << "a failed look-up leaves the station alone";
    EXPECT_TRUE(store.GetStation(L"EDDF", station));
    EXPECT_EQ(station.elevation(), 364);
}

} // namespace

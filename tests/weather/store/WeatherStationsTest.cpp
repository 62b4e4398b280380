#include "tests/weather/store/StoreSupport.h"
#include "weather/store/StationRow.h"

#include <gtest/gtest.h>

using aviation::weather::parseStationRow;
using aviation::weather::Station;
using aviation::weather::StationRow;

namespace {

const std::wstring kJanMayen = L"010010 ENJA   JAN MAYEN(NOR-NAVY) NO 7056N 00840W 0009   ";

/// The row with the text at a column replaced.
std::wstring rowWith(std::size_t column, const std::wstring& text)
{
    std::wstring row = kJanMayen;
    return row.replace(column, text.size(), text);
}

TEST(StationRowTest, ReadsColumns)
{
    const std::optional<StationRow> row = parseStationRow(kJanMayen + L"\r");
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
        kJanMayen.substr(0, 48), kJanMayen.substr(0, 48) + L"\r", rowWith(0, L"01001A"),
        rowWith(37, L"7O56N"),   rowWith(37, L"9001N"),           rowWith(43, L"00840N"),
        rowWith(43, L"18001W"),  std::wstring(60, L'\0'),
    };
    for (const std::wstring& row : rows) {
        EXPECT_FALSE(parseStationRow(row)) << std::string(row.begin(), row.end());
    }
}

TEST(WeatherStationsTest, BrokenRowsCostTheirLineOnly)
{
    ListeningStore store;
    store.setWeatherStations(kJanMayen + L"\r\nbroken\r\n" + rowWith(0, L"01002X") + L"\r\n"
                             + rowWith(0, L"010030") + L"\r\n");
    EXPECT_EQ(store.stationCount(), 2U);
}

TEST(AirportsTest, KeyKeepsItsPaddingAndTheLaterOfEqualKeysIsFound)
{
    ListeningStore store;
    store.addAirport(makeStation(L"00C ", 37, -107));
    store.addAirports({makeStation(L"EDDF", 1, 1), makeStation(L"EDDF", 50, 8, 364)});
    EXPECT_EQ(store.airportCount(), 3U);
    Station station;
    EXPECT_TRUE(store.getStation(L"00C ", station));
    EXPECT_EQ(station.icao(), L"00C ");
    EXPECT_FALSE(store.getStation(L"00C", station));
    EXPECT_FALSE(store.getStation(L"", station));
    EXPECT_EQ(station.icao(), L"00C ") << "a failed look-up leaves the station alone";
    EXPECT_TRUE(store.getStation(L"EDDF", station));
    EXPECT_EQ(station.elevation(), 364);
}

} // namespace

#include "weather/output/WeatherTheme.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using aviation::Position;

TEST(WeatherThemeTest, BlocksHoldWhatTheRecordHoldsAndAreNeverNegative)
{
    NewWeather record;
    record.nWindCtr = 24;
    record.nTempCtr = 100;
    record.nCloudCtr = 17;
    record.nUpperVisCtr = -1;
    const ThemeStation station = makeThemeStation(record, 1013.0F, Position(50.0, 8.5));
    EXPECT_EQ(station.winds.size(), 24U);
    EXPECT_EQ(station.temperatures.size(), 24U);
    EXPECT_EQ(station.clouds.size(), 16U);
    EXPECT_EQ(station.visibilities.size(), 1U);
    const QByteArray bytes = themeBytes(makeThemeGrid({station}, 0));
    EXPECT_EQ(bytes.mid(6, 16).toHex(), "18000000010000001000000018000000");
}

TEST(ThemeGridPositionsTest, CountsCellsByTheRange)
{
    const std::pair<int, int> rows[] = {{100, 5}, {35, 2},   {34, 1},          {18, 1},
                                        {17, 0},  {-100, 0}, {2147483647, 625}};
    for (const auto& [rangeNm, wanted] : rows) {
        int cells = -1;
        const auto positions = themeGridPositions(Position(50.0, 8.5), rangeNm, cells);
        EXPECT_EQ(cells, wanted) << rangeNm;
        EXPECT_EQ(positions.size(), 1U + static_cast<std::size_t>(cells * cells));
    }
}

ThemeStation stationAt(double latitude, float qnh)
{
    return makeThemeStation(NewWeather(), qnh, Position(latitude, 8.0));
}

TEST(KeepNearestStationTest, CarriesTheCloseStationOver)
{
    const Position aircraft(50.0, 8.0);
    /// Latitudes of the former stations, QNHs of the new ones afterwards; 900 and up are former.
    const std::pair<std::vector<double>, std::vector<float>> rows[] = {
        {{50.7, 50.5, 49.0}, {901.0F, 1.0F, 901.0F}}, // 30 NM
        {{50.9, 51.0}, {0.0F, 1.0F, 2.0F}},           // 54 NM: too far
        {{}, {0.0F, 1.0F, 2.0F}},
    };
    for (const auto& [former, wanted] : rows) {
        ThemeGrid previous;
        float qnh = 900.0F;
        for (const double latitude : former) {
            previous.stations.push_back(stationAt(latitude, qnh++));
        }
        ThemeGrid current;
        current.stations = {stationAt(50.3, 0.0F), stationAt(49.5, 1.0F), stationAt(50.1, 2.0F)};
        keepNearestStation(previous, current, aircraft);
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            EXPECT_EQ(current.stations[i].qnh, wanted[i]) << i;
        }
    }
}

TEST(WriteThemeTest, FailureLeavesNoHalfFile)
{
    const QTemporaryDir folder;
    const ThemeGrid grid = makeThemeGrid({stationAt(50.0, 1013.0F)}, 0);
    std::ostringstream console;
    QString fault;
    EXPECT_FALSE(
        WriteTheme(grid, folder.filePath(QStringLiteral("missing/theme")), console, fault));
    EXPECT_EQ(console.str(), "no good file failed! \n");
    EXPECT_TRUE(fault.contains(QStringLiteral("missing/theme.WTB, "))) << fault.toStdString();

    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("theme.wt"))); // the text can't be opened
    EXPECT_FALSE(WriteTheme(grid, folder.filePath(QStringLiteral("theme")), console, fault));
    EXPECT_EQ(console.str(), "no good file failed! \nno good file failed! \n");
    EXPECT_TRUE(fault.contains(QStringLiteral("theme.wt, "))) << fault.toStdString();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

} // namespace

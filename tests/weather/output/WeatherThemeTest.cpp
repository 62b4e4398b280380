#include "weather/output/WeatherTheme.h"

#include "tests/support/FakeClock.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using aviation::Position;

/// One layer of each kind at a station 100.5 m high.
NewWeather SmallRecord()
{
    NewWeather record;
    record.Elev = 100 * 65536 + 32768;
    record.Vis = {708, -500, 622, 0};
    record.nWindCtr = 1;
    record.Wind[0] = {210, 12, 5, 49152, 2, 1, 3640, 65000, 500};
    record.nUpperVisCtr = 1;
    record.UpperVis[0] = {850, 709, 994, 0};
    record.nCloudCtr = 1;
    record.Cloud[0] = {1800, 1300, 50, 7, 9, 3, 2, 113, 1, 4, 1, 0};
    record.nTempCtr = 1;
    record.Temp[0] = {4100, 21, 0, -6};
    return record;
}

QByteArray FileBytes(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

const std::string kSmallStation = "01000000" // counts of winds, visibilities, clouds, temperatures
                                  "02000000"
                                  "01000000"
                                  "01000000"
                                  "00000000"
                                  "20202020"
                                  "7f000000"
                                  // surface wind: 110 12 17 270 19.995117 2 1
                                  "0000dc42000040410000884100008743"
                                  "00f69f41000000400000803f"
                                  // the same as a layer, its gust 5 above the speed
                                  "0000dc42000040410000a04000008743"
                                  "00f69f41000000400000803f"
                                  // visibilities: 11519.44 -500 708, 18408.88 709 850
                                  "c3fd33460000fac300003144"
                                  "c3d18f4600403144"
                                  "00805444"
                                  // cloud: type, 1200, 1700, no deviation, cover, top shape, ...
                                  "0900000000009644"
                                  "0080d44400000000"
                                  "0700000001000000"
                                  "0300000001000000"
                                  "0000e24204000000"
                                  "02000000"
                                  // temperature: 4000 21 3 -6
                                  "00007a450000a841000040400000c0c0"
                                  // zero and QNH 1013.25
                                  "0000000000507d44";

TEST(WeatherTheme, BytesOfASmallTheme)
{
    const ThemeGrid grid =
        MakeThemeGrid({MakeThemeStation(SmallRecord(), 1013.25F, Position(50.0, 8.5))}, 0);
    // The pair behind the first station begins at 6 + 176 + 6 + 8 = 196; plus 9 it is 0xcd.
    const std::string expected = "0900000001fd" + kSmallStation + "0000404002fd"
                                 + "0000000000000000" + "0100cd00" + "00004040" + kSmallStation
                                 + "00004040";
    EXPECT_EQ(ThemeBytes(grid).toHex().toStdString(), expected);
}

TEST(WeatherTheme, BlocksHoldWhatTheRecordHoldsAndAreNeverNegative)
{
    NewWeather record = SmallRecord();
    record.nWindCtr = 24;
    record.nTempCtr = 100;
    record.nCloudCtr = 17;
    record.nUpperVisCtr = -1;
    const ThemeStation station = MakeThemeStation(record, 1013.0F, Position(50.0, 8.5));
    EXPECT_EQ(station.winds.size(), 24U);
    EXPECT_EQ(station.temperatures.size(), 24U);
    EXPECT_EQ(station.clouds.size(), 16U);
    EXPECT_EQ(station.visibilities.size(), 1U);
    const QByteArray bytes = ThemeBytes(MakeThemeGrid({station}, 0));
    EXPECT_EQ(bytes.mid(6, 16).toHex(), "18000000010000001000000018000000");
}

TEST(WeatherTheme, NoCloudsWriteNoCloudBlock)
{
    NewWeather record;
    record.nWindCtr = 1;
    const QByteArray bytes =
        ThemeBytes(MakeThemeGrid({MakeThemeStation(record, 1013.0F, Position(50.0, 8.5))}, 0));
    constexpr int kStation = 28 + 28 + 28 + 12 + 8;
    EXPECT_EQ(bytes.size(), 6 + 2 * (kStation + 4) + 18);
}

TEST(ThemeGridPositions, CountsCellsByTheRange)
{
    struct Row
    {
        int rangeNm;
        int cells;
    };
    for (const Row& row : {Row{100, 5}, Row{35, 2}, Row{34, 1}, Row{18, 1}, Row{17, 0}, Row{0, 0},
                           Row{-100, 0}, Row{2147483647, 625}})
    {
        int cells = -1;
        const auto positions = ThemeGridPositions(Position(50.0, 8.5), row.rangeNm, cells);
        EXPECT_EQ(cells, row.cells) << row.rangeNm;
        EXPECT_EQ(positions.size(), 1U + static_cast<std::size_t>(row.cells * row.cells));
    }
}

TEST(ThemeGridPositions, RowsGoNorthAndStayOnTheirParallel)
{
    const Position aircraft(50.0, 8.5);
    int cells = 0;
    const std::vector<Position> positions = ThemeGridPositions(aircraft, 100, cells);
    EXPECT_EQ(positions.front(), aircraft);
    const auto at = [&](int row, int column) {
        return positions[static_cast<std::size_t>(1 + row * cells + column)];
    };
    // 40 km to the south and to the west: half of five cells.
    EXPECT_NEAR(at(0, 0).latitude(), 50.0 - 40.0 / 111.318, 0.002);
    EXPECT_NEAR(at(0, 0).longitude(), 8.5 - 40.0 / 72.09, 0.002);
    for (int row = 0; row < cells; ++row) {
        EXPECT_EQ(at(row, 0).longitude(), at(0, 0).longitude());
        for (int column = 1; column < cells; ++column) {
            EXPECT_EQ(at(row, column).latitude(), at(row, 0).latitude());
            EXPECT_NEAR(aviation::GreatCircleNm(at(row, column - 1), at(row, column)), 8.6393,
                        1e-3);
        }
    }
    EXPECT_NEAR(aviation::GreatCircleNm(at(0, 0), at(1, 0)), 8.6393, 1e-3);
    EXPECT_GT(at(1, 0).latitude(), at(0, 0).latitude());
}

ThemeStation StationAt(double latitude, float qnh)
{
    return MakeThemeStation(NewWeather(), qnh, Position(latitude, 8.0));
}

TEST(KeepNearestStation, CarriesTheCloseStationOver)
{
    const Position aircraft(50.0, 8.0);
    struct Row
    {
        std::vector<double> former; ///< latitudes of the former stations
        std::vector<float> qnh;     ///< of the new stations afterwards, 900 and up are former
    };
    const Row rows[] = {
        {{50.7, 50.5, 49.0}, {901.0F, 1.0F, 901.0F}}, // 30 NM
        {{50.9, 51.0}, {0.0F, 1.0F, 2.0F}},           // 54 NM: too far
        {{}, {0.0F, 1.0F, 2.0F}},
        {{0.0}, {0.0F, 1.0F, 2.0F}},
    };
    for (const Row& row : rows) {
        ThemeGrid previous;
        for (const double latitude : row.former) {
            previous.stations.push_back(
                StationAt(latitude, 900.0F + static_cast<float>(previous.stations.size())));
        }
        ThemeGrid current;
        current.stations = {StationAt(50.3, 0.0F), StationAt(49.5, 1.0F), StationAt(50.1, 2.0F)};
        KeepNearestStation(previous, current, aircraft);
        for (std::size_t i = 0; i < row.qnh.size(); ++i) {
            EXPECT_EQ(current.stations[i].qnh, row.qnh[i]) << i;
        }
    }
    ThemeGrid empty;
    ThemeGrid close;
    close.stations = {StationAt(50.0, 1.0F)};
    KeepNearestStation(close, empty, aircraft);
    EXPECT_TRUE(empty.stations.empty());
}

TEST(WriteTheme, WritesBothFilesAndTellsHotLayers)
{
    const FakeClock clock(2019, 7, 1, 12, 5, 9);
    const QTemporaryDir folder;
    const QString base = folder.filePath(QStringLiteral("cirrilon"));
    NewWeather record = SmallRecord();
    record.nTempCtr = 3;
    record.Temp[1] = {3100, 30, 0, 0}; // just 3000 m above the station
    record.Temp[2] = {9000, 20, 0, 0};
    const ThemeGrid grid =
        MakeThemeGrid({MakeThemeStation(record, 1013.0F, Position(1.0, 1.0))}, 0);
    std::ostringstream console;
    ASSERT_TRUE(WriteTheme(grid, base, console));
    EXPECT_EQ(FileBytes(base + QStringLiteral(".WTB")), ThemeBytes(grid));
    EXPECT_EQ(FileBytes(base + QStringLiteral(".wt")),
              "[Main]\nTitle = \"Cirrilon\"\nDescription = \"This is the weather model of Cirrilon "
              "Pro. For further information https://cirrilon.example. Size:  Date: Mon Jul  1 "
              "12:05:09 2019\n\"\nVersion = 9.00");
    EXPECT_EQ(console.str(), "Temp to height: 4000m, 21C\nTemp to height: 4000m, 21C\n");
}

TEST(WriteTheme, FailureLeavesNoHalfFile)
{
    const QTemporaryDir folder;
    const ThemeGrid grid = MakeThemeGrid({StationAt(50.0, 1013.0F)}, 0);
    std::ostringstream console;
    EXPECT_FALSE(WriteTheme(grid, folder.filePath(QStringLiteral("missing/theme")), console));
    EXPECT_EQ(console.str(), "no good file failed! \n");

    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("theme.wt"))); // the text can't be opened
    EXPECT_FALSE(WriteTheme(grid, folder.filePath(QStringLiteral("theme")), console));
    EXPECT_EQ(console.str(), "no good file failed! \nno good file failed! \n");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());
}

} // namespace

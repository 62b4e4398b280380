#include "nav/records/AirportTable.h"

#include <gtest/gtest.h>

namespace {

TEST(AirportTableTest, ReadsRowsOfTheBuiltInTable)
{
    const QVector<QAirport> airports = readAirportTable(
        "# "
        "icao;name;country;elev;lat;lon;fs9_station;fsx_station;p3d_station;xplane_station;"
        "active\r\n"
        "00C ;Animas, Durango, CO;United States;6683.9;37.2032000;-107.869000000;0;0;0;0;1\r\n"
        "EHAM;Amsterdam;Netherlands;-11;52.3086;4.7639;1;1;1;1;1\r\n"
        "LSZH;Z\xC3\xBCrich;Switzerland;1416;47.4647;8.5492");
    ASSERT_EQ(airports.size(), 3);
    EXPECT_EQ(airports[0].Ident, QStringLiteral("00C ")) << "the padding is part of the key";
    EXPECT_EQ(airports[0].Elevation, 6683);
    EXPECT_DOUBLE_EQ(airports[0].Lat, 37.2032);
    EXPECT_DOUBLE_EQ(airports[0].Lon, -107.869);
    EXPECT_EQ(airports[1].Elevation, -11);
    EXPECT_EQ(airports[2].Name, QStringLiteral("Z\u00FCrich"));
}

TEST(AirportTableTest, BrokenRowCostsItsLineOnly)
{
    const char* const broken[] = {
        "",
        "XXXX;five;fields;0;50",
        "XXXX;no number;;0;north;8",
        "XXXX;not a number;;0;nan;8",
        "XXXX;too far north;;0;90.0001;8",
        "XXXX;too far east;;0;50;1e300",
        "XXXX;no longitude;;0;50;",
        "#XXX;comment;;0;50;8",
    };
    for (const char* row : broken) {
        const QByteArray text = QByteArray("AAAA;a;;1;50;8\n") + row + "\nBBBB;b;;2;-90;180\n";
        const QVector<QAirport> airports = readAirportTable(text);
        ASSERT_EQ(airports.size(), 2) << row;
        EXPECT_EQ(airports[1].Ident, QStringLiteral("BBBB")) << row;
    }
}

TEST(AirportTableTest, ElevationOutOfRangeSaturates)
{
    const std::pair<const char*, int> rows[] = {
        {"99999999999999999999", 2147483647}, {"-1e300", -2147483647 - 1}, {"high", 0}, {"nan", 0}};
    for (const auto& [elevation, feet] : rows) {
        const auto airports = readAirportTable(QByteArray("A;;;") + elevation + ";1;1\n");
        EXPECT_EQ(airports.value(0).Elevation, feet) << elevation;
    }
}

TEST(AirportTableTest, OnlyTheUsersTableHasDecimalCommas)
{
    const QByteArray row = "# icao;name;country;elev;lat;lon;\nEDXX;Own;Germany;120;50,25;-8,75;\n";
    const QVector<QAirport> own = parseAdditionalAirports(row);
    ASSERT_EQ(own.size(), 1);
    EXPECT_DOUBLE_EQ(own[0].Lat, 50.25);
    EXPECT_DOUBLE_EQ(own[0].Lon, -8.75);
    EXPECT_DOUBLE_EQ(readAirportTable(row)[0].Lat, 50.0);
}

TEST(AirportTableTest, HostileTextIsReadInOnePass)
{
    QByteArray text(2'000'000, ';');
    EXPECT_TRUE(readAirportTable(text).isEmpty());
    text.fill('7');
    EXPECT_TRUE(readAirportTable(text).isEmpty());
    text = QByteArray("\0\0;\xFF\xFE;\0;0;1;", 13) + QByteArray(2'000'000, '1') + "\n";
    EXPECT_TRUE(readAirportTable(text).isEmpty());
    EXPECT_TRUE(readAirportTable(QByteArray(500'000, '\n')).isEmpty());
}

} // namespace

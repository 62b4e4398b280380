#include "nav/records/NavdataBase.h"

#include "tests/support/Text.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QWaypoint point(const QString& ident, double latitude)
{
    return {waypointtype::kFix, {}, ident, {}, latitude, 0.0, 0, {}};
}

class Source final : public NavdataBase
{
public:
    bool readAirports(const QString& /*file*/) override
    {
        Airports = {QAirport("first"_q, "EDDB"_q, {}, 0.0, 0.0, 0),
                    QAirport("second"_q, "EDDB"_q, {}, 0.0, 0.0, 0)};
        Waypoints = {point("TWICE"_q, 1.0), point("ONCE"_q, 2.0), point("TWICE"_q, 3.0)};
        Navaids = {point("NOR"_q, 4.0), point("NOR"_q, 5.0)};
        return true;
    }
    bool readAirportNames(const QString& /*file*/) override { return false; }
    using NavdataBase::pathOf;
};

TEST(NavdataBaseTest, FindsTheFirstOrAllInTheirOrder)
{
    Source source;
    source.readAirports({});
    QAirport airport;
    EXPECT_TRUE(source.FindAirport(" eddb "_q, airport));
    EXPECT_EQ(airport.Name, "first"_q);
    QWaypoint waypoint;
    EXPECT_TRUE(source.FindWaypoint("once"_q, waypoint));
    EXPECT_EQ(waypoint.Lat, 2.0);
    EXPECT_TRUE(source.FindNavaid("NOR"_q, waypoint));
    EXPECT_EQ(waypoint.Lat, 4.0);

    QList<QWaypoint> found;
    EXPECT_TRUE(source.FindNavaid("NOR"_q, found));
    EXPECT_TRUE(source.FindWaypoint("TWICE"_q, found));
    QList<double> latitudes;
    for (const QWaypoint& each : found) {
        latitudes << each.Lat;
    }
    EXPECT_EQ(latitudes, (QList<double>{4.0, 5.0, 1.0, 3.0})) << "appended";
}

TEST(NavdataBaseTest, ASearchInVainLeavesTheResult)
{
    Source source;
    source.readAirports({});
    QAirport airport("KEPT"_q);
    EXPECT_FALSE(source.FindAirport("EDD"_q, airport));
    EXPECT_FALSE(source.FindRunways("EDDB"_q, airport));
    EXPECT_EQ(airport.Ident, "KEPT"_q);
    QWaypoint waypoint = point("KEPT"_q, 0.0);
    EXPECT_FALSE(source.FindWaypoint("NOR"_q, waypoint)) << "that is a navaid";
    EXPECT_FALSE(source.FindNavaid("ONCE"_q, waypoint));
    EXPECT_EQ(waypoint.Ident, "KEPT"_q);
    QList<QWaypoint> found{waypoint};
    EXPECT_FALSE(source.FindWaypoint("NONE"_q, found));
    EXPECT_EQ(found.size(), 1);
    EXPECT_FALSE(source.readWaypoints({}) || source.readNavaids({}));
}

TEST(NavdataBaseTest, AFolderCountsFromThreeCharactersOn)
{
    Source source;
    const std::pair<QString, QString> rows[] = {
        {QString(), "a.txt"_q}, {"a/"_q, "a.txt"_q}, {"ab/"_q, "ab/a.txt"_q}};
    for (const auto& [folder, path] : rows) {
        source.setFolder(folder);
        EXPECT_EQ(source.folder(), folder);
        EXPECT_EQ(source.pathOf("a.txt"_q), path);
    }
}

TEST(NavdataBaseTest, TheUsersAirportsAreAppended)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("airportsadd.dat"_q));
    Source source;
    source.readAirports({});
    EXPECT_FALSE(source.readAdditionalAirports(file.fileName()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# icao;name;country;elev;lat;lon;\nZZZA;Home;Germany;100;50,5;8.5;\n");
    file.close();
    EXPECT_TRUE(source.readAdditionalAirports(file.fileName()));
    ASSERT_EQ(source.airports().size(), 3);
    EXPECT_EQ(source.airports().last().Lat, 50.5);
}

} // namespace

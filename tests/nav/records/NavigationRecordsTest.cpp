#include "nav/records/QFlightplan.h"
#include "tests/support/Text.h"

#include <gtest/gtest.h>

namespace {

TEST(NavigationRecordsTest, AFreshWaypointHasNoLegAndFixedTemperatures)
{
    const QWaypoint fresh;
    EXPECT_EQ(fresh.Type, 0);
    EXPECT_EQ(fresh.Temperature, 13);
    EXPECT_EQ(fresh.DewPoint, 5);
    EXPECT_EQ(fresh.Course, -1.0F);
    EXPECT_EQ(fresh.LegFuel, -1);

    const QWaypoint airport(QStation("Cologne"_q, "EDDK"_q, "DE"_q, 50.9, 7.1, 302));
    EXPECT_EQ(airport.Type, 1) << "whatever the station is";
    EXPECT_EQ(airport.Ident, "EDDK"_q);
    EXPECT_EQ(airport.Elevation, 302);
}

TEST(NavigationRecordsTest, TypesHaveTheirTexts)
{
    const char* const texts[] = {"unknown", "Airport", "VOR",          "VOR",     "Unknown", "NDB",
                                 "ILS",     "ILSD",    "Intersection", "Unknown", "Unknown"};
    std::uint8_t type = 0;
    for (const char* text : texts) {
        const QWaypoint waypoint(type, {}, {}, {}, 0.0, 0.0, 0, {});
        EXPECT_EQ(waypoint.typeText().toStdString(), text) << int(type);
        ++type;
    }
}

TEST(NavigationRecordsTest, AnAirportTakesWhatAStationHas)
{
    std::wstring icao = L"EDDK";
    std::wstring name = L"K\u00F6ln";
    std::wstring country = L"Germany";
    const aviation::weather::Station station(icao, name, country, 302, {50.9, 7.1});
    const QAirport airport(station);
    EXPECT_EQ(airport.Ident + airport.Name + airport.Region, "EDDKK\u00F6lnGermany"_q);
    EXPECT_EQ(airport.Lat + airport.Lon, 58.0);
    EXPECT_EQ(airport.Elevation, 302);
}

TEST(NavigationRecordsTest, CourseAndDistanceLeadToTheOther)
{
    const QLatLon from{0.0, 0.0};
    const QLatLon east{0.0, 1.0};
    EXPECT_NEAR(from.courseTo(east), 90.0, 1e-9);
    EXPECT_NEAR(east.courseTo(from), 270.0, 1e-9);
    EXPECT_NEAR(from.distanceTo(east), 60.1, 0.05);
}

TEST(NavigationRecordsTest, TheRouteTextNamesAllWaypoints)
{
    QFlightplan plan;
    EXPECT_EQ(plan.routeText(), QString());
    plan.Waypoints = {QWaypoint(QStation("EDDK"_q)), QWaypoint(QStation("NOR"_q)),
                      QWaypoint(QStation("EDDB"_q))};
    EXPECT_EQ(plan.routeText(), "EDDK NOR EDDB"_q);
}

} // namespace

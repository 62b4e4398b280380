#include "standins/simulator/SimulatedFlight.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

namespace {

using aviation::structs::AircraftData;
using simulator::Phase;
using simulator::SimulatedFlight;

/// Where the recorded flight lands, between two of its points.
const aviation::Position kDenverRunway(39.8773, -104.626);

struct Walk
{
    std::vector<Phase> phases; ///< each time that it changed
    std::vector<int> landingRates;
    int highest = 0;
    double largestStepNm = 0.0;
    aviation::Position touchdown;
};

/// The whole flight in steps of two seconds; checks what has to hold everywhere.
Walk walk(SimulatedFlight& flight)
{
    Walk seen;
    AircraftData before = flight.aircraft();
    for (flight.jumpTo(0.0); flight.elapsed() < flight.duration(); flight.advance(2.0)) {
        const AircraftData now = flight.aircraft();
        if (seen.phases.empty() || seen.phases.back() != flight.phase()) {
            seen.phases.push_back(flight.phase());
        }
        if (const int rate = flight.takeLandingRate()) {
            seen.landingRates.push_back(rate);
            seen.touchdown = now.position;
        }
        seen.highest = std::max(seen.highest, now.altitude);
        seen.largestStepNm = std::max(seen.largestStepNm, now.position.DistanceTo(before.position));
        EXPECT_FALSE(now.onGround && now.heightAgl != 0) << flight.elapsed();
        EXPECT_FALSE(now.parkingBrake && now.groundSpeed > 0) << flight.elapsed();
        EXPECT_FALSE(now.engineOff && !now.onGround) << flight.elapsed();
        EXPECT_FALSE(now.doorOpen && !now.parkingBrake) << flight.elapsed();
        before = now;
    }
    return seen;
}

void expectGateToGate(SimulatedFlight& flight)
{
    const Walk seen = walk(flight);
    ASSERT_EQ(seen.phases.size(), static_cast<std::size_t>(simulator::kPhases));
    for (std::size_t i = 0; i < seen.phases.size(); ++i) {
        EXPECT_EQ(seen.phases[i], static_cast<Phase>(i));
    }
    ASSERT_EQ(seen.landingRates.size(), 1U);
    EXPECT_LT(seen.landingRates[0], -50);
    EXPECT_GT(seen.landingRates[0], -400);
    EXPECT_LT(seen.largestStepNm, 0.5);
    EXPECT_TRUE(flight.aircraft().engineOff);
    EXPECT_GT(flight.fuelBurned(), 500.0);
}

TEST(SimulatedFlightTest, TheRecordedTrackGoesFromGateToGate)
{
    SimulatedFlight flight;
    expectGateToGate(flight);
    const Walk seen = walk(flight);
    EXPECT_NEAR(seen.highest, 34000, 100);
    EXPECT_LT(seen.touchdown.DistanceTo(kDenverRunway), 0.3);
}

TEST(SimulatedFlightTest, GreatCirclesGoFromGateToGate)
{
    using Row = std::tuple<aviation::Position, aviation::Position>;
    for (const auto& [from, to] :
         {Row{{50.03, 8.57}, {49.0, 8.0}}, Row{{-36.9, 174.8}, {21.3, -157.9}}})
    {
        SimulatedFlight flight(simulator::greatCircleTrack(from, to));
        expectGateToGate(flight);
        EXPECT_LT(flight.aircraft().position.DistanceTo(to), 3.0);
    }
    EXPECT_TRUE(simulator::greatCircleTrack({50.0, 8.0}, {50.1, 8.0}).empty());
}

TEST(TrackTest, TakesOddTextWithoutFalling)
{
    const QByteArray head = "time_utc,latitude,longitude,altitude_ft,onground\n";
    using Row = std::tuple<QByteArray, std::size_t>;
    for (const auto& [lines, points] :
         {Row{"", 0}, Row{"2025-02-05T18:00:00Z,1,2,3,False\n", 0},
          Row{"2025-02-05T18:00:00Z,1,2,x,False\n\nnonsense\n2025-02-05T18:00:01Z,1,2,inf,True", 2},
          Row{"2025-02-05T18:00:01Z,1,2,,\n2025-02-05T18:00:00Z,1,2,,\n2025-02-05T18:00:02Z,91,2,,"
              "\n"
              "2025-02-05T18:00:03Z,1,2,3,False\n",
              2}})
    {
        QString error;
        const simulator::Track track = simulator::readTrack(head + lines, &error);
        EXPECT_EQ(track.size(), points) << lines.constData();
        EXPECT_EQ(error.isEmpty(), points > 0);
        SimulatedFlight flight(track);
        flight.advance(1.0);
        EXPECT_FALSE(std::isnan(flight.aircraft().position.latitude()));
    }
}

} // namespace

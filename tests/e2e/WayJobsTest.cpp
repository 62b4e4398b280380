#include "sim/BridgeText.h"
#include "tests/e2e/WayFixture.h"

#include <algorithm>

/// What each way into the simulator can do, and that load and radios come back as they went in.
namespace {

namespace interfaceid = aviation::interfaceid;

// --- load and radios

class LoadTest : public WaysTest, public testing::WithParamInterface<Way>
{
protected:
    static std::string textOf(const aviation::structs::RadioFrequencys& radios)
    {
        return bridgetext::radioText(radios).toStdString();
    }
};

TEST_P(LoadTest, GoesInAndComesBack)
{
    begin(GetParam());
    connectSimulator();
    ConnectWorker& worker = controller->connectWorker();
    ASSERT_EQ(run(Job(connectjob::kGetFuel, QString())), 0);
    aviation::structs::AircraftFuel fuel = worker.fuel();
    ASSERT_EQ(fuel.tanks.size(), 3U) << "tanks without capacity aren't listed";
    EXPECT_NEAR(fuel.fuelWeight, 6.7, 0.01);
    double level = 12.5;
    for (aviation::structs::FuelTank& tank : fuel.tanks) {
        tank.level = level += 20.25;
    }
    worker.setFuel(fuel);
    ASSERT_EQ(run(Job(connectjob::kSetFuel, QString())), 0);
    ASSERT_EQ(run(Job(connectjob::kGetFuel, QString())), 0);
    const aviation::structs::AircraftFuel back = worker.fuel();
    ASSERT_EQ(back.tanks.size(), fuel.tanks.size());
    for (const aviation::structs::FuelTank& tank : fuel.tanks) {
        const auto same = std::find_if(back.tanks.begin(), back.tanks.end(),
                                       [&tank](const auto& each) { return each.id == tank.id; });
        ASSERT_NE(same, back.tanks.end()) << tank.id;
        EXPECT_NEAR(same->level, tank.level, 0.001) << tank.id;
        EXPECT_NEAR(same->capacity, tank.capacity, 0.5) << tank.id;
    }

    ASSERT_EQ(run(Job(connectjob::kGetPayload, QString())), 0);
    aviation::structs::AircraftPayload payload = worker.payload();
    ASSERT_EQ(payload.stations.size(), 6U);
    float pounds = 150.0F;
    for (aviation::structs::AircraftPayloadStation& station : payload.stations) {
        station.weight = pounds += 33.0F;
    }
    worker.setPayload(payload);
    ASSERT_EQ(run(Job(connectjob::kSetPayload, QString())), 0);
    const auto loaded = state().payload.stations;
    ASSERT_EQ(loaded.size(), payload.stations.size());
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        EXPECT_FLOAT_EQ(loaded[i].weight, payload.stations[i].weight) << i;
    }
    ASSERT_EQ(run(Job(connectjob::kGetPayload, QString())), 0);
    const auto told = worker.payload().stations;
    ASSERT_EQ(told.size(), loaded.size());
    const bool tellsLoad = GetParam().interfaceType == interfaceid::kBridge;
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        EXPECT_FLOAT_EQ(tellsLoad ? told[i].weight : told[i].maxWeight, loaded[i].weight) << i;
    }
}

TEST_P(LoadTest, RadiosGoInWhereTheWayHasThemAndComeBackEqual)
{
    begin(GetParam());
    connectSimulator();
    ConnectWorker& worker = controller->connectWorker();
    const bool canSet = GetParam().interfaceType != interfaceid::kSimConnect;
    const aviation::structs::RadioFrequencys rows[] = {
        {12345, 11800, 13495, 13690, 11030, 10815, 11795, 10895, 2471, 384, 384},
        {11802, 12817, 13697, 12150, 11010, 10890, 10805, 11700, 7, 1750, 384},
    };
    for (const aviation::structs::RadioFrequencys& radios : rows) {
        worker.setRadios(radios);
        EXPECT_EQ(run(Job(connectjob::kSetRadios, QStringLiteral("Set frequency data"))),
                  canSet ? 0 : 200);
        if (!canSet) {
            clients.model().setRadios(radios);
        }
        EXPECT_EQ(textOf(state().radios), textOf(radios));
        worker.setRadios({});
        ASSERT_EQ(run(Job(connectjob::kGetRadios, QString())), 0);
        EXPECT_EQ(textOf(worker.radios()), textOf(radios));
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, LoadTest, testing::Values(kBridge, kSimConnect, kFsuipc, kBoth),
                         nameOf);

// --- every job

struct JobResults
{
    int id;
    const char* name;
    int overBridge;
    int overSimConnect;
    int overFsuipc;
    int overBoth;
};

TEST_F(WaysTest, EachJobGivesWhatTheWayCanDo)
{
    const JobResults rows[] = {
        {connectjob::kClearWeather, "Clear WX", 0, 0, 0, 0},
        {connectjob::kSendText, "a text", 0, 0, 0, 0},
        {connectjob::kCreateStation, "KZZZ:Nowhere:44.0:-95.0:1000", 200, 0, 200, 0},
        {connectjob::kWeatherAt, "44.0;-95.0", 200, 0, 0, 0},
        {connectjob::kLoadFlightPlan, "plan.pln", 200, 0, 200, 0},
        {connectjob::kCloudMap, "40:2000", 200, 20, 200, 20},
        {connectjob::kWindAtAircraft, "180:20.5", 0, 200, 0, 0},
        {connectjob::kWindAtAircraft, "361:20", 17, 17, 17, 17},
        {connectjob::kSetTheme, "no/such/file", 15, 0, 200, 0},
        {connectjob::kSetWeather, "nothing waits", 5, 5, 5, 5},
        {connectjob::kSetXPlaneWeather, "Set XPWeather", 0, 200, 200, 200},
        {connectjob::kSetWindLayers, "Set XPWind", 0, 200, 200, 200},
        {connectjob::kSetVisibility, "5000", 0, 200, 200, 200},
        {connectjob::kSetGlobalWind, "", 0, 200, 200, 200},
        {connectjob::kActivateWeather, "", 0, 200, 200, 200},
        {connectjob::kDateTime, "", 0, 200, 200, 200},
        {connectjob::kServerConfig, "", 0, 200, 200, 200},
        {connectjob::kNotImplemented, "", 200, 200, 200, 200},
        {connectjob::kWrongVersion42, "", 4, 4, 4, 4}};
    const std::pair<Way, int JobResults::*> ways[] = {{kBridge, &JobResults::overBridge},
                                                      {kSimConnect, &JobResults::overSimConnect},
                                                      {kFsuipc, &JobResults::overFsuipc},
                                                      {kBoth, &JobResults::overBoth}};
    for (const auto& [way, result] : ways) {
        SCOPED_TRACE(way.name);
        begin(way);
        connectSimulator();
        const int clears = state().clears;
        for (const JobResults& row : rows) {
            EXPECT_EQ(run(Job(row.id, QString::fromLatin1(row.name))), row.*result) << row.id;
        }
        EXPECT_EQ(state().clears, clears + 1);
        EXPECT_TRUE(state().screenTexts.contains(QStringLiteral("a text")));
        EXPECT_EQ(state().stations.size(), rows[2].*result == 0 ? 1U : 0U);
        EXPECT_EQ(state().wind.has_value(), rows[6].*result == 0);
        controller.reset();
    }
}

} // namespace

#include "aviation/Angles.h"
#include "tests/e2e/WayFixture.h"

#include <cmath>

/// Faults, detection and direct wind control on every way into the simulator.
namespace {

using simulator::SimulatorState;
namespace interfaceid = aviation::interfaceid;
namespace command = simulator::command;
namespace message = simulator::message;

// --- faults

struct FaultOnAWay
{
    Way way;
    const char* fault;
};

class WayFaultsTest : public WaysTest, public testing::WithParamInterface<FaultOnAWay>
{};

/// In a poll and in a run of stations: the program lives, and works when the fault has gone, after
/// connecting anew at the latest.
TEST_P(WayFaultsTest, AreSurvived)
{
    const FaultOnAWay& row = GetParam();
    begin(row.way);
    connectSimulator();
    download();
    setFault(QString::fromLatin1(row.fault) + QStringLiteral("@6/2*1"));
    poll();
    const bool isRecord = row.way.bridgedInterface == interfaceid::kFsuipc
                          || row.way.interfaceType == interfaceid::kFsuipc;
    if (!controller->IsConnected()) {
        connectSimulator();
    }
    setFault(QString::fromLatin1(row.fault)
             + (isRecord ? QStringLiteral("@5/7*1") : QStringLiteral("@5/8*1")));
    tick(); // sets no weather where a spoilt position has no reports near it
    settle();
    setFault(QStringLiteral("none"));
    if (poll() != 0 || !controller->IsConnected()) {
        if (controller->IsConnected()) {
            controller->OnConnectClicked();
            settle();
        }
        connectSimulator();
    }
    EXPECT_EQ(poll(), 0);
    clients.model().withState([](SimulatorState& each) {
        each.weatherTexts.clear();
        each.weatherRecords.clear();
    });
    timer("timerWeather").start(); // a lost connection leaves it to the next download
    controller->OnClickedSetWX();
    EXPECT_EQ(setWeather(connectjob::kSetWeather), 0);
    const SimulatorState after = state();
    EXPECT_GT(isRecord ? static_cast<int>(after.weatherRecords.size()) : after.weatherTexts.size(),
              2);
}

std::vector<FaultOnAWay> everyFaultOnEveryWay()
{
    std::vector<FaultOnAWay> rows;
    for (const Way& way : {kBridgedTexts, kSimConnect, kFsuipc}) {
        for (const char* fault : {"refuse", "silent", "slow:30", "garbage:40", "wrongid", "cut:10",
                                  "close", "drop", "huge"})
        {
            rows.push_back({way, fault});
        }
    }
    // The same code again, but for where a set job gives up and what is closed.
    for (const Way& way : {kBridgedRecords, kBoth}) {
        for (const char* fault : {"refuse", "silent", "drop"}) {
            rows.push_back({way, fault});
        }
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Kinds, WayFaultsTest, testing::ValuesIn(everyFaultOnEveryWay()),
                         [](const auto& row) {
                             QString name = QString::fromLatin1(row.param.fault);
                             name.replace(QLatin1Char(':'), QLatin1Char('_'));
                             return std::string(row.param.way.name) + '_' + name.toStdString();
                         });

TEST_F(WaysTest, AFailingCallInARunOfStationsDoesNotEndIt)
{
    begin(kSimConnect);
    connectSimulator();
    download();
    ASSERT_EQ(setWeather(connectjob::kSetWeather), 0);
    const int whole = state().weatherTexts.size();
    clients.model().withState([](SimulatorState& each) { each.weatherTexts.clear(); });
    clients.host().failNextCalls("SimConnect_WeatherSetObservation", 2);
    controller->OnClickedSetWX();
    EXPECT_EQ(setWeather(connectjob::kSetWeather), 0);
    EXPECT_EQ(state().weatherTexts.size(), whole - 2);
    EXPECT_EQ(view.linesWith(QStringLiteral("(ConnectWorker) - Set Weather failed. ")), 2);
}

TEST_F(WaysTest, APauseIsNoFault)
{
    for (const Way& way : {kSimConnect, kFsuipc, kBoth}) {
        begin(way);
        connectSimulator();
        const int errors = view.linesWith(QStringLiteral("Error"));
        clients.model().setPaused(true);
        bool seen = false;
        for (int i = 0; i < 12 && !seen; ++i) { // SimConnect is asked on every eleventh poll
            seen = poll() == 19;
        }
        EXPECT_TRUE(seen) << way.name;
        EXPECT_EQ(view.linesWith(QStringLiteral("Error")), errors) << way.name;
        clients.model().setPaused(false);
        EXPECT_EQ(poll(), 0) << way.name;
        controller.reset();
    }
}

// --- detection

struct Detection
{
    const char* name;
    bool hasSimConnect;
    bool hasFsuipc;
    bool isRunning;
    std::uint32_t fsuipcCode;
    int interfaceType; ///< afterwards, -1 not connected
};

class DetectedTest : public WaysTest, public testing::WithParamInterface<Detection>
{};

TEST_P(DetectedTest, ByItself)
{
    const Detection& row = GetParam();
    clients.setSimConnectInstalled(row.hasSimConnect);
    clients.setFsuipcInstalled(row.hasFsuipc);
    clients.setRunning(row.isRunning);
    begin({"auto", interfaceid::kAuto}, row.fsuipcCode);
    controller->OnConnectClicked();
    settle();
    EXPECT_EQ(controller->IsConnected(), row.interfaceType >= 0);
    if (row.interfaceType < 0) {
        EXPECT_GT(view.linesWith(QStringLiteral("FS or Server not found")), 0);
        return;
    }
    EXPECT_EQ(controller->connectWorker().interfaceType(), row.interfaceType);
    EXPECT_EQ(poll(), 0);
    download();
    EXPECT_EQ(setWeather(connectjob::kSetWeather), 0);
    EXPECT_EQ(state().refreshes, row.fsuipcCode == kFs2004InFsuipc ? 1 : 0);
    EXPECT_EQ(run(Job(connectjob::kCloudMap, QStringLiteral("40:10"))),
              row.interfaceType == interfaceid::kFsuipcSimConnect ? 20 : 200);
}

INSTANTIATE_TEST_SUITE_P(
    Simulators, DetectedTest,
    testing::Values(Detection{"fsx", true, true, true, kFsxInFsuipc, 3},
                    Detection{"fsx_without_simconnect", false, true, true, kFsxInFsuipc, 1},
                    Detection{"fs2004", true, true, true, kFs2004InFsuipc, 1},
                    Detection{"without_fsuipc", true, false, true, kFsxInFsuipc, -1},
                    Detection{"not_running", true, true, false, kFsxInFsuipc, -1}),
    [](const auto& row) { return std::string(row.param.name); });

// --- direct wind control

class DirectWindTest : public WaysTest
{
protected:
    void beginFlight(const Way& way)
    {
        settings->setFsWindDwc(true);
        settings->setGustySurfaceWind(false);
        begin(way);
        connectSimulator();
        download();
        ASSERT_EQ(poll(), 0);
    }
    void step()
    {
        constexpr int kJustOverASecond = 1001;
        timer("timerWeather").start();
        tick(std::chrono::milliseconds(kJustOverASecond));
        settle();
    }
};

TEST_F(DirectWindTest, FollowsTheRealWindByItsLimitsAndKeepsIt)
{
    constexpr double kMostAStep = 1.02; // the bridge's text has two decimals
    for (const Way& way : {kFsuipc, kBoth, Way{"bridged", interfaceid::kBridge, 1, 3}}) {
        SCOPED_TRACE(way.name);
        beginFlight(way);
        step(); // sets the weather and searches the reports
        int moved = 0;
        aviation::weather::Wind before;
        for (int i = 0; i < 8; ++i) {
            step();
            const auto wind = state().wind;
            if (!wind) {
                continue;
            }
            const double turn = aviation::AngleDifference(static_cast<double>(wind->Dir),
                                                          static_cast<double>(before.Dir));
            EXPECT_LE(std::abs(turn), kMostAStep);
            EXPECT_LE(std::abs(static_cast<double>(wind->Speed - before.Speed)), kMostAStep);
            moved += wind->Speed > before.Speed ? 1 : 0;
            before = *wind;
        }
        EXPECT_GT(moved, 4);
        EXPECT_FALSE(view.targetWinds.isEmpty());
        controller.reset();
    }
}

TEST_F(DirectWindTest, GoesAsLayersToXPlaneAndNotAtAllThroughSimConnectAlone)
{
    beginFlight(kBridge);
    step();
    for (int i = 0; i < 4; ++i) {
        step();
    }
    EXPECT_GT(asked(command::kWrite, message::kWindLayers), 1);
    EXPECT_EQ(state().windLayers.size(), 3U);
    controller.reset();

    beginFlight(kSimConnect);
    for (int i = 0; i < 4; ++i) {
        step();
    }
    EXPECT_EQ(jobs[connectjob::kWindAtAircraft], 0);
    EXPECT_FALSE(state().wind.has_value());
}

} // namespace

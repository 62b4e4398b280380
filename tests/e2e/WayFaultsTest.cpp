#include "aviation/Angles.h"
#include "sim/SimResult.h"
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
    for (int i = 0; i < 4 && controller->IsConnected(); ++i) {
        poll(); // the fifth that fails ends the link
    }
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
        SCOPED_TRACE(way.name);
        begin(way);
        connectSimulator();
        const int errors = view.linesWith(QStringLiteral("Error"));
        clients.model().setPaused(true);
        EXPECT_EQ(poll(), 19) << "the key is seen at once";
        clients.model().setPaused(false);
        EXPECT_EQ(poll(), 0);
        clients.model().setInMenu(true);
        bool seen = false;
        for (int i = 0; i < 12 && !seen; ++i) { // SimConnect is asked on every eleventh poll
            seen = poll() == 19;
        }
        EXPECT_TRUE(seen);
        EXPECT_EQ(view.linesWith(QStringLiteral("Error")), errors);
        clients.model().setInMenu(false);
        EXPECT_EQ(poll(), 0);
        controller.reset();
    }
}

// --- the end of the simulator

struct Ending
{
    Way way;
    const char* fault; ///< in a poll; empty: the simulator is killed
    int mostPolls;     ///< until it is noticed
};

class EndOfSimulatorTest : public WaysTest, public testing::WithParamInterface<Ending>
{};

TEST_P(EndOfSimulatorTest, IsNoticedAndTheProgramComesBackWithIt)
{
    const Ending& row = GetParam();
    settings->setAutoConnect(true);
    begin(row.way);
    settle();
    if (!controller->IsConnected()) {
        connectSimulator();
    }
    ASSERT_EQ(poll(), 0);
    clients.setRunning(*row.fault != '\0');
    setFault(*row.fault != '\0' ? QString::fromLatin1(row.fault) : QStringLiteral("none"));
    int polls = 0;
    while (controller->IsConnected() && polls < 9) {
        poll();
        ++polls;
    }
    EXPECT_LE(polls, row.mostPolls);
    EXPECT_EQ(lastError[connectjob::kAircraftData], simresult::kTimeout);
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_EQ(view.connectText, QStringLiteral("Connect"));
    EXPECT_EQ(view.linesWith(QStringLiteral("connection to the simulator is lost")), 1);
    setFault(QStringLiteral("none"));
    clients.setRunning(false);
    timer("timerReconnect").start(0); // in vain
    ASSERT_TRUE(wait([this] { return timer("timerReconnect").interval() == 20000; }));
    settle();
    EXPECT_FALSE(controller->IsConnected());
    clients.setRunning(true);
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([this] { return controller->IsConnected(); }));
    settle();
    EXPECT_FALSE(timer("timerReconnect").isActive());
    EXPECT_EQ(poll(), 0);
    controller->OnTimerOneSecond();
    settle();
    EXPECT_EQ(view.connectText, QStringLiteral("Disconnect"));
}

INSTANTIATE_TEST_SUITE_P(Endings, EndOfSimulatorTest,
                         testing::Values(Ending{kSimConnect, "", 5},
                                         Ending{kSimConnect, "close@6/2*1", 1},
                                         Ending{kSimConnect, "result:C000014B@6/2", 5},
                                         Ending{kSimConnect, "result:C00000B0@6/2", 5},
                                         Ending{kSimConnect, "silent@6/2", 5},
                                         Ending{kFsuipc, "", 1}, Ending{kFsuipc, "result:E@6/2", 1},
                                         Ending{kFsuipc, "silent@6/2", 5}, Ending{kBoth, "", 1}),
                         [](const auto& row) {
                             const QString name =
                                 QString::fromLatin1(row.param.way.name) + QLatin1Char('_')
                                 + QString::fromLatin1(*row.param.fault == '\0' ? "killed"
                                                                                : row.param.fault);
                             return name.section(QLatin1Char('@'), 0, 0)
                                 .replace(QLatin1Char(':'), QLatin1Char('_'))
                                 .toStdString();
                         });

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
    EXPECT_EQ(view.linesWith(QStringLiteral("Finished, Error")), 0);
    EXPECT_EQ(poll(), 0);
    download();
    EXPECT_EQ(setWeather(connectjob::kSetWeather), 0);
    EXPECT_EQ(state().refreshes, row.fsuipcCode == kFs2004InFsuipc ? 1 : 0);
    EXPECT_EQ(run(Job(connectjob::kCloudMap, QStringLiteral("40:10"))),
              row.interfaceType == interfaceid::kFsuipc ? 200 : 20);
}

INSTANTIATE_TEST_SUITE_P(
    Simulators, DetectedTest,
    testing::Values(Detection{"fsx", true, true, true, kFsxInFsuipc, 3},
                    Detection{"fsx_without_simconnect", false, true, true, kFsxInFsuipc, 1},
                    Detection{"fs2004", true, true, true, kFs2004InFsuipc, 1},
                    Detection{"without_fsuipc", true, false, true, kFsxInFsuipc, 2},
                    Detection{"with_none", false, false, true, kFsxInFsuipc, -1},
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

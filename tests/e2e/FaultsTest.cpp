#include "tests/e2e/ProgramFixture.h"

#include <QElapsedTimer>

namespace {

namespace command = simulator::command;
namespace message = simulator::message;
using std::chrono::seconds;

class FaultsTest : public ProgramFixture
{
protected:
    int errors() const
    {
        return static_cast<int>(
            std::count_if(view.log.begin(), view.log.end(),
                          [](const FakeMainView::Line& line) { return line.level >= 2; }));
    }
};

// --- the weather server

struct ServerFault
{
    const char* name;
    const char* fault;
    bool givesWeather; ///< the next list comes in whole all the same
};

class WeatherServerFaultsTest : public FaultsTest, public ::testing::WithParamInterface<ServerFault>
{};

TEST_P(WeatherServerFaultsTest, IsSaidAndTheNextListComesIn)
{
    make();
    const int before = errors();
    ASSERT_TRUE(server.addFault(
        QStringLiteral("/weather_*=%1x1").arg(QString::fromLatin1(GetParam().fault))));
    controller->OnDownloadWeather();
    ASSERT_TRUE(wait([this] { return controller->weather().metarCount() > 1000 && watching(); }))
        << "the program found its way back by itself";
    if (!GetParam().givesWeather) {
        EXPECT_GT(errors(), before) << "the pilot was told";
    }
    download();
    EXPECT_GT(controller->weather().metarCount(), 1000U);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, WeatherServerFaultsTest,
    ::testing::Values(
        ServerFault{"not_found", "status:404", false}, ServerFault{"busy", "status:503", false},
        ServerFault{"stall", "stall", false}, ServerFault{"stall_in_body", "stall-body", false},
        ServerFault{"truncated", "truncate", false}, ServerFault{"damaged", "damage", false},
        ServerFault{"empty", "empty", false}, ServerFault{"short_list", "short", false},
        ServerFault{"page", "html", false}, ServerFault{"error_line", "error", false},
        ServerFault{"wrong_length", "length", false}, ServerFault{"cut", "cut", false},
        ServerFault{"bomb", "bomb", false}, ServerFault{"endless", "endless", false},
        ServerFault{"names", "name", true}),
    [](const auto& param) { return std::string(param.param.name); });

TEST_F(FaultsTest, ShortListsMoveOnThroughTheSourcesAndStopAfterFour)
{
    make();
    ASSERT_TRUE(server.addFault(QStringLiteral("/weather_*=short")));
    controller->OnDownloadWeather();
    ASSERT_TRUE(wait([this] {
        return view.linesWith(QStringLiteral("no metars founded. Download stopped")) > 0;
    }));
    settle();
    EXPECT_EQ(server.requestCount(QStringLiteral("/weather_noaa.gz")), 2);
    EXPECT_EQ(server.requestCount(QStringLiteral("/weather_vatsim.gz")), 1);
    EXPECT_EQ(server.requestCount(QStringLiteral("/weather_ivao.gz")), 1);
    EXPECT_EQ(view.linesWith(QStringLiteral("switch to another source")), 4);
    EXPECT_TRUE(watching());

    server.clearFaults();
    download();
    EXPECT_GT(controller->weather().metarCount(), 1000U);
}

TEST_F(FaultsTest, StartWithoutNetworkGoesOnWithoutWeather)
{
    server.stop();
    settings->setDownloadWxAtStart(true);
    settings->setCheckNewVersion(true);
    make();
    EXPECT_TRUE(wait([this] {
        return view.linesWith(QStringLiteral("Automatic weather download stopped")) == 1;
    }));
    EXPECT_TRUE(dialogs.warnings().isEmpty());
    EXPECT_EQ(view.notices.count(Notice::Download), 1U);
    EXPECT_GT(view.linesWith(QStringLiteral("can not download fileinfo")), 0);
    connectSimulator();
    EXPECT_TRUE(controller->IsConnected());
}

// --- the simulator

struct BridgeFault
{
    const char* name;
    const char* fault;
    bool keepsConnection;
};

class SimulatorFaultsTest : public FaultsTest, public ::testing::WithParamInterface<BridgeFault>
{
protected:
    simulator::SimulatorOptions simulatorOptions() const override
    {
        simulator::SimulatorOptions options;
        options.udpIntervalMs = 3600000; // polled here, so that each fault meets a request
        return options;
    }
};

TEST_P(SimulatorFaultsTest, OnARequestIsSurvivedAndEnds)
{
    settings->setMyIp(QString());
    make();
    connectSimulator();
    simulator->setFault(QString::fromLatin1(GetParam().fault) + QStringLiteral("@6/2"));
    const int before = jobs[connectjob::kAircraftData];
    controller->OnTimerOneSecond();
    ASSERT_TRUE(wait([this, before] { return jobs[connectjob::kAircraftData] > before; }));
    settle();
    EXPECT_EQ(controller->IsConnected(), GetParam().keepsConnection);

    simulator->setFault(QStringLiteral("none"));
    if (!controller->IsConnected()) {
        connectSimulator();
    }
    const int polls = jobs[connectjob::kAircraftData];
    controller->OnTimerOneSecond();
    ASSERT_TRUE(wait([this, polls] { return jobs[connectjob::kAircraftData] > polls; }));
    settle();
    EXPECT_EQ(lastError[connectjob::kAircraftData], 0);
    download();
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SimulatorFaultsTest,
                         ::testing::Values(BridgeFault{"slow", "slow:200", true},
                                           BridgeFault{"silent", "silent", false},
                                           BridgeFault{"wrong_id", "wrongid", true},
                                           BridgeFault{"refuse", "refuse", true},
                                           BridgeFault{"cut_and_rest", "cut:30,150", true},
                                           BridgeFault{"cut_for_good", "cut:30", false},
                                           BridgeFault{"garbage", "garbage:40", true},
                                           BridgeFault{"close", "close", false},
                                           BridgeFault{"drop", "drop", false},
                                           BridgeFault{"huge", "huge", false}),
                         [](const auto& param) { return std::string(param.param.name); });

TEST_F(FaultsTest, AWrongApiVersionIsTold)
{
    simulator->setFault(QStringLiteral("wrongapi:9.9"));
    make();
    controller->OnConnectClicked();
    settle();
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_TRUE(dialogs.criticals().contains(
        QStringLiteral("Cirrilon-Connection Error|Not compatible Client-Server API Version!\n"
                       "Check the debug log.")));
    simulator->setFault(QStringLiteral("none"));
    connectSimulator();
}

/// A write that must be acknowledged, or a request, that meets a dead simulator.
class LostConnectionTest : public SimulatorFaultsTest
{};

TEST_F(LostConnectionTest, InAnyJobLeadsBackToASimulatorThatWorks)
{
    settings->setMyIp(QString());
    make();
    download();
    const std::vector<Job> sent{Job(connectjob::kAircraftData, QStringLiteral("Aircraft data")),
                                Job(connectjob::kGetFuel, QString()),
                                Job(connectjob::kSetFuel, QString()),
                                Job(connectjob::kSetPayload, QString()),
                                Job(connectjob::kGetPayload, QString()),
                                Job(connectjob::kClearWeather, QStringLiteral("Clear WX")),
                                Job(connectjob::kGetRadios, QString()),
                                Job(connectjob::kDateTime, QString()),
                                Job(connectjob::kAnnounceAddress, QStringLiteral("127.0.0.1"))};
    for (const Job& job : sent) {
        connectSimulator();
        simulator->setFault(QStringLiteral("silent"));
        const int before = jobs[job.id];
        controller->OnNewJobConnectworker(job);
        ASSERT_TRUE(wait([this, &job, before] { return jobs[job.id] > before; })) << job.id;
        EXPECT_EQ(lastError[job.id], 13) << job.id;
        settle();
        EXPECT_FALSE(controller->IsConnected()) << job.id;
        simulator->setFault(QStringLiteral("none"));
    }
    connectSimulator();
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0);
}

TEST_F(LostConnectionTest, IsSeenBetweenThePollsAndTakenUpByItself)
{
    settings->setMyIp(QString());
    make();
    settings->setAutoConnect(true);
    connectSimulator();
    download();
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0);
    simulator->stopServer(); // nobody polls: the tests' timer stands
    ASSERT_TRUE(wait([this] { return !view.statusAlarm.isEmpty(); }));
    settle();
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_EQ(view.aircraftNames.last(), QString());
    EXPECT_EQ(view.connectText, QStringLiteral("Connect"));
    EXPECT_TRUE(view.notices[Notice::Connection].contains(QString::number(simulator->port())));
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([this] { return timer("timerReconnect").interval() == 20000; }));
    EXPECT_GT(view.linesWith(QStringLiteral("Make sure the fortune server is running")), 0);

    ASSERT_NE(simulator->startServer(), 0);
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([this] { return view.statusAlarm.isEmpty(); }));
    EXPECT_EQ(view.notices.count(Notice::Connection), 0U);
    settle();
    controller->OnTimerOneSecond();
    settle();
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0) << "at once, not after the interval";
}

TEST_F(LostConnectionTest, AtTheStartNoSimulatorIsNeeded)
{
    settings->setAutoConnect(true);
    simulator->stopServer();
    make();
    ASSERT_TRUE(wait([this] { return timer("timerReconnect").isActive(); }));
    EXPECT_TRUE(view.notices[Notice::Connection].contains(QStringLiteral("with its bridge")));
    ASSERT_NE(simulator->startServer(), 0);
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([this] { return controller->IsConnected(); }));
}

TEST_F(LostConnectionTest, TheClickCountsWhateverIsUnderWay)
{
    settings->setMyIp(QString());
    settings->setAutoConnect(true);
    make();
    connectSimulator();
    simulator->setFault(QStringLiteral("silent"));
    controller->OnTimerOneSecond();
    controller->OnConnectClicked(); // disconnects while the poll waits for its answer
    settle();
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_FALSE(timer("timerReconnect").isActive()) << "the pilot has ended it";
    EXPECT_EQ(view.statusAlarm, QString());

    const auto clickInAnAttempt = [this] {
        QMetaObject::invokeMethod(&timer("timerReconnect"), "timeout"); // no event in between
        controller->OnConnectClicked();
        settle();
    };
    simulator->setFault(QStringLiteral("none"));
    clickInAnAttempt();
    EXPECT_TRUE(controller->IsConnected()) << "and isn't disconnected by the same click";
    controller->OnConnectClicked();
    settle();
    EXPECT_FALSE(controller->IsConnected());
    simulator->setFault(QStringLiteral("wrongapi:9.9"));
    EXPECT_TRUE(dialogs.criticals().isEmpty());
    clickInAnAttempt();
    EXPECT_EQ(dialogs.criticals().size(), 1) << "the attempt that fails is the pilot's as well";
}

TEST_F(LostConnectionTest, ABridgeThatSwallowsWritesIsSaidOnceAndNothingIsClaimed)
{
    settings->setMyIp(QString());
    settings->setFsMessage(false);
    make();
    connectSimulator();
    download();
    ASSERT_TRUE(simulator->setFault(QStringLiteral("silent@5/0")));
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0);
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather, seconds(3600)), 0);
    EXPECT_TRUE(controller->IsConnected());
    EXPECT_EQ(view.linesWith(QStringLiteral("(ConnectWorker) - Set Weather")), 0);
    EXPECT_EQ(view.linesWith(QStringLiteral("doesn't answer what is written")), 1);
    EXPECT_EQ(view.notices.count(Notice::Weather), 1U);

    simulator->setFault(QStringLiteral("none"));
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather, seconds(3600)), 0);
    EXPECT_EQ(view.linesWith(QStringLiteral("(ConnectWorker) - Set Weather")), 1);
    EXPECT_EQ(view.notices.count(Notice::Weather), 0U);
}

// --- the end

struct Ending
{
    const char* name;
    const char* serverFault;
    const char* simulatorFault;
    void (*begin)(Controller&);
};

class TheEndTest : public FaultsTest, public ::testing::WithParamInterface<Ending>
{};

TEST_P(TheEndTest, ComesWithinThreeSeconds)
{
    constexpr qint64 kLimit = 3000;
    limits.stallMs = 60000;
    timeouts = BridgeTimeouts();
    settings->setMyIp(QString());
    make();
    connectSimulator();
    settings->setAutoConnect(true);
    download();
    const Ending& ending = GetParam();
    if (ending.serverFault != nullptr) {
        ASSERT_TRUE(server.addFault(QString::fromLatin1(ending.serverFault)));
    }
    if (ending.simulatorFault != nullptr) {
        ASSERT_TRUE(simulator->setFault(QString::fromLatin1(ending.simulatorFault)));
    }
    ending.begin(*controller);
    QTest::qWait(200);

    QElapsedTimer time;
    time.start();
    controller.reset();
    EXPECT_LT(time.elapsed(), kLimit);
}

INSTANTIATE_TEST_SUITE_P(
    States, TheEndTest,
    ::testing::Values(Ending{"waiting_for_upper_air", "/get_gribv3.php=status:500", nullptr,
                             [](Controller& controller) {
                                 controller.OnTimerWeather();
                             }},
                      Ending{"stalled_upper_air", "/get_gribv3.php=stall", nullptr,
                             [](Controller& controller) {
                                 controller.OnTimerWeather();
                             }},
                      Ending{"stalled_download", "/weather_*=stall", nullptr,
                             [](Controller& controller) {
                                 controller.OnDownloadWeather();
                             }},
                      Ending{"silent_simulator", nullptr, "silent",
                             [](Controller& controller) {
                                 controller.OnTimerOneSecond();
                             }},
                      Ending{"swallowed_writes", nullptr, "silent@5/16",
                             [](Controller& controller) {
                                 for (int i = 0; i < 5; ++i) {
                                     controller.OnNewJobConnectworker(
                                         Job(connectjob::kActivateWeather, QString()));
                                 }
                             }},
                      Ending{"lost_link", nullptr, "drop",
                             [](Controller& controller) {
                                 controller.OnTimerOneSecond();
                             }},
                      Ending{"silent_greeting", nullptr, "silent",
                             [](Controller& controller) {
                                 controller.OnConnectClicked(); // disconnects
                                 controllertesting::timer(controller, "timerReconnect").start(0);
                             }},
                      Ending{"decoding", nullptr, nullptr,
                             [](Controller& controller) {
                                 controller.OnDownloadWeather();
                             }}),
    [](const auto& param) { return std::string(param.param.name); });

} // namespace

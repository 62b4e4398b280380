#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

/// What the pilot is left with where the weather can't be set.
class ControllerCycleTest : public ControllerFixture
{
protected:
    void SetUp() override
    {
        ControllerFixture::SetUp();
        settings->setDownloadUpdateTime(20000);
        make();
        start();
        decode();
    }
    void flyWith(int interfaceType, aviation::FsId fsId)
    {
        connectTo(interfaceType, fsId);
        flyAt(50.0, 8.5);
    }
    bool clockRuns() const { return timer("timerWeather").isActive(); }
    void tickAndWatch(std::chrono::milliseconds after)
    {
        tick(after);
        settle();
        ASSERT_TRUE(wait([this] { return clockRuns(); }));
        settle();
    }
    bool isNoticed() const { return view.notices.count(Notice::Weather) > 0; }
    int searches() { return view.linesWith("Next Job ID: 15"_q); }
    int linesAt(int level, const QString& part) const
    {
        return static_cast<int>(
            std::count_if(view.log.begin(), view.log.end(), [&](const FakeMainView::Line& line) {
                return line.level == level && line.text.contains(part);
            }));
    }
};

struct Obstacle
{
    const char* name;
    int interfaceType;
    aviation::FsId fsId;
    int mode;
    const char* blocked; ///< below the home folder: a folder where a file has to go
    const char* line;
    int level;
};

class ObstacleTest : public ControllerCycleTest, public ::testing::WithParamInterface<Obstacle>
{};

TEST_P(ObstacleTest, IsSaidOnceAndAllElseGoesOnUntilItIsOutOfTheWay)
{
    const Obstacle& row = GetParam();
    const QString line = QString::fromLatin1(row.line);
    const QString blocked = path(row.blocked);
    settings->setInterfaceType(row.interfaceType);
    settings->setWeatherMode(row.mode);
    settings->setSimPath(path("xplane"));
    QDir().mkpath(path("xplane"));
    QDir().mkpath(blocked);
    flyWith(row.interfaceType, row.fsId);
    tickAndWatch(5s);
    EXPECT_EQ(linesAt(row.level, line), 1);
    EXPECT_TRUE(isNoticed());

    const int before = searches();
    for (int i = 0; i < 3; ++i) {
        tickAndWatch(62s);
    }
    EXPECT_EQ(searches(), before + 3) << "the display goes on";
    EXPECT_EQ(view.linesWith(line), 1) << "not tried again before the interval is over";
    tickAndWatch(std::chrono::seconds(settings->updateTime() + 1));
    EXPECT_EQ(view.linesWith(line), 2);
    EXPECT_EQ(linesAt(row.level, line), 1) << "a detail from then on";

    QDir(blocked).removeRecursively();
    if (row.fsId == aviation::fsid::kPrepar3dV4) {
        return; // nothing is in the way there but the simulator
    }
    tickAndWatch(std::chrono::seconds(settings->updateTime() + 1));
    EXPECT_EQ(view.linesWith(line), 2);
    EXPECT_FALSE(isNoticed());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ObstacleTest,
    ::testing::Values(Obstacle{"theme", 2, 3, 1, "xplane/Weather/themes/cirrilon.WTB",
                               "The weather theme isn't set.", 3},
                      Obstacle{"metars", 4, 8, 1, "xplane/METAR.rwx", "Can not open File: ", 3},
                      Obstacle{"winds", 4, 8, 1, "xplane/WINDS.rwx", "Can not open File: ", 3},
                      Obstacle{"no_job", 4, 6, 0, "other", "takes no weather from this version",
                               2}),
    [](const auto& param) { return std::string(param.param.name); });

TEST_F(ControllerCycleTest, AWeatherThatTheSimulatorRefusesIsShownUntilItTakesOne)
{
    simulator.setResults("SetWeatherData"_q, {8, 0});
    flyWith(4, 8);
    tickAndWatch(5s);
    EXPECT_TRUE(isNoticed());
    controller->OnClickedSetWX();
    tickAndWatch(1s);
    EXPECT_FALSE(isNoticed());

    view.log.clear();
    controller->OnJobWeatherWorkerFinished(weatherjob::kXPlaneRecord, QString(),
                                           weathererror::kPrepare);
    settle();
    EXPECT_TRUE(isNoticed());
    EXPECT_EQ(simulator.calls("SetWeatherData"_q).size(), 2) << "not the record of before";
}

TEST_F(ControllerCycleTest, ALossBetweenPreparingAndSettingLeavesTheClockRunning)
{
    flyWith(4, 8);
    simulator.setResults("GetAircraftData"_q, {simresult::kTimeout});
    simulator.setHook([this](const QString& operation) {
        while (operation == "GetAircraftData"_q && controller->connectWorker().queuedJobs() == 0) {
            QThread::msleep(1); // until the weather waits behind the poll
        }
    });
    controller->OnTimerOneSecond();
    tickAndWatch(5s);
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_TRUE(simulator.calls("SetWeatherData"_q).isEmpty());

    simulator.setHook({});
    simulator.setResults("GetAircraftData"_q, {0});
    flyWith(4, 8);
    tickAndWatch(std::chrono::seconds(settings->updateTime() + 1));
    EXPECT_EQ(simulator.calls("SetWeatherData"_q).size(), 1);
}

TEST_F(ControllerCycleTest, WeatherThatIsClearedOnConnectComesBackAndAReconnectDoesntClear)
{
    flyWith(4, 8);
    tickAndWatch(5s);
    controller->OnConnectClicked();
    settle();
    settings->setClearWxOnConnect(true);
    settings->setAutoConnect(true);
    controller->weather().initializeWeather(QString(), 1);
    simulator.clearCalls();
    flyWith(4, 8);
    EXPECT_EQ(simulator.calls("ClearWeather"_q).size(), 1);
    tickAndWatch(1s);
    decode();
    tickAndWatch(1s);
    EXPECT_EQ(simulator.calls().filter("SetWeatherData"_q).size(), 1)
        << "as soon as there is weather";

    simulator.setResults("GetAircraftData"_q, {simresult::kTimeout, 0});
    flyAt(50.0, 8.5);
    settle();
    EXPECT_FALSE(controller->IsConnected());
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([this] { return view.connectText == "Disconnect"_q; }));
    settle();
    tickAndWatch(1s);
    EXPECT_EQ(simulator.calls("ClearWeather"_q).size(), 1);
}

TEST_F(ControllerCycleTest, WeatherForAClearedSimulatorIsTriedAgainSoonWhereItFails)
{
    settings->setClearWxOnConnect(true);
    simulator.setResults("SetWeatherData"_q, {8, 0});
    flyWith(4, 8);
    const auto setsAfter = [this](std::chrono::milliseconds time) {
        tickAndWatch(time);
        return simulator.calls("SetWeatherData"_q).size();
    };
    EXPECT_EQ(setsAfter(5s), 1) << "refused";
    EXPECT_EQ(setsAfter(1s), 1) << "not each second";
    EXPECT_EQ(setsAfter(10s), 2);
    EXPECT_EQ(setsAfter(11s), 2) << "it has weather";
}

TEST_F(ControllerCycleTest, AReconnectByItselfDoesntClearAfterAClickThatFailed)
{
    settings->setClearWxOnConnect(true);
    settings->setAutoConnect(true);
    flyWith(4, 8);
    const auto loseAndClick = [this](const std::vector<int>& connects) {
        simulator.clearCalls();
        simulator.setResults("GetAircraftData"_q, {simresult::kTimeout, 0});
        controller->OnTimerOneSecond();
        settle();
        EXPECT_FALSE(controller->IsConnected());
        simulator.setResults("Connect"_q, connects);
        controller->OnConnectClicked();
        settle();
    };
    loseAndClick({simresult::kTimeout, 0});
    EXPECT_FALSE(controller->IsConnected());
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([this] { return view.connectText == "Disconnect"_q; }));
    settle();
    EXPECT_EQ(simulator.calls("ClearWeather"_q).size(), 0);

    loseAndClick({0});
    EXPECT_TRUE(controller->IsConnected());
    EXPECT_EQ(simulator.calls("ClearWeather"_q).size(), 1) << "the pilot asked for this one";
}

TEST_F(ControllerCycleTest, WeatherOfTheLastConnectionIsntSetInTheNextOne)
{
    flyWith(1, aviation::fsid::kFsx);
    tick(5s);
    controller->weatherWorker().join(); // prepared, which the main thread hasn't heard of yet
    controller->OnConnectClicked();
    connectTo(4, 8);
    EXPECT_EQ(simulator.calls().filter("SetWeather"_q).join(QLatin1Char('|')), QString());
    flyAt(50.0, 8.5);
    tickAndWatch(1s);
    EXPECT_EQ(simulator.calls().filter("SetWeather"_q).size(), 1) << "the next one is owed it";
    EXPECT_EQ(simulator.calls("SetWeatherData"_q).size(), 1);
}

TEST_F(ControllerCycleTest, FilesTakeXPlanesVisibilityOver)
{
    flyWith(4, 8);
    tickAndWatch(5s);
    tickAndWatch(12s);
    const int steps = static_cast<int>(simulator.calls("SetVisibility"_q).size());
    EXPECT_GT(steps, 0);
    settings->setWeatherMode(1);
    settings->setSimPath(path("xplane"));
    QDir().mkpath(path("xplane"));
    controller->OnClickedSetWX();
    tickAndWatch(1s);
    EXPECT_TRUE(QFile::exists(path("xplane/METAR.rwx")));
    const int before = static_cast<int>(simulator.calls("SetVisibility"_q).size());
    tickAndWatch(12s);
    EXPECT_EQ(simulator.calls("SetVisibility"_q).size(), before);
}

TEST_F(ControllerCycleTest, FilesAreLoadedWithoutTheWindThatTheNextDownloadBrings)
{
    server.serve("/one/weather_noaa.gz", packed(weatherFile(26)));
    settings->setWeatherMode(1);
    settings->setSimPath(path("xplane"));
    QDir().mkpath(path("xplane"));
    flyWith(4, 8);
    const auto setFiles = [this] {
        controller->OnClickedSetWX();
        tickAndWatch(5s);
        return simulator.calls("ActivateWeather"_q).size();
    };
    EXPECT_EQ(setFiles(), 1);
    server.serve("/one/global_wind.grib", "wind");
    EXPECT_EQ(setFiles(), 2);
    EXPECT_FALSE(QFile::exists(path("xplane/global_winds.grib")));

    view.log.clear();
    controller->OnDownloadWeather();
    waitForLine("finished initialization of weather data"_q);
    EXPECT_EQ(setFiles(), 3);
    EXPECT_EQ(read(path("xplane/global_winds.grib")), "wind");
}

TEST_F(ControllerCycleTest, AWindThatStallsDoesntHoldUpTheWeatherClock)
{
    server.stall("/one/global_turbulence.grib");
    settings->setWeatherMode(1);
    settings->setSimPath(path("xplane"));
    QDir().mkpath(path("xplane"));
    flyWith(4, 8);
    bool ran = false;
    QTimer look; // the test waits within the download
    look.callOnTimeout([&] {
        if (server.count("/one/global_turbulence.grib") > 0) {
            ran = clockRuns();
            controller->requestStop();
        }
    });
    look.start(20);
    tick(5s);
    settle();
    ASSERT_TRUE(wait([this] { return server.count("/one/global_turbulence.grib") > 0; }));
    EXPECT_TRUE(ran);
}

TEST_F(ControllerCycleTest, AWindThatDoesntArriveIsSentAgainAfterTheNextDownload)
{
    server.serve("/one/weather_noaa.gz", packed(weatherFile(26)));
    server.serve("/one/global_wind.grib", "wind");
    server.serve("/one/global_turbulence.grib", "turbulence");
    settings->setWeatherMode(1);
    flyWith(4, 8);
    const auto winds = [this] {
        controller->OnClickedSetWX();
        tickAndWatch(5s);
        settle();
        const QStringList calls = simulator.calls().filter("WindFile"_q);
        simulator.clearCalls();
        view.log.clear();
        controller->OnDownloadWeather();
        waitForLine("finished initialization of weather data"_q);
        return calls.size();
    };
    for (const QString& file : {"SetGlobalWindFile"_q, "SetTurbulenceWindFile"_q}) {
        simulator.setResults(file, {8, 0});
        EXPECT_EQ(winds(), 2) << "refused";
    }
    EXPECT_EQ(winds(), 2);
    EXPECT_EQ(winds(), 0) << "it has both";
}

TEST_F(ControllerCycleTest, NoWeatherIsShownOnlyWithoutAnyReport)
{
    const auto shown = [this] {
        tickAndWatch(62s);
        return view.weatherPage.metars.last().reportText();
    };
    settings->setGribOff(false); // and none comes
    settings->setSynopOff(true);
    flyWith(4, 8);
    EXPECT_EQ(shown().substr(0, 2), L"ED");
    controller->weather().initializeWeather(QString(), 1);
    EXPECT_EQ(shown(), L"NO WEATHER");
}

// --- the wait for upper-air data

class UpperAirTest : public ControllerCycleTest
{
protected:
    void beginWait()
    {
        settings->setGribOff(false);
        settings->setFsWindDwc(false);
        server.serve("/one/weather_noaa.gz", packed(weatherFile(26)));
        flyWith(1, 3);
        tick(1s);
        EXPECT_FALSE(clockRuns());
    }
};

TEST_F(UpperAirTest, ThatIsWaitedForIsSaidAndEndsWithTheSwitch)
{
    beginWait();
    ASSERT_TRUE(wait([this] { return view.status.filter("Waiting for upper-air"_q).size() > 3; }));
    EXPECT_TRUE(view.status.last().contains("\"Leave out upper-air data\""_q));
    EXPECT_EQ(view.linesWith("The weather waits for upper-air data of "_q), 1);
    EXPECT_EQ(view.levelOf("choose \"Leave out upper-air data\" in the settings"_q), 2);
    EXPECT_FALSE(clockRuns());
    settings->setGribOff(true);
    settle();
    EXPECT_TRUE(clockRuns());
    EXPECT_FALSE(simulator.calls("SetWeatherRecord"_q).isEmpty()) << "set without them";
    EXPECT_EQ(view.status.last(), QString());
}

TEST_F(UpperAirTest, GivesWayToADownloadEvenInAStalledCall)
{
    server.stall("/one/get_gribv3.php");
    beginWait();
    ASSERT_TRUE(wait([this] { return server.count("/one/get_gribv3.php") > 0; }));
    view.log.clear();
    controller->OnDownloadWeather();
    waitForLine("finished initialization of weather data"_q);
    ASSERT_TRUE(wait([this] { return clockRuns(); }));
    EXPECT_EQ(view.levelOf("The weather isn't set yet"_q), 1);
    EXPECT_EQ(view.linesWith("Network Error"_q), 0) << "what was ended hasn't failed";
    EXPECT_EQ(view.linesWith("The weather waits for"_q), 0) << "nor does anything wait for it";
    EXPECT_FALSE(isNoticed());

    settings->setGribOff(true);
    tickAndWatch(1s);
    EXPECT_FALSE(simulator.calls("SetWeatherRecord"_q).isEmpty()) << "the update is still owed";
}

TEST_F(UpperAirTest, GivesWayToAStationThatThePilotAsksFor)
{
    beginWait();
    ASSERT_TRUE(wait([this] { return !view.status.filter("Waiting for upper-air"_q).isEmpty(); }));
    controller->OnGetMetarClicked("EDDM"_q);
    ASSERT_TRUE(wait([this] {
        const auto& shown = view.weatherPage.metars;
        return std::any_of(shown.begin(), shown.end(), [](const aviation::weather::Metar& metar) {
            return metar.reportText().find(L"EDDM") != std::wstring::npos;
        });
    }));
    settings->setGribOff(true);
    ASSERT_TRUE(wait([this] { return clockRuns(); }));
    tickAndWatch(1s);
    EXPECT_FALSE(simulator.calls("SetWeatherRecord"_q).isEmpty()) << "the update is still owed";
}

TEST_F(UpperAirTest, ThatComesAndGoesDoesntFillTheLog)
{
    const auto waitOnce = [this](std::chrono::milliseconds after) {
        clock.advance(after);
        Q_EMIT controller->weatherWorker().sigWaitsForUpperAir("EDDM"_q);
        Q_EMIT controller->weatherWorker().sigUpperAirWaitEnded();
        settle();
        return view.linesWith("The weather waits for upper-air data of "_q);
    };
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(waitOnce(20s), 1);
    }
    EXPECT_EQ(waitOnce(10min), 2);
    EXPECT_EQ(view.status.filter("Waiting for upper-air"_q).size(), 11);
}

TEST_F(UpperAirTest, DoesntKeepTheNextListWaiting)
{
    beginWait();
    clock.advance(std::chrono::seconds(settings->downloadUpdateTime() + 10));
    ASSERT_TRUE(wait([this] { return server.count("/one/weather_noaa.gz") == 1; }));
    waitForLine("The weather isn't set yet"_q);
    ASSERT_TRUE(wait([this] { return clockRuns(); }));
    const int asked = server.count("/one/get_gribv3.php");
    tick(1s);
    ASSERT_TRUE(wait([&] { return server.count("/one/get_gribv3.php") > asked + 2; }))
        << "and goes on";
}

TEST_F(UpperAirTest, GivesWayToAnotherServerAndToADisconnect)
{
    server.stall("/two/get_gribv3.php");
    beginWait();
    ASSERT_TRUE(wait([this] { return !view.status.filter("Waiting for upper-air"_q).isEmpty(); }));
    settings->setWeatherServer(settings->serverTwo());
    ASSERT_TRUE(wait([this] { return clockRuns(); }));

    tick(1s);
    ASSERT_TRUE(wait([this] { return server.count("/two/get_gribv3.php") > 0; }));
    controller->OnConnectClicked();
    settle();
    EXPECT_TRUE(clockRuns());
    EXPECT_TRUE(simulator.calls("SetWeatherRecord"_q).isEmpty());
}

} // namespace

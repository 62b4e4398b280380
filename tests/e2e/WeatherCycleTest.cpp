#include "tests/e2e/ProgramFixture.h"

#include <QFileInfo>

namespace {

using simulator::SimulatorState;
namespace command = simulator::command;
namespace message = simulator::message;
using std::chrono::seconds;

class WeatherCycleTest : public ProgramFixture
{};

TEST_F(WeatherCycleTest, FirstWeatherFlowsByItselfWithTheStartUpSettings)
{
    settings->setDownloadWxAtStart(true);
    settings->setAutoConnect(true);
    make();
    ASSERT_TRUE(wait([this] { return watching() && controller->IsConnected(); }));
    settle();
    EXPECT_EQ(server.requestCount(QStringLiteral("/weather_noaa.gz")), 1);
    EXPECT_EQ(server.requestCount(QStringLiteral("/cirrilon_v3_info.php")), 1);
    ASSERT_TRUE(wait([this] { return controller->aircraft().altitude > 0; }));

    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0);
    const SimulatorState state = simulator->state();
    ASSERT_TRUE(state.weatherData.has_value());
    EXPECT_FALSE(state.weatherDataHasWx);
    EXPECT_GT(state.weatherData->Vis, 0.0F);
    EXPECT_FALSE(state.windLayers.empty());
    EXPECT_EQ(state.clears, 1);
    EXPECT_TRUE(state.screenTexts.contains(
        QStringLiteral("Cirrilon %1 connected").arg(Settings::version())));
    EXPECT_TRUE(watching());
    EXPECT_FALSE(view.weatherPage.metars.isEmpty());
    EXPECT_GT(server.requestCount(QStringLiteral("/get_gribv3.php")), 0);
}

struct Route
{
    const char* name;
    int fsId;
    int interfaceId;
    int mode;
    int job;
    bool (*arrived)(const SimulatorState&);
};

class WeatherRouteTest : public WeatherCycleTest, public ::testing::WithParamInterface<Route>
{};

TEST_P(WeatherRouteTest, ReachesTheSimulatorInItsForm)
{
    const Route& route = GetParam();
    simulator->invoke([&route](simulator::SimulatorServer& running) {
        running.setSimulator(route.fsId, route.interfaceId);
    });
    settings->setWeatherMode(route.mode);
    settings->setRange(40);
    make();
    connectSimulator();
    download();
    EXPECT_EQ(setWeather(route.job), 0);
    EXPECT_TRUE(route.arrived(simulator->state()));
    EXPECT_TRUE(watching());
}

INSTANTIATE_TEST_SUITE_P(
    Routes, WeatherRouteTest,
    ::testing::Values(
        Route{"xplane11", 9, 4, 0, 15,
              [](const SimulatorState& state) {
                  return state.weatherData && !state.weatherDataHasWx;
              }},
        Route{"xplane12", 13, 4, 0, 16,
              [](const SimulatorState& state) {
                  return state.weatherData && state.weatherDataHasWx;
              }},
        Route{"xplane12_plugin", 13, 8, 0, 16,
              [](const SimulatorState& state) {
                  return state.weatherData && state.weatherDataHasWx;
              }},
        Route{"xplane11_files", 9, 6, 1, 17,
              [](const SimulatorState& state) {
                  return state.weatherTexts.size() == 1
                         && state.weatherTexts[0].startsWith(QLatin1String("-----METAR-----\r\n"))
                         && state.weatherTexts[0].contains(QLatin1String("-----WIND-----\r\n"));
              }},
        Route{"observations", 3, 3, 0, 13,
              [](const SimulatorState& state) {
                  return state.weatherTexts.size() > 2
                         && state.weatherTexts[0].startsWith(QLatin1String("GLOB"));
              }},
        Route{"theme", 3, 2, 1, 14,
              [](const SimulatorState& state) {
                  return state.files.value(QStringLiteral("weather")) > 1000;
              }},
        Route{"records", 3, 1, 0, 13,
              [](const SimulatorState& state) {
                  return state.weatherRecords.size() > 2 && state.weatherRecords[0].nWindCtr > 2;
              }}),
    [](const auto& param) { return std::string(param.param.name); });

TEST_F(WeatherCycleTest, FilesGoToALocalXPlaneAndTheWindsBesideThem)
{
    write(path("xplane/Resources/placeholder"), "x");
    settings->setSimPath(path("xplane"));
    settings->setWeatherMode(1);
    make();
    connectSimulator();
    download();
    tick();
    ASSERT_TRUE(wait([this] { return jobs[connectjob::kActivateWeather] > 0; }));
    EXPECT_TRUE(watching());
    EXPECT_GT(QFileInfo(path("xplane/METAR.rwx")).size(), 100);
    EXPECT_GT(QFileInfo(path("xplane/WINDS.rwx")).size(), 100);
    EXPECT_TRUE(read(path("xplane/global_winds.grib")).startsWith("GRIB"));
}

TEST_F(WeatherCycleTest, UpdatesByTimeByDistanceAndOnRequest)
{
    make();
    connectSimulator();
    download();
    ASSERT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0);
    const int first = asked(command::kWrite, message::kWeatherData);

    tick(seconds(300));
    settle();
    EXPECT_EQ(asked(command::kWrite, message::kWeatherData), first) << "nothing was due";
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather, seconds(301)), 0) << "by time";
    controller->OnClickedSetWX();
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0) << "on request";

    const aviation::Position before = controller->aircraft().position;
    simulator->invoke([](simulator::SimulatorServer& running) {
        running.model().withFlight([](simulator::SimulatedFlight& flight) { flight.advance(600); });
    });
    ASSERT_TRUE(wait([this, &before] {
        return controller->aircraft().position.longitude() < before.longitude() - 0.5;
    }));
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0) << "by distance";
    EXPECT_EQ(asked(command::kWrite, message::kWeatherData), first + 3);
}

TEST_F(WeatherCycleTest, DownloadsAgainByTime)
{
    settings->setDownloadUpdateTime(120);
    make();
    connectSimulator();
    download();
    tick();
    settle();
    ASSERT_TRUE(wait([this] { return watching(); }));
    const int before = server.requestCount(QStringLiteral("/weather_noaa.gz"));
    tick(seconds(122));
    EXPECT_TRUE(wait([this, before] {
        return server.requestCount(QStringLiteral("/weather_noaa.gz")) == before + 1 && watching();
    }));
}

TEST_F(WeatherCycleTest, AircraftComesByDatagramsAndPollingStops)
{
    make();
    connectSimulator();
    ASSERT_TRUE(wait([this] {
        return view.linesWith(QStringLiteral("Aircraft data from UDP")) > 0;
    })) << "until then it is polled";
    settle();
    simulator->clearReceived();
    const int polled = asked(command::kRequest, message::kAircraft);
    const int before = jobs[connectjob::kAircraftData];
    const int stream = view.linesWith(QStringLiteral("Aircraft data from UDP"));
    for (int i = 0; i < 5; ++i) {
        controller->OnTimerOneSecond();
    }
    EXPECT_TRUE(wait([this, stream] {
        return view.linesWith(QStringLiteral("Aircraft data from UDP")) > stream + 3;
    }));
    EXPECT_EQ(jobs[connectjob::kAircraftData], before);
    EXPECT_EQ(asked(command::kRequest, message::kAircraft), polled);

    simulator->setFault(QStringLiteral("udpforeign"));
    EXPECT_TRUE(wait([this] { return view.linesWith(QStringLiteral("127.0.0.2")) > 0; }));
    const int dropped = view.linesWith(QStringLiteral("127.0.0.2"));
    QTest::qWait(300);
    EXPECT_EQ(view.linesWith(QStringLiteral("127.0.0.2")), dropped) << "said once";
}

TEST_F(WeatherCycleTest, ADownloadWhilePreparingHarmsNeither)
{
    make();
    connectSimulator();
    download();
    EXPECT_TRUE(server.addFault(QStringLiteral("/get_gribv3.php=stallx1")));
    tick();
    ASSERT_TRUE(wait([this] { return !watching() && controller->weatherWorker().isRunning(); }));
    const QString decoded = QStringLiteral("finished initialization of weather data");
    const int before = view.linesWith(decoded);
    controller->OnDownloadWeather();
    ASSERT_TRUE(wait([&] { return view.linesWith(decoded) > before && watching(); }));
    settle();
    EXPECT_EQ(setWeather(connectjob::kSetXPlaneWeather), 0) << "it gave way and follows";
    settle();
    ASSERT_TRUE(wait([this] { return watching(); }));
    EXPECT_GT(controller->weather().metarCount(), 1000U);
}

TEST_F(WeatherCycleTest, ExternalAddressesFillTheStore)
{
    settings->setWxServerType(3);
    settings->setUrlExternMetar(server.url() + QStringLiteral("/external/metar.txt"));
    make();
    download();
    EXPECT_GT(controller->weather().metarCount(), 1000U);
    settings->setUrlExternSynop(server.url() + QStringLiteral("/external/synop.txt"));
    controller->OnDownloadWeather();
    // Only the last block reaches the decoder, as ever.
    EXPECT_TRUE(wait([this] { return controller->weather().synopCount() > 0; }));
    EXPECT_EQ(controller->weather().metarCount(), 0U);
}

struct Source
{
    int source;
    int fsId;
    const char* file;
};

TEST_F(WeatherCycleTest, EachSourceIsFetchedFromItsList)
{
    make();
    for (const Source& row : {Source{1, 0, "/weather_vatsim.gz"}, Source{2, 0, "/weather_ivao.gz"},
                              Source{3, 0, "/weather_noaa.gz"}, Source{1, 12, "/metar_fs2020.txt"}})
    {
        settings->setWeatherSource(row.source);
        simulator->invoke([&row](simulator::SimulatorServer& running) {
            running.setSimulator(row.fsId == 0 ? 9 : row.fsId, 4);
        });
        if (row.fsId != 0) {
            connectSimulator();
        }
        download();
        EXPECT_EQ(server.requestCount(QString::fromLatin1(row.file)), 1) << row.file;
        EXPECT_GT(controller->weather().metarCount(), 1000U) << row.file;
    }
    tick();
    settle();
    EXPECT_TRUE(view.status.contains(QStringLiteral("No weather update in FS2020")));
}

} // namespace

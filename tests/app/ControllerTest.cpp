#include "nav/NavdataIntern.h"
#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"

#include <QSignalSpy>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

class FewAirports final : public NavdataBase
{
public:
    QVector<QAirport> ReadAirports() override { return QVector<QAirport>(9); }
};

class ControllerTest : public ControllerFixture
{
protected:
    void start()
    {
        QSignalSpy started(controller.get(), &Controller::sigStarted);
        ASSERT_TRUE(wait([&] { return started.count() == 1; }));
        QCoreApplication::processEvents();
    }
};

TEST_F(ControllerTest, FoldersAreCreatedInOrderAndTheTemporaryOneIsSwept)
{
    write(settings->tmpFolder() + text("old.txt"), "x");
    write(settings->tmpFolder() + text("old"), "x");
    make();
    start();
    QStringList names;
    for (const FakeMainView::Line& line : view.log) {
        if (line.text.contains(text("Folder "))) {
            names << line.text.section(QLatin1Char(' '), 4, 5);
        }
    }
    EXPECT_EQ(names.size(), 10);
    EXPECT_EQ(view.levelOf(text("(Main) - Folder founded: <a href=\"") + settings->tmpFolder()), 1);
    EXPECT_EQ(view.linesWith(text("Folder created: <b>")), 9);
    EXPECT_TRUE(view.log.at(1).text.endsWith(text("<b>") + settings->workFolder() + text("</b>")));
    EXPECT_TRUE(QDir(settings->backupsFolder()).exists());
    EXPECT_FALSE(QFile::exists(settings->tmpFolder() + text("old.txt")));
    EXPECT_TRUE(QFile::exists(settings->tmpFolder() + text("old"))) << "no dot, no match";
}

TEST_F(ControllerTest, AFolderThatCantBeCreatedEndsConstructionButNotTheStart)
{
    write(settings->tmpFolder() + text("old.txt"), "x");
    write(path("work/flights"), "a file in the way");
    make();
    start();
    EXPECT_EQ(view.levelOf(text("(Main) -Cannot create folder: ") + path("work/flights/")), 3);
    EXPECT_FALSE(QDir(settings->resFolder()).exists());
    EXPECT_TRUE(QFile::exists(settings->tmpFolder() + text("old.txt")));
    EXPECT_TRUE(view.splashClosed);
}

TEST_F(ControllerTest, StartLoadsTheTablesAndTheUsersAirports)
{
    write(path("work/airportsadd.dat"), "# icao;name\nZZZA;Home;Germany;100;50,5;8,5;\n");
    settings->setAiracUse(true);
    make();
    controller->setNavdata(std::make_unique<FewAirports>());
    start();
    EXPECT_EQ(view.levelOf(text("Use intern ressource")), 3);
    EXPECT_EQ(view.levelOf(text("AIRAC data aren't read")), 2);
    EXPECT_EQ(view.linesWith(text("read additional airports")), 1);
    const std::size_t airports = controller->weather().airportCount();
    EXPECT_EQ(airports, static_cast<std::size_t>(NavdataIntern().ReadAirports().size()) + 1);
    EXPECT_EQ(view.levelOf(text("(Controller Weather) - Airports: %1").arg(airports)), 1);
    EXPECT_EQ(view.linesWith(text("(Controller) - Weather server: wxdata")), 1);
    EXPECT_TRUE(view.weatherPage.completer.contains(text("ZZZA")));
    EXPECT_FALSE(view.weatherPage.searchEnabled);
    aviation::weather::Station home;
    ASSERT_TRUE(controller->weather().getStation(text("ZZZA"), home));
    EXPECT_EQ(home.latitude(), 50.5);

    write(path("work/airportsadd.dat"),
          "ZZZA;Home;Germany;100;50,5;8,5;\nZZZB;New;Germany;100;51,5;8,5;\n");
    controller->OnAirportListChanged();
    EXPECT_EQ(controller->weather().airportCount(), airports + 1)
        << "the unchanged one isn't added twice";
    EXPECT_TRUE(view.weatherPage.completer.contains(text("ZZZB")));
}

TEST_F(ControllerTest, AConnectionThatStandsOutlivesTheConnectAtTheStart)
{
    settings->setAutoConnect(true);
    make();
    connectTo(4, 8);
    start();
    settle();
    EXPECT_TRUE(controller->IsConnected());
}

TEST_F(ControllerTest, ConnectTellsTheWindowAndTheSimulator)
{
    settings->setFsMessage(true);
    settings->setClearWxOnConnect(true);
    settings->setMyIp(text("127.0.0.1"));
    make();
    connectTo(4, aviation::fsid::kPrepar3dV5);
    EXPECT_EQ(view.connectText, text("Disconnect"));
    EXPECT_EQ(view.dataPage.interfaceInfo, text("Fake simulator - Fake interface"));
    EXPECT_EQ(view.dataPage.dwcText, text("is not available for P3Dv5"));
    EXPECT_FALSE(view.dataPage.dwcEnabled);
    EXPECT_EQ(settings->simVersion(), aviation::fsid::kPrepar3dV5);
    EXPECT_EQ(simulator.calls(text("SendText")).first().section(QLatin1Char(' '), 1, 3),
              text("Cirrilon %1 connected").arg(Settings::version()));
    EXPECT_EQ(simulator.calls(text("AnnounceAddress")).size(), 1);
    EXPECT_EQ(simulator.calls(text("ClearWeather")).size(), 1);

    controller->OnConnectClicked();
    settle();
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_EQ(view.connectText, text("Connect"));
    EXPECT_EQ(view.dataPage.interfaceInfo, text("not connected"));
    EXPECT_GT(view.dataPage.cleared, 0);
    EXPECT_GE(clock.sleptMs(), 1000) << "500 ms a click at least";
}

TEST_F(ControllerTest, AServerOfAnotherVersionGivesABox)
{
    simulator.setResults(text("Connect"), {100});
    make();
    controller->OnConnectClicked();
    settle();
    EXPECT_EQ(dialogs.criticals(), QStringList{text("Cirrilon-Connection Error|Not compatible "
                                                    "Client-Server API Version!\nCheck the debug "
                                                    "log.")});
}

TEST_F(ControllerTest, AircraftDataArePolledAndAPauseInvalidatesThem)
{
    make();
    controller->OnTimerOneSecond();
    settle();
    EXPECT_TRUE(simulator.calls().isEmpty()) << "not connected: no polling";
    connectTo(4, 8);
    flyAt(50.0, 8.5, 100, 30);
    EXPECT_EQ(controller->aircraft().position, aviation::Position(50.0, 8.5));
    EXPECT_EQ(view.aircraft.heightAgl, 100);
    EXPECT_EQ(view.aircraftNames, QStringList{text("unknown")});
    flyAt(50.1, 8.5, 100, 30);
    EXPECT_EQ(view.aircraftNames.size(), 1) << "the same title isn't told twice";
    EXPECT_EQ(timer("timerOneSecond").interval(), settings->serverUpdateTimeMin());

    simulator.setResults(text("GetAircraftData"), {simresult::kPaused});
    const int lines = view.linesWith(text("Error: 19"));
    flyAt(51.0, 8.5);
    EXPECT_EQ(controller->aircraft().position.latitude(), 50.1);
    EXPECT_EQ(view.linesWith(text("Error: 19")), lines);
    tick(1s);
    EXPECT_EQ(view.status.last(), text("Sim not ready"));
}

struct CycleCase
{
    const char* name;
    int interfaceType;
    int fsId;
    int mode;
    const char* call; ///< what the simulator is told
    const char* line; ///< what the log says
};

class WeatherCycleTest : public ControllerTest, public ::testing::WithParamInterface<CycleCase>
{};

TEST_P(WeatherCycleTest, GoesFromDecodedToSetAndWatchesAgain)
{
    const CycleCase& row = GetParam();
    settings->setWeatherMode(row.mode);
    settings->setVis9999(20000);
    make();
    start();
    decode(30);
    EXPECT_TRUE(timer("timerWeather").isActive());
    connectTo(row.interfaceType, row.fsId);
    flyAt(50.0, 8.5);
    timer("timerWeather").stop();
    simulator.clearCalls();

    tick(5s);
    EXPECT_FALSE(timer("timerWeather").isActive()) << "stopped while weather is prepared and set";
    settle();
    ASSERT_TRUE(wait([&] { return timer("timerWeather").isActive(); }));
    EXPECT_FALSE(simulator.calls(text(row.call)).isEmpty())
        << simulator.calls().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(view.linesWith(text(row.line)), 1);
    EXPECT_EQ(view.dataPage.updateInterval, text("Weather update in 600s / 50NM"));
    EXPECT_EQ(view.dataPage.info1.last(), text("Weather download in 15min"));

    simulator.clearCalls();
    tick(30s);
    settle();
    EXPECT_TRUE(simulator.calls(text(row.call)).isEmpty()) << "neither time nor distance";
    flyAt(50.9, 8.5);
    tick(1s);
    settle();
    EXPECT_FALSE(simulator.calls(text(row.call)).isEmpty()) << "54 NM away";
}

INSTANTIATE_TEST_SUITE_P(
    Interfaces, WeatherCycleTest,
    ::testing::Values(
        CycleCase{"Fsuipc", 1, 3, 0, "SetWeatherRecord", "Weather FSUIPC created"},
        CycleCase{"FsuipcWrongMode", 1, 3, 1, "SetWeatherRecord", "Weather FSUIPC created"},
        CycleCase{"SimConnect", 2, 3, 0, "SetWeatherText", "Weather SimConnect created"},
        CycleCase{"Theme", 2, 3, 1, "SendWeatherFile", "Weather Model File created"},
        CycleCase{"XPlane", 4, 8, 0, "SetWeatherData", "Weather Xplane created"},
        CycleCase{"XPlane12", 4, 13, 0, "SetWeatherData", "Weather XPlane12 created"},
        CycleCase{"XPlaneFiles", 4, 9, 1, "SetWeatherText", "Weather Xplane created"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(ControllerTest, ApproachBlocksUnlessForcedAndFs2020TakesNoWeather)
{
    settings->setNoUpdateApproach(true);
    settings->setDownloadUpdateTime(10000);
    make();
    controller->setFlightPhaseSource([] { return FlightPhase::GoAround; });
    decode(30);
    connectTo(4, 8);
    flyAt(50.0, 8.5);
    timer("timerWeather").start();
    tick(5s);
    EXPECT_TRUE(timer("timerWeather").isActive());
    EXPECT_EQ(view.dataPage.info1.last(), text("No Update, Approach"));
    controller->OnClickedSetWX();
    tick(1s);
    EXPECT_FALSE(timer("timerWeather").isActive()) << "forced";
    settle();
    ASSERT_TRUE(wait([&] { return timer("timerWeather").isActive(); }));
    tick(700s);
    EXPECT_TRUE(timer("timerWeather").isActive()) << "the force is used up";

    controller->OnConnectClicked();
    settle();
    connectTo(2, aviation::fsid::kFs2020);
    controller->OnClickedSetWX();
    tick(1s);
    EXPECT_TRUE(timer("timerWeather").isActive());
    EXPECT_EQ(view.dataPage.info1.last(), text("No weather update in FS2020"));
}

TEST_F(ControllerTest, LocalXPlaneFilesAreWrittenOrTheClockStaysStopped)
{
    settings->setWeatherMode(1);
    settings->setSimPath(path("xplane"));
    QDir().mkpath(path("xplane"));
    make();
    start();
    decode(30);
    connectTo(4, aviation::fsid::kXPlane12);
    flyAt(50.0, 8.5);
    tick(5s);
    settle();
    EXPECT_EQ(view.levelOf(text("Weather Xplane: Can not open File: ")), 3)
        << "X-Plane 12 keeps its files in a folder that isn't there";
    EXPECT_FALSE(timer("timerWeather").isActive());

    QDir().mkpath(path("xplane/Output/real weather"));
    controller->OnClickedSetWX();
    tick(1s);
    ASSERT_TRUE(wait([&] { return timer("timerWeather").isActive(); }));
    EXPECT_TRUE(read(path("xplane/Output/real weather/METAR.rwx")).contains("\nED"));
    EXPECT_TRUE(QFile::exists(path("xplane/Output/real weather/WINDS.rwx")));
}

TEST_F(ControllerTest, TooFewReportsMoveOnToTheNextSourceUpToTheLimit)
{
    constexpr int kSizePrefix = 4; // qCompress puts the size in front of the zlib data
    const QByteArray list = qCompress(weatherText(9).toLatin1()).mid(kSizePrefix);
    for (const char* source : {"vatsim", "ivao", "noaa"}) {
        write(path("server/weather_") + text(source) + text(".gz"), list);
    }
    settings->setExportMetarFile(path("work"));
    make();
    start();
    controller->OnDownloadWeather();
    ASSERT_TRUE(wait([&] { return view.linesWith(text("Download stopped")) == 1; }));
    settle();
    QStringList sources;
    for (const FakeMainView::Line& line : view.log) {
        if (line.text.contains(text("Download weather from"))) {
            sources << line.text.section(QLatin1Char(' '), -1);
        }
    }
    EXPECT_EQ(sources.join(QLatin1Char(' ')), text("NOAA VATSIM IVAO NOAA"));
    const std::size_t metars = controller->weather().metarCount();
    EXPECT_EQ(view.levelOf(text("data: %1 Metars, additional WX:0").arg(metars)), 1);
    EXPECT_TRUE(timer("timerWeather").isActive());
    EXPECT_TRUE(view.weatherPage.searchEnabled);
    EXPECT_EQ(static_cast<std::size_t>(read(path("work/metar.txt"))
                                           .count(" 24012KT 9999 FEW030 "
                                                  "22/12 Q1015\n")),
              metars);
    EXPECT_GT(metars, 0U);

    settings->setExportMetarFile(path("missing"));
    decode(30);
    EXPECT_EQ(view.levelOf(text("Export Metar, Can not open file. ")), 3);
    EXPECT_EQ(dialogs.criticals().size(), 1);
}

TEST_F(ControllerTest, FinishedJobsLeadToTheNextOne)
{
    make();
    connectTo(2, 3);
    const struct
    {
        int job;
        const char* name;
        int error;
        const char* line;
        int level;
    } rows[] = {
        {23, "", 0, "(ConnectWorker) Activate weather XPlane", 1},
        {24, "a<b>", 0, "JobName:a&lt;b&gt;  Finished", 0},
        {26, "ZZZZ:N:50:8:100", 0, "Station created: ZZZZ:N", 1},
        {29, "EDDF 011150Z <x>", 0, "SimMetar: EDDF 011150Z &lt;x&gt;", 0},
        {29, "abc", 0, "SimMetar: No Metar", 0},
        {30, "", simresult::kCloudReply, "JobID:30 JobName:  Finished", 0},
        {32, "/a.fms", 0, "flight plan sent: /a.fms", 1},
        {32, "/a.fms", 11, "flight plan sent, Error:11 - ", 3},
        {35, "", 8, "(Controller) DWC-ErrorNum:8", 3},
        {19, "%3", 8, "JobID:19 JobName:%3  Finished, Error: 8", 3},
    };
    for (const auto& row : rows) {
        view.log.clear();
        controller->OnJobConnectWorkerFinished(row.job, text(row.name), row.error);
        if (row.job == 29) {
            EXPECT_EQ(view.setWxIcao, text(row.name).size() < 4 ? QString() : text("EDDF"));
        }
        settle();
        EXPECT_EQ(view.levelOf(text(row.line)), row.level) << row.line;
    }
    EXPECT_EQ(simulator.calls(text("ActivateWeather")).size(), 1);
    EXPECT_FALSE(view.setWxEnabled) << "the last METAR of the simulator was none";
    view.log.clear();
    for (const int error : {10, 10, 12, 0, 10}) {
        controller->OnJobConnectWorkerFinished(4, QString(), error);
    }
    controller->OnJobWeatherWorkerFinished(11, text("base"), weathererror::kCannotCreateFile);
    settle();
    const auto told = std::count_if(view.log.begin(), view.log.end(), [](const auto& line) {
        return line.level == 3 && line.text.contains(QStringLiteral("JobID:4 "));
    });
    EXPECT_EQ(told, 3) << "the same fault of the next poll is a detail";
    EXPECT_EQ(view.levelOf(text("The weather theme isn't set.")), 3);
    EXPECT_TRUE(simulator.calls(text("SendWeatherFile")).isEmpty());
    for (const int job : {13, 14, 15, 16, 17}) {
        timer("timerWeather").stop();
        controller->OnJobConnectWorkerFinished(job, QString(), 5);
        EXPECT_TRUE(timer("timerWeather").isActive()) << job;
    }
}

TEST_F(ControllerTest, FsuipcGetsTheWeatherOfAStationThatItCantCreate)
{
    make();
    connectTo(1, 2);
    for (const auto& [error, posted] : {std::pair{200, true}, {8, false}, {0, true}}) {
        view.log.clear();
        controller->OnJobConnectWorkerFinished(26, text("EDDF:N:50:8:100"), error);
        settle();
        EXPECT_EQ(view.linesWith(text("Next Job ID: 3, Name: EDDF")) == 1, posted) << error;
        EXPECT_EQ(view.linesWith(text("Station created")) == 1, error == 0) << error;
    }
}

TEST_F(ControllerTest, ALostConnectionIsTakenUpAgainUnlessTheUserActs)
{
    make();
    start(); // which would connect by itself with the setting of below
    connectTo(4, 8);
    simulator.setResults(text("GetAircraftData"), {simresult::kTimeout});
    flyAt(50.0, 8.5);
    settle();
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_EQ(view.connectText, text("Connect"));
    EXPECT_EQ(view.levelOf(text("Press Connect when the simulator")), 2);
    EXPECT_FALSE(timer("timerReconnect").isActive());

    settings->setAutoConnect(true);
    connectTo(4, 8);
    flyAt(50.0, 8.5);
    settle();
    EXPECT_EQ(view.linesWith(text("tries to connect again by itself")), 1);
    EXPECT_EQ(timer("timerReconnect").interval(), 10000);
    simulator.setResults(text("Connect"), {1, 13, 0});
    simulator.setResults(text("GetAircraftData"), {0});
    for (const int next : {20000, 40000}) {
        timer("timerReconnect").start(0);
        ASSERT_TRUE(wait([&] { return timer("timerReconnect").interval() == next; }));
        EXPECT_FALSE(controller->IsConnected());
    }
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([&] { return view.connectText == text("Disconnect"); }));
    EXPECT_FALSE(timer("timerReconnect").isActive());
    EXPECT_EQ(view.linesWith(text("tries to connect again by itself")), 1) << "said once";

    simulator.setResults(text("GetAircraftData"), {simresult::kTimeout});
    flyAt(50.0, 8.5);
    settle();
    EXPECT_TRUE(timer("timerReconnect").isActive());
    simulator.setResults(text("Connect"), {1});
    controller->OnConnectClicked();
    settle();
    EXPECT_FALSE(timer("timerReconnect").isActive()) << "a click ends the attempts";
}

TEST_F(ControllerTest, ARequestedStationIsShownOrMarkedAsUnknown)
{
    settings->setShowTaf(false);
    make();
    start();
    decode(30);
    controller->OnGetMetarClicked(QString());
    controller->OnGetMetarClicked(text("edd"));
    controller->OnGetMetarClicked(text("0000"));
    controller->OnGetMetarClicked(text("eddf"));
    settle();
    const QVector<QPair<QString, bool>> expected{
        {QString(), false}, {text("EDD"), false}, {text("0000"), false}, {text("EDDF"), true}};
    EXPECT_EQ(view.weatherPage.backgrounds, expected);
    ASSERT_FALSE(view.weatherPage.metars.isEmpty());
    EXPECT_EQ(view.weatherPage.metars.last().icao().substr(0, 2), L"ED");
    EXPECT_EQ(view.weatherPage.gribs.size(), 1);
}

TEST_F(ControllerTest, ReportsReachTheSimulatorsScreenOnceEach)
{
    settings->setFsMessage(true);
    make();
    connectTo(4, 8);
    settle();
    simulator.clearCalls();
    const aviation::weather::Metar metar(L"EDDF 011150Z 24012KT <9999");
    controller->DoDisplayMetar(metar);
    controller->DoDisplayMetar(metar);
    settle();
    EXPECT_EQ(simulator.calls(text("SendText")),
              QStringList{text("SendText EDDF 011150Z 24012KT <9999 5")});
    EXPECT_EQ(view.weatherPage.metars.size(), 2);
}

TEST_F(ControllerTest, EndsInTimeWhileAJobWaitsForUpperAirData)
{
    settings->setGribOff(false);
    make();
    start();
    decode(30);
    connectTo(1, 3);
    flyAt(50.0, 8.5);
    tick(1s);
    ASSERT_TRUE(wait([&] { return view.linesWith(text("Download Grib")) > 2; }));
    QElapsedTimer time;
    time.start();
    controller.reset();
    EXPECT_LT(time.elapsed(), 3000);
}

} // namespace

#include "app/base/FlightState.h"
#include "nav/records/NavdataBase.h"
#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

class GoingAround final : public FlightState
{
public:
    int flightPhase() const override { return flightphase::kGoAround; }
    QString destination() const override { return {}; }
};

using ControllerTest = ControllerFixture;

TEST_F(ControllerTest, TheStartGoesOnWhereAFolderCantBeCreated)
{
    write(settings->tmpFolder() + "old.txt"_q, "x");
    write(path("work/flights"), "a file in the way");
    make();
    start();
    EXPECT_TRUE(QFile::exists(settings->tmpFolder() + "old.txt"_q)) << "not swept";
    EXPECT_TRUE(view.splashClosed);
    EXPECT_EQ(view.linesWith("(Controller) - Weather server: wxdata1"_q), 1);
    EXPECT_GT(controller->weather().airportCount(), 0U);
    EXPECT_FALSE(view.weatherPage.searchEnabled);
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

TEST_F(ControllerTest, ConnectTellsTheWindow)
{
    make();
    connectTo(4, aviation::fsid::kPrepar3dV5);
    EXPECT_EQ(view.connectText, "Disconnect"_q);
    EXPECT_EQ(view.dataPage.interfaceInfo, "Fake simulator - Fake interface"_q);
    EXPECT_EQ(view.dataPage.dwcText, "is not available for P3Dv5"_q);
    EXPECT_FALSE(view.dataPage.dwcEnabled);
    EXPECT_EQ(controller->weather().simulator(), aviation::fsid::kPrepar3dV5);

    controller->OnConnectClicked();
    settle();
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_EQ(view.connectText, "Connect"_q);
    EXPECT_EQ(view.dataPage.interfaceInfo, "not connected"_q);
    EXPECT_GT(view.dataPage.cleared, 0);
    EXPECT_GE(clock.sleptMs(), 1000) << "500 ms a click at least";
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
    EXPECT_EQ(view.aircraftNames, QStringList{"unknown"_q});
    flyAt(50.1, 8.5, 100, 30);
    EXPECT_EQ(view.aircraftNames.size(), 1) << "the same title isn't told twice";
    EXPECT_EQ(timer("timerOneSecond").interval(), settings->serverUpdateTimeMin());

    simulator.setResults("GetAircraftData"_q, {simresult::kPaused});
    const int lines = view.linesWith("Error: 19"_q);
    flyAt(51.0, 8.5);
    EXPECT_EQ(controller->aircraft().position.latitude(), 50.1);
    EXPECT_EQ(view.linesWith("Error: 19"_q), lines);
    tick(1s);
    EXPECT_EQ(view.status.last(), "Sim not ready"_q);
}

TEST_F(ControllerTest, ApproachBlocksUnlessForced)
{
    settings->setNoUpdateApproach(true);
    settings->setDownloadUpdateTime(10000);
    make();
    start();
    const GoingAround flight;
    controller->setFlightState(flight);
    decode();
    connectTo(4, 8);
    flyAt(50.0, 8.5);
    timer("timerWeather").start();
    tick(5s);
    EXPECT_TRUE(timer("timerWeather").isActive());
    EXPECT_EQ(view.dataPage.info1.last(), "No Update, Approach"_q);
    controller->OnClickedSetWX();
    tick(1s);
    EXPECT_FALSE(timer("timerWeather").isActive()) << "forced, and stopped until it is set";
    settle();
    ASSERT_TRUE(wait([&] { return timer("timerWeather").isActive(); }));
    EXPECT_EQ(view.dataPage.updateInterval, "Weather update in 600s / 50NM"_q);
    EXPECT_TRUE(view.dataPage.info1.contains("Weather download in 15min"_q));
    tick(700s);
    EXPECT_TRUE(timer("timerWeather").isActive()) << "the force is used up";
}

TEST_F(ControllerTest, LocalXPlaneFilesAreWrittenOnceTheirFolderIsThere)
{
    settings->setWeatherMode(1);
    settings->setSimPath(path("xplane"));
    QDir().mkpath(path("xplane"));
    make();
    start();
    decode();
    connectTo(4, aviation::fsid::kXPlane12);
    flyAt(50.0, 8.5);
    tick(5s);
    settle();
    EXPECT_EQ(view.levelOf("Weather Xplane: Can not open File: "_q), 3)
        << "X-Plane 12 keeps its files in a folder that isn't there";

    QDir().mkpath(path("xplane/Output/real weather"));
    controller->OnClickedSetWX();
    tick(1s);
    ASSERT_TRUE(wait([&] { return timer("timerWeather").isActive(); }));
    EXPECT_TRUE(read(path("xplane/Output/real weather/METAR.rwx")).contains("\nED"));
    EXPECT_TRUE(QFile::exists(path("xplane/Output/real weather/WINDS.rwx")));
}

TEST_F(ControllerTest, DecodedReportsAreExported)
{
    settings->setExportMetarFile(path("work"));
    make();
    start();
    decode();
    const int metars = static_cast<int>(controller->weather().metarCount());
    EXPECT_GT(metars, 10);
    EXPECT_EQ(view.levelOf("data: %1 Metars, additional WX:0"_q.arg(metars)), 1);
    EXPECT_EQ(read(path("work/metar.txt")).count(" 24012KT 9999 FEW030 22/12 Q1015\n"), metars);
    EXPECT_TRUE(view.weatherPage.searchEnabled);
    settings->setExportMetarFile(path("missing"));
    decode();
    EXPECT_EQ(view.levelOf("Export Metar, Can not open file. "_q), 3);
    EXPECT_TRUE(view.notices.at(Notice::Export).startsWith("Cirrilon - Export Metar: "_q));
    EXPECT_TRUE(dialogs.criticals().isEmpty()) << "nobody asked";
}

TEST_F(ControllerTest, FinishedJobsLeadToTheNextOne)
{
    make();
    connectTo(2, 3);
    const struct
    {
        int job;
        QString name;
        int error;
        QString line;
        int level;
    } rows[] = {
        {23, QString(), 0, "(ConnectWorker) Activate weather XPlane"_q, 1},
        {24, "a<b>"_q, 0, "JobName:a&lt;b&gt;  Finished"_q, 0},
        {29, "EDDF 011150Z <x>"_q, 0, "SimMetar: EDDF 011150Z &lt;x&gt;"_q, 0},
        {29, "abc"_q, 0, "SimMetar: No Metar"_q, 0},
        {30, QString(), simresult::kCloudReply, "JobID:30 JobName:  Finished"_q, 0},
        {32, "/a.fms"_q, 0, "flight plan sent: /a.fms"_q, 1},
        {32, "/a.fms"_q, 11, "flight plan sent, Error:11 - "_q, 3},
        {35, QString(), 8, "(Controller) DWC-ErrorNum:8"_q, 3},
        {19, "%3"_q, 8, "JobID:19 JobName:%3  Finished, Error: 8"_q, 3},
    };
    for (const auto& row : rows) {
        view.log.clear();
        controller->OnJobConnectWorkerFinished(row.job, row.name, row.error);
        if (row.job == 29) {
            EXPECT_EQ(view.setWxIcao, row.name.size() < 4 ? QString() : "EDDF"_q);
        }
        settle();
        EXPECT_EQ(view.levelOf(row.line), row.level) << qPrintable(row.line);
    }
    EXPECT_EQ(simulator.calls("ActivateWeather"_q).size(), 1);
    EXPECT_FALSE(view.setWxEnabled) << "the last METAR of the simulator was none";
    view.log.clear();
    for (const int error : {10, 10, 12, 0, 10}) {
        controller->OnJobConnectWorkerFinished(4, QString(), error);
    }
    settle();
    const auto told = std::count_if(view.log.begin(), view.log.end(), [](const auto& line) {
        return line.level == 3 && line.text.contains("JobID:4 "_q);
    });
    EXPECT_EQ(told, 3) << "the same fault of the next poll is a detail";
    for (const int job : {13, 14, 15, 16, 17}) {
        timer("timerWeather").stop();
        controller->OnJobConnectWorkerFinished(job, QString(), 5);
        EXPECT_TRUE(timer("timerWeather").isActive()) << job;
    }
}

TEST_F(ControllerTest, PreparedWeatherGoesOn)
{
    make();
    connectTo(2, 3);
    const std::tuple<int, int, QString> rows[] = {
        {2, 0, "Weather FSUIPC created"_q},
        {5, 0, "Weather SimConnect created"_q},
        {8, 0, "Weather Xplane created"_q},
        {9, 0, "Weather XPlane12 created"_q},
        {10, 0, "Weather Xplane created"_q},
        {11, weathererror::kThemeWritten, "Weather Model File created"_q},
    };
    for (const auto& [job, error, line] : rows) {
        view.log.clear();
        controller->OnJobWeatherWorkerFinished(job, "base"_q, error);
        settle();
        EXPECT_EQ(view.levelOf(line), 1) << job;
    }
    simulator.clearCalls();
    controller->OnJobWeatherWorkerFinished(11, "base"_q, weathererror::kCannotCreateFile);
    settle();
    EXPECT_EQ(view.levelOf("The weather theme isn't set."_q), 3);
    EXPECT_TRUE(simulator.calls().isEmpty());
}

TEST_F(ControllerTest, FsuipcGetsTheWeatherOfAStationThatItCantCreate)
{
    make();
    connectTo(1, 2);
    for (const auto& [error, posted] : {std::pair{200, true}, {8, false}, {0, true}}) {
        view.log.clear();
        controller->OnJobConnectWorkerFinished(26, "EDDF:N:50:8:100"_q, error);
        settle();
        EXPECT_EQ(view.linesWith("Next Job ID: 3, Name: EDDF"_q) == 1, posted) << error;
        EXPECT_EQ(view.linesWith("Station created"_q) == 1, error == 0) << error;
    }
}

TEST_F(ControllerTest, ALostConnectionIsTakenUpAgainUnlessTheUserActs)
{
    make();
    start(); // which would connect by itself with the setting of below
    connectTo(4, 8);
    simulator.setResults("GetAircraftData"_q, {simresult::kTimeout});
    flyAt(50.0, 8.5);
    settle();
    EXPECT_FALSE(controller->IsConnected());
    EXPECT_EQ(view.connectText, "Connect"_q);
    EXPECT_EQ(view.levelOf("Press Connect when the simulator"_q), 2);
    EXPECT_FALSE(timer("timerReconnect").isActive());

    settings->setAutoConnect(true);
    connectTo(4, 8);
    flyAt(50.0, 8.5);
    settle();
    EXPECT_EQ(view.linesWith("tries to connect again by itself"_q), 1);
    EXPECT_EQ(timer("timerReconnect").interval(), 10000);
    simulator.setResults("Connect"_q, {1, 13, 0});
    simulator.setResults("GetAircraftData"_q, {0});
    for (const int next : {20000, 40000}) {
        timer("timerReconnect").start(0);
        ASSERT_TRUE(wait([&] { return timer("timerReconnect").interval() == next; }));
        EXPECT_FALSE(controller->IsConnected());
    }
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([&] { return view.connectText == "Disconnect"_q; }));
    EXPECT_FALSE(timer("timerReconnect").isActive());
    EXPECT_EQ(view.linesWith("tries to connect again by itself"_q), 1) << "said once";

    simulator.setResults("GetAircraftData"_q, {simresult::kTimeout});
    flyAt(50.0, 8.5);
    settle();
    EXPECT_TRUE(timer("timerReconnect").isActive());
    simulator.setResults("Connect"_q, {1});
    controller->OnConnectClicked();
    settle();
    EXPECT_EQ(timer("timerReconnect").interval(), 10000)
        << "a click tries at once, and from the start";
    settings->setAutoConnect(false);
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([&] { return !timer("timerReconnect").isActive(); }));
    settle();
    EXPECT_EQ(simulator.calls("Connect"_q).size(), 6) << "switched off, nothing is tried";
}

TEST_F(ControllerTest, TheConnectAtTheStartIsTriedUntilASimulatorComes)
{
    settings->setAutoConnect(true);
    simulator.setResults("Connect"_q, {1, 100, 0});
    make();
    start();
    settle();
    EXPECT_EQ(timer("timerReconnect").interval(), 10000);
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([&] { return timer("timerReconnect").interval() == 20000; }));
    EXPECT_TRUE(dialogs.criticals().isEmpty()) << "nobody has asked";
    EXPECT_FALSE(controller->IsConnected());
    timer("timerReconnect").start(0);
    ASSERT_TRUE(wait([&] { return view.connectText == "Disconnect"_q; }));
    EXPECT_EQ(view.notices.count(Notice::Connection), 0U);
}

TEST_F(ControllerTest, WhatToStartIsSaidByTheInterface)
{
    const std::pair<int, QString> rows[] = {
        {0, "Start the simulator."_q},
        {1, "with FSUIPC."_q},
        {2, "with SimConnect."_q},
        {3, "with FSUIPC and SimConnect."_q},
        {4, "with its bridge at %1:%2."_q.arg(settings->serverIp()).arg(settings->serverPort())}};
    make();
    simulator.setResults("Connect"_q, {1});
    for (const auto& [interfaceType, text] : rows) {
        settings->setInterfaceType(interfaceType);
        controller->OnConnectClicked();
        settle();
        EXPECT_TRUE(view.notices[Notice::Connection].contains(text)) << interfaceType;
    }
    simulator.setResults("Connect"_q, {0});
    controller->OnConnectClicked();
    settle();
    EXPECT_EQ(view.notices.count(Notice::Connection), 0U);
}

TEST_F(ControllerTest, ALossLeavesNothingOfTheFlightInTheWindow)
{
    simulator.answer([](FakeSimulator::Answers& a) { a.aircraft.name = L"Jet"; });
    settings->setDownloadWxAtStart(false);
    make();
    start();
    decode();
    connectTo(4, 8);
    flyAt(50.0, 8.5);
    tick(std::chrono::seconds(1));
    settle();
    EXPECT_EQ(view.aircraftNames.last(), "Jet"_q);
    EXPECT_TRUE(view.progressText.contains("Weather update in"_q));
    simulator.setResults("GetAircraftData"_q, {simresult::kTimeout});
    flyAt(50.0, 8.5);
    settle();
    EXPECT_TRUE(view.statusAlarm.contains("lost"_q)) << "in red";
    EXPECT_TRUE(view.notices[Notice::Connection].contains("Start the simulator"_q));
    EXPECT_EQ(view.aircraftNames.last(), QString());
    EXPECT_FALSE(view.progressText.contains("Weather update in"_q)) << "no countdown";
    const int status = view.status.size();
    tick(std::chrono::seconds(1));
    EXPECT_EQ(view.status.size(), status);

    simulator.setResults("GetAircraftData"_q, {0});
    connectTo(4, 8);
    EXPECT_EQ(view.statusAlarm, QString());
    tick(std::chrono::seconds(1));
    settle();
    EXPECT_EQ(view.status.last(), "Sim not ready"_q) << "the old place isn't the new simulator's";
    simulator.clearCalls();
    flyAt(50.0, 8.5);
    tick(std::chrono::seconds(1));
    settle();
    EXPECT_EQ(view.aircraftNames.last(), "Jet"_q);
    EXPECT_EQ(simulator.calls("SetWeatherData"_q).size(), 1) << "a simulator started anew has none";
}

TEST_F(ControllerTest, ARequestedStationIsShownOrMarkedAsUnknown)
{
    settings->setShowTaf(false);
    make();
    start();
    decode();
    controller->OnGetMetarClicked(QString());
    controller->OnGetMetarClicked("edd"_q);
    controller->OnGetMetarClicked("0000"_q);
    controller->OnGetMetarClicked("eddf"_q);
    settle();
    const QVector<QPair<QString, bool>> expected{
        {QString(), false}, {"EDD"_q, false}, {"0000"_q, false}, {"EDDF"_q, true}};
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
    EXPECT_EQ(simulator.calls("SendText"_q),
              QStringList{"SendText EDDF 011150Z 24012KT <9999 5"_q});
    EXPECT_EQ(view.weatherPage.metars.size(), 2);
}

TEST_F(ControllerTest, WeatherAtAPlaceNeedsAMetarOnly)
{
    make();
    start();
    Metar metar(L"unchanged");
    Synop synop;
    Grib grib;
    const aviation::Position place(50.0, 8.5);
    EXPECT_EQ(controller->GetWeather(place, metar, synop, grib), placeweather::kNoMetar);
    EXPECT_EQ(metar.reportText(), L"unchanged");
    decode();
    EXPECT_EQ(controller->GetWeather(place, metar, synop, grib), placeweather::kFound);
    EXPECT_NE(metar.reportText(), L"unchanged");
    EXPECT_EQ(view.linesWith("Download Grib, position: 50.00, 8.50"_q), 1) << "asked for once";
    ASSERT_NE(controller->navdata(), nullptr);
    EXPECT_FALSE(controller->navdata()->airports().isEmpty());
}

} // namespace

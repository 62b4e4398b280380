#include "tests/app/ControllerFixture.h"
#include "tests/support/LoopbackHttp.h"
#include "weather/output/WeatherWrapper.h"

#include <QDir>
#include <QSignalSpy>

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

/// A weather server of two addresses, "/one" and "/two", and an info server on loopback.
class ControllerDownloadTest : public ControllerFixture
{
protected:
    void SetUp() override
    {
        ControllerFixture::SetUp();
        write(mainFile(), "[url]\nwxdata1=" + server.url(text("/one")).toUtf8()
                              + "\nwxdata2=" + server.url(text("/two")).toUtf8()
                              + "\nfileinfo=" + server.url(text("/info/")).toUtf8() + "\n");
        settings->load(mainFile());
        settings->setWorkFolder(path("work/"));
        settings->setInterfaceType(aviation::interfaceid::kBridge);
        settings->setClearWxOnConnect(false);
        settings->setMyIp(QString());
        settings->setExportMetarFile(path("export"));
        settings->setWeatherServer(settings->serverOne());
        QDir().mkpath(path("export"));
        controller = std::make_unique<Controller>(
            ControllerParts{*settings, view, dialogs, m_random, HostNetwork(), processes,
                            interfaces, DownloadLimits()});
        timer("timerOneSecond").stop();
    }
    void TearDown() override
    {
        QDir::setCurrent(m_currentFolder);
        ControllerFixture::TearDown();
    }
    /// Airports are loaded, so reports find their places.
    void start()
    {
        QSignalSpy started(controller.get(), &Controller::sigStarted);
        ASSERT_TRUE(started.wait());
    }
    void waitForLine(const char* part)
    {
        ASSERT_TRUE(wait([&] { return view.linesWith(text(part)) > 0; })) << part;
    }
    static QByteArray weatherFile(int metars)
    {
        QByteArray block("[METAR]\n");
        for (int i = 0; i < metars; ++i) {
            block += "EDD" + QByteArray(1, static_cast<char>('A' + i % 26))
                     + " 011150Z 24012KT 9999 FEW030 22/12 Q1015\n";
        }
        return block + "[/METAR]\n";
    }
    static QByteArray packed(const QByteArray& plain) { return qCompress(plain).mid(4); }
    int grib() { return controller->DownloadGrib(aviation::Position(50.0, 8.5), false); }
    void serveGrib(const QByteArray& answer) { server.serve("/one/get_gribv3.php", answer); }
    static QByteArray frankfurt()
    {
        return read(text(CIRRILON_TEST_DATA "/upperair/frankfurt.txt"));
    }

    LoopbackHttp server;
    const QString m_currentFolder = QDir::currentPath();
};

TEST_F(ControllerDownloadTest, FetchesInflatesExportsAndDecodes)
{
    write(path("export/weather.wx"), "of yesterday");
    start();
    server.serve("/one/weather_ivao.gz", packed(weatherFile(12)));
    settings->setWeatherSource(2);
    controller->OnDownloadWeather();
    EXPECT_FALSE(view.weatherPage.searchEnabled);
    EXPECT_TRUE(view.setWxEnabled);
    controller->OnDownloadWeather();
    waitForLine("finished initialization");
    EXPECT_EQ(view.linesWith(text("being downloaded already")), 1);
    EXPECT_EQ(server.count("/one/weather_ivao.gz"), 1);
    EXPECT_GT(controller->weather().metarCount(), 5U);
    EXPECT_EQ(read(settings->tmpFolder() + text("weather.txt")), weatherFile(12));
    EXPECT_EQ(read(path("export/weather.wx")), weatherFile(12));
}

TEST_F(ControllerDownloadTest, TheListOfFs2020IsPlain)
{
    start();
    connectTo(aviation::interfaceid::kBridge, aviation::fsid::kFs2020);
    server.serve("/one/metar_fs2020.txt", weatherFile(11));
    controller->DownloadWeather(1);
    waitForLine("finished initialization");
    EXPECT_EQ(view.levelOf(text("Download weather from MSFS2020")), 1);
    EXPECT_GT(controller->weather().metarCount(), 5U);
}

TEST_F(ControllerDownloadTest, NetworkErrorsSwitchServersUntilTheLimit)
{
    controller->DownloadWeather(3);
    waitForLine("Automatic weather download stopped");
    EXPECT_EQ(server.count("/one/weather_noaa.gz"), 4);
    EXPECT_EQ(server.count("/two/weather_noaa.gz"), 3);
    EXPECT_EQ(view.linesWith(text("(Controller) - Switch to Weather server: wxdata2")), 3);
    const QStringList boxes = dialogs.warnings();
    EXPECT_EQ(boxes.size(), 8);
    EXPECT_EQ(boxes.first(), text("Cirrilon - Download error|Network error: 203 \n")
                                 + settings->tmpFolder() + text("weather_noaa.gz"));
    EXPECT_EQ(boxes.last(), text("Cirrilon - Download error|Automatic weather download "
                                 "stopped.\nPlease contact the developers of Cirrilon."));
    EXPECT_FALSE(timer("timerWeather").isActive());
    // The counter isn't reset: the next failure stops at once.
    controller->OnDownloadWeather();
    ASSERT_TRUE(wait([&] { return dialogs.warnings().size() == 10; }));
}

TEST_F(ControllerDownloadTest, SaysWhyAnAnswerIsNoWeatherAndTriesAnotherSource)
{
    const struct
    {
        QByteArray answer;
        const char* reason;
    } rows[] = {
        {"", "it is empty"},
        {"<!DOCTYPE html><html><b>502</b></html>", "it is a web page"},
        {"Error: no <b>data</b>\n", "the server says Error: no &lt;b&gt;data&lt;/b&gt;"},
        {packed(weatherFile(500)).left(60), "truncated"},
        {QByteArray(100, '\xff'), "damaged"},
    };
    settings->setWeatherSource(1);
    for (const auto& row : rows) {
        view.log.clear();
        server.requests.clear();
        server.serve("/one/weather_vatsim.gz", row.answer);
        server.stall("/one/weather_ivao.gz");
        controller = std::make_unique<Controller>(
            ControllerParts{*settings, view, dialogs, m_random, HostNetwork(), processes,
                            interfaces, DownloadLimits()});
        controller->OnDownloadWeather();
        ASSERT_TRUE(wait([&] { return server.count("/one/weather_ivao.gz") == 1; })) << row.reason;
        EXPECT_EQ(view.levelOf(text(row.reason)), 3) << row.reason;
        EXPECT_EQ(view.linesWith(text("The weather file can't be used")), 1);
    }
}

TEST_F(ControllerDownloadTest, ExternalAddresses)
{
    start();
    settings->setWxServerType(3);
    settings->setUrlExternMetar(server.url(text("/m%Y.txt")));
    server.serve("/m2019.txt", "EDDF 011150Z 24012KT 9999 Q1015\n");
    controller->OnDownloadWeather();
    waitForLine("finished initialization of weather data: 1 Metars");
    EXPECT_EQ(view.levelOf(text("(Controller) - Download Synop - Url-Error")), 3);
    // The SYNOP block stands in for the METARs. While it is fetched others are kept out.
    controller = std::make_unique<Controller>(ControllerParts{*settings, view, dialogs, m_random,
                                                              HostNetwork(), processes, interfaces,
                                                              DownloadLimits()});
    settings->setUrlExternSynop(server.url(text("/none")));
    view.log.clear();
    QTimer::singleShot(0, controller.get(), &Controller::OnDownloadWeather);
    controller->OnDownloadWeather();
    waitForLine("finished initialization of weather data: 0 Metars");
    EXPECT_EQ(view.linesWith(text("being downloaded already")), 1);
    EXPECT_EQ(view.levelOf(text("(Controller) - Download Synop Error: ")), 3);
}

TEST_F(ControllerDownloadTest, UpperAirData)
{
    serveGrib(frankfurt());
    EXPECT_EQ(grib(), 1);
    EXPECT_EQ(controller->weather().gribCount(), 1U);
    EXPECT_TRUE(server.requests.first().startsWith(
        "GET /one/get_gribv3.php?lat=50.00&lon=8.50&mode=multi "));
}

TEST_F(ControllerDownloadTest, AFailureOfUpperAirDataIsToldOnce)
{
    const struct
    {
        QByteArray answer;
        const char* line;
    } rows[] = {
        {"Error: <b>\x1b[2J\nmore\n", "(Controller Weather) - Error: &lt;b&gt;\\u001b[2J\\nmore"},
        {"", "it is empty"},
        {"<html></html>", "it is a web page"},
        {"GRIB nonsense\n", "has no data near 50.00, 8.50"},
    };
    for (const auto& row : rows) {
        serveGrib(row.answer);
        view.log.clear();
        EXPECT_EQ(grib(), 0);
        QCoreApplication::processEvents();
        EXPECT_EQ(view.levelOf(text(row.line)), 3) << row.line;
        EXPECT_EQ(grib(), 0);
        QCoreApplication::processEvents();
        EXPECT_EQ(view.levelOf(text(row.line)), 0) << row.line;
    }
    settings->setWeatherServer(settings->serverTwo());
    EXPECT_EQ(grib(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(view.levelOf(text("(WeatherManager) Download Grib - Network Error 203")), 3);
}

TEST_F(ControllerDownloadTest, TheRawGribNeedsWgrib2)
{
    settings->setWxServerType(3);
    settings->setUrlExternGrib(server.url(text("/raw")));
    server.serve("/raw", "GRIB2");
    QDir().mkpath(path("program"));
    QDir::setCurrent(path("program"));
    const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", QByteArray());
    EXPECT_EQ(grib(), 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(view.levelOf(text("wgrib2 is needed for the external GRIB address")), 3);
    EXPECT_EQ(grib(), 0) << "not asked in a tight loop";
    EXPECT_EQ(server.count("/raw"), 1);
    settings->setUrlExternGrib(server.url(text("/%s/none")));
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_EQ(grib(), 0);
        clock.Advance(std::chrono::seconds(1)); // the address has the time in it
    }
    EXPECT_EQ(server.requests.size(), 2);
    settings->setUrlExternGrib(server.url(text("/raw")));

    clock.Advance(std::chrono::minutes(2));
    write(path("program/wgrib2"), "#!");
    QFile::setPermissions(path("program/wgrib2"), QFile::ReadOwner | QFile::ExeOwner);
    processes.outputs = QStringList(text("1:0:<b>"));
    processes.result = {true, false, 0, text("still running")};
    EXPECT_EQ(grib(), 1);
    qputenv("PATH", searchPath);
    QCoreApplication::processEvents();
    EXPECT_EQ(read(settings->tmpFolder() + text("grib.grib")), "GRIB2");
    ASSERT_EQ(processes.runs().size(), 1);
    EXPECT_TRUE(processes.runs().first().endsWith(text("|(CWAT:(surface)) -csv ")
                                                  + settings->tmpFolder() + text("grib.csv")));
    EXPECT_EQ(view.levelOf(text("(Controller) - 1:0:&lt;b&gt;")), 0);
    EXPECT_EQ(view.levelOf(text("(Controller) - still running")), 3);
}

TEST_F(ControllerDownloadTest, GlobalWindGoesToARemoteSimulatorOnce)
{
    connectTo(aviation::interfaceid::kBridge, aviation::fsid::kXPlaneId8);
    simulator.clearCalls();
    server.serve("/one/global_turbulence.grib", "turbulence");
    controller->DownloadXPlaneGlobalWind(); // the wind file is missing
    settle();
    EXPECT_EQ(view.levelOf(text("(Controller) - Download XPlane Global grib Error: 203")), 3);
    EXPECT_TRUE(simulator.calls().isEmpty());

    server.serve("/one/global_wind.grib", "wind");
    controller->DownloadXPlaneGlobalWind();
    ASSERT_TRUE(wait([&] { return simulator.calls().contains(text("ActivateWeather")); }));
    EXPECT_EQ(simulator.calls(),
              QStringList({text("SetGlobalWindFile 4"), text("SetTurbulenceWindFile 10"),
                           text("ActivateWeather")}));
    controller->DownloadXPlaneGlobalWind();
    settle();
    EXPECT_EQ(simulator.calls(text("ActivateWeather")).size(), 2);
    EXPECT_EQ(server.count("/one/global_wind.grib"), 2);
}

TEST_F(ControllerDownloadTest, GlobalWindIsWrittenForALocalSimulator)
{
    server.serve("/one/global_wind.grib", "wind");
    QDir().mkpath(path("sim"));
    settings->setSimPath(path("sim"));
    settings->setFlightplanPathXPlane(path("sim"));
    controller->DownloadXPlaneGlobalWind();
    EXPECT_EQ(read(path("sim/global_winds.grib")), "wind");
}

TEST_F(ControllerDownloadTest, InfoFile)
{
    const QByteArray latest("[Version]\ncirrilonv3=9.0.0\n[UpdateInfo]\ninfo=<i>new</i>\n");
    settings->setCheckNewVersion(true);
    dialogs.installer = text("setup.exe");
    processes.startError = text("no <right>");

    write(path("info"), latest + "[Serverload]\nwxdata=2.1\n");
    controller->OnDownloadFileInfoFinished(path("info"), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(view.levelOf(text("(Controller) - new Version 9.0.0 available")), 1);
    ASSERT_EQ(dialogs.offers.size(), 1);
    EXPECT_EQ(dialogs.offers.first().info, text("<i>new</i>"));
    EXPECT_FALSE(dialogs.offers.first().mandatory);
    EXPECT_EQ(view.levelOf(text("can not start installer. ProcessError: no &lt;right&gt;, setup")),
              3);
    EXPECT_EQ(processes.opened, QStringList(settings->tmpFolder()));
    EXPECT_EQ(settings->weatherServer(), settings->serverTwo());
    EXPECT_FALSE(view.programClosed);

    processes.startError.clear();
    settings->setWeatherServer(settings->serverOne());
    write(path("info"), latest + "[Serverload]\nwxdata=2.0\n");
    controller->OnDownloadFileInfoFinished(path("info"), 0);
    ASSERT_TRUE(wait([&] { return view.programClosed; }));
    EXPECT_EQ(processes.started, QStringList({text("setup.exe"), text("setup.exe")}));
    EXPECT_EQ(settings->weatherServer(), settings->serverOne());

    view.programClosed = false;
    write(settings->tmpFolder() + text("cirrilon_v3_info.php"),
          "[Version]\ncirrilonv3=9.0.0\ncirrilonv3min=8.0.0\n");
    controller->onCheckNewVersion();
    ASSERT_TRUE(wait([&] { return view.programClosed; }));
    EXPECT_EQ(dialogs.offers.size(), 2);
    EXPECT_TRUE(dialogs.warnings().last().endsWith(
        text("|Please download new version 8.0.0\nThis version is no longer "
             "supported.\nCirrilon 3.0 is closed.")));

    write(settings->tmpFolder() + text("cirrilon_v3_info.php"), "<html>not found</html>");
    view.log.clear();
    controller->onCheckNewVersion();
    QCoreApplication::processEvents();
    EXPECT_EQ(view.linesWith(text("is up to date")), 0);

    write(path("info"), "<html>not found</html>");
    controller->OnDownloadFileInfoFinished(path("info"), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(view.levelOf(text("The info server's answer tells no version")), 2);
    controller->onDownloadFileInfo();
    waitForLine("(Controller) - can not download fileinfo, Net-Error: 203");
}

} // namespace

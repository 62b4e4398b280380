#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"

#include <atomic>
#include <new>
#include <tuple>
#include <utility>

using namespace std::chrono_literals;

namespace {

class ControllerDownloadTest : public ControllerFixture
{
protected:
    void SetUp() override
    {
        ControllerFixture::SetUp();
        settings->setGribOff(false);
        settings->setExportMetarFile(path("work"));
        limits.retryPausesMs = {0, 0, 0, 0, 0, 0};
        make();
    }
    void serveAll(const QByteArray& list)
    {
        for (const QByteArray source : {"vatsim", "ivao", "noaa"}) {
            for (const QByteArray server1 : {"/one/weather_", "/two/weather_"}) {
                server.serve(server1 + source + ".gz", list);
            }
        }
    }
    void downloadUntil(const QString& line)
    {
        view.log.clear();
        controller->OnDownloadWeather();
        waitForLine(line);
        settle();
    }
    std::size_t held() const { return controller->weather().metarCount(); }
    /// Another run of the program in the same folders.
    void runAgain()
    {
        controller.reset();
        view.log.clear();
        view.status.clear();
        view.notices.clear();
        make();
    }

    static constexpr const char* kDecoded = "finished initialization of weather data";
};

TEST_F(ControllerDownloadTest, ADownloadStopsTheWeatherClockAndEndsInReports)
{
    start();
    server.serve("/one/weather_ivao.gz", packed(weatherFile(26)));
    settings->setWeatherSource(2);
    timer("timerWeather").start();
    controller->OnDownloadWeather();
    EXPECT_FALSE(timer("timerWeather").isActive());
    EXPECT_FALSE(view.weatherPage.searchEnabled);
    EXPECT_TRUE(view.setWxEnabled);
    waitForLine("finished initialization of weather data"_q);
    EXPECT_TRUE(timer("timerWeather").isActive());
    EXPECT_TRUE(view.weatherPage.searchEnabled);
}

TEST_F(ControllerDownloadTest, AnEmptyListSendsToAnotherSource)
{
    settings->setWeatherSource(1);
    server.stall("/one/weather_ivao.gz");
    server.serve("/one/weather_vatsim.gz", packed(weatherFile(9)));
    make();
    controller->OnDownloadWeather();
    ASSERT_TRUE(wait([&] { return server.count("/one/weather_ivao.gz") == 1; }));
    EXPECT_EQ(view.levelOf("no metars founded, switch to another source"_q), 3);
}

TEST_F(ControllerDownloadTest, NoBadListReplacesGoodReports)
{
    start();
    serveAll(packed(weatherFile(26)));
    downloadUntil(QString::fromLatin1(kDecoded));
    const std::size_t before = held();
    ASSERT_GE(before, 10U);
    const QByteArray whole = packed("[TAF]\n[/TAF]\n" + weatherFile(20));
    const std::pair<QByteArray, QString> rows[] = {
        {packed(weatherFile(3)), "no metars founded. Download stopped"_q},
        {packed(weatherFile(20).chopped(4)), "Automatic weather download stopped"_q},
        {whole.left(whole.size() - 20), "Automatic weather download stopped"_q},
    };
    for (const auto& [list, end] : rows) {
        serveAll(list);
        downloadUntil(end);
        EXPECT_EQ(held(), before) << qPrintable(end);
        EXPECT_TRUE(timer("timerWeather").isActive());
        EXPECT_TRUE(view.weatherPage.searchEnabled);
        EXPECT_NE(view.notices[Notice::Download], QString());
        EXPECT_EQ(view.linesWith(QString::fromLatin1(kDecoded)), 0) << "nothing new came in";
        serveAll(packed(weatherFile(26)));
        downloadUntil(QString::fromLatin1(kDecoded));
        EXPECT_EQ(view.notices.count(Notice::Download), 0U);
    }
}

TEST_F(ControllerDownloadTest, AFileThatCantBeWrittenCostsNoReports)
{
    ASSERT_TRUE(QDir().mkpath(settings->tmpFolder() + "weather.txt"_q));
    start();
    serveAll(packed(weatherFile(26)));
    downloadUntil(QString::fromLatin1(kDecoded));
    EXPECT_GE(held(), 10U);
    EXPECT_EQ(view.levelOf("weather.txt"_q), 2);
    EXPECT_EQ(view.notices.count(Notice::Download), 0U);
}

TEST_F(ControllerDownloadTest, AShortListIsTakenWhereNothingBetterIsHeld)
{
    start();
    serveAll(packed(weatherFile(3)));
    downloadUntil("no metars founded. Download stopped"_q);
    EXPECT_GT(held(), 0U);
}

TEST_F(ControllerDownloadTest, ExternalWeatherMayBeSmallAndNothingIsLostWithoutIt)
{
    start();
    decode();
    settings->setWxServerType(3);
    settings->setUrlExternMetar(server.url("/metar"_q));
    server.serve("/metar", "EDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015\n");
    downloadUntil(QString::fromLatin1(kDecoded));
    EXPECT_EQ(held(), 1U);
    EXPECT_EQ(view.linesWith("switch to another source"_q), 0);
    for (const QByteArray answer : {"", "Service not available\n"}) {
        server.serve("/metar", answer);
        timer("timerWeather").stop();
        downloadUntil(answer.isEmpty() ? "There is no external weather"_q
                                       : "the new list has too few reports"_q);
        EXPECT_EQ(held(), 1U) << answer.constData();
        EXPECT_TRUE(timer("timerWeather").isActive());
        EXPECT_NE(view.notices[Notice::Download], QString());
    }
}

TEST_F(ControllerDownloadTest, AfterAFailedRowTheNextDownloadComesAtItsTime)
{
    settings->setDownloadUpdateTime(900);
    settings->setUpdateTime(10000);
    settings->setGribOff(true);
    make();
    start();
    decode();
    connectTo(4, 8);
    flyAt(50.0, 8.5);
    downloadUntil("Automatic weather download stopped"_q);
    ASSERT_EQ(dialogs.warnings().size(), 1) << "the pilot asked";
    EXPECT_TRUE(timer("timerWeather").isActive());
    tick(1s);
    settle();
    EXPECT_FALSE(simulator.calls("SetWeather"_q).isEmpty()) << "of the reports that are held";
    EXPECT_FALSE(view.weatherPage.metars.isEmpty());

    tick(400s);
    EXPECT_EQ(view.linesWith("Download weather from"_q), 7);
    serveAll(packed(weatherFile(26)));
    tick(901s);
    waitForLine(QString::fromLatin1(kDecoded));
    EXPECT_EQ(view.linesWith("Download weather from"_q), 8);
    EXPECT_EQ(dialogs.warnings().size(), 1);
}

TEST_F(ControllerDownloadTest, WithoutASimulatorTheNextListComesInTimeAllTheSame)
{
    settings->setDownloadUpdateTime(900);
    settings->setDownloadWxAtStart(true);
    start();
    waitForLine("Automatic weather download stopped"_q);
    view.log.clear();
    serveAll(packed(weatherFile(26)));
    tick(400s);
    EXPECT_EQ(view.linesWith("Download weather from"_q), 0);
    tick(501s);
    waitForLine(QString::fromLatin1(kDecoded));
    EXPECT_GT(held(), 0U);

    connectTo(4, 8); // no aircraft yet
    tick(901s);
    ASSERT_TRUE(wait([this] { return view.linesWith(QString::fromLatin1(kDecoded)) == 2; }));
    EXPECT_EQ(view.linesWith("Download weather from"_q), 2);
    flyAt(50.0, 8.5);
    tick(1s);
    EXPECT_TRUE(view.status.contains("Weather download in 15min"_q));
}

TEST_F(ControllerDownloadTest, ADecodeThatComesToNoEndIsAFailedDownload)
{
    limits.retryPausesMs = {3600000};
    make();
    start();
    serveAll(packed(weatherFile(26)));
    std::atomic<int> faults{1};
    QObject::connect(
        &controller->weather(), &WeatherWrapper::sigProgress, &controller->weather(),
        [&faults] {
            if (faults-- > 0) {
                throw std::bad_alloc();
            }
        },
        Qt::DirectConnection);
    downloadUntil("Job 1 failed"_q);
    EXPECT_TRUE(timer("timerWeather").isActive());
    EXPECT_NE(view.notices[Notice::Download], QString());
    EXPECT_EQ(dialogs.warnings().size(), 1) << "the pilot asked";

    downloadUntil(QString::fromLatin1(kDecoded));
    EXPECT_GT(held(), 0U);
    EXPECT_EQ(view.notices.count(Notice::Download), 0U);
}

TEST_F(ControllerDownloadTest, AFailedExportLeavesWhatIsSaidOfTheWeather)
{
    settings->setExportMetarFile(path("export"));
    QDir().mkpath(path("export/metar.txt")); // in the way of the file
    write(path("work/lastweather.txt"),
          "Cirrilon, weather fetched 2019-07-01T12:00:00Z\n" + weatherFile(26));
    start();
    waitForLine("Export Metar, Can not open file"_q);
    EXPECT_TRUE(view.notices[Notice::Download].contains("kept from the last run"_q));
    EXPECT_TRUE(view.notices[Notice::Export].contains("Can not open file."_q));

    QDir().rmdir(path("export/metar.txt"));
    serveAll(packed(weatherFile(26)));
    downloadUntil(QString::fromLatin1(kDecoded));
    EXPECT_EQ(view.notices.count(Notice::Export), 0U);
}

TEST_F(ControllerDownloadTest, WherePlacesWithoutReportsBeginIsSaidEachTime)
{
    settings->setGribOff(true);
    settings->setDownloadUpdateTime(80000);
    make();
    start();
    decode();
    connectTo(4, 8);
    const auto updatedAt = [this](double latitude) {
        view.log.clear();
        flyAt(latitude, 8.5);
        tick(700s);
        settle();
        EXPECT_TRUE(wait([this] { return timer("timerWeather").isActive(); }));
        settle();
        return view.linesWith("the weather in the simulator stays as it is"_q);
    };
    EXPECT_EQ(updatedAt(-50.0), 1);
    EXPECT_EQ(updatedAt(-50.0), 0) << "said already";
    serveAll(packed(weatherFile(3)));
    downloadUntil("no metars founded. Download stopped"_q);
    tick(1s);
    settle();
    EXPECT_EQ(view.linesWith("Next Job ID: 8"_q), 0) << "nothing new came in";

    EXPECT_EQ(updatedAt(50.0), 0);
    EXPECT_EQ(updatedAt(-50.0), 1);
}

TEST_F(ControllerDownloadTest, TheLastGoodListIsThereAtTheNextStart)
{
    start();
    serveAll(packed(weatherFile(26)));
    downloadUntil(QString::fromLatin1(kDecoded));
    const std::size_t before = held();
    serveAll(packed(weatherFile(3)));
    downloadUntil("no metars founded. Download stopped"_q);
    serveAll(packed("[METAR]"));

    const struct
    {
        bool downloadAtStart;
        std::chrono::minutes later;
        QString said;
    } rows[] = {
        {false, 195min, "Weather of 12:10Z, 3 h old, kept from the last run"_q},
        {true, 60h, "Weather of 2019-07-01 12:10Z, 2 d old, kept from the last run"_q},
    };
    for (const auto& row : rows) {
        settings->setDownloadWxAtStart(row.downloadAtStart);
        runAgain();
        clock.advance(row.later);
        start();
        waitForLine(QString::fromLatin1(kDecoded));
        settle();
        EXPECT_EQ(held(), before);
        EXPECT_EQ(view.levelOf(row.said), 1);
        EXPECT_TRUE(view.status.contains(row.said));
        EXPECT_TRUE(view.notices[Notice::Download].endsWith(row.said));
        EXPECT_TRUE(wait([this] { return timer("timerWeather").isActive(); })) << "between tries";
        clock.advance(-row.later);
    }

    serveAll(packed(weatherFile(26)));
    runAgain();
    start();
    waitForLine(QString::fromLatin1(kDecoded));
    EXPECT_EQ(view.linesWith("kept from the last run"_q), 0) << "what the server has is newer";
}

TEST_F(ControllerDownloadTest, AKeptListThatIsDamagedIsSaidAndLeft)
{
    write(path("work/lastweather.txt"), "Cirrilon, weather fetched 2019-07-01T12:00:00Z\n[METAR]");
    start();
    waitForLine("that was kept from the last run can't be used"_q);
    EXPECT_EQ(held(), 0U);
}

TEST_F(ControllerDownloadTest, WithoutAReportNoWeatherIsSet)
{
    settings->setGribOff(true);
    settings->setDownloadUpdateTime(100000);
    settings->setSimPath(path("simulator"));
    QDir().mkpath(path("simulator/Weather/themes"));
    const std::tuple<int, aviation::FsId, int> rows[] = {
        {1, 2, 0}, {2, 3, 0}, {2, 3, 1}, {4, 8, 0}, {4, 13, 0}, {4, 8, 1},
    };
    for (const auto& [interfaceType, fsId, mode] : rows) {
        SCOPED_TRACE(interfaceType * 1000 + fsId * 10 + mode);
        settings->setWeatherMode(mode);
        settings->setInterfaceType(interfaceType);
        view.log.clear();
        make();
        start();
        connectTo(interfaceType, fsId);
        flyAt(50.0, 8.5);
        simulator.clearCalls();
        for (int i = 0; i < 2; ++i) {
            controller->OnClickedSetWX();
            tick(700s);
            settle();
            EXPECT_TRUE(timer("timerWeather").isActive());
        }
        EXPECT_EQ(simulator.calls("Set"_q), QStringList());
        EXPECT_TRUE(QDir(path("simulator")).entryList(QDir::Files).isEmpty());
        EXPECT_EQ(view.linesWith("the weather in the simulator stays as it is"_q), 1);

        decode();
        tick(1s);
        settle();
        EXPECT_EQ(view.linesWith("created"_q), 1) << "due as soon as there are reports";
    }
}

} // namespace

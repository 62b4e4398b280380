#include "app/download/GribDownload.h"

#include "tests/app/download/ServerFixture.h"
#include "tests/support/FakeProcessRunner.h"
#include "weather/output/WeatherWrapper.h"

#include <QTimer>

#include <TestPaths.h>
#include <chrono>

namespace {

class GribDownloadTest : public ServerFixture
{
protected:
    void SetUp() override
    {
        ServerFixture::SetUp();
        store = std::make_unique<WeatherWrapper>(*settings, m_random);
        source = std::make_unique<GribDownload>(context(), stop, processes, *store, reporting());
    }
    void TearDown() override
    {
        source.reset();
        store.reset();
        ServerFixture::TearDown();
    }
    int grib() { return source->DownloadGrib(aviation::Position(50.0, 8.5), false); }

    FakeProcessRunner processes;
    std::unique_ptr<WeatherWrapper> store;
    std::unique_ptr<GribDownload> source;
};

TEST_F(GribDownloadTest, UpperAirDataOrTheFailureOnce)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"Error: <b>\x1b[2J\nmore\n", "(Controller Weather) - Error: &lt;b&gt;\\u001b[2J\\nmore"_q},
        {"", "it is empty"_q},
        {"<html></html>", "it is a web page"_q},
        {"GRIB nonsense\n", "has no data near 50.00, 8.50"_q},
    };
    for (const auto& [answer, line] : rows) {
        server.serve("/one/get_gribv3.php", answer);
        view.log.clear();
        EXPECT_EQ(grib(), 0);
        EXPECT_EQ(view.levelOf(line), 3) << qPrintable(line);
        EXPECT_EQ(grib(), 0);
        EXPECT_EQ(view.levelOf(line), 0) << qPrintable(line);
    }
    settings->setWeatherServer(settings->serverTwo());
    EXPECT_EQ(grib(), 0);
    EXPECT_EQ(view.levelOf("(WeatherManager) Download Grib - Network Error 203"_q), 3);

    const std::size_t before = store->gribCount();
    server.serve("/two/get_gribv3.php", read(CIRRILON_TEST_DATA "/upperair/frankfurt.txt"_q));
    EXPECT_EQ(grib(), 1);
    EXPECT_EQ(store->gribCount(), before + 1);
    EXPECT_TRUE(server.requests.last().startsWith(
        "GET /two/get_gribv3.php?lat=50.00&lon=8.50&mode=multi "));
}

TEST_F(GribDownloadTest, TheMainThreadWaitsForOneDownloadAtATime)
{
    server.serve("/one/get_gribv3.php", read(CIRRILON_TEST_DATA "/upperair/frankfurt.txt"_q));
    int again = -1;
    QTimer::singleShot(0, [&] { again = grib(); });
    EXPECT_EQ(grib(), 1);
    EXPECT_EQ(again, 0);
    EXPECT_EQ(view.levelOf("upper-air data are being downloaded already"_q), 0);
    EXPECT_EQ(grib(), 1);
}

TEST_F(GribDownloadTest, TheRawGribNeedsWgrib2)
{
    settings->setWxServerType(3);
    settings->setUrlExternGrib(server.url("/raw"_q));
    server.serve("/raw", "GRIB2");
    QDir().mkpath(path("program"));
    const QString folder = QDir::currentPath();
    QDir::setCurrent(path("program"));
    const QByteArray searchPath = qgetenv("PATH");
    qputenv("PATH", QByteArray());
    EXPECT_EQ(grib(), 1);
    EXPECT_EQ(view.levelOf("wgrib2 is needed for the external GRIB address"_q), 3);
    EXPECT_EQ(grib(), 0) << "not asked in a tight loop";
    EXPECT_EQ(server.count("/raw"), 1);
    settings->setUrlExternGrib(server.url("/%s/none"_q));
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_EQ(grib(), 0);
        clock.advance(std::chrono::seconds(1)); // the address has the time in it
    }
    EXPECT_EQ(server.requests.size(), 2);

    settings->setUrlExternGrib(server.url("/raw"_q));
    clock.advance(std::chrono::minutes(2));
    write(path("program/wgrib2"), "#!");
    QFile::setPermissions(path("program/wgrib2"), QFile::ReadOwner | QFile::ExeOwner);
    processes.outputs = QStringList("1:0:<b>"_q);
    processes.result = {true, false, 0, "still running"_q};
    EXPECT_EQ(grib(), 1);
    qputenv("PATH", searchPath);
    QDir::setCurrent(folder);
    EXPECT_EQ(read(settings->tmpFolder() + "grib.grib"_q), "GRIB2");
    ASSERT_EQ(processes.runs().size(), 1);
    EXPECT_TRUE(processes.runs().first().endsWith("|(CWAT:(surface)) -csv "_q
                                                  + settings->tmpFolder() + "grib.csv"_q));
    EXPECT_EQ(view.levelOf("(Controller) - 1:0:&lt;b&gt;"_q), 0);
    EXPECT_EQ(view.levelOf("(Controller) - still running"_q), 3);
}

} // namespace

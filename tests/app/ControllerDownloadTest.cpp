#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"

#include <QDir>

namespace {

class ControllerDownloadTest : public ControllerFixture
{
protected:
    void SetUp() override
    {
        ControllerFixture::SetUp();
        settings->setGribOff(false);
        make();
    }
    void waitForLine(const QString& part)
    {
        ASSERT_TRUE(wait([&] { return view.linesWith(part) > 0; })) << qPrintable(part);
    }
    static QByteArray packed(const QByteArray& plain) { return qCompress(plain).mid(4); }
};

TEST_F(ControllerDownloadTest, FetchesOnceAndExports)
{
    settings->setExportMetarFile(path("export"));
    write(path("export/weather.wx"), "of yesterday");
    start();
    server.serve("/one/weather_ivao.gz", packed(weatherFile(12)));
    settings->setWeatherSource(2);
    controller->OnDownloadWeather();
    EXPECT_FALSE(view.weatherPage.searchEnabled);
    EXPECT_TRUE(view.setWxEnabled);
    controller->OnDownloadWeather();
    waitForLine("finished initialization"_q);
    EXPECT_EQ(view.linesWith("being downloaded already"_q), 1);
    EXPECT_EQ(server.count("/one/weather_ivao.gz"), 1);
    EXPECT_EQ(read(settings->tmpFolder() + "weather.txt"_q), weatherFile(12));
    EXPECT_EQ(read(path("export/weather.wx")), weatherFile(12));
}

TEST_F(ControllerDownloadTest, NetworkErrorsAreToldUntilTheLimitThatStays)
{
    controller->DownloadWeather(3);
    waitForLine("Automatic weather download stopped"_q);
    EXPECT_EQ(view.linesWith("(Controller) - Switch to Weather server: wxdata2"_q), 3);
    EXPECT_EQ(dialogs.warnings().size(), 8);
    EXPECT_EQ(dialogs.warnings().first(), "Cirrilon - Download error|Network error: 203 \n"_q
                                              + settings->tmpFolder() + "weather_noaa.gz"_q);
    // The counter isn't reset: the next failure stops at once.
    controller->OnDownloadWeather();
    ASSERT_TRUE(wait([&] { return dialogs.warnings().size() == 10; }));
}

TEST_F(ControllerDownloadTest, SaysWhyAnAnswerIsNoWeatherAndTriesAnotherSource)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"", "it is empty"_q},
        {"<!DOCTYPE html><html><b>502</b></html>", "it is a web page"_q},
        {"Error: no <b>data</b>\n", "the server says Error: no &lt;b&gt;data&lt;/b&gt;"_q},
        {packed(weatherFile(500)).left(60), "truncated"_q},
        {QByteArray(100, '\xff'), "damaged"_q},
    };
    settings->setWeatherSource(1);
    server.stall("/one/weather_ivao.gz");
    for (const auto& [answer, reason] : rows) {
        view.log.clear();
        server.requests.clear();
        server.serve("/one/weather_vatsim.gz", answer);
        make();
        controller->OnDownloadWeather();
        ASSERT_TRUE(wait([&] { return server.count("/one/weather_ivao.gz") == 1; }));
        EXPECT_EQ(view.levelOf(reason), 3) << qPrintable(reason);
        EXPECT_EQ(view.linesWith("The weather file can't be used"_q), 1);
    }
}

TEST_F(ControllerDownloadTest, ExternalAddressesAreToldOneByOne)
{
    settings->setWxServerType(3);
    settings->setUrlExternMetar(server.url("/m%Y.txt"_q));
    server.serve("/m2019.txt", weatherFile(1));
    controller->OnDownloadWeather();
    waitForLine("finished initialization of weather data"_q);
    EXPECT_GT(server.count("/m2019.txt"), 0);
    EXPECT_EQ(view.levelOf("(Controller) - Download Synop - Url-Error"_q), 3);
    // While one is fetched others are kept out.
    make();
    settings->setUrlExternSynop(server.url("/none"_q));
    view.log.clear();
    QTimer::singleShot(0, controller.get(), &Controller::OnDownloadWeather);
    controller->OnDownloadWeather();
    waitForLine("finished initialization of weather data"_q);
    EXPECT_EQ(view.linesWith("being downloaded already"_q), 1);
    EXPECT_EQ(view.levelOf("(Controller) - Download Synop Error: "_q), 3);
}

} // namespace

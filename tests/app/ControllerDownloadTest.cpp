#include "tests/app/ControllerFixture.h"

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

} // namespace

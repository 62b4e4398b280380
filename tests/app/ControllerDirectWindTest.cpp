#include "app/base/FlightState.h"
#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <QSemaphore>

#include <TestPaths.h>
#include <algorithm>
#include <chrono>
#include <vector>

using namespace std::chrono_literals;
namespace storekind = aviation::weather::storekind;

namespace {

const char* const kSynop =
    "[SYNOP]\nAAXX 01121 10637 11458 52406 10221 20121 30024 40150 57005 82130=\n[/SYNOP]\n";

class Landing final : public FlightState
{
public:
    int flightPhase() const override { return flightphase::kLanding; }
    QString destination() const override { return {}; }
};

class ControllerDirectWindTest : public ControllerFixture
{
protected:
    /// Connected and near Frankfurt, with reports and upper-air data loaded.
    void fly(int interfaceType, aviation::FsId fsId)
    {
        settings->setGustySurfaceWind(false);
        make();
        start();
        decode(weatherFile(26) + kSynop);
        controller->weather().initializeWeather(
            QString::fromLatin1(read(CIRRILON_TEST_DATA "/upperair/frankfurt.txt"_q)),
            aviation::weather::storekind::kUpperAir);
        settings->setGribOff(false);
        connectTo(interfaceType, fsId);
        flyAt(50.0, 8.5);
        searches = 0;
        QObject::connect(controller.get(), &Controller::sigFinishedJob, controller.get(),
                         [this](int job, const QString&) {
                             searches += job == weatherjob::kSearchForDwc ? 1 : 0;
                         });
        simulator.clearCalls();
    }
    void remove(const std::vector<int>& kinds)
    {
        for (const int kind : kinds) {
            controller->weather().initializeWeather(QString(), kind);
        }
    }
    void tickAndSettle(std::chrono::milliseconds after)
    {
        tick(after);
        settle();
    }
    int sent() const
    {
        return static_cast<int>(simulator.calls("SetWindAtAircraft"_q).size()
                                + simulator.calls("SetWindLayers"_q).size());
    }

    void windAtAircraft(float direction, float speed)
    {
        simulator.answer([&](FakeSimulator::Answers& answers) {
            answers.aircraft.wind = {direction, speed, -1.0F, 0.0F};
        });
    }
    /// Speed of the layer of the last X-Plane record that can be left to direct wind control.
    float lowWind() const
    {
        const XPlaneWeather weather = simulator.answers().xplaneWeather;
        return weather.Winds.size() > 1 ? weather.Winds[1].Speed : 0.0F;
    }

    int searches = 0;
};

TEST_F(ControllerDirectWindTest, EachTickOfTheWeatherClockSendsAWind)
{
    fly(1, aviation::fsid::kFsx);
    for (const auto after : {1000ms, 1000ms, 950ms, 900ms, 1050ms, 1000ms}) {
        tickAndSettle(after);
    }
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(sent(), 5) << "the search has its tick for itself";
}

TEST_F(ControllerDirectWindTest, AConnectionStartsWithTheWindThatItsSimulatorHas)
{
    fly(1, aviation::fsid::kFsx);
    windAtAircraft(140.0F, 60.0F);
    flyAt(50.0, 8.5);
    tickAndSettle(1000ms);
    tickAndSettle(1000ms);
    const auto winds = [this] {
        return simulator.calls("SetWindAtAircraft"_q).join(QLatin1Char('|'));
    };
    EXPECT_TRUE(winds().contains("Dir=141"_q)) << winds().toStdString();
    EXPECT_TRUE(winds().contains("Speed=59"_q)) << winds().toStdString();

    controller->OnConnectClicked();
    settle();
    windAtAircraft(300.0F, 8.0F);
    connectTo(1, aviation::fsid::kFsx);
    simulator.clearCalls();
    tickAndSettle(1000ms);
    EXPECT_EQ(sent(), 0) << "the aircraft of this connection isn't known yet";
    flyAt(50.0, 8.5);
    tickAndSettle(1000ms);
    EXPECT_EQ(sent(), 0) << "nor are its reports";
    tickAndSettle(1000ms);
    EXPECT_EQ(sent(), 1);
    EXPECT_TRUE(winds().contains("Dir=299"_q)) << winds().toStdString();
    EXPECT_TRUE(winds().contains("Speed=9"_q)) << winds().toStdString();
}

TEST_F(ControllerDirectWindTest, XPlaneIsntLeftWithoutItsLowWind)
{
    fly(4, aviation::fsid::kXPlaneId9);
    simulator.setResults("SetWindLayers"_q, {simresult::kNotImplemented});
    tickAndSettle(1000ms);
    EXPECT_EQ(lowWind(), -1.0F) << "direct wind control has all it needs";
    tickAndSettle(1000ms);
    EXPECT_EQ(sent(), 1);
    tickAndSettle(1000ms);
    EXPECT_GE(lowWind(), 0.0F) << "the layers were refused";
    EXPECT_TRUE(view.targetWind.contains("refuses the wind"_q)) << view.targetWind.toStdString();
    const auto records = simulator.calls("SetWeatherData"_q).size();

    simulator.setResults("SetWindLayers"_q, {simresult::kNone});
    for (int i = 0; i < 5; ++i) {
        tickAndSettle(1000ms);
    }
    EXPECT_EQ(simulator.calls("SetWeatherData"_q).size(), records) << "it has its wind";
    controller->OnClickedSetWX();
    tickAndSettle(1000ms);
    EXPECT_EQ(lowWind(), -1.0F);
    settings->setFsWindDwc(false);
    tickAndSettle(1000ms);
    EXPECT_GE(lowWind(), 0.0F) << "switched off";
}

TEST_F(ControllerDirectWindTest, MissingLowWindIsGivenBackInAnApproachAndAfterAFailure)
{
    settings->setNoUpdateApproach(true);
    fly(4, aviation::fsid::kXPlaneId9);
    const auto recordsAfter = [this](std::chrono::milliseconds time) {
        tickAndSettle(time);
        return simulator.calls("SetWeatherData"_q).size();
    };
    EXPECT_EQ(recordsAfter(1000ms), 1);
    EXPECT_EQ(lowWind(), -1.0F);
    const Landing flight;
    controller->setFlightState(flight);
    EXPECT_EQ(recordsAfter(601s), 1) << "blocked";
    settings->setFsWindDwc(false);
    simulator.setResults("SetWeatherData"_q, {8, 0});
    EXPECT_EQ(recordsAfter(1000ms), 2) << "refused";
    EXPECT_EQ(recordsAfter(1000ms), 2) << "not each second";
    EXPECT_EQ(recordsAfter(9000ms), 3);
    EXPECT_GE(lowWind(), 0.0F);
    EXPECT_EQ(recordsAfter(11s), 3) << "it has its wind";
}

TEST_F(ControllerDirectWindTest, XPlaneKeepsItsLowWindWithoutUpperAirData)
{
    fly(4, aviation::fsid::kXPlaneId9);
    settings->setGribOff(true);
    tickAndSettle(1000ms);
    EXPECT_GT(simulator.answers().xplaneWeather.Winds.size(), 1U);
    EXPECT_GE(lowWind(), 0.0F);
    tickAndSettle(1000ms);
    EXPECT_TRUE(view.targetWind.startsWith("no DWC, no "_q)) << view.targetWind.toStdString();
    EXPECT_EQ(sent(), 0);
}

TEST_F(ControllerDirectWindTest, WithoutReportsTheWindOfTheWeatherStays)
{
    fly(1, aviation::fsid::kFsx);
    remove({storekind::kMetar, storekind::kSynop});
    for (int i = 0; i < 3; ++i) {
        tickAndSettle(1100ms);
    }
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(sent(), 0);
}

TEST_F(ControllerDirectWindTest, MakesDoWithASurfaceReport)
{
    const struct
    {
        const char* missing;
        bool gribOff;
        std::vector<int> missingKinds;
        int direction;
        int speed;
    } rows[] = {{"SYNOP", false, {storekind::kSynop}, -1, -1},
                {"upper air", true, {}, 240, 12},
                {"SYNOP and upper air", true, {storekind::kSynop}, 240, 12},
                {"METAR and upper air", true, {storekind::kMetar}, 240, 12}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.missing);
        view.targetWinds.clear();
        fly(1, aviation::fsid::kFsx);
        remove(row.missingKinds);
        settings->setGribOff(row.gribOff);
        settings->setDwcDegreesPerSecond(360);
        settings->setDwcKnotsPerSecond(100);
        tickAndSettle(1100ms);
        tickAndSettle(1100ms);
        ASSERT_FALSE(view.targetWinds.isEmpty());
        if (row.direction >= 0) {
            EXPECT_EQ(view.targetWinds.last().Dir, static_cast<float>(row.direction));
            EXPECT_EQ(view.targetWinds.last().Speed, static_cast<float>(row.speed));
        }
    }
}

TEST_F(ControllerDirectWindTest, ASlowSimulatorGetsOneWindAtATimeAndAFaultIsToldOnce)
{
    fly(1, aviation::fsid::kFsx);
    tickAndSettle(1100ms);
    QSemaphore mayGoOn;
    simulator.setHook([&mayGoOn](const QString& operation) {
        if (operation == "SetWindAtAircraft"_q) {
            mayGoOn.acquire();
        }
    });
    simulator.setResults("SetWindAtAircraft"_q, {8});
    tick(1100ms);
    ASSERT_TRUE(wait([this] { return sent() == 1; }));
    const int waiting = controller->connectWorker().queuedJobs();
    for (int i = 0; i < 5; ++i) {
        tick(1100ms);
    }
    EXPECT_EQ(controller->connectWorker().queuedJobs(), waiting);
    simulator.setHook({});
    mayGoOn.release();
    settle();
    tickAndSettle(1100ms);
    EXPECT_EQ(sent(), 2);
    const auto told = std::count_if(view.log.begin(), view.log.end(), [](const auto& line) {
        return line.level == 3 && line.text.contains("DWC-ErrorNum:8"_q);
    });
    EXPECT_EQ(told, 1);
}

} // namespace

#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <QSemaphore>

#include <TestPaths.h>
#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

const char* const kSynop =
    "[SYNOP]\nAAXX 01121 10637 11458 52406 10221 20121 30024 40150 57005 82130=\n[/SYNOP]\n";

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

    int searches = 0;
};

TEST_F(ControllerDirectWindTest, WithoutReportsTheWindOfTheWeatherStays)
{
    fly(1, aviation::fsid::kFsx);
    settings->setGribOff(true); // the search fails then
    for (int i = 0; i < 3; ++i) {
        tickAndSettle(1100ms);
    }
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(sent(), 0);
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

#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <QSemaphore>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

const char* const kSynop =
    "[SYNOP]\nAAXX 01121 10637 11458 52406 10221 20121 30024 40150 57005 82130=\n[/SYNOP]\n";
class DirectWind : public ControllerFixture
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

TEST_F(DirectWind, NeitherSearchesNorSendsWhereItIsOffOrImpossible)
{
    const QString fileMode = "no DWC, XPlane weather file mode"_q;
    const std::tuple<int, int, int, bool, QString> rows[] = {
        {1, 3, 0, false, QString()}, {2, 3, 0, true, QString()},  {3, 6, 0, true, QString()},
        {3, 10, 0, true, QString()}, {3, 12, 0, true, QString()}, {4, 7, 1, true, fileMode},
    };
    for (const auto& [interfaceType, fsId, mode, enabled, said] : rows) {
        SCOPED_TRACE(fsId);
        settings->setFsWindDwc(enabled);
        settings->setWeatherMode(mode);
        fly(interfaceType, fsId);
        for (int i = 0; i < 3; ++i) {
            tickAndSettle(1100ms);
        }
        EXPECT_EQ(searches, 0);
        EXPECT_EQ(sent(), 0);
        EXPECT_EQ(view.status.contains(fileMode), said == fileMode);
        EXPECT_EQ(view.targetWind, said);
    }
}

TEST_F(DirectWind, TheWindAtTheAircraftFollowsReportsThatAreSearchedEveryTwoMinutes)
{
    fly(1, aviation::fsid::kFsx);
    tickAndSettle(1001ms);
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(sent(), 0) << "the search has the first tick for itself";
    tickAndSettle(1001ms);
    EXPECT_EQ(simulator.calls("SetWindAtAircraft"_q).size(), 1);
    EXPECT_TRUE(simulator.calls("SetWindAtAircraft"_q).first().endsWith("Speed=1.00:Gust=-1.00"_q));
    EXPECT_EQ(view.linesWith("Next Job ID: 35, Name: 358.999:1.001"_q), 1)
        << "from north towards the west, one degree and one knot a second";
    ASSERT_EQ(view.targetWinds.size(), 1);
    EXPECT_FLOAT_EQ(view.targetWinds.last().Speed, 1.001F);

    tickAndSettle(59s);
    tickAndSettle(59s);
    EXPECT_EQ(searches, 1) << "119 seconds";
    tickAndSettle(1001ms);
    EXPECT_EQ(searches, 2);
    EXPECT_EQ(sent(), 3);
    tickAndSettle(1000ms);
    EXPECT_EQ(sent(), 3) << "the period isn't over";

    view.targetWind = "a wind"_q;
    settings->setFsWindDwc(false);
    tickAndSettle(1001ms);
    EXPECT_EQ(sent(), 3);
    EXPECT_EQ(view.targetWind, QString());
    settings->setFsWindDwc(true);
    tickAndSettle(1001ms);
    controller->OnConnectClicked();
    settle();
    connectTo(1, aviation::fsid::kPrepar3dV4);
    view.targetWind = "is not available"_q;
    tickAndSettle(1001ms);
    EXPECT_EQ(view.targetWind, "is not available"_q) << "of the new connection";
}

TEST_F(DirectWind, WithoutReportsTheWindOfTheWeatherStays)
{
    fly(1, aviation::fsid::kFsx);
    settings->setGribOff(true); // the search fails then
    for (int i = 0; i < 3; ++i) {
        tickAndSettle(1100ms);
    }
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(sent(), 0);
}

TEST_F(DirectWind, ASlowSimulatorGetsOneWindAtATimeAndAFaultIsToldOnce)
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

TEST_F(DirectWind, XPlaneGetsItsLayers)
{
    const std::pair<aviation::FsId, int> rows[] = {{7, 0}, {13, 1}};
    for (const auto& [fsId, mode] : rows) {
        settings->setWeatherMode(mode);
        fly(4, fsId);
        view.targetWind.clear();
        tickAndSettle(1100ms);
        tickAndSettle(1100ms);
        EXPECT_EQ(simulator.calls("SetWindLayers"_q), QStringList{"SetWindLayers 3"_q});
        EXPECT_TRUE(view.targetWind.startsWith("(111):240.0/12.0 ("_q))
            << fsId << ' ' << view.targetWind.toStdString();
        EXPECT_EQ(view.targetWind.count(QLatin1Char('(')), 3);
        EXPECT_EQ(view.targetWindTip, view.targetWind);
        EXPECT_EQ(view.linesWith("Next Job ID: 35"_q), 0);
    }
}

} // namespace

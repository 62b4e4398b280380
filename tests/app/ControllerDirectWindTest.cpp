#include "tests/app/ControllerFixture.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <QSemaphore>
#include <QSignalSpy>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace std::chrono_literals;

namespace {

QString text(const char* latin)
{
    return QString::fromLatin1(latin);
}

const char* const kSynop =
    "[SYNOP]\nAAXX 01121 10637 11458 52406 10221 20121 30024 40150 57005 82130=\n[/SYNOP]\n";
const char* const kUpperAir =
    "GRIB 00000 00000 99500 10090 99015 22056 24012 0000132 21856 24015 9200801 16057 25020 "
    "8501530 11058 26025 7003120 00160 27035 5005760 12361 28050 4007420 23962 28060 3009480 "
    "38363 28075 2510690 47165 28080";

class DirectWind : public ControllerFixture
{
protected:
    /// Connected and near Frankfurt, with reports and upper-air data loaded.
    void fly(int interfaceType, aviation::FsId fsId)
    {
        settings->setGustySurfaceWind(false);
        make();
        QSignalSpy started(controller.get(), &Controller::sigStarted);
        ASSERT_TRUE(wait([&] { return started.count() == 1; }));
        const QString metars = weatherText(30).replace(
            text("[METAR]\n"), text("[METAR]\nEDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015\n"));
        controller->weatherWorker().setWeatherText(metars + text(kSynop));
        controller->weatherWorker().addJob(Job(weatherjob::kDecodeWeather, text("decode")));
        controller->weatherWorker().start();
        settle();
        controller->weather().initializeWeather(text(kUpperAir),
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
        return static_cast<int>(simulator.calls(text("SetWindAtAircraft")).size()
                                + simulator.calls(text("SetWindLayers")).size());
    }

    int searches = 0;
};

struct Refusal
{
    const char* name;
    int interfaceType;
    int fsId;
    int mode;
    bool enabled;
    const char* status; ///< null: nothing is said
};

class DirectWindRefusal : public DirectWind, public ::testing::WithParamInterface<Refusal>
{};

TEST_P(DirectWindRefusal, NeitherSearchesNorSends)
{
    const Refusal& row = GetParam();
    settings->setFsWindDwc(row.enabled);
    settings->setWeatherMode(row.mode);
    fly(row.interfaceType, row.fsId);
    for (int i = 0; i < 3; ++i) {
        tickAndSettle(1100ms);
    }
    EXPECT_EQ(searches, 0);
    EXPECT_EQ(sent(), 0);
    const QString fileMode = text("no DWC, XPlane weather file mode");
    EXPECT_EQ(view.status.contains(fileMode), row.status != nullptr);
    EXPECT_EQ(view.targetWind, row.status == nullptr ? QString() : fileMode);
}

INSTANTIATE_TEST_SUITE_P(Rows, DirectWindRefusal,
                         ::testing::Values(Refusal{"Off", 1, 3, 0, false, nullptr},
                                           Refusal{"SimConnectAlone", 2, 3, 0, true, nullptr},
                                           Refusal{"Prepar3dV4", 3, 6, 0, true, nullptr},
                                           Refusal{"Prepar3dV5", 3, 10, 0, true, nullptr},
                                           Refusal{"Fs2020", 3, 12, 0, true, nullptr},
                                           Refusal{"XPlane7Files", 4, 7, 1, true, "said"},
                                           Refusal{"XPlane9Files", 4, 9, 1, true, "said"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(DirectWind, TheWindAtTheAircraftFollowsReportsThatAreSearchedEveryTwoMinutes)
{
    fly(1, aviation::fsid::kFsx);
    tickAndSettle(1001ms);
    EXPECT_EQ(searches, 1);
    EXPECT_EQ(sent(), 0) << "the search has the first tick for itself";
    tickAndSettle(1001ms);
    EXPECT_EQ(simulator.calls(text("SetWindAtAircraft")).size(), 1);
    EXPECT_TRUE(
        simulator.calls(text("SetWindAtAircraft")).first().endsWith(text("Speed=1.00:Gust=-1.00")));
    EXPECT_EQ(view.linesWith(text("Next Job ID: 35, Name: 358.999:1.001")), 1)
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

    view.targetWind = text("a wind");
    settings->setFsWindDwc(false);
    tickAndSettle(1001ms);
    EXPECT_EQ(sent(), 3);
    EXPECT_EQ(view.targetWind, QString());
    settings->setFsWindDwc(true);
    tickAndSettle(1001ms);
    controller->OnConnectClicked();
    settle();
    connectTo(1, aviation::fsid::kPrepar3dV4);
    view.targetWind = text("is not available");
    tickAndSettle(1001ms);
    EXPECT_EQ(view.targetWind, text("is not available")) << "of the new connection";
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
        if (operation == QLatin1String("SetWindAtAircraft")) {
            mayGoOn.acquire();
        }
    });
    simulator.setResults(text("SetWindAtAircraft"), {8});
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
        return line.level == 3 && line.text.contains(QLatin1String("DWC-ErrorNum:8"));
    });
    EXPECT_EQ(told, 1);
}

TEST_F(DirectWind, XPlaneGetsItsLayers)
{
    const std::pair<aviation::FsId, int> rows[] = {{7, 0}, {8, 0}, {13, 0}, {13, 1}};
    for (const auto& [fsId, mode] : rows) {
        settings->setWeatherMode(mode);
        fly(4, fsId);
        view.targetWind.clear();
        tickAndSettle(1100ms);
        tickAndSettle(1100ms);
        EXPECT_EQ(simulator.calls(text("SetWindLayers")), QStringList{text("SetWindLayers 3")});
        EXPECT_TRUE(view.targetWind.startsWith(text("(111):240.0/12.0 (")))
            << fsId << ' ' << view.targetWind.toStdString();
        EXPECT_EQ(view.targetWind.count(QLatin1Char('(')), 3);
        EXPECT_EQ(view.targetWindTip, view.targetWind);
        EXPECT_EQ(view.linesWith(text("Next Job ID: 35")), 0);
    }
}

TEST_F(ControllerFixture, CloudsAreHandedOnWhenTheSimulatorGaveThem)
{
    make();
    std::vector<std::vector<unsigned char>> grids;
    QObject::connect(controller.get(), &Controller::sigCloudsRGB, controller.get(),
                     [&](const std::vector<unsigned char>& grid) { grids.push_back(grid); });
    QSignalSpy finished(controller.get(), &Controller::sigFinishJobForAircraftEditor);
    simulator.answer([](FakeSimulator::Answers& answers) { answers.clouds = {1, 2, 255}; });
    const struct
    {
        int interfaceType;
        int code;
        int error;
    } rows[] = {{2, simresult::kCloudReply, 0}, {3, 8, 8}, {4, 20, simresult::kNotImplemented}};
    for (const auto& row : rows) {
        connectTo(row.interfaceType, 3);
        simulator.setResults(text("GetCloudState"), {row.code});
        finished.clear();
        controller->OnRequestCloudsRGB(50, 4);
        settle();
        ASSERT_EQ(finished.size(), 1);
        EXPECT_EQ(finished.first().at(1).toString(), text("50:4"));
        EXPECT_EQ(finished.first().at(2).toInt(), row.error);
        controller->OnConnectClicked();
        settle();
    }
    EXPECT_EQ(grids, (std::vector<std::vector<unsigned char>>{{1, 2, 255}}));
    EXPECT_EQ(simulator.calls(text("GetCloudState")).first(), text("GetCloudState -2 6"));
}

} // namespace

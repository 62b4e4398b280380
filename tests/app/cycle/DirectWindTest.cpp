#include "app/cycle/DirectWind.h"

#include "app/jobs/WeatherJobs.h"
#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "sim/ConnectJobs.h"
#include "sim/SimResult.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeMainView.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <TestPaths.h>
#include <chrono>
#include <tuple>
#include <vector>

using namespace std::chrono_literals;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

class DirectWindTest : public SettingsFixture
{
protected:
    void SetUp() override
    {
        SettingsFixture::SetUp();
        settings = std::make_unique<Settings>(mainFile(), m_random);
        settings->setGustySurfaceWind(false);
        settings->setFsWindDwc(true);
        aircraft.position = kFrankfurt;
        make();
    }
    void TearDown() override
    {
        wind.reset();
        settings.reset();
        SettingsFixture::TearDown();
    }
    void make()
    {
        posted.clear();
        wind =
            std::make_unique<DirectWind>(*settings, view,
                                         JobPosts{[this](const Job& job) { posted.push_back(job); },
                                                  [this](const Job& job) {
                                                      searches +=
                                                          job.id == weatherjob::kSearchForDwc;
                                                  }},
                                         std::make_unique<FakeRandom>());
    }
    void tick(std::chrono::milliseconds after, bool ready = true)
    {
        clock.advance(after);
        wind->update(simulator, aircraft, ready);
    }
    /// The reports that a search gives.
    void giveReports()
    {
        WeatherWrapper store(*settings, m_random);
        store.initializeWeather(
            QString::fromLatin1(read(CIRRILON_TEST_DATA "/upperair/frankfurt.txt"_q)),
            aviation::weather::storekind::kUpperAir);
        Grib grib;
        ASSERT_TRUE(store.SearchGrib(kFrankfurt, grib));
        Metar metar(L"EDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015");
        metar.setPosition(kFrankfurt);
        metar.setElevation(364);
        metar.Decode();
        wind->takeReports(metar, Synop(), grib);
    }

    const aviation::Position kFrankfurt{50.0, 8.5}; ///< whose reports they are
    FakeClock clock{2019, 7, 1, 12, 10};
    FakeMainView view;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<DirectWind> wind;
    cycle::Simulator simulator{1, aviation::fsid::kFsx};
    aviation::structs::AircraftData aircraft;
    std::vector<Job> posted; ///< to the simulator
    int searches = 0;
};

TEST_F(DirectWindTest, NeitherSearchesNorSendsWhereItIsOffOrImpossible)
{
    const QString fileMode = "no DWC, XPlane weather file mode"_q;
    const std::tuple<cycle::Simulator, int, bool, bool, QString> rows[] = {
        {{1, 3}, 0, false, true, QString()},
        {{1, 3}, 0, true, false, "no DWC, no weather yet"_q},
        {{2, 3}, 0, true, true, "no DWC, SimConnect can't set a wind"_q},
        {{3, 6}, 0, true, true, QString()},
        {{3, 10}, 0, true, true, QString()},
        {{3, 12}, 0, true, true, QString()},
        {{4, 7}, 1, true, true, fileMode},
    };
    for (const auto& [connected, mode, enabled, ready, said] : rows) {
        SCOPED_TRACE(connected.fsId);
        settings->setFsWindDwc(enabled);
        settings->setWeatherMode(mode);
        simulator = connected;
        for (int i = 0; i < 3; ++i) {
            tick(1100ms, ready);
        }
        EXPECT_EQ(searches, 0);
        EXPECT_TRUE(posted.empty());
        EXPECT_FALSE(wind->sends());
        EXPECT_EQ(view.status.contains(fileMode), said == fileMode);
        EXPECT_EQ(view.targetWind, said);
    }
}

TEST_F(DirectWindTest, TheWindAtTheAircraftFollowsReportsThatAreSearchedEveryTwoMinutes)
{
    tick(1001ms);
    EXPECT_EQ(searches, 1);
    tick(1001ms);
    EXPECT_TRUE(posted.empty()) << "a calm would replace the wind that the weather set";
    giveReports();
    tick(1001ms);
    ASSERT_EQ(posted.size(), 1U);
    EXPECT_EQ(posted.front().id, connectjob::kWindAtAircraft);
    EXPECT_EQ(posted.front().name, "358.999:1.001"_q)
        << "from north towards the west, one degree and one knot a second";
    ASSERT_EQ(view.targetWinds.size(), 1);
    EXPECT_FLOAT_EQ(view.targetWinds.last().Speed, 1.001F);

    tick(57s);
    EXPECT_EQ(posted.size(), 1U) << "the simulator hasn't taken the wind before";
    wind->windFinished(0);
    tick(59s);
    EXPECT_EQ(posted.size(), 2U);
    EXPECT_EQ(searches, 1) << "118 seconds";
    tick(3s);
    EXPECT_EQ(searches, 2);
    EXPECT_EQ(posted.size(), 2U) << "the search has its tick for itself";
}

TEST_F(DirectWindTest, AfterAJumpNothingIsSentUntilThereAreReportsOfThePlace)
{
    tick(1s);
    giveReports();
    tick(1s);
    wind->windFinished(0);
    ASSERT_EQ(posted.size(), 1U);
    aircraft.position = {40.0, -74.0};
    tick(1s);
    EXPECT_EQ(searches, 2);
    tick(1s);
    EXPECT_EQ(searches, 2);
    EXPECT_EQ(posted.size(), 1U);
    EXPECT_FALSE(wind->sends());
    EXPECT_EQ(view.targetWind, "no DWC, no reports near the aircraft"_q);
    giveReports();
    tick(1s);
    EXPECT_EQ(posted.size(), 2U);
}

TEST_F(DirectWindTest, OnlyWhatATickShowedIsHidden)
{
    tick(1001ms);
    giveReports();
    tick(1001ms);
    view.targetWind = "a wind"_q;
    settings->setFsWindDwc(false);
    tick(1001ms);
    EXPECT_EQ(view.targetWind, QString());

    settings->setFsWindDwc(true);
    wind->windFinished(0);
    tick(1001ms);
    wind->connected();
    simulator = {1, aviation::fsid::kPrepar3dV4};
    view.targetWind = "is not available"_q;
    tick(1001ms);
    EXPECT_EQ(view.targetWind, "is not available"_q) << "of the new connection";
}

TEST_F(DirectWindTest, SaysWhyItDoesntSend)
{
    for (const cycle::Simulator& connected : {cycle::Simulator{1, 3}, {4, 8}}) {
        SCOPED_TRACE(connected.fsId);
        simulator = connected;
        make();
        tick(1s);
        tick(1s);
        EXPECT_EQ(view.targetWind, "no DWC, no reports near the aircraft"_q);
        wind->takeReports(Metar(), Synop(), Grib());
        tick(1s);
        EXPECT_EQ(view.targetWind, "no DWC, no upper-air data"_q);
        EXPECT_TRUE(posted.empty()) << "a calm that nobody reported";
        EXPECT_FALSE(wind->sends());

        giveReports();
        EXPECT_TRUE(wind->sends()) << "with the next tick";
        tick(1s);
        wind->windFinished(simresult::kNotImplemented);
        EXPECT_FALSE(wind->sends());
        tick(1s);
        EXPECT_EQ(posted.size(), 2U) << "it goes on trying";
        EXPECT_EQ(view.targetWind, "no DWC, the simulator refuses the wind (error 200)"_q);
        wind->windFinished(simresult::kNone);
        EXPECT_TRUE(wind->sends());
        tick(1s);
        EXPECT_NE(view.targetWindTip, "no DWC, the simulator refuses the wind (error 200)"_q);
        EXPECT_EQ(posted.size(), 3U);

        wind->connected();
        EXPECT_FALSE(wind->sends()) << "of a new connection nothing is known";
        tick(1s);
        tick(1s);
        EXPECT_EQ(posted.size(), 3U) << "the reports are of where the aircraft was";
        giveReports();
        tick(1s);
        EXPECT_EQ(posted.size(), 4U) << "what the last one left unanswered stops nothing";
    }
}

TEST_F(DirectWindTest, XPlaneGetsItsLayers)
{
    for (const auto& [fsId, mode] : {std::pair{7, 0}, {13, 1}}) {
        settings->setWeatherMode(mode);
        simulator = {4, fsId};
        make();
        tick(1100ms);
        giveReports();
        tick(1100ms);
        ASSERT_EQ(posted.size(), 1U) << fsId;
        EXPECT_EQ(posted.front().id, connectjob::kSetWindLayers);
        EXPECT_EQ(posted.front().windLayers.size(), 3U);
        EXPECT_TRUE(view.targetWind.startsWith("(111):240.0/12.0 ("_q))
            << fsId << ' ' << view.targetWind.toStdString();
        EXPECT_EQ(view.targetWind.count(QLatin1Char('(')), 3);
        EXPECT_EQ(view.targetWindTip, view.targetWind);
    }
}

} // namespace

#include "aviation/Angles.h"
#include "tests/dwc/ModelFixture.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

using namespace dwctesting;
using aviation::weather::GribLevel;
using aviation::weather::Metar;
using aviation::weather::Synop;
using aviation::weather::Wind;

namespace {

using ModelDirectWindControlTest = ModelFixture;

TEST_F(ModelDirectWindControlTest, SpeedRisesToItsTargetAndFallsPastIt)
{
    reach(90.0F, 10.0F);
    setWeather(90.0F, 12.5F);
    for (const float speed : {11.0F, 12.0F, 12.5F, 12.5F}) {
        EXPECT_EQ(step().Speed, speed);
    }
    setWeather(90.0F, 10.0F);
    for (const float speed : {11.5F, 10.5F, 9.5F, 10.0F, 10.0F}) {
        EXPECT_EQ(step().Speed, speed);
    }
}

TEST_F(ModelDirectWindControlTest, DirectionTakesTheShorterWayThroughNorth)
{
    reach(358.0F, 10.0F);
    setWeather(1.5F, 10.0F);
    for (const float direction : {359.0F, 0.0F, 1.0F, 1.5F, 1.5F}) {
        EXPECT_EQ(step().Dir, direction);
    }
    setWeather(359.5F, 10.0F);
    for (const float direction : {0.5F, 359.5F, 359.5F}) {
        EXPECT_EQ(step().Dir, direction);
    }
    setWeather(179.5F, 10.0F);
    EXPECT_EQ(step().Dir, 358.5F) << "exactly opposite: -180 stays -180";
}

TEST_F(ModelDirectWindControlTest, LimitsGoByTheTimeSinceTheLastStep)
{
    m_settings.setDwcDegreesPerSecond(2);
    setWeather(90.0F, 60.0F);
    Wind before;
    for (const auto& [afterMs, degrees, knots] : {std::tuple{1000, 2.0F, 1.0F},
                                                  {250, 0.5F, 0.25F},
                                                  {0, 0.0F, 0.0F},
                                                  {5000, 10.0F, 5.0F},
                                                  {5001, 2.0F, 1.0F},
                                                  {6000, 2.0F, 1.0F}})
    {
        const Wind now = step(afterMs);
        EXPECT_EQ(now.Dir - before.Dir, degrees) << afterMs;
        EXPECT_EQ(now.Speed - before.Speed, knots) << afterMs;
        before = now;
    }
    m_clock.advance(std::chrono::seconds(3));
    setWeather(90.0F, 60.0F); // starts the time anew
    EXPECT_EQ(step().Dir - before.Dir, 2.0F);
}

TEST_F(ModelDirectWindControlTest, AFallingWindGoesToItsTargetWhereItWouldPassNothing)
{
    reach(80.0F, 2.5F);
    debugLines.clear();
    setWeather(90.0F, 0.25F);
    for (const char* const job : {"81:1.5", "82:0.5", "83:0.25", "84:0.25"}) {
        step();
        EXPECT_EQ(m_model.jobName(), QLatin1String(job));
    }
    setWeather(90.0F, -1.0F); // not measured
    EXPECT_EQ(step().Speed, 0.0F);
    EXPECT_EQ(debugLines, QStringList());
}

TEST_F(ModelDirectWindControlTest, AWindBeyondTheStrongestIsReportedAndTheLastOneStays)
{
    reach(80.0F, 199.5F);
    debugLines.clear();
    setWeather(90.0F, 250.0F);
    EXPECT_EQ(step().Speed, 199.5F);
    EXPECT_EQ(m_model.GetWind().Dir, 80.0F);
    EXPECT_EQ(debugLines,
              QStringList{QStringLiteral("(DWC - WindAtAC) - Wind Speed Error: 81/200.5kt")});
}

TEST_F(ModelDirectWindControlTest, ACalmTargetIsSteeredToWithoutAGust)
{
    reach(200.0F, 2.0F);
    m_settings.setGustySurfaceWind(true);
    setWeather(200.0F, 0.0F);
    for (const char* const job : {"200:1", "200:0", "200:0"}) {
        step();
        EXPECT_EQ(m_model.jobName(), QLatin1String(job));
    }
}

TEST_F(ModelDirectWindControlTest, AfterAGapAStepStartsFromTheWindAtTheAircraft)
{
    setWeather(300.0F, 100.0F);
    flyAt(50.0, {250.0F, 30.0F, -1.0F, 0.0F});
    step();
    EXPECT_EQ(m_model.jobName(), QStringLiteral("251:31")) << "the first step";
    flyAt(50.8, {90.0F, 5.0F, -1.0F, 0.0F});
    step();
    EXPECT_EQ(m_model.jobName(), QStringLiteral("252:32")) << "48 NM farther";
    step(60000);
    EXPECT_EQ(m_model.jobName(), QStringLiteral("253:33"));
    flyAt(51.7, {110.0F, 20.0F, -1.0F, 0.0F});
    step();
    EXPECT_EQ(m_model.jobName(), QStringLiteral("109:21")) << "54 NM farther";
    step(60001);
    EXPECT_EQ(m_model.jobName(), QStringLiteral("109:21")) << "after more than a minute";
    flyAt(51.7, {360.0F, 230.0F, -1.0F, 0.0F});
    m_model.startAnew();
    step();
    EXPECT_EQ(m_model.jobName(), QStringLiteral("359:199"));
    flyAt(51.7, {0.0F, -1.0F, -1.0F, 0.0F});
    m_model.startAnew();
    step();
    EXPECT_EQ(m_model.jobName(), QStringLiteral("358:198")) << "no wind is reported";
}

TEST_F(ModelDirectWindControlTest, WithoutLevelsTheTargetStays)
{
    reach(80.0F, 30.0F);
    m_model.SetWeather(Metar(), Synop(), aviation::weather::Grib());
    step();
    EXPECT_EQ(m_model.windTarget().Speed, 30.0F);
}

TEST_F(ModelDirectWindControlTest, TheSynopStandsInForAnOldMetar)
{
    for (const auto& [timeGroup, hour, direction] : {std::tuple{L"010959", 12, 100.0F},
                                                     {L"010959", 13, 200.0F},
                                                     {L"301259", 12, 200.0F},
                                                     {L"010000", 2, 100.0F}})
    {
        const FakeClock clock(2019, 7, 1, hour, 59);
        m_model.setReports(metarOf(timeGroup, {100.0F, 9.0F, 0.0F, 0.0F}, 0),
                           synopOf(L"0112", {200.0F, 19.0F, 0.0F, 0.0F}),
                           {levelAt(9000, 0.0F, 0.0F)});
        m_model.Step();
        EXPECT_EQ(m_model.windTarget().Dir, direction) << hour;
    }
}

TEST_F(ModelDirectWindControlTest, ASynopFromFarAwayDoesntStandInForAnOldMetar)
{
    for (const auto& [synopLatitude, direction] : {std::pair{50.8, 200.0F}, {50.9, 100.0F}}) {
        Metar metar = metarOf(L"010559", {100.0F, 9.0F, 0.0F, 0.0F}, 0);
        metar.setPosition({50.0, 8.0});
        Synop synop = synopOf(L"0112", {200.0F, 19.0F, 0.0F, 0.0F});
        synop.setPosition({synopLatitude, 8.0});
        m_model.setReports(metar, synop, {levelAt(9000, 0.0F, 0.0F)});
        m_model.Step();
        EXPECT_EQ(m_model.windTarget().Dir, direction) << synopLatitude;
    }
}

TEST_F(ModelDirectWindControlTest, GustsArePartOfTheTarget)
{
    m_settings.setGustySurfaceWind(true);
    m_random.setNumbers({250, 1999, 0, 0});
    setWeather(359.0F, 20.0F);
    m_settings.setDwcDegreesPerSecond(360);
    m_settings.setDwcKnotsPerSecond(20);
    EXPECT_FLOAT_EQ(step().Dir, 8.995F); // 19.99 / 2 degrees to the right
    EXPECT_EQ(step().Speed, 21.25F);
    EXPECT_EQ(m_model.gustInForce().Speed, 1.25F);
    m_settings.setGustySurfaceWind(false);
    EXPECT_EQ(step().Dir, 359.0F);
}

/// With gusts or without, and degrees and knots a second. Up through 3,000 ft to cruise and back,
/// through winds that turn through north.
class FlightTest : public ModelFixture, public ::testing::WithParamInterface<std::tuple<bool, int>>
{
protected:
    /// One second; `out` is the wind before and after it.
    void fly(int height, Wind& out)
    {
        setAircraft(400 + height, height, 2.0F);
        const Wind before = std::exchange(out, step());
        const Wind& gust = m_model.gustInForce();
        const double aim =
            aviation::Normalize360(static_cast<double>(m_model.windTarget().Dir + gust.Dir));
        const double limit = std::get<1>(GetParam());
        EXPECT_NEAR(turn(static_cast<double>(out.Dir), before),
                    std::clamp(turn(aim, before), -limit, limit), 1e-3);
        EXPECT_NEAR(static_cast<double>(out.Speed), static_cast<double>(before.Speed),
                    limit + 1e-3);
        // What was drawn near the ground is in force for three seconds more.
        EXPECT_TRUE(gust.Speed == 0.0F || height <= 3000 + 4 * 20) << height;
        m_gusts += gust.Speed != 0.0F ? 1 : 0;
    }

    static double turn(double direction, const Wind& from)
    {
        return aviation::AngleDifference(direction, static_cast<double>(from.Dir));
    }

    int m_gusts = 0; ///< seconds with a gust
};

TEST_P(FlightTest, KeepsTheLimitsAndNeverTurnsTheLongWay)
{
    const auto& [gusty, rate] = GetParam();
    m_settings.setGustySurfaceWind(gusty);
    m_settings.setDwcDegreesPerSecond(rate);
    m_settings.setDwcKnotsPerSecond(rate);
    m_model.setReports(metarOf(L"011220", {290.0F, 12.0F, 0.0F, 0.0F}, 400), Synop(),
                       {levelAt(1000, 300.0F, 20.0F), levelAt(6000, 350.0F, 30.0F),
                        levelAt(12000, 40.0F, 55.0F), levelAt(30000, 60.0F, 90.0F)});
    Wind out = m_model.GetWind();
    for (int second = 0; second < 1600 && !HasFailure(); ++second) {
        fly(std::max(std::min({second * 20, 14000, (1500 - second) * 20}), 0), out);
    }
    EXPECT_EQ(m_gusts > 200, gusty) << m_gusts;
    EXPECT_NEAR(static_cast<double>(out.Speed), 12.0, gusty ? 4.0 : 1.0);
    EXPECT_NEAR(static_cast<double>(out.Dir), 292.0, gusty ? 7.0 : 0.1);
}

INSTANTIATE_TEST_SUITE_P(Rows, FlightTest,
                         ::testing::Combine(::testing::Bool(), ::testing::Values(1, 3)));

constexpr int kFar = std::numeric_limits<int>::max();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// Every odd value as a direction with every odd value as a speed, in no order.
std::vector<GribLevel> hostileLevels()
{
    constexpr float kHuge = std::numeric_limits<float>::max();
    constexpr float kOdd[] = {kNan,   -kHuge, kHuge,  std::numeric_limits<float>::infinity(),
                              -1.0F,  360.0F, 725.0F, 0.0F,
                              200.1F, 1e-30F};
    std::vector<GribLevel> levels{levelAt(kFar, 10.0F, 10.0F), levelAt(-kFar, 10.0F, 10.0F)};
    levels.resize(502);
    for (int i = 2; i < 502; ++i) {
        levels[static_cast<std::size_t>(i)] =
            levelAt((i * 7919) % 60000 - 1000, kOdd[i % 10], kOdd[(i / 10) % 10]);
    }
    return levels;
}

class HostileWeatherTest : public ModelFixture, public ::testing::WithParamInterface<int>
{};

TEST_P(HostileWeatherTest, NeverLeavesTheRange)
{
    m_settings.setGustySurfaceWind(true);
    m_settings.setDwcDegreesPerSecond(GetParam());
    m_settings.setDwcKnotsPerSecond(GetParam());
    m_model.setReports(metarOf(L"011220", {kNan, 1e38F, kNan, kNan}, kFar), Synop(),
                       hostileLevels());
    for (int i = 0; i < 600 && !HasFailure(); ++i) {
        setAircraft(i < 4 ? kFar - i : i * 97 - 2000, i, i % 2 == 0 ? kNan : -400.0F);
        const Wind out = step(i * 10);
        EXPECT_TRUE(out.Dir >= 0.0F && out.Dir < 360.0F) << out.Dir;
        EXPECT_TRUE(out.Speed >= 0.0F && out.Speed <= 200.0F) << out.Speed;
        m_model.StepXPlane();
        EXPECT_EQ(m_model.GetXPlaneLayers().size(), 3U);
    }
}

INSTANTIATE_TEST_SUITE_P(Rates, HostileWeatherTest, ::testing::Values(1, -5, kFar));

} // namespace

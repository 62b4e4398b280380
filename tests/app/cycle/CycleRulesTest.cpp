#include "app/cycle/CycleRules.h"

#include "tests/support/Text.h"

#include <gtest/gtest.h>

#include <limits>

using aviation::Position;
namespace {

TEST(CycleRulesTest, CountersStartAtNeverAndStopAtTheLargestNumber)
{
    constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(cycle::addElapsed(cycle::kNever, 0), cycle::kNever);
    EXPECT_EQ(cycle::addElapsed(cycle::kNever, 1000), 999);
    EXPECT_EQ(cycle::addElapsed(5, -3), 5);
    EXPECT_EQ(cycle::addElapsed(kLargest - 1, 5'000'000'000), kLargest);
}

TEST(CycleRulesTest, PollingIsFastNearTheGroundAndMoving)
{
    constexpr int kMin = 200;
    constexpr int kMax = 1000;
    const std::tuple<int, int, int, int> rows[] = {
        {199, 21, kMax, kMin}, {199, 20, kMax, kMax},   {200, 21, kMax, kMax},
        {199, 21, kMin, kMin}, {200, 20, kMin, kMin},   {200, 20, kMax, kMax},
        {201, 50, kMin, kMax}, {100, 19, kMin, kMax},   {100, 20, kMin, kMin},
        {-5, 30, kMax, kMin},  {5000, 250, kMax, kMax},
    };
    for (const auto& [height, speed, current, expected] : rows) {
        EXPECT_EQ(cycle::pollInterval(height, speed, current, kMin, kMax), expected)
            << height << " ft " << speed << " kt " << current;
    }
}

TEST(CycleRulesTest, AnUpdateIsDueByTimeByDistanceAndAtFirst)
{
    const std::tuple<std::int32_t, double, int, bool> rows[] = {
        {cycle::kNever, 0.0, 100, true}, {0, 0.0, 100, false},  {600999, 0.0, 100, false},
        {601000, 0.0, 100, true},        {0, 50.0, 100, false}, {0, 50.01, 100, true},
        {0, 50.0, 101, false},           {0, 50.2, 101, true},
    };
    for (const auto& [since, distance, range, due] : rows) {
        EXPECT_EQ(cycle::updateDue(since, 600, distance, range), due) << since << ' ' << distance;
    }
    EXPECT_EQ(cycle::distanceFromLastUpdate(Position(50, 8), Position()), 0.0);
    EXPECT_NEAR(cycle::distanceFromLastUpdate(Position(50, 8), Position(51, 8)), 60.1, 0.1);
}

TEST(CycleRulesTest, RemainingValuesAreCutOffAndMayBeNegative)
{
    const cycle::Remaining left = cycle::untilUpdate(1999, 600, 10.4, 101);
    EXPECT_EQ(left.seconds, 599);
    EXPECT_EQ(left.distanceNm, 39);
    EXPECT_EQ(cycle::untilUpdate(700000, 600, 60.9, 100).seconds, -100);
    EXPECT_EQ(cycle::untilUpdate(700000, 600, 60.9, 100).distanceNm, -10);
    EXPECT_EQ(cycle::untilDownload(cycle::kNever), 900);
    EXPECT_EQ(cycle::untilDownload(899999), 1);
    EXPECT_EQ(cycle::untilDownload(1800000), -900);
}

TEST(CycleRulesTest, EachConnectionHasItsPrepareJob)
{
    const QString theme = "/theme"_q;
    const QString icao = "KDEN"_q;
    const std::tuple<int, int, int, int, QString> rows[] = {
        {2, 3, 1, 11, theme},     {3, 10, 1, 11, theme},    {2, 3, 0, 5, icao},
        {3, 4, 2, 5, icao},       {1, 2, 1, 2, icao},       {1, 2, 0, 2, icao},
        {4, 8, 0, 8, QString()},  {4, 9, 2, 8, QString()},  {6, 0, 0, 8, QString()},
        {7, 13, 0, 8, QString()}, {4, 13, 0, 9, QString()}, {8, 8, 0, 9, QString()},
        {4, 8, 1, 10, QString()}, {7, 9, 1, 10, QString()}, {4, 13, 1, 10, QString()},
        {4, 3, 0, 0, QString()},  {4, 7, 1, 0, QString()},  {5, 8, 0, 0, QString()},
    };
    for (const auto& [type, fsId, mode, id, name] : rows) {
        const cycle::PrepareJob job = cycle::prepareJobFor({type, fsId}, mode, {icao, theme});
        EXPECT_EQ(job.id, id) << type << ' ' << fsId << ' ' << mode;
        EXPECT_EQ(job.name, name);
        EXPECT_EQ(job.wrongMode, type == 1 && mode == 1);
    }
    EXPECT_EQ(cycle::themeFile(4, "/tmp/"_q, "/sim"_q), "/tmp/cirrilon"_q);
    EXPECT_EQ(cycle::themeFile(3, "/tmp/"_q, "/sim"_q), "/sim/Weather/themes/cirrilon"_q);
}

TEST(CycleRulesTest, VisibilityGrowsWithHeightUpToTheLimit)
{
    const std::tuple<float, int, int, int> rows[] = {
        {5000.7F, 99, 100, 5000},     {5000.7F, 100, 100, 5200},
        {5000.0F, 10000, 100, 25000}, {90000.0F, 9000, 100, 100000},
        {90000.0F, 50, 10, 90000},    {90000.0F, 100, 10, 10000},
        {800.0F, -30, 100, 800},      {800.0F, 2147483647, 2147483647, 2147483647},
    };
    for (const auto& [surface, height, maximumKm, expected] : rows) {
        EXPECT_EQ(cycle::visibilityAt(surface, height, maximumKm), expected)
            << surface << " m, " << height << " ft";
    }
    for (const auto& [type, fsId, steps] :
         {std::tuple(4, 8, true), std::tuple(4, 9, true), std::tuple(6, 0, true),
          std::tuple(7, 0, true), std::tuple(4, 13, false), std::tuple(8, 8, false),
          std::tuple(2, 8, false)})
    {
        EXPECT_EQ(cycle::hasVisibilitySteps({type, fsId}), steps) << type << ' ' << fsId;
    }
}

TEST(CycleRulesTest, TheWaitForTheNextConnectDoublesToALimit)
{
    EXPECT_EQ(cycle::nextReconnectDelay(80000), 160000);
    EXPECT_EQ(cycle::nextReconnectDelay(160000), 160000);
}

} // namespace

#include "dwc/TargetWind.h"

#include "tests/dwc/DwcTesting.h"

#include <gtest/gtest.h>

using namespace dwctesting;
using aviation::weather::GribLevel;

namespace {

struct TargetCase
{
    const char* name;
    std::vector<GribLevel> levels;
    int altitude;
    float direction;
    float speed;
};

class TargetWindTest : public ::testing::TestWithParam<TargetCase>
{};

/// Around 340 degrees at 6 knots on 200 feet, with a variation of 5 degrees.
TEST_P(TargetWindTest, IsTheRealWindAtTheAltitude)
{
    const TargetCase& row = GetParam();
    const GribLevel ground =
        targetwind::groundLevel(metarOf(L"011220", {340.0F, 6.0F, 0.0F, 0.0F}, 200), 5.0F);
    const GribLevel level = targetwind::levelAt(row.levels, ground, row.altitude);
    EXPECT_FLOAT_EQ(level.wind.Dir, row.direction);
    EXPECT_FLOAT_EQ(level.wind.Speed, row.speed);
    EXPECT_EQ(level.wind.Gust, -1.0F);
}

const std::vector<GribLevel> kThree{levelAt(1000, 350.0F, 10.0F), levelAt(3000, 10.0F, 30.0F),
                                    levelAt(5000, 40.0F, 40.0F)};
const std::vector<GribLevel> kOne{levelAt(3000, 10.0F, 30.0F)};
const std::vector<GribLevel> kTwins{levelAt(1000, 350.0F, 10.0F), levelAt(1000, 90.0F, 50.0F)};

INSTANTIATE_TEST_SUITE_P(
    Rows, TargetWindTest,
    ::testing::Values(
        TargetCase{"BelowTheGround", kThree, 100, 345.0F, 6.0F},
        TargetCase{"OnTheGround", kThree, 200, 345.0F, 6.0F},
        TargetCase{"BelowTheFirstLevel", kThree, 600, 347.5F, 8.0F},
        TargetCase{"OnALevel", kThree, 1000, 350.0F, 10.0F},
        TargetCase{"BeforeNorth", kThree, 1500, 355.0F, 15.0F},
        TargetCase{"AtNorth", kThree, 2000, 0.0F, 20.0F},
        TargetCase{"BehindNorth", kThree, 2500, 5.0F, 25.0F},
        TargetCase{"OnTheHighest", kThree, 5000, 40.0F, 40.0F},
        TargetCase{"AboveTheHighest", kThree, 41000, 40.0F, 40.0F},
        TargetCase{"BelowAnOnlyLevel", kOne, 1600, 357.5F, 18.0F},
        TargetCase{"AboveAnOnlyLevel", kOne, 3001, 10.0F, 30.0F},
        TargetCase{"OnOneOfTwins", kTwins, 1000, 350.0F, 10.0F},
        TargetCase{"AboveTwins", kTwins, 1001, 90.0F, 50.0F},
        TargetCase{"BelowALevelUnderTheGround", {levelAt(150, 90.0F, 9.0F)}, 100, 90.0F, 9.0F},
        TargetCase{"DirectionBeyondATurn", {levelAt(1000, 725.0F, 9.0F)}, 1000, 5.0F, 9.0F}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(LevelBetweenTest, TakesTemperatureAndDewPointAlong)
{
    GribLevel lower = levelAt(1000, 0.0F, 0.0F);
    GribLevel upper = levelAt(3000, 180.0F, 0.0F);
    lower.temperature = 10;
    lower.dewPoint = 5;
    upper.temperature = 6;
    upper.dewPoint = -5;
    const GribLevel level = targetwind::levelBetween(lower, upper, 1500);
    EXPECT_EQ(level.temperature, 9);
    EXPECT_EQ(level.dewPoint, 2); // 2.5, cut off
    EXPECT_EQ(level.wind.Dir, 45.0F);
}

} // namespace

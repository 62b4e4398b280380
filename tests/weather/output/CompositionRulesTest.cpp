#include "weather/output/CompositionRules.h"

#include "aviation/Units.h"
#include "tests/support/FakeRandom.h"

#include <gtest/gtest.h>

using aviation::Position;
using aviation::weather::GribLevel;

namespace {

GribLevel LevelOf(int altitude, float humidity)
{
    GribLevel level;
    level.altitude = altitude;
    level.humidity = humidity;
    return level;
}

TEST(CompositionRulesTest, knowsNoDistanceToAnUnknownPlace)
{
    const Position here(50.0, 8.5);
    EXPECT_EQ(composition::SpreadNm(here, Position()), aviation::kUnknownDistance);
    EXPECT_EQ(composition::SpreadNm(Position(), here), aviation::kUnknownDistance);
    EXPECT_EQ(composition::SpreadNm(here, here), 0.0);
    EXPECT_NEAR(composition::SpreadNm(here, Position(51.0, 8.5)), 60.1, 0.05);
}

TEST(CompositionRulesTest, drawsBaseThenCover)
{
    FakeRandom random({19999, 7, 20000, 8, 2147483647, 2147483647});
    EXPECT_EQ(composition::DrawCirrus(random).baseFeet, 52999);
    const composition::RandomCirrus second = composition::DrawCirrus(random);
    EXPECT_EQ(second.baseFeet, 33000);
    EXPECT_EQ(second.cover, 0);
    const composition::RandomCirrus last = composition::DrawCirrus(random);
    EXPECT_EQ(last.baseFeet, 33000 + 2147483647 % 20000);
    EXPECT_EQ(last.cover, 7);
}

TEST(CompositionRulesTest, findsTheTopWhereTheAirDries)
{
    struct Row
    {
        const char* what;
        std::vector<GribLevel> levels;
        double base;
        double top; ///< -1 for none
    };
    const Row rows[] = {
        {"no levels", {}, 1000, -1},
        {"never inside", {LevelOf(2000, 95), LevelOf(3000, 95)}, 1000, -1},
        {"dry at the base", {LevelOf(500, 90), LevelOf(2000, 99)}, 1000, -1},
        {"ends at dry air", {LevelOf(500, 95), LevelOf(2000, 95), LevelOf(3000, 90)}, 1000, 2000},
        {"goes to the last", {LevelOf(500, 95), LevelOf(2000, 95), LevelOf(3000, 91)}, 1000, 3000},
        {"a base at the level is in it", {LevelOf(1000, 95), LevelOf(2000, 95)}, 1000, 2000},
        {"a rise of ten isn't followed",
         {LevelOf(500, 91), LevelOf(2000, 101), LevelOf(3000, 100.5F)},
         1000,
         3000},
        {"nor is dry air above it",
         {LevelOf(500, 91), LevelOf(2000, 92), LevelOf(3000, 60), LevelOf(4000, 99)},
         1000,
         2000},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(composition::TopFromHumidity(row.levels, row.base, 1.0, 80.0).value_or(-1.0),
                  row.top);
    }
    const std::vector<GribLevel> levels{LevelOf(0, 95), LevelOf(82021, 95)};
    EXPECT_EQ(composition::TopFromHumidity(levels, 100, aviation::kFeetPerMetre, 80.0), 25000.0);
}

TEST(CompositionRulesTest, looksUpTheLevelAtAnAltitude)
{
    const std::vector<GribLevel> levels{LevelOf(3000, 1), LevelOf(9000, 2), LevelOf(9000, 3)};
    EXPECT_EQ(composition::LevelAt(levels, 2999).humidity, 1.0F);
    EXPECT_EQ(composition::LevelAt(levels, 8999).humidity, 1.0F);
    EXPECT_EQ(composition::LevelAt(levels, 9000).humidity, 3.0F);
    EXPECT_EQ(composition::LevelAt({}, 9000).temperature, -99);
}

} // namespace

#include "weather/output/CompositionRules.h"

#include "aviation/Units.h"

#include <gtest/gtest.h>

using aviation::weather::GribLevel;

namespace {

GribLevel LevelOf(int altitude, float humidity)
{
    GribLevel level;
    level.altitude = altitude;
    level.humidity = humidity;
    return level;
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

} // namespace

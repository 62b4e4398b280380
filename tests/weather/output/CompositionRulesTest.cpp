#include "weather/output/CompositionRules.h"

#include "aviation/Units.h"

#include <gtest/gtest.h>

using aviation::weather::GribLevel;

namespace {

std::vector<GribLevel> levelsOf(const std::vector<std::pair<int, float>>& air)
{
    std::vector<GribLevel> levels;
    for (const auto& [altitude, humidity] : air) {
        GribLevel& level = levels.emplace_back();
        level.altitude = altitude;
        level.humidity = humidity;
    }
    return levels;
}

TEST(CompositionRulesTest, FindsTheTopWhereTheAirDries)
{
    struct Row
    {
        const char* what;
        std::vector<std::pair<int, float>> air; ///< height and humidity
        double top;                             ///< -1 for none
    };
    const Row rows[] = {
        {"never inside", {{2000, 95}, {3000, 95}}, -1},
        {"dry at the base", {{500, 90}, {2000, 99}}, -1},
        {"ends at dry air", {{500, 95}, {2000, 95}, {3000, 90}}, 2000},
        {"goes to the last", {{500, 95}, {2000, 95}, {3000, 91}}, 3000},
        {"a base at the level is in it", {{1000, 95}, {2000, 95}}, 2000},
        {"a rise of ten isn't followed", {{500, 91}, {2000, 101}, {3000, 100.5F}}, 3000},
        {"nor is dry air above it", {{500, 91}, {2000, 92}, {3000, 60}, {4000, 99}}, 2000},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(composition::topFromHumidity(levelsOf(row.air), 1000, 1.0, 80.0).value_or(-1.0),
                  row.top)
            << row.what;
    }
    const std::vector<GribLevel> high = levelsOf({{0, 95}, {82021, 95}});
    EXPECT_EQ(composition::topFromHumidity(high, 100, aviation::kFeetPerMetre, 80.0), 25000.0);
}

} // namespace

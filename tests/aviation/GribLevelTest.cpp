#include "aviation/GribLevel.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

TEST(GribLevelTest, RelativeHumidity)
{
    const struct
    {
        int temperature;
        int dewPoint;
        double percent;
    } rows[] = {{20, 20, 100.0000},  {20, 10, 52.5168}, {0, 0, 100.0000}, {0, -1, 92.9595},
                {-20, -30, 40.4213}, {25, -5, 13.3029}, {-1, 0, 107.5737}};
    for (const auto& row : rows) {
        EXPECT_NEAR(RelativeHumidity(row.temperature, row.dewPoint), row.percent, 1e-3)
            << row.temperature << " " << row.dewPoint;
    }
}

TEST(GribLevelTest, HumidityIsComputedUnlessEverythingIsUnknown)
{
    const Wind wind{270.0F, 45.0F, -1.0F, 0.0F};
    const GribLevel level = MakeGribLevel(9843, wind, 20, 10, 700.0F, kUnknownHumidity);
    EXPECT_EQ(level.altitude, 9843);
    EXPECT_EQ(level.humidity, static_cast<float>(RelativeHumidity(20, 10)));
    EXPECT_EQ(MakeGribLevel(0, wind, -99, -99, 700.0F, kUnknownHumidity).humidity, -1.0F);
    EXPECT_EQ(MakeGribLevel(0, wind, -99, -99, 700.0F).humidity, 100.0F);
}

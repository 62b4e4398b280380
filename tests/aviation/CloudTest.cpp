#include "aviation/Cloud.h"

#include "aviation/Metar.h"
#include "aviation/Wind.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

namespace {

TEST(Cloud, RefusesMoreThanEightOctas)
{
    Cloud cloud;
    EXPECT_TRUE(cloud.setCoverage(8));
    EXPECT_FALSE(cloud.setCoverage(9));
    EXPECT_FALSE(cloud.setCoverage(264)) << "8 in the low byte";
    EXPECT_FALSE(cloud.setCoverage(-1));
    EXPECT_EQ(cloud.coverage, 8);
    EXPECT_TRUE(cloud.setCoverage(0));
}

TEST(Cloud, PrintsAsMetarGroup)
{
    struct Row
    {
        Cloud cloud;
        const char* group;
    };
    const Row rows[] = {
        {{0, 1, 3000, -1, 0}, "FEW030"},    {{0, 2, 99, -1, 0}, "FEW000"},
        {{0, 3, 12000, -1, 0}, "SCT120"},   {{0, 4, 100000, -1, 0}, "SCT1000"},
        {{10, 5, 2550, -1, 0}, "BKN025CB"}, {{11, 7, 3000, -1, 0}, "BKN030TCU"},
        {{1, 8, 25000, -1, 0}, "OVC250CI"}, {{0, 0, 500, -1, 0}, "005"},
        {{9, 2, 500, -1, 0}, "FEW005"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(MetarGroup(row.cloud), row.group);
    }
}

TEST(Wind, PrintsWithAPoint)
{
    EXPECT_EQ(WindText({240.0F, 15.5F, 28.255F, 9.0F}), "Dir=240.00:Speed=15.50:Gust=28.25");
    EXPECT_EQ(WindText({}), "Dir=0.00:Speed=0.00:Gust=0.00");
}

TEST(WeatherBase, MessagesAreReplacedOrAppended)
{
    Metar metar;
    metar.SetMessage(L"first", 2);
    metar.SetMessage(L"second", 3, true);
    EXPECT_EQ(metar.GetMessage(), L"first\nsecond");
    EXPECT_EQ(metar.messageLevel(), 3U);
    metar.SetMessage(L"third", 1);
    EXPECT_EQ(metar.GetMessage(), L"third");
}

TEST(WeatherBase, IsOutdatedAboveTheLimitOnly)
{
    Metar metar;
    metar.setTime(1000);
    EXPECT_TRUE(metar.CheckAge(1101, 100));
    EXPECT_TRUE(metar.isOutdated());
    EXPECT_FALSE(metar.CheckAge(1100, 100));
    EXPECT_FALSE(metar.isOutdated());
}

} // namespace

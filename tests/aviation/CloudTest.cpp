#include "aviation/Cloud.h"

#include "aviation/Metar.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

namespace {

TEST(CloudTest, RefusesMoreThanEightOctas)
{
    Cloud cloud;
    EXPECT_TRUE(cloud.setCoverage(8));
    for (const int octas : {9, 264, -1}) { // 264: 8 in the low byte
        EXPECT_FALSE(cloud.setCoverage(octas));
        EXPECT_EQ(cloud.coverage, 8) << octas;
    }
}

TEST(CloudTest, PrintsAsMetarGroup)
{
    const std::pair<Cloud, const char*> rows[] = {
        {{0, 2, 99, -1, 0}, "FEW000"},      {{0, 4, 100000, -1, 0}, "SCT1000"},
        {{10, 5, 2550, -1, 0}, "BKN025CB"}, {{11, 7, 3000, -1, 0}, "BKN030TCU"},
        {{1, 8, 25000, -1, 0}, "OVC250CI"}, {{0, 0, 500, -1, 0}, "005"},
        {{9, 2, 500, -1, 0}, "FEW005"}};
    for (const auto& [cloud, group] : rows) {
        EXPECT_EQ(metarGroup(cloud), group);
    }
}

TEST(WeatherBaseTest, MessagesAreReplacedOrAppended)
{
    Metar metar;
    metar.SetMessage(L"first", 2);
    metar.SetMessage(L"second", 3, true);
    EXPECT_EQ(metar.GetMessage(), L"first\nsecond");
    metar.SetMessage(L"third", 1);
    EXPECT_EQ(metar.GetMessage(), L"third");
    EXPECT_EQ(metar.messageLevel(), 1U);
}

} // namespace

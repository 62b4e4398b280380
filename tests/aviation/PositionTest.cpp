#include "aviation/Position.h"

#include "aviation/Angles.h"
#include "aviation/Units.h"

#include <gtest/gtest.h>

#include <limits>

using namespace aviation;

namespace {

const Position kFrankfurt(50.026421, 8.543125);
const Position kNewYork(40.639751, -73.778925);

TEST(PositionTest, DistanceUsesTheEarthsEquatorialRadius)
{
    EXPECT_NEAR(GreatCircleNm({0.0, 10.0}, {0.0, 11.0}), 60.1077, 0.0001);
    EXPECT_NEAR(kFrankfurt.DistanceTo(kNewYork), 3344.982, 0.001);
    EXPECT_DOUBLE_EQ(kFrankfurt.DistanceTo(kNewYork, DistanceUnit::Kilometres),
                     kFrankfurt.DistanceTo(kNewYork) * 1.852);
}

TEST(PositionTest, UnknownIsFarFromEverythingInBothUnits)
{
    const Position unknown;
    EXPECT_EQ(unknown.DistanceTo(unknown), 99999.0);
    EXPECT_EQ(unknown.DistanceTo(kFrankfurt, DistanceUnit::Kilometres), 99999.0);
    EXPECT_LT(kFrankfurt.DistanceTo(unknown), 4000.0) << "only the object itself is asked";
}

TEST(PositionTest, EqualAndNearlyEqualPointsAreAtNoDistance)
{
    EXPECT_EQ(kFrankfurt.DistanceTo(kFrankfurt), 0.0);
    int zeros = 0;
    for (int step = 1; step < 2000; ++step) { // somewhere the cosine rounds above 1
        const double distance = DistanceNm(step * 0.045, 8.0, step * 0.045 + 1e-10, 8.0);
        ASSERT_GE(distance, 0.0);
        ASSERT_LT(distance, 0.001);
        zeros += distance == 0.0 ? 1 : 0;
    }
    EXPECT_GT(zeros, 0);
}

TEST(PositionTest, BearingIsTheInitialTrueCourse)
{
    EXPECT_NEAR(BearingDeg(1.0, 10.0, 0.0, 10.0), 180.0, 1e-9);
    EXPECT_NEAR(BearingDeg(0.0, 10.0, 0.0, 9.0), 270.0, 1e-9);
    EXPECT_NEAR(BearingDeg(0.0, 179.5, 0.0, -179.5), 90.0, 1e-9);
    EXPECT_NEAR(BearingTo(kFrankfurt, kNewYork), 294.374, 0.001);
    EXPECT_EQ(BearingTo(kFrankfurt, kFrankfurt), 0.0);
}

TEST(PositionTest, MoveByAndDistanceAgree)
{
    for (const double bearing : {0.0, 45.0, 133.0, 271.0}) {
        Position moved = kFrankfurt;
        moved.MoveBy(bearing, 250.0);
        EXPECT_NEAR(BearingTo(kFrankfurt, moved), bearing, 0.01);
        EXPECT_NEAR(GreatCircleNm(kFrankfurt, moved), 250.0, 0.5) << "the radii differ a little";
    }
}

TEST(AnglesTest, FoldIntoTheCircleAndTakeTheShorterWay)
{
    EXPECT_EQ(Normalize360(-720.5), 359.5);
    EXPECT_EQ(Normalize360(360.0), 0.0);
    EXPECT_EQ(Normalize360(std::numeric_limits<double>::infinity()), 0.0);
    const double far = Normalize360(-1e18);
    EXPECT_TRUE(far >= 0.0 && far < 360.0);
    EXPECT_EQ(AngleDifference(10, 350), 20);
    EXPECT_EQ(AngleDifference(190, 10), 180);
    EXPECT_EQ(AngleDifference(10, 190), -180);
    EXPECT_EQ(AngleDifference(195, 10), -175);
}

TEST(UnitsTest, MilesAreHundredthsRoundedUpAndNeverWrap)
{
    EXPECT_EQ(MetresToHundredthsOfMile(9999), 622);
    EXPECT_EQ(MetresToHundredthsOfMile(1e300), 65535);
    EXPECT_EQ(MetresToHundredthsOfMile(-5), 0);
}

} // namespace

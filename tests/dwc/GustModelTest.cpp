#include "dwc/GustModel.h"

#include "tests/support/FakeClock.h"
#include "tests/support/FakeRandom.h"

#include <gtest/gtest.h>

#include <limits>

using aviation::weather::Wind;

namespace {

void expectWind(const Wind& actual, const Wind& expected)
{
    EXPECT_FLOAT_EQ(actual.Dir, expected.Dir);
    EXPECT_FLOAT_EQ(actual.Speed, expected.Speed);
    EXPECT_FLOAT_EQ(actual.Gust, expected.Gust);
}

struct GustCase
{
    const char* name;
    float speed; ///< of a wind from 240 degrees
    float gust;
    int heightAgl;
    std::vector<std::int32_t> random;
    Wind drawn; ///< and the model's own afterwards
};

class GustDrawTest : public ::testing::TestWithParam<GustCase>
{};

TEST_P(GustDrawTest, FollowsTheRandomNumbers)
{
    const GustCase& row = GetParam();
    const FakeClock clock(2019, 7, 1, 12);
    FakeRandom random(row.random);
    GustModel model(random);
    expectWind(model.draw({240.0F, row.speed, row.gust, 0.0F}, row.heightAgl), row.drawn);
    expectWind(model.windGust(), row.drawn);
}

constexpr float kInfinite = std::numeric_limits<float>::infinity();
constexpr Wind kNone{0.0F, 0.0F, -1.0F, 0.0F};
constexpr Wind kTwenty{240.0F, 20.0F, -1.0F, 0.0F};

INSTANTIATE_TEST_SUITE_P(
    Rows, GustDrawTest,
    ::testing::Values(
        // 123456 modulo 500 is 456, 654321 modulo 2000 is 321: 4.56 knots up, 3.21 degrees left.
        GustCase{"UpAndLeft", 20, -1, 0, {123456, 654321}, {-1.605F, 2.28F, -1.0F, 0.0F}},
        GustCase{"DownAndRight", 20, -1, 3000, {249, 1000}, {5.0F, -1.245F, -1.0F, 0.0F}},
        GustCase{"SpreadOfTheReport", 20, 32, 0, {123456, 654321}, {-1.605F, 5.28F, 32.0F, 0.0F}},
        GustCase{"SmoothAloft", 20, -1, 3001, {123456}, kNone},
        GustCase{"NothingToChooseFrom", 0.03F, -1, 0, {5}, kNone},
        GustCase{"GustIsTheSpeed", 20, 20, 0, {5}, kNone},
        // Modulo of a negative number: 77 hundredths of -25 leave 2, those of -100 leave 77.
        GustCase{"NoWindReported", -1, -1, 0, {77}, {0.385F, 0.01F, -1.0F, 0.0F}},
        GustCase{"Infinite", kInfinite, -1, 0, {5}, kNone}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(GustModelTest, ACalmHasNoGustNorThatOfTheWindBefore)
{
    FakeClock clock(2019, 7, 1, 12);
    FakeRandom random({249, 1000});
    GustModel model(random);
    const Wind calm{240.0F, 0.0F, -1.0F, 0.0F};
    expectWind(model.update(calm, 0, true), kNone);
    expectWind(model.windGust(), {});
    clock.advance(std::chrono::seconds(4));
    expectWind(model.update(kTwenty, 0, true), {5.0F, -1.245F, -1.0F, 0.0F});
    expectWind(model.update(calm, 0, true), kNone);
    expectWind(model.inForce(), kNone);
}

TEST(GustModelTest, DrawsEveryThreeSecondsAndTakesItOverEveryFour)
{
    FakeClock clock(2019, 7, 1, 12);
    FakeRandom random({100, 1100, 200, 1200, 300, 1300});
    GustModel model(random);
    std::vector<float> inForce;
    std::vector<float> kept;
    for (int second = 0; second < 9; ++second) {
        inForce.push_back(model.update(kTwenty, 0, true).Dir);
        model.draw(kTwenty, 0);
        kept.push_back(model.windGust().Dir);
        clock.advance(std::chrono::seconds(1));
    }
    EXPECT_EQ(kept, (std::vector{5.5F, 5.5F, 5.5F, 6.0F, 6.0F, 6.0F, 6.5F, 6.5F, 6.5F}));
    EXPECT_EQ(inForce, (std::vector{5.5F, 5.5F, 5.5F, 5.5F, 6.0F, 6.0F, 6.0F, 6.0F, 6.5F}));
    expectWind(model.update(kTwenty, 0, false), {});
    expectWind(model.inForce(), {});
}

} // namespace

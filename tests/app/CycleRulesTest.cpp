#include "app/CycleRules.h"

#include <gtest/gtest.h>

#include <limits>

using aviation::Position;
namespace {

TEST(CycleRulesTest, CountersStartAtNeverAndStopAtTheLargestNumber)
{
    constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(cycle::AddElapsed(cycle::kNever, 0), cycle::kNever);
    EXPECT_EQ(cycle::AddElapsed(cycle::kNever, 1000), 999);
    EXPECT_EQ(cycle::AddElapsed(5, -3), 5);
    EXPECT_EQ(cycle::AddElapsed(kLargest - 1, 5'000'000'000), kLargest);
}

TEST(CycleRulesTest, PollingIsFastNearTheGroundAndMoving)
{
    constexpr int kMin = 200;
    constexpr int kMax = 1000;
    const struct
    {
        int height, speed, current, expected;
    } rows[] = {
        {199, 21, kMax, kMin}, {199, 20, kMax, kMax},   {200, 21, kMax, kMax},
        {199, 21, kMin, kMin}, {200, 20, kMin, kMin},   {200, 20, kMax, kMax},
        {201, 50, kMin, kMax}, {100, 19, kMin, kMax},   {100, 20, kMin, kMin},
        {-5, 30, kMax, kMin},  {5000, 250, kMax, kMax},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(cycle::PollInterval(row.height, row.speed, row.current, kMin, kMax), row.expected)
            << row.height << " ft " << row.speed << " kt " << row.current;
    }
}

TEST(CycleRulesTest, AnUpdateIsDueByTimeByDistanceAndAtFirst)
{
    const struct
    {
        std::int32_t since;
        double distance;
        int range;
        bool due;
    } rows[] = {
        {cycle::kNever, 0.0, 100, true}, {0, 0.0, 100, false},  {600999, 0.0, 100, false},
        {601000, 0.0, 100, true},        {0, 50.0, 100, false}, {0, 50.01, 100, true},
        {0, 50.0, 101, false},           {0, 50.2, 101, true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(cycle::UpdateDue(row.since, 600, row.distance, row.range), row.due)
            << row.since << " ms " << row.distance << " NM";
    }
    EXPECT_EQ(cycle::DistanceFromLastUpdate(Position(50, 8), Position()), 0.0);
    EXPECT_NEAR(cycle::DistanceFromLastUpdate(Position(50, 8), Position(51, 8)), 60.1, 0.1);
}

TEST(CycleRulesTest, RemainingValuesAreCutOffAndMayBeNegative)
{
    const cycle::Remaining left = cycle::UntilUpdate(1999, 600, 10.4, 101);
    EXPECT_EQ(left.seconds, 599);
    EXPECT_EQ(left.distanceNm, 39);
    EXPECT_EQ(cycle::UntilUpdate(700000, 600, 60.9, 100).seconds, -100);
    EXPECT_EQ(cycle::UntilUpdate(700000, 600, 60.9, 100).distanceNm, -10);
    EXPECT_EQ(cycle::UntilDownload(cycle::kNever), 900);
    EXPECT_EQ(cycle::UntilDownload(899999), 1);
    EXPECT_EQ(cycle::UntilDownload(1800000), -900);
}

TEST(CycleRulesTest, EachConnectionHasItsPrepareJob)
{
    const cycle::PrepareNames names{QStringLiteral("KDEN"), QStringLiteral("/theme")};
    const struct
    {
        int interfaceType;
        int fsId;
        int mode;
        int job;
        const char* name;
    } rows[] = {
        {2, 3, 1, 11, "/theme"}, {3, 10, 1, 11, "/theme"}, {2, 3, 0, 5, "KDEN"},
        {3, 4, 2, 5, "KDEN"},    {1, 2, 1, 2, "KDEN"},     {1, 2, 0, 2, "KDEN"},
        {4, 8, 0, 8, ""},        {4, 9, 2, 8, ""},         {6, 0, 0, 8, ""},
        {7, 13, 0, 8, ""},       {4, 13, 0, 9, ""},        {8, 8, 0, 9, ""},
        {4, 8, 1, 10, ""},       {7, 9, 1, 10, ""},        {4, 13, 1, 10, ""},
        {8, 13, 1, 10, ""},      {4, 3, 0, 0, ""},         {4, 7, 1, 0, ""},
        {5, 8, 0, 0, ""},        {0, 13, 0, 0, ""},
    };
    for (const auto& row : rows) {
        const cycle::PrepareJob job =
            cycle::PrepareJobFor({row.interfaceType, row.fsId}, row.mode, names);
        EXPECT_EQ(job.id, row.job) << row.interfaceType << ' ' << row.fsId << ' ' << row.mode;
        EXPECT_EQ(job.name, QString::fromLatin1(row.name));
        EXPECT_EQ(job.wrongMode, row.interfaceType == 1 && row.mode == 1);
    }
    const QString tmp = QStringLiteral("/tmp/");
    const QString sim = QStringLiteral("/sim");
    EXPECT_EQ(cycle::ThemeFile(4, tmp, sim), QStringLiteral("/tmp/cirrilon"));
    EXPECT_EQ(cycle::ThemeFile(3, tmp, sim), QStringLiteral("/sim/Weather/themes/cirrilon"));
}

TEST(CycleRulesTest, VisibilityGrowsWithHeightUpToTheLimit)
{
    const struct
    {
        float surface;
        int height;
        int maximumKm;
        int expected;
    } rows[] = {
        {5000.7F, 99, 100, 5000},     {5000.7F, 100, 100, 5200},
        {5000.0F, 10000, 100, 25000}, {90000.0F, 9000, 100, 100000},
        {90000.0F, 50, 10, 90000},    {90000.0F, 100, 10, 10000},
        {800.0F, -30, 100, 800},      {800.0F, 2147483647, 2147483647, 2147483647},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(cycle::VisibilityAt(row.surface, row.height, row.maximumKm), row.expected)
            << row.surface << " m, " << row.height << " ft";
    }
    for (const auto& [type, fsId, steps] :
         {std::tuple(4, 8, true), std::tuple(4, 9, true), std::tuple(6, 0, true),
          std::tuple(7, 0, true), std::tuple(4, 13, false), std::tuple(8, 8, false),
          std::tuple(2, 8, false)})
    {
        EXPECT_EQ(cycle::HasVisibilitySteps({type, fsId}), steps) << type << ' ' << fsId;
    }
}

TEST(CycleRulesTest, SmallRows)
{
    EXPECT_EQ(cycle::NextSource(1), 2);
    EXPECT_EQ(cycle::NextSource(3), 1);
    int delay = 0;
    for (const int expected : {10000, 20000, 40000, 80000, 160000, 160000}) {
        delay = cycle::NextReconnectDelay(delay);
        EXPECT_EQ(delay, expected);
    }
    const std::pair<const char*, int> ports[] = {
        {"1", 1},     {"65535", 65535}, {"65536", 0}, {"0", 0},      {"", 0},         {"-1", 0},
        {" 5000", 0}, {"5000x", 0},     {"1e3", 0},   {"123456", 0}, {"127.0.0.1", 0}};
    for (const auto& [text, port] : ports) {
        EXPECT_EQ(cycle::PortFromText(QString::fromLatin1(text)), port) << text;
    }
    for (const int fsId : {6, 10, 12}) {
        EXPECT_NE(cycle::DwcObstacle(fsId), nullptr) << fsId;
    }
    EXPECT_EQ(cycle::DwcObstacle(8), nullptr);
}

} // namespace

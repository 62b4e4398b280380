#include "tests/cli/RunCliHere.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <TestPaths.h>
#include <string>
#include <vector>

namespace {

struct WindResult
{
    int status;
    std::vector<std::string> lines;
    std::string err;
};

WindResult runWind(const std::string& cases, const QStringList& options = {})
{
    const CliResult run = runCli(options + words("wind steps"), cases);
    WindResult result{run.status, {}, run.err};
    std::istringstream answers(run.out);
    for (std::string line; std::getline(answers, line);) {
        result.lines.push_back(line);
    }
    return result;
}

TEST(WindCommandTest, StepsFollowClockSettingsAndRandomNumbersOfTheCase)
{
    // A level below the aircraft holds: 10 degrees, 20 knots. 2.5 and 19.99 are drawn once a case.
    const std::string wind = R"("weather":{"levels":[{"altitude":-50,"dir":10,"speed":20}]})";
    const std::string gusty = R"({"start":1000,"random":[250,1999],"events":[{"after":0,)" + wind
                              + R"(,"steps":1,"every":500}]})";
    const std::string calm = R"({"start":1000,"settings":{"gusty":false,"knotsPerSecond":3},)"
                             R"("events":[{)"
                             + wind + R"(,"steps":1},{"settings":{},"steps":1,"every":2000}]})";
    const WindResult result = runWind(gusty + "\n" + calm + "\n" + gusty);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "") << "the debug stream belongs to the log";
    ASSERT_EQ(result.lines.size(), 3U);
    EXPECT_EQ(result.lines.at(0),
              R"({"steps":[{"at":1500,"out":{"dir":0.5,"speed":0.5,"gust":0},)"
              R"("target":{"dir":10,"speed":20,"gust":-1},)"
              R"("gust":{"dir":9.994999885559082,"speed":1.25,"gust":-1},)"
              R"("force":{"dir":9.994999885559082,"speed":1.25,"gust":-1},"job":"0.5:0.5"}]})");
    const QJsonArray steps = QJsonDocument::fromJson(QByteArray::fromStdString(result.lines.at(1)))
                                 .object()[QStringLiteral("steps")]
                                 .toArray();
    EXPECT_EQ(steps.at(0)[QStringLiteral("at")].toInt(), 3000);
    EXPECT_EQ(steps.at(0)[QStringLiteral("job")].toString(), QStringLiteral("1:3"));
    EXPECT_EQ(steps.at(1)[QStringLiteral("at")].toInt(), 6000);
    EXPECT_EQ(steps.at(1)[QStringLiteral("job")].toString(), QStringLiteral("4:6"))
        << "three seconds at the default rates";
    EXPECT_EQ(result.lines.at(2), result.lines.at(0)) << "each case starts fresh";
}

TEST(WindCommandTest, XPlaneStepsGiveLayersAndTheirText)
{
    const WindResult result = runWind(
        R"({"settings":{"gusty":false},"events":[{"xplaneSteps":1},{"weather":{"metar":{"dir":240,)"
        R"("speed":15,"elevation":328},"levels":[{"altitude":5000,"dir":100,"speed":20},)"
        R"({"altitude":10000,"dir":120,"speed":40}]},"aircraft":{"altitude":7500},"xplaneSteps":1}]})",
        {QStringLiteral("--now"), QStringLiteral("1970-01-01T01:00:00Z")});
    ASSERT_EQ(result.lines.size(), 1U);
    EXPECT_EQ(result.lines.at(0),
              R"({"steps":[{"at":3602000,"layers":[],"text":""},)"
              R"({"at":3604000,"layers":[[99.97561645507812,240,15,0,0,0,0,0,0,0,-100],)"
              R"([2286.02783203125,110,30,0,0,0,0,0,0,0,-100],)"
              R"([3048.037109375,120,40,0,0,0,0,0,0,0,-100]],)"
              R"("text":"(100):240.0/15.0 (2286):110.0/30.0 (3048):120.0/40.0"}]})");
}

TEST(WindCommandTest, ASynopStandsInForAnOldMetar)
{
    for (const char* metar : {R"({"dir":100,"speed":9})", R"({"timeGroup":"010220","dir":100})"}) {
        const WindResult result =
            runWind(R"({"start":1561984800000,"events":[{"weather":{"metar":)" + std::string(metar)
                    + R"(,"synop":{"timeGroup":"011200","dir":200,"speed":19.4},)"
                      R"("levels":[{"altitude":9000}]},"steps":1}]})");
        ASSERT_EQ(result.lines.size(), 1U);
        EXPECT_NE(result.lines.at(0).find(R"("target":{"dir":200,"speed":19,"gust":-1})"),
                  std::string::npos)
            << result.lines.at(0);
    }
}

class BadWindLineTest : public ::testing::TestWithParam<const char*>
{};

TEST_P(BadWindLineTest, CostsThatLineOnly)
{
    const WindResult result = runWind(std::string(GetParam()) + "\n{\"events\":[{}]}");
    EXPECT_EQ(result.status, 3);
    ASSERT_EQ(result.lines.size(), 2U);
    EXPECT_EQ(result.lines.at(0).rfind("{\"error\":\"", 0), 0U) << result.lines.at(0);
    EXPECT_EQ(result.lines.at(1), "{\"steps\":[]}");
    EXPECT_EQ(result.err.rfind("standard input, line 1: ", 0), 0U) << result.err;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadWindLineTest,
    ::testing::Values("{", "7", R"({"start":"noon"})", R"({"start":-1})", R"({"random":[-1]})",
                      R"({"events":{}})", R"({"events":[[]]})", R"({"events":[{"after":-1}]})",
                      R"({"events":[{"steps":1e9}]})",
                      R"({"events":[{"steps":60000},{"xplaneSteps":60000}]})",
                      R"({"events":[{"weather":{"metar":{"dir":1e39}}}]})",
                      R"({"events":[{"weather":{"metar":{"timeGroup":"noon"}}}]})",
                      R"({"settings":{"gusty":1}})"));

TEST(WindCommandTest, TheDemonstrationFlightEndsWithTheWindOfTheGround)
{
    QFile file(QStringLiteral(CIRRILON_TEST_DATA "/dwc/flight.jsonl"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const WindResult result = runWind(file.readAll().toStdString());
    ASSERT_EQ(result.lines.size(), 2U);
    const QJsonArray steps = QJsonDocument::fromJson(QByteArray::fromStdString(result.lines.at(0)))
                                 .object()[QStringLiteral("steps")]
                                 .toArray();
    ASSERT_EQ(steps.size(), 1500);
    EXPECT_EQ(steps.last()[QStringLiteral("job")].toString(), QStringLiteral("253:12"));
}

} // namespace

#include "tests/cli/RunCliHere.h"
#include "tests/support/ExpectedFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <TestPaths.h>
#include <algorithm>

namespace {

QString dataFile(const char* name)
{
    return QStringLiteral(CIRRILON_TEST_DATA "/") + QLatin1String(name);
}

/// The small weather around Frankfurt at a fixed moment, with random clouds that repeat.
QStringList smallStore()
{
    return {QStringLiteral("--settings"), dataFile("weather/small.ini"),
            QStringLiteral("--now"),      QStringLiteral("2019-07-01T12:40:00Z"),
            QStringLiteral("--seed"),     QStringLiteral("7"),
            QStringLiteral("--airports"), dataFile("tables/airports.txt"),
            QStringLiteral("--stations"), dataFile("tables/wxstations.txt"),
            QStringLiteral("--weather"),  dataFile("weather/small.wx"),
            QStringLiteral("--grib"),     dataFile("upperair/frankfurt.txt")};
}

QString written(const QString& name, const std::string& contents)
{
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents.data(), static_cast<qint64>(contents.size()));
    return name;
}

std::string contentsOf(const QString& name)
{
    return fileContents(name.toStdString());
}

void expectOutput(const std::string& actual, const std::string& reference)
{
    expectFile(actual, "expected/" + reference);
}

struct FailureCase
{
    const char* name;
    const char* arguments;
    int status;
    const char* part; ///< of the line on standard error
};

class CliFailureTest : public ::testing::TestWithParam<FailureCase>
{};

TEST_P(CliFailureTest, GivesItsStatusAndOneLine)
{
    const FailureCase& row = GetParam();
    const CliResult result = runCli(words(row.arguments));
    EXPECT_EQ(result.status, row.status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_NE(result.err.find(row.part), std::string::npos) << result.err;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CliFailureTest,
    ::testing::Values(
        FailureCase{"NoCommand", "", 2, "no command"},
        FailureCase{"UnknownCommand", "explode", 2, "\"explode\""},
        FailureCase{"UnknownOption", "store --colour red", 2, "colour"},
        FailureCase{"MissingValue", "store --weather", 2, "weather"},
        FailureCase{"UnknownKind", "decode taf", 2, "metar, synop, grib"},
        FailureCase{"SurplusArgument", "store now", 2, "argument"},
        FailureCase{"ForeignOption", "store --elevation 5", 2, "--elevation"},
        FailureCase{"NoPlace", "nearest", 2, "--at"},
        FailureCase{"HalfAPlace", "nearest --at 50", 2, "LAT,LON"},
        FailureCase{"PlaceOffTheEarth", "nearest --at 95,8", 2, "LAT,LON"},
        FailureCase{"PlaceIsNotANumber", "nearest --at nan,8", 2, "LAT,LON"},
        FailureCase{"BadTime", "--now 2019-13-01T00:00:00Z store", 2, "YYYY-MM-DD"},
        FailureCase{"BadSeed", "--seed -1 store", 2, "--seed"},
        FailureCase{"BadLevel", "--log loud store", 2, "--log"},
        FailureCase{"BadElevation", "decode metar --elevation high", 2, "--elevation"},
        FailureCase{"NoOut", "prepare theme --at 50,8", 2, "--out"},
        FailureCase{"BadGeneration", "prepare xplane-record --at 50,8 --generation 10", 2, "11"},
        FailureCase{"MissingWeather", "store --weather /nowhere/weather.wx", 3, "weather.wx"},
        FailureCase{"MissingTable", "store --airports /nowhere/airports", 3, "airports"},
        FailureCase{"MissingSettings", "--settings /nowhere/a.ini store", 3, "a.ini"},
        FailureCase{"TableIsNoTable", "store --stations " CIRRILON_TEST_DATA "/weather/small.wx", 3,
                    "no row"},
        FailureCase{"GribIsAnError", "store --grib " CIRRILON_TEST_DATA "/upperair/error.txt", 3,
                    "error.txt: the server's error text"},
        FailureCase{"NoPosition", "prepare fsuipc --at 0,0", 1,
                    "3 Prepare weather no position Error"},
        FailureCase{"UnknownStation", "prepare record --at 50,8 --icao QQQQ", 1, "QQQQ"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CliTest, DecodeAnswersEveryLineInOrder)
{
    const CliResult result =
        runCli(words("decode metar"), "EDDF 011220Z 24012KT 9999 22/M02 Q1015\r\n"
                                      "\n"
                                      "rubbish \xff\xfe\n"
                                      "KDEN 011153Z 09004KT 10SM 25/05 A2992");
    EXPECT_EQ(result.status, 0);
    const char* const inOrder[] = {"\"icao\":\"EDDF\"", "\"status\":7", "\"status\":2",
                                   "\"icao\":\"KDEN\""};
    std::istringstream lines(result.out);
    std::string line;
    for (const char* const part : inOrder) {
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_NE(line.find(part), std::string::npos) << line;
    }
    EXPECT_FALSE(std::getline(lines, line)) << line;
}

TEST(CliTest, StoreCountsWhatTheFilesHold)
{
    const CliResult result = runCli(smallStore() << QStringLiteral("store"));
    EXPECT_EQ(result.err, "");
    expectOutput(result.out, "store.jsonl");
}

TEST(CliTest, AFileWithoutBlocksLeavesTheStoreEmptyAndSaysSo)
{
    const CliResult weather = runCli(
        {QStringLiteral("--weather"), dataFile("tables/airports.txt"), QStringLiteral("store")});
    EXPECT_EQ(weather.status, 0);
    EXPECT_NE(weather.out.find("\"metars\":0"), std::string::npos);
    EXPECT_NE(weather.err.find("airports.txt: no [METAR]"), std::string::npos) << weather.err;
}

struct OutputCase
{
    const char* reference;
    const char* arguments;
};

class CliOutputTest : public ::testing::TestWithParam<OutputCase>
{};

TEST_P(CliOutputTest, IsTheReference)
{
    const CliResult result = runCli(smallStore() << words(GetParam().arguments));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    expectOutput(result.out, GetParam().reference);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CliOutputTest,
    ::testing::Values(
        OutputCase{"nearest.jsonl", "nearest --at 50.03,8.57"},
        OutputCase{"stations.jsonl", "stations --at 50.03,8.57 --range 60"},
        OutputCase{"search.txt", "search -10;100;9999;9999;;ED"},
        OutputCase{"record.jsonl", "prepare record --at 50.03,8.57 --icao EDFH --magvar -2.5"},
        OutputCase{"place.jsonl", "prepare record --at 50.03,8.57 --sim 2"},
        OutputCase{"fsuipc.jsonl", "prepare fsuipc --at 50.03,8.57 --destination LSZH"},
        OutputCase{"observations.txt", "prepare observations --at 50.03,8.57"},
        OutputCase{"xplane11.txt", "prepare xplane-record --at 50.03,8.57 --sim 9"},
        OutputCase{"xplane12.txt",
                   "prepare xplane-record --at 50.03,8.57 --sim 13 --generation 12"}),
    [](const auto& row) {
        std::string name = row.param.reference;
        return name.substr(0, name.find('.'));
    });

TEST(CliTest, XPlaneFilesAndThemeAreTheReferences)
{
    const QTemporaryDir folder;
    const CliResult files = runCli(
        smallStore() << words("prepare xplane-files --at 50.03,8.57 --out") << folder.path());
    EXPECT_EQ(files.status, 0) << files.err;
    expectOutput(contentsOf(folder.filePath(QStringLiteral("METAR.rwx"))), "METAR.rwx");
    expectOutput(contentsOf(folder.filePath(QStringLiteral("WINDS.rwx"))), "WINDS.rwx");

    const CliResult noFolder =
        runCli(smallStore() << words("prepare xplane-files --at 50.03,8.57 --out /nowhere/at/all"));
    EXPECT_EQ(noFolder.status, 1);
    EXPECT_EQ(noFolder.err.rfind("5 can not create file error: /nowhere/at/all/METAR.rwx", 0), 0U);

    const CliResult theme = runCli(smallStore() << words("prepare theme --at 50.03,8.57 --out")
                                                << folder.filePath(QStringLiteral("theme")));
    EXPECT_EQ(theme.status, 0) << theme.err;
    expectOutput(contentsOf(folder.filePath(QStringLiteral("theme.WTB"))), "theme.WTB");
    expectOutput(contentsOf(folder.filePath(QStringLiteral("theme.wt"))), "theme.wt");
}

TEST(CliTest, MissingUpperAirIsSaidOnceForEachStation)
{
    QStringList arguments = smallStore();
    arguments.erase(arguments.end() - 2, arguments.end());
    const CliResult result =
        runCli(arguments << words("prepare record --at 50.03,8.57 --icao EDDF"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "no upper-air data for EDDF, prepared without it\n");
}

TEST(CliTest, TheLogGoesToStandardErrorFromItsLevelOn)
{
    const CliResult notes =
        runCli(words("--log notification") << smallStore() << QStringLiteral("store"));
    EXPECT_NE(notes.err.find("Notification: 12:40:00:000 - (WeatherManager) - metar initialization "
                             "completed: "),
              std::string::npos)
        << notes.err;
    EXPECT_EQ(notes.err.find("Debug: "), std::string::npos);
    EXPECT_EQ(runCli(words("--log 3") << smallStore() << QStringLiteral("store")).err, "");
}

TEST(CliTest, SettingsAreReadAsTheMainFileIs)
{
    const QTemporaryDir folder;
    const char* const kText = "[weather]\nsynopoff=true\nrange=20\n";
    const QString name = written(folder.filePath(QStringLiteral("mine.ini")), kText);
    const QStringList settings{QStringLiteral("--settings"), name};
    const QStringList data = smallStore().mid(2);
    const CliResult store = runCli(settings + data << QStringLiteral("store"));
    EXPECT_NE(store.out.find("\"synops\":0"), std::string::npos) << store.out;
    EXPECT_EQ(contentsOf(name), kText) << "the file is never written";
    const CliResult stations = runCli(settings + data << words("stations --at 50.03,8.57"));
    const CliResult wide = runCli(data + words("stations --at 50.03,8.57 --range 20"));
    EXPECT_EQ(stations.out, wide.out);
}

TEST(CliTest, TheClockIsUtcInEverySystemTimeZone)
{
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "Europe/Berlin"); // 02:30 doesn't exist there on this day
    const CliResult result = runCli(words("--now 2019-03-31T02:30:00Z --log 1 store"));
    qputenv("TZ", before);
    EXPECT_EQ(result.status, 0) << result.err;
    const CliResult later = runCli(words("--now 2019-03-31T02:30:00Z --log 0 --weather")
                                   << dataFile("weather/small.wx") << QStringLiteral("store"));
    EXPECT_NE(later.err.find(": 02:30:00:000 - "), std::string::npos) << later.err;
}

TEST(CliTest, LineEndsOfOtherSystemsAreRead)
{
    const QTemporaryDir folder;
    const QString plain = dataFile("weather/small.wx");
    std::string changed;
    for (const char c : contentsOf(plain)) {
        changed += c == '\n' ? "\r\n" : std::string(1, c);
    }
    QStringList arguments = smallStore();
    arguments.replace(arguments.indexOf(plain),
                      written(folder.filePath(QStringLiteral("crlf.wx")), changed));
    EXPECT_EQ(runCli(arguments + words("store")).out, runCli(smallStore() + words("store")).out);
}

TEST(CliTest, TheBuiltInTablesPlaceTheWorld)
{
    const CliResult result = runCli({QStringLiteral("store")});
    const QJsonObject counts =
        QJsonDocument::fromJson(QByteArray::fromStdString(result.out)).object();
    EXPECT_GT(counts[QStringLiteral("airports")].toInt(), 12000);
    EXPECT_GT(counts[QStringLiteral("stations")].toInt(), 12000);
}

} // namespace

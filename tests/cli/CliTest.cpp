#include "app/base/Settings.h"
#include "tests/cli/RunCliHere.h"
#include "tests/support/ExpectedFile.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <TestPaths.h>
#include <algorithm>
#include <csignal>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

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
        FailureCase{"FewCriteria", "search 0;100;0", 2, "MINWIND;MAXWIND"},
        FailureCase{"ManyCriteria", "search 0;100;0;9999;;ED;5", 2, "MINWIND;MAXWIND"},
        FailureCase{"NoNumber", "search 0;strong;0;9999;;ED", 2, "field 2, \"strong\""},
        FailureCase{"EmptyNumber", "search -1;100;;9999;;ED", 2, "field 3, \"\""},
        FailureCase{"CrossedCriteria", "search 20;10;0;9999;;ED", 2, "\"20;10;0;9999;;ED\""},
        FailureCase{"ForeignStrict", "store --strict", 2, "--strict does not go with store"},
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

struct InputCase
{
    const char* option;
    const char* text;
    int status;
    const char* part; ///< of the line on standard error; empty for none
};

/// What a server that fails leaves where a file was expected, and what only looks alike.
TEST(CliTest, AnInputFileInWhichNothingCanBeUnderstoodIsRefused)
{
    const char* const kPage = "<html lang=\"en\">\n<p>[Error] 502 = bad gateway</p>\n";
    const InputCase rows[] = {
        {"--weather", kPage, 3, "no [METAR], [SYNOP] or [TAF] block"},
        {"--weather", "", 3, "no [METAR], [SYNOP] or [TAF] block"},
        {"--weather", "[METAR]\nEDDF 011220Z 24012KT 9999 Q1015\n", 3, "no [METAR]"},
        {"--weather", "[METAR]\nno such file\n[/METAR]\n[SYNOP]\nAAXX=\n[/SYNOP]\n", 3,
         "no report in its blocks"},
        {"--weather", "[METAR]\n[/METAR]\n", 0, ""},
        {"--weather", "[METAR]\nrubbish of a line\nQQQQ 011220Z 24012KT\n[/METAR]\n", 0, ""},
        {"--weather", "[METAR]\n[/METAR]\n[SYNOP]\nAAXX 28121 99999 11458 52406=\n[/SYNOP]\n", 0,
         ""},
        {"--grib", kPage, 3, "no upper-air record"},
        {"--grib", "", 3, "no upper-air record"},
        {"--grib", "# TIME:1561982400\n", 0, ""},
        {"--settings", kPage, 3, "no readable settings file"},
        {"--settings", "[other]\nrange=20\n", 3, "no key of the settings"},
        {"--settings", "; nothing yet\n[weather]\n", 0, ""},
        {"--settings", "rubbish\n[url]\nwxdata1=http://localhost/\n", 0, ""},
    };
    const QTemporaryDir folder;
    for (const InputCase& row : rows) {
        SCOPED_TRACE(std::string(row.option) + ' ' + row.text);
        const QString name = written(folder.filePath(QStringLiteral("input")), row.text);
        const CliResult result = runCli(words("--now 2019-07-01T12:40:00Z")
                                        << QLatin1String(row.option) << name << words("store"));
        EXPECT_EQ(result.status, row.status);
        EXPECT_EQ(result.out.empty(), row.status != 0);
        EXPECT_EQ(result.err.rfind(row.status == 0 ? "" : name.toStdString() + ": ", 0), 0U);
        EXPECT_NE(result.err.find(row.part), std::string::npos) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), row.status == 0 ? 0 : 1);
    }
}

TEST(CliTest, ReportsMayBeginWithTheirKind)
{
    const char* const kReport = "EDDF 011220Z 24012KT 9999 22/M02 Q1015\n";
    const CliResult plain = runCli(words("decode metar"), kReport);
    const QTemporaryDir folder;
    for (const char* const prefix : {"METAR ", "SPECI ", "METAR COR ", "SPECI  "}) {
        SCOPED_TRACE(prefix);
        EXPECT_EQ(runCli(words("decode metar"), prefix + std::string(kReport)).out, plain.out);
        const QString name = written(folder.filePath(QStringLiteral("weather.wx")),
                                     std::string("[METAR]\n") + prefix + kReport + "[/METAR]\n");
        const CliResult store =
            runCli(QStringList{QStringLiteral("--weather"), name, QStringLiteral("store")});
        EXPECT_NE(store.out.find("\"metars\":1,"), std::string::npos) << store.out;
    }
}

TEST(CliTest, SaysItsVersion)
{
    const CliResult result = runCli(words("--version"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "cirrilon-cli " + Settings::version().toStdString() + "\n");
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

TEST(CliTest, MissingUpperAirIsOneLineAndTheLogNamesTheStations)
{
    QStringList store = smallStore();
    store.erase(store.end() - 2, store.end());
    const CliResult one = runCli(store + words("prepare record --at 50.03,8.57 --icao EDDF"));
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.err, "no upper-air data for 1 station, EDDF, prepared without it\n");

    EXPECT_EQ(runCli(store + words("prepare record --at 50.03,8.57")).err,
              "no upper-air data for 1 station, 50.03,8.57, prepared without it\n");

    const QStringList prepare = words("prepare fsuipc --at 50.03,8.57");
    const CliResult many = runCli(store + prepare);
    EXPECT_EQ(std::count(many.err.begin(), many.err.end(), '\n'), 1) << many.err;
    EXPECT_EQ(many.err.rfind("no upper-air data for ", 0), 0U) << many.err;
    const int stations = std::stoi(many.err.substr(std::string("no upper-air data for ").size()));
    EXPECT_GT(stations, 1);
    const QString log = QString::fromStdString(runCli(words("--log 0") + store + prepare).err);
    EXPECT_EQ(log.count(QRegularExpression(
                  QStringLiteral("Debug: [0-9:]+ - no upper-air data for [A-Z]{4}\n"))),
              stations);
}

#ifdef Q_OS_UNIX
/// While it lives no file of this process can grow beyond some bytes, as on a full disk.
class FullDisk
{
public:
    FullDisk()
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit full = m_before;
        full.rlim_cur = 64;
        setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit m_before{};
};

TEST(CliTest, AFullDiskNamesTheFile)
{
    const QTemporaryDir folder;
    const std::pair<const char*, const char*> rows[] = {{"theme", "/out.WTB"},
                                                        {"xplane-files", "/METAR.rwx"}};
    for (const auto& [what, file] : rows) {
        const bool theme = std::string(what) == "theme";
        const QString out = theme ? folder.filePath(QStringLiteral("out")) : folder.path();
        CliResult result;
        {
            const FullDisk full;
            result = runCli(smallStore() << words("prepare") << QLatin1String(what)
                                         << words("--at 50.03,8.57 --out") << out);
        }
        EXPECT_EQ(result.status, 1);
        const std::string start = "5 can not create file error: " + folder.path().toStdString();
        EXPECT_EQ(result.err.rfind(start + file + ", ", 0), 0U) << result.err;
        EXPECT_EQ(result.err.find("Unknown error"), std::string::npos) << result.err;
        EXPECT_TRUE(QDir(folder.path()).isEmpty());
    }
}
#endif

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

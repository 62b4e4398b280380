#include "app/WeatherWorker.h"

#include "app/WeatherJobs.h"
#include "app/base/GribSource.h"
#include "app/base/Settings.h"
#include "nav/AirportTable.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRandom.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <QDir>
#include <QFile>
#include <QSemaphore>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using aviation::Position;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

const char* const kAirports = "# icao;name;country;elev;lat;lon;1;1;1;1;1\r\n"
                              "EDDF;Frankfurt;Germany;364;50.0333;8.5706;1;1;1;1;1\r\n"
                              "EDFH;Hahn;Germany;1649;49.9487;7.2639;1;1;1;1;1\r\n"
                              "EDDM;Munich;Germany;1487;48.3538;11.7861;1;1;1;1;1\r\n"
                              "KDEN;Denver;United States;5431;39.8617;-104.6732;1;1;1;1;1\r\n";

const char* const kStations = "106370 EDDF   FRANKFURT/MAIN      DL 5002N 00836E 0112   \r\n";

const char* const kWeather = "[METAR]\n"
                             "EDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015\n"
                             "EDFH 011150Z 20025G35KT 3000 -RA BKN012 18/16 Q1014\n"
                             "KDEN 011153Z 09004KT 10SM SCT080 25/05 A3012\n"
                             "[/METAR]\n"
                             "[SYNOP]\n"
                             "AAXX 01121 10637 11458 52406 10221 20121 30024 40150 57005 82130=\n"
                             "AAXX 01031 10637 11458 52406 10221 20121 30024 40150 57005 82130=\n"
                             "[/SYNOP]\n"
                             "[TAF]\n"
                             "TAF EDDF 011100Z 0112/0218 24010KT 9999 FEW030\n\n"
                             "[/TAF]\n";

/// One upper-air record near Frankfurt.
const char* const kGrib =
    "GRIB 00000 00000 99500 10090 99015 22056 24012 0000132 21856 24015 9200801 16057 25020 "
    "8501530 11058 26025 7003120 00160 27035 5005760 12361 28050 4007420 23962 28060 3009480 "
    "38363 28075 2510690 47165 28080";

/// Counts its calls; from the call `good` on it puts a record into the store.
class FakeGribSource final : public GribSource
{
public:
    FakeGribSource(WeatherWrapper& store, int good) : m_store(store), m_good(good) {}

    int DownloadGrib(const Position& /*position*/, bool single) override
    {
        EXPECT_FALSE(single);
        ++calls;
        if (onCall) {
            onCall();
        }
        if (calls < m_good) {
            return gribdownload::kFailed;
        }
        m_store.initializeWeather(QString::fromLatin1(kGrib),
                                  aviation::weather::storekind::kUpperAir);
        return gribdownload::kDone;
    }

    int calls = 0;
    std::function<void()> onCall;

private:
    WeatherWrapper& m_store;
    int m_good;
};

class WeatherWorkerTest : public ::testing::Test
{
protected:
    WeatherWorkerTest()
    {
        store.addAirports(ReadAirportTable(kAirports));
        store.setWeatherStations(QString::fromLatin1(kStations));
        useSource(nullptr);
    }

    void useSource(GribSource* source)
    {
        worker = std::make_unique<WeatherWorker>(store, settings, source);
        QObject::connect(
            worker.get(), &WeatherWorker::sigFinishedJob,
            [this](int job, const QString&, int error) { finished.emplace_back(job, error); });
        QObject::connect(worker.get(), &WeatherWorker::sigDebugString,
                         [this](const QString& text, int level) {
                             if (level > 0) {
                                 log << text;
                             }
                         });
    }

    int run(const Job& job)
    {
        worker->addJob(job);
        worker->start();
        worker->join();
        return finished.empty() ? -1000 : finished.back().second;
    }

    void decodeWeather()
    {
        worker->setWeatherText(QString::fromLatin1(kWeather));
        ASSERT_EQ(run(Job(weatherjob::kDecodeWeather, QStringLiteral("decode weather data"))), 0);
    }

    void standAt(double latitude, double longitude)
    {
        aviation::structs::AircraftData aircraft;
        aircraft.position = Position(latitude, longitude);
        worker->setAircraftData(aircraft);
    }

    void addGrib()
    {
        store.initializeWeather(QString::fromLatin1(kGrib),
                                aviation::weather::storekind::kUpperAir);
    }

    /// Writes the simulator's station list: `fillers` unknown names and EDFH.
    void writeStationList(int fillers)
    {
        QDir(folder.path()).mkpath(QStringLiteral("Weather"));
        QFile file(folder.filePath(QStringLiteral("Weather/wxstationlist.bin")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (int i = 0; i < fillers; ++i) {
            file.write(QStringLiteral("X%1").arg(i, 3, 10, QLatin1Char('0')).toLatin1());
        }
        file.write("EDFH");
        settings.setSimPath(folder.path());
    }

    QStringList preparedIcaos() const
    {
        QStringList icaos;
        for (const NewWeather& record : worker->fsuipcRecords()) {
            icaos << QString::fromStdString(record.icaoText());
        }
        return icaos;
    }

    FakeClock clock{2019, 7, 1, 12, 10};
    FakeRandom random;
    QTemporaryDir folder;
    Settings settings{QString(), random};
    WeatherWrapper store{settings, random};
    std::unique_ptr<WeatherWorker> worker;
    std::vector<std::pair<int, int>> finished;
    QStringList log;
};

const QString kNoName;

TEST_F(WeatherWorkerTest, AnUnknownIdReportsTheResultBeforeItAndTheEmptyJobNothing)
{
    worker->addJob(Job(weatherjob::kXPlaneFiles, kNoName));
    worker->addJob(Job(99, kNoName));
    worker->addJob(Job(kNoJob, kNoName));
    worker->addJob(Job(0, kNoName));
    worker->start();
    worker->join();
    const std::vector<std::pair<int, int>> expected{{10, 3}, {99, 3}, {0, 3}};
    EXPECT_EQ(finished, expected);
}

TEST_F(WeatherWorkerTest, DecodeFillsTheStoreAndDropsOldSynops)
{
    decodeWeather();
    EXPECT_EQ(store.metarCount(), 3U);
    EXPECT_EQ(store.synopCount(), 1U);
    EXPECT_EQ(store.tafCount(), 1U);

    worker->setHistoryMode(true);
    decodeWeather();
    EXPECT_EQ(store.synopCount(), 2U) << "history keeps reports of any age";

    settings.setSynopOff(true);
    decodeWeather();
    EXPECT_EQ(store.synopCount(), 0U);
}

TEST_F(WeatherWorkerTest, PrepareJobsNeedAPosition)
{
    for (const int id : {2, 5, 6, 7, 8, 9, 10, 11}) {
        EXPECT_EQ(run(Job(id, QStringLiteral("EDDF"))), weathererror::kNoPosition) << id;
    }
    EXPECT_EQ(run(Job(3, QStringLiteral("XXXX"))), weathererror::kNone);
}

TEST_F(WeatherWorkerTest, RecordsOfAllStationsBeginWithTheGlobalOneAndEndWithTheDestination)
{
    decodeWeather();
    standAt(50.0, 8.5);
    EXPECT_EQ(run(Job(2, QStringLiteral("KDEN"))), 0);
    EXPECT_EQ(preparedIcaos(), (QStringList{QStringLiteral("GLOB"), QStringLiteral("EDDF"),
                                            QStringLiteral("EDFH"), QStringLiteral("KDEN")}));
    const std::vector<NewWeather> records = worker->fsuipcRecords();
    EXPECT_EQ(records.at(0).Press, records.at(1).Press);
    EXPECT_EQ(records.at(1).Press, 1015 * 16);

    standAt(10.0, -150.0);
    EXPECT_EQ(run(Job(2, kNoName)), 0);
    EXPECT_TRUE(worker->fsuipcRecords().empty());
}

TEST_F(WeatherWorkerTest, TheSimulatorsStationListFiltersFromElevenEntriesOn)
{
    decodeWeather();
    standAt(50.0, 8.5);
    writeStationList(9);
    run(Job(2, kNoName));
    EXPECT_EQ(preparedIcaos().size(), 3) << "ten entries: the list is ignored";

    writeStationList(10);
    log.clear();
    run(Job(2, kNoName));
    EXPECT_EQ(preparedIcaos(), (QStringList{QStringLiteral("GLOB"), QStringLiteral("EDFH")}));
    EXPECT_EQ(log, QStringList{QStringLiteral("Remove weather from list EDDF")});
}

TEST_F(WeatherWorkerTest, ObservationsAreLabelledWithTheirStation)
{
    store.initializeWeather(QStringLiteral("EDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015\n"),
                            aviation::weather::storekind::kMetar);
    standAt(50.0, 8.5);
    EXPECT_EQ(run(Job(5, kNoName)), 0);
    QStringList heads;
    for (const QString& text : worker->simConnectStrings()) {
        heads << text.left(12);
    }
    EXPECT_EQ(heads, (QStringList{QStringLiteral("GLOB 011150Z"), QStringLiteral("EDDF 011150Z"),
                                  QStringLiteral("EDFH 011150Z")}));
}

TEST_F(WeatherWorkerTest, AStationIsPreparedOnceItsUpperAirDataAreThere)
{
    FakeGribSource source(store, 3);
    useSource(&source);
    decodeWeather();
    EXPECT_EQ(run(Job(3, QStringLiteral("EDDF"))), 0);
    EXPECT_EQ(source.calls, 3) << "a failed download is asked for again";
    ASSERT_EQ(worker->fsuipcRecords().size(), 1U);
    EXPECT_GT(worker->fsuipcRecords().front().nWindCtr, 2);
    EXPECT_GT(clock.sleptMs(), 0) << "a source that fails at once isn't asked in a tight loop";
}

TEST_F(WeatherWorkerTest, StoppingEndsTheWaitForUpperAirData)
{
    FakeGribSource source(store, 1000000);
    useSource(&source);
    decodeWeather();
    source.onCall = [&] {
        if (source.calls == 5) {
            worker->stop();
        }
    };
    run(Job(3, QStringLiteral("EDDF")));
    EXPECT_EQ(source.calls, 5);
}

TEST_F(WeatherWorkerTest, NobodyIsHeldUpByAJobThatWaitsForUpperAirData)
{
    FakeGribSource source(store, 1);
    useSource(&source);
    decodeWeather();
    QSemaphore asked;
    QSemaphore answer;
    source.onCall = [&] {
        asked.release();
        answer.acquire();
    };
    worker->addJob(Job(3, QStringLiteral("EDDF")));
    worker->start();
    asked.acquire();
    worker->setWeatherText(QStringLiteral("[METAR]\n[/METAR]\n")); // would stand still for ever
    worker->addJob(Job(weatherjob::kDecodeWeather, kNoName));
    EXPECT_EQ(worker->queuedJobs(), 1);
    answer.release();
    worker->join();
    EXPECT_EQ(store.metarCount(), 0U);
}

TEST_F(WeatherWorkerTest, IgnoredUpperAirDataAreNeitherUsedNorDownloaded)
{
    FakeGribSource source(store, 1);
    useSource(&source);
    decodeWeather();
    addGrib();
    settings.setGribOff(true);
    EXPECT_EQ(run(Job(3, QStringLiteral("EDDF"))), 0);
    EXPECT_EQ(source.calls, 0);
    EXPECT_EQ(worker->fsuipcRecords().front().nWindCtr, 2);
}

struct SearchCase
{
    const char* name;
    bool metar;
    bool synop;
    bool grib;
    int job;
    const char* argument;
    int expected;
};

class SearchResultTest : public WeatherWorkerTest, public ::testing::WithParamInterface<SearchCase>
{};

TEST_P(SearchResultTest, TellsWhatIsMissing)
{
    const SearchCase& row = GetParam();
    decodeWeather();
    if (!row.metar) {
        store.initializeWeather(QString(), aviation::weather::storekind::kMetar);
    }
    if (!row.synop) {
        store.initializeWeather(QString(), aviation::weather::storekind::kSynop);
    }
    if (row.grib) {
        addGrib();
    }
    standAt(50.0, 8.5);
    EXPECT_EQ(run(Job(row.job, QString::fromLatin1(row.argument))), row.expected);
    Metar metar;
    Synop synop;
    Grib grib;
    worker->GetSearchResult(metar, synop, grib);
    EXPECT_EQ(metar.isKnown(), row.metar);
    EXPECT_EQ(grib.status() == 0, row.grib);
}

INSTANTIATE_TEST_SUITE_P(
    Jobs, SearchResultTest,
    ::testing::Values(SearchCase{"AllFound", true, true, true, 13, "", 0},
                      SearchCase{"NoSynopForWind", true, false, true, 13, "", 8},
                      SearchCase{"NoSynopForDisplay", true, false, true, 15, "", 0},
                      SearchCase{"NoSynopAtStation", true, false, true, 14, "EDDF", 0},
                      SearchCase{"NoSynopAtPosition", true, false, true, 17, "50.0,8.5", 8},
                      SearchCase{"NoMetar", false, true, true, 15, "", 7},
                      SearchCase{"NoGrib", true, true, false, 15, "", 9},
                      SearchCase{"NoGribNorMetar", false, true, false, 13, "", 9},
                      SearchCase{"OnlyGrib", false, false, true, 13, "", 7},
                      SearchCase{"Nothing", false, false, false, 17, "50.0,8.5", 10}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(WeatherWorkerTest, APositionWithoutACommaIsNoPosition)
{
    decodeWeather();
    EXPECT_EQ(run(Job(17, QStringLiteral("50.0"))), weathererror::kNoPosition);
}

TEST_F(WeatherWorkerTest, WeatherSearchKeepsToItsCriteria)
{
    decodeWeather();
    const std::pair<const char*, const char*> rows[] = {
        {"0;100;0;99999;;", "EDDF EDFH KDEN"},
        {"12;100;0;99999;;", "EDDF EDFH"},
        {"0;100;0;3000;;", "EDFH"},
        {"0;100;0;99999;RA;", "EDFH"},
        {"0;100;0;99999;X;", "EDDF EDFH KDEN"},
        {"0;100;0;99999;;ED", "EDDF EDFH"},
        {"0;100;0;99999;;EDDFX", ""},
        {"0;100;0;99999;", ""},
    };
    QStringList found;
    QObject::connect(worker.get(), &WeatherWorker::sigMetarFromWeatherSearch,
                     [&](const QString& metar) { found << metar.left(4); });
    for (const auto& [criteria, expected] : rows) {
        found.clear();
        EXPECT_EQ(run(Job(16, QString::fromLatin1(criteria))), 0);
        EXPECT_EQ(found.join(QLatin1Char(' ')), QString::fromLatin1(expected)) << criteria;
    }
}

TEST_F(WeatherWorkerTest, XPlaneLinesStandNearestFirst)
{
    decodeWeather();
    standAt(49.9, 7.2);
    EXPECT_EQ(run(Job(10, kNoName)), 0);
    const std::vector<QString> lines = worker->xplaneMetarLines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("2019/07/01 12:10\nEDFH ")))
        << lines[0].toStdString();
    EXPECT_EQ(worker->xplaneWindLines().size(), 2U);
}

TEST_F(WeatherWorkerTest, AThemeIsWrittenOrTheJobSaysThatItIsNot)
{
    decodeWeather();
    standAt(50.0, 8.5);
    const QString base = folder.filePath(QStringLiteral("cirrilon"));
    EXPECT_EQ(run(Job(11, base)), weathererror::kThemeWritten);
    EXPECT_TRUE(QFile::exists(base + QStringLiteral(".WTB")));
    EXPECT_TRUE(QFile::exists(base + QStringLiteral(".wt")));
    EXPECT_EQ(clock.sleptMs(), 26 * 20 + 2000);

    EXPECT_EQ(run(Job(11, folder.filePath(QStringLiteral("missing/cirrilon")))),
              weathererror::kCannotCreateFile);
    EXPECT_TRUE(log.contains(QStringLiteral("(Controller Weather) Can not write File to FS")));
}

TEST_F(WeatherWorkerTest, JobsPostedWhileTheThreadRunsAreDoneInOrder)
{
    decodeWeather();
    finished.clear();
    standAt(50.0, 8.5);
    constexpr int kJobs = 200;
    for (int i = 0; i < kJobs; ++i) {
        worker->addJob(Job(i % 2 == 0 ? 15 : 99, QString::number(i)));
        worker->setAircraftData({});
        worker->start();
    }
    while (worker->queuedJobs() > 0) {
        worker->start();
        worker->join();
    }
    worker->join();
    ASSERT_EQ(finished.size(), static_cast<std::size_t>(kJobs));
    for (int i = 0; i < kJobs; ++i) {
        EXPECT_EQ(finished[static_cast<std::size_t>(i)].first, i % 2 == 0 ? 15 : 99);
    }
}

TEST(WeatherErrorTextTest, UnknownNumbersHaveATextToo)
{
    EXPECT_EQ(WeatherErrorText(0), QStringLiteral("No Error"));
    EXPECT_EQ(WeatherErrorText(10), QStringLiteral("no weather"));
    EXPECT_EQ(WeatherErrorText(101), QStringLiteral("Decode cloud error"));
    EXPECT_EQ(WeatherErrorText(11), QStringLiteral("unknown error"));
}

} // namespace

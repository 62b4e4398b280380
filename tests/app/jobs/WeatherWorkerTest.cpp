#include "app/jobs/WeatherWorker.h"

#include "app/base/GribSource.h"
#include "app/base/Settings.h"
#include "app/jobs/WeatherJobs.h"
#include "nav/records/AirportTable.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeClock.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <QSemaphore>

#include <gtest/gtest.h>

#include <TestPaths.h>
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

const QString kUpperAir = CIRRILON_TEST_DATA "/upperair/frankfurt.txt"_q;

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
        m_store.initializeWeather(QString::fromLatin1(SettingsFixture::read(kUpperAir)),
                                  aviation::weather::storekind::kUpperAir);
        return gribdownload::kDone;
    }

    int calls = 0;
    std::function<void()> onCall;

private:
    WeatherWrapper& m_store;
    int m_good;
};

class WeatherWorkerTest : public SettingsFixture
{
protected:
    WeatherWorkerTest()
    {
        store.addAirports(readAirportTable(kAirports));
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
                             log << (level > 0 ? QStringList(text) : QStringList());
                         });
    }

    int run(int id, const QString& name = QString())
    {
        worker->addJob(Job(id, name));
        worker->start();
        worker->join();
        return finished.empty() ? -1000 : finished.back().second;
    }

    void decodeWeather()
    {
        worker->setWeatherText(QString::fromLatin1(kWeather));
        ASSERT_EQ(run(weatherjob::kDecodeWeather), 0);
    }

    void standAt(double latitude, double longitude)
    {
        aviation::structs::AircraftData aircraft;
        aircraft.position = Position(latitude, longitude);
        worker->setAircraftData(aircraft);
    }

    /// Writes the simulator's station list: `fillers` unknown names and EDFH.
    void writeStationList(int fillers)
    {
        QByteArray names;
        for (int i = 0; i < fillers; ++i) {
            names += "X00" + QByteArray::number(i);
        }
        write(path("Weather/wxstationlist.bin"), names + "EDFH");
        settings.setSimPath(path("."));
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
    Settings settings{QString(), m_random};
    WeatherWrapper store{settings, m_random};
    std::unique_ptr<WeatherWorker> worker;
    std::vector<std::pair<int, int>> finished;
    QStringList log;
};

TEST_F(WeatherWorkerTest, AnUnknownIdReportsTheResultBeforeItAndTheEmptyJobNothing)
{
    for (const int id : {int(weatherjob::kXPlaneFiles), 99, int(kNoJob), 0}) {
        worker->addJob(Job(id, QString()));
    }
    worker->start();
    worker->join();
    EXPECT_EQ(finished, (std::vector<std::pair<int, int>>{{10, 3}, {99, 3}, {0, 3}}));
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

TEST_F(WeatherWorkerTest, ExternalWeatherReplacesNothingThatCouldntBeFetched)
{
    const QString metars = "[METAR]EDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015\n[/METAR]\n"_q;
    const QString synops =
        "[SYNOP]AAXX 01121 10637 11458 52406 10221 20121 30024 40150 57005 82130=[/SYNOP]\n"_q;
    const struct
    {
        QString text;
        bool metarsFailed;
        bool synopsFailed;
        std::size_t metars; ///< of three before
        std::size_t synops; ///< of one before
    } rows[] = {
        {metars, false, false, 1, 0},
        {metars, false, true, 1, 1},
        {synops, false, false, 0, 1},
        {synops, true, false, 3, 1},
        {"[METAR]Service not available\n[/METAR]\n"_q, false, false, 3, 1},
        {"[SYNOP]Service not available\n[/SYNOP]\n"_q, false, false, 3, 1},
    };
    for (const auto& row : rows) {
        decodeWeather();
        worker->setWeatherList(
            {row.text, WeatherList::Origin::External, row.metarsFailed, row.synopsFailed});
        run(weatherjob::kDecodeWeather);
        EXPECT_EQ(store.metarCount(), row.metars) << qPrintable(row.text);
        EXPECT_EQ(store.synopCount(), row.synops) << qPrintable(row.text);
    }
}

TEST_F(WeatherWorkerTest, PrepareJobsNeedAPosition)
{
    for (const int id : {2, 5, 6, 7, 8, 9, 10, 11}) {
        EXPECT_EQ(run(id, "EDDF"_q), weathererror::kNoPosition) << id;
    }
    EXPECT_EQ(run(3, "XXXX"_q), weathererror::kNone);
}

TEST_F(WeatherWorkerTest, RecordsOfAllStationsBeginWithTheGlobalOneAndEndWithTheDestination)
{
    decodeWeather();
    standAt(50.0, 8.5);
    EXPECT_EQ(run(2, "KDEN"_q), 0);
    EXPECT_EQ(preparedIcaos(), (QStringList{"GLOB"_q, "EDDF"_q, "EDFH"_q, "KDEN"_q}));
    const std::vector<NewWeather> records = worker->fsuipcRecords();
    EXPECT_EQ(records.at(0).Press, records.at(1).Press);
    EXPECT_EQ(records.at(1).Press, 1015 * 16);

    standAt(35.0, -130.0);
    EXPECT_EQ(run(2), 0) << "no station, though a report is near enough";
    EXPECT_TRUE(worker->fsuipcRecords().empty());
}

TEST_F(WeatherWorkerTest, TheSimulatorsStationListFiltersFromElevenEntriesOn)
{
    decodeWeather();
    standAt(50.0, 8.5);
    writeStationList(9);
    run(2);
    EXPECT_EQ(preparedIcaos().size(), 3) << "ten entries: the list is ignored";

    writeStationList(10);
    log.clear();
    run(2);
    EXPECT_EQ(preparedIcaos(), (QStringList{"GLOB"_q, "EDFH"_q}));
    EXPECT_EQ(log, QStringList{"Remove weather from list EDDF"_q});
}

TEST_F(WeatherWorkerTest, ObservationsAreLabelledWithTheirStation)
{
    store.initializeWeather("EDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015\n"_q,
                            aviation::weather::storekind::kMetar);
    standAt(50.0, 8.5);
    EXPECT_EQ(run(5), 0);
    QStringList heads;
    for (const QString& text : worker->simConnectStrings()) {
        heads << text.left(12);
    }
    EXPECT_EQ(heads, (QStringList{"GLOB 011150Z"_q, "EDDF 011150Z"_q, "EDFH 011150Z"_q}));
}

TEST_F(WeatherWorkerTest, AStationIsPreparedOnceItsUpperAirDataAreThere)
{
    FakeGribSource source(store, 3);
    useSource(&source);
    decodeWeather();
    EXPECT_EQ(run(3, "EDDF"_q), 0);
    EXPECT_EQ(source.calls, 3) << "a failed download is asked for again";
    ASSERT_EQ(worker->fsuipcRecords().size(), 1U);
    EXPECT_GT(worker->fsuipcRecords().front().nWindCtr, 2);
    EXPECT_EQ(clock.sleptMs(), 2 * 10000) << "a source that fails at once has its rest";

    settings.setGribOff(true);
    EXPECT_EQ(run(3, "EDDF"_q), 0);
    EXPECT_EQ(worker->fsuipcRecords().back().nWindCtr, 2) << "ignored";
    EXPECT_EQ(run(3, "KDEN"_q), 0);
    EXPECT_EQ(source.calls, 3) << "nor downloaded";
}

TEST_F(WeatherWorkerTest, AWaitGivesWayToWhatTheUserAsksFor)
{
    constexpr int kNever = 1000000;
    FakeGribSource source(store, kNever);
    const struct
    {
        const char* request;
        std::function<void()> ask;
        int result;
    } rows[] = {
        {"something else", [this] { worker->giveWay(); }, weathererror::kNoGrib},
        {"another source", [this] { settings.setWeatherSource(1); }, weathererror::kNoGrib},
        {"another server", [this] { settings.setUrlExternGrib("http://x/y"_q); },
         weathererror::kNoGrib},
        {"no upper air", [this] { settings.setGribOff(true); }, weathererror::kNone},
    };
    const QString base = path("cirrilon");
    for (const int job : {2, 3, 5, 6, 10, 11}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << job << ' ' << row.request);
            settings.setGribOff(false);
            settings.setWeatherSource(3);
            settings.setUrlExternGrib(QString());
            useSource(&source);
            decodeWeather();
            standAt(50.0, 8.5);
            int said = 0;
            int ended = 0;
            QObject::connect(worker.get(), &WeatherWorker::sigWaitsForUpperAir, [&] { ++said; });
            QObject::connect(worker.get(), &WeatherWorker::sigUpperAirWaitEnded, [&] { ++ended; });
            int rounds = 0;
            source.onCall = [&] {
                if (++rounds == 20) {
                    EXPECT_EQ(said, 19);
                    row.ask();
                }
            };
            const int good = job == 11 ? weathererror::kThemeWritten : weathererror::kNone;
            EXPECT_EQ(run(job, job == 11 ? base : "EDDF"_q), row.result == 0 ? good : row.result);
            EXPECT_EQ(rounds, 20) << "no limit before";
            EXPECT_EQ(ended, 1);
        }
    }
}

TEST_F(WeatherWorkerTest, ARequestIsForTheJobsPostedBeforeIt)
{
    FakeGribSource source(store, 5);
    useSource(&source);
    decodeWeather();
    worker->addJob(Job(3, "EDDF"_q));
    worker->giveWay();
    worker->addJob(Job(3, "EDDF"_q));
    worker->start();
    worker->join();
    ASSERT_EQ(finished.size(), 3U);
    EXPECT_EQ(finished[1].second, weathererror::kNoGrib);
    EXPECT_EQ(finished[2].second, weathererror::kNone);
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
    worker->addJob(Job(3, "EDDF"_q));
    worker->start();
    asked.acquire();
    worker->setWeatherText("[METAR]\n[/METAR]\n"_q); // would stand still for ever
    worker->addJob(Job(weatherjob::kDecodeWeather, QString()));
    EXPECT_EQ(worker->queuedJobs(), 1);
    answer.release();
    worker->join();
    EXPECT_EQ(store.metarCount(), 0U);
}

TEST_F(WeatherWorkerTest, ASearchTellsWhatIsMissing)
{
    const struct
    {
        bool metar, synop, grib;
        int job;
        QString argument;
        int expected;
        bool gribOff = false;
    } rows[] = {
        {true, true, false, 15, QString(), 9},
        {false, true, false, 13, QString(), 9},
        {false, false, false, 17, "50.0,8.5"_q, 10},
        {true, true, true, 13, QString(), 0}, // upper-air data stay from here on
        {true, false, true, 13, QString(), 0},
        {true, false, true, 15, QString(), 0},
        {true, false, true, 14, "EDDF"_q, 0},
        {true, false, true, 17, "50.0,8.5"_q, 8},
        {false, true, true, 15, QString(), 7},
        {false, false, true, 13, QString(), 7},
        {true, true, true, 17, "50.0"_q, 3},
        {true, true, true, 13, QString(), 0, true},
        {true, false, true, 14, "EDDF"_q, 0, true},
        {false, true, true, 15, QString(), 0, true},
        {false, false, true, 15, QString(), 10, true},
        {true, false, true, 17, "50.0,8.5"_q, 8, true},
    };
    using namespace aviation::weather;
    standAt(50.0, 8.5);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.job << ' ' << row.expected);
        settings.setGribOff(row.gribOff);
        decodeWeather();
        if (row.grib) {
            store.initializeWeather(QString::fromLatin1(SettingsFixture::read(kUpperAir)),
                                    storekind::kUpperAir);
        }
        if (!row.metar) {
            store.initializeWeather(QString(), storekind::kMetar);
        }
        if (!row.synop) {
            store.initializeWeather(QString(), storekind::kSynop);
        }
        EXPECT_EQ(run(row.job, row.argument), row.expected);
        Metar metar;
        Synop synop;
        Grib grib;
        worker->GetSearchResult(metar, synop, grib);
        if (row.expected != weathererror::kNoPosition) {
            EXPECT_EQ(metar.isKnown(), row.metar);
            EXPECT_EQ(grib.status() == 0, row.grib && !row.gribOff);
        }
    }
}

TEST_F(WeatherWorkerTest, WeatherSearchKeepsToItsCriteria)
{
    decodeWeather();
    const std::pair<QString, QString> rows[] = {
        {"0;100;0;99999;;"_q, "EDDF EDFH KDEN "_q},
        {"12;100;0;99999;;"_q, "EDDF EDFH "_q},
        {"0;100;0;3000;;"_q, "EDFH "_q},
        {"0;100;0;99999;RA;"_q, "EDFH "_q},
        {"0;100;0;99999;;ED"_q, "EDDF EDFH "_q},
        {"0;100;0;99999;X;"_q, "EDDF EDFH KDEN "_q},
        {"0;100;0;99999;;EDDFX"_q, QString()},
        {"0;100;0;99999;"_q, QString()},
    };
    QString found;
    QObject::connect(worker.get(), &WeatherWorker::sigMetarFromWeatherSearch,
                     [&](const QString& metar) { found += metar.left(5); });
    for (const auto& [criteria, expected] : rows) {
        found.clear();
        EXPECT_EQ(run(16, criteria), 0);
        EXPECT_EQ(found, expected) << qPrintable(criteria);
    }
}

TEST_F(WeatherWorkerTest, XPlaneLinesStandNearestFirst)
{
    decodeWeather();
    standAt(49.9, 7.2);
    EXPECT_EQ(run(10), 0);
    const std::vector<QString> lines = worker->xplaneMetarLines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].startsWith("2019/07/01 12:10\nEDFH "_q)) << lines[0].toStdString();
    EXPECT_EQ(worker->xplaneWindLines().size(), 2U);
}

TEST_F(WeatherWorkerTest, AThemeIsWrittenOrTheJobSaysThatItIsNot)
{
    decodeWeather();
    standAt(50.0, 8.5);
    const QString base = path("cirrilon");
    EXPECT_EQ(run(11, base), weathererror::kThemeWritten);
    EXPECT_TRUE(QFile::exists(base + ".WTB"_q));
    EXPECT_TRUE(QFile::exists(base + ".wt"_q));
    EXPECT_EQ(clock.sleptMs(), 26 * 20 + 2000);

    EXPECT_EQ(run(11, path("missing/cirrilon")), weathererror::kCannotCreateFile);
    EXPECT_TRUE(log.contains("(Controller Weather) Can not write File to FS"_q));
}

} // namespace

#include "app/jobs/WeatherWorker.h"

#include "app/base/GribSource.h"
#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/SlicedSleep.h"
#include "app/download/KeptWeather.h"
#include "app/jobs/WeatherJobs.h"
#include "aviation/support/ScopedLock.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherFile.h"
#include "weather/store/WeatherManager.h"

#include <QStringList>

using aviation::ScopedLock;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;
namespace storekind = aviation::weather::storekind;

WeatherWorker::WeatherWorker(WeatherWrapper& store, const Settings& settings,
                             GribSource* gribSource, int roundMs, QObject* parent)
    : JobThread(QStringLiteral("WeatherWorker"), weathererror::kPrepare, nullptr, parent)
    , m_store(store)
    , m_settings(settings)
    , m_gribSource(gribSource)
    , m_roundMs(roundMs)
{
    if (m_gribSource != nullptr) {
        m_gribSource->giveWayWhen([this] { return !mayWait(); });
    }
}

WeatherWorker::~WeatherWorker()
{
    end();
}

/// Counted before it can be taken.
void WeatherWorker::addJob(const Job& job)
{
    m_posted += job.id != kNoJob ? 1U : 0U;
    JobThread::addJob(job);
}

void WeatherWorker::giveWay()
{
    m_giveWay = m_posted.load();
}

void WeatherWorker::setWeatherList(const WeatherList& list)
{
    const ScopedLock lock(m_textMutex);
    m_weatherList = list;
}

WeatherList WeatherWorker::weatherList()
{
    const ScopedLock lock(m_textMutex);
    return m_weatherList;
}

void WeatherWorker::setAircraftData(const aviation::structs::AircraftData& data)
{
    const ScopedLock lock(m_aircraftMutex);
    m_aircraftData = data;
}

aviation::structs::AircraftData WeatherWorker::aircraftData() const
{
    const ScopedLock lock(m_aircraftMutex);
    return m_aircraftData;
}

void WeatherWorker::setHistoryMode(bool active)
{
    m_historyMode = active;
}

bool WeatherWorker::historyMode() const
{
    return m_historyMode;
}

QString WeatherWorker::errorText(int error)
{
    return weatherErrorText(error);
}

DecodeOutcome WeatherWorker::decodeOutcome() const
{
    const ScopedLock lock(m_resultMutex);
    return m_results.decode;
}

void WeatherWorker::GetSearchResult(Metar& metar, Synop& synop, Grib& grib) const
{
    const ScopedLock lock(m_resultMutex);
    metar = m_results.metar;
    synop = m_results.synop;
    grib = m_results.grib;
}

std::vector<NewWeather> WeatherWorker::fsuipcRecords() const
{
    const ScopedLock lock(m_resultMutex);
    return m_results.fsuipcRecords;
}

std::vector<QString> WeatherWorker::simConnectStrings() const
{
    const ScopedLock lock(m_resultMutex);
    return m_results.simConnectStrings;
}

std::vector<QString> WeatherWorker::xplaneMetarLines() const
{
    const ScopedLock lock(m_resultMutex);
    return m_results.xplaneMetarLines;
}

std::vector<QString> WeatherWorker::xplaneWindLines() const
{
    const ScopedLock lock(m_resultMutex);
    return m_results.xplaneWindLines;
}

XPlaneWeather WeatherWorker::xplaneRecord() const
{
    const ScopedLock lock(m_resultMutex);
    return m_results.xplaneRecord;
}

QString WeatherWorker::themeFault() const
{
    const ScopedLock lock(m_resultMutex);
    return m_results.themeFault;
}

void WeatherWorker::log(const QString& text, int level)
{
    Q_EMIT sigDebugString(text, level);
}

/// Deliberately, an id out of range reports the result of the job before it.
int WeatherWorker::perform(Job& job, int before)
{
    ++m_taken;
    m_gaveWay = false;
    const bool known =
        job.id >= weatherjob::kDecodeWeather && job.id <= weatherjob::kSearchAtPosition;
    const int result = known ? dispatch(job) : before;
    return m_gaveWay ? weathererror::kNoGrib : result;
}

void WeatherWorker::jobDone(const Job& job, int result)
{
    Q_EMIT sigFinishedJob(job.id, job.name, result);
}

int WeatherWorker::dispatch(const Job& job)
{
    switch (job.id) {
    case weatherjob::kDecodeWeather:
        return decodeWeather();
    case weatherjob::kFsuipcAll:
        return PrepareWeatherFSUIPC(job);
    case weatherjob::kFsuipcStation:
    case weatherjob::kFsuipcStationAgain:
        return prepareFsuipcStation(job);
    case weatherjob::kSimConnectAll:
        return PrepareWeatherSimConnect(job);
    case weatherjob::kSimConnectStation:
    case weatherjob::kSimConnectStationAgain:
        return prepareSimConnectStation(job);
    case weatherjob::kXPlaneRecord:
    case weatherjob::kXPlane12Record:
        return prepareXPlaneRecord(job.id == weatherjob::kXPlane12Record);
    case weatherjob::kXPlaneFiles:
        return PrepareWeatherXPlane();
    case weatherjob::kThemeFile:
        return PrepareWeatherFile(job);
    case weatherjob::kDecodeGrib:
        return decodeGrib();
    case weatherjob::kWeatherSearch:
        return weatherSearch(job);
    default:
        return SearchNearstWeather(job);
    }
}

int WeatherWorker::decodeWeather()
{
    const WeatherList list = weatherList();
    const bool taken = takeList(list);
    const bool good = taken && isGood(list);
    {
        const ScopedLock lock(m_resultMutex);
        m_results.decode = {list, taken, good};
    }
    Q_EMIT sigFinishedDecodeWeatherData();
    if (good) {
        keepForNextStart(list);
    }
    return weathererror::kNone;
}

/// A list that is refused leaves the whole store as it is.
bool WeatherWorker::takeList(const WeatherList& list)
{
    constexpr int kSynopLifeSeconds = 25200;
    const aviation::weather::WeatherBlocks blocks =
        aviation::weather::extractWeatherBlocks(list.text);
    const QStringView synops = m_settings.synopOff() ? QStringView() : blocks.synops;
    if (list.origin == WeatherList::Origin::External) {
        if (!takeExternal(list, blocks.metars, synops)) {
            return false;
        }
    } else {
        const bool isFile = list.origin == WeatherList::Origin::File;
        if (!m_store.initializeWeather(blocks.metars, storekind::kMetar,
                                       isFile ? 0 : kFewestMetars)) {
            return false;
        }
        m_store.initializeWeather(synops, storekind::kSynop);
    }
    m_store.initializeWeather(blocks.tafs, storekind::kTaf);
    if (!m_historyMode) {
        m_store.deleteOldSynops(kSynopLifeSeconds);
    }
    return true;
}

/// Only one of the two blocks has reports. Where nothing in it is understood, all stay.
bool WeatherWorker::takeExternal(const WeatherList& list, QStringView metars, QStringView synops)
{
    const bool isSynops = !synops.isEmpty();
    const bool taken = isSynops ? m_store.initializeWeather(synops, storekind::kSynop, 1)
                                : m_store.initializeWeather(metars, storekind::kMetar, 1);
    if (taken && isSynops && !list.metarsFailed) {
        m_store.initializeWeather(metars, storekind::kMetar);
    }
    if (taken && !isSynops && !list.synopsFailed) {
        m_store.initializeWeather(synops, storekind::kSynop);
    }
    return taken;
}

bool WeatherWorker::isGood(const WeatherList& list) const
{
    return list.origin == WeatherList::Origin::Live
               ? m_store.metarCount() >= kFewestMetars
               : m_store.metarCount() + m_store.synopCount() > 0;
}

/// Here and not on the main thread, since a world-wide list is some megabytes.
void WeatherWorker::keepForNextStart(const WeatherList& list)
{
    const bool whole = !list.metarsFailed && !list.synopsFailed;
    const bool fetched = list.origin == WeatherList::Origin::Live
                         || (list.origin == WeatherList::Origin::External && whole);
    if (!fetched || stopped()) {
        return;
    }
    const QString error =
        keptweather::write(keptweather::fileName(m_settings.workFolder()), list.text);
    if (!error.isEmpty()) {
        log(QStringLiteral("(WeatherWorker) - The weather can't be kept for the next start: ")
                + error,
            loglevel::kWarning);
    }
}

bool WeatherWorker::hasReportAtAircraft()
{
    const aviation::Position position = aircraftData().position;
    Metar metar;
    Synop synop;
    return m_store.SearchMetar(position, metar) || m_store.SearchSynop(position, synop);
}

int WeatherWorker::decodeGrib()
{
    m_store.initializeWeather(m_gribText, storekind::kUpperAir);
    Q_EMIT sigFinishedDecodeGribData();
    return weathererror::kNone;
}

bool WeatherWorker::searchGrib(const aviation::Position& position, Grib& grib)
{
    if (m_settings.gribOff()) {
        grib = Grib();
        return false;
    }
    return m_store.SearchGrib(position, grib);
}

bool WeatherWorker::mayDownloadGrib() const
{
    return m_gribSource != nullptr && !m_settings.gribOff() && !stopped();
}

bool WeatherWorker::mustGiveWay() const
{
    const std::uint64_t upTo = m_giveWay;
    return (upTo != 0 && m_taken <= upTo) || upperAirSource() != m_askedSource;
}

QString WeatherWorker::upperAirSource() const
{
    return QStringList{QString::number(m_settings.weatherSource()),
                       QString::number(m_settings.wxServerType()), m_settings.weatherServer(),
                       m_settings.urlExternGrib()}
        .join(QLatin1Char('\n'));
}

bool WeatherWorker::askForGrib(const aviation::Position& position, Grib& grib)
{
    m_askedSource = upperAirSource();
    m_gribSource->DownloadGrib(position, false);
    return searchGrib(position, grib);
}

void WeatherWorker::waitForGrib(const aviation::Position& position, const QString& place,
                                Grib& grib)
{
    const auto isMissing = [&grib] {
        return grib.status() == aviation::weather::gribstatus::kFresh;
    };
    bool isSaid = false;
    while (isMissing() && mayDownloadGrib() && !m_gaveWay) {
        askForGrib(position, grib);
        if (isMissing() && mayWait()) { // else the question was ended early
            isSaid = true;
            Q_EMIT sigWaitsForUpperAir(place);
            sleepUnless([this] { return !mayWait(); }, m_roundMs);
        }
        m_gaveWay = isMissing() && mayDownloadGrib() && mustGiveWay();
    }
    if (isSaid) {
        Q_EMIT sigUpperAirWaitEnded();
    }
    if (isMissing() && m_gribSource == nullptr && !m_settings.gribOff()) {
        Q_EMIT sigUpperAirMissing(place);
    }
}

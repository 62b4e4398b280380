#include "app/jobs/WeatherWorker.h"

#include "app/base/GribSource.h"
#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/SlicedSleep.h"
#include "app/jobs/WeatherJobs.h"
#include "aviation/support/ScopedLock.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherFile.h"
#include "weather/store/WeatherManager.h"

#include <exception>

using aviation::ScopedLock;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;
namespace storekind = aviation::weather::storekind;

WeatherWorker::WeatherWorker(WeatherWrapper& store, const Settings& settings,
                             GribSource* gribSource, QObject* parent)
    : QThread(parent)
    , m_store(store)
    , m_settings(settings)
    , m_gribSource(gribSource)
{
    // A job posted while the thread was on its way out would lie until the next post.
    connect(this, &QThread::finished, this, [this] {
        if (m_queue.size() > 0 && !m_stop) {
            start();
        }
    });
    // The last that the thread does of its own; join takes the same lock and so comes after it.
    connect(
        this, &QThread::finished, this, [this] { const ScopedLock lock(m_workerMutex); },
        Qt::DirectConnection);
}

WeatherWorker::~WeatherWorker()
{
    stop();
    join();
}

void WeatherWorker::join()
{
    wait();
    const ScopedLock lock(m_workerMutex);
}

void WeatherWorker::addJob(const Job& job)
{
    m_queue.add(job);
}

int WeatherWorker::queuedJobs() const
{
    return static_cast<int>(m_queue.size());
}

void WeatherWorker::stop()
{
    m_stop = true;
}

void WeatherWorker::setWeatherText(const QString& text)
{
    const ScopedLock lock(m_textMutex);
    m_weatherText = text;
}

QString WeatherWorker::weatherText()
{
    const ScopedLock lock(m_textMutex);
    return m_weatherText;
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
    return WeatherErrorText(error);
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

void WeatherWorker::log(const QString& text, int level)
{
    Q_EMIT sigDebugString(text, level);
}

void WeatherWorker::run()
{
    // Deliberately kept across jobs: an id out of range reports the result of the job before it.
    int error = weathererror::kNone;
    while (m_queue.size() > 0 && !m_stop) {
        const Job job = m_queue.takeFirst();
        log(QStringLiteral("(WeatherWorker) - Next Job ID: %1, Name: %2").arg(job.id).arg(job.name),
            loglevel::kDebug);
        if (job.id == kNoJob) {
            continue;
        }
        if (job.id >= weatherjob::kDecodeWeather && job.id <= weatherjob::kSearchAtPosition) {
            try {
                error = dispatch(job);
            } catch (const std::exception& failure) { // out of memory is all that can arrive here
                error = weathererror::kPrepare;
                log(QStringLiteral("(WeatherWorker) - Job %1 failed: %2")
                        .arg(job.id)
                        .arg(QString::fromLocal8Bit(failure.what())),
                    loglevel::kError);
            }
        }
        Q_EMIT sigFinishedJob(job.id, job.name, error);
    }
}

int WeatherWorker::dispatch(const Job& job)
{
    const ScopedLock lock(m_workerMutex);
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
    constexpr int kSynopLifeSeconds = 25200;
    const QString text = weatherText();
    const aviation::weather::WeatherBlocks blocks = aviation::weather::ExtractWeatherBlocks(text);
    m_store.initializeWeather(blocks.metars, storekind::kMetar);
    m_store.initializeWeather(m_settings.synopOff() ? QStringView() : blocks.synops,
                              storekind::kSynop);
    m_store.initializeWeather(blocks.tafs, storekind::kTaf);
    if (!m_historyMode) {
        m_store.deleteOldSynops(kSynopLifeSeconds);
    }
    Q_EMIT sigFinishedDecodeWeatherData();
    return weathererror::kNone;
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
    return m_gribSource != nullptr && !m_settings.gribOff() && !m_stop;
}

void WeatherWorker::waitForGrib(const aviation::Position& position, const QString& place,
                                Grib& grib)
{
    constexpr int kRetryPauseMs = 500; // a server that fails at once isn't asked in a tight loop
    while (grib.status() == aviation::weather::gribstatus::kFresh && mayDownloadGrib()) {
        const int result = m_gribSource->DownloadGrib(position, false);
        searchGrib(position, grib);
        if (result != gribdownload::kDone) {
            sleepUnlessStopped(kRetryPauseMs);
        }
    }
    if (grib.status() == aviation::weather::gribstatus::kFresh && m_gribSource == nullptr
        && !m_settings.gribOff())
    {
        Q_EMIT sigUpperAirMissing(place);
    }
}

void WeatherWorker::sleepUnlessStopped(int milliseconds)
{
    SleepUnless([this] { return m_stop.load(); }, milliseconds);
}

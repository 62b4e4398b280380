#include "app/Controller.h"
#include "app/base/FlightState.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/cycle/CycleRules.h"
#include "app/cycle/DirectWind.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/PreparedWeather.h"
#include "app/jobs/UpperAirWait.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/AircraftDatagrams.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "weather/output/WeatherWrapper.h"

#include <QScopedValueRollback>

void Controller::OnTimerOneSecond()
{
    if (m_stop.raised() || !IsConnected()) {
        return;
    }
    const int interval = cycle::pollInterval(m_aircraftData.heightAgl, m_aircraftData.groundSpeed,
                                             m_timerOneSecond.interval(),
                                             cycle::pollTime(m_settings.serverUpdateTimeMin()),
                                             cycle::pollTime(m_settings.serverUpdateTimeMax()));
    if (interval != m_timerOneSecond.interval()) {
        m_timerOneSecond.setInterval(interval);
    }
    if (m_connectWorker->queuedJobs() < cycle::kMostWaitingJobs && m_datagrams->takePollTurn()) {
        m_posts.toSimulator(Job(connectjob::kAircraftData, QStringLiteral("Aircraft data")));
    }
    m_view.pageData().setJobsInfo(tr("Jobs: %1").arg(m_connectWorker->queuedJobs()));
}

cycle::Simulator Controller::simulator() const
{
    return {m_connectWorker->interfaceType(), m_connectWorker->fsVersion()};
}

void Controller::OnTimerWeather()
{
    constexpr int kVisibilityMs = 11000;
    // A download from an outside server keeps the event loop running inside a tick.
    if (m_stop.raised() || m_inWeatherTick) {
        return;
    }
    const QScopedValueRollback<bool> inTick(m_inWeatherTick, true);
    if (!isAircraftThere()) {
        downloadWithoutAircraft();
        return;
    }
    // The first reading only starts the clock: the counters still say "never" then, and so the
    // first tick with an aircraft sets weather at once.
    m_counters.addElapsed(m_weatherClock.lapMs());
    const double distanceNm =
        cycle::distanceFromLastUpdate(m_aircraftData.position, m_lastUpdatePosition);
    showTimes(distanceNm);
    downloadIfDue();
    stepDirectWind();
    searchNearestIfDue();
    const bool blocked = approachBlocks();
    if (simulator().fsId == aviation::fsid::kFs2020) {
        const QString text = tr("No weather update in FS2020");
        m_view.pageData().setInfo1(text);
        m_view.OnStatusbarStatus(text);
        return;
    }
    const bool due = cycle::updateDue(m_counters.msSinceUpdate, m_settings.updateTime(), distanceNm,
                                      m_settings.range())
                     || m_updateOwed;
    const bool urgent = isUrgent();
    if ((due && !blocked) || m_forceWeatherUpdate || urgent) {
        m_counters.msSinceUrgentUpdate = urgent ? 0 : m_counters.msSinceUrgentUpdate;
        startUpdate();
    }
    if (m_counters.msSinceVisibility >= kVisibilityMs
        || m_counters.msSinceNearestSearch == cycle::kNever)
    {
        UpdateXPlaneVisibility();
    }
}

bool Controller::isAircraftThere()
{
    if (!IsConnected()) {
        m_view.setSystrayMessage(tr("wait for connect"));
        return false;
    }
    if (!m_aircraftDataValid) {
        m_view.OnStatusbarStatus(tr("Sim not ready"));
        return false;
    }
    if (!m_aircraftData.position.isKnown()) {
        m_reporting.log(QStringLiteral("(Controller Weather) - no aircraft data from fs"),
                        loglevel::kDebug);
        return false;
    }
    return true;
}

void Controller::showTimes(double distanceNm)
{
    constexpr int kMsPerSecond = 1000;
    constexpr int kShownInMinutes = 100; // seconds; above it
    constexpr int kSecondsPerMinute = 60;
    const cycle::Remaining left = cycle::untilUpdate(
        m_counters.msSinceUpdate, m_settings.updateTime(), distanceNm, m_settings.range());
    m_view.pageData().setWeatherUpdateInterval(
        tr("Weather update in %1s / %2NM").arg(left.seconds).arg(left.distanceNm));
    const int download = cycle::untilDownload(m_counters.msSinceDownload);
    if (download > 0) {
        const QString text = download > kShownInMinutes
                                 ? tr("Weather download in %1min").arg(download / kSecondsPerMinute)
                                 : tr("Weather download in %1s").arg(download);
        m_view.pageData().setInfo1(text);
        m_view.OnStatusbarStatus(text);
    }
    Q_EMIT sigProgress(m_counters.msSinceUpdate / kMsPerSecond, m_settings.updateTime(),
                       tr("Weather update in %1s/%2NM").arg(left.seconds).arg(left.distanceNm));
}

void Controller::downloadIfDue()
{
    constexpr int kMsPerSecond = 1000;
    if (m_counters.msSinceDownload / kMsPerSecond > m_settings.downloadUpdateTime()) {
        m_counters.msSinceDownload = 0; // before the download, which may take its time
        DownloadWeather(m_settings.weatherSource());
    }
}

/// The counters begin with the first aircraft, and what is shown of them as well. Until then the
/// next list comes in time all the same: a late flight mustn't begin with old reports.
void Controller::downloadWithoutAircraft()
{
    constexpr int kMsPerSecond = 1000;
    if (m_sinceDownload.elapsedMs() / kMsPerSecond > m_settings.downloadUpdateTime()) {
        DownloadWeather(m_settings.weatherSource());
    }
}

void Controller::stepDirectWind()
{
    if (cycle::stepDue(m_counters.msSinceDwc, m_counters.dwcPeriodMs)) {
        m_weatherWorker->setAircraftData(m_aircraftData);
        m_counters.msSinceDwc = 0;
        UpdateDirectWindControl();
    }
}

/// X-Plane has no wind where the last record left it to direct wind control, which has stopped.
bool Controller::isLowWindMissing() const
{
    return m_preparedWeather->isLowWindLeft()
           && cycle::windWayFor(simulator()) == cycle::WindWay::Layers && !m_directWind->sends();
}

/// The simulator lacks weather or wind, so there is nothing that an approach would protect. An
/// update may come to nothing; the next one then isn't tried at once.
bool Controller::isUrgent()
{
    constexpr int kTryAgainMs = 10000;
    if (!m_clearedOnConnect && !m_preparedWeather->isLowWindLeft()) {
        m_counters.msSinceUrgentUpdate = CycleCounters::kLongAgo;
    }
    const bool lacksWeather = (m_clearedOnConnect && hasReports()) || isLowWindMissing();
    return lacksWeather && m_counters.msSinceUrgentUpdate >= kTryAgainMs;
}

void Controller::searchNearestIfDue()
{
    constexpr int kSearchMs = 61000;
    if (m_counters.msSinceNearestSearch >= kSearchMs
        || m_counters.msSinceNearestSearch == cycle::kNever)
    {
        m_weatherWorker->setAircraftData(m_aircraftData);
        m_counters.msSinceNearestSearch = 0;
        m_posts.toWeather(
            Job(weatherjob::kSearchAtAircraft, QStringLiteral("Search nearst metar")));
    }
}

bool Controller::approachBlocks()
{
    const int phase = m_flight != nullptr ? m_flight->flightPhase() : flightphase::kNone;
    const bool approaching = phase == flightphase::kApproach || phase == flightphase::kLanding
                             || phase == flightphase::kGoAround;
    if (!approaching || !m_settings.noUpdateApproach()) {
        return false;
    }
    const QString text = tr("No Update, Approach");
    m_view.pageData().setInfo1(text);
    m_view.OnStatusbarStatus(text);
    return true;
}

bool Controller::hasReports() const
{
    return m_weather->metarCount() > 0 || m_weather->synopCount() > 0;
}

void Controller::startUpdate()
{
    m_forceWeatherUpdate = false;
    m_updateOwed = false;
    m_lastUpdatePosition = m_aircraftData.position;
    m_weatherWorker->setAircraftData(m_aircraftData);
    m_timerWeather.stop(); // until the weather is set: two cycles never overlap
    const cycle::PrepareNames names{
        m_flight != nullptr ? m_flight->destination() : QString(),
        cycle::themeFile(m_settings.interfaceType(), m_settings.tmpFolder(), m_settings.simPath())};
    const cycle::PrepareJob job =
        cycle::prepareJobFor(simulator(), m_settings.weatherMode(), names);
    if (job.wrongMode) {
        m_reporting.log(
            QStringLiteral("(Controller) - Wrong Weather mode. With FSUIPC no WeatherModefile can "
                           "be created. Please change Weather Mode or change the interface to "
                           "\"Simconnect\" or \"FSUIPC & Simconnect\"."),
            loglevel::kWarning);
    }
    m_counters.msSinceUpdate = 0;
    if (job.id != 0) {
        m_posts.toWeather(Job(job.id, job.name));
    } else {
        m_preparedWeather->takeNone(simulator());
    }
}

void Controller::updateGaveWay()
{
    m_updateOwed = true;
    resumeWeatherClock();
}

/// What is being prepared is for the simulator of before; the next one is owed as much.
void Controller::dropPrepared()
{
    if (m_preparedWeather->drop()) {
        updateGaveWay();
    }
}

/// A download that is under way starts the clock itself: its reports are worth waiting for.
void Controller::resumeWeatherClock()
{
    if (m_weatherDecoded && !m_weatherDownload->isUnderWay()) {
        m_timerWeather.start();
    }
}

/// The weather clock stands meanwhile, but the next list comes in time.
void Controller::waitsForUpperAir(const QString& place)
{
    if (!m_stop.raised()) {
        m_upperAirWait->goesOn(place);
        m_counters.addElapsed(m_weatherClock.lapMs());
        downloadIfDue();
    }
}

void Controller::UpdateDirectWindControl()
{
    const bool ready = m_weatherDecoded && m_aircraftDataValid && m_aircraftData.position.isKnown();
    m_directWind->update(simulator(), m_aircraftData, ready);
}

void Controller::UpdateXPlaneVisibility()
{
    if (m_preparedWeather->baseVisibility() == cycle::kNoVisibility
        || !cycle::hasVisibilitySteps(simulator()))
    {
        return;
    }
    const QString metres = QString::number(cycle::visibilityAt(
        m_preparedWeather->baseVisibility(), m_aircraftData.heightAgl, m_settings.visMax()));
    m_reporting.log(QStringLiteral("(WeatherManager)  set visibility xplane: %1 m").arg(metres),
                    loglevel::kDebug);
    m_posts.toSimulator(Job(connectjob::kSetVisibility, metres));
    m_counters.msSinceVisibility = 0;
}

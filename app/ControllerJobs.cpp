#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/cycle/CycleRules.h"
#include "app/cycle/DirectWind.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/MetarExport.h"
#include "app/jobs/ReportDisplay.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "app/jobs/XPlaneFiles.h"
#include "aviation/Synop.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "weather/output/WeatherWrapper.h"

#include <QFileInfo>

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

constexpr int kSettleMs = 1000; // written files rest before the simulator is told to load them

/// The layer that leaves the low wind of X-Plane to direct wind control.
XPlaneWindLayer emptyWindLayer()
{
    XPlaneWindLayer layer;
    layer.Speed = -1.0F;
    layer.Marker = -100.0F;
    return layer;
}

} // namespace

void Controller::OnJobWeatherWorkerFinishedDecodeWeatherdata()
{
    constexpr std::size_t kFewestMetars = 10;
    if (m_stop.raised()) {
        return;
    }
    weatherDecoded = true;
    log(QStringLiteral("(WeatherManager) finished initialization of weather data: %1 Metars, "
                       "additional WX:%2")
            .arg(m_weather->metarCount())
            .arg(m_weather->synopCount()),
        loglevel::kNotification);
    if (m_weather->metarCount() < kFewestMetars) {
        m_weatherDownload->tryAnotherSource();
    }
    m_view.OnProgressBar(0, 0, QString());
    if (!IsConnected()) {
        m_view.OnStatusbarStatus(tr("wait for connection to FS"));
    }
    timerWeather.start();
    log(QStringLiteral("(Controller Weather) - timer weather started"), loglevel::kDebug);
    m_view.pageWeather().OnEnableGetMetarButton(true);
    const QString folder = m_settings.exportMetarFile();
    if (!folder.isEmpty()) {
        exportMetars(folder, m_weather->getMetars(), reporting().log, m_dialogs);
    }
}

void Controller::OnJobWeatherWorkerFinished(int job, QString jobname, int error)
{
    if (m_stop.raised()) {
        return;
    }
    switch (job) {
    case weatherjob::kFsuipcAll:
    case weatherjob::kFsuipcStation:
    case weatherjob::kFsuipcStationAgain:
        setFsuipcWeather();
        break;
    case weatherjob::kSimConnectAll:
    case weatherjob::kSimConnectStation:
    case weatherjob::kSimConnectStationAgain:
        setSimConnectWeather();
        break;
    case weatherjob::kXPlaneRecord:
    case weatherjob::kXPlane12Record:
        setXPlaneRecord(job == weatherjob::kXPlane12Record);
        break;
    case weatherjob::kXPlaneFiles:
        setXPlaneFiles();
        break;
    case weatherjob::kThemeFile:
        setThemeFile(jobname, error);
        break;
    case weatherjob::kDecodeGrib:
        timerWeather.start();
        log(QStringLiteral("(WeatherManager)  Grib data decoded"), loglevel::kNotification);
        break;
    case weatherjob::kSearchForDwc:
        takeDirectWindReports(error);
        break;
    case weatherjob::kSearchAtStation:
        m_reportDisplay->showRequested(jobname, error, aircraftData.position);
        break;
    case weatherjob::kSearchAtAircraft:
        m_reportDisplay->showAtAircraft(error, aircraftData.position);
        break;
    default: // the decode has its own signal; results of the other searches are taken by nobody
        break;
    }
    Q_EMIT sigFinishedJob(job, jobname);
}

void Controller::takeDirectWindReports(int error)
{
    if (error != weathererror::kNone) {
        return; // the wind goes on with the reports of before
    }
    Metar metar;
    Synop synop;
    Grib grib;
    m_weatherWorker->GetSearchResult(metar, synop, grib);
    m_directWind->takeReports(metar, synop, grib);
}

void Controller::showWeatherUpdate()
{
    m_view.setSystrayMessage(tr("update weather in FS"));
}

void Controller::setFsuipcWeather()
{
    log(QStringLiteral("(WeatherManager)  Weather FSUIPC created"), loglevel::kNotification);
    showWeatherUpdate();
    m_connectWorker->setWeatherRecords(m_weatherWorker->fsuipcRecords());
    postConnectJob(Job(connectjob::kSetWeather, QStringLiteral("Set FSUIPC Weather")));
}

void Controller::setSimConnectWeather()
{
    log(QStringLiteral("(WeatherManager)  Weather SimConnect created"), loglevel::kNotification);
    m_connectWorker->setMetars(m_weatherWorker->simConnectStrings());
    showWeatherUpdate();
    postConnectJob(Job(connectjob::kSetWeather, QStringLiteral("Set SimConnect Weather")));
}

void Controller::setXPlaneRecord(bool xplane12)
{
    showWeatherUpdate();
    log(xplane12 ? QStringLiteral("(WeatherManager)  Weather XPlane12 created")
                 : QStringLiteral("(WeatherManager)  Weather Xplane created"),
        loglevel::kNotification);
    sleepUnlessStopped(kSettleMs);
    XPlaneWeather record = m_weatherWorker->xplaneRecord();
    if (m_settings.fsWindDwc() && record.Winds.size() > 1) {
        record.Winds[1] = emptyWindLayer();
    }
    xplaneBaseVisibility = record.Vis;
    postConnectJob(
        xplane12 ? Job(connectjob::kSetXPlane12Weather, record, QStringLiteral("Set XPWeather12"))
                 : Job(connectjob::kSetXPlaneWeather, record, QStringLiteral("Set XPWeather")));
}

void Controller::setXPlaneFiles()
{
    showWeatherUpdate();
    log(QStringLiteral("(WeatherManager)  Weather Xplane created"), loglevel::kNotification);
    sleepUnlessStopped(kSettleMs);
    if (hasLocalXPlane()) {
        writeXPlaneFiles();
        return;
    }
    m_connectWorker->setMetars(m_weatherWorker->xplaneMetarLines());
    m_connectWorker->setWinds(m_weatherWorker->xplaneWindLines());
    postConnectJob(Job(connectjob::kSetXPlaneFiles, QStringLiteral("Set XPWeather")));
    DownloadXPlaneGlobalWind();
    xplaneBaseVisibility = cycle::kNoVisibility;
}

bool Controller::hasLocalXPlane() const
{
    constexpr int kShortestPath = 3;
    const QString path = m_settings.simPath();
    const QFileInfo folder(path);
    return path.size() >= kShortestPath && folder.isDir() && folder.isWritable();
}

/// Where a file can't be written the weather clock stays stopped, and only METAR.rwx says so; the
/// next download starts it again. Both are kept.
void Controller::writeXPlaneFiles()
{
    QString folder = m_settings.simPath();
    if (simulator().fsId == aviation::fsid::kXPlane12) {
        folder += QStringLiteral("/Output/real weather");
    }
    const XPlaneFilesResult result = WriteXPlaneFiles(folder, m_weatherWorker->xplaneMetarLines(),
                                                      m_weatherWorker->xplaneWindLines());
    if (result.written) {
        DownloadXPlaneGlobalWind(); // the event loop runs on meanwhile
        timerWeather.start();
    } else if (result.failedFile.endsWith(QStringLiteral("/METAR.rwx"))) {
        log(QStringLiteral("(WeatherManager)  Weather Xplane: Can not open File: ")
                + result.failedFile.toHtmlEscaped(),
            loglevel::kError);
    }
}

/// Without a file there is nothing to set, and the weather clock stays stopped until the next
/// download; that is kept.
void Controller::setThemeFile(const QString& name, int error)
{
    if (error != weathererror::kThemeWritten) {
        log(QStringLiteral("(Controller) - The weather theme isn't set. Check the simulator's "
                           "folder in the settings, then choose \"Download WX\"."),
            loglevel::kError);
        return;
    }
    showWeatherUpdate();
    log(QStringLiteral("(WeatherManager)  Weather Model File created"), loglevel::kNotification);
    sleepUnlessStopped(kSettleMs);
    postConnectJob(Job(connectjob::kSetTheme, name + QStringLiteral(".WTB")));
}

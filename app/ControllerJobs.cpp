#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/base/UserDialogs.h"
#include "app/cycle/CycleRules.h"
#include "app/cycle/DirectWind.h"
#include "app/cycle/ReportChoice.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "app/jobs/XPlaneFiles.h"
#include "aviation/support/Clock.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "weather/output/WeatherWrapper.h"

#include <QFileInfo>
#include <QSaveFile>

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

bool writeMetars(const QString& name, const std::vector<Metar>& metars, QString& error)
{
    QSaveFile file(name);
    bool good = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    for (const Metar& metar : metars) {
        const QByteArray line = QString::fromStdWString(metar.reportText()).toUtf8() + '\n';
        good = good && file.write(line) == line.size();
    }
    good = good && file.commit();
    error = file.errorString();
    return good;
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
    exportMetars();
}

void Controller::exportMetars()
{
    const QString folder = m_settings.exportMetarFile();
    if (folder.isEmpty()) {
        return;
    }
    const QString name = folder + QStringLiteral("/metar.txt");
    QString error;
    if (writeMetars(name, m_weather->getMetars(), error)) {
        log(QStringLiteral("(Controller Weather) - Export Metar, file written ")
                + name.toHtmlEscaped(),
            loglevel::kNotification);
        return;
    }
    log(QStringLiteral("(Controller Weather) - Export Metar, Can not open file. ")
            + error.toHtmlEscaped(),
        loglevel::kError);
    m_dialogs.critical(QStringLiteral("Cirrilon - Export Metar"),
                       QStringLiteral("Can not open file.\n") + error);
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
        displayRequested(jobname, error);
        break;
    case weatherjob::kSearchAtAircraft:
        displayAtAircraft(error);
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

void Controller::displayAtAircraft(int error)
{
    if (error != weathererror::kNone) {
        DoDisplayMetar(Metar(L"NO WEATHER"));
        return;
    }
    Metar metar;
    Synop synop;
    Grib grib;
    m_weatherWorker->GetSearchResult(metar, synop, grib);
    DoDisplayMetar(reportchoice::ForAircraft(metar, synop, aircraftData.position,
                                             aviation::Clock::Current().NowUtc()));
    OnTableGribUpdate(grib);
}

void Controller::displayRequested(const QString& icao, int error)
{
    if (error == weathererror::kNoWeather) {
        DoDisplayMetar(Metar(L"NO WEATHER"));
        return;
    }
    Metar metar;
    Synop synop;
    Grib grib;
    m_weatherWorker->GetSearchResult(metar, synop, grib);
    metar = reportchoice::MetarForRequest(metar, synop, error);
    const QString taf =
        m_settings.showTaf() ? m_weather->GetTaf(QString::fromStdWString(metar.icao())) : QString();
    const reportchoice::Request request{icao.toStdWString(), error, taf.toStdWString()};
    std::vector<Metar> reports =
        reportchoice::ForRequest(metar, synop, aircraftData.position, request);
    const Metar last = reports.back();
    reports.pop_back();
    for (const Metar& report : reports) {
        DoDisplayMetar(report);
    }
    if (error != weathererror::kNone) {
        log(QStringLiteral("(WeatherWorker) - Error: %1 - %2")
                .arg(error)
                .arg(WeatherWorker::errorText(error)),
            loglevel::kWarning);
    }
    DoDisplayMetar(last);
    OnTableGribUpdate(grib);
}

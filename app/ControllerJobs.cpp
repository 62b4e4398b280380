#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/base/UserDialogs.h"
#include "app/cycle/DirectWind.h"
#include "app/cycle/ReportChoice.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/MetarExport.h"
#include "app/jobs/PreparedWeather.h"
#include "app/jobs/ReportDisplay.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/Synop.h"
#include "weather/output/WeatherWrapper.h"

#include <utility>

void Controller::OnJobWeatherWorkerFinishedDecodeWeatherdata()
{
    if (m_stop.raised()) {
        return;
    }
    const DecodeOutcome outcome = m_weatherWorker->decodeOutcome();
    const bool isAsked = m_weatherDownload->isAsked();
    m_weatherDecoded = true;
    const QString text =
        outcome.taken
            ? QStringLiteral("(WeatherManager) finished initialization of weather data: %1 Metars, "
                             "additional WX:%2")
            : QStringLiteral("(WeatherManager) - the new list has too few reports, those of before "
                             "stay: %1 Metars, additional WX:%2");
    m_reporting.log(text.arg(m_weather->metarCount()).arg(m_weather->synopCount()),
                    outcome.taken ? loglevel::kNotification : loglevel::kWarning);
    if (outcome.taken && std::exchange(m_reportsMissing, false)) {
        // What waited for reports is due at once.
        m_counters.msSinceUpdate = cycle::overdue(m_settings.updateTime());
    }
    m_weatherDownload->takeOutcome(outcome);
    m_view.OnProgressBar(0, 0, QString());
    if (!IsConnected()) {
        m_view.OnStatusbarStatus(tr("wait for connection to FS"));
    }
    if (const QString kept = m_weatherDownload->keptText(); !kept.isEmpty()) {
        m_view.OnStatusbarStatus(kept);
    }
    startWeatherClock();
    m_view.pageWeather().OnEnableGetMetarButton(true);
    exportMetarFile(isAsked);
}

void Controller::exportMetarFile(bool isAsked)
{
    const QString folder = m_settings.exportMetarFile();
    const QString error = folder.isEmpty()
                              ? QString()
                              : exportMetars(folder, m_weather->getMetars(), m_reporting.log);
    if (error.isEmpty()) {
        m_view.clearNotice(Notice::Export);
        return;
    }
    const QString title = tr("Cirrilon - Export Metar");
    const QString text = tr("Can not open file.\n%1").arg(error);
    m_view.showNotice(Notice::Export, title + QStringLiteral(": ") + text);
    if (isAsked) {
        m_dialogs.critical(title, text);
    }
}

void Controller::OnJobWeatherWorkerFinished(int job, QString jobname, int error)
{
    if (m_stop.raised()) {
        return;
    }
    switch (job) {
    case weatherjob::kDecodeWeather: // a good end has its own signal
        if (error != weathererror::kNone) {
            m_weatherDownload->takeDecodeFailure();
        }
        break;
    case weatherjob::kDecodeGrib:
        m_timerWeather.start();
        m_reporting.log(QStringLiteral("(WeatherManager)  Grib data decoded"),
                        loglevel::kNotification);
        break;
    case weatherjob::kSearchForDwc:
        takeDirectWindReports(error);
        break;
    case weatherjob::kSearchAtStation:
        m_reportDisplay->showRequested(jobname, error, m_aircraftData.position);
        break;
    case weatherjob::kSearchAtAircraft:
        m_reportDisplay->showAtAircraft(m_aircraftData.position);
        break;
    default: // prepared weather; other results are taken by nobody
        takePrepared(job, jobname, error);
        break;
    }
    Q_EMIT sigFinishedJob(job, jobname);
}

void Controller::takePrepared(int job, const QString& name, int error)
{
    if (error == weathererror::kNoWeather && weatherjob::isPrepare(job)) {
        goOnWithLastWeather();
        return;
    }
    const bool done = error == weathererror::kNone || error == weathererror::kThemeWritten;
    if (done && weatherjob::isPrepare(job)) {
        m_reportsMissing = false;
    }
    m_preparedWeather->take(job, name, error);
}

/// Said once, until reports have come in or weather is prepared elsewhere.
void Controller::goOnWithLastWeather()
{
    if (!std::exchange(m_reportsMissing, true)) {
        m_reporting.log(
            QStringLiteral("(Controller) - There is no report for this place, the weather in the "
                           "simulator stays as it is."),
            loglevel::kWarning);
    }
    startWeatherClock();
}

void Controller::takeDirectWindReports(int error)
{
    if (error != weathererror::kNone) {
        return; // the wind goes on with the reports of before
    }
    aviation::weather::Metar metar;
    aviation::weather::Synop synop;
    aviation::weather::Grib grib;
    m_weatherWorker->GetSearchResult(metar, synop, grib);
    if (!metar.isKnown()) {
        metar = reportchoice::metarOfSynop(synop);
    }
    m_directWind->takeReports(metar, synop, grib);
}

void Controller::OnGetMetarClicked(QString icao)
{
    m_reportDisplay->request(icao);
}

void Controller::DoDisplayMetar(const aviation::weather::Metar& metar)
{
    m_reportDisplay->show(metar);
}

void Controller::OnTableGribUpdate(aviation::weather::Grib grib)
{
    m_view.pageWeather().OnTableGribUpdate(grib);
}

void Controller::OnShowMetarStationsFailed()
{
    m_reporting.log(
        QStringLiteral("(WeatherManager) - Metar stations failed: ")
            + m_weather->failedMetarStations().join(QStringLiteral(", ")).toHtmlEscaped(),
        loglevel::kNotification);
}

void Controller::OnShowSynopStationsFailed()
{
    m_reporting.log(
        QStringLiteral("(WeatherManager) - Synop stations failed: ")
            + m_weather->failedSynopStations().join(QStringLiteral(", ")).toHtmlEscaped(),
        loglevel::kNotification);
}

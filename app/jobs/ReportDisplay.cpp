#include "app/jobs/ReportDisplay.h"

#include "app/base/GribSource.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "app/cycle/ReportChoice.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/Clock.h"
#include "sim/ConnectJobs.h"
#include "weather/output/WeatherWrapper.h"

#include <QScopedValueRollback>

#include <utility>
#include <vector>

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

ReportDisplay::ReportDisplay(Parts parts) : m_parts(std::move(parts)) {}

void ReportDisplay::show(const Metar& metar)
{
    m_parts.view.pageWeather().displayMetar(metar);
    const QString text = QString::fromStdWString(metar.reportText());
    if (m_parts.isConnected() && text != m_lastShownMetarText) {
        m_parts.posts.toSimulator(Job(connectjob::kSendText, text));
    }
    m_lastShownMetarText = text;
}

/// Whatever else the search has missed: a report that is there is shown.
void ReportDisplay::showAtAircraft(const aviation::Position& aircraft)
{
    Metar metar;
    Synop synop;
    Grib grib;
    m_parts.worker.GetSearchResult(metar, synop, grib);
    if (!metar.isKnown() && !synop.isKnown()) {
        show(Metar(L"NO WEATHER"));
        return;
    }
    show(reportchoice::forAircraft(metar, synop, aircraft, aviation::Clock::current().NowUtc()));
    m_parts.view.pageWeather().OnTableGribUpdate(grib);
}

void ReportDisplay::showRequested(const QString& icao, int error,
                                  const aviation::Position& aircraft)
{
    Metar metar;
    Synop synop;
    Grib grib;
    m_parts.worker.GetSearchResult(metar, synop, grib);
    if (!metar.isKnown() && !synop.isKnown()) {
        show(Metar(L"NO WEATHER"));
        return;
    }
    metar = reportchoice::metarForRequest(metar, synop, error);
    const QString taf = m_parts.settings.showTaf()
                            ? m_parts.store.GetTaf(QString::fromStdWString(metar.icao()))
                            : QString();
    const reportchoice::Request request{icao.toStdWString(), error, taf.toStdWString()};
    std::vector<Metar> reports = reportchoice::forRequest(metar, synop, aircraft, request);
    const Metar last = reports.back();
    reports.pop_back();
    for (const Metar& report : reports) {
        show(report);
    }
    if (error != weathererror::kNone) {
        m_parts.log(QStringLiteral("(WeatherWorker) - Error: %1 - %2")
                        .arg(error)
                        .arg(WeatherWorker::errorText(error)),
                    loglevel::kWarning);
    }
    show(last);
    m_parts.view.pageWeather().OnTableGribUpdate(grib);
}

void ReportDisplay::request(const QString& icao)
{
    m_requestedIcao = icao.toUpper();
    if (m_serving) {
        return;
    }
    const QScopedValueRollback<bool> serving(m_serving, true);
    while (m_requestedIcao && !m_parts.stop.raised()) {
        serve(*std::exchange(m_requestedIcao, std::nullopt));
    }
}

void ReportDisplay::serve(const QString& icao)
{
    constexpr int kShortestIcao = 4;
    aviation::weather::Station station;
    const bool known = icao.size() >= kShortestIcao && m_parts.store.getStation(icao, station);
    m_parts.view.pageWeather().OnBackgroundIcao(icao, known);
    if (known) {
        searchGribAt(station);
        m_parts.worker.giveWay(); // the search mustn't lie behind a job that waits
        m_parts.posts.toWeather(Job(weatherjob::kSearchAtStation, icao));
    }
}

void ReportDisplay::searchGribAt(const aviation::Position& position)
{
    Grib grib;
    if (m_parts.settings.gribOff() || m_parts.store.SearchGrib(position, grib)) {
        return;
    }
    if (m_parts.gribSource.DownloadGrib(position, false) == gribdownload::kFailed) {
        m_parts.log(QStringLiteral("(Controller) - Grib not found"), loglevel::kWarning);
    }
}

#include "app/base/GribSource.h"
#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/ScopedLock.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/output/XPlaneFileText.h"
#include "weather/output/XPlaneRecord.h"

#include <algorithm>

using aviation::Position;
using aviation::ScopedLock;
using aviation::weather::Station;

WeatherWorker::Reports WeatherWorker::reportsForXPlane(const Position& position)
{
    Reports reports;
    reports.metarFound = m_store.SearchMetar(position, reports.metar);
    reports.synopFound = m_store.SearchSynop(position, reports.synop);
    const QString place =
        QStringLiteral("%1,%2").arg(position.latitude()).arg(position.longitude());
    if (!reports.synopFound) {
        log(QStringLiteral("(WeatherWorker - no synop found for %1").arg(place),
            loglevel::kNotification);
    } else if (reports.synop.status() != aviation::weather::synopstatus::kDecoded) {
        log(QStringLiteral("(WeatherWorker) - %1, %2, %3")
                .arg(QString::fromStdWString(reports.synop.icao()))
                .arg(reports.synop.status())
                .arg(QString::fromStdWString(reports.synop.GetMessage())),
            loglevel::kError);
    }
    searchGrib(position, reports.grib);
    if (reports.grib.status() == aviation::weather::gribstatus::kFresh) {
        if (mayDownloadGrib()) {
            m_gaveWay = !askForGrib(position, reports.grib) && mayDownloadGrib() && mustGiveWay();
        } else if (m_gribSource == nullptr && !m_settings.gribOff()) {
            Q_EMIT sigUpperAirMissing(place);
        }
    }
    if (!m_settings.gribOff() && reports.grib.Decode() != aviation::weather::gribstatus::kDecoded) {
        log(QStringLiteral("(WeatherWorker) - Grib Error: %1").arg(reports.grib.status()),
            loglevel::kError);
    }
    return reports;
}

int WeatherWorker::prepareXPlaneRecord(bool xplane12)
{
    const Position position = aircraftData().position;
    if (!position.isKnown()) {
        return weathererror::kNoPosition;
    }
    if (!hasReportAtAircraft()) {
        return weathererror::kNoWeather;
    }
    log(QStringLiteral("(Controller Weather) - Generate Weather XPlane, Pos:%1,%2")
            .arg(position.latitude())
            .arg(position.longitude()),
        loglevel::kNotification);
    const Reports reports = reportsForXPlane(position);
    if (isGivenUp()) {
        return weathererror::kPrepare;
    }
    CompositionContext context = m_store.compositionContext();
    XPlaneWeather record;
    GenerateXPlaneWeather(reports.metar, reports.synop, reports.grib,
                          xplane12 ? XPlaneGeneration::Twelve : XPlaneGeneration::Eleven, record,
                          context);
    const ScopedLock lock(m_resultMutex);
    m_results.xplaneRecord = std::move(record);
    return weathererror::kNone;
}

void WeatherWorker::appendXPlaneLines(const Station& station)
{
    Reports reports;
    reports.metarFound = m_store.SearchMetar(station, reports.metar);
    reports.synopFound = m_store.SearchSynop(station, reports.synop);
    if (!reports.any()) {
        return;
    }
    searchGrib(station, reports.grib);
    waitForGrib(station, QString::fromStdWString(station.icao()), reports.grib);
    CompositionContext context = m_store.compositionContext();
    std::string metarText;
    XPlaneMetarText(station, reports.metar, reports.synop, reports.grib, metarText, context);
    std::string windsText;
    XPlaneWindsText(station, reports.metar, reports.synop, reports.grib, windsText);
    const ScopedLock lock(m_resultMutex);
    m_results.xplaneMetarLines.push_back(QString::fromStdString(metarText));
    m_results.xplaneWindLines.push_back(QString::fromStdString(windsText));
}

int WeatherWorker::PrepareWeatherXPlane()
{
    {
        const ScopedLock lock(m_resultMutex);
        m_results.xplaneMetarLines.clear();
        m_results.xplaneWindLines.clear();
    }
    const Position aircraft = aircraftData().position;
    if (!aircraft.isKnown()) {
        return weathererror::kNoPosition;
    }
    if (!hasReportAtAircraft()) {
        return weathererror::kNoWeather;
    }
    Q_EMIT sigProgress(0, 1, QStringLiteral("Prepare Weather XPlane"));
    Stations stations;
    m_store.StationsInRange(aircraft, m_settings.range(), stations);
    for (Station& station : stations) {
        station.setDistance(station.DistanceTo(aircraft));
    }
    std::stable_sort(stations.begin(), stations.end(), [](const Station& a, const Station& b) {
        return a.distance() < b.distance();
    });
    const auto total = static_cast<qlonglong>(stations.size());
    qlonglong count = 0;
    for (const Station& station : stations) {
        if (isGivenUp()) {
            break;
        }
        ++count;
        Q_EMIT sigProgress(count, total,
                           QStringLiteral("Prepare Weather Xplane %1 of %2, %3")
                               .arg(count)
                               .arg(total)
                               .arg(QString::fromStdWString(station.icao())));
        appendXPlaneLines(station);
    }
    const ScopedLock lock(m_resultMutex);
    return m_results.xplaneMetarLines.empty() ? weathererror::kNoWeather : weathererror::kNone;
}

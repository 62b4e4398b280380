#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/Clock.h"
#include "aviation/support/ScopedLock.h"
#include "weather/output/WeatherWrapper.h"

using aviation::Position;

void WeatherWorker::logThemeSynopError(const Reports& reports)
{
    if (reports.synopFound && reports.synop.status() != aviation::weather::synopstatus::kDecoded) {
        log(QStringLiteral("(Controller Weather) - %1, %2, %3")
                .arg(QString::fromStdWString(reports.synop.reportText()))
                .arg(reports.synop.status())
                .arg(QString::fromStdWString(reports.synop.icao())),
            loglevel::kError);
    }
}

void WeatherWorker::logThemeGribError(const Reports& reports)
{
    if (!m_settings.gribOff() && reports.grib.status() != aviation::weather::gribstatus::kDecoded) {
        log(QStringLiteral("(Controller Weather) - Grib Error: %1").arg(reports.grib.status()),
            loglevel::kError);
    }
}

ThemeStation WeatherWorker::themeStation(const Position& place, double magneticVariation)
{
    constexpr double kSynopStandsInNm = 20.0;
    Reports reports;
    reports.metarFound = m_store.SearchMetar(place, reports.metar);
    reports.synopFound = m_store.SearchSynop(place, reports.synop);
    logThemeSynopError(reports);
    if (reports.metar.DistanceTo(place) > kSynopStandsInNm
        && reports.synop.DistanceTo(place) < kSynopStandsInNm)
    {
        reports.synop.ToMetar(reports.metar);
    }
    searchGrib(place, reports.grib);
    waitForGrib(place, QStringLiteral("%1,%2").arg(place.latitude()).arg(place.longitude()),
                reports.grib);
    logThemeGribError(reports);
    NewWeather record;
    m_store.GenerateWeather(reports.metar, reports.synop, reports.grib, record, magneticVariation,
                            place);
    // The record holds the pressure of the report that was used in the end, in sixteenths of hPa.
    return makeThemeStation(record, static_cast<float>(record.Press) / 16.0F, place);
}

int WeatherWorker::PrepareWeatherFile(const Job& job)
{
    constexpr int kPauseMs = 20;    // lets the rest of the program breathe during a large grid
    constexpr int kSettleMs = 2000; // the simulator must find the file settled
    log(QStringLiteral("NewJobPrepareWeatherFile Filename: ") + job.name, loglevel::kDebug);
    const aviation::structs::AircraftData aircraft = aircraftData();
    if (!aircraft.position.isKnown()) {
        return weathererror::kNoPosition;
    }
    if (!hasReportAtAircraft()) {
        return weathererror::kNoWeather;
    }
    int cells = 0;
    const std::vector<Position> places =
        themeGridPositions(aircraft.position, m_settings.range(), cells);
    std::vector<ThemeStation> stations;
    const auto total = static_cast<qlonglong>(places.size());
    for (const Position& place : places) {
        if (isGivenUp()) {
            return weathererror::kPrepare;
        }
        const qlonglong count = static_cast<qlonglong>(stations.size()) + 1;
        log(QStringLiteral("(Controller Weather) - Generate Weather %1 from %2")
                .arg(count)
                .arg(total),
            loglevel::kDebug);
        Q_EMIT sigProgress(count, total,
                           QStringLiteral("Prepare Weather Model %1 of %2, Lat:%3, Lon:%4")
                               .arg(count)
                               .arg(total)
                               .arg(place.latitude())
                               .arg(place.longitude()));
        stations.push_back(themeStation(place, static_cast<double>(aircraft.magneticVariation)));
        sleepUnlessStopped(kPauseMs);
    }
    if (isGivenUp()) {
        return weathererror::kPrepare; // the last place has no upper-air data
    }
    ThemeGrid grid = makeThemeGrid(std::move(stations), cells);
    keepNearestStation(m_previousGrid, grid, aircraft.position);
    m_previousGrid = grid;
    QString fault;
    const bool written = WriteTheme(grid, job.name, fault);
    {
        const aviation::ScopedLock lock(m_resultMutex);
        m_results.themeFault = fault;
    }
    if (!written) {
        log(QStringLiteral("(Controller Weather) Can not write File to FS"), loglevel::kError);
        return weathererror::kCannotCreateFile;
    }
    sleepUnlessStopped(kSettleMs);
    return weathererror::kThemeWritten;
}

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/jobs/SimulatorStations.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/ScopedLock.h"
#include "weather/output/ObservationString.h"
#include "weather/output/WeatherWrapper.h"

#include <utility>

using aviation::ScopedLock;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Station;
using aviation::weather::Synop;

namespace {

const QString kGlobalStation = QStringLiteral("GLOB");

QString icaoOf(const Station& station)
{
    return QString::fromStdWString(station.icao());
}

} // namespace

WeatherWorker::Reports WeatherWorker::reportsForStation(const Station& station)
{
    Reports reports;
    reports.metarFound = m_store.SearchMetar(station, reports.metar);
    if (!station.icao().empty()) {
        reports.metar.setIcao(station.icao());
    }
    reports.synopFound = m_store.SearchSynop(station, reports.synop);
    searchGrib(station, reports.grib);
    waitForGrib(station, icaoOf(station), reports.grib);
    return reports;
}

void WeatherWorker::GenerateStationRecord(const Station& station, NewWeather& record,
                                          double magneticVariation)
{
    stationRecord(station, record, magneticVariation);
}

bool WeatherWorker::stationRecord(const Station& station, NewWeather& record,
                                  double magneticVariation)
{
    const Reports reports = reportsForStation(station);
    record = NewWeather();
    m_store.GenerateWeather(reports.metar, reports.synop, reports.grib, record, magneticVariation,
                            station);
    return reports.any();
}

void WeatherWorker::forEachStation(const Job& job, const QString& title, const StationStep& step)
{
    constexpr int kListIgnoredUpTo = 10; // entries; so short a list filters nothing
    Q_EMIT sigProgress(0, 1, title);
    const SimulatorStations known = readSimulatorStations(m_settings.simPath());
    for (const QString& error : known.errors) {
        log(error, loglevel::kError);
    }
    log(QStringLiteral("ICAOS: %1").arg(known.count), loglevel::kDebug);
    Stations stations;
    m_store.StationsInRange(aircraftData().position, m_settings.range(), stations);
    Station destination;
    if (!job.name.isEmpty() && m_store.getStation(job.name, destination)) {
        stations.push_back(destination);
    }
    const auto total = static_cast<qlonglong>(stations.size());
    qlonglong count = 0;
    for (const Station& station : stations) {
        if (isGivenUp()) {
            return;
        }
        const QString icao = icaoOf(station);
        ++count;
        Q_EMIT sigProgress(count, total,
                           title + QStringLiteral(" %1 of %2, %3").arg(count).arg(total).arg(icao));
        if (known.count > kListIgnoredUpTo && !known.icaos.contains(icao)) {
            log(QStringLiteral("Remove weather from list %1").arg(icao), loglevel::kNotification);
            continue;
        }
        step(station);
    }
}

int WeatherWorker::PrepareWeatherFSUIPC(const Job& job)
{
    {
        const ScopedLock lock(m_resultMutex);
        m_results.fsuipcRecords.clear();
    }
    if (!aircraftData().position.isKnown()) {
        return weathererror::kNoPosition;
    }
    if (!hasReportAtAircraft()) {
        return weathererror::kNoWeather;
    }
    std::vector<NewWeather> records;
    forEachStation(job, QStringLiteral("Prepare Weather FSUIPC"), [&](const Station& station) {
        NewWeather record;
        if (stationRecord(station, record, 0.0)) {
            records.push_back(record);
        }
    });
    if (!records.empty()) {
        NewWeather global = records.front();
        global.setIcao(kGlobalStation.toStdWString());
        records.insert(records.begin(), global);
    }
    const ScopedLock lock(m_resultMutex);
    m_results.fsuipcRecords = std::move(records);
    return weathererror::kNone;
}

int WeatherWorker::prepareFsuipcStation(const Job& job)
{
    Q_EMIT sigProgress(0, 1, QStringLiteral("Prepare Weather FSUIPC"));
    Station station;
    if (m_store.getStation(job.name, station)) {
        NewWeather record;
        if (!stationRecord(station, record, 0.0)) {
            return weathererror::kNoWeather;
        }
        const ScopedLock lock(m_resultMutex);
        m_results.fsuipcRecords.push_back(record);
    }
    return weathererror::kNone;
}

bool WeatherWorker::prepareSimConnectString(const Station& station)
{
    const Reports reports = reportsForStation(station);
    if (!reports.any()) {
        return false;
    }
    NewWeather record;
    m_store.GenerateWeather(reports.metar, reports.synop, reports.grib, record, 0.0, station);
    std::string text = MetarString(reports.metar, reports.synop, reports.grib, record);
    relabelObservation(text, station.icao());
    const ScopedLock lock(m_resultMutex);
    m_results.simConnectStrings.push_back(QString::fromStdString(text));
    return true;
}

int WeatherWorker::PrepareWeatherSimConnect(const Job& job)
{
    {
        const ScopedLock lock(m_resultMutex);
        m_results.simConnectStrings.clear();
    }
    if (!aircraftData().position.isKnown()) {
        return weathererror::kNoPosition;
    }
    if (!hasReportAtAircraft()) {
        return weathererror::kNoWeather;
    }
    forEachStation(job, QStringLiteral("Prepare Weather SimConnect"),
                   [this](const Station& station) { prepareSimConnectString(station); });
    const ScopedLock lock(m_resultMutex);
    std::vector<QString>& strings = m_results.simConnectStrings;
    if (!strings.empty()) {
        strings.insert(strings.begin(),
                       QString(strings.front()).replace(0, kGlobalStation.size(), kGlobalStation));
    }
    return weathererror::kNone;
}

int WeatherWorker::prepareSimConnectStation(const Job& job)
{
    if (!aircraftData().position.isKnown()) {
        return weathererror::kNoPosition;
    }
    Q_EMIT sigProgress(0, 1, QStringLiteral("Prepare Weather SimConnect"));
    Station station;
    const bool missing = m_store.getStation(job.name, station) && !prepareSimConnectString(station);
    return missing ? weathererror::kNoWeather : weathererror::kNone;
}

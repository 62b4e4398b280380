#include "app/base/GribSource.h"
#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ScopedLock.h"
#include "weather/output/WeatherWrapper.h"

#include <QStringList>

using aviation::Position;
using aviation::ScopedLock;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Station;
using aviation::weather::Synop;

namespace {

double numberFrom(const QString& text)
{
    return aviation::numberFromText(text.toStdWString());
}

/// Criteria of the weather search, in the order of the fields in the job's name.
struct SearchCriteria
{
    double minimumWind;       ///< knots
    double maximumWind;       ///< knots
    double minimumVisibility; ///< metres
    double maximumVisibility; ///< metres
    std::wstring weather;
    std::wstring icaoPrefix;
};

bool matches(const Metar& metar, const SearchCriteria& criteria)
{
    const double speed = static_cast<double>(metar.wind().Speed);
    if (speed < criteria.minimumWind || speed > criteria.maximumWind) {
        return false;
    }
    if (metar.visibility() < criteria.minimumVisibility
        || metar.visibility() > criteria.maximumVisibility)
    {
        return false;
    }
    // One letter alone filters nothing.
    if (criteria.weather.size() >= 2 && !metar.phenomenaContain(criteria.weather)) {
        return false;
    }
    return metar.icao().compare(0, criteria.icaoPrefix.size(), criteria.icaoPrefix) == 0;
}

} // namespace

bool WeatherWorker::searchPosition(const Job& job, Position& position, int& result)
{
    switch (job.id) {
    case weatherjob::kSearchForDwc:
    case weatherjob::kSearchAtAircraft:
        position = aircraftData().position;
        return true;
    case weatherjob::kSearchAtStation: {
        Station station;
        if (m_store.getStation(job.name, station)) {
            position = static_cast<const aviation::Position&>(station); // only the place
        } else {
            result = weathererror::kNoMetar;
        }
        return true;
    }
    case weatherjob::kSearchAtPosition: {
        const QStringList parts = job.name.split(QLatin1Char(','));
        if (parts.size() < 2) {
            return false;
        }
        position = Position(numberFrom(parts.at(0)), numberFrom(parts.at(1)));
        return true;
    }
    default:
        result = weathererror::kUnknownJob;
        return true;
    }
}

int WeatherWorker::SearchNearstWeather(const Job& job)
{
    Position position;
    int result = weathererror::kNone;
    if (!searchPosition(job, position, result)) {
        log(QStringLiteral("(WeatherWorker) - no position in job: %1").arg(job.name),
            loglevel::kError);
        return weathererror::kNoPosition;
    }
    Reports reports;
    reports.metarFound = m_store.SearchMetar(position, reports.metar);
    reports.synopFound = m_store.SearchSynop(position, reports.synop);
    bool gribFound = searchGrib(position, reports.grib);
    const bool anySurface = reports.metarFound || reports.synopFound;
    if (anySurface && !gribFound && mayDownloadGrib()) {
        gribFound = askForGrib(position, reports.grib);
    }
    {
        const ScopedLock lock(m_resultMutex);
        m_results.metar = reports.metar;
        m_results.synop = reports.synop;
        m_results.grib = reports.grib;
    }
    if (!anySurface) {
        return gribFound ? weathererror::kNoMetar : weathererror::kNoWeather;
    }
    const bool ignoresGrib = m_settings.gribOff();
    if (!gribFound && !ignoresGrib) {
        return weathererror::kNoGribFound;
    }
    // Display and direct wind make do with what there is.
    const bool makesDo = job.id != weatherjob::kSearchAtPosition;
    if (makesDo && (reports.metarFound || ignoresGrib)) {
        return weathererror::kNone;
    }
    if (!reports.metarFound) {
        return weathererror::kNoMetar;
    }
    return reports.synopFound ? result : weathererror::kNoSynop;
}

int WeatherWorker::weatherSearch(const Job& job)
{
    constexpr int kFields = 6;
    const QStringList fields = job.name.split(QLatin1Char(';'));
    if (fields.size() < kFields) {
        return weathererror::kNone;
    }
    const SearchCriteria criteria{numberFrom(fields.at(0)),    numberFrom(fields.at(1)),
                                  numberFrom(fields.at(2)),    numberFrom(fields.at(3)),
                                  fields.at(4).toStdWString(), fields.at(5).toStdWString()};
    std::vector<Metar> metars = m_store.getMetars();
    const auto total = static_cast<qlonglong>(metars.size());
    qlonglong count = 0;
    for (Metar& metar : metars) {
        if (stopped()) {
            break;
        }
        Q_EMIT sigProgress(++count, total, QString());
        if (!metar.isDecoded()) {
            metar.Decode();
        }
        if (matches(metar, criteria)) {
            Q_EMIT sigMetarFromWeatherSearch(QString::fromStdWString(metar.reportText()));
        }
    }
    return weathererror::kNone;
}

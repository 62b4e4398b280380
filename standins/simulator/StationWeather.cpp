#include "standins/simulator/StationWeather.h"

#include "aviation/Units.h"
#include "standins/simulator/AirModel.h"
#include "standins/simulator/RecordObservation.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace simulator {

namespace {

constexpr int kStationLetters = 4;

bool isLetterOrDigit(QChar c)
{
    return c.unicode() < 128 && c.isLetterOrNumber();
}

/// The last text of a station; of any for an empty name.
QString lastTextOf(const SimulatorState& state, const QString& icao)
{
    for (int i = state.weatherTexts.size() - 1; i >= 0; --i) {
        const QString& text = state.weatherTexts[i];
        if (isObservation(text) && (icao.isEmpty() || text.startsWith(icao, Qt::CaseInsensitive))) {
            return text;
        }
    }
    return {};
}

std::uint16_t rounded(double value)
{
    constexpr double kMost = 65535.0;
    return value > 0.0 ? static_cast<std::uint16_t>(std::lround(std::min(value, kMost))) : 0;
}

/// A record of "GLOB" from what isn't set by records.
NewWeather globalWeather(const SimulatorState& state, const aviation::Position& position)
{
    constexpr double kUnitsPerDegree = 65536.0 / 360.0;
    constexpr double kUnitsPerHpa = 16.0;
    constexpr double kStandardHpa = 1013.0;
    constexpr double kHpaPerInch = static_cast<double>(aviation::kHpaPerHundredthInch) * 100.0;
    constexpr double kMetresPerKilometre = 1000.0;
    constexpr float kUnlimitedKilometres = 50.0F;
    constexpr float kStandardCelsius = 15.0F;
    const Air air = airAt(state, position, 0.0);
    NewWeather record;
    record.setIcao(L"GLOB");
    record.Press =
        rounded(kUnitsPerHpa
                * (state.weatherData ? static_cast<double>(state.weatherData->Press) * kHpaPerInch
                                     : kStandardHpa));
    record.Vis.Range = aviation::MetresToHundredthsOfMile(
        static_cast<double>(air.visibility.value_or(kUnlimitedKilometres)) * kMetresPerKilometre);
    record.nTempCtr = 1;
    record.Temp[0].Day = static_cast<std::int16_t>(
        std::lround(std::clamp(air.temperature.value_or(kStandardCelsius), -99.0F, 99.0F)));
    record.Temp[0].Dew = record.Temp[0].Day;
    record.nWindCtr = 1;
    record.Wind[0].Dir = rounded(static_cast<double>(air.wind.Dir) * kUnitsPerDegree);
    record.Wind[0].Speed = rounded(static_cast<double>(air.wind.Speed));
    return record;
}

} // namespace

bool isObservation(const QString& text)
{
    return text.size() > kStationLetters
           && std::all_of(text.begin(), text.begin() + kStationLetters, isLetterOrDigit)
           && (text[kStationLetters] == QLatin1Char(' ')
               || text[kStationLetters] == QLatin1Char('&'));
}

QString keptObservation(const SimulatorState& state, const aviation::Position& position)
{
    QString nearest;
    double least = std::numeric_limits<double>::infinity();
    for (const WeatherStation& station : state.stations) {
        const double distance = station.position.DistanceTo(position);
        const QString text = distance < least ? lastTextOf(state, station.icao) : QString();
        if (!text.isEmpty()) {
            nearest = text;
            least = distance;
        }
    }
    if (nearest.isEmpty()) {
        nearest = lastTextOf(state, QStringLiteral("GLOB"));
    }
    return nearest.isEmpty() ? lastTextOf(state, {}) : nearest;
}

QString observationAt(const SimulatorState& state, const aviation::Position& position,
                      std::int64_t simTime)
{
    QString kept = keptObservation(state, position);
    if (!kept.isEmpty()) {
        return kept;
    }
    const NewWeather* record = nearestRecord(state.weatherRecords, position);
    const NewWeather made = record == nullptr ? globalWeather(state, position) : *record;
    return QString::fromStdString(observationOf(&made, simTime));
}

} // namespace simulator

#include "standins/simulator/CloudGrid.h"

#include "aviation/Units.h"
#include "standins/simulator/AirModel.h"
#include "standins/simulator/StationWeather.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace simulator {

namespace {

using aviation::Position;

constexpr int kMostOctas = 8;
constexpr int kStormType = 10;
constexpr double kDefaultDepth = 3000.0; ///< feet
constexpr double kStormDepth = 25000.0;  ///< feet
constexpr double kFeetPerHundred = 100.0;
constexpr double kPatchDegrees = 0.05;
constexpr double kThickest = 20.0;
constexpr double kMostDensity = 255.0;

struct Abbreviation
{
    const char* name;
    int octas;
};
constexpr std::array kAbbreviations{Abbreviation{"FEW", 2}, Abbreviation{"SCT", 4},
                                    Abbreviation{"BKN", 6}, Abbreviation{"OVC", 8}};

/// Takes the cover off the front of a cloud group: an abbreviation, or octas and a type's letters.
int takeCover(QString& group)
{
    for (const Abbreviation& row : kAbbreviations) {
        if (group.startsWith(QLatin1String(row.name))) {
            group.remove(0, 3);
            return row.octas;
        }
    }
    const int octas = group.isEmpty() ? 0 : group[0].digitValue();
    const bool isLayer = octas >= 1 && octas <= kMostOctas && group.size() > 3
                         && group[1].isLetter() && group[2].isLetter();
    group.remove(0, isLayer ? 3 : 0);
    return isLayer ? octas : 0;
}

void addGroup(const QString& group, std::vector<CloudExtent>& clouds)
{
    QString rest = group;
    const int octas = takeCover(rest);
    bool isNumber = false;
    const int hundreds = rest.left(3).toInt(&isNumber);
    if (octas == 0 || !isNumber) {
        return;
    }
    const bool isStorm = group.contains(QLatin1String("CB"));
    const double base = hundreds * kFeetPerHundred;
    clouds.push_back({octas, base, base + (isStorm ? kStormDepth : kDefaultDepth), isStorm});
}

std::vector<CloudExtent> cloudsOf(const QString& observation)
{
    std::vector<CloudExtent> clouds;
    const QString groups = observation.section(QStringLiteral("@@@"), 0, 0);
    for (const QString& group : groups.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        addGroup(group, clouds);
    }
    return clouds;
}

std::vector<CloudExtent> cloudsOf(const NewWeather& record)
{
    std::vector<CloudExtent> clouds;
    const int count = std::clamp(record.nCloudCtr, 0, static_cast<int>(record.Cloud.size()));
    for (int i = 0; i < count; ++i) {
        const CloudLayer& layer = record.Cloud[static_cast<std::size_t>(i)];
        clouds.push_back({std::min<int>(layer.Cover, kMostOctas),
                          layer.LowerAlt * aviation::kFeetPerMetre,
                          layer.UpperAlt * aviation::kFeetPerMetre, layer.Type == kStormType});
    }
    return clouds;
}

/// The coverage of the weather data is a share of the sky up to 1, else octas.
std::vector<CloudExtent> cloudsOf(const XPlaneWeather& weather)
{
    std::vector<CloudExtent> clouds;
    for (const XPlaneCloud& cloud : weather.Clouds) {
        const float octas = cloud.Coverage > 1.0F ? cloud.Coverage
                                                  : cloud.Coverage * static_cast<float>(kMostOctas);
        if (octas > 0.0F) {
            clouds.push_back({static_cast<int>(std::lround(std::min(octas, 8.0F))),
                              static_cast<double>(cloud.Base) * aviation::kFeetPerMetre,
                              static_cast<double>(cloud.Top) * aviation::kFeetPerMetre, false});
        }
    }
    return clouds;
}

/// 0 to 1, the same for each corner of a patch.
double cornerValue(std::int64_t row, std::int64_t column)
{
    std::uint64_t bits = static_cast<std::uint64_t>(row) * 0x9E3779B97F4A7C15ULL
                         ^ static_cast<std::uint64_t>(column) * 0xC2B2AE3D27D4EB4FULL;
    bits ^= bits >> 29U;
    bits *= 0xBF58476D1CE4E5B9ULL;
    bits ^= bits >> 32U;
    constexpr double kSteps = 65535.0;
    return static_cast<double>(bits & 0xFFFFU) / kSteps;
}

/// 0 to 1, smooth between the corners.
double patchValue(const Position& position)
{
    const double y = position.latitude() / kPatchDegrees;
    const double x = position.longitude() / kPatchDegrees;
    const auto row = static_cast<std::int64_t>(std::floor(y));
    const auto column = static_cast<std::int64_t>(std::floor(x));
    const double v = y - std::floor(y);
    const double u = x - std::floor(x);
    return (1.0 - v) * ((1.0 - u) * cornerValue(row, column) + u * cornerValue(row, column + 1))
           + v * ((1.0 - u) * cornerValue(row + 1, column) + u * cornerValue(row + 1, column + 1));
}

bool isWithin(double value, double limit)
{
    return value >= -limit && value <= limit; // not for nan
}

} // namespace

std::vector<CloudExtent> cloudsAt(const SimulatorState& state, const Position& position)
{
    const QString observation = keptObservation(state, position);
    if (!observation.isEmpty()) {
        return cloudsOf(observation);
    }
    const NewWeather* record = nearestRecord(state.weatherRecords, position);
    if (record != nullptr) {
        return cloudsOf(*record);
    }
    return state.weatherData ? cloudsOf(*state.weatherData) : std::vector<CloudExtent>();
}

double cloudDensity(const std::vector<CloudExtent>& clouds, const Position& position,
                    double minAltitude, double maxAltitude)
{
    const double patch = patchValue(position);
    double density = 0.0;
    for (const CloudExtent& cloud : clouds) {
        const bool isAtAltitude = cloud.base <= maxAltitude && cloud.top >= minAltitude;
        const double share = static_cast<double>(cloud.octas) / kMostOctas;
        if (isAtAltitude && (patch < share || cloud.octas == kMostOctas)) {
            const double thickness = 0.25 + 0.75 * share * (1.0 - patch); // thin at the edges
            density += kThickest * thickness * (cloud.isStorm ? 2.0 : 1.0);
        }
    }
    return density;
}

bool CloudArea::isValid() const
{
    constexpr double kMostFeet = 1000000.0;
    return isWithin(minLatitude, 90.0) && isWithin(maxLatitude, 90.0)
           && isWithin(minLongitude, 360.0) && isWithin(maxLongitude, 360.0)
           && isWithin(minAltitude, kMostFeet) && isWithin(maxAltitude, kMostFeet)
           && minLatitude <= maxLatitude && minLongitude <= maxLongitude
           && minAltitude <= maxAltitude;
}

std::vector<std::uint8_t> cloudGrid(const SimulatorState& state, const CloudArea& area)
{
    const double height = area.maxLatitude - area.minLatitude;
    const double width = area.maxLongitude - area.minLongitude;
    const std::vector<CloudExtent> clouds =
        cloudsAt(state, Position(area.minLatitude + height / 2.0, area.minLongitude + width / 2.0));
    std::vector<std::uint8_t> grid;
    grid.reserve(std::size_t{kCloudGridSide} * kCloudGridSide);
    for (int row = 0; row < kCloudGridSide; ++row) {
        for (int column = 0; column < kCloudGridSide; ++column) {
            const Position cell(area.minLatitude + (row + 0.5) * height / kCloudGridSide,
                                area.minLongitude + (column + 0.5) * width / kCloudGridSide);
            const double density = cloudDensity(clouds, cell, area.minAltitude, area.maxAltitude);
            grid.push_back(static_cast<std::uint8_t>(std::min(density, kMostDensity)));
        }
    }
    return grid;
}

} // namespace simulator

#include "weather/output/WeatherTheme.h"

#include "aviation/Units.h"

#include <algorithm>
#include <utility>

namespace {

using aviation::Position;

constexpr double kCellNm = 8.639308855291576; ///< 16 km
constexpr double kCellKm = 16.0;

int cellsInRange(int rangeNm)
{
    constexpr int kHalfTheEarthNm = 10800; // nothing lies farther away
    const int range = std::clamp(rangeNm, 0, kHalfTheEarthNm);
    return static_cast<int>(range * aviation::kKmPerNm * 0.0625 * 0.5);
}

Position southWestCorner(const Position& aircraft, int cells)
{
    const double halfWidth = cells * kCellKm / aviation::kKmPerNm * 0.5;
    Position corner = aircraft;
    corner.MoveBy(180.0, halfWidth);
    corner.MoveBy(270.0, halfWidth);
    return corner;
}

void appendRow(std::vector<Position>& positions, const Position& first, int cells)
{
    Position station = first;
    for (int column = 0; column < cells; ++column) {
        positions.push_back(station);
        station.MoveBy(90.0, kCellNm);
        // Going east on a great circle drifts off the parallel; a row stays on it.
        station.setPosition(Position(first.latitude(), station.longitude()));
    }
}

/// The layers of a record that are used.
template <class Layers>
auto usedLayers(const Layers& layers, std::int32_t count)
{
    const auto room = static_cast<std::int32_t>(layers.size());
    return std::vector(layers.begin(), layers.begin() + std::clamp(count, 0, room));
}

float degreesOf(std::uint16_t ofFullCircle)
{
    return static_cast<float>(ofFullCircle * 360.0 / 65536.0);
}

ThemeWind themeWindOf(const WindLayer& layer, std::int32_t elevation)
{
    ThemeWind wind;
    wind.height = static_cast<float>(layer.UpperAlt - elevation);
    wind.speed = static_cast<float>(layer.Speed);
    wind.gust = static_cast<float>(layer.Gust);
    wind.direction = degreesOf(layer.Dir);
    wind.variance = degreesOf(layer.Variance);
    wind.turbulence = static_cast<float>(layer.Turbulence);
    wind.shear = static_cast<float>(layer.Shear);
    return wind;
}

ThemeVisibility themeVisibilityOf(const VisLayer& layer)
{
    constexpr double kMetresPerNm = 1852.0;
    ThemeVisibility visibility;
    // Hundredths of statute miles taken for hundredths of nautical ones, deliberately: ranges
    // come out 15 % longer.
    visibility.range = static_cast<float>(layer.Range / 100.0 * kMetresPerNm);
    visibility.lower = static_cast<float>(layer.LowerAlt);
    visibility.upper = static_cast<float>(layer.UpperAlt);
    return visibility;
}

ThemeCloud themeCloudOf(const CloudLayer& layer, std::int32_t elevation)
{
    ThemeCloud cloud;
    cloud.type = layer.Type;
    cloud.base = static_cast<float>(layer.LowerAlt - elevation);
    cloud.top = static_cast<float>(layer.UpperAlt - elevation);
    cloud.deviation = static_cast<float>(layer.Dev);
    cloud.coverage = layer.Cover;
    cloud.topShape = layer.TopShape;
    cloud.turbulence = layer.Turbulence;
    cloud.precipitationType = layer.PrecipType;
    cloud.precipitationBase = static_cast<float>(layer.PrecipBase);
    cloud.precipitationRate = layer.PrecipRate;
    cloud.icing = layer.Icing;
    return cloud;
}

ThemeTemperature themeTemperatureOf(const TempLayer& layer, std::int32_t elevation)
{
    ThemeTemperature temperature;
    temperature.height = static_cast<float>(layer.Alt - elevation);
    temperature.temperature = static_cast<float>(layer.Day);
    temperature.dewPoint = static_cast<float>(layer.Dew);
    return temperature;
}

/// All layers that the record uses.
void fillBlocks(ThemeStation& station, const NewWeather& record, std::int32_t elevation)
{
    for (const WindLayer& layer : usedLayers(record.Wind, record.nWindCtr)) {
        station.winds.push_back(themeWindOf(layer, elevation));
    }
    station.visibilities.push_back(themeVisibilityOf(record.Vis));
    for (const VisLayer& layer : usedLayers(record.UpperVis, record.nUpperVisCtr)) {
        station.visibilities.push_back(themeVisibilityOf(layer));
    }
    for (const CloudLayer& layer : usedLayers(record.Cloud, record.nCloudCtr)) {
        station.clouds.push_back(themeCloudOf(layer, elevation));
    }
    for (const TempLayer& layer : usedLayers(record.Temp, record.nTempCtr)) {
        station.temperatures.push_back(themeTemperatureOf(layer, elevation));
    }
}

struct Nearest
{
    std::size_t index = 0;
    double distance = aviation::kUnknownDistance;
};

/// Distance kUnknownDistance when no station is in reach.
Nearest nearestStation(const ThemeGrid& grid, const Position& aircraft)
{
    constexpr double kReachNm = 400.0;
    Nearest nearest;
    for (std::size_t i = 0; i < grid.stations.size(); ++i) {
        const double distance = grid.stations[i].DistanceTo(aircraft);
        if (distance < kReachNm && distance < nearest.distance) {
            nearest = {i, distance};
        }
    }
    return nearest;
}

} // namespace

std::vector<Position> themeGridPositions(const Position& aircraft, int rangeNm, int& columnsAndRows)
{
    const int cells = cellsInRange(rangeNm);
    columnsAndRows = cells;
    std::vector<Position> positions{aircraft};
    Position rowStart = southWestCorner(aircraft, cells);
    const double westernLongitude = rowStart.longitude();
    for (int row = 0; row < cells; ++row) {
        appendRow(positions, rowStart, cells);
        rowStart.MoveBy(360.0, kCellNm);
        rowStart.setPosition(Position(rowStart.latitude(), westernLongitude));
    }
    return positions;
}

ThemeGrid makeThemeGrid(std::vector<ThemeStation> stations, int columnsAndRows)
{
    ThemeGrid grid;
    grid.columns = columnsAndRows;
    grid.rows = columnsAndRows;
    grid.stations = std::move(stations);
    if (!grid.stations.empty()) {
        const ThemeStation last = grid.stations.back();
        grid.stations.push_back(last);
    }
    return grid;
}

ThemeStation makeThemeStation(const NewWeather& record, float qnh, const Position& position)
{
    constexpr std::int32_t kFixedPointOne = 65536;
    const std::int32_t elevation = record.Elev / kFixedPointOne;
    ThemeStation station;
    station.setPosition(position);
    station.surfaceWind = themeWindOf(record.Wind[0], elevation);
    station.surfaceWind.gust = static_cast<float>(record.Wind[0].Speed + record.Wind[0].Gust);
    fillBlocks(station, record, elevation);
    station.qnh = qnh;
    return station;
}

void keepNearestStation(const ThemeGrid& previous, ThemeGrid& current, const Position& aircraft)
{
    constexpr double kCloseNm = 50.0;
    const Nearest former = nearestStation(previous, aircraft);
    const Nearest now = nearestStation(current, aircraft);
    if (former.distance >= kCloseNm || now.distance == aviation::kUnknownDistance) {
        return;
    }
    const ThemeStation& kept = previous.stations[former.index];
    current.stations[now.index] = kept;
    current.stations.front() = kept;
}

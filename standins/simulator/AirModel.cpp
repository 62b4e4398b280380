#include "standins/simulator/AirModel.h"

#include "aviation/Units.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace simulator {

namespace {

using aviation::weather::Wind;

constexpr float kDegreesPerUnit = 360.0F / 65536.0F;
constexpr double kCelsiusPerMetre = 0.0065;
constexpr float kNotKnown = -99.0F;

/// The layer that reaches up to the altitude, else the highest; null when there is none.
template <class Layers, class TopOf>
auto layerAt(const Layers& layers, std::size_t used, double metres, TopOf topOf)
    -> decltype(layers.data())
{
    decltype(layers.data()) highest = nullptr;
    for (std::size_t i = 0; i < used; ++i) {
        if (static_cast<double>(topOf(layers[i])) >= metres) {
            return &layers[i];
        }
        highest = &layers[i];
    }
    return highest;
}

template <class Layers>
std::size_t usedLayers(const Layers& layers, std::int32_t count)
{
    return static_cast<std::size_t>(std::clamp(count, 0, static_cast<std::int32_t>(layers.size())));
}

void takeRecord(const NewWeather& record, double metres, Air& air)
{
    const auto* wind = layerAt(record.Wind, usedLayers(record.Wind, record.nWindCtr), metres,
                               [](const WindLayer& layer) { return layer.UpperAlt; });
    const auto* temperature = layerAt(record.Temp, usedLayers(record.Temp, record.nTempCtr), metres,
                                      [](const TempLayer& layer) { return layer.Alt; });
    if (wind != nullptr) {
        air.wind.Dir = static_cast<float>(wind->Dir) * kDegreesPerUnit;
        air.wind.Speed = static_cast<float>(wind->Speed);
    }
    if (temperature != nullptr) {
        air.temperature = static_cast<float>(temperature->Day);
    }
    air.visibility =
        static_cast<float>(record.Vis.Range * aviation::kMetresPerStatuteMile) / 100.0F / 1000.0F;
}

/// The layer whose altitude is nearest, since these stand for the wind there; null when there is
/// none.
const XPlaneWindLayer* nearestLayer(const std::vector<XPlaneWindLayer>& layers, double metres)
{
    const auto distance = [metres](const XPlaneWindLayer& layer) {
        return std::abs(static_cast<double>(layer.Alt) - metres);
    };
    const auto nearest =
        std::min_element(layers.begin(), layers.end(), [&](const auto& left, const auto& right) {
            return distance(left) < distance(right);
        });
    return nearest == layers.end() ? nullptr : &*nearest;
}

float temperatureAt(const XPlaneWeather& weather, double metres)
{
    const bool knowsTropopause = weather.TempTropo != kNotKnown && weather.TropoAltMeter > 0.0F;
    const double seaLevel = static_cast<double>(weather.Temp);
    if (!knowsTropopause) {
        return static_cast<float>(seaLevel - kCelsiusPerMetre * metres);
    }
    const double share = std::clamp(metres / static_cast<double>(weather.TropoAltMeter), 0.0, 1.0);
    return static_cast<float>(seaLevel
                              + (static_cast<double>(weather.TempTropo) - seaLevel) * share);
}

} // namespace

const NewWeather* nearestRecord(const std::vector<NewWeather>& records,
                                const aviation::Position& position)
{
    const NewWeather* nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (const NewWeather& record : records) {
        const aviation::Position station(record.Lat, record.Lon);
        const double distance = station.DistanceTo(position); // very far without a place
        if (distance <= least) {
            least = distance;
            nearest = &record;
        }
    }
    return nearest;
}

Air airAt(const SimulatorState& state, const aviation::Position& position, double altitude)
{
    const double metres = aviation::metresFromFeet(altitude);
    Air air;
    if (const NewWeather* record = nearestRecord(state.weatherRecords, position)) {
        takeRecord(*record, metres, air);
    }
    if (state.weatherData) {
        air.temperature = temperatureAt(*state.weatherData, metres);
        air.visibility = state.weatherData->Vis / 1000.0F;
    }
    const XPlaneWindLayer* layer = nearestLayer(state.windLayers, metres);
    if (state.wind && (state.windIsNewest || layer == nullptr)) {
        air.wind = Wind{state.wind->Dir, state.wind->Speed, -1.0F, 0.0F};
    } else if (layer != nullptr) {
        air.wind = Wind{layer->Dir, layer->Speed, -1.0F, 0.0F};
    }
    if (state.visibility) {
        air.visibility = static_cast<float>(*state.visibility) / 1000.0F;
    }
    return air;
}

} // namespace simulator

#include "app/base/SettingsValues.h"
#include "aviation/Angles.h"
#include "weather/output/CompositionRules.h"
#include "weather/output/WeatherComposition.h"
#include "weather/output/WeatherCompositionNumbers.h"

#include <array>
#include <cstdlib>

namespace composition {

using aviation::weather::Grib;
using aviation::weather::GribLevel;
using aviation::weather::Metar;
using aviation::weather::Synop;
using aviation::weather::Wind;

namespace {

constexpr std::size_t kSurfaceLayers = 2;
constexpr std::uint16_t kAssumedGust = 5; // knots above the speed
constexpr double kAssumedVariance = 20.0; // degrees
constexpr std::uint16_t kSurfaceSpeedFract = 65000;
constexpr std::uint16_t kSurfaceCapAbove = 500;
constexpr std::int64_t kHeightBelowSea = 200; // metres, stands for every negative elevation

/// Surface wind in whole degrees and knots.
struct SurfaceWind
{
    std::int64_t direction = 0;
    std::int64_t speed = 0;
};

SurfaceWind wholeWind(const Wind& wind)
{
    return {truncated(static_cast<double>(wind.Dir)), truncated(static_cast<double>(wind.Speed))};
}

/// The METAR's wind; a calm or missing one is looked for in a near SYNOP, then at the grid point.
SurfaceWind chooseSurfaceWind(const Metar& metar, const Synop& synop, const Grib& grib)
{
    constexpr double kNearSynopNm = 20.0;
    const SurfaceWind reported = wholeWind(metar.wind());
    const bool calm = reported.direction == 0 && reported.speed == 0;
    if (!calm && reported.speed != -1) {
        return reported;
    }
    if (spreadNm(metar, synop) < kNearSynopNm && synop.wind().Dir >= 0.0F
        && synop.wind().Speed > 0.0F) {
        return wholeWind(synop.wind());
    }
    const SurfaceWind modelled = wholeWind(grib.wind());
    return modelled.speed == -1 ? SurfaceWind{} : modelled;
}

std::uint16_t gustOver(std::int64_t speed, double gust, bool gusty)
{
    if (!gusty) {
        return 0;
    }
    return gust > 0.0 ? word(truncated(gust - static_cast<double>(speed))) : kAssumedGust;
}

std::uint8_t turbulenceOf(std::uint16_t speed)
{
    constexpr std::array<std::uint16_t, 4> kFromKnots{10, 15, 20, 25};
    return octet(std::count_if(kFromKnots.begin(), kFromKnots.end(),
                               [speed](std::uint16_t from) { return speed >= from; }));
}

/// Only a sector whose first limit is the larger one is folded at north; 010V350 stays as wide as
/// its numbers lie apart.
std::uint16_t varianceOf(const Metar& metar, bool gusty)
{
    if (!metar.hasVariableLimits()) {
        return gusty ? wordFromDegrees(kAssumedVariance) : std::uint16_t{0};
    }
    int sector = signedWord(std::int64_t{metar.variableFrom()} - std::int64_t{metar.variableTo()});
    if (sector >= 180) {
        sector = 360 - sector;
    }
    return wordFromDegrees(std::abs(sector));
}

std::int64_t stationHeight(const Metar& metar)
{
    const std::int64_t metres = wholeMetres(metar.elevation());
    return metres < 0 ? kHeightBelowSea : metres;
}

WindLayer surfaceLayer(const Metar& metar, const SurfaceWind& wind, double magneticVariation,
                       const CompositionOptions& options)
{
    constexpr float kVariableDirection = -1.0F;
    WindLayer layer;
    layer.Dir = wordFromDegrees(static_cast<double>(wind.direction) + magneticVariation);
    layer.Speed = word(wind.speed);
    layer.CapAbove = kSurfaceCapAbove;
    layer.Gust =
        gustOver(wind.speed, static_cast<double>(metar.wind().Gust), options.gustySurfaceWind);
    if (!options.directWindControl || options.gustySurfaceWind) {
        layer.Turbulence = turbulenceOf(layer.Speed);
    }
    layer.Variance = varianceOf(metar, options.gustySurfaceWind);
    if (metar.wind().Dir == kVariableDirection) {
        layer.Dir = 182; // one degree, and nearly the whole circle around it
        layer.Variance = 65353;
    }
    layer.SpeedFract = kSurfaceSpeedFract;
    layer.UpperAlt = word(stationHeight(metar) + 100);
    return layer;
}

/// The layer above turns from the METAR's own direction, also when the surface wind came from
/// another report.
WindLayer layerAboveSurface(const WindLayer& surface, const Metar& metar, double magneticVariation)
{
    WindLayer layer = surface;
    const double turned = aviation::Normalize360(static_cast<double>(metar.wind().Dir) + 15.0);
    layer.UpperAlt = word(surface.UpperAlt + 200);
    layer.Speed = word(surface.Speed + 2);
    layer.Dir = wordFromDegrees(static_cast<double>(truncated(turned)) + magneticVariation);
    return layer;
}

void setSurfaceTemperatures(const Metar& metar, NewWeather& record)
{
    const double temperature = static_cast<double>(metar.temperature());
    const double dewPoint = static_cast<double>(metar.dewPoint());
    TempLayer& ground = record.Temp[0];
    ground.Alt = word(stationHeight(metar) + 10);
    ground.Day = signedWord(truncated(temperature));
    ground.DayNightVar = 0;
    ground.Dew = signedWord(truncated(dewPoint));
    TempLayer& above = record.Temp[1];
    above.Alt = word(ground.Alt + 200);
    above.Day = signedWord(ground.Day - 1);
    above.DayNightVar = 0;
    above.Dew = signedWord(truncated(dewPoint - 1.0));
}

/// Mode 1, for theme files, leaves out every other one of the lower ten.
bool isLevelUsed(const GribLevel& level, std::size_t index, std::int32_t elevation,
                 const CompositionOptions& options)
{
    constexpr std::int64_t kFreeFeet = 1000;
    const bool thinnedOut =
        options.weatherMode == weathermode::kFiles && index < 10 && index % 2 == 1;
    return !thinnedOut && level.altitude >= std::int64_t{elevation} + kFreeFeet;
}

void setLevel(const GribLevel& level, WindLayer& wind, TempLayer& temperature)
{
    const std::uint16_t metres = word(wholeMetres(level.altitude));
    wind = {};
    wind.UpperAlt = metres;
    wind.Speed = word(truncated(static_cast<double>(level.wind.Speed)));
    wind.Dir = wordFromDegrees(static_cast<double>(level.wind.Dir));
    temperature = {metres, level.temperature, 0, level.dewPoint};
}

} // namespace

void SetWindAndTemperature(const Metar& metar, const Synop& synop, const Grib& grib,
                           NewWeather& record, double magneticVariation,
                           const CompositionOptions& options)
{
    const SurfaceWind wind = chooseSurfaceWind(metar, synop, grib);
    record.Wind[0] = surfaceLayer(metar, wind, magneticVariation, options);
    record.Wind[1] = layerAboveSurface(record.Wind[0], metar, magneticVariation);
    setSurfaceTemperatures(metar, record);
    std::size_t layers = kSurfaceLayers;
    const std::vector<GribLevel>& levels = grib.levels();
    for (std::size_t i = 0; i < levels.size() && layers < kWindLayerSlots; ++i) {
        if (isLevelUsed(levels[i], i, metar.elevation(), options)) {
            setLevel(levels[i], record.Wind[layers], record.Temp[layers]);
            ++layers;
        }
    }
    record.nWindCtr = static_cast<std::int32_t>(layers);
    record.nTempCtr = static_cast<std::int32_t>(layers);
}

} // namespace composition

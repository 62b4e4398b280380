#include "dwc/XPlaneLayers.h"

#include "dwc/TargetWind.h"

#include <algorithm>
#include <limits>

namespace xplanelayers {

using aviation::weather::GribLevel;
using aviation::weather::Wind;

namespace {

/// X-Plane records use this factor on purpose, not the one of the other units.
constexpr double kXPlaneFeetPerMetre = 3.2808;

XPlaneWindLayer layerOf(std::int32_t altitudeFeet, const Wind& wind)
{
    XPlaneWindLayer layer;
    layer.Alt = static_cast<float>(altitudeFeet / kXPlaneFeetPerMetre);
    layer.Dir = wind.Dir;
    layer.Speed = wind.Speed;
    return layer;
}

float shearSpeedOf(const Surface& surface)
{
    constexpr float kSmallGust = 10.0F;
    constexpr float kUsualShear = 1.0F;
    constexpr double kNearNm = 30.0;
    const Wind& wind = surface.metar.wind();
    const float synopGust = surface.synop.wind().Gust;
    if (wind.Gust == 0.0F && surface.spreadNm < kNearNm && synopGust > wind.Speed) {
        return synopGust - wind.Speed;
    }
    return wind.Gust <= kSmallGust ? kUsualShear : wind.Gust - wind.Speed;
}

/// Second limit minus first one, as they stand: 340V020 gives -320.
float shearDirectionOf(const aviation::weather::Metar& metar)
{
    if (!metar.hasVariableLimits() || metar.variableFrom() <= 0) {
        return 0.0F;
    }
    return static_cast<float>(metar.variableTo()) - static_cast<float>(metar.variableFrom());
}

/// Where the second layer lies, feet: near the ground it is lifted clear of the first one.
std::int32_t aircraftLayerAltitude(std::int32_t altitude, std::int32_t elevation)
{
    constexpr std::int64_t kNearGround = 1000;
    constexpr std::int64_t kLift = 5000;
    const std::int64_t above = std::int64_t{altitude} - elevation;
    const std::int64_t lifted = altitude + (above < kNearGround ? kLift : 0);
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(lifted, std::numeric_limits<std::int32_t>::max()));
}

} // namespace

void fillMissingWind(aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                     double spreadNm)
{
    constexpr float kNoWind = -1.0F;
    constexpr double kNearNm = 50.0;
    if (metar.wind().Speed == kNoWind && spreadNm < kNearNm) {
        synop.ToMetar(metar);
    }
}

XPlaneWindLayer groundLayer(const Surface& surface)
{
    constexpr double kFullTurbulenceKnots = 30.0;
    XPlaneWindLayer layer = layerOf(surface.metar.elevation(), surface.metar.wind());
    if (surface.gusty) {
        layer.Turbulence =
            static_cast<float>(static_cast<double>(layer.Speed) / kFullTurbulenceKnots);
        layer.ShearDir = shearDirectionOf(surface.metar);
        layer.ShearSpeed = shearSpeedOf(surface);
    }
    return layer;
}

std::vector<XPlaneWindLayer> build(const Surface& surface, const std::vector<GribLevel>& levels,
                                   const aviation::structs::AircraftData& aircraft)
{
    if (levels.size() < kFewestLevels) {
        return {};
    }
    const std::int32_t altitude =
        aircraftLayerAltitude(aircraft.altitude, surface.metar.elevation());
    const GribLevel ground = targetwind::groundLevel(surface.metar, aircraft.magneticVariation);
    const GribLevel highest = targetwind::highestLevel(levels);
    return {groundLayer(surface),
            layerOf(altitude, targetwind::levelAt(levels, ground, altitude).wind),
            layerOf(highest.altitude, highest.wind)};
}

} // namespace xplanelayers

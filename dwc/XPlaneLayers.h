#pragma once

#include "aviation/AircraftData.h"
#include "aviation/GribLevel.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "weather/output/records/XPlaneWeather.h"

#include <cstddef>
#include <vector>

/// X-Plane knows no single wind at the aircraft: it gets three layers instead. Pure functions.
namespace xplanelayers {

/// Levels that build() needs.
inline constexpr std::size_t kFewestLevels = 2;

/// What is known at the ground.
struct Surface
{
    const aviation::weather::Metar& metar;
    const aviation::weather::Synop& synop;
    double spreadNm; ///< between the two stations
    bool gusty;      ///< with turbulence and shear
};

/// Turns the SYNOP into the METAR where that has no wind and the SYNOP's station is near.
void fillMissingWind(aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                     double spreadNm);

/// The layer at the METAR's elevation.
XPlaneWindLayer groundLayer(const Surface& surface);

/// Ground, aircraft, and the highest level. `levels` lowest first; empty with too few of them.
std::vector<XPlaneWindLayer> build(const Surface& surface,
                                   const std::vector<aviation::weather::GribLevel>& levels,
                                   const aviation::structs::AircraftData& aircraft);

} // namespace xplanelayers

#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "weather/output/CompositionOptions.h"
#include "weather/output/records/XPlaneWeather.h"

/// What the simulator understands: cloud types, coverage and the number of wind layers differ.
enum class XPlaneGeneration
{
    Eleven = 11,
    Twelve = 12
};

/// Fills the record for direct X-Plane output from decoded reports around the aircraft. Sea state
/// and the weather text `WX` have no source here and keep their defaults.
void GenerateXPlaneWeather(const aviation::weather::Metar& metar,
                           const aviation::weather::Synop& synop,
                           const aviation::weather::Grib& grib, XPlaneGeneration generation,
                           XPlaneWeather& out, CompositionContext& context);

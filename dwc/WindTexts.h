#pragma once

#include "aviation/Wind.h"
#include "weather/output/records/XPlaneWeather.h"

#include <QString>

#include <vector>

/// The texts of direct wind control, the same in every locale. Pure functions.
namespace windtexts {

/// Name of the job that sets the wind at the aircraft: "direction:speed", six digits at most.
QString JobName(const aviation::weather::Wind& wind);

/// The layers for people, "(metres):degrees/knots" of each with blanks between.
QString Layers(const std::vector<XPlaneWindLayer>& layers);

/// Lines for the debug stream: a step left the range.
QString DirectionError(const aviation::weather::Wind& wind);
QString SpeedError(const aviation::weather::Wind& wind);

} // namespace windtexts

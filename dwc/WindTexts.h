#pragma once

#include "aviation/Wind.h"
#include "weather/output/records/XPlaneWeather.h"

#include <QString>

#include <vector>

/// The texts of direct wind control, the same in every locale. Pure functions.
namespace windtexts {

/// Name of the job that sets the wind at the aircraft: "direction:speed", six digits at most.
QString jobName(const aviation::weather::Wind& wind);

/// The layers for people, "(metres):degrees/knots" of each with blanks between.
QString layersText(const std::vector<XPlaneWindLayer>& layers);

/// Lines for the debug stream: a step left the range.
QString directionError(const aviation::weather::Wind& wind);
QString speedError(const aviation::weather::Wind& wind);

} // namespace windtexts

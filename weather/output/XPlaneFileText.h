#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Station.h"
#include "aviation/Synop.h"
#include "weather/output/CompositionOptions.h"

#include <string>

/// The entry of a station in X-Plane's METAR.rwx, without the closing line feed: the present UTC
/// time on a line of its own, then a METAR made of the decoded reports, which stay as they are. A
/// missing value leaves its group empty, the blanks around it stay. The reports are decoded; which
/// of them are near enough is decided by their distance to the station.
void XPlaneMetarText(const aviation::weather::Station& station,
                     const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                     const aviation::weather::Grib& grib, std::string& text,
                     CompositionContext& context);

/// The entry of a station in X-Plane's WINDS.rwx, without the closing line feed: "DEG", latitude
/// and longitude, then direction, speed and temperature at nine heights. Only the upper-air record
/// counts; the call looks like that of XPlaneMetarText.
void XPlaneWindsText(const aviation::weather::Station& station,
                     const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                     const aviation::weather::Grib& grib, std::string& text);

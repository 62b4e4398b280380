#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "weather/output/records/NewWeather.h"

#include <string>
#include <string_view>

/// The extended METAR text in which SimConnect takes the weather of one station: METAR groups with
/// simulator values after '&', then "@@@" and the winds aloft (SimConnect SDK, weather observation
/// strings). Pure functions, callable from any thread.

/// Builds the text from a composed record and the METAR's station, time, CAVOK, phenomena and QNH.
/// Synop and Grib belong to the call and add nothing of their own. Letters for values outside of
/// their tables are left out.
std::string MetarString(const aviation::weather::Metar& metar,
                        const aviation::weather::Synop& synop, const aviation::weather::Grib& grib,
                        const NewWeather& record);

/// Makes `text` the observation of the station `icao`, unless it begins with that name already: its
/// first four characters give way to the name, also to a shorter one.
void relabelObservation(std::string& text, std::wstring_view icao);

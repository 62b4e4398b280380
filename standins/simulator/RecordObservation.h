#pragma once

#include "weather/output/records/NewWeather.h"

#include <cstdint>
#include <string>

namespace simulator {

/// The weather of a record as a METAR, as a simulator would answer: "KMSP 011200Z 24012G20KT 9999
/// -RA SCT030 21/11 Q1013". ASCII, a few hundred characters at most. Null gives the calm, clear
/// weather of the standard atmosphere, by the name of "GLOB".
std::string observationOf(const NewWeather* record, std::int64_t secondsSince1970);

} // namespace simulator

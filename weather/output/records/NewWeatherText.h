#pragma once

#include "weather/output/records/NewWeather.h"

#include <string>

/// The record as text, the form of the bridge's message 7 and of the log: "Command=2:Flag=0:...",
/// with the layers in "TempLayer{...}:WindLayer{...}:VisLayer{...}:CloudLayer{...}". A layer count
/// is printed as it stands; as many layers follow, at most those that the record has room for.
std::string newWeatherText(const NewWeather& record);

/// The 1024 bytes of the record, in their order in memory, as 2048 lower-case hexadecimal digits.
std::string recordHex(const NewWeather& record);

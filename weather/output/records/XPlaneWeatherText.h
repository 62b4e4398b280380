#pragma once

#include "weather/output/records/XPlaneWeather.h"

#include <string>
#include <vector>

/// Text of the bridge's message 9, weather for X-Plane 10 and 11:
/// "Press=29.92:...:TropoAltMeter=-99.0Cloudlayer{...}:WindLayer{...}". Deliberately no
/// colon stands before "Cloudlayer{".
std::string xPlaneWeatherText(const XPlaneWeather& record);

/// Text of the bridge's message 28, weather for X-Plane 12: as above with ":WX=" and the record's
/// weather text, and with the winds in the short form.
std::string xPlaneWeatherWxText(const XPlaneWeather& record);

/// "WindLayer{Alt=...:Dir=...:Speed=...:Turbulence=...:ShearDir=...:ShearSpeed=...|}", the form of
/// the bridge's messages 9 and 13.
std::string windLayersLongText(const std::vector<XPlaneWindLayer>& layers);

/// "WindLayer{" and the first eight values of each layer without names, the form of message 28.
std::string windLayersShortText(const std::vector<XPlaneWindLayer>& layers);

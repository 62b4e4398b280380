#pragma once

#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"
#include "aviation/Wind.h"
#include "weather/output/records/NewWeather.h"
#include "weather/output/records/XPlaneWeather.h"

#include <QByteArray>
#include <QString>

/// One line for people of each thing that a client writes. Nothing in a line comes from the wire
/// unchanged: control characters become blanks and long texts are cut.
namespace simulator {

/// Text from the wire, fit for a line.
QString printable(const QByteArray& text);

QString describe(const NewWeather& record);
QString describe(const XPlaneWeather& weather);
QString describe(const std::vector<XPlaneWindLayer>& layers);
QString describe(const aviation::weather::Wind& wind);
QString describe(const aviation::structs::AircraftFuel& fuel);
QString describe(const aviation::structs::AircraftPayload& payload);
QString describe(const aviation::structs::RadioFrequencys& radios);
/// Of message 8: one report, or the numbers of reports and winds in a block of both.
QString describeWeatherText(const QByteArray& text);

} // namespace simulator

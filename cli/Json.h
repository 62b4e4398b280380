#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "weather/output/records/NewWeather.h"

#include <QJsonObject>

#include <string>

/// The records as JSON objects of the headless program. 32-bit fields go out as the double that
/// holds them exactly, so reading them back gives the same value.
namespace clijson {

QJsonObject fromMetar(const aviation::weather::Metar& metar);
QJsonObject fromSynop(const aviation::weather::Synop& synop);
QJsonObject fromGrib(const aviation::weather::Grib& grib);
QJsonObject fromStation(const aviation::weather::Station& station);
/// {"icao", "text", "hex"}.
QJsonObject fromRecord(const NewWeather& record);

/// One line without the line feed, UTF-8.
std::string jsonLine(const QJsonObject& object);

} // namespace clijson

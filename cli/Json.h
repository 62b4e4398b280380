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

QJsonObject FromMetar(const aviation::weather::Metar& metar);
QJsonObject FromSynop(const aviation::weather::Synop& synop);
QJsonObject FromGrib(const aviation::weather::Grib& grib);
QJsonObject FromStation(const aviation::weather::Station& station);
/// {"icao", "text", "hex"}.
QJsonObject FromRecord(const NewWeather& record);

/// One line without the line feed, UTF-8.
std::string Line(const QJsonObject& object);

} // namespace clijson

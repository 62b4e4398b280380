#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"

#include <QJsonObject>

namespace clijson {

/// The objects of Json.h with null for every field that the report itself doesn't hold, where they
/// have a default, an assumption or nothing. What the decoding says of itself (`status`, `message`,
/// `seen`, `text`, flags) stays.
QJsonObject strictMetar(const aviation::weather::Metar& metar);
QJsonObject strictSynop(const aviation::weather::Synop& synop);
QJsonObject strictGrib(const aviation::weather::Grib& grib);

} // namespace clijson

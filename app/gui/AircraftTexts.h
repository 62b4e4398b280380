#pragma once

#include "aviation/AircraftData.h"

#include <QString>

#include <cstdint>

/// Values of the aircraft as the data page writes them. Pure functions.
namespace aircrafttexts {

/// "%1 T %2 Mag": a true course in degrees and its magnetic one, both in [0, 360).
QString courseText(double trueDegrees, double variation);
/// The heading of a record. It is magnetic unless the record has a magnetic one beside it.
QString headingText(const aviation::structs::AircraftData& data);
/// Visibility in kilometres.
QString visibilityText(float kilometres);
/// Direction and speed, then the magnetic direction.
QString windText(const aviation::weather::Wind& wind, double variation);
/// UTC, of seconds since 1970.
QString simTimeText(qint64 seconds);
/// Two frequencies in hundredths of a megahertz, "118.50  (121.90)".
QString activeAndStandby(std::uint16_t active, std::uint16_t standby);

} // namespace aircrafttexts

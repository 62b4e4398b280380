#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "aviation/support/RandomSource.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Rules that the layered record, the theme and the X-Plane output share. All functions are pure
/// but for the random source.
namespace composition {

/// Distance in NM between two reports; kUnknownDistance when either has no position.
double spreadNm(const aviation::Position& a, const aviation::Position& b);

/// A made-up cirrus.
struct RandomCirrus
{
    std::int32_t baseFeet = 0; ///< 33000 to 52999, above sea level
    int cover = 0;             ///< octas 0 to 7; 0 means that there is none
};
/// Draws base and cover, always two numbers in this order.
RandomCirrus drawCirrus(aviation::RandomSource& random);

/// Where a cloud ends by the humidity of the levels: walks them upward from the level at or below
/// `base`, as long as the air is nearly saturated. `feetPerUnit` divides a level's altitude into
/// the unit of `base` and of the result: 1 for feet, kFeetPerMetre for metres. No value when the
/// profile says nothing.
std::optional<double> topFromHumidity(const std::vector<aviation::weather::GribLevel>& levels,
                                      double base, double feetPerUnit, double humidityLimit);

/// The last level at or below an altitude in feet, the first one if all are above it, a fresh level
/// if there is none.
aviation::weather::GribLevel levelAt(const std::vector<aviation::weather::GribLevel>& levels,
                                     std::int32_t altitudeFeet);

} // namespace composition

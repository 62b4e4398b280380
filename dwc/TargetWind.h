#pragma once

#include "aviation/GribLevel.h"
#include "aviation/Metar.h"

#include <cstdint>
#include <vector>

/// The real wind at an altitude, from upper-air levels and a surface report. Pure functions.
namespace targetwind {

/// The made-up level of a surface report: at its elevation, its wind turned by the aircraft's
/// magnetic variation (degrees), gust not measured.
aviation::weather::GribLevel groundLevel(const aviation::weather::Metar& metar,
                                         float magneticVariation);

/// Linear by altitude (feet) between two levels, the direction along the shorter way round; at and
/// beyond either level that level itself. Directions come out in 0 to 360, and a whole turn only
/// where a level says so.
aviation::weather::GribLevel levelBetween(const aviation::weather::GribLevel& lower,
                                          const aviation::weather::GribLevel& upper,
                                          std::int32_t altitude);

/// The highest of `levels`, which has at least one, lowest first; of two at one altitude the last.
aviation::weather::GribLevel highestLevel(const std::vector<aviation::weather::GribLevel>& levels);

/// The level record at an altitude in feet. `levels` lowest first; below them the ground level
/// counts as one more, above them the highest holds. Without levels the ground level.
aviation::weather::GribLevel levelAt(const std::vector<aviation::weather::GribLevel>& levels,
                                     const aviation::weather::GribLevel& ground,
                                     std::int32_t altitude);

} // namespace targetwind

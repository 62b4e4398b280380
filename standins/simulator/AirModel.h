#pragma once

#include "aviation/Position.h"
#include "standins/simulator/SimulatedFlight.h"
#include "standins/simulator/SimulatorState.h"

#include <vector>

namespace simulator {

/// The air at a place, from the weather that was set: the wind that was set last, alone or as the
/// nearest layer; temperature and visibility of the weather data or of the nearest weather record.
/// What isn't known stays at its default. The altitude is in feet.
Air airAt(const SimulatorState& state, const aviation::Position& position, double altitude);

/// The record whose station is nearest; the last one when none has a place. Null when there is
/// none.
const NewWeather* nearestRecord(const std::vector<NewWeather>& records,
                                const aviation::Position& position);

} // namespace simulator

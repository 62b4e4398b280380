#pragma once

#include "aviation/Position.h"
#include "standins/simulator/SimulatorState.h"

#include <cstdint>
#include <vector>

/// Where the clouds stand that were set: a layer of n octas covers about n eighths of the sky, in
/// patches of some nautical miles that are the same each time.
namespace simulator {

/// A cloud layer over a wide place.
struct CloudExtent
{
    int octas = 0;
    double base = 0.0; ///< feet above sea level
    double top = 0.0;  ///< the same
    bool isStorm = false;
};

/// Of the observation that holds there, else of the nearest weather record, else of the weather
/// data.
std::vector<CloudExtent> cloudsAt(const SimulatorState& state, const aviation::Position& position);

/// At a place, between two altitudes in feet: 0 for none, 20 for the thickest layer, more for
/// storms and layers above each other.
double cloudDensity(const std::vector<CloudExtent>& clouds, const aviation::Position& position,
                    double minAltitude, double maxAltitude);

/// Degrees and feet.
struct CloudArea
{
    double minLatitude = 0.0;
    double minLongitude = 0.0;
    double minAltitude = 0.0;
    double maxLatitude = 0.0;
    double maxLongitude = 0.0;
    double maxAltitude = 0.0;

    /// Within the earth, none of its sides turned round.
    bool isValid() const;
};
inline constexpr int kCloudGridSide = 64;

/// Rows from south to north, each from west to east; 64 of 64.
std::vector<std::uint8_t> cloudGrid(const SimulatorState& state, const CloudArea& area);

} // namespace simulator

#pragma once

#include "aviation/Units.h"

#include <cmath>

namespace aviation {

constexpr double radiansFromDegrees(double degrees)
{
    return degrees * kPi / 180.0;
}

/// Folds an angle in degrees into [0, 360). Not finite values give 0.
inline double Normalize360(double angle)
{
    constexpr double kFarOff = 36000.0;
    if (!std::isfinite(angle)) {
        return 0.0;
    }
    if (std::abs(angle) > kFarOff) { // keeps the loops short on absurd input
        angle = std::fmod(angle, 360.0);
    }
    while (angle < 0.0) {
        angle += 360.0;
    }
    while (angle >= 360.0) {
        angle -= 360.0;
    }
    return angle;
}

/// a minus b, folded once to the signed shorter way; exactly 180 and -180 stay as they are.
constexpr double AngleDifference(double a, double b)
{
    const double difference = a - b;
    if (difference > 180.0) {
        return difference - 360.0;
    }
    return difference < -180.0 ? difference + 360.0 : difference;
}

} // namespace aviation

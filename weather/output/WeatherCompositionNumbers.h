#pragma once

#include "aviation/Units.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

/// How the composition turns its sums into the narrow integers of the record: truncation towards
/// zero, then the low bits, so that a direction of -5 degrees becomes 355. Pure functions.
namespace composition {

/// Truncates towards zero. NaN gives 0, absurd values end far outside of every field.
inline std::int64_t truncated(double value)
{
    constexpr double kFar = 1.0e15;
    return std::isnan(value) ? 0 : static_cast<std::int64_t>(std::clamp(value, -kFar, kFar));
}

/// The same, rounding up.
inline std::int64_t roundedUp(double value)
{
    return truncated(std::ceil(value));
}

inline std::uint16_t word(std::int64_t value)
{
    return static_cast<std::uint16_t>(value);
}

inline std::int16_t signedWord(std::int64_t value)
{
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
}

inline std::uint8_t octet(std::int64_t value)
{
    return static_cast<std::uint8_t>(value);
}

/// Degrees as the record holds directions and variances.
inline std::uint16_t wordFromDegrees(double degrees)
{
    return word(truncated(degrees * 65536.0 / 360.0));
}

/// Whole metres, truncated towards zero.
inline std::int64_t wholeMetres(double feet)
{
    return truncated(aviation::metresFromFeet(feet));
}

} // namespace composition

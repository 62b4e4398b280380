#pragma once

#include <cmath>
#include <cstdint>

/// Unit constants of the whole system. All decoders and writers use exactly these
/// numbers; nothing is recomputed from a more precise definition.
namespace aviation {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kFeetPerMetre = 3.28084;
inline constexpr double kKmPerNm = 1.852;
inline constexpr double kMetresPerSecondPerKnot = 0.5144444;
/// Used by SYNOP wind speeds, which multiply where METAR divides by kMetresPerSecondPerKnot.
inline constexpr double kKnotsPerMetrePerSecond = 1.943844492;
inline constexpr int kMetresPerStatuteMile = 1609;
inline constexpr double kStatuteMilesPerMetre = 0.000621371;
inline constexpr float kHpaPerHundredthInch = 0.33864316F;

/// Metres to hundredths of a statute mile, the visibility unit of the simulator weather records.
/// Rounds up; a product above 65535 gives 65535, never wraps. Negative input gives 0.
inline std::uint16_t MetresToHundredthsOfMile(double metres)
{
    constexpr double kLimit = 65535.0;
    const double hundredths = metres * kStatuteMilesPerMetre * 100.0;
    if (!(hundredths > 0.0)) {
        return 0;
    }
    return hundredths > kLimit ? 65535 : static_cast<std::uint16_t>(std::ceil(hundredths));
}

/// Feet to metres by the system's constant, not truncated.
constexpr double metresFromFeet(double feet)
{
    return feet / kFeetPerMetre;
}

} // namespace aviation

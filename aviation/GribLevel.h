#pragma once

#include "aviation/Wind.h"

#include <cstdint>

namespace aviation::weather {

/// One upper-air level.
struct GribLevel
{
    std::int32_t altitude = 0; ///< feet
    Wind wind{0.0F, 0.0F, -1.0F, 0.0F};
    std::int16_t temperature = -99; ///< degrees Celsius, -99 not known
    std::int16_t dewPoint = -99;    ///< degrees Celsius, -99 not known
    float humidity = 0.0F;          ///< relative humidity, percent
    float pressure = 1012.0F;       ///< hPa, -1 for maximum wind and tropopause
};
static_assert(sizeof(GribLevel) == 32);

/// Relative humidity in percent by the Magnus formula over water (t >= 0) or ice (t < 0).
double relativeHumidity(int temperature, int dewPoint);

/// A value of GribLevel::humidity that says "not known" when it is handed to makeGribLevel.
inline constexpr float kUnknownHumidity = -1.0F;

/// Builds a level with its humidity computed from temperature and dew point. The given humidity
/// stays only where it is kUnknownHumidity and both temperatures are unknown too (-99).
GribLevel makeGribLevel(std::int32_t altitude, const Wind& wind, std::int16_t temperature,
                        std::int16_t dewPoint, float pressure, float humidity = 0.0F);

} // namespace aviation::weather

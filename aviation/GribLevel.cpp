#include "aviation/GribLevel.h"

#include <cmath>

namespace aviation::weather {

namespace {

constexpr std::int16_t kUnknownTemperature = -99;

/// Saturation vapour pressure in hPa by the Magnus formula.
double vapourPressure(int celsius)
{
    const bool overWater = celsius >= 0;
    const double a = overWater ? 7.5 : 7.6;
    const double b = overWater ? 237.3 : 240.7;
    return 6.1078 * std::pow(10.0, a * celsius / (b + celsius));
}

} // namespace

double relativeHumidity(int temperature, int dewPoint)
{
    return vapourPressure(dewPoint) * 100.0 / vapourPressure(temperature);
}

GribLevel makeGribLevel(std::int32_t altitude, const Wind& wind, std::int16_t temperature,
                        std::int16_t dewPoint, float pressure, float humidity)
{
    GribLevel level{altitude, wind, temperature, dewPoint, humidity, pressure};
    const bool unknown = temperature == kUnknownTemperature && dewPoint == kUnknownTemperature
                         && humidity == kUnknownHumidity;
    if (!unknown) {
        level.humidity = static_cast<float>(relativeHumidity(temperature, dewPoint));
    }
    return level;
}

} // namespace aviation::weather

#include "dwc/TargetWind.h"

#include "aviation/Angles.h"
#include "dwc/WindSteering.h"

#include <algorithm>
#include <cmath>

namespace targetwind {

using aviation::weather::GribLevel;
using aviation::weather::Wind;

namespace {

/// Simulators and reports know no gust of a wind aloft.
constexpr float kNotMeasured = -1.0F;

std::int16_t wholeDegrees(double celsius)
{
    constexpr double kFarthest = 200.0; // nothing in the air is hotter or colder
    constexpr std::int16_t kUnknown = -99;
    return std::isfinite(celsius)
               ? static_cast<std::int16_t>(std::clamp(celsius, -kFarthest, kFarthest))
               : kUnknown;
}

template <typename Number>
double between(Number lower, Number upper, double share)
{
    const auto from = static_cast<double>(lower);
    return from + (static_cast<double>(upper) - from) * share;
}

Wind windBetween(const Wind& lower, const Wind& upper, double share)
{
    const double from = aviation::Normalize360(static_cast<double>(lower.Dir));
    const double to = aviation::Normalize360(static_cast<double>(upper.Dir));
    const double direction = from + aviation::AngleDifference(to, from) * share;
    return {windsteering::foldedDirection(direction),
            static_cast<float>(between(lower.Speed, upper.Speed, share)), kNotMeasured, 0.0F};
}

/// The level as it is, unless its direction is none.
GribLevel itself(GribLevel level)
{
    if (!windsteering::isDirectionInRange(level.wind)) {
        level.wind.Dir = windsteering::foldedDirection(static_cast<double>(level.wind.Dir));
    }
    return level;
}

} // namespace

GribLevel groundLevel(const aviation::weather::Metar& metar, float magneticVariation)
{
    const double direction =
        static_cast<double>(metar.wind().Dir) + static_cast<double>(magneticVariation);
    const Wind wind{windsteering::foldedDirection(direction), metar.wind().Speed, kNotMeasured,
                    0.0F};
    return aviation::weather::makeGribLevel(
        metar.elevation(), wind, wholeDegrees(static_cast<double>(metar.temperature())),
        wholeDegrees(static_cast<double>(metar.dewPoint())), metar.qnh());
}

GribLevel levelBetween(const GribLevel& lower, const GribLevel& upper, std::int32_t altitude)
{
    const double span = static_cast<double>(upper.altitude) - lower.altitude;
    const double above = static_cast<double>(altitude) - lower.altitude;
    const double share = span != 0.0 ? std::clamp(above / span, 0.0, 1.0) : 0.0;
    if (share == 0.0 || share == 1.0) {
        return itself(share == 0.0 ? lower : upper);
    }
    return aviation::weather::makeGribLevel(
        altitude, windBetween(lower.wind, upper.wind, share),
        wholeDegrees(between(lower.temperature, upper.temperature, share)),
        wholeDegrees(between(lower.dewPoint, upper.dewPoint, share)),
        static_cast<float>(between(lower.pressure, upper.pressure, share)));
}

GribLevel highestLevel(const std::vector<GribLevel>& levels)
{
    return itself(levels.back());
}

GribLevel levelAt(const std::vector<GribLevel>& levels, const GribLevel& ground,
                  std::int32_t altitude)
{
    if (levels.empty()) {
        return itself(ground);
    }
    const auto upper = std::lower_bound(
        levels.begin(), levels.end(), altitude,
        [](const GribLevel& level, std::int32_t at) { return level.altitude < at; });
    if (upper == levels.end()) {
        return highestLevel(levels);
    }
    if (upper->altitude == altitude) {
        return itself(*upper);
    }
    return levelBetween(upper == levels.begin() ? ground : *std::prev(upper), *upper, altitude);
}

} // namespace targetwind

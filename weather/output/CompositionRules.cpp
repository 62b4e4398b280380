#include "weather/output/CompositionRules.h"

#include <algorithm>

namespace composition {

using aviation::weather::GribLevel;

double spreadNm(const aviation::Position& a, const aviation::Position& b)
{
    return b.isKnown() ? a.DistanceTo(b) : aviation::kUnknownDistance;
}

RandomCirrus drawCirrus(aviation::RandomSource& random)
{
    constexpr std::int32_t kLowest = 33000;
    constexpr std::int32_t kSpan = 20000;
    RandomCirrus cirrus;
    cirrus.baseFeet = random.next() % kSpan + kLowest;
    cirrus.cover = random.next() % 8;
    return cirrus;
}

std::optional<double> topFromHumidity(const std::vector<GribLevel>& levels, double base,
                                      double feetPerUnit, double humidityLimit)
{
    constexpr double kDryAir = 90.0; // percent; at or below it a cloud ends
    constexpr double kLargestRise = 10.0;
    if (levels.empty()) {
        return std::nullopt;
    }
    std::optional<double> top;
    double accepted = static_cast<double>(levels.front().humidity);
    bool inside = false;
    for (const GribLevel& level : levels) {
        const double height = level.altitude / feetPerUnit;
        const double humidity = static_cast<double>(level.humidity);
        inside = inside || base >= height;
        if (inside && humidity <= kDryAir) {
            break;
        }
        if (inside && height > base && humidity > humidityLimit
            && accepted > humidity - kLargestRise) {
            accepted = humidity;
            top = height;
        }
    }
    return top;
}

GribLevel levelAt(const std::vector<GribLevel>& levels, std::int32_t altitudeFeet)
{
    if (levels.empty()) {
        return {};
    }
    const auto below = std::find_if(levels.rbegin(), levels.rend(), [&](const GribLevel& level) {
        return level.altitude <= altitudeFeet;
    });
    return below != levels.rend() ? *below : levels.front();
}

} // namespace composition

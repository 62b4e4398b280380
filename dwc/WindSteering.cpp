#include "dwc/WindSteering.h"

#include "aviation/Angles.h"

#include <algorithm>

namespace windsteering {

using aviation::weather::Wind;

namespace {

double directionChange(double difference, double limit)
{
    if (difference > 0.0) {
        return std::min(difference, limit);
    }
    return difference < 0.0 ? std::max(difference, -limit) : 0.0;
}

double steppedSpeed(double speed, double aim, double limit)
{
    const double difference = aim - speed;
    if (difference > 0.0) {
        return speed + std::min(difference, limit);
    }
    if (!(difference < 0.0)) {
        return speed;
    }
    const double fallen = speed - limit; // also when less was needed
    return fallen < 0.0 ? std::max(aim, 0.0) : fallen;
}

} // namespace

Limits limitsFor(double stepMs, int degreesPerSecond, int knotsPerSecond)
{
    constexpr double kMsPerSecond = 1000.0;
    return {stepMs * std::max(degreesPerSecond, 0) / kMsPerSecond,
            stepMs * std::max(knotsPerSecond, 0) / kMsPerSecond};
}

float foldedDirection(double degrees)
{
    constexpr float kTurn = 360.0F;
    const auto folded = static_cast<float>(aviation::Normalize360(degrees));
    return folded < kTurn ? folded : 0.0F;
}

Wind sum(const Wind& wind, const Wind& offset)
{
    return {foldedDirection(static_cast<double>(wind.Dir) + static_cast<double>(offset.Dir)),
            wind.Speed + offset.Speed, wind.Gust + offset.Gust, wind.Fourth};
}

Wind stepped(const Wind& current, const Wind& aim, const Limits& limits)
{
    const auto direction = static_cast<double>(current.Dir);
    const auto speed = static_cast<double>(current.Speed);
    const double turn = aviation::AngleDifference(static_cast<double>(aim.Dir), direction);
    Wind next = current;
    next.Dir = foldedDirection(direction + directionChange(turn, limits.degrees));
    next.Speed =
        static_cast<float>(steppedSpeed(speed, static_cast<double>(aim.Speed), limits.knots));
    return next;
}

bool isDirectionInRange(const Wind& wind)
{
    constexpr float kMost = 360.0F;
    return wind.Dir >= 0.0F && wind.Dir <= kMost;
}

bool isSpeedInRange(const Wind& wind)
{
    constexpr float kMost = 200.0F;
    return wind.Speed >= 0.0F && wind.Speed <= kMost;
}

} // namespace windsteering

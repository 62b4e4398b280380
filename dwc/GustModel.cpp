#include "dwc/GustModel.h"

#include "aviation/support/Clock.h"
#include "aviation/support/RandomSource.h"

#include <cmath>

using aviation::weather::Wind;

namespace {

constexpr std::int64_t kPeriodSeconds = 3;
constexpr double kSteps = 100.0; ///< random numbers count hundredths
constexpr Wind kNoGust{0.0F, 0.0F, -1.0F, 0.0F};

/// Half of a drawn number, to the other side where that is small.
float offsetOf(double drawn, double full)
{
    const double half = drawn * 0.5;
    return static_cast<float>(drawn < full * 0.5 ? -half : half);
}

/// How many hundredths there are to choose from; 0 for values that aren't finite.
double hundredthsIn(double value)
{
    const double hundredths = std::trunc(value * kSteps);
    return std::isfinite(hundredths) ? hundredths : 0.0;
}

} // namespace

Wind GustModel::update(const Wind& wind, std::int32_t heightAgl, bool gusty)
{
    if (!gusty) {
        return m_inForce = {};
    }
    const std::int64_t now = aviation::Clock::current().nowSeconds();
    if (!m_lastUpdate || *m_lastUpdate < now - kPeriodSeconds) {
        m_inForce = draw(wind, heightAgl);
        m_lastUpdate = now;
    }
    if (wind.Speed <= 0.0F) {
        m_inForce = kNoGust; // one that was drawn before the calm would blow on for seconds
    }
    return m_inForce;
}

Wind GustModel::draw(const Wind& wind, std::int32_t heightAgl)
{
    constexpr std::int32_t kSmoothFromFeet = 3001;
    constexpr double kShareOfSpeed = 0.25;
    if (heightAgl >= kSmoothFromFeet) {
        return m_windGust = kNoGust;
    }
    const std::int64_t now = aviation::Clock::current().nowSeconds();
    if (m_lastDraw && now - kPeriodSeconds < *m_lastDraw) {
        return m_windGust;
    }
    const auto speed = static_cast<double>(wind.Speed);
    double spread = speed * kShareOfSpeed;
    if (spread == 0.0) {
        return kNoGust;
    }
    if (wind.Gust > 0.0F) {
        spread = static_cast<double>(wind.Gust) - speed;
    }
    if (hundredthsIn(spread) == 0.0 || hundredthsIn(speed) == 0.0) {
        return m_windGust = kNoGust; // there is nothing to choose from
    }
    const double drawnSpeed = drawBelow(spread);
    const double drawnTurn = drawBelow(speed);
    m_windGust = {offsetOf(drawnTurn, speed), offsetOf(drawnSpeed, spread), wind.Gust, wind.Fourth};
    m_lastDraw = now;
    return m_windGust;
}

/// A random number from 0 to below `limit` in hundredths. The remainder has the sign of the random
/// number, which is never negative, whatever the limit's.
double GustModel::drawBelow(double limit)
{
    return std::fmod(static_cast<double>(m_random.next()), hundredthsIn(limit)) / kSteps;
}

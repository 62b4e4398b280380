#include "aviation/Position.h"

#include "aviation/Angles.h"
#include "aviation/Units.h"

#include <algorithm>
#include <cmath>

namespace aviation {

namespace {

constexpr double kDistanceRadiusKm = 6378.137;
/// Moving uses a slightly smaller earth than measuring, on purpose.
constexpr double kMoveRadiusKm = 6378.1;
constexpr double kTwoPi = 6.283185307179586;

} // namespace

double DistanceNm(double lat1, double lon1, double lat2, double lon2)
{
    if (lat1 == lat2 && lon1 == lon2) {
        return 0.0;
    }
    const double phi1 = radiansFromDegrees(lat1);
    const double phi2 = radiansFromDegrees(lat2);
    const double deltaLambda = radiansFromDegrees(lon2) - radiansFromDegrees(lon1);
    const double cosine =
        std::cos(deltaLambda) * std::cos(phi2) * std::cos(phi1) + std::sin(phi2) * std::sin(phi1);
    if (cosine > 1.0) {
        return 0.0;
    }
    // Antipodes may round below -1 just as close points round above 1.
    return std::acos(cosine < -1.0 ? -1.0 : cosine) * kDistanceRadiusKm / kKmPerNm;
}

double GreatCircleNm(const Position& from, const Position& to)
{
    return DistanceNm(from.latitude(), from.longitude(), to.latitude(), to.longitude());
}

double Position::DistanceTo(double latitude, double longitude, DistanceUnit unit) const
{
    if (!isKnown()) {
        return kUnknownDistance;
    }
    const double nm = DistanceNm(m_latitude, m_longitude, latitude, longitude);
    return unit == DistanceUnit::Kilometres ? nm * kKmPerNm : nm;
}

double Position::DistanceTo(const Position& other, DistanceUnit unit) const
{
    return DistanceTo(other.m_latitude, other.m_longitude, unit);
}

void Position::MoveBy(double bearing, double distanceNm)
{
    const double delta = distanceNm * kKmPerNm / kMoveRadiusKm;
    const double course = radiansFromDegrees(bearing);
    const double phi1 = radiansFromDegrees(m_latitude);
    const double sinPhi2 =
        std::cos(delta) * std::sin(phi1) + std::cos(course) * std::sin(delta) * std::cos(phi1);
    const double phi2 = std::asin(std::clamp(sinPhi2, -1.0, 1.0));
    const double lambda2 = radiansFromDegrees(m_longitude)
                           + std::atan2(std::sin(course) * std::sin(delta) * std::cos(phi1),
                                        std::cos(delta) - std::sin(phi2) * std::sin(phi1));
    m_latitude = phi2 * 180.0 / kPi;
    m_longitude = lambda2 * 180.0 / kPi;
}

double BearingDeg(double lat1, double lon1, double lat2, double lon2)
{
    if (lat1 == lat2 && lon1 == lon2) {
        return 0.0;
    }
    const double phi1 = radiansFromDegrees(lat1);
    const double phi2 = radiansFromDegrees(lat2);
    const double deltaLambda = radiansFromDegrees(lon1 - lon2);
    const double y = std::sin(deltaLambda) * std::cos(phi2);
    const double x =
        std::sin(phi2) * std::cos(phi1) - std::sin(phi1) * std::cos(phi2) * std::cos(deltaLambda);
    return Normalize360(std::fmod(std::atan2(y, x), kTwoPi) * -180.0 / kPi);
}

double BearingTo(const Position& from, const Position& to)
{
    return BearingDeg(from.latitude(), from.longitude(), to.latitude(), to.longitude());
}

} // namespace aviation

#include "standins/simulator/Track.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr double kShortestNm = 20.0;
constexpr double kTaxiSeconds = 240.0;
constexpr double kTaxiKnots = 15.0;
constexpr double kRollSeconds = 36.0;
constexpr double kLiftOffKnots = 145.0;
constexpr double kStepSeconds = 5.0;
constexpr double kHighestCruise = 36000.0; ///< feet
/// Climb and descent take about this many miles for each foot of altitude.
constexpr double kNmPerFoot = 0.0065;
constexpr double kGlideFeetPerNm = 318.0; ///< three degrees
constexpr double kFlareRate = -180.0;     ///< feet per minute
constexpr double kSecondsPerHour = 3600.0;
constexpr double kSecondsPerMinute = 60.0;

/// Puts points one after the other along the great circle.
class TrackBuilder
{
public:
    TrackBuilder(const aviation::Position& from, const aviation::Position& to)
        : m_position(from)
        , m_to(to)
        , m_distance(aviation::GreatCircleNm(from, to))
        , m_cruise(
              std::min(kHighestCruise, std::floor(m_distance * 0.8 / kNmPerFoot / 1000.0) * 1000.0))
        , m_course(aviation::BearingTo(from, to))
    {}

    Track build()
    {
        // The taxi way lies behind the runway, so that the roll begins at the first place.
        m_position.MoveBy(m_course + 180.0, kTaxiKnots * kTaxiSeconds / kSecondsPerHour);
        roll(kTaxiSeconds, kTaxiKnots, kTaxiKnots);
        roll(kRollSeconds, kTaxiKnots, kLiftOffKnots);
        fly();
        m_altitude = 0.0;
        add(kFlareRate, true);
        roll(kRollSeconds, kLiftOffKnots - 10.0, kTaxiKnots);
        return m_track;
    }

private:
    void roll(double seconds, double fromKnots, double toKnots)
    {
        for (double t = 0.0; t < seconds; t += kStepSeconds) {
            m_speed = fromKnots + (toKnots - fromKnots) * t / seconds;
            add(0.0, true);
            step();
        }
        m_speed = toKnots;
    }

    void fly()
    {
        double left = aviation::GreatCircleNm(m_position, m_to);
        double before = left + 1.0;
        while (left > 0.0 && left < before) { // ends at the place or when it lies behind
            const double last = m_altitude;
            m_altitude = std::min({m_altitude + climbRate() * kStepSeconds / kSecondsPerMinute,
                                   m_cruise, left * kGlideFeetPerNm});
            m_speed = std::min(m_speed + 5.0, speedAt(m_altitude));
            add((m_altitude - last) * kSecondsPerMinute / kStepSeconds, false);
            m_course = aviation::BearingTo(m_position, m_to);
            step();
            before = left;
            left = aviation::GreatCircleNm(m_position, m_to);
        }
    }

    double climbRate() const { return m_altitude < 10000.0 ? 2200.0 : 1500.0; }
    static double speedAt(double altitude)
    {
        return std::clamp(140.0 + (altitude - 1500.0) * 0.0093, 140.0, 450.0);
    }
    void step()
    {
        m_position.MoveBy(m_course, m_speed * kStepSeconds / kSecondsPerHour);
        m_seconds += kStepSeconds;
    }
    void add(double verticalRate, bool onGround)
    {
        // A course over the date line goes on beyond 180 degrees.
        const double longitude = std::remainder(m_position.longitude(), 360.0);
        m_track.push_back({m_seconds, m_position.latitude(), longitude, m_altitude, m_speed,
                           m_course, verticalRate, onGround});
    }

    aviation::Position m_position;
    aviation::Position m_to;
    double m_distance;
    double m_cruise;
    double m_course;
    double m_seconds = 0.0;
    double m_altitude = 0.0;
    double m_speed = 0.0;
    Track m_track;
};

} // namespace

Track greatCircleTrack(const aviation::Position& from, const aviation::Position& to)
{
    if (!(aviation::GreatCircleNm(from, to) >= kShortestNm)) {
        return {};
    }
    return TrackBuilder(from, to).build();
}

} // namespace simulator

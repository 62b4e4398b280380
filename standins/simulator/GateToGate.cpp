#include "standins/simulator/GateToGate.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace simulator {

namespace {

constexpr double kNever = std::numeric_limits<double>::infinity();

// Seconds at the gates.
constexpr double kBoardingSeconds = 60.0;
constexpr double kGateSeconds = 30.0;
constexpr double kEngineStartSeconds = 60.0;
constexpr double kBeforeTaxi = kBoardingSeconds + kGateSeconds + kEngineStartSeconds;
constexpr double kBrakingSeconds = 20.0;
constexpr double kTaxiInSeconds = 180.0;
constexpr double kStopSeconds = 5.0;
constexpr double kShutdownSeconds = 30.0;
constexpr double kParkedSeconds = 30.0;
constexpr double kArrivedSeconds = 60.0;

constexpr double kTaxiKnots = 15.0;
constexpr double kRollKnots = 40.0;     ///< faster on the way to the runway's end is the take-off
constexpr double kTaxiInKnots = 30.0;   ///< the landing roll ends
constexpr double kTakeOffFeet = 1500.0; ///< above the ground
constexpr double kApproachFeet = 4000.0;
constexpr double kLevelFeet = 150.0; ///< within this of the highest point is cruise
constexpr double kLeavesLevelFeet = 300.0;
/// Recorded altitudes come in steps of 25 feet.
constexpr double kAltitudeStep = 12.0;
/// Altitudes of this time next to the runway give the height of the runway.
constexpr double kNearRunwaySeconds = 120.0;
constexpr double kHardestRate = -300.0;
constexpr double kSoftestRate = -60.0;
constexpr double kSecondsPerHour = 3600.0;

/// The lowest point in the air in a range of points; 0 if there is none.
template <class Iterator>
double lowestInAir(Iterator begin, Iterator end, double nearSeconds)
{
    double lowest = kNever;
    for (auto point = begin;
         point != end && std::abs(point->seconds - nearSeconds) <= kNearRunwaySeconds; ++point)
    {
        lowest = std::min(lowest, point->altitude);
    }
    return std::isinf(lowest) ? 0.0 : lowest;
}

/// The highest point in the air; the first point when none is.
Track::iterator highestPoint(Track& track)
{
    const auto height = [](const TrackPoint& point) {
        return point.onGround ? -kNever : point.altitude;
    };
    return std::max_element(
        track.begin(), track.end(),
        [height](const TrackPoint& a, const TrackPoint& b) { return height(a) < height(b); });
}

/// The ground before the lift-off: flags of recorded tracks change too early.
void placeLiftOff(GateToGate& flight)
{
    Track& track = flight.points;
    const auto airborne = std::find_if(track.begin(), track.end(),
                                       [](const TrackPoint& point) { return !point.onGround; });
    if (airborne == track.begin() || airborne == track.end()) {
        return;
    }
    flight.departureGround = lowestInAir(airborne, track.end(), airborne->seconds);
    const double limit = flight.departureGround + kAltitudeStep;
    auto climbing = std::find_if(
        airborne, track.end(), [limit](const TrackPoint& point) { return point.altitude > limit; });
    climbing = climbing == airborne ? climbing : std::prev(climbing);
    flight.liftOff = climbing->seconds;
    std::for_each(track.begin(), climbing, [&flight](TrackPoint& point) {
        point.onGround = true;
        point.altitude = flight.departureGround;
        point.verticalRate = 0.0;
    });
}

void placeTouchdown(GateToGate& flight)
{
    Track& track = flight.points;
    flight.touchdown = kNever;
    const auto lastInAir = std::find_if(track.rbegin(), track.rend(),
                                        [](const TrackPoint& point) { return !point.onGround; });
    if (lastInAir == track.rbegin() || lastInAir == track.rend()) {
        return;
    }
    flight.destinationGround = lowestInAir(lastInAir, track.rend(), lastInAir->seconds);
    const double limit = flight.destinationGround + kAltitudeStep;
    const auto down =
        std::find_if(std::next(highestPoint(track)), track.end(), [limit](const TrackPoint& point) {
            return point.onGround || point.altitude <= limit;
        });
    flight.touchdown = down->seconds;
    const double rate = (down->verticalRate + std::prev(down)->verticalRate) / 2.0;
    flight.touchdownRate = std::clamp(rate, kHardestRate, kSoftestRate);
    std::for_each(down, track.end(), [&flight](TrackPoint& point) {
        point.onGround = true;
        point.altitude = flight.destinationGround;
        point.verticalRate = 0.0;
    });
}

/// Points that claim to be on the ground in mid-flight are faults of the recording.
void dropFalseGround(GateToGate& flight)
{
    std::erase_if(flight.points, [&flight](const TrackPoint& point) {
        return point.onGround && point.seconds > flight.liftOff && point.seconds < flight.touchdown;
    });
}

void putGateInFront(GateToGate& flight)
{
    Track& track = flight.points;
    std::for_each(track.begin(), track.end(),
                  [](TrackPoint& point) { point.seconds += kBeforeTaxi; });
    flight.liftOff += kBeforeTaxi;
    flight.touchdown += kBeforeTaxi;
    TrackPoint gate = track.front();
    gate.groundSpeed = 0.0;
    gate.seconds = kBeforeTaxi - 1.0;
    track.insert(track.begin(), gate);
    gate.seconds = 0.0;
    track.insert(track.begin(), gate);
}

/// Moves on from the last point while the speed changes evenly.
void rollOn(Track& track, double seconds, double knots)
{
    TrackPoint next = track.back();
    aviation::Position position(next.latitude, next.longitude);
    position.MoveBy(next.track, (next.groundSpeed + knots) / 2.0 * seconds / kSecondsPerHour);
    next.latitude = position.latitude();
    next.longitude = std::remainder(position.longitude(), 360.0);
    next.groundSpeed = knots;
    next.seconds += seconds;
    track.push_back(next);
}

void putGateBehind(GateToGate& flight)
{
    rollOn(flight.points, kBrakingSeconds, kTaxiKnots);
    rollOn(flight.points, kTaxiInSeconds, kTaxiKnots);
    rollOn(flight.points, kStopSeconds, 0.0);
}

double& startOf(GateToGate& flight, Phase phase)
{
    return flight.starts[static_cast<std::size_t>(phase)];
}

void timePhasesOnDeparture(GateToGate& flight)
{
    if (flight.liftOff <= 0.0) {
        return;
    }
    startOf(flight, Phase::Gate) = kBoardingSeconds;
    startOf(flight, Phase::EngineStart) = kBoardingSeconds + kGateSeconds;
    startOf(flight, Phase::TaxiOut) = kBeforeTaxi;
    double roll = flight.liftOff;
    for (auto point = flight.points.rbegin(); point != flight.points.rend(); ++point) {
        if (point->seconds < flight.liftOff && point->groundSpeed < kRollKnots) {
            break;
        }
        roll = std::min(roll, point->seconds);
    }
    startOf(flight, Phase::TakeOff) = roll;
}

/// The first point from a time on that meets the condition; `otherwise` if none does.
template <class Condition>
double firstTime(const GateToGate& flight, double from, double otherwise, Condition condition)
{
    const auto found =
        std::find_if(flight.points.begin(), flight.points.end(), [&](const TrackPoint& point) {
            return point.seconds >= from && condition(point);
        });
    return found == flight.points.end() ? otherwise : found->seconds;
}

void timePhasesInFlight(GateToGate& flight)
{
    const double highest = highestPoint(flight.points)->altitude;
    const auto above = [&flight](const TrackPoint& point) {
        return point.altitude - flight.groundAt(point.seconds);
    };
    startOf(flight, Phase::Climb) =
        firstTime(flight, flight.liftOff, flight.liftOff,
                  [&above](const TrackPoint& point) { return above(point) >= kTakeOffFeet; });
    startOf(flight, Phase::Cruise) = firstTime(flight, 0.0, 0.0, [&](const TrackPoint& point) {
        return point.altitude >= highest - kLevelFeet;
    });
    double descent = 0.0;
    for (const TrackPoint& point : flight.points) {
        descent = point.altitude >= highest - kLeavesLevelFeet ? point.seconds : descent;
    }
    const bool descends = descent < flight.points.back().seconds;
    startOf(flight, Phase::Descent) = descends ? descent : kNever;
    startOf(flight, Phase::Approach) =
        descends
            ? firstTime(flight, descent, flight.touchdown,
                        [&above](const TrackPoint& point) { return above(point) < kApproachFeet; })
            : kNever;
}

void timePhasesOnArrival(GateToGate& flight)
{
    startOf(flight, Phase::Landing) = flight.touchdown;
    startOf(flight, Phase::TaxiIn) =
        firstTime(flight, flight.touchdown, kNever,
                  [](const TrackPoint& point) { return point.groundSpeed <= kTaxiInKnots; });
    const double stand = std::isinf(flight.touchdown) ? kNever : flight.points.back().seconds;
    startOf(flight, Phase::Shutdown) = stand;
    startOf(flight, Phase::Parked) = stand + kShutdownSeconds;
    startOf(flight, Phase::Arrived) = stand + kShutdownSeconds + kParkedSeconds;
    flight.duration = std::isinf(stand)
                          ? flight.points.back().seconds
                          : stand + kShutdownSeconds + kParkedSeconds + kArrivedSeconds;
}

/// A flight that never leaves the ground stays at its gate.
GateToGate standingFlight(Track track)
{
    GateToGate flight;
    track.resize(1);
    track.front().onGround = true;
    track.front().groundSpeed = 0.0;
    flight.points = std::move(track);
    flight.starts.fill(kNever);
    flight.starts[0] = 0.0;
    flight.liftOff = kNever;
    flight.touchdown = kNever;
    return flight;
}

} // namespace

double GateToGate::groundAt(double seconds) const
{
    if (seconds <= liftOff || std::isinf(touchdown)) {
        return departureGround;
    }
    const double share = std::min(1.0, (seconds - liftOff) / (touchdown - liftOff));
    return departureGround + (destinationGround - departureGround) * share;
}

GateToGate gateToGate(Track track)
{
    const bool flies = std::any_of(track.begin(), track.end(),
                                   [](const TrackPoint& point) { return !point.onGround; });
    if (!flies) {
        return standingFlight(std::move(track));
    }
    GateToGate flight;
    flight.points = std::move(track);
    placeLiftOff(flight);
    placeTouchdown(flight);
    dropFalseGround(flight);
    if (flight.liftOff > 0.0) {
        putGateInFront(flight);
    }
    if (!std::isinf(flight.touchdown)) {
        putGateBehind(flight);
    }
    timePhasesOnDeparture(flight);
    timePhasesInFlight(flight);
    timePhasesOnArrival(flight);
    for (std::size_t i = 1; i < flight.starts.size(); ++i) {
        flight.starts[i] = std::max(flight.starts[i], flight.starts[i - 1]);
    }
    return flight;
}

} // namespace simulator

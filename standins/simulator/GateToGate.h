#pragma once

#include "standins/simulator/Track.h"

#include <array>

namespace simulator {

/// Phases of a flight in their order, from gate to gate.
enum class Phase
{
    Boarding,    ///< at the gate, doors open, engines off, parking brake set
    Gate,        ///< doors closed
    EngineStart, ///< engines on, parking brake still set
    TaxiOut,
    TakeOff, ///< from the start of the roll to 1,500 ft above the ground
    Climb,
    Cruise,
    Descent,
    Approach, ///< below 4,000 ft above the destination
    Landing,  ///< from touchdown until the roll has ended
    TaxiIn,
    Shutdown, ///< at the gate, parking brake set, engines on
    Parked,   ///< engines off
    Arrived   ///< doors open
};
inline constexpr int kPhases = 14;

/// A track with a gate at each end that it reaches on the ground, and the times of its phases in
/// seconds since its beginning. Plain value.
struct GateToGate
{
    Track points;                         ///< at least one
    std::array<double, kPhases> starts{}; ///< infinite for phases that aren't reached
    double duration = 0.0;
    double liftOff = 0.0;           ///< 0 when the track begins in the air
    double touchdown = 0.0;         ///< infinite when it ends in the air
    double departureGround = 0.0;   ///< feet above sea level
    double destinationGround = 0.0; ///< feet above sea level
    double touchdownRate = 0.0;     ///< feet per minute, negative

    /// Height of the ground below the aircraft in feet: a slope from one place to the other.
    double groundAt(double seconds) const;
};

/// An empty track gives a flight that stands at (0, 0).
GateToGate gateToGate(Track track);

} // namespace simulator

#pragma once

#include <QString>

/// Phases of a flight. The numbers go into recorded flights.
namespace flightphase {
inline constexpr int kNone = 0; ///< nobody follows the flight, or it isn't known yet
inline constexpr int kParking = 1;
inline constexpr int kBoarding = 2;
inline constexpr int kPushback = 3;
inline constexpr int kTaxi = 4;
inline constexpr int kTakeOff = 5;
inline constexpr int kClimb = 6;
inline constexpr int kCruise = 7;
inline constexpr int kDescent = 8;
inline constexpr int kApproach = 9;
inline constexpr int kLanding = 10;
inline constexpr int kGoAround = 11;
inline constexpr int kTaxiToGate = 12;
} // namespace flightphase

/// The flight under way, for the weather cycle: what the recorder makes of it and where the plan
/// leads. Main thread.
class FlightState
{
public:
    FlightState() = default;
    FlightState(const FlightState&) = delete;
    FlightState& operator=(const FlightState&) = delete;
    virtual ~FlightState() = default;

    /// Of flightphase.
    virtual int flightPhase() const = 0;
    /// ICAO of the plan's destination; empty without a plan.
    virtual QString destination() const = 0;
};

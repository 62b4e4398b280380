#pragma once

#include "aviation/AircraftData.h"
#include "standins/simulator/GateToGate.h"

#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace simulator {

/// "boarding", "take-off", "taxi in", ...
QString phaseName(Phase phase);
/// By the name, case and blanks or hyphens ignored.
std::optional<Phase> phaseFromName(const QString& name);

/// What the flight knows of the air around it; the owner fills it from the weather that was set.
struct Air
{
    aviation::weather::Wind wind{0.0F, 0.0F, -1.0F, 0.0F}; ///< at the aircraft
    std::optional<float> temperature; ///< degrees Celsius at the aircraft, else the standard one
    std::optional<float> visibility;  ///< kilometres
};

/// Flies a track with a gate at each end, by its own time: seconds since boarding began. The time
/// moves by advance(), or follows the process's clock at a chosen speed. Used by one thread.
class SimulatedFlight
{
public:
    /// An empty track gives a flight that stands parked at (0, 0).
    explicit SimulatedFlight(Track track = demoTrack());

    /// Times of the flight, in seconds.
    double elapsed() const { return m_elapsed; }
    double duration() const { return m_plan.duration; }
    /// Infinite for a phase that the track doesn't reach.
    double startOf(Phase phase) const { return m_plan.starts[static_cast<std::size_t>(phase)]; }
    Phase phase() const { return phaseAt(m_elapsed); }
    Phase phaseAt(double seconds) const;

    /// Moves on; never beyond the end. Negative does nothing.
    void advance(double seconds);
    void jumpTo(double seconds);
    void jumpTo(Phase phase) { jumpTo(startOf(phase)); }
    /// By a fraction of the whole flight, 0 to 1, or a phase's name. False if it is neither.
    bool jumpTo(const QString& fractionOrPhase);

    /// How many seconds pass in one of the clock; 0 stands still. The initial speed is 0.
    void setSpeed(double speed);
    double speed() const { return m_speed; }
    /// Moves on by the time that has passed on the process's clock since the last call.
    void followClock();
    /// Paused, it doesn't follow the clock.
    void setPaused(bool paused);
    bool paused() const { return m_paused; }

    /// Seconds since 1970 that the simulator shows when boarding begins.
    void setStartTime(std::int64_t secondsSince1970) { m_startTime = secondsSince1970; }
    std::int64_t simTime() const { return m_startTime + static_cast<std::int64_t>(m_elapsed); }

    /// The aircraft now, without weights and landing rate.
    aviation::structs::AircraftData aircraft(const Air& air = {}) const;
    /// The vertical speed of the touchdown in feet per minute, negative, for the first call after
    /// it; 0 for all others, and 0 for a flight that was taken up on the ground.
    int takeLandingRate();

    /// Pounds an hour now.
    double fuelFlow() const;
    /// Pounds burned since boarding began.
    double fuelBurned() const;

private:
    TrackPoint pointAt(double seconds) const;
    bool isOnGround(double seconds) const;
    aviation::structs::AircraftState stateIn(Phase phase, double heightAgl) const;

    GateToGate m_plan;
    double m_elapsed = 0.0;
    double m_speed = 0.0;
    bool m_paused = false;
    std::int64_t m_clockMs = 0; ///< of the clock when m_elapsed was right
    std::int64_t m_startTime = 0;
    bool m_landed = false; ///< touchdown not yet reported
};

} // namespace simulator

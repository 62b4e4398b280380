#include "standins/simulator/SimulatedFlight.h"

#include "aviation/Angles.h"
#include "aviation/support/Clock.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace simulator {

namespace {

using aviation::structs::AircraftData;
using aviation::structs::AircraftState;

constexpr double kMsPerSecond = 1000.0;
constexpr double kSecondsPerHour = 3600.0;
constexpr double kLandingLightFeet = 10000.0; ///< above the ground
constexpr float kUnlimitedVisibility = 50.0F; ///< kilometres

// The standard atmosphere.
constexpr double kSeaLevelCelsius = 15.0;
constexpr double kCelsiusPerFoot = 0.0019812;
constexpr double kTropopauseCelsius = -56.5;

/// The compass points roughly to this place.
constexpr double kMagneticPoleLatitude = 80.8;
constexpr double kMagneticPoleLongitude = -72.8;

struct PhaseRow
{
    const char* name;
    double fuelFlow; ///< pounds an hour
};

/// In the order of Phase.
constexpr std::array<PhaseRow, kPhases> kRows{{{"boarding", 0.0},
                                               {"gate", 0.0},
                                               {"engine start", 600.0},
                                               {"taxi out", 1800.0},
                                               {"take-off", 15000.0},
                                               {"climb", 9500.0},
                                               {"cruise", 5200.0},
                                               {"descent", 1500.0},
                                               {"approach", 3600.0},
                                               {"landing", 2500.0},
                                               {"taxi in", 1500.0},
                                               {"shutdown", 800.0},
                                               {"parked", 0.0},
                                               {"arrived", 0.0}}};

QString plainName(QString name)
{
    return name.remove(QLatin1Char(' ')).remove(QLatin1Char('-')).toLower();
}

double between(double a, double b, double share)
{
    return a + (b - a) * share;
}

/// Along the shorter way, for angles and longitudes.
double angleBetween(double a, double b, double share)
{
    return a + aviation::AngleDifference(b, a) * share;
}

double magneticVariationAt(double latitude, double longitude)
{
    const double bearing =
        aviation::BearingDeg(latitude, longitude, kMagneticPoleLatitude, kMagneticPoleLongitude);
    return std::remainder(bearing, 360.0);
}

/// Length of the ground's vector less the wind's.
double trueAirspeed(const TrackPoint& point, const aviation::weather::Wind& wind)
{
    const double track = aviation::radiansFromDegrees(point.track);
    const double from = aviation::radiansFromDegrees(static_cast<double>(wind.Dir));
    const double speed = static_cast<double>(wind.Speed);
    return std::hypot(point.groundSpeed * std::cos(track) + speed * std::cos(from),
                      point.groundSpeed * std::sin(track) + speed * std::sin(from));
}

double standardTemperature(double altitude)
{
    return std::max(kTropopauseCelsius, kSeaLevelCelsius - kCelsiusPerFoot * altitude);
}

std::int32_t whole(double value)
{
    return static_cast<std::int32_t>(std::lround(value));
}

void describe(AircraftData& aircraft)
{
    aircraft.name = L"Demonstration Twin Jet";
    aircraft.registration = L"C-IRRI";
    aircraft.airline = L"Cirrilon Air";
    aircraft.type = L"B738";
}

} // namespace

QString phaseName(Phase phase)
{
    return QLatin1String(kRows[static_cast<std::size_t>(phase)].name);
}

std::optional<Phase> phaseFromName(const QString& name)
{
    for (int i = 0; i < kPhases; ++i) {
        const Phase phase = static_cast<Phase>(i);
        if (plainName(phaseName(phase)) == plainName(name)) {
            return phase;
        }
    }
    return std::nullopt;
}

SimulatedFlight::SimulatedFlight(Track track) : m_plan(gateToGate(std::move(track))) {}

Phase SimulatedFlight::phaseAt(double seconds) const
{
    const auto next = std::upper_bound(m_plan.starts.begin(), m_plan.starts.end(), seconds);
    const auto index = std::distance(m_plan.starts.begin(), next);
    return static_cast<Phase>(std::max<std::ptrdiff_t>(0, index - 1));
}

void SimulatedFlight::advance(double seconds)
{
    if (!(seconds > 0.0)) {
        return;
    }
    const bool wasInFlight = !isOnGround(m_elapsed);
    m_elapsed = std::min(m_elapsed + seconds, m_plan.duration);
    m_landed = m_landed || (wasInFlight && isOnGround(m_elapsed));
}

void SimulatedFlight::jumpTo(double seconds)
{
    m_elapsed = std::clamp(seconds, 0.0, m_plan.duration);
    m_landed = false;
}

bool SimulatedFlight::jumpTo(const QString& fractionOrPhase)
{
    bool isNumber = false;
    const double fraction = fractionOrPhase.toDouble(&isNumber);
    if (isNumber && fraction >= 0.0 && fraction <= 1.0) {
        jumpTo(fraction * m_plan.duration);
        return true;
    }
    const std::optional<Phase> wanted = phaseFromName(fractionOrPhase);
    if (wanted) {
        jumpTo(*wanted);
    }
    return wanted.has_value();
}

void SimulatedFlight::setSpeed(double speed)
{
    followClock();
    m_speed = speed;
}

void SimulatedFlight::followClock()
{
    const std::int64_t now = aviation::Clock::current().MonotonicMs();
    if (!m_paused) {
        advance(static_cast<double>(now - m_clockMs) / kMsPerSecond * m_speed);
    }
    m_clockMs = now;
}

void SimulatedFlight::setPaused(bool paused)
{
    followClock();
    m_paused = paused;
}

TrackPoint SimulatedFlight::pointAt(double seconds) const
{
    const Track& points = m_plan.points;
    const auto next =
        std::upper_bound(points.begin(), points.end(), seconds,
                         [](double time, const TrackPoint& point) { return time < point.seconds; });
    if (next == points.begin() || next == points.end()) {
        return next == points.begin() ? points.front() : points.back();
    }
    const TrackPoint& a = *std::prev(next);
    const TrackPoint& b = *next;
    const double share = (seconds - a.seconds) / (b.seconds - a.seconds);
    return {seconds,
            between(a.latitude, b.latitude, share),
            std::remainder(angleBetween(a.longitude, b.longitude, share), 360.0),
            between(a.altitude, b.altitude, share),
            between(a.groundSpeed, b.groundSpeed, share),
            aviation::Normalize360(angleBetween(a.track, b.track, share)),
            between(a.verticalRate, b.verticalRate, share),
            isOnGround(seconds)};
}

bool SimulatedFlight::isOnGround(double seconds) const
{
    return seconds < m_plan.liftOff || seconds >= m_plan.touchdown;
}

AircraftState SimulatedFlight::stateIn(Phase phase, double heightAgl) const
{
    AircraftState state;
    state.onGround = isOnGround(m_elapsed);
    state.doorOpen = phase == Phase::Boarding || phase == Phase::Arrived;
    state.engineOff = phase <= Phase::Gate || phase >= Phase::Parked;
    state.parkingBrake = phase <= Phase::EngineStart || phase >= Phase::Shutdown;
    state.landingLight =
        phase >= Phase::TakeOff && phase <= Phase::Landing && heightAgl < kLandingLightFeet;
    return state;
}

AircraftData SimulatedFlight::aircraft(const Air& air) const
{
    const TrackPoint point = pointAt(m_elapsed);
    const double heightAgl =
        point.onGround ? 0.0 : std::max(1.0, point.altitude - m_plan.groundAt(m_elapsed));
    AircraftData aircraft;
    static_cast<AircraftState&>(aircraft) = stateIn(phase(), heightAgl);
    describe(aircraft);
    aircraft.position = aviation::Position(point.latitude, point.longitude);
    aircraft.heightAgl = whole(heightAgl);
    aircraft.altitude = whole(point.altitude);
    aircraft.groundSpeed = whole(point.groundSpeed);
    aircraft.tas = whole(point.onGround ? point.groundSpeed : trueAirspeed(point, air.wind));
    const double variation = magneticVariationAt(point.latitude, point.longitude);
    aircraft.magneticVariation = static_cast<float>(variation);
    aircraft.heading = aviation::Normalize360(point.track - variation);
    aircraft.headingMagnetic = aircraft.heading;
    aircraft.verticalSpeed = point.onGround ? 0 : whole(point.verticalRate);
    aircraft.wind = air.wind;
    aircraft.temperature =
        air.temperature.value_or(static_cast<float>(standardTemperature(point.altitude)));
    aircraft.visibility = air.visibility.value_or(kUnlimitedVisibility);
    aircraft.fuelFlow = static_cast<float>(fuelFlow());
    aircraft.simTime = simTime();
    return aircraft;
}

int SimulatedFlight::takeLandingRate()
{
    const bool landed = std::exchange(m_landed, false);
    return landed ? whole(m_plan.touchdownRate) : 0;
}

double SimulatedFlight::fuelFlow() const
{
    return kRows[static_cast<std::size_t>(phase())].fuelFlow;
}

double SimulatedFlight::fuelBurned() const
{
    double pounds = 0.0;
    for (std::size_t i = 0; i < kRows.size() && m_plan.starts[i] < m_elapsed; ++i) {
        const double end = i + 1 < kRows.size() ? m_plan.starts[i + 1] : m_elapsed;
        pounds +=
            kRows[i].fuelFlow * (std::min(end, m_elapsed) - m_plan.starts[i]) / kSecondsPerHour;
    }
    return pounds;
}

} // namespace simulator

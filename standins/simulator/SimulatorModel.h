#pragma once

#include "aviation/AircraftData.h"
#include "standins/simulator/SimulatedFlight.h"
#include "standins/simulator/SimulatorState.h"

#include <QMutex>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace simulator {

/// The simulator behind every way in, whether bridge, SimConnect or FSUIPC: the flight, the weather
/// that it was given, its load and its radios. Every operation locks; for any thread. Values are
/// taken as they are: the ways in check what they are sent.
class SimulatorModel
{
public:
    explicit SimulatorModel(SimulatedFlight flight = SimulatedFlight());

    /// Runs a function on the flight while nobody else sees it.
    void withFlight(const std::function<void(SimulatedFlight&)>& function);
    /// The aircraft in the weather that was given, with weights; the landing rate is left alone.
    aviation::structs::AircraftData peekAircraft();
    /// The same, with the landing rate in the first one after touchdown.
    aviation::structs::AircraftData takeAircraft();
    /// Seconds since 1970, the simulator's zulu time.
    std::int64_t simTime();
    /// Less what was burned since the fuel was set.
    aviation::structs::AircraftFuel presentFuel() const;

    /// A copy of everything that was given.
    SimulatorState state() const;
    /// Runs a function on the state while nobody else sees it, for what has no operation here.
    void withState(const std::function<void(SimulatorState&)>& function);

    void setClient(const QString& name, const QString& api);
    void addWeatherText(const QString& text);
    void addWeatherRecord(const NewWeather& record);
    void setWeatherData(const XPlaneWeather& weather, bool withWx);
    void setWindLayers(const std::vector<XPlaneWindLayer>& layers);
    void setWind(const aviation::weather::Wind& wind);
    void setVisibility(int metres);
    void clearWeather();
    void addScreenText(const QString& text);
    void addTheme(const QString& name);
    void setFuel(const aviation::structs::AircraftFuel& fuel);
    void setPayload(const aviation::structs::AircraftPayload& payload);
    void setRadios(const aviation::structs::RadioFrequencys& radios);

    /// The pilot's pause key: the flight stands still until it is taken back. The bridge never
    /// says so.
    void setPaused(bool paused);
    bool paused() const;
    /// A menu or a dialog of the simulator is open: the flight stands still as well.
    void setInMenu(bool inMenu);
    bool inMenu() const;

private:
    aviation::structs::AircraftData aircraftNow();
    aviation::structs::AircraftFuel fuelNow() const;

    mutable QMutex m_mutex; ///< guards all below
    SimulatedFlight m_flight;
    double m_burnedBefore = 0.0; ///< pounds burned when the fuel was last set
    SimulatorState m_state;
    bool m_isPaused = false;
    bool m_inMenu = false;
};

} // namespace simulator

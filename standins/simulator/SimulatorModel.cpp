#include "standins/simulator/SimulatorModel.h"

#include "aviation/support/ScopedLock.h"
#include "standins/simulator/AirModel.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

constexpr float kEmptyWeight = 91300.0F;     ///< pounds
constexpr float kMaxGrossWeight = 174200.0F; ///< pounds

/// Appends and lets the oldest go.
template <class List, class Item>
void appendBounded(List& list, const Item& item)
{
    list.push_back(item);
    if (static_cast<int>(list.size()) > kKeptTexts) {
        list.erase(list.begin());
    }
}

double poundsIn(const aviation::structs::AircraftFuel& fuel)
{
    double gallons = 0.0;
    for (const aviation::structs::FuelTank& tank : fuel.tanks) {
        gallons += tank.capacity * tank.level / 100.0;
    }
    return gallons * fuel.fuelWeight;
}

void takeLayers(SimulatorState& state, const std::vector<XPlaneWindLayer>& layers)
{
    state.windLayers = layers;
    state.windIsNewest = false;
}

void clear(SimulatorState& state)
{
    state.weatherTexts.clear();
    state.weatherRecords.clear();
    state.weatherData.reset();
    state.weatherDataHasWx = false;
    state.windLayers.clear();
    state.wind.reset();
    state.windIsNewest = false;
    state.visibility.reset();
    ++state.clears;
}

} // namespace

SimulatorModel::SimulatorModel(SimulatedFlight flight)
    : m_flight(std::move(flight))
    , m_burnedBefore(m_flight.fuelBurned())
    , m_state(freshState())
{}

void SimulatorModel::withFlight(const std::function<void(SimulatedFlight&)>& function)
{
    const aviation::ScopedLock lock(m_mutex);
    function(m_flight);
}

aviation::structs::AircraftData SimulatorModel::peekAircraft()
{
    const aviation::ScopedLock lock(m_mutex);
    return aircraftNow();
}

aviation::structs::AircraftData SimulatorModel::takeAircraft()
{
    const aviation::ScopedLock lock(m_mutex);
    aviation::structs::AircraftData aircraft = aircraftNow();
    aircraft.landingRate = m_flight.takeLandingRate();
    return aircraft;
}

aviation::structs::AircraftData SimulatorModel::aircraftNow()
{
    m_flight.followClock();
    const aviation::structs::AircraftData plain = m_flight.aircraft();
    aviation::structs::AircraftData aircraft =
        m_flight.aircraft(airAt(m_state, plain.position, plain.altitude));
    aircraft.emptyWeight = kEmptyWeight;
    aircraft.maxGrossWeight = kMaxGrossWeight;
    aircraft.totalWeight =
        kEmptyWeight + static_cast<float>(poundsIn(fuelNow()) + m_state.payload.totalWeight);
    return aircraft;
}

std::int64_t SimulatorModel::simTime()
{
    const aviation::ScopedLock lock(m_mutex);
    m_flight.followClock();
    return m_flight.simTime();
}

aviation::structs::AircraftFuel SimulatorModel::presentFuel() const
{
    const aviation::ScopedLock lock(m_mutex);
    return fuelNow();
}

aviation::structs::AircraftFuel SimulatorModel::fuelNow() const
{
    aviation::structs::AircraftFuel fuel = m_state.fuel;
    const double full = poundsIn(fuel);
    const double burned = std::max(0.0, m_flight.fuelBurned() - m_burnedBefore);
    const double share = full > 0.0 ? std::max(0.0, 1.0 - burned / full) : 0.0;
    for (aviation::structs::FuelTank& tank : fuel.tanks) {
        tank.level *= share;
    }
    return fuel;
}

SimulatorState SimulatorModel::state() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_state;
}

void SimulatorModel::withState(const std::function<void(SimulatorState&)>& function)
{
    const aviation::ScopedLock lock(m_mutex);
    function(m_state);
}

void SimulatorModel::setClient(const QString& name, const QString& api)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.clientName = name;
    m_state.clientApi = api;
}

void SimulatorModel::addWeatherText(const QString& text)
{
    const aviation::ScopedLock lock(m_mutex);
    if (text.toUtf8().size() > kLongestKeptText) { // a block of all reports stands for itself
        m_state.weatherTexts.clear();
    }
    appendBounded(m_state.weatherTexts, text);
}

void SimulatorModel::addWeatherRecord(const NewWeather& record)
{
    const aviation::ScopedLock lock(m_mutex);
    appendBounded(m_state.weatherRecords, record);
}

void SimulatorModel::setWeatherData(const XPlaneWeather& weather, bool withWx)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.weatherData = weather;
    m_state.weatherDataHasWx = withWx;
    takeLayers(m_state, weather.Winds);
}

void SimulatorModel::setWindLayers(const std::vector<XPlaneWindLayer>& layers)
{
    const aviation::ScopedLock lock(m_mutex);
    takeLayers(m_state, layers);
}

void SimulatorModel::setWind(const aviation::weather::Wind& wind)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.wind = wind;
    m_state.windIsNewest = true;
}

void SimulatorModel::setVisibility(int metres)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.visibility = metres;
}

void SimulatorModel::clearWeather()
{
    const aviation::ScopedLock lock(m_mutex);
    clear(m_state);
}

void SimulatorModel::addScreenText(const QString& text)
{
    const aviation::ScopedLock lock(m_mutex);
    appendBounded(m_state.screenTexts, text);
}

void SimulatorModel::addTheme(const QString& name)
{
    const aviation::ScopedLock lock(m_mutex);
    appendBounded(m_state.themes, name);
}

void SimulatorModel::setFuel(const aviation::structs::AircraftFuel& fuel)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.fuel = fuel;
    m_burnedBefore = m_flight.fuelBurned();
}

void SimulatorModel::setPayload(const aviation::structs::AircraftPayload& payload)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.payload = payload;
}

void SimulatorModel::setRadios(const aviation::structs::RadioFrequencys& radios)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.radios = radios;
}

void SimulatorModel::setPaused(bool paused)
{
    const aviation::ScopedLock lock(m_mutex);
    m_isPaused = paused;
    m_flight.setPaused(m_isPaused || m_inMenu);
}

bool SimulatorModel::paused() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_isPaused;
}

void SimulatorModel::setInMenu(bool inMenu)
{
    const aviation::ScopedLock lock(m_mutex);
    m_inMenu = inMenu;
    m_flight.setPaused(m_isPaused || m_inMenu);
}

bool SimulatorModel::inMenu() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_inMenu;
}

} // namespace simulator

#include "standins/simulator/CloudGrid.h"
#include "standins/simulator/Messages.h"
#include "standins/simulator/SimConnectExceptions.h"
#include "standins/simulator/SimConnectSimulator.h"
#include "standins/simulator/SimConnectText.h"
#include "standins/simulator/StationWeather.h"

#include <algorithm>
#include <cmath>

// The weather calls of SimConnectSimulator.
namespace simulator {

namespace {

using simconnect::kFailed;
using simconnect::kOk;
using simconnect::MessageId;
using Result = SimConnectApi::Result;
using Bytes = SimConnectQueue::Bytes;

constexpr int kLongestMetar = 2000;

/// A theme takes the place of all observations; one without a name is clear weather.
void takeTheme(SimulatorModel& model, const QString& name)
{
    if (name.isEmpty()) {
        model.clearWeather();
    } else {
        model.addTheme(name.left(kLongestKeptText));
    }
    model.withState([](SimulatorState& state) {
        state.weatherTexts.clear();
        state.customWeather = false;
    });
}

void takeObservation(SimulatorModel& model, const QString& text)
{
    bool isTaken = false;
    model.withState([&isTaken](SimulatorState& state) {
        isTaken = state.customWeather;
        state.lostObservations += isTaken ? 0 : 1;
    });
    if (isTaken) {
        model.addWeatherText(text);
    }
}

bool isPlace(float latitude, float longitude)
{
    return std::fabs(latitude) <= 90.0F && std::fabs(longitude) <= 180.0F; // not for nan
}

/// False if there is one of that name, or no room.
bool createStation(SimulatorModel& model, const WeatherStation& station)
{
    bool isNew = false;
    model.withState([&isNew, &station](SimulatorState& state) {
        isNew = static_cast<int>(state.stations.size()) < kKeptTexts
                && std::none_of(
                    state.stations.begin(), state.stations.end(),
                    [&station](const WeatherStation& known) { return known.icao == station.icao; });
        if (isNew) {
            state.stations.push_back(station);
        }
    });
    return isNew;
}

} // namespace

// The calls have their published arguments.
// NOLINTBEGIN(readability-function-size)

Result SimConnectSimulator::SimConnect_WeatherSetObservation(Handle handle, std::uint32_t seconds,
                                                             const char* metar)
{
    const std::string text = textOf(metar);
    if (const Result entered =
            enter(handle, "SimConnect_WeatherSetObservation", {number(seconds), text});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met =
        meet(command::kWrite, message::kWeatherText, exception::kWeatherInvalidMetar);
    if (!met.isServed) {
        return met.result;
    }
    const QString observation = QString::fromStdString(text);
    if (!isObservation(observation) || observation.size() >= kLongestMetar) {
        raise(exception::kWeatherInvalidMetar, 2);
    } else {
        takeObservation(m_model, observation);
    }
    return kOk;
}

Result SimConnectSimulator::SimConnect_WeatherSetModeCustom(Handle handle)
{
    if (const Result entered = enter(handle, "SimConnect_WeatherSetModeCustom"); entered != kOk) {
        return entered;
    }
    const Meeting met = meet(command::kWrite, message::kActivateWeather, exception::kError);
    if (met.isServed) {
        m_model.withState([](SimulatorState& state) { state.customWeather = true; });
    }
    return met.result;
}

Result SimConnectSimulator::SimConnect_WeatherSetModeTheme(Handle handle, const char* themeName)
{
    const QString name = wideTextOf(themeName);
    if (const Result entered =
            enter(handle, "SimConnect_WeatherSetModeTheme", {name.toStdString()});
        entered != kOk)
    {
        return entered;
    }
    const int id = name.isEmpty() ? message::kClearWeather : message::kFileName;
    const Meeting met = meet(command::kWrite, id, exception::kError);
    if (met.isServed) {
        takeTheme(m_model, name);
    }
    return met.result;
}

Result SimConnectSimulator::SimConnect_WeatherRequestObservationAtNearestStation(
    Handle handle, std::uint32_t requestId, float latitude, float longitude)
{
    if (const Result entered = enter(handle, "SimConnect_WeatherRequestObservationAtNearestStation",
                                     {number(requestId), number(latitude), number(longitude)});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met = meet(command::kRequest, message::kWeatherText, exception::kError);
    if (!met.isServed) {
        return met.result;
    }
    if (!isPlace(latitude, longitude)) {
        raise(exception::kWeatherUnableToGetObservation, 2);
        return kOk;
    }
    const aviation::Position place(static_cast<double>(latitude), static_cast<double>(longitude));
    const QByteArray text = observationAt(m_model.state(), place, m_model.simTime())
                                .toUtf8()
                                .left(static_cast<int>(simconnect::kLongestObservation) - 1);
    Bytes data(text.begin(), text.end());
    data.push_back(0);
    simconnect::ObservationMessage message;
    message.requestId = requestId;
    m_queue.send(message, MessageId::WeatherObservation, data, met.fault);
    return kOk;
}

Result SimConnectSimulator::SimConnect_WeatherCreateStation(Handle handle, std::uint32_t requestId,
                                                            const char* icao, const char* name,
                                                            float latitude, float longitude,
                                                            float altitude)
{
    const WeatherStation station{
        wideTextOf(icao).toUpper(), wideTextOf(name),
        aviation::Position(static_cast<double>(latitude), static_cast<double>(longitude)),
        static_cast<double>(altitude)};
    if (const Result entered = enter(handle, "SimConnect_WeatherCreateStation",
                                     {number(requestId), textOf(icao), textOf(name),
                                      number(latitude), number(longitude), number(altitude)});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met = meet(command::kWrite, message::kWeatherRecord, exception::kError);
    if (!met.isServed) {
        return met.result;
    }
    if (!isPlace(latitude, longitude)) {
        raise(exception::kWeatherUnableToCreateStation, 4);
    } else if (!isObservation(station.icao + QLatin1Char(' ')) || !createStation(m_model, station))
    {
        raise(exception::kWeatherUnableToCreateStation, 2);
    }
    return kOk;
}

Result SimConnectSimulator::SimConnect_WeatherRequestCloudState(
    Handle handle, std::uint32_t requestId, float minLatitude, float minLongitude,
    float minAltitude, float maxLatitude, float maxLongitude, float maxAltitude,
    std::uint32_t flags)
{
    if (const Result entered = enter(handle, "SimConnect_WeatherRequestCloudState",
                                     {number(requestId), number(minLatitude), number(minLongitude),
                                      number(minAltitude), number(maxLatitude),
                                      number(maxLongitude), number(maxAltitude), number(flags)});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met = meet(command::kRequest, message::kWeatherData, exception::kError);
    if (!met.isServed) {
        return met.result;
    }
    const CloudArea area{static_cast<double>(minLatitude),  static_cast<double>(minLongitude),
                         static_cast<double>(minAltitude),  static_cast<double>(maxLatitude),
                         static_cast<double>(maxLongitude), static_cast<double>(maxAltitude)};
    if (!area.isValid()) {
        raise(exception::kOutOfBounds, 2);
        return kOk;
    }
    const Bytes grid = cloudGrid(m_model.state(), area);
    simconnect::CloudStateMessage message;
    message.requestId = requestId;
    message.arraySize = static_cast<std::uint32_t>(grid.size());
    m_queue.send(message, MessageId::CloudState, grid, met.fault);
    return kOk;
}

// NOLINTEND(readability-function-size)

} // namespace simulator

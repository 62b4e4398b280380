#include "tools/simulator/MessageHandler.h"

#include "aviation/support/ScopedLock.h"
#include "tools/simulator/AirModel.h"
#include "tools/simulator/AircraftTexts.h"
#include "tools/simulator/Describe.h"
#include "tools/simulator/Messages.h"
#include "tools/simulator/WeatherTexts.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

constexpr float kEmptyWeight = 91300.0F;     ///< pounds
constexpr float kMaxGrossWeight = 174200.0F; ///< pounds
constexpr int kMostVisibility = 1000000;     ///< metres

struct RequestText
{
    int id;
    const char* text;
};

/// What a client has to send with a request, letter by letter.
constexpr std::array kRequestTexts{RequestText{message::kAircraft, "Request Aircraft data"},
                                   RequestText{message::kFuel, "Request Aircraft fuel"},
                                   RequestText{message::kPayload, "Request Aircraft payload"},
                                   RequestText{message::kRadios, "Request Radio Data"},
                                   RequestText{message::kDateTime, "Request DateTime from FS"},
                                   RequestText{message::kConfigFile, "get Cirrilon config file"}};

bool isRequest(const Frame& frame)
{
    return std::any_of(
        kRequestTexts.begin(), kRequestTexts.end(),
        [&frame](const RequestText& row) { return row.id == frame.id && frame.data == row.text; });
}

bool isWeatherMessage(int id)
{
    return id == message::kWeatherRecord || id == message::kWeatherText
           || id == message::kWeatherData || id == message::kWeatherDataWx || id == message::kFile;
}

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

void clearWeather(SimulatorState& state)
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

void takeLayers(SimulatorState& state, const std::vector<XPlaneWindLayer>& layers)
{
    state.windLayers = layers;
    state.windIsNewest = false;
}

} // namespace

MessageHandler::MessageHandler(SimulatedFlight flight)
    : m_flight(std::move(flight))
    , m_burnedBefore(m_flight.fuelBurned())
    , m_state(freshState())
{}

Reply MessageHandler::refusal(const Frame& frame, const QString& why)
{
    return {{command::kRefusal, frame.id, why.toUtf8()},
            QStringLiteral("refused %1: %2").arg(messageName(frame.command, frame.id), why),
            false};
}

Reply MessageHandler::handle(const Frame& frame)
{
    if (frame.command == command::kRequest || frame.command == command::kRead) {
        return handleRequest(frame);
    }
    if (frame.command == command::kWrite) {
        return handleWrite(frame);
    }
    return refusal(frame, QStringLiteral("unknown command"));
}

Reply MessageHandler::handleRequest(const Frame& frame)
{
    if (!isRequest(frame)) {
        return refusal(frame, QStringLiteral("unknown request"));
    }
    Reply reply{{command::kAnswer, frame.id, {}}, {}, false};
    switch (frame.id) {
    case message::kAircraft:
        reply.frame.data = aircraftText();
        break;
    case message::kFuel:
        reply.frame.data = fuelText(presentFuel());
        break;
    case message::kPayload:
        reply.frame.data = payloadText(m_state.payload);
        break;
    case message::kRadios:
        reply.frame.data = radioText(m_state.radios);
        break;
    case message::kDateTime:
        m_flight.followClock();
        reply.frame.data = QByteArray::number(static_cast<qlonglong>(m_flight.simTime()));
        break;
    default:
        reply.frame.data = "[Server]\nName=stand-in simulator\n";
        break;
    }
    return reply;
}

Reply MessageHandler::handleWrite(const Frame& frame)
{
    const QString line = write(frame.id, frame.data);
    if (line.isEmpty()) {
        return refusal(frame, QStringLiteral("unknown or unreadable message"));
    }
    return {{command::kAnswer, frame.id, "OK"}, line, isWeatherMessage(frame.id)};
}

/// What was done, for people; empty if nothing was.
QString MessageHandler::write(int id, const QByteArray& data)
{
    switch (id) {
    case message::kFuel:
    case message::kPayload:
    case message::kRadios:
        return writeAircraft(id, data);
    case message::kFile:
        return keepFile("weather", data);
    case message::kGlobalWindFile:
        return keepFile("global wind", data);
    case message::kTurbulenceFile:
        return keepFile("turbulence", data);
    case message::kFileName:
    case message::kActivateWeather:
    case message::kVisibility:
    case message::kScreenText:
    case message::kClearWeather:
        return writeCommand(id, data);
    default:
        return writeWeather(id, data);
    }
}

QString MessageHandler::writeWeather(int id, const QByteArray& data)
{
    const aviation::ScopedLock lock(m_mutex);
    if (id == message::kWeatherText && !data.isEmpty()) {
        if (data.size() > kLongestKeptText) { // a block of all reports stands for itself
            m_state.weatherTexts.clear();
        }
        appendBounded(m_state.weatherTexts, QString::fromUtf8(data));
        return describeWeatherText(data);
    }
    if (id == message::kWeatherRecord) {
        const std::optional<NewWeather> record = readWeatherRecord(data);
        if (record) {
            appendBounded(m_state.weatherRecords, *record);
        }
        return record ? describe(*record) : QString();
    }
    if (id == message::kWeatherData || id == message::kWeatherDataWx) {
        const bool withWx = id == message::kWeatherDataWx;
        const std::optional<XPlaneWeather> weather = readWeatherData(data, withWx);
        if (weather) {
            m_state.weatherData = weather;
            m_state.weatherDataHasWx = withWx;
            takeLayers(m_state, weather->Winds);
        }
        return weather ? describe(*weather) : QString();
    }
    if (id == message::kWindLayers) {
        const auto layers = readWindLayers(data);
        if (layers) {
            takeLayers(m_state, *layers);
        }
        return layers ? describe(*layers) : QString();
    }
    const std::optional<aviation::weather::Wind> wind =
        id == message::kWind ? readWind(data) : std::nullopt;
    if (!wind) {
        return {};
    }
    m_state.wind = wind;
    m_state.windIsNewest = true;
    return describe(*wind);
}

QString MessageHandler::writeAircraft(int id, const QByteArray& data)
{
    const aviation::ScopedLock lock(m_mutex);
    if (id == message::kFuel) {
        const auto fuel = readFuel(data);
        if (fuel) {
            m_state.fuel = *fuel;
            m_burnedBefore = m_flight.fuelBurned();
        }
        return fuel ? describe(*fuel) : QString();
    }
    if (id == message::kPayload) {
        const auto payload = readPayload(data);
        if (payload) {
            m_state.payload = *payload;
        }
        return payload ? describe(*payload) : QString();
    }
    const auto radios = readRadios(data);
    if (radios) {
        m_state.radios = *radios;
    }
    return radios ? describe(*radios) : QString();
}

QString MessageHandler::writeCommand(int id, const QByteArray& data)
{
    const aviation::ScopedLock lock(m_mutex);
    if (id == message::kScreenText) {
        appendBounded(m_state.screenTexts, QString::fromUtf8(data.left(kLongestKeptText)));
        return QStringLiteral("screen text: ") + printable(data);
    }
    if (id == message::kFileName) {
        appendBounded(m_state.themes, QString::fromUtf8(data.left(kLongestKeptText)));
        return QStringLiteral("weather file ") + printable(data);
    }
    if (id == message::kVisibility) {
        bool isNumber = false;
        const int metres = data.toInt(&isNumber);
        if (!isNumber || metres < 0 || metres > kMostVisibility) {
            return {};
        }
        m_state.visibility = metres;
        return QStringLiteral("visibility %1 m").arg(metres);
    }
    if (id == message::kActivateWeather && data == "Activate Weather Xplane") {
        ++m_state.activations;
        return QStringLiteral("weather activated");
    }
    if (id == message::kClearWeather && data == "Clear Wx") {
        clearWeather(m_state);
        return QStringLiteral("weather cleared");
    }
    return {};
}

QString MessageHandler::keepFile(const char* kind, const QByteArray& data)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.files[QLatin1String(kind)] = data.size();
    m_state.lastFile = data.left(kKeptFileBytes);
    return QStringLiteral("%1 file: %2 bytes").arg(QLatin1String(kind)).arg(data.size());
}

aviation::structs::AircraftFuel MessageHandler::presentFuel() const
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

aviation::structs::AircraftData MessageHandler::peekAircraft()
{
    m_flight.followClock();
    const aviation::structs::AircraftData plain = m_flight.aircraft();
    aviation::structs::AircraftData aircraft =
        m_flight.aircraft(airAt(m_state, plain.position, plain.altitude));
    aircraft.emptyWeight = kEmptyWeight;
    aircraft.maxGrossWeight = kMaxGrossWeight;
    aircraft.totalWeight =
        kEmptyWeight + static_cast<float>(poundsIn(presentFuel()) + m_state.payload.totalWeight);
    return aircraft;
}

QByteArray MessageHandler::aircraftText()
{
    aviation::structs::AircraftData aircraft = peekAircraft();
    aircraft.landingRate = m_flight.takeLandingRate();
    return simulator::aircraftText(aircraft);
}

SimulatorState MessageHandler::state() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_state;
}

void MessageHandler::setClient(const QString& name, const QString& api)
{
    const aviation::ScopedLock lock(m_mutex);
    m_state.clientName = name;
    m_state.clientApi = api;
}

} // namespace simulator

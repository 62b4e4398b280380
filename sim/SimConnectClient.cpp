#include "sim/SimConnectClient.h"

#include "sim/SimConnectExceptions.h"
#include "sim/SimConnectRecords.h"
#include "sim/SimValues.h"

#include <QDebug>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kCloudBytes = 4096; ///< 64 rows of 64
constexpr std::uint32_t kRunning = 1;     ///< value of the system state "Sim"

/// Whether a call failed; positive codes count as success where nothing else is said.
bool isFailure(simconnect::Result result)
{
    return result < simconnect::kOk;
}

/// As printf's %d shows a number of the wire.
int signedOf(std::uint32_t number)
{
    return static_cast<int>(number);
}

QString versionText(const std::uint32_t (&parts)[4])
{
    return QString::asprintf("%d.%d.%d.%d", signedOf(parts[0]), signedOf(parts[1]),
                             signedOf(parts[2]), signedOf(parts[3]));
}

QString aircraftText(const simconnectdata::AircraftVariables& aircraft)
{
    return QString::asprintf("\nLat=%f  Lon=%f  IndAlt=%f Height=%f TAS=%f GS=%f WDir=%f WSp=%f "
                             "Vis=%f, SimOnGround=%i",
                             aircraft.latitude, aircraft.longitude, aircraft.altitude,
                             aircraft.heightAgl, aircraft.tas, aircraft.groundSpeed,
                             aircraft.windDirection, aircraft.windSpeed, aircraft.visibility,
                             aircraft.onGround);
}

void tellClouds(const std::vector<std::uint8_t>& clouds)
{
    QString text;
    for (std::size_t i = 0; i < clouds.size(); ++i) {
        if (clouds[i] != 0) {
            text += QString::asprintf("pos:%d, val:%d \n", static_cast<int>(i), int{clouds[i]});
        }
    }
    if (!text.isEmpty()) {
        qDebug().noquote() << text;
    }
}

} // namespace

template <typename Head>
bool SimConnectClient::Received::read(Head& head) const
{
    if (size < sizeof head) {
        return false;
    }
    std::memcpy(&head, bytes, sizeof head);
    return true;
}

SimConnectClient::SimConnectClient(std::unique_ptr<SimConnectApi> api) : m_api(std::move(api)) {}

SimConnectClient::~SimConnectClient()
{
    close();
}

bool SimConnectClient::open()
{
    m_handle = nullptr;
    m_hasQuit = false;
    m_awaitsAircraft = false;
    m_pausedByKey = false;
    m_variables.clear();
    const auto result = m_api->SimConnect_Open(&m_handle, "FSInterface", nullptr, 0, nullptr, 0);
    m_open = !isFailure(result) && m_handle != nullptr;
    return m_open;
}

bool SimConnectClient::close()
{
    if (!m_open) {
        return true;
    }
    m_open = false;
    return !isFailure(m_api->SimConnect_Close(std::exchange(m_handle, nullptr)));
}

bool SimConnectClient::addDatum(std::uint32_t definition, const SimConnectDatum& datum)
{
    constexpr float kEveryChange = 0.0F;
    return !isFailure(
        m_api->SimConnect_AddToDataDefinition(m_handle, definition, datum.name.c_str(), datum.unit,
                                              datum.type, kEveryChange, simconnect::kUnused));
}

bool SimConnectClient::makeDefinition(const SimConnectDefinition& definition)
{
    return std::all_of(definition.data.begin(), definition.data.end(),
                       [&](const SimConnectDatum& datum) {
                           const bool added = addDatum(definition.id, datum);
                           m_variables[lastSentId()] = datum.name; // what an exception names
                           return added;
                       });
}

bool SimConnectClient::define()
{
    struct Event
    {
        std::uint32_t id;
        const char* name;
    };
    constexpr std::array<Event, 4> kEvents{{{simconnectid::kSimEvent, "Sim"},
                                            {simconnectid::kPauseEvent, "Pause"},
                                            {simconnectid::kSimStartEvent, "SimStart"},
                                            {simconnectid::kSimStopEvent, "SimStop"}}};
    return makeDefinition(simConnectAircraftDefinition())
           && makeDefinition(simConnectFuelDefinition())
           && makeDefinition(simConnectFuelLevelsDefinition())
           && makeDefinition(simConnectPayloadDefinition())
           && makeDefinition(simConnectRadioDefinition())
           && std::all_of(kEvents.begin(), kEvents.end(), [this](const Event& event) {
                  return !isFailure(
                      m_api->SimConnect_SubscribeToSystemEvent(m_handle, event.id, event.name));
              });
}

bool SimConnectClient::request(const SimConnectRequest& request)
{
    const bool sent = !isFailure(m_api->SimConnect_RequestDataOnSimObject(
        m_handle, request.id, request.definition, simconnect::kUserObject, simconnect::kPeriodOnce,
        0, 0, 0, 0));
    if (sent && request.id == simconnectid::kAircraft.id) {
        m_awaitsAircraft = true;
        m_aircraftPacket = lastSentId();
    }
    return sent;
}

bool SimConnectClient::requestState()
{
    return !isFailure(
        m_api->SimConnect_RequestSystemState(m_handle, simconnectid::kStateRequest, "Sim"));
}

bool SimConnectClient::setData(std::uint32_t definition, void* data, std::size_t size)
{
    return !isFailure(m_api->SimConnect_SetDataOnSimObject(m_handle, definition,
                                                           simconnect::kUserObject, 0, 0,
                                                           static_cast<std::uint32_t>(size), data));
}

bool SimConnectClient::setPayloadWeight(int station, double pounds)
{
    const SimConnectDatum weight{"PAYLOAD STATION WEIGHT:" + std::to_string(station), "Pounds",
                                 simconnect::DataType::Float64};
    const bool set = addDatum(simconnectid::kPayloadWeight, weight)
                     && setData(simconnectid::kPayloadWeight, &pounds, sizeof pounds);
    // Also after a failure, or the next station's datum would be appended to this one.
    m_api->SimConnect_ClearDataDefinition(m_handle, simconnectid::kPayloadWeight);
    return set;
}

bool SimConnectClient::setFuelLevels(const std::array<double, kSimConnectTanks>& levels)
{
    std::array<double, kSimConnectTanks> copy = levels; // the call takes no constant data
    return setData(simconnectid::kFuelLevels, copy.data(), sizeof copy);
}

std::uint32_t SimConnectClient::lastSentId()
{
    std::uint32_t id = 0;
    return isFailure(m_api->SimConnect_GetLastSentPacketID(m_handle, &id)) ? 0 : id;
}

SimConnectReply SimConnectClient::Dispatch()
{
    const simconnect::Message* message = nullptr;
    std::uint32_t size = 0;
    const auto result = m_api->SimConnect_GetNextDispatch(m_handle, &message, &size);
    if (isFailure(result)) { // of the failures this one alone says that nothing waits
        return result == simconnect::kFailed ? SimConnectReply::Nothing : SimConnectReply::Failed;
    }
    const Received received{reinterpret_cast<const char*>(message), size};
    simconnect::Message head;
    if (message == nullptr || !received.read(head)) {
        return SimConnectReply::Failed;
    }
    return take(head.id, received);
}

SimConnectReply SimConnectClient::take(std::uint32_t id, const Received& message)
{
    using simconnect::MessageId;
    switch (static_cast<MessageId>(id)) {
    case MessageId::Exception:
        return takeException(message);
    case MessageId::Open:
        return takeOpen(message);
    case MessageId::Quit:
        m_hasQuit = true;
        return SimConnectReply::Quit;
    case MessageId::Event:
        return takeEvent(message);
    case MessageId::ObjectData:
        return takeObjectData(message);
    case MessageId::WeatherObservation:
        return takeObservation(message);
    case MessageId::CloudState:
        return takeCloudState(message);
    case MessageId::SystemState:
        return takeSystemState(message);
    default:
        return SimConnectReply::Other;
    }
}

SimConnectReply SimConnectClient::takeException(const Received& message)
{
    simconnect::ExceptionMessage head;
    if (!message.read(head)) {
        return SimConnectReply::Other;
    }
    m_exceptionText = QString::asprintf("***** %s EXCEPTION=%d  SendID=%d  Index=%d  cbData=%d",
                                        simConnectExceptionName(head.exception),
                                        signedOf(head.exception), signedOf(head.sendId),
                                        signedOf(head.index), static_cast<int>(message.size));
    m_exceptionPacket = head.sendId;
    const auto variable = m_variables.find(head.sendId);
    m_refusedVariable =
        variable == m_variables.end() ? QString() : QString::fromStdString(variable->second);
    if (head.sendId == m_aircraftPacket) {
        m_awaitsAircraft = false; // a refusal is an answer
    }
    return SimConnectReply::Exception;
}

SimConnectReply SimConnectClient::takeOpen(const Received& message)
{
    alignas(std::uint32_t) simconnect::OpenMessage head; // its arrays are handed on by reference
    if (!message.read(head)) {
        return SimConnectReply::Other;
    }
    m_applicationName = simvalue::textOf(head.applicationName, sizeof head.applicationName);
    m_applicationVersion = QStringLiteral("AppVersion=") + versionText(head.applicationVersion);
    m_simConnectVersion = versionText(head.simConnectVersion);
    qDebug().noquote() << openText(m_applicationName);
    return SimConnectReply::Open;
}

QString SimConnectClient::openText(const QString& name) const
{
    return QStringLiteral("\nOpen: AppName=\"%1\"  %2  SimConnectVersion=%3\n")
        .arg(name, m_applicationVersion, m_simConnectVersion);
}

SimConnectReply SimConnectClient::takeEvent(const Received& message)
{
    simconnect::EventMessage head;
    if (!message.read(head)) {
        return SimConnectReply::Other;
    }
    switch (head.eventId) {
    case simconnectid::kSimStopEvent:
        qDebug() << "Sim Stop";
        break;
    case simconnectid::kSimStartEvent:
        qDebug() << "Sim Start";
        break;
    case simconnectid::kPauseEvent:
        qDebug() << "Sim Pause";
        m_pausedByKey = head.data != 0;
        break;
    default:
        break;
    }
    return SimConnectReply::Other;
}

SimConnectReply SimConnectClient::takeObjectData(const Received& message)
{
    simconnect::ObjectDataMessage head;
    if (!message.read(head)) {
        return SimConnectReply::Other;
    }
    const char* const data = message.bytes + sizeof head;
    const std::size_t size = message.size - sizeof head;
    if (head.requestId == simconnectid::kAircraft.id) {
        m_awaitsAircraft = false; // also by data that can't be read
    }
    const auto answers = [&](const SimConnectRequest& request,
                             const SimConnectDefinition& definition) {
        return head.requestId == request.id && head.defineId == request.definition
               && size >= definition.packedSize();
    };
    if (answers(simconnectid::kAircraft, simConnectAircraftDefinition())) {
        takeAircraft(data);
        return SimConnectReply::Aircraft;
    }
    if (answers(simconnectid::kFuel, simConnectFuelDefinition())) {
        m_fuel = simconnectdata::readFuel(data);
        return SimConnectReply::Fuel;
    }
    if (answers(simconnectid::kPayload, simConnectPayloadDefinition())) {
        m_payload = simconnectdata::readPayload(data);
        return SimConnectReply::Payload;
    }
    if (answers(simconnectid::kRadios, simConnectRadioDefinition())) {
        takeRadios(data);
        return SimConnectReply::Radios;
    }
    return SimConnectReply::Other;
}

/// The simulator has no landing rate: the first sample on the ground takes the vertical speed of
/// the last one in the air.
void SimConnectClient::takeAircraft(const char* data)
{
    const simconnectdata::AircraftVariables variables = simconnectdata::readAircraft(data);
    const std::int64_t timeBefore = m_aircraft.simTime;
    m_aircraft = simconnectdata::aircraftOf(variables);
    m_hasClock = simconnectdata::isTime(variables);
    m_aircraft.simTime = m_hasClock ? m_aircraft.simTime : timeBefore;
    if (!m_aircraft.onGround) {
        m_verticalSpeed = simconnectdata::feetPerMinute(variables);
    } else if (m_verticalSpeed != 0.0) {
        m_aircraft.landingRate = simvalue::truncated(std::exchange(m_verticalSpeed, 0.0));
    }
    qDebug().noquote() << aircraftText(variables);
}

void SimConnectClient::takeRadios(const char* data)
{
    m_radios = simconnectdata::readRadios(data);
    qDebug().noquote() << QString::asprintf(
        "\nCom1Activ=%i  Com1Standby=%i  Com2Activ=%i  Com2Standby=%i", int{m_radios.comm1active},
        int{m_radios.comm1standby}, int{m_radios.comm2active}, int{m_radios.comm2standby});
}

SimConnectReply SimConnectClient::takeObservation(const Received& message)
{
    simconnect::ObservationMessage head;
    if (!message.read(head) || head.requestId != simconnectid::kObservationRequest) {
        return SimConnectReply::Other;
    }
    m_observation =
        simvalue::textOf(message.bytes + sizeof head,
                         std::min(message.size - sizeof head, simconnect::kLongestObservation));
    qDebug().noquote() << QStringLiteral("\n\nWEATHER OBSERVATION: ") + m_observation;
    return SimConnectReply::Observation;
}

SimConnectReply SimConnectClient::takeCloudState(const Received& message)
{
    simconnect::CloudStateMessage head;
    if (!message.read(head) || head.requestId != simconnectid::kCloudRequest
        || head.arraySize > message.size - sizeof head)
    {
        return SimConnectReply::Other;
    }
    const char* const clouds = message.bytes + sizeof head;
    m_cloudState.assign(clouds, clouds + std::min<std::size_t>(head.arraySize, kCloudBytes));
    tellClouds(m_cloudState);
    return SimConnectReply::CloudState;
}

SimConnectReply SimConnectClient::takeSystemState(const Received& message)
{
    simconnect::SystemStateMessage head;
    if (!message.read(head) || head.requestId != simconnectid::kStateRequest) {
        return SimConnectReply::Other;
    }
    return head.integerValue == kRunning ? SimConnectReply::Running : SimConnectReply::Paused;
}

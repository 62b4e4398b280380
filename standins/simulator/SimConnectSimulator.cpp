#include "standins/simulator/SimConnectSimulator.h"

#include "standins/simulator/Messages.h"
#include "standins/simulator/SimConnectExceptions.h"
#include "standins/simulator/SimConnectText.h"

#include <QString>

#include <algorithm>
#include <array>

namespace simulator {

namespace {

using simconnect::kFailed;
using simconnect::kOk;
using simconnect::MessageId;
using Result = SimConnectApi::Result;
using Bytes = SimConnectQueue::Bytes;

constexpr std::size_t kMostDefinitions = 1000;
constexpr std::uint32_t kPeriodNever = 0;
constexpr std::uint32_t kLastPeriod = 4;

constexpr std::array kEventNames{"Sim",    "SimStart", "SimStop",      "Pause",
                                 "Paused", "Unpaused", "1sec",         "4sec",
                                 "6Hz",    "Crashed",  "FlightLoaded", "AircraftLoaded"};

template <std::size_t Size>
void copyText(char (&target)[Size], const std::string& text)
{
    std::copy_n(text.begin(), std::min(text.size(), Size - 1), target);
}

} // namespace

// The calls have their published arguments.
// NOLINTBEGIN(readability-function-size)

SimConnectSimulator::SimConnectSimulator(SimulatorModel& model, FaultSwitch& faults,
                                         SimConnectHost& host)
    : m_model(model)
    , m_faults(faults)
    , m_host(host)
{}

/// Not kOk if it has to fail.
Result SimConnectSimulator::noteCall(const char* name, Arguments arguments)
{
    std::string line;
    for (const std::string& argument : arguments) {
        line += (line.empty() ? "" : ", ") + argument;
    }
    m_host.note(name, line);
    return m_host.takeFailure(name);
}

/// Of a call for a handle that isn't connected.
Result SimConnectSimulator::notConnected(Handle handle) const
{
    return m_open && m_gone && handle == this ? kPipeBroken : kFailed;
}

bool SimConnectSimulator::isConnected(Handle handle)
{
    if (m_open && m_session != m_host.session()) {
        m_gone = true;
        m_queue.clear();
    }
    return m_open && !m_gone && handle == this;
}

/// For the calls that send a packet: not kOk if it doesn't reach the simulator.
Result SimConnectSimulator::enter(Handle handle, const char* name, Arguments arguments)
{
    const Result result = noteCall(name, arguments);
    if (result != kOk) {
        return result;
    }
    if (!isConnected(handle)) {
        return notConnected(handle);
    }
    ++m_packetId;
    noticePause();
    noticeMenu();
    return kOk;
}

SimConnectSimulator::Meeting SimConnectSimulator::meet(int command, int id, std::uint32_t refusal)
{
    const Fault fault = m_faults.take(command, id);
    switch (fault.kind) {
    case FaultKind::Refuse:
        raise(refusal, 0);
        return {fault, kOk, false};
    case FaultKind::Silent:
        return {fault, kOk, false};
    case FaultKind::Close:
    case FaultKind::Drop:
        m_gone = true;
        m_queue.clear();
        if (fault.kind == FaultKind::Close) {
            m_queue.send(simconnect::Message(), MessageId::Quit);
        }
        return {fault, kPipeBroken, false};
    case FaultKind::Result:
        return {fault, static_cast<Result>(fault.result()), false};
    default:
        return {fault, kOk, true};
    }
}

void SimConnectSimulator::raise(std::uint32_t exception, std::uint32_t index)
{
    simconnect::ExceptionMessage message;
    message.exception = exception;
    message.sendId = m_packetId;
    message.index = index;
    m_queue.send(message, MessageId::Exception);
}

Result SimConnectSimulator::SimConnect_Open(Handle* handle, const char* name, void*, std::uint32_t,
                                            void*, std::uint32_t)
{
    const Result noted = noteCall("SimConnect_Open", {textOf(name)});
    if (noted != kOk) {
        return noted;
    }
    if (handle == nullptr || name == nullptr || !m_host.isRunning() || isConnected(this)) {
        return kFailed;
    }
    openAnew();
    const Meeting met = meet(command::kHello, message::kHello, exception::kError);
    if (met.result != kOk) {
        m_open = false;
        return met.result;
    }
    *handle = this;
    m_model.setClient(wideTextOf(name), QStringLiteral("SimConnect"));
    if (met.isServed) {
        sendOpen(met.fault);
    }
    return kOk;
}

void SimConnectSimulator::openAnew()
{
    m_open = true;
    m_gone = false;
    m_session = m_host.session();
    m_paused = m_model.paused();
    m_inMenu = m_model.inMenu();
    m_packetId = 1;
    m_definitions.clear();
    m_events.clear();
    m_queue.clear();
}

void SimConnectSimulator::sendOpen(const Fault& fault)
{
    const SimConnectVersion version = m_host.version();
    simconnect::OpenMessage message;
    copyText(message.applicationName, version.applicationName);
    std::copy(version.application.begin(), version.application.end(), message.applicationVersion);
    std::copy(version.simConnect.begin(), version.simConnect.end(), message.simConnectVersion);
    m_queue.send(message, MessageId::Open, {}, fault);
}

Result SimConnectSimulator::SimConnect_Close(Handle handle)
{
    const Result noted = noteCall("SimConnect_Close", {});
    const Result result = isConnected(handle) ? noted : notConnected(handle);
    m_open = m_open && handle != this;
    return result;
}

Result SimConnectSimulator::SimConnect_AddToDataDefinition(Handle handle, std::uint32_t defineId,
                                                           const char* datumName,
                                                           const char* unitsName,
                                                           simconnect::DataType datumType,
                                                           float epsilon, std::uint32_t datumId)
{
    if (const Result entered = enter(handle, "SimConnect_AddToDataDefinition",
                                     {number(defineId), textOf(datumName), textOf(unitsName),
                                      number(static_cast<std::uint32_t>(datumType)),
                                      number(epsilon), number(datumId)});
        entered != kOk)
    {
        return entered;
    }
    if (m_definitions.size() >= kMostDefinitions && m_definitions.count(defineId) == 0) {
        raise(exception::kTooManyRequests, 1);
        return kOk;
    }
    const MaybeProblem problem = m_definitions[defineId].add(datumName, unitsName, datumType);
    if (problem) {
        raise(problem->exception, problem->index);
    }
    return kOk;
}

Result SimConnectSimulator::SimConnect_ClearDataDefinition(Handle handle, std::uint32_t defineId)
{
    if (const Result entered = enter(handle, "SimConnect_ClearDataDefinition", {number(defineId)});
        entered != kOk)
    {
        return entered;
    }
    if (m_definitions.erase(defineId) == 0) {
        raise(exception::kUnrecognizedId, 1);
    }
    return kOk;
}

Result SimConnectSimulator::SimConnect_SubscribeToSystemEvent(Handle handle, std::uint32_t eventId,
                                                              const char* eventName)
{
    const std::string name = textOf(eventName);
    if (const Result entered =
            enter(handle, "SimConnect_SubscribeToSystemEvent", {number(eventId), name});
        entered != kOk)
    {
        return entered;
    }
    const auto isSame = [&name](const char* known) {
        return QString::fromStdString(name).compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    };
    const auto known = std::find_if(kEventNames.begin(), kEventNames.end(), isSame);
    if (known == kEventNames.end()) {
        raise(exception::kNameUnrecognized, 2);
    } else if (!m_events.emplace(eventId, *known).second) {
        raise(exception::kEventIdDuplicate, 1);
    } else if (isSame("Sim") || isSame("Pause")) {
        sendEvent(*known, (isSame("Pause") ? m_paused : !m_inMenu) ? 1 : 0);
    }
    return kOk;
}

void SimConnectSimulator::sendEvent(const std::string& name, std::uint32_t data)
{
    for (const auto& [id, subscribed] : m_events) {
        if (subscribed == name) {
            simconnect::EventMessage message;
            message.groupId = simconnect::kUnused;
            message.eventId = id;
            message.data = data;
            m_queue.send(message, MessageId::Event);
        }
    }
}

void SimConnectSimulator::noticePause()
{
    const bool isPaused = m_model.paused();
    if (isPaused == m_paused) {
        return;
    }
    m_paused = isPaused;
    sendEvent("Pause", isPaused ? 1 : 0);
    sendEvent(isPaused ? "Paused" : "Unpaused", 0);
}

void SimConnectSimulator::noticeMenu()
{
    const bool inMenu = m_model.inMenu();
    if (inMenu == m_inMenu) {
        return;
    }
    m_inMenu = inMenu;
    sendEvent("Sim", inMenu ? 0 : 1);
    sendEvent(inMenu ? "SimStop" : "SimStart", 0);
}

int SimConnectSimulator::messageOf(std::uint32_t defineId) const
{
    const auto found = m_definitions.find(defineId);
    return found == m_definitions.end() ? 0 : found->second.message();
}

Result SimConnectSimulator::SimConnect_RequestDataOnSimObject(
    Handle handle, std::uint32_t requestId, std::uint32_t defineId, std::uint32_t objectId,
    std::uint32_t period, std::uint32_t flags, std::uint32_t origin, std::uint32_t interval,
    std::uint32_t limit)
{
    if (const Result entered =
            enter(handle, "SimConnect_RequestDataOnSimObject",
                  {number(requestId), number(defineId), number(objectId), number(period),
                   number(flags), number(origin), number(interval), number(limit)});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met = meet(command::kRequest, messageOf(defineId), exception::kError);
    if (!met.isServed) {
        return met.result;
    }
    if (messageOf(defineId) == 0) {
        raise(exception::kUnrecognizedId, 2);
    } else if (objectId != simconnect::kUserObject) {
        raise(exception::kUnrecognizedId, 3);
    } else if (period > kLastPeriod) {
        raise(exception::kInvalidEnum, 4);
    } else if (period != kPeriodNever) {
        sendData(requestId, defineId, met.fault);
    }
    return kOk;
}

void SimConnectSimulator::sendData(std::uint32_t requestId, std::uint32_t defineId,
                                   const Fault& fault)
{
    const SimConnectDefinition& definition = m_definitions[defineId];
    simconnect::ObjectDataMessage message;
    message.requestId = requestId;
    message.objectId = simconnect::kUserObject;
    message.defineId = defineId;
    message.entry = 1;
    message.outOf = 1;
    message.defineCount = definition.count();
    m_queue.send(message, MessageId::ObjectData, definition.pack(snapshotOf(m_model)), fault);
}

Result SimConnectSimulator::SimConnect_SetDataOnSimObject(Handle handle, std::uint32_t defineId,
                                                          std::uint32_t objectId,
                                                          std::uint32_t flags,
                                                          std::uint32_t arrayCount,
                                                          std::uint32_t unitSize, void* data)
{
    if (const Result entered = enter(handle, "SimConnect_SetDataOnSimObject",
                                     {number(defineId), number(objectId), number(flags),
                                      number(arrayCount), number(unitSize)});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met = meet(command::kWrite, messageOf(defineId), exception::kError);
    if (!met.isServed) {
        return met.result;
    }
    if (messageOf(defineId) == 0) {
        raise(exception::kUnrecognizedId, 1);
    } else if (objectId != simconnect::kUserObject) {
        raise(exception::kUnrecognizedId, 2);
    } else if (flags != 0) {
        raise(exception::kInvalidEnum, 3);
    } else if (data == nullptr || arrayCount > 1 || unitSize != m_definitions[defineId].size()) {
        raise(exception::kSizeMismatch, 5);
    } else {
        const MaybeProblem problem =
            m_definitions[defineId].apply(static_cast<const std::uint8_t*>(data), m_model);
        if (problem) {
            raise(problem->exception, problem->index);
        }
    }
    return kOk;
}

Result SimConnectSimulator::SimConnect_RequestSystemState(Handle handle, std::uint32_t requestId,
                                                          const char* state)
{
    const std::string name = textOf(state);
    if (const Result entered =
            enter(handle, "SimConnect_RequestSystemState", {number(requestId), name});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met =
        meet(command::kConnectedSimulator, message::kIsConnected, exception::kError);
    if (!met.isServed) {
        return met.result;
    }
    simconnect::SystemStateMessage message;
    message.requestId = requestId;
    if (name == "Sim") {
        message.integerValue = m_model.inMenu() ? 0 : 1;
    } else if (name == "FlightPlan") {
        copyText(message.stringValue, m_model.state().flightPlan.toStdString());
    } else {
        raise(exception::kNameUnrecognized, 2);
        return kOk;
    }
    m_queue.send(message, MessageId::SystemState, {}, met.fault);
    return kOk;
}

Result SimConnectSimulator::SimConnect_GetNextDispatch(Handle handle,
                                                       const simconnect::Message** message,
                                                       std::uint32_t* size)
{
    const Result noted = noteCall("SimConnect_GetNextDispatch", {});
    if (noted != kOk || message == nullptr || size == nullptr) {
        return noted != kOk ? noted : kFailed;
    }
    if (isConnected(handle)) {
        noticePause();
        noticeMenu();
    }
    const Bytes* next = m_open && handle == this ? m_queue.next() : nullptr;
    if (next == nullptr) {
        return notConnected(handle); // kFailed as well when nothing waits
    }
    const void* bytes = next->data();
    *message = static_cast<const simconnect::Message*>(bytes);
    *size = static_cast<std::uint32_t>(next->size());
    return kOk;
}

Result SimConnectSimulator::SimConnect_GetLastSentPacketID(Handle handle, std::uint32_t* packetId)
{
    const Result noted = noteCall("SimConnect_GetLastSentPacketID", {});
    if (noted != kOk || !isConnected(handle) || packetId == nullptr) {
        return noted != kOk ? noted : notConnected(handle);
    }
    *packetId = m_packetId;
    return kOk;
}

Result SimConnectSimulator::SimConnect_FlightPlanLoad(Handle handle, const char* fileName)
{
    const std::string path = textOf(fileName);
    if (const Result entered = enter(handle, "SimConnect_FlightPlanLoad", {path}); entered != kOk) {
        return entered;
    }
    const Meeting met = meet(command::kWrite, message::kFile, exception::kLoadFlightPlanFailed);
    if (!met.isServed) {
        return met.result;
    }
    if (path.empty()) {
        raise(exception::kLoadFlightPlanFailed, 1);
        return kOk;
    }
    m_model.withState(
        [&path](SimulatorState& state) { state.flightPlan = QString::fromStdString(path); });
    return kOk;
}

Result SimConnectSimulator::SimConnect_Text(Handle handle, std::uint32_t type, float seconds,
                                            std::uint32_t eventId, std::uint32_t unitSize,
                                            void* text)
{
    const char* letters = static_cast<const char*>(text);
    const std::size_t limit =
        text == nullptr ? 0 : std::min<std::size_t>(unitSize, kLongestCallText);
    const std::string shown(letters, std::find(letters, letters + limit, '\0'));
    if (const Result entered =
            enter(handle, "SimConnect_Text",
                  {number(type), number(seconds), number(eventId), number(unitSize), shown});
        entered != kOk)
    {
        return entered;
    }
    const Meeting met = meet(command::kWrite, message::kScreenText, exception::kError);
    if (!met.isServed) {
        return met.result;
    }
    if (shown.size() == limit) { // no zero ends it
        raise(exception::kSizeMismatch, 4);
    } else {
        m_model.addScreenText(QString::fromStdString(shown.substr(0, kLongestKeptText)));
    }
    return kOk;
}

// NOLINTEND(readability-function-size)

} // namespace simulator

// Stands in for the simulator's library: keeps what it is given as text, one call a line, and plays
// messages in answer. What was set on a definition comes back when its data are requested.
#include "sim/clients/SimConnectMessages.h"

#include <cstring>
#include <deque>
#include <locale>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#define STAND_IN_EXPORT(type) extern "C" __declspec(dllexport) type __stdcall

namespace {

using Id = std::uint32_t;
using simconnect::MessageId;
using simconnect::Result;

constexpr Result kInvalidArgument = static_cast<Result>(0x80070057U);
constexpr Id kCloudBytes = 64 * 64;

struct Simulator
{
    std::string calls;
    Id packet = 0;
    std::map<Id, std::string> data; ///< by definition
    std::string observation;
    std::deque<std::string> waiting;
    std::string current; ///< what the client reads
};
Simulator g_simulator;

void writeValue(std::ostream& line, const char* text)
{
    line << " '" << (text == nullptr ? "(null)" : text) << '\'';
}

template <typename Value>
void writeValue(std::ostream& line, const Value& value)
{
    line << ' ' << value;
}

/// Takes a call down. It fails for a connection that isn't open.
template <typename... Arguments>
Result take(const void* handle, const char* name, const Arguments&... arguments)
{
    std::ostringstream line;
    line.imbue(std::locale::classic());
    line << name;
    (writeValue(line, arguments), ...);
    g_simulator.calls += line.str() + '\n';
    ++g_simulator.packet;
    return handle == &g_simulator ? simconnect::kOk : simconnect::kFailed;
}

template <typename Message>
void play(MessageId id, Message message, const std::string& tail = {})
{
    message.size = static_cast<Id>(sizeof message + tail.size());
    message.version = 4;
    message.id = static_cast<Id>(id);
    std::string bytes(sizeof message, '\0');
    std::memcpy(bytes.data(), &message, sizeof message);
    g_simulator.waiting.push_back(bytes + tail);
}

} // namespace

STAND_IN_EXPORT(const char*) StandIn_Calls()
{
    return g_simulator.calls.c_str();
}

STAND_IN_EXPORT(Result)
SimConnect_Open(void** handle, const char* name, void* window, Id userEvent, void* event, Id config)
{
    *handle = &g_simulator;
    simconnect::OpenMessage opened;
    std::strcpy(opened.applicationName, "Stand-in");
    opened.applicationVersion[0] = 10;
    opened.simConnectVersion[3] = 259;
    play(MessageId::Open, opened);
    return take(*handle, "Open", name, window, userEvent, event, config);
}

STAND_IN_EXPORT(Result) SimConnect_Close(void* handle)
{
    return take(handle, "Close");
}

STAND_IN_EXPORT(Result)
SimConnect_AddToDataDefinition(void* handle, Id define, const char* name, const char* unit,
                               simconnect::DataType type, float epsilon, Id datum)
{
    return take(handle, "AddToDataDefinition", define, name, unit, static_cast<Id>(type), epsilon,
                datum);
}

STAND_IN_EXPORT(Result) SimConnect_ClearDataDefinition(void* handle, Id define)
{
    return take(handle, "ClearDataDefinition", define);
}

STAND_IN_EXPORT(Result)
SimConnect_SubscribeToSystemEvent(void* handle, Id event, const char* name)
{
    simconnect::EventMessage message;
    message.eventId = event;
    message.data = 1;
    play(MessageId::Event, message);
    return take(handle, "SubscribeToSystemEvent", event, name);
}

STAND_IN_EXPORT(Result)
SimConnect_RequestDataOnSimObject(void* handle, Id request, Id define, Id object, Id period,
                                  Id flags, Id origin, Id interval, Id limit)
{
    simconnect::ObjectDataMessage message;
    message.requestId = request;
    message.objectId = object;
    message.defineId = define;
    play(MessageId::ObjectData, message, g_simulator.data[define]);
    return take(handle, "RequestDataOnSimObject", request, define, object, period, flags, origin,
                interval, limit);
}

STAND_IN_EXPORT(Result)
SimConnect_SetDataOnSimObject(void* handle, Id define, Id object, Id flags, Id count, Id unitSize,
                              void* data)
{
    g_simulator.data[define].assign(static_cast<const char*>(data), unitSize);
    return take(handle, "SetDataOnSimObject", define, object, flags, count, unitSize);
}

STAND_IN_EXPORT(Result)
SimConnect_RequestSystemState(void* handle, Id request, const char* state)
{
    simconnect::SystemStateMessage message;
    message.requestId = request;
    message.integerValue = 1;
    message.floatValue = 0.5F;
    std::strncpy(message.stringValue, state, sizeof message.stringValue - 1);
    play(MessageId::SystemState, message);
    return take(handle, "RequestSystemState", request, state);
}

STAND_IN_EXPORT(Result)
SimConnect_GetNextDispatch(void* handle, const simconnect::Message** message, Id* size)
{
    if (handle != &g_simulator || g_simulator.waiting.empty()) {
        return simconnect::kFailed;
    }
    g_simulator.current = g_simulator.waiting.front();
    g_simulator.waiting.pop_front();
    *message = reinterpret_cast<const simconnect::Message*>(g_simulator.current.data());
    *size = static_cast<Id>(g_simulator.current.size());
    return simconnect::kOk;
}

STAND_IN_EXPORT(Result) SimConnect_GetLastSentPacketID(void* handle, Id* packet)
{
    *packet = g_simulator.packet;
    return handle == &g_simulator ? simconnect::kOk : simconnect::kFailed;
}

STAND_IN_EXPORT(Result)
SimConnect_WeatherSetObservation(void* handle, Id seconds, const char* metar)
{
    const Result result = take(handle, "WeatherSetObservation", seconds, metar);
    g_simulator.observation = metar;
    if (g_simulator.observation.empty()) {
        simconnect::ExceptionMessage message;
        message.exception = 20;
        message.sendId = g_simulator.packet;
        message.index = 2;
        play(MessageId::Exception, message);
    }
    return result;
}

STAND_IN_EXPORT(Result) SimConnect_WeatherSetModeCustom(void* handle)
{
    return take(handle, "WeatherSetModeCustom");
}

STAND_IN_EXPORT(Result) SimConnect_WeatherSetModeTheme(void* handle, const char* theme)
{
    return take(handle, "WeatherSetModeTheme", theme);
}

STAND_IN_EXPORT(Result)
SimConnect_WeatherRequestObservationAtNearestStation(void* handle, Id request, float latitude,
                                                     float longitude)
{
    simconnect::ObservationMessage message;
    message.requestId = request;
    play(MessageId::WeatherObservation, message, g_simulator.observation + '\0');
    return take(handle, "WeatherRequestObservationAtNearestStation", request, latitude, longitude);
}

STAND_IN_EXPORT(Result)
SimConnect_WeatherCreateStation(void* handle, Id request, const char* icao, const char* name,
                                float latitude, float longitude, float altitude)
{
    return take(handle, "WeatherCreateStation", request, icao, name, latitude, longitude, altitude);
}

STAND_IN_EXPORT(Result)
SimConnect_WeatherRequestCloudState(void* handle, Id request, float minLatitude, float minLongitude,
                                    float minAltitude, float maxLatitude, float maxLongitude,
                                    float maxAltitude, Id flags)
{
    simconnect::CloudStateMessage message;
    message.requestId = request;
    message.arraySize = kCloudBytes;
    play(MessageId::CloudState, message, std::string(kCloudBytes - 1, '\0') + '\x7F');
    return take(handle, "WeatherRequestCloudState", request, minLatitude, minLongitude, minAltitude,
                maxLatitude, maxLongitude, maxAltitude, flags);
}

/// A result of its own for a plan without a name.
STAND_IN_EXPORT(Result) SimConnect_FlightPlanLoad(void* handle, const char* file)
{
    const Result result = take(handle, "FlightPlanLoad", file);
    return *file == '\0' ? kInvalidArgument : result;
}

#ifndef CIRRILON_STAND_IN_LACKS
STAND_IN_EXPORT(Result)
SimConnect_Text(void* handle, Id type, float seconds, Id event, Id unitSize, void* text)
{
    return take(handle, "Text", type, seconds, event, unitSize, static_cast<const char*>(text));
}
#endif

#pragma once

#include "sim/SimConnectDefinitions.h"
#include "sim/clients/SimConnectApi.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
#include <locale>
#include <map>
#include <sstream>
#include <string>
#include <vector>

/// What a scripted library was given and what it answers.
struct SimConnectScript
{
    using Bytes = std::vector<char>;

    std::vector<std::string> calls;                     ///< name and arguments
    std::map<std::string, simconnect::Result> results;  ///< by start of the call; else success
    std::function<void(const std::string&)> onCall;     ///< may add messages
    std::deque<Bytes> messages;                         ///< to be dispatched
    simconnect::Result noMessage = simconnect::kFailed; ///< of fetching when there is none
    std::uint32_t packetId = 42;                        ///< of the last call
    std::function<void()> onFetch;                      ///< may add messages
    Bytes lastData;                                     ///< what was set last
    Bytes dispatched;                                   ///< no byte more than the message has

    simconnect::Result take(const std::string& call)
    {
        calls.push_back(call);
        if (onCall) {
            onCall(call);
        }
        for (const auto& [start, result] : results) {
            if (call.rfind(start, 0) == 0) {
                return result;
            }
        }
        return simconnect::kOk;
    }
    int count(const std::string& start) const
    {
        int found = 0;
        for (const std::string& call : calls) {
            found += call.rfind(start, 0) == 0 ? 1 : 0;
        }
        return found;
    }
};

/// A message: its head as it travels and what follows.
template <typename Head>
SimConnectScript::Bytes messageOf(simconnect::MessageId id, Head head,
                                  const SimConnectScript::Bytes& tail = {})
{
    head.id = static_cast<std::uint32_t>(id);
    head.size = static_cast<std::uint32_t>(sizeof head + tail.size());
    SimConnectScript::Bytes bytes(sizeof head + tail.size());
    std::memcpy(bytes.data(), &head, sizeof head);
    std::copy(tail.begin(), tail.end(), bytes.begin() + sizeof head);
    return bytes;
}

// The published calls have as many parameters as they have.
// NOLINTBEGIN(readability-function-size)
class ScriptedSimConnect final : public SimConnectApi
{
    using Id = std::uint32_t;
    using Text = const char*;

public:
    explicit ScriptedSimConnect(SimConnectScript& script) : m_script(script) {}

    Result SimConnect_Open(Handle* handle, Text name, void*, Id, void*, Id) override
    {
        const Result result = note("Open ", name);
        *handle = result == simconnect::kOk ? &m_script : nullptr;
        return result;
    }
    Result SimConnect_Close(Handle) override { return note("Close"); }
    Result SimConnect_AddToDataDefinition(Handle, Id definition, Text name, Text unit,
                                          simconnect::DataType type, float, Id) override
    {
        return note("Define ", definition, ' ', name, '|', unit == nullptr ? "" : unit, '|',
                    static_cast<int>(type));
    }
    Result SimConnect_ClearDataDefinition(Handle, Id definition) override
    {
        return note("Undefine ", definition);
    }
    Result SimConnect_SubscribeToSystemEvent(Handle, Id event, Text name) override
    {
        return note("Subscribe ", event, ' ', name);
    }
    Result SimConnect_RequestDataOnSimObject(Handle, Id request, Id definition, Id, Id period, Id,
                                             Id, Id, Id) override
    {
        return note("Request ", request, ' ', definition, ' ', period);
    }
    Result SimConnect_SetDataOnSimObject(Handle, Id definition, Id, Id, Id, Id unitSize,
                                         void* data) override
    {
        const char* const bytes = static_cast<const char*>(data);
        m_script.lastData.assign(bytes, bytes + unitSize);
        return note("Set ", definition);
    }
    Result SimConnect_RequestSystemState(Handle, Id request, Text state) override
    {
        return note("State ", request, ' ', state);
    }
    Result SimConnect_GetNextDispatch(Handle, const simconnect::Message** message,
                                      Id* size) override
    {
        if (m_script.onFetch) {
            m_script.onFetch();
        }
        if (m_script.messages.empty()) {
            return m_script.noMessage;
        }
        m_script.dispatched = m_script.messages.front();
        m_script.dispatched.shrink_to_fit();
        m_script.messages.pop_front();
        *message = reinterpret_cast<const simconnect::Message*>(m_script.dispatched.data());
        *size = static_cast<Id>(m_script.dispatched.size());
        return simconnect::kOk;
    }
    Result SimConnect_GetLastSentPacketID(Handle, Id* packetId) override
    {
        *packetId = m_script.packetId;
        return simconnect::kOk;
    }
    Result SimConnect_WeatherSetObservation(Handle, Id, Text metar) override
    {
        return note("Observation ", metar);
    }
    Result SimConnect_WeatherSetModeCustom(Handle) override { return note("Custom"); }
    Result SimConnect_WeatherSetModeTheme(Handle, Text name) override
    {
        return note("Theme ", name);
    }
    Result SimConnect_WeatherRequestObservationAtNearestStation(Handle, Id request, float,
                                                                float) override
    {
        return note("Nearest ", request);
    }
    Result SimConnect_WeatherCreateStation(Handle, Id request, Text icao, Text, float, float,
                                           float) override
    {
        return note("Station ", request, ' ', icao);
    }
    Result SimConnect_WeatherRequestCloudState(Handle, Id request, float south, float west,
                                               float bottom, float north, float east, float top,
                                               Id) override
    {
        return note("Clouds ", request, ' ', south, ' ', west, ' ', bottom, ' ', north, ' ', east,
                    ' ', top);
    }
    Result SimConnect_FlightPlanLoad(Handle, Text path) override { return note("Plan ", path); }
    Result SimConnect_Text(Handle, Id, float, Id, Id unitSize, void* text) override
    {
        return note("Text ", unitSize, ' ', static_cast<Text>(text));
    }

private:
    template <typename... Parts>
    Result note(const Parts&... parts)
    {
        std::ostringstream call;
        call.imbue(std::locale::classic());
        (call << ... << parts);
        return m_script.take(call.str());
    }

    SimConnectScript& m_script;
};
// NOLINTEND(readability-function-size)

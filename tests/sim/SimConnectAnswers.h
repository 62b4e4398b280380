#pragma once

#include "sim/SimConnectDefinitions.h"
#include "tests/sim/ScriptedSimConnect.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <string>

/// The messages of a simulator, as they travel.
namespace answers {

using Bytes = SimConnectScript::Bytes;
using simconnect::DataType;
using simconnect::MessageId;
using Numbers = std::map<std::string, double>;
using Texts = std::map<std::string, std::string>;

template <typename Value>
void append(Bytes& bytes, Value value)
{
    const char* const begin = reinterpret_cast<const char*>(&value);
    bytes.insert(bytes.end(), begin, begin + sizeof value);
}

inline void appendDatum(Bytes& bytes, const SimConnectDatum& datum, double number,
                        const std::string& text)
{
    switch (datum.type) {
    case DataType::Int32:
        return append(bytes, static_cast<std::int32_t>(number));
    case DataType::Int64:
        return append(bytes, static_cast<std::int64_t>(number));
    case DataType::Float32:
        return append(bytes, static_cast<float>(number));
    case DataType::Float64:
        return append(bytes, number);
    default: {
        std::string field = text;
        field.resize(simConnectDatumSize(datum.type));
        bytes.insert(bytes.end(), field.begin(), field.end());
    }
    }
}

/// The answer to a request; variables that aren't named are 0 or empty.
inline Bytes answer(const SimConnectRequest& request, const SimConnectDefinition& definition,
                    const Numbers& numbers = {}, const Texts& texts = {})
{
    Bytes data;
    for (const SimConnectDatum& datum : definition.data) {
        const auto number = numbers.find(datum.name);
        const auto text = texts.find(datum.name);
        appendDatum(data, datum, number != numbers.end() ? number->second : 0.0,
                    text != texts.end() ? text->second : std::string());
    }
    return messageOf(MessageId::ObjectData,
                     simconnect::ObjectDataMessage{{}, request.id, 0, request.definition}, data);
}

inline Bytes aircraftAnswer(const Numbers& numbers = {}, const Texts& texts = {})
{
    return answer(simconnectid::kAircraft, simConnectAircraftDefinition(), numbers, texts);
}

inline Bytes openMessage(const std::string& name = "Sim", std::uint32_t major = 10)
{
    simconnect::OpenMessage head;
    std::memcpy(head.applicationName, name.data(), name.size());
    head.applicationVersion[0] = major;
    head.simConnectVersion[3] = 7;
    return messageOf(MessageId::Open, head);
}

inline Bytes exceptionMessage(std::uint32_t exception, std::uint32_t packet = 9)
{
    return messageOf(MessageId::Exception,
                     simconnect::ExceptionMessage{{}, exception, packet, 0xFFFFFFFF});
}

inline Bytes eventMessage(std::uint32_t event, std::uint32_t value)
{
    return messageOf(MessageId::Event, simconnect::EventMessage{{}, 0, event, value});
}

inline Bytes quitMessage()
{
    return messageOf(MessageId::Quit, simconnect::Message());
}

inline Bytes stateMessage(std::uint32_t value, std::uint32_t request = simconnectid::kStateRequest)
{
    return messageOf(MessageId::SystemState, simconnect::SystemStateMessage{{}, request, value});
}

inline Bytes cloudMessage(std::uint32_t arraySize, std::size_t sent,
                          std::uint32_t request = simconnectid::kCloudRequest)
{
    return messageOf(MessageId::CloudState, simconnect::CloudStateMessage{{}, request, arraySize},
                     Bytes(sent, '\x05'));
}

inline Bytes observationMessage(const std::string& text,
                                std::uint32_t request = simconnectid::kObservationRequest)
{
    return messageOf(MessageId::WeatherObservation, simconnect::ObservationMessage{{}, request},
                     Bytes(text.begin(), text.end()));
}

/// A message without its end.
inline Bytes cut(Bytes message, std::size_t by = 1)
{
    message.resize(message.size() - by);
    return message;
}

} // namespace answers

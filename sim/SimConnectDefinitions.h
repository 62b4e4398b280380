#pragma once

#include "sim/clients/SimConnectMessages.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// One variable of the simulator in a data definition.
struct SimConnectDatum
{
    std::string name;
    const char* unit; ///< null for none
    simconnect::DataType type;
};

/// Variables that are asked for, or written, together.
struct SimConnectDefinition
{
    std::uint32_t id;
    std::vector<SimConnectDatum> data;

    /// Bytes of the data, packed in the order of the definition.
    std::size_t packedSize() const;
};

/// A request for the data of a definition.
struct SimConnectRequest
{
    std::uint32_t id;
    std::uint32_t definition;
};

/// Numbers of this client. The simulator keeps one space of them for each kind.
namespace simconnectid {
inline constexpr std::uint32_t kFuelLevels = 2;    ///< definition of the levels to be written
inline constexpr std::uint32_t kPayloadWeight = 5; ///< definition made anew for each station

inline constexpr SimConnectRequest kAircraft{0, 0};
inline constexpr SimConnectRequest kFuel{1, 1};
inline constexpr SimConnectRequest kPayload{2, 3};
inline constexpr SimConnectRequest kRadios{9, 7};

inline constexpr std::uint32_t kObservationRequest = 5;
inline constexpr std::uint32_t kCloudRequest = 6;
inline constexpr std::uint32_t kStationRequest = 7;
inline constexpr std::uint32_t kStateRequest = 10;

inline constexpr std::uint32_t kSimEvent = 0;
inline constexpr std::uint32_t kSimStopEvent = 1;
inline constexpr std::uint32_t kSimStartEvent = 2;
inline constexpr std::uint32_t kPauseEvent = 5;
} // namespace simconnectid

inline constexpr int kSimConnectStations = 50; ///< of payload, in its definition

/// Bytes of a datum; 0 for Invalid.
std::size_t simConnectDatumSize(simconnect::DataType type);

const SimConnectDefinition& simConnectAircraftDefinition();
const SimConnectDefinition& simConnectFuelDefinition();
const SimConnectDefinition& simConnectFuelLevelsDefinition();
const SimConnectDefinition& simConnectPayloadDefinition();
const SimConnectDefinition& simConnectRadioDefinition();

/// Id of the tank in a slot of the fuel definitions, 0 to kSimConnectTanks - 1.
inline constexpr std::size_t kSimConnectTanks = 11;
std::int32_t simConnectTankId(std::size_t slot);

#pragma once

#include "sim/clients/SimConnectMessages.h"

#include <cstdint>

/// The SimConnect calls that the program makes, under their published names and with their
/// published arguments. Implemented by the simulator's client library on Windows and by a simulator
/// in memory in tests. An object belongs to the thread that uses it. Texts are narrow and end with
/// a zero; a null unit is none.
class SimConnectApi
{
public:
    using Handle = void*;
    using Result = simconnect::Result;

    SimConnectApi() = default;
    SimConnectApi(const SimConnectApi&) = delete;
    SimConnectApi& operator=(const SimConnectApi&) = delete;
    virtual ~SimConnectApi() = default;

    virtual Result SimConnect_Open(Handle* handle, const char* name, void* window,
                                   std::uint32_t userEvent, void* eventHandle,
                                   std::uint32_t configIndex) = 0;
    virtual Result SimConnect_Close(Handle handle) = 0;
    /// Appends a datum to a definition.
    virtual Result SimConnect_AddToDataDefinition(Handle handle, std::uint32_t defineId,
                                                  const char* datumName, const char* unitsName,
                                                  simconnect::DataType datumType, float epsilon,
                                                  std::uint32_t datumId) = 0;
    virtual Result SimConnect_ClearDataDefinition(Handle handle, std::uint32_t defineId) = 0;
    virtual Result SimConnect_SubscribeToSystemEvent(Handle handle, std::uint32_t eventId,
                                                     const char* eventName) = 0;
    virtual Result SimConnect_RequestDataOnSimObject(Handle handle, std::uint32_t requestId,
                                                     std::uint32_t defineId, std::uint32_t objectId,
                                                     std::uint32_t period, std::uint32_t flags,
                                                     std::uint32_t origin, std::uint32_t interval,
                                                     std::uint32_t limit) = 0;
    /// `data`: `unitSize` bytes in the order of the definition, copied.
    virtual Result SimConnect_SetDataOnSimObject(Handle handle, std::uint32_t defineId,
                                                 std::uint32_t objectId, std::uint32_t flags,
                                                 std::uint32_t arrayCount, std::uint32_t unitSize,
                                                 void* data) = 0;
    virtual Result SimConnect_RequestSystemState(Handle handle, std::uint32_t requestId,
                                                 const char* state) = 0;
    /// The next message, valid until the next call; kFailed when none waits, another negative
    /// result when the link has a fault. `size` is how many
    /// bytes `message` points to, whatever its head says.
    virtual Result SimConnect_GetNextDispatch(Handle handle, const simconnect::Message** message,
                                              std::uint32_t* size) = 0;
    virtual Result SimConnect_GetLastSentPacketID(Handle handle, std::uint32_t* packetId) = 0;
    virtual Result SimConnect_WeatherSetObservation(Handle handle, std::uint32_t seconds,
                                                    const char* metar) = 0;
    virtual Result SimConnect_WeatherSetModeCustom(Handle handle) = 0;
    virtual Result SimConnect_WeatherSetModeTheme(Handle handle, const char* themeName) = 0;
    virtual Result SimConnect_WeatherRequestObservationAtNearestStation(Handle handle,
                                                                        std::uint32_t requestId,
                                                                        float latitude,
                                                                        float longitude) = 0;
    /// Degrees, feet.
    virtual Result SimConnect_WeatherCreateStation(Handle handle, std::uint32_t requestId,
                                                   const char* icao, const char* name,
                                                   float latitude, float longitude,
                                                   float altitude) = 0;
    /// Degrees, feet.
    virtual Result SimConnect_WeatherRequestCloudState(Handle handle, std::uint32_t requestId,
                                                       float minLatitude, float minLongitude,
                                                       float minAltitude, float maxLatitude,
                                                       float maxLongitude, float maxAltitude,
                                                       std::uint32_t flags) = 0;
    virtual Result SimConnect_FlightPlanLoad(Handle handle, const char* fileName) = 0;
    /// `unitSize` bytes of text with its zero.
    virtual Result SimConnect_Text(Handle handle, std::uint32_t type, float seconds,
                                   std::uint32_t eventId, std::uint32_t unitSize, void* text) = 0;
};

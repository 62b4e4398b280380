#pragma once

#include "sim/clients/SimConnectApi.h"
#include "sim/clients/windows/RuntimeLibrary.h"

#include <memory>
#include <string>

/// SimConnect by the simulator's library "SimConnect.dll". Each call goes there unchanged and its
/// result comes back unchanged; the library gets no function of the program to call. Belongs to the
/// thread that uses it.
class SimConnectLibrary final : public SimConnectApi
{
public:
    /// As SimulatorClients::simConnect.
    static std::unique_ptr<SimConnectApi> load(const std::string& simulatorFolder,
                                               std::string& problem);

    Result SimConnect_Open(Handle* handle, const char* name, void* window, std::uint32_t userEvent,
                           void* eventHandle, std::uint32_t configIndex) override;
    Result SimConnect_Close(Handle handle) override;
    Result SimConnect_AddToDataDefinition(Handle handle, std::uint32_t defineId,
                                          const char* datumName, const char* unitsName,
                                          simconnect::DataType datumType, float epsilon,
                                          std::uint32_t datumId) override;
    Result SimConnect_ClearDataDefinition(Handle handle, std::uint32_t defineId) override;
    Result SimConnect_SubscribeToSystemEvent(Handle handle, std::uint32_t eventId,
                                             const char* eventName) override;
    Result SimConnect_RequestDataOnSimObject(Handle handle, std::uint32_t requestId,
                                             std::uint32_t defineId, std::uint32_t objectId,
                                             std::uint32_t period, std::uint32_t flags,
                                             std::uint32_t origin, std::uint32_t interval,
                                             std::uint32_t limit) override;
    Result SimConnect_SetDataOnSimObject(Handle handle, std::uint32_t defineId,
                                         std::uint32_t objectId, std::uint32_t flags,
                                         std::uint32_t arrayCount, std::uint32_t unitSize,
                                         void* data) override;
    Result SimConnect_RequestSystemState(Handle handle, std::uint32_t requestId,
                                         const char* state) override;
    Result SimConnect_GetNextDispatch(Handle handle, const simconnect::Message** message,
                                      std::uint32_t* size) override;
    Result SimConnect_GetLastSentPacketID(Handle handle, std::uint32_t* packetId) override;
    Result SimConnect_WeatherSetObservation(Handle handle, std::uint32_t seconds,
                                            const char* metar) override;
    Result SimConnect_WeatherSetModeCustom(Handle handle) override;
    Result SimConnect_WeatherSetModeTheme(Handle handle, const char* themeName) override;
    Result SimConnect_WeatherRequestObservationAtNearestStation(Handle handle,
                                                                std::uint32_t requestId,
                                                                float latitude,
                                                                float longitude) override;
    Result SimConnect_WeatherCreateStation(Handle handle, std::uint32_t requestId, const char* icao,
                                           const char* name, float latitude, float longitude,
                                           float altitude) override;
    Result SimConnect_WeatherRequestCloudState(Handle handle, std::uint32_t requestId,
                                               float minLatitude, float minLongitude,
                                               float minAltitude, float maxLatitude,
                                               float maxLongitude, float maxAltitude,
                                               std::uint32_t flags) override;
    Result SimConnect_FlightPlanLoad(Handle handle, const char* fileName) override;
    Result SimConnect_Text(Handle handle, std::uint32_t type, float seconds, std::uint32_t eventId,
                           std::uint32_t unitSize, void* text) override;

private:
    template <typename Method>
    struct Exported;
    template <typename... Arguments>
    struct Exported<Result (SimConnectApi::*)(Arguments...)>
    {
        using Type = Result(__stdcall*)(Arguments...);
    };
    /// What the library exports for a call of SimConnectApi.
    template <auto Method>
    using Export = typename Exported<decltype(Method)>::Type;

    struct Exports
    {
        Export<&SimConnectApi::SimConnect_Open> open;
        Export<&SimConnectApi::SimConnect_Close> close;
        Export<&SimConnectApi::SimConnect_AddToDataDefinition> addToDataDefinition;
        Export<&SimConnectApi::SimConnect_ClearDataDefinition> clearDataDefinition;
        Export<&SimConnectApi::SimConnect_SubscribeToSystemEvent> subscribeToSystemEvent;
        Export<&SimConnectApi::SimConnect_RequestDataOnSimObject> requestDataOnSimObject;
        Export<&SimConnectApi::SimConnect_SetDataOnSimObject> setDataOnSimObject;
        Export<&SimConnectApi::SimConnect_RequestSystemState> requestSystemState;
        Export<&SimConnectApi::SimConnect_GetNextDispatch> getNextDispatch;
        Export<&SimConnectApi::SimConnect_GetLastSentPacketID> getLastSentPacketId;
        Export<&SimConnectApi::SimConnect_WeatherSetObservation> setObservation;
        Export<&SimConnectApi::SimConnect_WeatherSetModeCustom> setModeCustom;
        Export<&SimConnectApi::SimConnect_WeatherSetModeTheme> setModeTheme;
        Export<&SimConnectApi::SimConnect_WeatherRequestObservationAtNearestStation>
            requestObservation;
        Export<&SimConnectApi::SimConnect_WeatherCreateStation> createStation;
        Export<&SimConnectApi::SimConnect_WeatherRequestCloudState> requestCloudState;
        Export<&SimConnectApi::SimConnect_FlightPlanLoad> flightPlanLoad;
        Export<&SimConnectApi::SimConnect_Text> text;
    };

    SimConnectLibrary(RuntimeLibrary library, const Exports& exports);
    static void bind(RuntimeLibrary& library, Exports& exports);

    RuntimeLibrary m_library; ///< keeps m_exports valid
    Exports m_exports;
};

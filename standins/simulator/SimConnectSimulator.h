#pragma once

#include "sim/clients/SimConnectApi.h"
#include "standins/simulator/FaultSwitch.h"
#include "standins/simulator/SimConnectDefinition.h"
#include "standins/simulator/SimConnectHost.h"
#include "standins/simulator/SimConnectQueue.h"
#include "standins/simulator/SimulatorModel.h"

#include <initializer_list>
#include <map>
#include <string>

namespace simulator {

/// What calls give whose pipe to the simulator has broken.
inline constexpr auto kPipeBroken = static_cast<simconnect::Result>(0xC000014BU);

/// SimConnect into a simulator in memory. It belongs to the thread that uses it; what steers it
/// (model, faults, host) is for any thread, outlives it and keeps everything that was set, so a
/// client that is freed and made anew finds the simulator as it left it.
///
/// Packets count from 1, the open call, over all calls that reach the simulator: not over those
/// that fail, nor SimConnect_GetNextDispatch and SimConnect_GetLastSentPacketID. The index of an
/// exception counts the arguments after the handle from 1, 0 is none of them. Data are sent once,
/// whatever period is asked for, and only for the user's aircraft. A subscription to "Sim" or
/// "Pause" brings the present state at once; later events come when the pause changes, and are
/// noticed with the next call.
///
/// A subscription, a datum and the cleared definition meet no faults. The other calls meet those of
/// this message:
///
///     open                     hello 1           weather set observation  WRIT 8
///     request data             REQUEST 2, 3, 4   observation at nearest   REQUEST 8
///                              or 18, as the     mode custom              WRIT 16
///                              first datum is    mode theme               WRIT 10, no name 22
///     set data                 WRIT, the same    create station           WRIT 7
///     request system state     2/80              cloud state              REQUEST 9
///     text                     WRIT 20           flight plan              WRIT 11
///
/// Refuse: the exception WEATHER_INVALID_METAR for an observation, else ERROR; nothing is set.
/// Silent: no answer, nothing is set, no exception. Slow: the answer becomes due `number` ms later
/// by the clock. WrongId: the answer has another request id, or the open message another message
/// id. Result: the call gives it and does nothing. Cut: the first `number` bytes of the answer, and
/// the whole after `restAfterMs` if that is given. Garbage: `number` bytes that mean nothing stand
/// for the data after message and request id. HugeLength: an answer without its data whose head
/// announces 100 MB. Drop: the simulator is gone, each call fails with kPipeBroken until it is
/// opened anew. Close: the same, but a quit message can still be fetched. Other kinds do nothing.
/// Faults of answers do nothing to calls without one.
class SimConnectSimulator final : public SimConnectApi
{
public:
    SimConnectSimulator(SimulatorModel& model, FaultSwitch& faults, SimConnectHost& host);

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
    /// How a call goes on that met a fault or none.
    struct Meeting
    {
        Fault fault;
        Result result = simconnect::kOk;
        bool isServed = true;
    };
    using Arguments = std::initializer_list<std::string>;

    Result noteCall(const char* name, Arguments arguments);
    Result enter(Handle handle, const char* name, Arguments arguments = {});
    bool isConnected(Handle handle);
    Result notConnected(Handle handle) const;
    void openAnew();
    Meeting meet(int command, int id, std::uint32_t refusal);
    void raise(std::uint32_t exception, std::uint32_t index);
    void sendOpen(const Fault& fault);
    void sendEvent(const std::string& name, std::uint32_t data);
    void noticePause();
    void noticeMenu();
    void sendData(std::uint32_t requestId, std::uint32_t defineId, const Fault& fault);
    int messageOf(std::uint32_t defineId) const;

    SimulatorModel& m_model;
    FaultSwitch& m_faults;
    SimConnectHost& m_host;
    bool m_open = false;
    bool m_gone = false;
    int m_session = 0;
    bool m_paused = false; ///< as the client knows it
    bool m_inMenu = false; ///< the same
    std::uint32_t m_packetId = 0;
    std::map<std::uint32_t, SimConnectDefinition> m_definitions;
    std::map<std::uint32_t, std::string> m_events; ///< names of system events
    SimConnectQueue m_queue;
};

} // namespace simulator

#include "sim/clients/windows/SimConnectLibrary.h"

#include <utility>

namespace {

constexpr const char* kFileName = "SimConnect.dll";
constexpr const wchar_t* kKitFolder = L"SimConnect SDK\\lib";

} // namespace

SimConnectLibrary::SimConnectLibrary(RuntimeLibrary library, const Exports& exports)
    : m_library(std::move(library))
    , m_exports(exports)
{}

void SimConnectLibrary::bind(RuntimeLibrary& library, Exports& exports)
{
    library.bind("SimConnect_Open", exports.open);
    library.bind("SimConnect_Close", exports.close);
    library.bind("SimConnect_AddToDataDefinition", exports.addToDataDefinition);
    library.bind("SimConnect_ClearDataDefinition", exports.clearDataDefinition);
    library.bind("SimConnect_SubscribeToSystemEvent", exports.subscribeToSystemEvent);
    library.bind("SimConnect_RequestDataOnSimObject", exports.requestDataOnSimObject);
    library.bind("SimConnect_SetDataOnSimObject", exports.setDataOnSimObject);
    library.bind("SimConnect_RequestSystemState", exports.requestSystemState);
    library.bind("SimConnect_GetNextDispatch", exports.getNextDispatch);
    library.bind("SimConnect_GetLastSentPacketID", exports.getLastSentPacketId);
    library.bind("SimConnect_WeatherSetObservation", exports.setObservation);
    library.bind("SimConnect_WeatherSetModeCustom", exports.setModeCustom);
    library.bind("SimConnect_WeatherSetModeTheme", exports.setModeTheme);
    library.bind("SimConnect_WeatherRequestObservationAtNearestStation",
                 exports.requestObservation);
    library.bind("SimConnect_WeatherCreateStation", exports.createStation);
    library.bind("SimConnect_WeatherRequestCloudState", exports.requestCloudState);
    library.bind("SimConnect_FlightPlanLoad", exports.flightPlanLoad);
    library.bind("SimConnect_Text", exports.text);
}

std::unique_ptr<SimConnectApi> SimConnectLibrary::load(const std::string& simulatorFolder,
                                                       std::string& problem)
{
    Exports exports{};
    RuntimeLibrary library =
        LibrarySearch(kFileName, simulatorFolder, kKitFolder)
            .load([&exports](RuntimeLibrary& found) { bind(found, exports); }, problem);
    if (!library) {
        return nullptr;
    }
    return std::unique_ptr<SimConnectApi>(new SimConnectLibrary(std::move(library), exports));
}

SimConnectApi::Result SimConnectLibrary::SimConnect_Open(Handle* handle, const char* name,
                                                         void* window, std::uint32_t userEvent,
                                                         void* eventHandle,
                                                         std::uint32_t configIndex)
{
    return m_exports.open(handle, name, window, userEvent, eventHandle, configIndex);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_Close(Handle handle)
{
    return m_exports.close(handle);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_AddToDataDefinition(
    Handle handle, std::uint32_t defineId, const char* datumName, const char* unitsName,
    simconnect::DataType datumType, float epsilon, std::uint32_t datumId)
{
    return m_exports.addToDataDefinition(handle, defineId, datumName, unitsName, datumType, epsilon,
                                         datumId);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_ClearDataDefinition(Handle handle,
                                                                        std::uint32_t defineId)
{
    return m_exports.clearDataDefinition(handle, defineId);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_SubscribeToSystemEvent(Handle handle,
                                                                           std::uint32_t eventId,
                                                                           const char* eventName)
{
    return m_exports.subscribeToSystemEvent(handle, eventId, eventName);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_RequestDataOnSimObject(
    Handle handle, std::uint32_t requestId, std::uint32_t defineId, std::uint32_t objectId,
    std::uint32_t period, std::uint32_t flags, std::uint32_t origin, std::uint32_t interval,
    std::uint32_t limit)
{
    return m_exports.requestDataOnSimObject(handle, requestId, defineId, objectId, period, flags,
                                            origin, interval, limit);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_SetDataOnSimObject(
    Handle handle, std::uint32_t defineId, std::uint32_t objectId, std::uint32_t flags,
    std::uint32_t arrayCount, std::uint32_t unitSize, void* data)
{
    return m_exports.setDataOnSimObject(handle, defineId, objectId, flags, arrayCount, unitSize,
                                        data);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_RequestSystemState(Handle handle,
                                                                       std::uint32_t requestId,
                                                                       const char* state)
{
    return m_exports.requestSystemState(handle, requestId, state);
}

SimConnectApi::Result
SimConnectLibrary::SimConnect_GetNextDispatch(Handle handle, const simconnect::Message** message,
                                              std::uint32_t* size)
{
    return m_exports.getNextDispatch(handle, message, size);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_GetLastSentPacketID(Handle handle,
                                                                        std::uint32_t* packetId)
{
    return m_exports.getLastSentPacketId(handle, packetId);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_WeatherSetObservation(Handle handle,
                                                                          std::uint32_t seconds,
                                                                          const char* metar)
{
    return m_exports.setObservation(handle, seconds, metar);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_WeatherSetModeCustom(Handle handle)
{
    return m_exports.setModeCustom(handle);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_WeatherSetModeTheme(Handle handle,
                                                                        const char* themeName)
{
    return m_exports.setModeTheme(handle, themeName);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_WeatherRequestObservationAtNearestStation(
    Handle handle, std::uint32_t requestId, float latitude, float longitude)
{
    return m_exports.requestObservation(handle, requestId, latitude, longitude);
}

SimConnectApi::Result
SimConnectLibrary::SimConnect_WeatherCreateStation(Handle handle, std::uint32_t requestId,
                                                   const char* icao, const char* name,
                                                   float latitude, float longitude, float altitude)
{
    return m_exports.createStation(handle, requestId, icao, name, latitude, longitude, altitude);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_WeatherRequestCloudState(
    Handle handle, std::uint32_t requestId, float minLatitude, float minLongitude,
    float minAltitude, float maxLatitude, float maxLongitude, float maxAltitude,
    std::uint32_t flags)
{
    return m_exports.requestCloudState(handle, requestId, minLatitude, minLongitude, minAltitude,
                                       maxLatitude, maxLongitude, maxAltitude, flags);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_FlightPlanLoad(Handle handle,
                                                                   const char* fileName)
{
    return m_exports.flightPlanLoad(handle, fileName);
}

SimConnectApi::Result SimConnectLibrary::SimConnect_Text(Handle handle, std::uint32_t type,
                                                         float seconds, std::uint32_t eventId,
                                                         std::uint32_t unitSize, void* text)
{
    return m_exports.text(handle, type, seconds, eventId, unitSize, text);
}

#include "sim/clients/SimConnectApi.h"
#include "sim/clients/SimulatorClients.h"
#include "tests/windows/WindowsCheck.h"

#include <cstring>

using namespace windows_check;
using simconnect::kFailed;
using simconnect::kOk;
using simconnect::MessageId;

namespace {

/// The next message, whole; a null pointer when none waits or it isn't of that kind and size.
template <typename Message>
const Message* nextMessage(SimConnectApi& api, void* handle, MessageId id, std::size_t tail = 0)
{
    const simconnect::Message* message = nullptr;
    std::uint32_t size = 0;
    const bool came = api.SimConnect_GetNextDispatch(handle, &message, &size) == kOk
                      && message->id == static_cast<std::uint32_t>(id)
                      && size == sizeof(Message) + tail && message->size == size;
    checkTrue("message as expected", came);
    return came ? static_cast<const Message*>(message) : nullptr;
}

constexpr char kMetar[] = "KDEN&A1655 000000Z 27015KT";

constexpr const char* kSentCalls =
    "Open 'FSInterface' 0x101 1 0x202 2\n"
    "AddToDataDefinition 5 'PAYLOAD STATION WEIGHT:1' 'Pounds' 4 0.25 4294967295\n"
    "AddToDataDefinition 0 'TITLE' '(null)' 9 0 4294967295\n"
    "SubscribeToSystemEvent 5 'Pause'\n"
    "SetDataOnSimObject 5 1 2 3 8\n"
    "RequestDataOnSimObject 9 5 1 2 3 4 6 7\n"
    "RequestSystemState 10 'Sim'\n"
    "WeatherSetModeTheme ''\n"
    "WeatherSetModeCustom\n"
    "WeatherSetObservation 60 'KDEN&A1655 000000Z 27015KT'\n"
    "WeatherRequestObservationAtNearestStation 5 39.5 -104.75\n"
    "WeatherCreateStation 7 'KXYZ' 'Somewhere' -33.5 151.25 1024\n"
    "WeatherRequestCloudState 6 -1.5 -2.5 0 1.5 2.5 30000 8\n"
    "FlightPlanLoad 'C:\\plans\\a.pln'\n"
    "Text 1 12.5 3 6 'Hello'\n"
    "ClearDataDefinition 5\n";

/// Each call once, all arguments different.
void send(SimConnectApi& api, void* handle)
{
    double weight = 172.5;
    char text[] = "Hello";
    const auto ok = [](const char* name, simconnect::Result result) {
        checkEqual(name, result, kOk);
    };
    ok("add", api.SimConnect_AddToDataDefinition(handle, 5, "PAYLOAD STATION WEIGHT:1", "Pounds",
                                                 simconnect::DataType::Float64, 0.25F,
                                                 simconnect::kUnused));
    ok("add text", api.SimConnect_AddToDataDefinition(handle, 0, "TITLE", nullptr,
                                                      simconnect::DataType::String256, 0.0F,
                                                      simconnect::kUnused));
    ok("event", api.SimConnect_SubscribeToSystemEvent(handle, 5, "Pause"));
    ok("set data", api.SimConnect_SetDataOnSimObject(handle, 5, 1, 2, 3, sizeof weight, &weight));
    ok("request", api.SimConnect_RequestDataOnSimObject(handle, 9, 5, 1, 2, 3, 4, 6, 7));
    ok("state", api.SimConnect_RequestSystemState(handle, 10, "Sim"));
    ok("theme", api.SimConnect_WeatherSetModeTheme(handle, ""));
    ok("custom", api.SimConnect_WeatherSetModeCustom(handle));
    ok("weather", api.SimConnect_WeatherSetObservation(handle, 60, kMetar));
    ok("observation",
       api.SimConnect_WeatherRequestObservationAtNearestStation(handle, 5, 39.5F, -104.75F));
    ok("station", api.SimConnect_WeatherCreateStation(handle, 7, "KXYZ", "Somewhere", -33.5F,
                                                      151.25F, 1024.0F));
    ok("clouds", api.SimConnect_WeatherRequestCloudState(handle, 6, -1.5F, -2.5F, 0.0F, 1.5F, 2.5F,
                                                         30000.0F, 8));
    ok("plan", api.SimConnect_FlightPlanLoad(handle, "C:\\plans\\a.pln"));
    ok("text",
       api.SimConnect_Text(handle, simconnect::kTextScrollWhite, 12.5F, 3, sizeof text, text));
    ok("clear", api.SimConnect_ClearDataDefinition(handle, 5));
}

void checkAnswers(SimConnectApi& api, void* handle)
{
    if (const auto* opened = nextMessage<simconnect::OpenMessage>(api, handle, MessageId::Open)) {
        checkEqual("open", std::string(opened->applicationName), "Stand-in");
        checkEqual("version", opened->applicationVersion[0], 10U);
        checkEqual("build", opened->simConnectVersion[3], 259U);
    }
    if (const auto* event = nextMessage<simconnect::EventMessage>(api, handle, MessageId::Event)) {
        checkEqual("event id", event->eventId, 5U);
    }
    if (const auto* data = nextMessage<simconnect::ObjectDataMessage>(
            api, handle, MessageId::ObjectData, sizeof(double)))
    {
        double weight = 0.0;
        std::memcpy(&weight, data + 1, sizeof weight);
        checkEqual("data", weight, 172.5);
        checkEqual("request", data->requestId, 9U);
    }
    if (const auto* state =
            nextMessage<simconnect::SystemStateMessage>(api, handle, MessageId::SystemState))
    {
        checkEqual("state", std::string(state->stringValue), "Sim");
        checkEqual("state's number", state->integerValue, 1U);
    }
    if (const auto* observation = nextMessage<simconnect::ObservationMessage>(
            api, handle, MessageId::WeatherObservation, sizeof kMetar))
    {
        checkEqual("observation", std::string(reinterpret_cast<const char*>(observation + 1)),
                   kMetar);
    }
    if (const auto* clouds =
            nextMessage<simconnect::CloudStateMessage>(api, handle, MessageId::CloudState, 4096))
    {
        checkEqual("last cloud byte", reinterpret_cast<const char*>(clouds + 1)[4095], '\x7F');
    }
}

/// What the library says no to comes back as it said it.
void checkRefusals(SimConnectApi& api, void* handle)
{
    const simconnect::Message* message = nullptr;
    std::uint32_t number = 0;
    checkEqual("nothing waits", api.SimConnect_GetNextDispatch(handle, &message, &number), kFailed);
    checkEqual("a result of its own", api.SimConnect_FlightPlanLoad(handle, ""),
               static_cast<simconnect::Result>(0x80070057U));
    api.SimConnect_WeatherSetObservation(handle, 0, "");
    checkEqual("packet id", api.SimConnect_GetLastSentPacketID(handle, &number), kOk);
    if (const auto* exception =
            nextMessage<simconnect::ExceptionMessage>(api, handle, MessageId::Exception))
    {
        checkEqual("exception", exception->exception, 20U);
        checkEqual("its packet", exception->sendId, number);
        checkEqual("its argument", exception->index, 2U);
    }
    checkEqual("close", api.SimConnect_Close(handle), kOk);
    checkEqual("another connection", api.SimConnect_Close(nullptr), kFailed);
}

} // namespace

void testSimConnectCalls()
{
    std::string problem;
    const auto api = HostSimulatorClients().simConnect(utf8(standIns("full")), problem);
    checkEqual("SimConnect loads", problem, "");
    if (api == nullptr) {
        return;
    }
    void* const window = reinterpret_cast<void*>(std::uintptr_t{0x101});
    void* const event = reinterpret_cast<void*>(std::uintptr_t{0x202});
    void* handle = nullptr;
    checkEqual("open", api->SimConnect_Open(&handle, "FSInterface", window, 1, event, 2), kOk);
    send(*api, handle);
    const auto calls =
        standInFunction<const char*(__stdcall*)()>(L"SimConnect.dll", "StandIn_Calls");
    checkEqual("arguments as sent", std::string(calls()), kSentCalls);
    checkAnswers(*api, handle);
    checkRefusals(*api, handle);
}

#include "app/base/StopFlag.h"
#include "sim/FsInterfaceFSUIPC_SimConnect.h"
#include "tests/sim/ScriptedFsuipc.h"
#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

class FsInterfaceFSUIPC_SimConnectTest : public ::testing::Test
{
protected:
    FakeClock clock{2024, 6, 1, 12};
    StopFlag stop;
    ScriptedBothClients clients;
    FsInterfaceFSUIPC_SimConnect object{clients, QString(), stop};
};

} // namespace

TEST_F(FsInterfaceFSUIPC_SimConnectTest, ConnectsBothOrNone)
{
    const std::tuple<std::uint32_t, simconnect::Result, int> rows[] = {
        {0, simconnect::kOk, 0},     {1, simconnect::kOk, 0},     {2, simconnect::kOk, 1},
        {0, simconnect::kFailed, 1}, {2, simconnect::kFailed, 1},
    };
    for (const auto& [fsuipc, simConnect, result] : rows) {
        clients.fsuipcScript = FsuipcScript();
        clients.fsuipcScript.openCode = fsuipc;
        clients.simConnectScript = SimConnectScript();
        clients.simConnectScript.results["Open"] = simConnect;
        {
            FsInterfaceFSUIPC_SimConnect both(clients, QString(), stop);
            int failures = 0;
            QObject::connect(&both, &FsInterfaceBase::sigDebugString, &both,
                             [&failures](const QString& text, int) {
                                 failures += text.contains(QStringLiteral("FAILED")) ? 1 : 0;
                             });
            EXPECT_EQ(both.Connect(), result) << fsuipc;
            EXPECT_EQ(failures,
                      (fsuipc == 2 ? 1 : 0) + (simConnect == simconnect::kFailed ? 1 : 0));
            EXPECT_EQ(both.connected(), result == 0);
            EXPECT_EQ(clients.simConnectScript.count("Open"), 1) << "always both";
            if (result == 0) {
                EXPECT_EQ(both.Connect(), 0) << "both are connected already";
                EXPECT_EQ(both.Disconnect(), 0);
                EXPECT_FALSE(both.connected());
                EXPECT_EQ(clients.fsuipcScript.closes, 1);
                EXPECT_EQ(clients.simConnectScript.count("Close"), 0);
            }
        }
        EXPECT_EQ(clients.simConnectScript.count("Close"), simConnect == simconnect::kOk ? 1 : 0)
            << "at the latest by deletion";
    }
}

TEST_F(FsInterfaceFSUIPC_SimConnectTest, EachOperationGoesToItsMember)
{
    ASSERT_EQ(object.Connect(), 0);
    aviation::structs::AircraftData aircraft;
    aviation::structs::AircraftFuel fuel;
    fuel.tanks = {{L"", 1, 0.0, 0.0}};
    aviation::structs::AircraftPayload payload;
    payload.stations = {{L"", 0.0F, 1.0F, 0}};
    aviation::structs::RadioFrequencys radios;
    QString text;
    std::vector<std::uint8_t> map;

    clients.fsuipcScript.put(0x13FC, 1);
    const auto wentTo = [this](const char* member, int result) {
        const bool toFsuipc = std::string(member) == "fsuipc";
        EXPECT_NE(result, 200) << member;
        EXPECT_EQ(clients.fsuipcScript.processes > 0, toFsuipc) << member;
        EXPECT_EQ(clients.simConnectScript.count(member), toFsuipc ? 0 : 1) << member;
        EXPECT_EQ(clients.simConnectScript.calls.empty(), toFsuipc) << member;
        clients.fsuipcScript.processes = 0;
        clients.simConnectScript.calls.clear();
    };
    clients.fsuipcScript.processes = 0;
    clients.simConnectScript.calls.clear();
    wentTo("fsuipc", object.ClearWeather());
    wentTo("fsuipc", object.GetAircraftData(aircraft));
    wentTo("fsuipc", object.SetAircraftPayload(payload));
    wentTo("fsuipc", object.GetAircraftPayload(payload));
    wentTo("fsuipc", object.SetAircraftFuel(fuel));
    wentTo("fsuipc", object.GetAircraftFuel(fuel));
    wentTo("fsuipc", object.SetWeatherRecord(NewWeather()));
    wentTo("fsuipc", object.SetWindAtAircraft({270, 10, -1, 0}));
    wentTo("fsuipc", object.GetRadioFrequencys(radios));
    wentTo("fsuipc", object.SetRadioFrequencys(radios));
    wentTo("Text 3 hi", object.SendText("hi", 5));
    wentTo("Observation AAAA", object.SetWeatherText(QStringLiteral("AAAA")));
    wentTo("Theme t", object.SetWeatherTheme("t"));
    wentTo("Nearest", object.GetWeatherAt(text, 1, 2));
    wentTo("Station 7 AAAA", object.CreateStation("AAAA", "n", 1, 2, 3));
    wentTo("Plan p", object.LoadFlightPlan(QStringLiteral("p")));
    wentTo("Custom", object.setCustomWeatherMode());
    wentTo("Clouds", object.GetCloudState({}, map));
    EXPECT_EQ(object.SetVisibility(1), 200);
    int id = 0;
    EXPECT_EQ(object.GetInterface(id, text), 0);
    EXPECT_EQ(text, QStringLiteral("FSUIPC + SimConnect"));
}

TEST_F(FsInterfaceFSUIPC_SimConnectTest, WeatherTextsFetchTwoMessages)
{
    ASSERT_EQ(object.Connect(), 0);
    const simconnect::EventMessage event;
    clients.simConnectScript.messages.assign(3, messageOf(simconnect::MessageId::Event, event));
    EXPECT_EQ(object.SetWeatherText(QStringLiteral("AAAA 1")), 0);
    EXPECT_EQ(clients.simConnectScript.messages.size(), 1U);
    clients.simConnectScript.results = {{"Theme", simconnect::kFailed},
                                        {"Nearest", simconnect::kFailed}};
    QString observation;
    EXPECT_EQ(object.SetWeatherTheme("t"), 8);
    EXPECT_EQ(object.GetWeatherAt(observation, 1.0, 2.0), 8);
}

TEST_F(FsInterfaceFSUIPC_SimConnectTest, TheEndOfEitherLinkEndsBoth)
{
    aviation::structs::AircraftData aircraft;
    QString observation;
    SimConnectScript& script = clients.simConnectScript;
    const simconnect::Message quit;
    ASSERT_EQ(object.Connect(), 0);
    EXPECT_EQ(object.GetAircraftData(aircraft), 0);
    script.messages = {messageOf(simconnect::MessageId::Quit, quit)};
    EXPECT_EQ(object.GetAircraftData(aircraft), simresult::kTimeout);
    EXPECT_EQ(object.GetWeatherAt(observation, 1.0, 2.0), simresult::kTimeout);

    FsInterfaceFSUIPC_SimConnect other(clients, QString(), stop);
    ASSERT_EQ(other.Connect(), 0);
    script.noMessage = static_cast<simconnect::Result>(0xC000014BU);
    for (int poll = 1; poll <= 5; ++poll) {
        EXPECT_EQ(other.GetAircraftData(aircraft), poll < 5 ? 0 : simresult::kTimeout);
    }
    script.noMessage = simconnect::kFailed;
    EXPECT_EQ(other.GetAircraftData(aircraft), 0);
    clients.fsuipcScript.failures = {{clients.fsuipcScript.processes + 1, fsuipc::kSendFailed}};
    EXPECT_EQ(other.GetAircraftData(aircraft), simresult::kTimeout);
}

#include "app/base/StopFlag.h"
#include "sim/FsInterfaceFSUIPC_SimConnect.h"
#include "tests/sim/ScriptedFsuipc.h"
#include "tests/support/FakeClock.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

class CombinedInterfaceTest : public ::testing::Test
{
protected:
    FakeClock clock{2024, 6, 1, 12};
    StopFlag stop;
    ScriptedBothClients clients;
    FsInterfaceFSUIPC_SimConnect object{clients, QString(), stop};
};

} // namespace

TEST_F(CombinedInterfaceTest, ConnectsBothInOrder)
{
    const struct
    {
        std::uint32_t fsuipc;
        simconnect::Result simConnect;
        int result;
    } rows[] = {
        {0, simconnect::kOk, 0},     {1, simconnect::kOk, 0},     {2, simconnect::kOk, 1},
        {0, simconnect::kFailed, 1}, {2, simconnect::kFailed, 1},
    };
    for (const auto& row : rows) {
        clients.fsuipcScript = FsuipcScript();
        clients.fsuipcScript.openCode = row.fsuipc;
        clients.simConnectScript = SimConnectScript();
        clients.simConnectScript.results["Open"] = row.simConnect;
        {
            FsInterfaceFSUIPC_SimConnect both(clients, QString(), stop);
            QStringList log;
            QObject::connect(&both, &FsInterfaceBase::sigDebugString, &both,
                             [&log](const QString& text, int) { log.append(text); });
            EXPECT_EQ(both.Connect(), row.result) << row.fsuipc;
            EXPECT_EQ(both.connected(), row.result == 0);
            EXPECT_EQ(clients.simConnectScript.count("Open"), 1) << "always both";
            EXPECT_EQ(log.filter(QStringLiteral("Connect FAILED")).size(), row.fsuipc == 2 ? 1 : 0);
            EXPECT_EQ(log.filter(QStringLiteral("HRESULT FAILED")).size(),
                      row.simConnect == simconnect::kFailed ? 1 : 0);
            if (row.result == 0) {
                EXPECT_EQ(both.Connect(), 0) << "both are connected already";
                EXPECT_EQ(both.Disconnect(), 0);
                EXPECT_FALSE(both.connected());
                EXPECT_EQ(clients.fsuipcScript.closes, 1);
                EXPECT_EQ(clients.simConnectScript.count("Close"), 0);
            }
        }
        const int opened = row.simConnect == simconnect::kOk ? 1 : 0;
        EXPECT_EQ(clients.simConnectScript.count("Close"), opened) << "at the latest by deletion";
    }
}

TEST_F(CombinedInterfaceTest, TellsWhatItIs)
{
    int interfaceId = 0;
    QString name;
    EXPECT_EQ(object.GetInterface(interfaceId, name), 0);
    EXPECT_EQ(interfaceId, 3);
    EXPECT_EQ(name, QStringLiteral("FSUIPC + SimConnect"));
    clients.fsuipcScript.code = 12;
    ASSERT_EQ(object.Connect(), 0);
    aviation::FsId id = 0;
    EXPECT_EQ(object.GetFsVersion(id, name), 0);
    EXPECT_EQ(id, 6);
    EXPECT_EQ(object.fsVersion(), 6);
    EXPECT_EQ(name, QStringLiteral("P3Dv4"));
}

TEST_F(CombinedInterfaceTest, EachOperationGoesToItsMember)
{
    ASSERT_EQ(object.Connect(), 0);
    aviation::structs::AircraftData aircraft;
    aviation::structs::AircraftFuel fuel;
    fuel.tanks.resize(1);
    fuel.tanks[0].id = 1;
    aviation::structs::AircraftPayload payload;
    payload.stations.resize(1);
    payload.stations[0].weight = 1.0F;
    aviation::structs::RadioFrequencys radios;
    QString text;
    std::vector<std::uint8_t> map;
    NewWeather record;
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
    wentTo("fsuipc", object.SetWeatherRecord(record));
    wentTo("fsuipc", object.SetWindAtAircraft({270, 10, -1, 0}));
    wentTo("fsuipc", object.GetRadioFrequencys(radios));
    wentTo("fsuipc", object.SetRadioFrequencys(radios));
    wentTo("Text 3 hi", object.SendText("hi", 5));
    wentTo("Observation AAAA", object.SetWeatherText(QStringLiteral("AAAA")));
    wentTo("Theme t", object.SetWeatherTheme("t"));
    wentTo("Nearest", object.GetWeatherAt(text, 1, 2));
    wentTo("Station 7 AAAA", object.CreateStation("AAAA", "n", 1, 2, 3));
    wentTo("Plan p", object.LoadFlightPlan(QStringLiteral("p")));
    wentTo("Custom", object.SetCustomWeatherMode());
    wentTo("Clouds", object.GetCloudState({}, map));
    QDateTime dateTime;
    EXPECT_EQ(object.GetDateTime(dateTime), 200);
    EXPECT_EQ(object.SetVisibility(1), 200);
}

TEST_F(CombinedInterfaceTest, WeatherTextsFetchTwoMessages)
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

#include "tests/tools/simulator/SimConnectFixture.h"
#include "tools/simulator/SimulatorClientsInMemory.h"

namespace {

using simconnect::kFailed;
using simconnect::kOk;
using simconnect::MessageId;
using simulator::SimConnectVersion;
namespace exception = simulator::exception;

class SimConnectFaultTest : public SimConnectFixture
{
protected:
    SimConnectFaultTest()
    {
        add(1, "FUEL WEIGHT PER GALLON", "pounds", DataType::Float64);
        add(2, "FUEL TANK CENTER LEVEL", "percent over 100", DataType::Float64);
    }
    static constexpr std::size_t kWhole = sizeof(simconnect::ObjectDataMessage) + 8;
};

TEST_F(SimConnectFaultTest, AnswersAreSpoiltAsTheFaultTells)
{
    struct Row
    {
        const char* fault;
        std::size_t bytes;  ///< that come
        std::uint32_t size; ///< as the head tells
        std::uint32_t id;   ///< of the request
    };
    for (const Row& row :
         {Row{"cut:39@6/3*1", 39, kWhole, 77}, Row{"cut:0@3*1", 0, 0, 0},
          Row{"garbage:30@3*1", 46, 46, 77}, Row{"garbage:0@3*1", 16, 16, 77},
          Row{"wrongid@3*1", kWhole, kWhole, 77 ^ 0x5500}, Row{"huge@3*1", 16, 100000000, 77},
          Row{"silent@3*1", 0, 0, 0}, Row{"udpsilent*1", kWhole, kWhole, 77},
          Row{"silent@2", kWhole, kWhole, 77}})
    {
        setFault(row.fault);
        EXPECT_EQ(request(1), kOk) << row.fault;
        const std::vector<std::uint8_t> bytes = next();
        ASSERT_EQ(bytes.size(), row.bytes) << row.fault;
        if (!bytes.empty()) {
            EXPECT_EQ(at<std::uint32_t>(bytes, 0), row.size) << row.fault;
            EXPECT_EQ(at<std::uint32_t>(bytes, 12), row.id) << row.fault;
        }
        EXPECT_TRUE(next().empty()) << row.fault;
        setFault("none");
        EXPECT_DOUBLE_EQ(at<double>(data(1), 0), 6.7) << "over after " << row.fault;
    }
}

TEST_F(SimConnectFaultTest, SlowAnswersAreOvertaken)
{
    setFault("slow:500@6/3*1");
    request(1, 1);
    setFault("cut:20,200@6/3*1");
    request(1, 2);
    request(1, 3);
    EXPECT_EQ(next().size(), 20U);
    EXPECT_EQ(at<std::uint32_t>(next(), 12), 3U);
    EXPECT_TRUE(next().empty());
    clock.Advance(std::chrono::milliseconds(499));
    EXPECT_EQ(at<std::uint32_t>(next(), 12), 2U);
    EXPECT_TRUE(next().empty());
    clock.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(at<std::uint32_t>(next(), 12), 1U);
}

TEST_F(SimConnectFaultTest, WhatIsRefusedOrSwallowedIsNotKept)
{
    client.SimConnect_WeatherSetModeCustom(handle);
    setFault("refuse@5/8*1");
    EXPECT_EQ(observe("KMSP 011200Z"), kOk);
    EXPECT_EQ(nextException().exception, exception::kWeatherInvalidMetar);
    setFault("silent@5/8*1");
    EXPECT_EQ(observe("KMSP 011200Z"), kOk);
    EXPECT_TRUE(next().empty());
    EXPECT_TRUE(model.state().weatherTexts.isEmpty());
    setFault("refuse@5/3*1");
    set<double>(2, {0.5});
    EXPECT_EQ(nextException().exception, exception::kError);
    EXPECT_EQ(model.state().fuel.tanks[1].level, 30.0);
    observe("KMSP 011200Z");
    EXPECT_EQ(model.state().weatherTexts.size(), 1);
}

TEST_F(SimConnectFaultTest, ASimulatorThatIsGoneFailsUntilItIsOpenedAnew)
{
    const auto endings = {std::pair("drop*1", false), std::pair("close*1", true),
                          std::pair("", false)};
    for (const auto& [fault, quits] : endings) {
        request(1);
        if (*fault != '\0') {
            setFault(fault);
            EXPECT_EQ(request(1), kFailed) << fault;
        } else {
            host.setRunning(false);
        }
        if (quits) {
            nextOf<simconnect::Message>(MessageId::Quit);
        }
        EXPECT_TRUE(next().empty()) << "nothing of before";
        EXPECT_EQ(observe("KMSP 011200Z"), kFailed);
        EXPECT_EQ(client.SimConnect_Close(handle), kFailed);
        const auto open = [this] {
            return client.SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0);
        };
        EXPECT_EQ(open(), host.isRunning() ? kOk : kFailed);
        host.setRunning(true);
        if (*fault == '\0') {
            EXPECT_EQ(open(), kOk);
        }
        EXPECT_EQ(open(), kFailed) << "is open";
        nextOf<simconnect::OpenMessage>(MessageId::Open);
        request(1);
        EXPECT_EQ(nextException().exception, exception::kUnrecognizedId) << "definitions are gone";
        add(1, "FUEL WEIGHT PER GALLON", "pounds", DataType::Float64);
    }
}

TEST_F(SimConnectFaultTest, SingleCallsFailOnDemand)
{
    host.failNextCalls("SimConnect_WeatherSetModeCustom", 2);
    EXPECT_EQ(client.SimConnect_WeatherSetModeCustom(handle), kFailed);
    EXPECT_EQ(client.SimConnect_WeatherSetModeCustom(handle), kFailed);
    EXPECT_FALSE(model.state().customWeather);
    EXPECT_EQ(client.SimConnect_WeatherSetModeCustom(handle), kOk);
    EXPECT_EQ(host.callCount("SimConnect_WeatherSetModeCustom"), 3);
    EXPECT_EQ(client.SimConnect_WeatherSetModeCustom(nullptr), kFailed) << "another handle";
}

TEST_F(SimConnectFaultTest, TheOpenMessageTellsTheVersion)
{
    const std::vector<SimConnectVersion> versions{
        SimConnectVersion::fsx(), SimConnectVersion::prepar3d(4), SimConnectVersion::fs2020()};
    for (const SimConnectVersion& version : versions) {
        host.setVersion(version);
        client.SimConnect_Close(handle);
        client.SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0);
        const auto message = nextOf<simconnect::OpenMessage>(MessageId::Open);
        EXPECT_EQ(message.applicationName, version.applicationName);
        EXPECT_EQ(message.applicationVersion[0], version.application[0]);
        EXPECT_EQ(message.simConnectVersion[2], version.simConnect[2]);
    }
    EXPECT_EQ(model.state().clientName, QStringLiteral("test"));
    client.SimConnect_Close(handle);
    setFault("silent@1*1");
    EXPECT_EQ(client.SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0), kOk);
    EXPECT_TRUE(next().empty());
}

TEST(SimulatorClientsInMemoryTest, TheSimulatorOutlivesItsClients)
{
    const FakeClock clock(2019, 7, 1, 12);
    simulator::SimulatorClientsInMemory clients;
    EXPECT_EQ(clients.model().simTime(), clock.NowSeconds());
    std::string problem;
    SimConnectApi::Handle handle = nullptr;
    std::unique_ptr<SimConnectApi> client = clients.simConnect("C:/sim", problem);
    ASSERT_EQ(client->SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0), kOk);
    client->SimConnect_WeatherSetModeCustom(handle);
    client = clients.simConnect("C:/sim", problem);
    ASSERT_EQ(client->SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0), kOk);
    client->SimConnect_WeatherSetObservation(handle, 0, "KMSP 011200Z");
    EXPECT_EQ(clients.model().state().weatherTexts.size(), 1);

    const std::unique_ptr<FsuipcApi> memory = clients.fsuipc({}, problem);
    std::uint32_t result = 0;
    std::uint8_t pause = 0;
    EXPECT_TRUE(memory->FSUIPC_Open(fsuipc::kAnySimulator, &result));
    clients.model().setPaused(true);
    EXPECT_TRUE(memory->FSUIPC_Read(0x3365, 1, &pause, &result));
    EXPECT_TRUE(memory->FSUIPC_Process(&result));
    EXPECT_NE(pause, 0) << "one simulator";
    clients.setRunning(false);
    EXPECT_FALSE(memory->FSUIPC_Read(0x3365, 1, &pause, &result)
                 && memory->FSUIPC_Process(&result));
    memory->FSUIPC_Close();
    EXPECT_FALSE(memory->FSUIPC_Open(fsuipc::kAnySimulator, &result));
    EXPECT_FALSE(clients.fsuipc({}, problem)->FSUIPC_Open(fsuipc::kAnySimulator, &result));
    EXPECT_EQ(result, fsuipc::kNoSimulator);
    EXPECT_EQ(client->SimConnect_WeatherSetModeCustom(handle), kFailed);
    EXPECT_EQ(client->SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0), kFailed);
    clients.setRunning(true);
    EXPECT_EQ(client->SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0), kOk);
    EXPECT_EQ(clients.model().state().weatherTexts.size(), 1);

    EXPECT_EQ(problem, "");
    clients.setSimConnectInstalled(false);
    clients.setFsuipcInstalled(false);
    EXPECT_EQ(clients.simConnect({}, problem), nullptr);
    EXPECT_EQ(problem, "SimConnect isn't installed.");
    EXPECT_EQ(clients.fsuipc("C:/other", problem), nullptr);
    EXPECT_EQ(clients.lastFolder(), "C:/other");
}

} // namespace

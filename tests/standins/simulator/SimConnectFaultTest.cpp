#include "tests/standins/simulator/SimConnectFixture.h"

#include <tuple>

namespace {

using simconnect::kFailed;
using simconnect::kOk;
using simconnect::MessageId;

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
    /// The bytes that come, their number as the head says it, and the id of the request.
    using Row = std::tuple<const char*, std::size_t, std::uint32_t, std::uint32_t>;
    for (const auto& [fault, come, size, id] :
         {Row{"cut:39@6/3*1", 39, kWhole, 77}, Row{"cut:0@3*1", 0, 0, 0},
          Row{"garbage:30@3*1", 46, 46, 77}, Row{"garbage:0@3*1", 16, 16, 77},
          Row{"wrongid@3*1", kWhole, kWhole, 77 ^ 0x5500}, Row{"huge@3*1", 16, 100000000, 77},
          Row{"silent@3*1", 0, 0, 0}, Row{"udpsilent*1", kWhole, kWhole, 77},
          Row{"silent@2", kWhole, kWhole, 77}})
    {
        setFault(fault);
        EXPECT_EQ(request(1), kOk) << fault;
        const std::vector<std::uint8_t> bytes = next();
        ASSERT_EQ(bytes.size(), come) << fault;
        if (!bytes.empty()) {
            EXPECT_EQ(at<std::uint32_t>(bytes, 0), size) << fault;
            EXPECT_EQ(at<std::uint32_t>(bytes, 12), id) << fault;
        }
        EXPECT_TRUE(next().empty()) << fault;
        setFault("none");
        EXPECT_DOUBLE_EQ(at<double>(data(1), 0), 6.7) << "over after " << fault;
    }
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

TEST_F(SimConnectFaultTest, CallsGiveTheResultThatIsAskedFor)
{
    setFault("result:C00000B0@6/3*1");
    EXPECT_EQ(request(1), static_cast<simconnect::Result>(0xC00000B0U));
    EXPECT_TRUE(next().empty());
    EXPECT_EQ(request(1), kOk);
    host.failNextCalls("SimConnect_GetNextDispatch", 1, simulator::kPipeBroken);
    EXPECT_TRUE(next().empty());
    EXPECT_FALSE(next().empty()) << "the answer is still there";
}

TEST_F(SimConnectFaultTest, ASimulatorThatIsGoneFailsUntilItIsOpenedAnew)
{
    const auto endings = {std::pair("drop*1", false), std::pair("close*1", true),
                          std::pair("", false)};
    for (const auto& [fault, quits] : endings) {
        request(1);
        if (*fault != '\0') {
            setFault(fault);
            EXPECT_EQ(request(1), simulator::kPipeBroken) << fault;
        } else {
            host.setRunning(false);
        }
        if (quits) {
            nextOf<simconnect::Message>(MessageId::Quit);
        }
        EXPECT_TRUE(next().empty()) << "nothing of before";
        EXPECT_EQ(observe("KMSP 011200Z"), simulator::kPipeBroken);
        EXPECT_EQ(client.SimConnect_Close(handle), simulator::kPipeBroken);
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

} // namespace

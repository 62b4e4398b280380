#include "standins/simulator/FsuipcMemory.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <tuple>

namespace {

using simulator::FsuipcMemory;
using simulator::SimulatorModel;

class FsuipcMemoryTest : public ::testing::Test
{
protected:
    FsuipcMemoryTest() { EXPECT_EQ(open(), fsuipc::kOk); }

    std::uint32_t open()
    {
        std::uint32_t result = 99;
        api.FSUIPC_Close();
        api.FSUIPC_Open(fsuipc::kAnySimulator, &result);
        return result;
    }
    template <class Value>
    void write(std::uint32_t at, const Value& value)
    {
        std::uint32_t result = 99;
        EXPECT_TRUE(api.FSUIPC_Write(at, sizeof(value), &value, &result)) << result;
    }
    std::uint32_t process()
    {
        std::uint32_t result = 99;
        api.FSUIPC_Process(&result);
        return result;
    }
    template <class Value>
    Value read(std::uint32_t at)
    {
        Value value{};
        std::uint32_t result = 99;
        EXPECT_TRUE(api.FSUIPC_Read(at, sizeof(value), &value, &result)) << result;
        EXPECT_EQ(process(), fsuipc::kOk);
        return value;
    }
    std::uint32_t sendRecord(std::uint16_t word, int clouds = 0)
    {
        NewWeather record;
        record.Command = word;
        record.setIcao(L"KMSP");
        record.nCloudCtr = clouds;
        write(0xC800, record);
        return process();
    }
    std::uint32_t sendText(const std::string& text)
    {
        std::array<char, 128> bytes{};
        std::copy_n(text.begin(), std::min(text.size(), bytes.size()), bytes.begin());
        write(0x3380, bytes);
        write(0x32FA, std::uint16_t{5});
        return process();
    }
    std::size_t records() { return model.state().weatherRecords.size(); }

    FakeClock clock{2019, 7, 1, 12};
    SimulatorModel model;
    simulator::FaultSwitch faults;
    FsuipcMemory api{model, faults, {8, 0x49770003, 43, true, 1}};
};

TEST_F(FsuipcMemoryTest, LinkAndBordersAnswerWithTheirCodes)
{
    EXPECT_EQ(api.simulatorCode(), 8U);
    EXPECT_EQ(api.version(), 0x49770003U);
    EXPECT_EQ(read<std::uint8_t>(0x3124), 43);
    char byte = 0;
    std::uint32_t result = 99;
    EXPECT_TRUE(api.FSUIPC_Read(0xFFFF, 1, &byte, &result));
    EXPECT_FALSE(api.FSUIPC_Read(0xFFFF, 2, &byte, &result));
    EXPECT_EQ(result, fsuipc::kBadData);
    EXPECT_FALSE(api.FSUIPC_Write(0xFFFFFFFF, 2, &byte, &result));
    EXPECT_EQ(result, fsuipc::kBadData);
    EXPECT_EQ(process(), fsuipc::kOk);
    api.setRunning(false);
    api.setRunning(true);
    write(0x3124, byte);
    EXPECT_EQ(process(), 12U) << "lost until opened anew";
    api.setRunning(false);
    EXPECT_EQ(open(), fsuipc::kNoSimulator);
    EXPECT_EQ(api.simulatorCode(), 0U);
    api.setRunning(true);
    EXPECT_FALSE(api.FSUIPC_Open(7, &result));
    EXPECT_EQ(result, 8U);
    EXPECT_EQ(open(), fsuipc::kOk);
}

TEST_F(FsuipcMemoryTest, RecordsAndCommandWordsChangeTheWeather)
{
    using Row = std::tuple<std::uint16_t, int, bool>;
    for (const auto& [word, clouds, isTaken] :
         {Row{2, 16, true}, Row{258, 0, true}, Row{3, 0, false}, Row{0, 0, false},
          Row{2, 17, false}, Row{2, -1, false}})
    {
        const std::size_t before = records();
        const auto counter = read<std::uint32_t>(0xC824);
        EXPECT_EQ(sendRecord(word, clouds), fsuipc::kOk);
        EXPECT_EQ(records(), before + (isTaken ? 1 : 0)) << word;
        EXPECT_EQ(read<std::uint32_t>(0xC824), counter) << "shows one read later";
        EXPECT_EQ(read<std::uint32_t>(0xC824) != counter, isTaken) << word;
    }
    EXPECT_EQ(std::string(read<std::array<char, 2000>>(0xB800).data()).substr(0, 5), "KMSP ");
    write(0xC800, std::uint16_t{256});
    write(0xC800, std::uint16_t{3});
    write(0xC800, std::uint16_t{4});
    EXPECT_EQ(process(), fsuipc::kOk);
    EXPECT_EQ(model.state().refreshes, 1);
    EXPECT_EQ(model.state().clears, 1);
    EXPECT_EQ(records(), 0U);
}

TEST_F(FsuipcMemoryTest, FaultsMeetTheProcessThatContainsTheirMessage)
{
    /// The result of the process, whether it acts, the next one's result and the waiting.
    using Row = std::tuple<const char*, std::uint32_t, bool, std::uint32_t, int>;
    for (const auto& [fault, result, acts, following, slept] :
         {Row{"refuse@5/20*1", 13, false, 0, 0}, Row{"silent@5/20*1", 11, false, 0, 0},
          Row{"slow:700@5/20*1", 0, true, 0, 700}, Row{"garbage@5/20*1", 0, true, 0, 0},
          Row{"wrongid@5/20*1", 13, true, 0, 0}, Row{"cut:4@5/20*1", 11, true, 0, 0},
          Row{"cut:4,300@5/20*1", 0, true, 0, 300}, Row{"drop@5/20*1", 12, false, 12, 0},
          Row{"close@5/20*1", 12, true, 12, 0}, Row{"refuse@5/8*1", 0, true, 0, 0}})
    {
        const std::int64_t before = clock.sleptMs();
        const int texts = model.state().screenTexts.size();
        ASSERT_TRUE(faults.set(QLatin1String(fault)));
        write(0x3124, '\0'); // meets no fault
        EXPECT_EQ(process(), fsuipc::kOk);
        EXPECT_EQ(sendText("a"), result) << fault;
        EXPECT_EQ(model.state().screenTexts.size(), texts + (acts ? 1 : 0)) << fault;
        EXPECT_EQ(sendText("b"), following) << fault;
        EXPECT_EQ(clock.sleptMs() - before, slept) << fault;
        faults.set(QStringLiteral("none"));
        EXPECT_EQ(open(), fsuipc::kOk);
    }
}

TEST_F(FsuipcMemoryTest, ALostRecordLeavesTheCounterAndNoiseReplacesWhatIsRead)
{
    const auto counter = read<std::uint32_t>(0xC824);
    faults.set(QStringLiteral("silent@5/7*1"));
    EXPECT_EQ(sendRecord(2), fsuipc::kOk);
    EXPECT_EQ(records(), 0U);
    read<std::uint32_t>(0xC824);
    EXPECT_EQ(read<std::uint32_t>(0xC824), counter);
    EXPECT_EQ(sendRecord(2), fsuipc::kOk);
    EXPECT_EQ(records(), 1U);

    const auto latitude = read<std::int64_t>(0x0560);
    faults.set(QStringLiteral("garbage@6/2"));
    const auto noise = read<std::int64_t>(0x0560);
    EXPECT_NE(noise, latitude);
    EXPECT_EQ(read<std::int64_t>(0x0560), noise);
}

TEST_F(FsuipcMemoryTest, OpeningMeetsItsFaults)
{
    for (const auto& [fault, result] :
         {std::pair{"refuse@1/1", 14U}, std::pair{"silent@1/1", 11U}, std::pair{"wrongapi:1", 7U},
          std::pair{"wrongid@1/1", 8U}, std::pair{"slow:5", 0U}})
    {
        faults.set(QLatin1String(fault));
        EXPECT_EQ(open(), result) << fault;
    }
}

} // namespace

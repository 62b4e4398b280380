#include "standins/simulator/FsuipcMemory.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <tuple>

namespace {

using simulator::FsuipcImage;
using simulator::FsuipcMemory;
using simulator::FsuipcOptions;
using simulator::SimulatorModel;

/// In the air over the southern and western hemispheres, so that every sign shows.
aviation::structs::AircraftData southWest()
{
    aviation::structs::AircraftData aircraft;
    aircraft.position = aviation::Position(-45.0, -90.0);
    aircraft.altitude = 31000;
    aircraft.heightAgl = 1000;
    aircraft.groundSpeed = 450;
    aircraft.tas = 430;
    aircraft.heading = 100.0;
    aircraft.magneticVariation = -10.0F;
    aircraft.verticalSpeed = -1500;
    aircraft.wind = {270.0F, 55.0F, -1.0F, 0.0F};
    aircraft.temperature = -47.5F;
    aircraft.visibility = 16.0F;
    aircraft.parkingBrake = true;
    aircraft.landingLight = true;
    aircraft.doorOpen = true;
    aircraft.name = std::wstring(300, L'n');
    aircraft.registration = L"C-IRRI";
    aircraft.emptyWeight = 91300.0F;
    aircraft.maxGrossWeight = 174200.0F;
    aircraft.totalWeight = 150000.0F;
    aircraft.fuelFlow = 5200.0F;
    aircraft.simTime = 1561939139; // 2019-06-30 23:58:59
    return aircraft;
}

TEST(FsuipcImageTest, TheFlightStandsInPublishedUnits)
{
    FsuipcImage image;
    simulator::showAircraft(southWest(), image);
    // 5000875 m of the meridian times 2^32; a quarter of the circle is 2^62.
    EXPECT_EQ(image.get<std::int64_t>(0x0560), -21478594576384000);
    EXPECT_EQ(image.get<std::int64_t>(0x0568), -0x4000000000000000);
    // 9448.7997 m, whole metres in the high word; 231.5 m/s; -7.62 m/s; 9.94 statute miles.
    EXPECT_EQ(image.get<std::int32_t>(0x0574), 9448);
    EXPECT_NEAR(image.get<std::uint32_t>(0x0570) / 4294967296.0, 0.7997, 0.0001);
    using Row = std::tuple<std::uint32_t, int, std::int64_t>; // offset, bytes and value
    for (const auto& [offset, size, expected] :
         {Row{0x02B4, 4, 15171584}, Row{0x02B8, 4, 55040},      Row{0x02C8, 4, -1951},
          Row{0x31E4, 4, 19975373}, Row{0x0580, 4, 0x40000000}, Row{0x02A0, 2, -1820},
          Row{0x0366, 2, 0},        Row{0x0BC8, 2, 32767},      Row{0x0894, 2, 1},
          Row{0x028C, 2, 1},        Row{0x3367, 1, 1},          Row{0x0E8A, 2, 994},
          Row{0x1330, 4, 23372800}, Row{0x1334, 4, 44595200},   Row{0x023A, 1, 59},
          Row{0x023B, 1, 23},       Row{0x023C, 1, 58},         Row{0x023D, 1, 30},
          Row{0x0242, 1, 6},        Row{0x0240, 2, 2019}})
    {
        const std::int64_t value = size == 4   ? image.get<std::int32_t>(offset)
                                   : size == 2 ? image.get<std::int16_t>(offset)
                                               : image.get<std::int8_t>(offset);
        EXPECT_EQ(value, expected) << std::hex << offset;
    }
    for (const auto& [at, value] :
         {std::pair{0x6040U, 1.7453293}, std::pair{0x2DE0U, 270.0}, std::pair{0x2DE8U, 55.0},
          std::pair{0x34A8U, -47.5}, std::pair{0x2DF0U, 16000.0}, std::pair{0x30C0U, 150000.0}})
    {
        EXPECT_NEAR(image.get<double>(at), value, 1e-6) << std::hex << at;
    }
    EXPECT_EQ(image.get<float>(0x1270), 5200.0F);
    EXPECT_EQ(image.text(0x3D00, 256), QByteArray(255, 'n'));
    EXPECT_EQ(image.text(0x313C, 12), "C-IRRI");
}

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

TEST_F(FsuipcMemoryTest, WindNeedsBothHalvesAndReadsSeeEarlierWrites)
{
    write(0x2DE0, 240.0);
    process();
    EXPECT_FALSE(model.state().wind);
    write(0x2DE0, 240.0);
    write(0x2DE8, 33.0);
    EXPECT_EQ(read<double>(0x2DE8), 33.0);
    ASSERT_TRUE(model.state().wind);
    EXPECT_EQ(model.state().wind->Dir, 240.0F);
    EXPECT_EQ(model.state().wind->Speed, 33.0F);
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

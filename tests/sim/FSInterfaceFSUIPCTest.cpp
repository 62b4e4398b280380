#include "sim/FSInterfaceFSUIPC.h"

#include "app/base/StopFlag.h"
#include "tests/sim/ScriptedFsuipc.h"
#include "tests/support/FakeClock.h"

#include <QByteArrayList>

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <limits>
#include <string>
#include <tuple>
#include <utility>

using aviation::structs::AircraftData;

namespace {

class FSInterfaceFSUIPCTest : public ::testing::Test
{
protected:
    FSInterfaceFSUIPCTest()
    {
        QObject::connect(&object, &FsInterfaceBase::sigDebugString, &object,
                         [this](const QString& text, int level) {
                             const QByteArray line = text.toUtf8();
                             EXPECT_TRUE(line.startsWith("(Interface FSUIPC) - "));
                             m_log.append(QByteArray::number(level) + line.mid(20));
                         });
    }
    void connectObject()
    {
        ASSERT_EQ(object.Connect(), 0);
        script.processes = 0;
        script.writes.clear();
        logged();
    }
    /// Puts "offset=bytes ..." into the memory, in hexadecimal as written() gives it.
    void show(const QByteArray& rows)
    {
        for (const QByteArray& row : rows.split(' ')) {
            const int sign = row.indexOf('=');
            script.put(row.left(sign).toUInt(nullptr, 16), QByteArray::fromHex(row.mid(sign + 1)));
        }
    }
    AircraftData read()
    {
        AircraftData data;
        EXPECT_EQ(object.GetAircraftData(data), 0);
        return data;
    }
    /// The writes since the last call as "offset=bytes", in hexadecimal.
    std::string written()
    {
        QByteArrayList texts;
        for (const FsuipcScript::Write& write : std::exchange(script.writes, {})) {
            texts.append(QByteArray::number(write.offset, 16) + '=' + write.bytes.toHex());
        }
        return texts.join(' ').toStdString();
    }
    /// The log since the last call, without the name of the interface.
    std::string logged() { return std::exchange(m_log, {}).join('|').toStdString(); }

    FakeClock clock{2024, 6, 1, 12};
    StopFlag stop;
    ScriptedBothClients clients;
    FsuipcScript& script = clients.fsuipcScript;
    FSInterfaceFSUIPC object{clients, QStringLiteral("C:/Süd"), stop};

private:
    QByteArrayList m_log;
};

} // namespace

TEST_F(FSInterfaceFSUIPCTest, LearnsTheSimulatorAtConnect)
{
    const std::tuple<std::uint32_t, int, aviation::FsId, const char*> rows[] = {
        {1, 0, 1, "FS98"},     {5, 0, 1, "Fly!"},       {6, 4, 1, "FS2002"},
        {7, 0, 2, "FS2004"},   {8, 0, 3, "FSX"},        {9, 0, 3, "ESP"},
        {9, 3, 3, "FSX"},      {10, 0, 4, "P3Dv2"},     {11, 0, 3, "P3Dv3"},
        {12, 43, 6, "P3D v4"}, {12, 5, 6, "P3D v"},     {12, 109, 6, "P3D v10"},
        {13, 0, 12, "P3Dv5"},  {13, 110, 12, "FS2020"}, {13, 111, 12, "P3Dv5"},
        {14, 0, 0, "unknown"}, {0, 0, 0, "unknown"},    {0xFFFFFFFF, 3, 0, "FSX"},
    };
    for (const auto& [code, model, expected, text] : rows) {
        FSInterfaceFSUIPC fresh(clients, QString(), stop);
        script.code = 8;
        script.put(0x3124, std::uint8_t{0});
        fresh.Connect(); // to another simulator
        fresh.Disconnect();
        script.code = code;
        script.put(0x3124, static_cast<std::uint8_t>(model));
        aviation::FsId id = -1;
        QString name;
        EXPECT_EQ(fresh.GetFsVersion(id, name), 1);
        EXPECT_EQ(fresh.Connect(), 0);
        EXPECT_EQ(fresh.GetFsVersion(id, name), 0);
        EXPECT_EQ(id, expected) << code;
        EXPECT_EQ(fresh.fsVersion(), expected);
        EXPECT_EQ(name, QLatin1String(text)) << code;
    }
    script.code = 7;
    script.put(0x3124, std::uint8_t{0});
    EXPECT_EQ(object.Connect(), 0);
    EXPECT_EQ(clients.folder, "C:/Süd");
    EXPECT_EQ(object.Connect(), 0) << "an open link is no fault";
    EXPECT_EQ(logged(), "1 FS2004, FSUIPC-Ver: 3.99b");
}

TEST_F(FSInterfaceFSUIPCTest, FailedConnectsSayWhy)
{
    for (const auto& [code, problem] :
         {std::pair{2U, "not connected"},
          {7U, "Incorrect version of FSUIPC, or not FSUIPC"},
          {15U, "Read or Write request cannot be added, memory for Process is full"},
          {16U, "Wert nicht im Bereich"},
          {99U, "Wert nicht im Bereich"}})
    {
        script.openCode = code;
        EXPECT_EQ(object.Connect(), 1);
        EXPECT_FALSE(object.connected());
        EXPECT_EQ(logged(), "3 Connect FAILED, " + std::to_string(code) + " : " + problem);
    }
    clients.hasFsuipc = false;
    FSInterfaceFSUIPC without(clients, QString(), stop);
    QStringList lines;
    QObject::connect(&without, &FsInterfaceBase::sigDebugString, &without,
                     [&lines](const QString& text, int) { lines.append(text.mid(21)); });
    EXPECT_EQ(without.Connect(), 1);
    EXPECT_EQ(without.Connect(), 1) << "says once that there is no library";
    EXPECT_EQ(without.ClearWeather(), 1);
    EXPECT_EQ(lines.join(QLatin1Char('|')).toStdString(),
              "no &lt;FSUIPC&gt; here|Request FAILED, 9 : Call cannot execute, link not Open");
    EXPECT_EQ(without.Disconnect(), 0);
}

TEST_F(FSInterfaceFSUIPCTest, ConvertsEachAircraftOffset)
{
    connectObject();
    show("0560=00000000ab4e4c00 0568=00000000000000e0 02c8=00f6ffff 030c=80feffff "
         "31e4=00806400 0570=00000080e8030000 02b4=00006400 02b8=407d0000 0580=000000c0 "
         "6040=182d4454fb21f93f 2de0=0000000000e07040 2de8=0000000000003440 "
         "34a8=00000000000029c0 0366=0100 02a0=00ff 2df0=000000000088c340 0bc8=ff7f 0894=0100 "
         "028c=0001 3367=04 1270=0000fa44 1330=80004000 1334=00010000 30c0=00000000006af840 "
         "0e8a=6400");
    const AircraftData data = read();
    EXPECT_EQ(data.position, aviation::Position(45.0, -45.0));
    const std::vector<std::int32_t> whole{data.altitude,    data.heightAgl,     data.tas,
                                          data.groundSpeed, data.verticalSpeed, data.landingRate};
    EXPECT_EQ(whole, (std::vector{3282, 329, 250, 194, -1968, -295}));
    const std::vector<float> single{data.temperature, data.magneticVariation, data.fuelFlow,
                                    data.emptyWeight, data.maxGrossWeight,    data.totalWeight};
    EXPECT_EQ(single, (std::vector{-12.5F, -1.40625F, 2000.0F, 16384.5F, 1.0F, 100000.0F}));
    EXPECT_DOUBLE_EQ(data.heading, 270.0);
    EXPECT_NEAR(data.headingMagnetic, 90.0, 1e-5);
    EXPECT_EQ(windText(data.wind), "Dir=270.00:Speed=20.00:Gust=-1.00");
    EXPECT_TRUE(data.onGround && data.parkingBrake && data.landingLight && data.doorOpen);
    EXPECT_FALSE(data.engineOff);
    for (const auto& [code, visibility] : {std::pair{8U, 10.0F}, {12U, 1.609344F}, {7U, 1.609344F}})
    {
        script.code = code;
        object.Connect();
        EXPECT_FLOAT_EQ(read().visibility, visibility) << code;
    }
}

TEST_F(FSInterfaceFSUIPCTest, OddNumbersStayWithinTheirFields)
{
    connectObject();
    show("0560=00000080aad8d9ff 0570=ffffffffffffff7f 0580=ffffffff 2de8=000000000000f07f "
         "34a8=000000000000f87f 0366=0200");
    const AircraftData data = read();
    EXPECT_DOUBLE_EQ(data.position.latitude(), -22.5);
    EXPECT_EQ(data.altitude, std::numeric_limits<std::int32_t>::max());
    EXPECT_NEAR(data.heading, 360.0, 1e-6);
    EXPECT_FLOAT_EQ(data.wind.Speed, std::numeric_limits<float>::max());
    EXPECT_FLOAT_EQ(data.temperature, 0.0F);
    EXPECT_FALSE(data.onGround) << "1 alone stands for it";
    EXPECT_TRUE(data.engineOff);
    show("0560=00000000579d9800"); // a metre beyond the pole
    EXPECT_FALSE(read().position.isKnown());
}

TEST_F(FSInterfaceFSUIPCTest, ReadsTextsAndTime)
{
    connectObject();
    script.put(0x3D00, QByteArray(256, 'x'));
    script.put(0x313C, QByteArray("D-ABCD\0junk", 11));
    show("3148=53fc64 3160=53c3bc64 023a=3b1702 023d=1d 0240=e807 0242=02");
    AircraftData data = read();
    EXPECT_EQ(data.name, std::wstring(256, L'x'));
    EXPECT_EQ(data.registration + L'|' + data.airline + L'|' + data.type + L'|' + data.code,
              L"D-ABCD|S\u00FCd|S\u00FCd|unknown");
    EXPECT_EQ(data.simTime, 1709247779);
    script.put(0x023D, std::uint8_t{30});
    EXPECT_EQ(object.GetAircraftData(data), 0);
    EXPECT_EQ(data.simTime, 1709247779) << "the 30th of February is no day";
}

TEST_F(FSInterfaceFSUIPCTest, PauseAndFailuresLeaveTheAircraftAlone)
{
    connectObject();
    script.put(0x0366, std::uint16_t{1});
    AircraftData data;
    for (const std::uint32_t pause : {0x3365U, 0x0264U}) {
        script.put(pause, std::uint8_t{1});
        script.processes = 0;
        EXPECT_EQ(object.GetAircraftData(data), 19) << pause;
        EXPECT_EQ(script.processes, 1);
        script.put(pause, std::uint8_t{0});
    }
    script.failures = {{2, 13}, {4, 13}, {6, 11}};
    for (const int expected : {1, 1, 1}) {
        EXPECT_EQ(object.GetAircraftData(data), expected);
        EXPECT_FALSE(data.onGround);
    }
    script.failures = {{8, 1}};
    EXPECT_EQ(object.GetAircraftData(data), 0) << "code 1 passes";
    EXPECT_EQ(logged(), "3 Request FAILED, 13 : IPC request contains bad data|3 Request FAILED, 11 "
                        ": IPC timed out all retries");
}

TEST_F(FSInterfaceFSUIPCTest, AClosedLinkAndFiveFailedPollsEndIt)
{
    AircraftData data;
    for (const std::uint32_t code : {2U, 9U, 12U, 14U}) {
        connectObject();
        script.failures = {{1, code}, {2, code}};
        EXPECT_EQ(object.GetAircraftData(data), simresult::kTimeout) << code;
        EXPECT_EQ(object.ClearWeather(), simresult::kTimeout) << code;
    }
    connectObject();
    for (const int failures : {4, 5}) {
        script.failures.clear();
        EXPECT_EQ(object.GetAircraftData(data), 0);
        for (int failure = 1; failure <= failures; ++failure) {
            script.failures = {{script.processes + 1, 11}};
            EXPECT_EQ(object.GetAircraftData(data), failure < 5 ? 1 : simresult::kTimeout);
        }
    }
    object.Disconnect();
    EXPECT_EQ(object.GetAircraftData(data), simresult::kNotConnected);
}

TEST_F(FSInterfaceFSUIPCTest, WritesOnlyAWindThatIsOne)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::tuple<float, float, bool> rows[] = {
        {-1, 10, false},     {270, -1, false}, {270, 200, true},  {270, 200.5F, false},
        {270, -0.5F, false}, {nan, 10, false}, {270, nan, false}, {0, 0, true}};
    connectObject();
    for (const auto& [direction, speed, isWritten] : rows) {
        EXPECT_EQ(object.SetWindAtAircraft({direction, speed, -1.0F, 0.0F}), 0);
        EXPECT_EQ(!written().empty(), isWritten) << direction << ' ' << speed;
    }
    EXPECT_EQ(script.processes, 2) << "both values go together";
    object.SetWindAtAircraft({270.0F, 20.0F, -1.0F, 0.0F});
    EXPECT_EQ(written(), "2de0=0000000000e07040 2de8=0000000000003440");
}

TEST_F(FSInterfaceFSUIPCTest, WaitsUntilTheWeatherWasCounted)
{
    // Processes: the first read, the write, then reads. The count changes before the given one of
    // them, 0 never; then the result, how many there were and how long they waited.
    const std::tuple<int, int, int, int> rows[] = {
        {3, 0, 3, 0}, {5, 0, 5, 100}, {13, 0, 13, 500}, {14, 11, 13, 500}, {0, 11, 13, 500}};
    NewWeather record;
    record.setIcao(L"EDDF");
    std::uint32_t count = 7;
    for (const auto& [change, result, processes, slept] : rows) {
        FSInterfaceFSUIPC fresh(clients, QString(), stop);
        ASSERT_EQ(fresh.Connect(), 0);
        script.processes = 0;
        script.beforeProcess = [&, at = change] {
            count += script.processes == at ? 1U : 0U;
            script.put(0xC824, count);
        };
        const std::int64_t before = clock.sleptMs();
        EXPECT_EQ(fresh.SetWeatherRecord(record), result) << change;
        EXPECT_EQ(script.processes, processes);
        EXPECT_EQ(clock.sleptMs() - before, slept);
        EXPECT_EQ(script.writes.back().offset, 0xC800U);
        EXPECT_EQ(script.writes.back().bytes.size(), 1024);
        EXPECT_EQ(script.writes.back().bytes.mid(8, 4), "EDDF");
        // Compared is the count of the last wait, not what stands there before the next write.
        script.beforeProcess = [&] {
            script.put(0xC824, count + 1);
        };
        EXPECT_EQ(fresh.SetWeatherRecord(record), 0);
        EXPECT_EQ(fresh.SetWeatherRecord(record), 11);
    }
    stop.raise();
    const std::int64_t before = clock.sleptMs();
    connectObject();
    EXPECT_EQ(object.SetWeatherRecord(record), 11);
    EXPECT_EQ(clock.sleptMs(), before);
}

TEST_F(FSInterfaceFSUIPCTest, ReadsAndWritesFuel)
{
    connectObject();
    script.put(0x0AF4, std::uint16_t{0x06B3}); // 6.699 pounds
    int next = 0;
    for (const std::uint32_t level :
         {2956U, 2948U, 2940U, 2932U, 4676U, 4684U, 2964U, 2972U, 2980U, 4692U, 4700U})
    {
        script.put(level, std::int32_t{8388608 / (next + 1)});
        script.put(level + 4, std::int32_t{next++ * 10});
    }
    script.put(4704, std::int32_t{-5});
    aviation::structs::AircraftFuel fuel;
    EXPECT_EQ(object.GetAircraftFuel(fuel), 0);
    ASSERT_EQ(fuel.tanks.size(), 9U) << "without the empty first and the odd last";
    EXPECT_DOUBLE_EQ(fuel.fuelWeight, 0x06B3 / 256.0);
    for (std::size_t i = 0; i < fuel.tanks.size(); ++i) {
        EXPECT_EQ(fuel.tanks[i].id, static_cast<int>(i) + 2);
        EXPECT_EQ(fuel.tanks[i].name, aviation::structs::fuelTankName(static_cast<int>(i) + 2));
        EXPECT_NEAR(fuel.tanks[i].level, 100.0 / static_cast<double>(i + 2), 1e-4);
        EXPECT_DOUBLE_EQ(fuel.tanks[i].capacity, static_cast<double>((i + 1) * 10));
    }
    script.failures = {{script.processes + 11, 13}};
    aviation::structs::AircraftFuel untouched;
    EXPECT_EQ(object.GetAircraftFuel(untouched), 1);
    EXPECT_TRUE(untouched.tanks.empty());

    fuel.tanks = {{L"", 12, 50, 1}, {L"", 4, 50, 1}, {L"", 1, 0.0001, 1}, {L"", 11, 1e300, 1}};
    EXPECT_EQ(object.SetAircraftFuel(fuel), 0);
    EXPECT_EQ(written(), "b74=00004000 b8c=08000000 125c=ffffff7f");
    script.failures = {{script.processes + 2, 13}};
    EXPECT_EQ(object.SetAircraftFuel(fuel), 1);
    EXPECT_EQ(script.writes.size(), 1U) << "the first failure ends it";
}

TEST_F(FSInterfaceFSUIPCTest, ReadsAndWritesPayload)
{
    connectObject();
    script.put(5120, 170.5);
    script.put(5152, QByteArray("Pilot with a hat", 16));
    script.put(5168, std::numeric_limits<double>::quiet_NaN());
    for (const auto& [count, expected] :
         {std::pair{2, 2U}, {0, 0U}, {-3, 0U}, {61, 61U}, {62, 61U}, {0x7FFFFFFF, 61U}})
    {
        script.put(0x13FC, std::int32_t{count});
        aviation::structs::AircraftPayload payload;
        EXPECT_EQ(object.GetAircraftPayload(payload), 0) << count;
        ASSERT_EQ(payload.stations.size(), expected);
        if (expected > 0) {
            EXPECT_EQ(payload.stations[0].name, L"Pilot with a hat");
            EXPECT_FLOAT_EQ(payload.stations[0].maxWeight, 170.5F);
            EXPECT_FLOAT_EQ(payload.stations[0].weight, 0.0F);
            EXPECT_FLOAT_EQ(payload.stations[1].maxWeight, 0.0F);
        }
    }
    aviation::structs::AircraftPayload payload;
    payload.stations.resize(70);
    payload.stations[1].weight = 20.0F;
    payload.stations[60].weight = 1.0F;
    payload.stations[61].weight = 1.0F;
    EXPECT_EQ(object.SetAircraftPayload(payload), 0);
    EXPECT_EQ(written(), "1430=0000000000003440 1f40=000000000000f03f");
}

TEST_F(FSInterfaceFSUIPCTest, RadiosTravelAsBcd)
{
    connectObject();
    aviation::structs::RadioFrequencys radios{11800, 11905, 12000, 13697, 10800, 10990,
                                              11000, 11795, 7777,  384,   384};
    EXPECT_EQ(object.SetRadioFrequencys(radios), 0);
    EXPECT_EQ(script.processes, 1);
    EXPECT_EQ(written(), "34e=0018 3118=0020 311a=0519 311c=9736 350=0008 352=0010 311e=9009 "
                         "3120=9517 354=7777 34c=8403");
    aviation::structs::RadioFrequencys read;
    EXPECT_EQ(object.GetRadioFrequencys(read), 0);
    EXPECT_EQ(std::memcmp(&read, &radios, sizeof(read)), 0);
    script.put(0x034E, std::uint16_t{0x1FA0});
    script.put(0x0354, std::uint16_t{0xFFFF});
    EXPECT_EQ(object.GetRadioFrequencys(read), 0);
    EXPECT_EQ(read.comm1active, 10001);
    EXPECT_EQ(read.transponder, 0);
    radios.comm1active = 9;
    EXPECT_EQ(object.SetRadioFrequencys(radios), 0);
    EXPECT_EQ(script.writes.front().bytes, QByteArray(2, '\0'));
}

TEST_F(FSInterfaceFSUIPCTest, TextsAndCommands)
{
    connectObject();
    const std::string x126(126, 'x');
    for (const auto& [text, shown] : {std::pair<std::string, std::string>{"Hello", "Hello"},
                                      {x126 + "xxxx", x126 + "x"},
                                      {x126 + "ü", x126}})
    {
        EXPECT_EQ(object.SendText(text, 9), 0);
        const QByteArray bytes = QByteArray::fromStdString(shown).leftJustified(128, '\0');
        EXPECT_EQ(written(), "3380=" + bytes.toHex().toStdString() + " 32fa=0500");
    }
    EXPECT_EQ(script.processes, 3) << "text and duration go together";
    EXPECT_EQ(object.ClearWeather(), 0);
    EXPECT_EQ(object.writeWeatherCommand(256), 0);
    EXPECT_EQ(written(), "c800=0300 c800=0001");
    QString observation;
    script.put(0xB800, QByteArray(2000, 'm'));
    EXPECT_EQ(object.GetWeatherAt(observation, 50.0, 8.0), 0);
    EXPECT_EQ(observation.size(), 2000);
    script.put(0xB800, QByteArray("EDDF 1\0", 7));
    EXPECT_EQ(object.GetWeatherAt(observation, 50.0, 8.0), 0);
    EXPECT_EQ(observation, QStringLiteral("EDDF 1"));
    EXPECT_EQ(object.SetVisibility(9000), 200);
    EXPECT_EQ(object.Disconnect(), 0);
    EXPECT_EQ(script.closes, 1);
    EXPECT_EQ(object.GetWeatherAt(observation, 50.0, 8.0), 1);
}

TEST(FsuipcClientTest, AFullBufferIsStillProcessed)
{
    FsuipcScript script;
    script.put(0x100, std::uint8_t{42});
    FsuipcClient client;
    client.setApi(std::make_unique<ScriptedFsuipc>(script));
    EXPECT_EQ(client.process(), fsuipc::kNotOpen);
    ASSERT_EQ(client.open(), fsuipc::kOk);
    EXPECT_EQ(client.process(), 10U) << "nothing is queued";
    std::array<std::uint8_t, 32512> whole{};
    client.read(0, whole);
    EXPECT_EQ(client.process(), 0U);
    std::uint8_t one = 0;
    whole = {};
    client.read(0, whole);
    client.read(0x100, one);
    EXPECT_EQ(client.process(), fsuipc::kBufferFull);
    EXPECT_EQ(whole[0x100], 42) << "what was queued is carried out";
    EXPECT_EQ(one, 0);
    client.read(0x100, one);
    EXPECT_EQ(client.process(), 0U) << "the buffer is empty again";
    EXPECT_EQ(one, 42);
}

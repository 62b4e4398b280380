#include "aviation/Units.h"
#include "tests/sim/FsInterfaceSimConnectFixture.h"

#include <QDateTime>

#include <cmath>
#include <functional>
#include <tuple>

using namespace answers;
using simconnect::kFailed;

namespace {

constexpr auto kWrongArgument = static_cast<simconnect::Result>(0x80070057U);
constexpr auto kPipeBroken = static_cast<simconnect::Result>(0xC000014BU);
constexpr auto kPipeClosed = static_cast<simconnect::Result>(0xC00000B0U);

} // namespace

TEST_F(FsInterfaceSimConnectTest, FailuresOfConnect)
{
    const std::tuple<const char*, simconnect::Result, const char*, int> rows[] = {
        {"no library", kFailed, "no &lt;SimConnect&gt; here", 0},
        {"Open", kFailed, "Connect HRESULT FAILED", 0},
        {"Open", kWrongArgument, "Connect HRESULT FAILED", 0},
        {"Define 7 TRANSPONDER", kFailed, "Init HRESULT FAILED", 1},
        {"Subscribe 1", kFailed, "Init HRESULT FAILED", 1},
        {"Subscribe 1", kPipeBroken, "Init HRESULT FAILED", 1},
    };
    clients.hasSimConnect = false;
    for (const auto& [failing, result, line, closes] : rows) {
        log.clear();
        script.calls.clear();
        script.results = {{failing, result}};
        EXPECT_EQ(sim.Connect(), simresult::kNotConnected) << failing;
        EXPECT_TRUE(said((std::string("3 (Interface SimConnect) - ") + line).c_str())) << failing;
        EXPECT_EQ(script.count("Close"), closes) << failing;
        EXPECT_EQ(sim.SetWeatherText(QStringLiteral("x")), simresult::kNotConnected);
        clients.hasSimConnect = true;
    }
    EXPECT_EQ(clients.folder, "folder");
    stop.raise();
    script.results.clear();
    EXPECT_EQ(sim.Connect(), simresult::kNotConnected);
}

TEST_F(FsInterfaceSimConnectTest, ConnectDefinesAndTakesTheOpenMessage)
{
    script.messages = {exceptionMessage(24), exceptionMessage(99), openMessage("A <b>\xE4")};
    EXPECT_EQ(sim.Connect(), 0);
    EXPECT_EQ(clock.sleptMs(), 1000);
    EXPECT_TRUE(said("3 (Interface SimConnect) - ***** SIMCONNECT_EXCEPTION_OPERATION_INVALID_FOR_"
                     "OJBECT_TYPE EXCEPTION=24  SendID=9  Index=-1  cbData=24"));
    EXPECT_EQ(log.filter(QStringLiteral("***** unknow EXCEPTION=99  SendID=9")).size(), 1);
    EXPECT_EQ(log.last(),
              QStringLiteral("1 (Interface SimConnect) - Open: AppName=\"A &lt;b&gt;\u00E4\"  "
                             "AppVersion=10.0.0.0  SimConnectVersion=0.0.0.7"));
    ASSERT_EQ(script.calls.size(), 188U);
    EXPECT_EQ(script.calls.front(), "Open FSInterface");
    EXPECT_EQ(script.calls[46], "Define 1 FUEL TANK LEFT MAIN CAPACITY|Gallons|4");
    EXPECT_EQ(script.calls.back(), "Subscribe 1 SimStop");
    EXPECT_EQ(sim.Connect(), simresult::kAlreadyConnected);
    EXPECT_EQ(sim.Disconnect(), 0);
    EXPECT_EQ(script.calls.back(), "Close");
}

TEST_F(FsInterfaceSimConnectTest, KnowsTheSimulatorsByTheirVersion)
{
    for (const auto& [version, expected] : std::map<std::uint32_t, int>{
             {1, 0}, {2, 4}, {3, 5}, {4, 6}, {5, 10}, {6, 10}, {10, 3}, {11, 12}, {12, 0}})
    {
        sim.Disconnect();
        script.messages = {openMessage("The Sim", version)};
        ASSERT_EQ(sim.Connect(), 0);
        aviation::FsId id = 77;
        QString name;
        EXPECT_EQ(sim.GetFsVersion(id, name), 0);
        EXPECT_EQ(id, expected) << version;
        EXPECT_EQ(name, QStringLiteral("The Sim"));
    }
}

TEST_F(FsInterfaceSimConnectTest, ReadsAnAircraft)
{
    connectSimulator();
    Numbers numbers{{"AMBIENT VISIBILITY", 9999}, {"GENERAL ENG COMBUSTION:1", 0},
                    {"ZULU TIME", 3600},          {"ZULU DAY OF MONTH", 10},
                    {"ZULU MONTH OF YEAR", 1},    {"ZULU YEAR", 2025}};
    Texts texts{{"TITLE", std::string(256, 'T')}, {"ATC ID", "D-\xC3\x84"}, {"ATC MODEL", "B\xE4"}};
    double next = 0.75; // every other variable has a number of its own, in the order of the data
    for (const SimConnectDatum& datum : simConnectAircraftDefinition().data) {
        numbers.emplace(datum.name, next++);
        texts.emplace(datum.name, datum.name);
    }
    answerTo("Request 0 0 1", {aircraftAnswer(numbers, texts)});
    aviation::structs::AircraftData data;
    ASSERT_EQ(sim.GetAircraftData(data), 0);
    EXPECT_TRUE(said("0 Request Aircraft, SentId: 42"));
    EXPECT_EQ(data.position, aviation::Position(1.75, 2.75));
    const std::vector<std::int32_t> whole{data.altitude,    data.heightAgl,     data.tas,
                                          data.groundSpeed, data.verticalSpeed, data.landingRate};
    EXPECT_EQ(whole, (std::vector<std::int32_t>{0, 3, 4, 5, 405, 0}));
    const std::vector<float> single{data.wind.Dir,    data.wind.Speed,        data.wind.Gust,
                                    data.temperature, data.magneticVariation, data.visibility,
                                    data.fuelFlow,    data.emptyWeight,       data.maxGrossWeight,
                                    data.totalWeight};
    EXPECT_EQ(single, (std::vector<float>{7.75F, 8.75F, -1.0F, 9.75F, 10.75F, 9.0F, 30.0F, 31.75F,
                                          32.75F, 33.75F}));
    EXPECT_DOUBLE_EQ(data.heading, 12.75 * 180.0 / aviation::kPi);
    EXPECT_TRUE(data.engineOff && data.parkingBrake && data.doorOpen && data.onGround
                && data.landingLight);
    EXPECT_EQ(data.name, std::wstring(256, L'T'));
    EXPECT_EQ(data.registration + data.code + data.type + data.airline,
              L"D-\u00C4B\u00E4ATC TYPEATC AIRLINE");
    const QDateTime now(QDate(2026, 7, 15), QTime(10, 20, 33), Qt::UTC);
    const qint64 midnight = QDateTime(QDate(2025, 1, 10), QTime(0, 0, 33)).toSecsSinceEpoch();
    const qint64 summer = now.toLocalTime().isDaylightTime() ? 3600 : 0;
    EXPECT_EQ(data.simTime, midnight - summer + 3600);
}

TEST_F(FsInterfaceSimConnectTest, OddNumbersStayWithinTheirFields)
{
    connectSimulator();
    answerTo("Request", {aircraftAnswer({{"PLANE ALTITUDE", 1e308},
                                         {"VERTICAL SPEED", -1e308},
                                         {"PLANE LATITUDE", 1e308},
                                         {"PLANE HEADING DEGREES TRUE", std::nan("")},
                                         {"ZULU YEAR", -2147483648.0},
                                         {"ZULU TIME", -9e18}})});
    aviation::structs::AircraftData data;
    ASSERT_EQ(sim.GetAircraftData(data), 0);
    EXPECT_EQ(data.altitude, 2147483647);
    EXPECT_FALSE(data.position.isKnown());
    EXPECT_TRUE(std::isfinite(data.heading));
}

TEST_F(FsInterfaceSimConnectTest, LandingRateAppearsOnce)
{
    connectSimulator();
    const std::tuple<double, double, int> rows[] = {{-1.5, 1, 0},    {-4.0, 0, 0}, {-2.5, 0, 0},
                                                    {-0.1, 1, -150}, {-3.0, 1, 0}, {0.0, 0, 0},
                                                    {-9.0, 1, 0},    {5.0, 0, 0},  {0.0, 1, 300}};
    for (const auto& [feetPerSecond, onGround, landingRate] : rows) {
        answerTo("Request", {aircraftAnswer(
                                {{"VERTICAL SPEED", feetPerSecond}, {"SIM ON GROUND", onGround}})});
        aviation::structs::AircraftData data;
        ASSERT_EQ(sim.GetAircraftData(data), 0);
        EXPECT_EQ(data.landingRate, landingRate) << feetPerSecond;
    }
}

TEST_F(FsInterfaceSimConnectTest, NamesTheVariableThatIsRefused)
{
    script.onCall = [this, packet = 0U](const std::string& call) mutable { // outlives the test
        script.packetId = ++packet;
        if (call.rfind("Define 0 AMBIENT IN CLOUD", 0) == 0) {
            script.messages.push_back(exceptionMessage(7, packet));
        }
    };
    script.messages = {openMessage(), exceptionMessage(7, 1)};
    ASSERT_EQ(sim.Connect(), 0);
    const QStringList lines = log.filter(QStringLiteral("refuses"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines.first(),
              QStringLiteral("3 (Interface SimConnect) - The simulator refuses the variable "
                             "\"AMBIENT IN CLOUD\". What is asked for together with it doesn't "
                             "come."));
}

TEST_F(FsInterfaceSimConnectTest, AClockBeyondTheCalendarIsRefused)
{
    connectSimulator();
    const Numbers good{{"ZULU TIME", 3600},
                       {"ZULU DAY OF MONTH", 29},
                       {"ZULU MONTH OF YEAR", 2},
                       {"ZULU YEAR", 2024}};
    answerTo("Request", {aircraftAnswer(good)});
    aviation::structs::AircraftData data;
    ASSERT_EQ(sim.GetAircraftData(data), 0);
    const std::int64_t before = data.simTime;
    EXPECT_NEAR(static_cast<double>(before), 1709168400.0, 86400.0);
    for (const auto& [variable, number] :
         std::initializer_list<std::pair<const char*, double>>{{"ZULU YEAR", 2023},
                                                               {"ZULU YEAR", 20240},
                                                               {"ZULU YEAR", 0},
                                                               {"ZULU YEAR", -2e9},
                                                               {"ZULU MONTH OF YEAR", 13},
                                                               {"ZULU DAY OF MONTH", 0},
                                                               {"ZULU TIME", 9e18},
                                                               {"ZULU TIME", -1}})
    {
        Numbers odd = good;
        odd[variable] = number;
        answerTo("Request", {aircraftAnswer(odd)});
        data.simTime = 0;
        ASSERT_EQ(sim.GetAircraftData(data), 0);
        EXPECT_EQ(data.simTime, before) << variable << ' ' << number;
    }
    EXPECT_EQ(log.filter(QStringLiteral("2 (Interface SimConnect) - The simulator's clock")).size(),
              1);
}

TEST_F(FsInterfaceSimConnectTest, ListsTanksWithACapacity)
{
    connectSimulator();
    answerTo("Request 1 1", {exceptionMessage(3), aircraftAnswer(),
                             answer(simconnectid::kFuel, simConnectFuelDefinition(),
                                    {{"FUEL TANK LEFT TIP LEVEL", 0.5},
                                     {"FUEL TANK LEFT TIP CAPACITY", 30.0},
                                     {"FUEL TANK CENTER2 LEVEL", 0.25},
                                     {"FUEL TANK EXTERNAL1 LEVEL", 1e308},
                                     {"FUEL TANK EXTERNAL1 CAPACITY", 0.1},
                                     {"FUEL TANK EXTERNAL2 CAPACITY", -1.0}})});
    aviation::structs::AircraftFuel fuel;
    ASSERT_EQ(sim.GetAircraftFuel(fuel), 0);
    ASSERT_EQ(fuel.tanks.size(), 2U);
    EXPECT_EQ(fuel.tanks[0].name + fuel.tanks[1].name, L"Left TipExternal 1");
    EXPECT_EQ(fuel.tanks[0].level, 50.0);
    EXPECT_TRUE(std::isfinite(fuel.tanks[1].level));

    fuel.tanks = {{L"dry", 4, 80.0, 0.0}, {L"", 1, 50.0, 30.0}};
    ASSERT_EQ(sim.SetAircraftFuel(fuel), 0);
    std::array<double, 11> levels = {};
    ASSERT_EQ(script.lastData.size(), sizeof levels);
    std::memcpy(levels.data(), script.lastData.data(), sizeof levels);
    EXPECT_EQ(levels, (std::array<double, 11>{0, 0, 0, 0, 0, 0.5}));

    answerTo("Request", {});
    const std::int64_t before = clock.sleptMs();
    EXPECT_EQ(sim.GetAircraftFuel(fuel), 0);
    EXPECT_EQ(fuel.tanks.size(), 2U);
    EXPECT_EQ(clock.sleptMs() - before, 5 * 10 * 50);
}

TEST_F(FsInterfaceSimConnectTest, PayloadStations)
{
    connectSimulator();
    aviation::structs::AircraftPayload payload;
    for (const auto& [count, expected] : {std::pair(-5, 0U), std::pair(51, 50U), std::pair(2, 2U)})
    {
        answerTo("Request 2 3",
                 {answer(simconnectid::kPayload, simConnectPayloadDefinition(),
                         {{"PAYLOAD STATION COUNT", count}, {"PAYLOAD STATION WEIGHT:2", 170}},
                         {{"PAYLOAD STATION NAME:2", std::string(256, 'p')}})});
        ASSERT_EQ(sim.GetAircraftPayload(payload), 0);
        ASSERT_EQ(payload.stations.size(), expected) << count;
    }
    EXPECT_EQ(payload.stations[1].name, std::wstring(256, L'p'));
    EXPECT_EQ(payload.stations[1].maxWeight, 170.0F);
    EXPECT_EQ(payload.stations[1].weight, 0.0F);
    for (const char* const failing : {"Define 5", "Set 5"}) {
        script.calls.clear();
        script.results = {{failing, kFailed}};
        EXPECT_EQ(sim.SetAircraftPayload(payload), simresult::kCallFailed);
        EXPECT_EQ(script.count("Define 5"), 1);
        EXPECT_EQ(script.calls.back(), "Undefine 5");
    }
}

TEST_F(FsInterfaceSimConnectTest, RadiosAreTheNumbersOnTheirDials)
{
    connectSimulator();
    /// One of the megahertz, hertz of the ADF and the transponder's code, and what comes of them.
    const std::tuple<double, double, int, int, int, int> rows[] = {
        {118.1, 384000, 0x2471, 11810, 384, 2471},
        {123.45, 190000, 0x0021, 12345, 190, 21},
        {134.95, 1750000, 0x7777, 13495, 1750, 7777},
        {118.025, 401500, 0, 11802, 401, 0},
        {1e30, 1e30, -1, 65535, 65535, 0},
        {-3, -3, 0x12FF, 0, 0, 12}};
    for (const auto& [mhz, hertz, code, frequency, adf, transponder] : rows) {
        answerTo("Request 9 7", {answer(simconnectid::kRadios, simConnectRadioDefinition(),
                                        {{"COM ACTIVE FREQUENCY:1", mhz},
                                         {"NAV STANDBY FREQUENCY:2", mhz},
                                         {"ADF ACTIVE FREQUENCY:1", hertz},
                                         {"TRANSPONDER CODE:1", code}})});
        aviation::structs::RadioFrequencys radios;
        ASSERT_EQ(sim.GetRadioFrequencys(radios), 0);
        EXPECT_EQ(radios.comm1active, frequency) << mhz;
        EXPECT_EQ(radios.nav2standby, frequency) << mhz;
        EXPECT_EQ(radios.adf, adf) << hertz;
        EXPECT_EQ(radios.transponder, transponder) << code;
    }
    for (int dialled = 10800; dialled <= 13699; ++dialled) { // each as a number of 32 bits
        answerTo("Request 9 7", {answer(simconnectid::kRadios, simConnectRadioDefinition(),
                                        {{"COM ACTIVE FREQUENCY:2", dialled / 100.0}})});
        aviation::structs::RadioFrequencys radios;
        ASSERT_EQ(sim.GetRadioFrequencys(radios), 0);
        ASSERT_EQ(radios.comm2active, dialled);
    }
    answerTo("Request", {});
    aviation::structs::RadioFrequencys radios;
    EXPECT_EQ(sim.GetRadioFrequencys(radios), simresult::kCallFailed);
}

TEST_F(FsInterfaceSimConnectTest, TextsUpToTheirLimit)
{
    connectSimulator();
    EXPECT_EQ(sim.SetWeatherText(QString(1023, QLatin1Char('a'))), 0);
    EXPECT_EQ(script.count("Observation"), 1);
    EXPECT_EQ(sim.SetWeatherText(QString(1024, QLatin1Char('a'))), simresult::kCallFailed);
    EXPECT_EQ(sim.SetWeatherText(QString(512, QChar(0xE4))), simresult::kCallFailed);
    EXPECT_EQ(script.count("Observation"), 1);

    const std::string full(1022, 'b');
    for (const auto& [text, bytes] : {std::pair(full + "c", 1024), std::pair(full + "cd", 1024),
                                      std::pair(full + "\xC3\xA4", 1023)})
    {
        EXPECT_EQ(sim.SendText(text, 5), 0);
        EXPECT_EQ(script.calls.back().substr(0, 10), "Text " + std::to_string(bytes) + " ");
        EXPECT_EQ(script.calls.back().size(), 9U + static_cast<std::size_t>(bytes));
    }
}

TEST_F(FsInterfaceSimConnectTest, CodesOfTheCalls)
{
    connectSimulator();
    using Sim = FsInterfaceSimConnect;
    const auto by = [this](auto operation, auto... arguments) {
        return std::function<int()>(std::bind_front(operation, &sim, arguments...));
    };
    QString observation;
    std::vector<std::uint8_t> map;
    const CloudArea area{{50.0, 8.0}, 100, {51.0, 9.0}, 200};
    const auto setWeather = by(&Sim::SetWeatherText, QStringLiteral("EDDF <1>"));
    const auto clouds = by(&Sim::GetCloudState, area, std::ref(map));
    /// The operation, its call, the result when that gives 1 and when it fails.
    const std::tuple<std::function<int()>, const char*, int, int> rows[] = {
        {setWeather, "Observation EDDF <1>", 0, 8},
        {by(&Sim::SetWeatherTheme, "storm"), "Theme storm", 8, 8},
        {by(&Sim::ClearWeather), "Theme ", 8, 8},
        {by(&Sim::ClearWeather), "Custom", 8, 8},
        {by(&Sim::CreateStation, "ABCD", "n", 1.0F, 2.0F, 3.0F), "Station 7 ABCD", 6, 8},
        {by(&Sim::GetWeatherAt, std::ref(observation), 50.0, 8.0), "Nearest 5", 8, 8},
        {clouds, "Clouds 6 50 8 100 51 9 200", 18, 18},
        {by(&Sim::LoadFlightPlan, QStringLiteral("a.pln")), "Plan a.pln", 0, 8},
        {by(&Sim::SendText, "hello", 3), "Text 6 hello", 0, 8},
    };
    for (const auto& [operate, call, ofOther, ofFailed] : rows) {
        script.results = {{call, 1}};
        EXPECT_EQ(operate(), ofOther) << call;
        EXPECT_EQ(script.count(call), 1) << call;
        for (const simconnect::Result failure : {kFailed, kPipeBroken, kPipeClosed}) {
            script.results = {{call, failure}};
            EXPECT_EQ(operate(), ofFailed) << call;
        }
        script.results.clear();
        script.calls.clear();
    }
    EXPECT_TRUE(said("0 EDDF &lt;1&gt;"));
    EXPECT_EQ(clouds(), simresult::kCallFailed);
    EXPECT_TRUE(said("0 Request Cloud state, SentId: 42"));
    EXPECT_TRUE(said("3 (Interface SimConnect) - Get cloud state failed"));
    script.messages = {exceptionMessage(14)};
    EXPECT_EQ(setWeather(), 0);
    EXPECT_TRUE(said("3 (Interface SimConnect) - error: ***** SIMCONNECT_EXCEPTION_WEATHER_INVALID_"
                     "METAR EXCEPTION=14  SendID=9  Index=-1  cbData=24"));
}

TEST_F(FsInterfaceSimConnectTest, ObservationsAndCloudsComeBack)
{
    connectSimulator();
    for (const auto& [message, expected] :
         {std::pair{observationMessage("EDDF 1&A"), "EDDF 1&A"},
          {observationMessage(std::string("EDDF\0old", 8)), "EDDF"},
          {observationMessage(""), ""},
          {observationMessage("EDDF", 6), "before"},
          {cut(observationMessage("")), "before"}})
    {
        answerTo("Nearest", {message});
        QString text = QStringLiteral("before");
        EXPECT_EQ(sim.GetWeatherAt(text, 50.0, 8.0), 0);
        EXPECT_EQ(text, QString::fromLatin1(expected));
    }
    clock.advance(std::chrono::seconds(20)); // what wasn't answered is lost
    script.onCall = nullptr;
    for (const int lateFetch : {1, 4}) { // before the request, and after it
        QString text;
        EXPECT_EQ(sim.GetWeatherAt(text, 40.0, 8.0), 0);
        EXPECT_EQ(text, QString());
        int fetches = 0;
        script.onFetch = [&] {
            ++fetches;
            if (fetches == lateFetch) {
                script.messages = {observationMessage("LATE 1")}; // for the other place
            } else if (fetches == 8) {
                script.messages = {observationMessage("EDDF 2")};
            }
        };
        EXPECT_EQ(sim.GetWeatherAt(text, 50.0, 8.0), 0);
        EXPECT_EQ(text, QStringLiteral("EDDF 2")) << "is waited for";
        script.onFetch = nullptr;
    }
    QString text;
    answerTo("Nearest", {exceptionMessage(1, 42)});
    EXPECT_EQ(sim.GetWeatherAt(text, 40.0, 8.0), 0);
    answerTo("Nearest", {observationMessage("EDDF 3")});
    EXPECT_EQ(sim.GetWeatherAt(text, 50.0, 8.0), 0);
    EXPECT_EQ(text, QStringLiteral("EDDF 3")) << "a refusal is an answer";
    answerTo("Clouds", {cloudMessage(5000, 5000)});
    std::vector<std::uint8_t> map;
    EXPECT_EQ(sim.GetCloudState({}, map), simresult::kCloudReply);
    EXPECT_EQ(map, std::vector<std::uint8_t>(4096, 5));
    stop.raise();
    EXPECT_EQ(sim.GetCloudState({}, map), simresult::kCallFailed);
}

#include "tests/standins/simulator/SimConnectFixture.h"

#include <cmath>
#include <limits>
#include <tuple>

namespace {

using simconnect::kFailed;
using simconnect::kOk;
using simconnect::MessageId;
using simulator::SimulatedFlight;
namespace exception = simulator::exception;

class SimConnectSimulatorTest : public SimConnectFixture
{
protected:
    void createStation(const char* icao, const char* name, float latitude, float longitude)
    {
        client.SimConnect_WeatherCreateStation(handle, 7, icao, name, latitude, longitude, 0.0F);
    }
    void askNearest(float latitude, float longitude)
    {
        client.SimConnect_WeatherRequestObservationAtNearestStation(handle, 5, latitude, longitude);
    }
    void askClouds(float south, float north, float bottom, float top)
    {
        client.SimConnect_WeatherRequestCloudState(handle, 6, south, -94.0F, bottom, north, -92.0F,
                                                   top, 0);
    }
};

TEST_F(SimConnectSimulatorTest, TheDataArePackedInTheOrderOfTheirDefinition)
{
    model.withFlight([](SimulatedFlight& flight) {
        flight.setStartTime(1561982463); // 2019-07-01 12:01:03
    });
    add(4, "ZULU TIME", "Seconds", DataType::Int64);
    add(3, "Plane Latitude", "degrees", DataType::Float64); // another one, in between
    add(4, "TITLE", nullptr, DataType::String8);
    add(4, "SIM ON GROUND", "bool", DataType::Int32);
    add(4, "PLANE LATITUDE", "Radians", DataType::Float64);
    add(4, "EMPTY WEIGHT", "Pounds", DataType::Float32);
    add(4, "ATC ID", nullptr, DataType::String32);
    add(4, "ZULU YEAR", "Number", DataType::Int32);
    request(4);
    const std::vector<std::uint8_t> bytes = next();
    const std::size_t head = sizeof(simconnect::ObjectDataMessage);
    ASSERT_EQ(bytes.size(), head + 8 + 8 + 4 + 8 + 4 + 32 + 4);
    EXPECT_EQ(at<std::uint32_t>(bytes, 0), bytes.size());
    EXPECT_EQ(at<std::uint32_t>(bytes, 12), 77U) << "request";
    EXPECT_EQ(at<std::uint32_t>(bytes, 20), 4U) << "definition";
    EXPECT_EQ(at<std::uint32_t>(bytes, 36), 7U) << "count";
    EXPECT_EQ(at<std::int64_t>(bytes, head), 43263);
    EXPECT_EQ(textAt(bytes, head + 8), "Demonst") << "a zero ends it";
    EXPECT_EQ(at<std::int32_t>(bytes, head + 16), 1);
    EXPECT_NEAR(at<double>(bytes, head + 20), 44.88287 * 3.14159265 / 180.0, 1e-6);
    EXPECT_EQ(at<float>(bytes, head + 28), 91300.0F);
    EXPECT_EQ(textAt(bytes, head + 32), "C-IRRI");
    EXPECT_EQ(at<std::int32_t>(bytes, head + 64), 2019);
    EXPECT_EQ(data(3).size(), 8U);
    client.SimConnect_ClearDataDefinition(handle, 4);
    add(4, "VERTICAL SPEED", "feet per second", DataType::Float64);
    EXPECT_EQ(data(4).size(), 8U);
}

TEST_F(SimConnectSimulatorTest, NumbersComeInTheUnitThatWasAskedFor)
{
    model.withFlight([](SimulatedFlight& flight) { flight.jumpTo(QStringLiteral("cruise")); });
    model.setWind({240.0F, 50.0F, -1.0F, 0.0F});
    model.setRadios({11835, 11800, 12345, 11800, 10810, 10800, 10895, 10800, 1234, 384, 384});
    const aviation::structs::AircraftData aircraft = model.peekAircraft();
    const auto celsius = static_cast<double>(aircraft.temperature);
    const double level = model.presentFuel().tanks[0].level / 100.0;
    EXPECT_LT(level, 0.95) << "some has burned";
    using Row = std::tuple<const char*, const char*, double>;
    std::uint32_t id = 0;
    for (const auto& [name, unit, value] :
         {Row{"PLANE ALTITUDE", "meters", aircraft.altitude * 0.3048},
          Row{"AMBIENT WIND VELOCITY", "feet per second", 84.39},
          Row{"AMBIENT TEMPERATURE", "fahrenheit", celsius * 1.8 + 32},
          Row{"GENERAL ENG COMBUSTION:1", "bool", 1.0},
          Row{"FUEL TANK LEFT MAIN LEVEL", "percent over 100", level},
          Row{"FUEL TANK CENTER2 CAPACITY", "gallons", 0.0},
          Row{"PAYLOAD STATION WEIGHT:3", "kilograms", 12400.0 / 2.20462},
          Row{"PAYLOAD STATION WEIGHT:50", "pounds", 0.0},
          Row{"COM ACTIVE FREQUENCY:2", "KHz", 123450.0},
          Row{"NAV ACTIVE FREQUENCY:2", "MHz", 108.95},
          Row{"ADF ACTIVE FREQUENCY:1", "Hz", 384000.0},
          Row{"TRANSPONDER CODE:1", "BCO16", 0x1234}})
    {
        add(++id, name, unit, DataType::Float64);
        EXPECT_NEAR(at<double>(data(id), 0), value, 0.01) << name << ' ' << unit;
    }
}

TEST_F(SimConnectSimulatorTest, ExceptionsNameThePacketAndTheArgument)
{
    add(1, "FUEL TANK CENTER LEVEL", "Percent over 100", DataType::Float64);
    add(2, "PLANE ALTITUDE", "feet", DataType::Float64);
    const auto addBad = [this](const char* name, const char* unit, DataType type) {
        return [=, this] {
            add(9, name, unit, type);
        };
    };
    using Row = std::tuple<const char*, std::function<void()>, std::uint32_t, std::uint32_t>;
    const Row rows[] = {
        {"name", addBad("PLANE ALTITUDES", "feet", DataType::Float64), 7, 2},
        {"no index", addBad("EXIT OPEN:6", "percent", DataType::Float64), 7, 2},
        {"index of none", addBad("PLANE ALTITUDE:1", "feet", DataType::Float64), 7, 2},
        {"unit", addBad("PLANE ALTITUDE", "furlongs", DataType::Float64), 7, 3},
        {"wrong unit", addBad("PLANE ALTITUDE", "degrees", DataType::Float64), 7, 3},
        {"no unit", addBad("PLANE ALTITUDE", nullptr, DataType::Float64), 7, 3},
        {"type", addBad("TITLE", nullptr, DataType::Float64), 18, 4},
        {"no type", addBad("PLANE ALTITUDE", "feet", static_cast<DataType>(99)), 18, 4},
        {"empty definition", [this] { request(9); }, 3, 2},
        {"clear", [this] { client.SimConnect_ClearDataDefinition(handle, 8); }, 3, 1},
        {"size", [this] { set<float>(1, {0.5F}); }, 2, 5},
        {"not settable", [this] { set<double>(2, {0.5}); }, 20, 6},
        {"nan", [this] { set<double>(1, {std::numeric_limits<double>::quiet_NaN()}); }, 20, 6},
        {"event", [this] { client.SimConnect_SubscribeToSystemEvent(handle, 1, "Sims"); }, 7, 2},
        {"state", [this] { client.SimConnect_RequestSystemState(handle, 1, "Sims"); }, 7, 2},
        {"metar", [this] { observe("KMS 011200Z"); }, 14, 2},
        {"long metar", [this] { observe(("KMSP " + std::string(2000, 'x')).c_str()); }, 14, 2},
        {"icao", [this] { createStation("TOOLONG", "", 45.0F, 9.0F); }, 16, 2},
        {"place", [this] { askNearest(91.0F, 0.0F); }, 15, 2},
        {"clouds", [this] { askClouds(45.0F, 44.0F, 0.0F, 9000.0F); }, 31, 2},
        {"plan", [this] { client.SimConnect_FlightPlanLoad(handle, ""); }, 23, 1}};
    for (const auto& [what, call, exception, index] : rows) {
        std::uint32_t before = 0;
        std::uint32_t sent = 0;
        client.SimConnect_GetLastSentPacketID(handle, &before);
        call();
        client.SimConnect_GetLastSentPacketID(handle, &sent);
        EXPECT_EQ(sent, before + 1) << what;
        const simconnect::ExceptionMessage message = nextException();
        EXPECT_EQ(message.exception, exception) << what;
        EXPECT_EQ(message.index, index) << what;
        EXPECT_EQ(message.sendId, sent) << what;
    }
    EXPECT_EQ(model.state().fuel.tanks[1].level, 30.0);
}

TEST_F(SimConnectSimulatorTest, LoadIsSetByTheDefinition)
{
    add(2, "FUEL TANK CENTER LEVEL", "Percent Over 100", DataType::Float64);
    add(2, "FUEL TANK CENTER2 LEVEL", "Percent Over 100", DataType::Float64);
    add(2, "FUEL TANK LEFT MAIN LEVEL", "Percent Over 100", DataType::Float64);
    set<double>(2, {0.25, 0.5, 7.0});
    EXPECT_EQ(model.presentFuel().tanks[1].level, 25.0);
    EXPECT_EQ(model.presentFuel().tanks[0].level, 100.0) << "no more than full";
    EXPECT_EQ(model.presentFuel().tanks[2].level, 95.0);
    EXPECT_TRUE(next().empty());
    add(6, "PAYLOAD STATION WEIGHT:1", "Pounds", DataType::Float64);
    add(6, "PAYLOAD STATION WEIGHT:7", "Pounds", DataType::Float64);
    set<double>(6, {1.0, 2.0});
    EXPECT_EQ(nextException().exception, exception::kOutOfBounds);
    EXPECT_EQ(model.state().payload.stations[0].weight, 180.0F) << "all or nothing";
}

TEST_F(SimConnectSimulatorTest, ObservationsAreTakenInCustomModeOnly)
{
    observe("KMSP 011200Z 24012KT");
    EXPECT_EQ(model.state().lostObservations, 1);
    EXPECT_TRUE(model.state().weatherTexts.isEmpty());
    client.SimConnect_WeatherSetModeCustom(handle);
    observe("KMSP 011200Z 24012KT");
    observe("KMSP&A274 011300Z 25013KT");
    EXPECT_EQ(model.state().weatherTexts.size(), 2);
    client.SimConnect_WeatherSetModeTheme(handle, "storms.wt");
    observe("KMSP 011400Z 26014KT");
    EXPECT_TRUE(model.state().weatherTexts.isEmpty());
    EXPECT_EQ(model.state().themes, QStringList(QStringLiteral("storms.wt")));
    EXPECT_EQ(model.state().clears, 0);
    client.SimConnect_WeatherSetModeTheme(handle, "");
    EXPECT_EQ(model.state().clears, 1);
    EXPECT_EQ(model.state().themes.size(), 1);
    EXPECT_FALSE(model.state().customWeather);
    EXPECT_TRUE(next().empty()) << "no exception came";
}

TEST_F(SimConnectSimulatorTest, TheNearestStationWithAReportAnswers)
{
    const auto observation = [this](float latitude, float longitude) {
        askNearest(latitude, longitude);
        return textAt(next(), sizeof(simconnect::ObservationMessage));
    };
    model.withFlight([](SimulatedFlight& flight) { flight.setStartTime(1561982463); });
    model.setWind({240.0F, 12.0F, -1.0F, 0.0F});
    EXPECT_EQ(observation(45.0F, -93.0F), "GLOB 011201Z 24012KT 9999 SKC 15/15 Q1013");
    client.SimConnect_WeatherSetModeCustom(handle);
    observe("EDDF 011200Z 01001KT");
    EXPECT_EQ(observation(45.0F, -93.0F), "EDDF 011200Z 01001KT") << "the only one";
    observe("GLOB 011200Z 02002KT");
    createStation("kmsp", "Minneapolis", 44.9F, -93.2F);
    createStation("EDDF", "Frankfurt", 50.0F, 8.6F);
    createStation("KRST", "Rochester", 43.9F, -92.5F);
    observe("KMSP 011200Z 03003KT");
    observe("KMSP 011300Z 04004KT");
    EXPECT_EQ(observation(43.9F, -92.5F), "KMSP 011300Z 04004KT") << "Rochester has none";
    EXPECT_EQ(observation(50.0F, 9.0F), "EDDF 011200Z 01001KT");
    createStation("EDDF", "again", 0.0F, 1.0F);
    EXPECT_EQ(nextException().exception, exception::kWeatherUnableToCreateStation);
    ASSERT_EQ(model.state().stations.size(), 3U);
    EXPECT_EQ(model.state().stations[0].name, QStringLiteral("Minneapolis"));
}

TEST_F(SimConnectSimulatorTest, TheCloudGridFollowsTheLayers)
{
    /// Cells with clouds and the highest byte, over two degrees.
    const auto clouds = [this](float minAltitude, float maxAltitude) {
        askClouds(44.0F, 46.0F, minAltitude, maxAltitude);
        const std::vector<std::uint8_t> bytes = next();
        const std::size_t head = sizeof(simconnect::CloudStateMessage);
        EXPECT_EQ(bytes.size(), head + 4096);
        const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(head);
        return std::pair(4096 - std::count(begin, bytes.end(), 0),
                         static_cast<int>(*std::max_element(begin, bytes.end())));
    };
    const auto report = [this](const char* metar) {
        model.clearWeather();
        client.SimConnect_WeatherSetModeCustom(handle);
        observe(metar);
    };
    EXPECT_EQ(clouds(0.0F, 50000.0F), std::pair(std::ptrdiff_t(0), 0));
    report("GLOB 011200Z 24012KT 9999 8CU020&CU000FNRL005N 20/10 Q1013");
    EXPECT_EQ(clouds(3000.0F, 3002.0F).first, 4096);
    EXPECT_EQ(clouds(6000.0F, 9000.0F).first, 0) << "above it";
    const int overcast = clouds(3000.0F, 3002.0F).second;
    report("GLOB 011200Z 24012KT SCT020");
    const auto scattered = clouds(3000.0F, 3002.0F);
    EXPECT_GT(scattered.first, 4096 / 4);
    EXPECT_LT(scattered.first, 4096 * 3 / 4);
    EXPECT_EQ(scattered, clouds(3000.0F, 3002.0F)) << "the same again";
    report("GLOB 011200Z 24012KT OVC020CB");
    EXPECT_GT(clouds(20000.0F, 20002.0F).second, overcast);
    model.clearWeather();
    NewWeather record;
    record.Lat = 45.0;
    record.Lon = -93.0;
    record.nCloudCtr = 99; // more than it has room for
    record.Cloud[0] = {3000, 2000, 0, 8, 9, 0, 0, 0, 0, 0, 0, 0};
    model.addWeatherRecord(record);
    EXPECT_EQ(clouds(8000.0F, 8002.0F).first, 4096);
}

TEST_F(SimConnectSimulatorTest, PauseIsToldByEventsAndTheState)
{
    for (const auto& [id, name] :
         {std::pair{0U, "Sim"}, {5U, "Pause"}, {2U, "SimStart"}, {1U, "SimStop"}})
    {
        client.SimConnect_SubscribeToSystemEvent(handle, id, name);
    }
    /// The events since the last call as "id=value", and the state.
    const auto told = [this] {
        std::string events;
        for (auto bytes = next(); !bytes.empty(); bytes = next()) {
            EXPECT_EQ(at<std::uint32_t>(bytes, 8), static_cast<std::uint32_t>(MessageId::Event));
            events += std::to_string(at<std::uint32_t>(bytes, 16)) + '='
                      + std::to_string(at<std::uint32_t>(bytes, 20)) + ' ';
        }
        client.SimConnect_RequestSystemState(handle, 10, "Sim");
        const auto state = nextOf<simconnect::SystemStateMessage>(MessageId::SystemState);
        return events + "state " + std::to_string(state.integerValue);
    };
    EXPECT_EQ(told(), "0=1 5=0 state 1");
    model.withFlight([](SimulatedFlight& flight) { flight.setSpeed(1.0); });
    model.setPaused(true);
    EXPECT_EQ(told(), "5=1 0=0 1=0 state 0");
    add(1, "ZULU TIME", "seconds", DataType::Float64);
    const double time = at<double>(data(1), 0);
    clock.Advance(std::chrono::minutes(1));
    EXPECT_EQ(at<double>(data(1), 0), time) << "still answers, and stands";
    model.setPaused(false);
    EXPECT_EQ(told(), "5=0 0=1 2=0 state 1");
    clock.Advance(std::chrono::seconds(2));
    EXPECT_EQ(at<double>(data(1), 0), time + 2.0);
    client.SimConnect_SubscribeToSystemEvent(handle, 5, "Sim");
    EXPECT_EQ(nextException().exception, exception::kEventIdDuplicate);
}

TEST_F(SimConnectSimulatorTest, TextAndFlightPlanAreKept)
{
    std::string text = "clear of clouds";
    const auto show = [this, &text](std::size_t size) {
        client.SimConnect_Text(handle, simconnect::kTextScrollWhite, 5.0F, 0,
                               static_cast<std::uint32_t>(size), text.data());
    };
    show(text.size() + 1);
    EXPECT_EQ(model.state().screenTexts, QStringList(QStringLiteral("clear of clouds")));
    show(text.size());
    EXPECT_EQ(nextException().exception, exception::kSizeMismatch) << "its zero is missing";
    client.SimConnect_FlightPlanLoad(handle, "C:\\plans\\one.pln");
    EXPECT_EQ(model.state().flightPlan, QStringLiteral("C:\\plans\\one.pln"));
    EXPECT_EQ(host.calls().back(), "SimConnect_FlightPlanLoad C:\\plans\\one.pln");
    EXPECT_EQ(host.callCount("SimConnect_Text"), 2);
}

} // namespace

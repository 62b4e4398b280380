#include "tests/standins/simulator/SimConnectFixture.h"

#include <limits>
#include <tuple>

namespace {

using simconnect::kFailed;
using simconnect::kOk;
using simconnect::MessageId;
namespace exception = simulator::exception;

class SimConnectSimulatorTest : public SimConnectFixture
{
protected:
    void createStation(const char* icao, const char* name, float latitude, float longitude)
    {
        client.SimConnect_WeatherCreateStation(handle, 7, icao, name, latitude, longitude, 0.0F);
    }
    void showUnended(std::string text)
    {
        client.SimConnect_Text(handle, simconnect::kTextScrollWhite, 5.0F, 0,
                               static_cast<std::uint32_t>(text.size()), text.data());
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
        {"plan", [this] { client.SimConnect_FlightPlanLoad(handle, ""); }, 23, 1},
        {"text without its zero", [this] { showUnended("clear"); }, 2, 4}};
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

} // namespace

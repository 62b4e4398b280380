#include "aviation/Angles.h"
#include "tests/e2e/WayFixture.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

/// One simulator, one flight and one weather through every way in.
namespace {

using aviation::structs::AircraftData;
using simulator::Phase;
using simulator::SimulatorState;
namespace interfaceid = aviation::interfaceid;

// --- the weather

/// A way with the form in which it carries the weather.
struct Form
{
    Way way;
    int mode;
    int job;
};

class SameWeather : public Ways
{
protected:
    /// What the simulator has after one update of the weather.
    SimulatorState carry(const Form& form)
    {
        begin(form.way);
        settings->setSimPath(path("simulator"));
        QDir().mkpath(themeFolder());
        settings->setWeatherMode(form.mode);
        connectSimulator();
        download();
        EXPECT_EQ(setWeather(form.job), 0) << form.way.name;
        EXPECT_TRUE(watching()) << form.way.name;
        controller.reset();
        return state();
    }
    QString themeFolder() const { return path("simulator/Weather/themes"); }
};

bool sameBytes(const NewWeather& left, const NewWeather& right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

float floatAt(const QByteArray& bytes, int at)
{
    float value = NAN;
    if (at >= 0 && at + static_cast<int>(sizeof value) <= bytes.size()) {
        std::memcpy(&value, bytes.constData() + at, sizeof value);
    }
    return value;
}

/// Equal but for wind directions: they follow the magnetic variation at the aircraft, which each
/// way tells with another resolution.
bool sameTheme(const QByteArray& left, const QByteArray& right)
{
    constexpr float kResolution = 0.05F; // degrees
    const auto isNear = [&](int at) {
        return std::abs(floatAt(left, at) - floatAt(right, at)) < kResolution;
    };
    bool same = left.size() == right.size();
    for (int i = 0; same && i < left.size(); ++i) {
        if (left[i] != right[i]) {
            same = isNear(i) || isNear(i - 1);
            i += 1; // a small change of a number is in its two lowest bytes
        }
    }
    return same;
}

TEST_F(SameWeather, AsRecordsOverBridgeAndFsuipc)
{
    const auto bridged = carry({kBridgedRecords, 0, connectjob::kSetWeather}).weatherRecords;
    ASSERT_GT(bridged.size(), 2U);
    const auto written = carry({kFsuipc, 0, connectjob::kSetWeather}).weatherRecords;
    ASSERT_EQ(written.size(), bridged.size());
    EXPECT_TRUE(std::equal(written.begin(), written.end(), bridged.begin(), sameBytes));
}

TEST_F(SameWeather, AsObservationsOverBridgeSimConnectAndBoth)
{
    const SimulatorState bridged = carry({kBridgedTexts, 0, connectjob::kSetWeather});
    ASSERT_GT(bridged.weatherTexts.size(), 2);
    for (const Way& way : {kSimConnect, kBoth}) {
        const SimulatorState taken = carry({way, 0, connectjob::kSetWeather});
        EXPECT_EQ(taken.weatherTexts, bridged.weatherTexts) << way.name;
        EXPECT_TRUE(taken.customWeather) << way.name;
        EXPECT_EQ(taken.lostObservations, 0) << way.name;
    }
}

TEST_F(SameWeather, AsThemeOverBridgeSimConnectAndBoth)
{
    const SimulatorState bridged =
        carry({{"bridged", interfaceid::kBridge, 2, 3}, 1, connectjob::kSetTheme});
    ASSERT_GT(bridged.lastFile.size(), 1000);
    for (const Way& way : {kSimConnect, kBoth}) {
        const SimulatorState taken = carry({way, 1, connectjob::kSetTheme});
        ASSERT_FALSE(taken.themes.isEmpty()) << way.name;
        EXPECT_TRUE(taken.themes.back().endsWith(QLatin1String("cirrilon.WTB"))) << way.name;
        EXPECT_TRUE(
            sameTheme(read(themeFolder() + QStringLiteral("/cirrilon.WTB")), bridged.lastFile))
            << way.name;
    }
}

/// Surface wind and pressure of one report, whatever form they travelled in.
struct Surface
{
    double direction;
    double speed;
    double hectopascal;
};

Surface surfaceOf(const NewWeather& record)
{
    constexpr double kDegreesPerUnit = 360.0 / 65536.0;
    return {record.Wind[0].Dir * kDegreesPerUnit, static_cast<double>(record.Wind[0].Speed),
            record.Press / 16.0};
}

std::optional<Surface> surfaceOf(const QString& observation)
{
    static const QRegularExpression groups(
        QStringLiteral("^\\w{4} \\d{6}Z (\\d{3})(\\d{2,3})(G\\d+)?KT.* Q(\\d{4}) "));
    const QRegularExpressionMatch match = groups.match(observation);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    return Surface{match.captured(1).toDouble(), match.captured(2).toDouble(),
                   match.captured(4).toDouble()};
}

Surface surfaceOf(const XPlaneWeather& weather)
{
    constexpr double kHectopascalPerInch = 33.8639;
    return {static_cast<double>(weather.Winds.front().Dir),
            static_cast<double>(weather.Winds.front().Speed),
            static_cast<double>(weather.Press) * kHectopascalPerInch};
}

void expectSame(const Surface& one, const Surface& other)
{
    EXPECT_NEAR(aviation::AngleDifference(one.direction, other.direction), 0.0, 1.1);
    EXPECT_NEAR(one.speed, other.speed, 1.0); // whole knots
    EXPECT_NEAR(one.hectopascal, other.hectopascal, 1.0);
}

TEST_F(SameWeather, InEveryFormOfAStation)
{
    const auto records = carry({kFsuipc, 0, connectjob::kSetWeather}).weatherRecords;
    const QStringList texts = carry({kSimConnect, 0, connectjob::kSetWeather}).weatherTexts;
    const auto xplane = carry({kBridge, 0, connectjob::kSetXPlaneWeather}).weatherData;
    ASSERT_TRUE(xplane.has_value() && !xplane->Winds.empty());
    ASSERT_EQ(static_cast<int>(records.size()), texts.size());
    for (int i = 0; i < texts.size(); ++i) {
        const NewWeather& record = records[static_cast<std::size_t>(i)];
        SCOPED_TRACE(texts[i].toStdString());
        EXPECT_TRUE(texts[i].startsWith(QString::fromStdString(record.icaoText())));
        const std::optional<Surface> told = surfaceOf(texts[i]);
        ASSERT_TRUE(told.has_value());
        expectSame(*told, surfaceOf(record));
    }
    expectSame(surfaceOf(*xplane), surfaceOf(records.front()));
}

// --- the aircraft

class SameAircraft : public Ways
{
protected:
    AircraftData at(const Way& way, Phase phase)
    {
        begin(way);
        clients.model().withFlight(
            [phase](simulator::SimulatedFlight& flight) { flight.jumpTo(phase); });
        controller->OnConnectClicked();
        settle();
        EXPECT_TRUE(controller->IsConnected()) << way.name;
        EXPECT_EQ(poll(), 0) << way.name;
        const AircraftData data = controller->aircraft();
        controller.reset();
        return data;
    }
};

void expectAgree(const AircraftData& one, const AircraftData& other)
{
    EXPECT_NEAR(one.position.latitude(), other.position.latitude(), 1e-5);
    EXPECT_NEAR(one.position.longitude(), other.position.longitude(), 1e-5);
    EXPECT_NEAR(one.altitude, other.altitude, 1);
    EXPECT_NEAR(one.heightAgl, other.heightAgl, 1);
    EXPECT_NEAR(one.tas, other.tas, 1);
    EXPECT_NEAR(one.groundSpeed, other.groundSpeed, 1);
    EXPECT_NEAR(one.verticalSpeed, other.verticalSpeed, 16); // a 256th of a metre a second
    EXPECT_NEAR(static_cast<double>(one.temperature), static_cast<double>(other.temperature), 0.6);
    EXPECT_NEAR(static_cast<double>(one.totalWeight), static_cast<double>(other.totalWeight), 2.0);
    EXPECT_EQ(one.onGround, other.onGround);
    EXPECT_EQ(one.parkingBrake, other.parkingBrake);
    EXPECT_EQ(one.engineOff, other.engineOff);
    EXPECT_EQ(one.landingLight, other.landingLight);
    EXPECT_EQ(one.doorOpen, other.doorOpen);
    EXPECT_EQ(one.name, other.name);
    EXPECT_EQ(one.registration, other.registration);
}

TEST_F(SameAircraft, OnEveryWayInEveryPhase)
{
    for (const Phase phase : {Phase::Boarding, Phase::Climb, Phase::Cruise, Phase::Approach}) {
        SCOPED_TRACE(simulator::phaseName(phase).toStdString());
        const AircraftData bridged = at(kBridge, phase);
        for (const Way& way : {kSimConnect, kFsuipc, kBoth}) {
            SCOPED_TRACE(way.name);
            const AircraftData data = at(way, phase);
            expectAgree(data, bridged);
            const bool isTrue = way.interfaceType != interfaceid::kSimConnect;
            const double magnetic = isTrue ? data.headingMagnetic : data.heading;
            EXPECT_NEAR(aviation::AngleDifference(magnetic, bridged.heading), 0.0, 0.6);
        }
    }
}

// --- load and radios

class Load : public Ways, public testing::WithParamInterface<Way>
{};

TEST_P(Load, GoesInAndComesBack)
{
    begin(GetParam());
    connectSimulator();
    ConnectWorker& worker = controller->connectWorker();
    ASSERT_EQ(run(Job(connectjob::kGetFuel, QString())), 0);
    aviation::structs::AircraftFuel fuel = worker.fuel();
    ASSERT_EQ(fuel.tanks.size(), 3U) << "tanks without capacity aren't listed";
    EXPECT_NEAR(fuel.fuelWeight, 6.7, 0.01);
    double level = 12.5;
    for (aviation::structs::FuelTank& tank : fuel.tanks) {
        tank.level = level += 20.25;
    }
    worker.setFuel(fuel);
    ASSERT_EQ(run(Job(connectjob::kSetFuel, QString())), 0);
    ASSERT_EQ(run(Job(connectjob::kGetFuel, QString())), 0);
    const aviation::structs::AircraftFuel back = worker.fuel();
    ASSERT_EQ(back.tanks.size(), fuel.tanks.size());
    for (const aviation::structs::FuelTank& tank : fuel.tanks) {
        const auto same = std::find_if(back.tanks.begin(), back.tanks.end(),
                                       [&tank](const auto& each) { return each.id == tank.id; });
        ASSERT_NE(same, back.tanks.end()) << tank.id;
        EXPECT_NEAR(same->level, tank.level, 0.001) << tank.id;
        EXPECT_NEAR(same->capacity, tank.capacity, 0.5) << tank.id;
    }

    ASSERT_EQ(run(Job(connectjob::kGetPayload, QString())), 0);
    aviation::structs::AircraftPayload payload = worker.payload();
    ASSERT_EQ(payload.stations.size(), 6U);
    float pounds = 150.0F;
    for (aviation::structs::AircraftPayloadStation& station : payload.stations) {
        station.weight = pounds += 33.0F;
    }
    worker.setPayload(payload);
    ASSERT_EQ(run(Job(connectjob::kSetPayload, QString())), 0);
    const auto loaded = state().payload.stations;
    ASSERT_EQ(loaded.size(), payload.stations.size());
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        EXPECT_FLOAT_EQ(loaded[i].weight, payload.stations[i].weight) << i;
    }
    ASSERT_EQ(run(Job(connectjob::kGetPayload, QString())), 0);
    const auto told = worker.payload().stations;
    ASSERT_EQ(told.size(), loaded.size());
    const bool tellsLoad = GetParam().interfaceType == interfaceid::kBridge;
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        EXPECT_FLOAT_EQ(tellsLoad ? told[i].weight : told[i].maxWeight, loaded[i].weight) << i;
    }
}

TEST_P(Load, RadiosGoInWhereTheWayHasThemAndComeBack)
{
    begin(GetParam());
    connectSimulator();
    ConnectWorker& worker = controller->connectWorker();
    aviation::structs::RadioFrequencys radios;
    radios.comm1active = 12345;
    radios.comm2standby = 13690;
    radios.nav1active = 11030;
    radios.nav2standby = 10895;
    radios.transponder = 2471;
    worker.setRadios(radios);
    const bool canSet = GetParam().interfaceType != interfaceid::kSimConnect;
    EXPECT_EQ(run(Job(connectjob::kSetRadios, QStringLiteral("Set frequency data"))),
              canSet ? 0 : 200);
    if (!canSet) {
        clients.model().setRadios(radios);
    }
    worker.setRadios({});
    ASSERT_EQ(run(Job(connectjob::kGetRadios, QString())), 0);
    const aviation::structs::RadioFrequencys back = worker.radios();
    const int resolution = canSet ? 0 : 1; // SimConnect's frequencies are floats of 32 bits
    EXPECT_NEAR(back.comm1active, radios.comm1active, resolution);
    EXPECT_NEAR(back.comm1standby, radios.comm1standby, resolution);
    EXPECT_NEAR(back.comm2active, radios.comm2active, resolution);
    EXPECT_NEAR(back.comm2standby, radios.comm2standby, resolution);
    EXPECT_NEAR(back.nav1active, radios.nav1active, resolution);
    EXPECT_NEAR(back.nav2standby, radios.nav2standby, resolution);
    // SimConnect's code is taken as it comes, four digits in a half byte each.
    EXPECT_EQ(back.transponder, canSet ? radios.transponder : 0x2471);
    EXPECT_EQ(state().radios.comm1active, radios.comm1active);
}

INSTANTIATE_TEST_SUITE_P(Ways, Load, testing::Values(kBridge, kSimConnect, kFsuipc, kBoth), nameOf);

// --- every job

struct JobResults
{
    int id;
    const char* name;
    int overBridge;
    int overSimConnect;
    int overFsuipc;
    int overBoth;
};

TEST_F(Ways, EachJobGivesWhatTheWayCanDo)
{
    const JobResults rows[] = {
        {connectjob::kClearWeather, "Clear WX", 0, 0, 0, 0},
        {connectjob::kSendText, "a text", 0, 0, 0, 0},
        {connectjob::kCreateStation, "KZZZ:Nowhere:44.0:-95.0:1000", 200, 0, 200, 0},
        {connectjob::kWeatherAt, "44.0;-95.0", 200, 0, 0, 0},
        {connectjob::kLoadFlightPlan, "plan.pln", 200, 0, 200, 0},
        {connectjob::kCloudMap, "40:2000", 200, 20, 200, 20},
        {connectjob::kWindAtAircraft, "180:20.5", 0, 200, 0, 0},
        {connectjob::kWindAtAircraft, "361:20", 17, 17, 17, 17},
        {connectjob::kSetTheme, "no/such/file", 15, 0, 200, 0},
        {connectjob::kSetWeather, "nothing waits", 5, 5, 5, 5},
        {connectjob::kSetXPlaneWeather, "Set XPWeather", 0, 200, 200, 200},
        {connectjob::kSetWindLayers, "Set XPWind", 0, 200, 200, 200},
        {connectjob::kSetVisibility, "5000", 0, 200, 200, 200},
        {connectjob::kSetGlobalWind, "", 0, 200, 200, 200},
        {connectjob::kActivateWeather, "", 0, 200, 200, 200},
        {connectjob::kDateTime, "", 0, 200, 200, 200},
        {connectjob::kServerConfig, "", 0, 200, 200, 200},
        {connectjob::kNotImplemented, "", 200, 200, 200, 200},
        {connectjob::kWrongVersion42, "", 4, 4, 4, 4}};
    const std::pair<Way, int JobResults::*> ways[] = {{kBridge, &JobResults::overBridge},
                                                      {kSimConnect, &JobResults::overSimConnect},
                                                      {kFsuipc, &JobResults::overFsuipc},
                                                      {kBoth, &JobResults::overBoth}};
    for (const auto& [way, result] : ways) {
        SCOPED_TRACE(way.name);
        begin(way);
        connectSimulator();
        const int clears = state().clears;
        for (const JobResults& row : rows) {
            EXPECT_EQ(run(Job(row.id, QString::fromLatin1(row.name))), row.*result) << row.id;
        }
        EXPECT_EQ(state().clears, clears + 1);
        EXPECT_TRUE(state().screenTexts.contains(QStringLiteral("a text")));
        EXPECT_EQ(state().stations.size(), rows[2].*result == 0 ? 1U : 0U);
        EXPECT_EQ(state().wind.has_value(), rows[6].*result == 0);
        controller.reset();
    }
}

} // namespace

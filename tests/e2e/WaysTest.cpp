#include "aviation/Angles.h"
#include "tests/e2e/ProgramFixture.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ostream>

/// One simulator, one flight and one weather through every way in.
namespace {

using aviation::structs::AircraftData;
using simulator::Phase;
using simulator::SimulatorState;
namespace interfaceid = aviation::interfaceid;
namespace command = simulator::command;
namespace message = simulator::message;

constexpr std::uint32_t kFsxInFsuipc = 8;
constexpr std::uint32_t kFs2004InFsuipc = 7;

/// How the program comes to the simulator. The bridge says what it stands before.
struct Way
{
    const char* name;
    int interfaceType;
    int bridgedInterface = 0;
    int bridgedFsId = 0;
};

constexpr Way kBridge{"bridge", interfaceid::kBridge, interfaceid::kBridge, 9};
constexpr Way kBridgedRecords{"bridged_records", interfaceid::kBridge, interfaceid::kFsuipc, 3};
constexpr Way kBridgedTexts{"bridged_texts", interfaceid::kBridge, 3, 3};
constexpr Way kSimConnect{"simconnect", interfaceid::kSimConnect};
constexpr Way kFsuipc{"fsuipc", interfaceid::kFsuipc};
constexpr Way kBoth{"both", interfaceid::kFsuipcSimConnect};

void PrintTo(const Way& way, std::ostream* out)
{
    *out << way.name;
}

std::string nameOf(const testing::TestParamInfo<Way>& info)
{
    return info.param.name;
}

class Ways : public ProgramFixture
{
protected:
    simulator::SimulatorOptions simulatorOptions() const override
    {
        simulator::SimulatorOptions options;
        options.udpIntervalMs = kNeverMs; // polled on every way
        return options;
    }
    void begin(const Way& way, std::uint32_t fsuipcCode = kFsxInFsuipc)
    {
        simulator::FsuipcOptions fsuipc;
        fsuipc.simulatorCode = fsuipcCode;
        clients.setFsuipcOptions(fsuipc);
        clients.model().withState([](SimulatorState& state) { state = simulator::freshState(); });
        if (way.interfaceType == interfaceid::kBridge) {
            simulator->invoke([&way](simulator::SimulatorServer& running) {
                running.setSimulator(way.bridgedFsId, way.bridgedInterface);
            });
        }
        settings->setMyIp(QString());
        settings->setInterfaceType(way.interfaceType);
        settings->setRange(40);
        make();
    }
    SimulatorState state() const { return simulator->state(); }
    void setFault(const QString& text)
    {
        ASSERT_TRUE(simulator->setFault(text));
        ASSERT_TRUE(clients.faults().set(text));
    }
    /// Runs a job to its end; its result.
    int run(const Job& job)
    {
        const int before = jobs[job.id];
        controller->connectWorker().AddJob(job);
        controller->connectWorker().start();
        EXPECT_TRUE(wait([this, &job, before] { return jobs[job.id] > before; })) << job.id;
        settle();
        return lastError[job.id];
    }
    int poll() { return run(Job(connectjob::kAircraftData, QStringLiteral("Aircraft data"))); }
};

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

/// The station's surface wind and pressure as its observation says them.
TEST_F(SameWeather, InEveryFormOfAStation)
{
    const auto records = carry({kFsuipc, 0, connectjob::kSetWeather}).weatherRecords;
    const QStringList texts = carry({kSimConnect, 0, connectjob::kSetWeather}).weatherTexts;
    const auto xplane = carry({kBridge, 0, connectjob::kSetXPlaneWeather}).weatherData;
    ASSERT_TRUE(xplane.has_value());
    int compared = 0;
    for (const NewWeather& record : records) {
        const QString icao = QString::fromStdString(record.icaoText());
        const auto text = std::find_if(texts.begin(), texts.end(), [&icao](const QString& each) {
            return each.startsWith(icao);
        });
        if (icao == QLatin1String("GLOB") || text == texts.end()) {
            continue;
        }
        const double hectopascal = record.Press / 16.0;
        EXPECT_TRUE(
            text->contains(QStringLiteral("Q%1").arg(qRound(hectopascal), 4, 10, QLatin1Char('0')))
            || text->contains(QStringLiteral(" A")))
            << icao.toStdString() << ' ' << hectopascal << ' ' << text->toStdString();
        ++compared;
    }
    EXPECT_GT(compared, 1);
    EXPECT_NEAR(static_cast<double>(xplane->Press) * 33.8639, records.front().Press / 16.0, 40.0);
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
    const bool tellsLoad = GetParam().interfaceType == interfaceid::kBridge;
    for (std::size_t i = 0; i < loaded.size(); ++i) {
        const auto& station = worker.payload().stations[i];
        EXPECT_FLOAT_EQ(tellsLoad ? station.weight : station.maxWeight, loaded[i].weight) << i;
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

// --- faults

struct FaultOnAWay
{
    Way way;
    const char* fault;
};

class WayFaults : public Ways, public testing::WithParamInterface<FaultOnAWay>
{};

/// In a poll and in a run of stations: the program lives, and works when the fault has gone, after
/// connecting anew at the latest.
TEST_P(WayFaults, AreSurvived)
{
    const FaultOnAWay& row = GetParam();
    begin(row.way);
    connectSimulator();
    download();
    setFault(QString::fromLatin1(row.fault) + QStringLiteral("@6/2*1"));
    poll();
    const bool isRecord = row.way.bridgedInterface == interfaceid::kFsuipc
                          || row.way.interfaceType == interfaceid::kFsuipc;
    if (!controller->IsConnected()) {
        connectSimulator();
    }
    setFault(QString::fromLatin1(row.fault)
             + (isRecord ? QStringLiteral("@5/7*1") : QStringLiteral("@5/8*1")));
    setWeather(connectjob::kSetWeather);
    setFault(QStringLiteral("none"));
    if (poll() != 0 || !controller->IsConnected()) {
        if (controller->IsConnected()) {
            controller->OnConnectClicked();
            settle();
        }
        connectSimulator();
    }
    EXPECT_EQ(poll(), 0);
    clients.model().withState([](SimulatorState& each) {
        each.weatherTexts.clear();
        each.weatherRecords.clear();
    });
    timer("timerWeather").start(); // a lost connection leaves it to the next download
    controller->OnClickedSetWX();
    EXPECT_EQ(setWeather(connectjob::kSetWeather), 0);
    const SimulatorState after = state();
    EXPECT_GT(isRecord ? static_cast<int>(after.weatherRecords.size()) : after.weatherTexts.size(),
              2);
}

std::vector<FaultOnAWay> everyFaultOnEveryWay()
{
    std::vector<FaultOnAWay> rows;
    for (const Way& way : {kBridgedTexts, kBridgedRecords, kSimConnect, kFsuipc, kBoth}) {
        for (const char* fault : {"refuse", "silent", "slow:30", "garbage:40", "wrongid", "cut:10",
                                  "close", "drop", "huge"})
        {
            rows.push_back({way, fault});
        }
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Kinds, WayFaults, testing::ValuesIn(everyFaultOnEveryWay()),
                         [](const auto& row) {
                             QString name = QString::fromLatin1(row.param.fault);
                             name.replace(QLatin1Char(':'), QLatin1Char('_'));
                             return std::string(row.param.way.name) + '_' + name.toStdString();
                         });

TEST_F(Ways, AFailingCallInARunOfStationsDoesNotEndIt)
{
    begin(kSimConnect);
    connectSimulator();
    download();
    ASSERT_EQ(setWeather(connectjob::kSetWeather), 0);
    const int whole = state().weatherTexts.size();
    clients.model().withState([](SimulatorState& each) { each.weatherTexts.clear(); });
    clients.host().failNextCalls("SimConnect_WeatherSetObservation", 2);
    controller->OnClickedSetWX();
    EXPECT_EQ(setWeather(connectjob::kSetWeather), 0);
    EXPECT_EQ(state().weatherTexts.size(), whole - 2);
    EXPECT_EQ(view.linesWith(QStringLiteral("(ConnectWorker) - Set Weather failed. ")), 2);
}

TEST_F(Ways, APauseIsNoFault)
{
    for (const Way& way : {kSimConnect, kFsuipc, kBoth}) {
        begin(way);
        connectSimulator();
        const int errors = view.linesWith(QStringLiteral("Error"));
        clients.model().setPaused(true);
        bool seen = false;
        for (int i = 0; i < 12 && !seen; ++i) { // SimConnect is asked on every eleventh poll
            seen = poll() == 19;
        }
        EXPECT_TRUE(seen) << way.name;
        EXPECT_EQ(view.linesWith(QStringLiteral("Error")), errors) << way.name;
        clients.model().setPaused(false);
        EXPECT_EQ(poll(), 0) << way.name;
        controller.reset();
    }
}

// --- detection

struct Detection
{
    const char* name;
    bool hasSimConnect;
    bool hasFsuipc;
    bool isRunning;
    std::uint32_t fsuipcCode;
    int interfaceType; ///< afterwards, -1 not connected
};

class Detected : public Ways, public testing::WithParamInterface<Detection>
{};

TEST_P(Detected, ByItself)
{
    const Detection& row = GetParam();
    clients.setSimConnectInstalled(row.hasSimConnect);
    clients.setFsuipcInstalled(row.hasFsuipc);
    clients.setRunning(row.isRunning);
    begin({"auto", interfaceid::kAuto}, row.fsuipcCode);
    controller->OnConnectClicked();
    settle();
    EXPECT_EQ(controller->IsConnected(), row.interfaceType >= 0);
    if (row.interfaceType < 0) {
        EXPECT_GT(view.linesWith(QStringLiteral("FS or Server not found")), 0);
        return;
    }
    EXPECT_EQ(controller->connectWorker().interfaceType(), row.interfaceType);
    EXPECT_EQ(poll(), 0);
    download();
    EXPECT_EQ(setWeather(connectjob::kSetWeather), 0);
    EXPECT_EQ(state().refreshes, row.fsuipcCode == kFs2004InFsuipc ? 1 : 0);
    EXPECT_EQ(run(Job(connectjob::kCloudMap, QStringLiteral("40:10"))),
              row.interfaceType == interfaceid::kFsuipcSimConnect ? 20 : 200);
}

INSTANTIATE_TEST_SUITE_P(
    Simulators, Detected,
    testing::Values(Detection{"fsx", true, true, true, kFsxInFsuipc, 3},
                    Detection{"fsx_without_simconnect", false, true, true, kFsxInFsuipc, 1},
                    Detection{"fs2004", true, true, true, kFs2004InFsuipc, 1},
                    Detection{"without_fsuipc", true, false, true, kFsxInFsuipc, -1},
                    Detection{"not_running", true, true, false, kFsxInFsuipc, -1}),
    [](const auto& row) { return std::string(row.param.name); });

// --- direct wind control

class DirectWind : public Ways
{
protected:
    void beginFlight(const Way& way)
    {
        settings->setFsWindDwc(true);
        settings->setGustySurfaceWind(false);
        begin(way);
        connectSimulator();
        download();
        ASSERT_EQ(poll(), 0);
    }
    void step()
    {
        constexpr int kJustOverASecond = 1001;
        timer("timerWeather").start();
        tick(std::chrono::milliseconds(kJustOverASecond));
        settle();
    }
};

TEST_F(DirectWind, FollowsTheRealWindByItsLimitsAndKeepsIt)
{
    constexpr double kMostAStep = 1.02; // the bridge's text has two decimals
    for (const Way& way : {kFsuipc, kBoth, Way{"bridged", interfaceid::kBridge, 1, 3}}) {
        SCOPED_TRACE(way.name);
        beginFlight(way);
        step(); // sets the weather and searches the reports
        int moved = 0;
        aviation::weather::Wind before;
        for (int i = 0; i < 8; ++i) {
            step();
            const auto wind = state().wind;
            if (!wind) {
                continue;
            }
            const double turn = aviation::AngleDifference(static_cast<double>(wind->Dir),
                                                          static_cast<double>(before.Dir));
            EXPECT_LE(std::abs(turn), kMostAStep);
            EXPECT_LE(std::abs(static_cast<double>(wind->Speed - before.Speed)), kMostAStep);
            moved += wind->Speed > before.Speed ? 1 : 0;
            before = *wind;
        }
        EXPECT_GT(moved, 4);
        EXPECT_FALSE(view.targetWinds.isEmpty());
        controller.reset();
    }
}

TEST_F(DirectWind, GoesAsLayersToXPlaneAndNotAtAllThroughSimConnectAlone)
{
    beginFlight(kBridge);
    step();
    for (int i = 0; i < 4; ++i) {
        step();
    }
    EXPECT_GT(asked(command::kWrite, message::kWindLayers), 1);
    EXPECT_EQ(state().windLayers.size(), 3U);
    controller.reset();

    beginFlight(kSimConnect);
    for (int i = 0; i < 4; ++i) {
        step();
    }
    EXPECT_EQ(jobs[connectjob::kWindAtAircraft], 0);
    EXPECT_FALSE(state().wind.has_value());
}

} // namespace

#include "aviation/Angles.h"
#include "tests/e2e/WayFixture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

/// One flight and one weather through every way in.
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

class SameWeatherTest : public WaysTest
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
/// way gives with another resolution.
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

TEST_F(SameWeatherTest, AsRecordsOverBridgeAndFsuipc)
{
    const auto bridged = carry({kBridgedRecords, 0, connectjob::kSetWeather}).weatherRecords;
    ASSERT_GT(bridged.size(), 2U);
    const auto written = carry({kFsuipc, 0, connectjob::kSetWeather}).weatherRecords;
    ASSERT_EQ(written.size(), bridged.size());
    EXPECT_TRUE(std::equal(written.begin(), written.end(), bridged.begin(), sameBytes));
}

TEST_F(SameWeatherTest, AsObservationsOverBridgeSimConnectAndBoth)
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

TEST_F(SameWeatherTest, AsThemeOverBridgeSimConnectAndBoth)
{
    const SimulatorState bridged =
        carry({{"bridged", interfaceid::kBridge, 2, 3}, 1, connectjob::kSetTheme});
    ASSERT_GT(bridged.lastFile.size(), 1000);
    for (const Way& way : {kSimConnect, kBoth}) {
        const SimulatorState taken = carry({way, 1, connectjob::kSetTheme});
        ASSERT_FALSE(taken.themes.isEmpty()) << way.name;
        EXPECT_TRUE(taken.themes.back().endsWith(QLatin1String("cirrilon.WTB"))) << way.name;
        EXPECT_EQ(clients.lastFolder(), path("simulator").toStdString()) << "its library is there";
        EXPECT_TRUE(
            sameTheme(read(themeFolder() + QStringLiteral("/cirrilon.WTB")), bridged.lastFile))
            << way.name;
    }
}

// --- the aircraft

class SameAircraftTest : public WaysTest
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

TEST_F(SameAircraftTest, OnEveryWayInEveryPhase)
{
    for (const Phase phase : {Phase::Boarding, Phase::Approach}) {
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

} // namespace

#include "tests/sim/FsInterfaceSimConnectFixture.h"

#include <functional>
#include <tuple>

/// Polls, pauses and the end of the link.
using namespace answers;
using simconnect::kFailed;

namespace {

constexpr auto kPipeBroken = static_cast<simconnect::Result>(0xC000014BU);
constexpr auto kPipeClosed = static_cast<simconnect::Result>(0xC00000B0U);

} // namespace

TEST_F(FsInterfaceSimConnectTest, PauseIsCheckedAtEveryEleventhRequest)
{
    connectSimulator();
    std::uint32_t state = 1;
    script.onCall = [&](const std::string& call) {
        if (call.rfind("Request", 0) == 0) {
            script.messages.push_back(aircraftAnswer());
        } else if (call == "State 10 Sim") {
            script.messages.push_back(stateMessage(state));
        }
    };
    const std::int64_t before = clock.sleptMs();
    aviation::structs::AircraftData data;
    for (int request = 0; request < 22; ++request) {
        EXPECT_EQ(sim.GetAircraftData(data), 0);
        EXPECT_EQ(script.count("State"), request < 11 ? 1 : 2) << request;
    }
    for (const std::uint32_t paused : {0U, 2U, 0U}) { // asked at each request then
        state = paused;
        data.altitude = 77;
        EXPECT_EQ(sim.GetAircraftData(data), simresult::kPaused);
        EXPECT_EQ(data.altitude, 77);
    }
    state = 1;
    EXPECT_EQ(sim.GetAircraftData(data), 0);
    EXPECT_EQ(clock.sleptMs(), before) << "each wait ends with its answer";
}

TEST_F(FsInterfaceSimConnectTest, ThePauseKeyIsSeenAtOnceAndGivenBackAtOnce)
{
    connectSimulator();
    answerTo("Request", {aircraftAnswer()});
    EXPECT_EQ(poll(), 0);
    for (const auto& [value, result] : {std::pair(1, simresult::kPaused), std::pair(0, 0)}) {
        script.messages.push_back(eventMessage(simconnectid::kPauseEvent, value));
        script.messages.push_back(eventMessage(simconnectid::kSimStartEvent, 0));
        EXPECT_EQ(poll(), result);
        EXPECT_EQ(poll(), result);
    }
}

TEST_F(FsInterfaceSimConnectTest, AircraftDataNeverLag)
{
    connectSimulator();
    answerTo("State", {stateMessage(1)});
    EXPECT_EQ(poll(), simresult::kCallFailed);
    EXPECT_EQ(poll(), simresult::kCallFailed);
    EXPECT_EQ(script.count("Request"), 1) << "no second request after one that isn't answered";

    const auto at = [](double feet, double feetPerSecond = 0.0, int onGround = 0) {
        return aircraftAnswer({{"PLANE ALTITUDE", feet},
                               {"VERTICAL SPEED", feetPerSecond},
                               {"SIM ON GROUND", onGround}});
    };
    script.messages = {at(100, -2), at(200, 0, 1)}; // late
    answerTo("Request", {cloudMessage(1, 1), eventMessage(9, 9), at(300, 0, 1), at(400, 0, 1)});
    aviation::structs::AircraftData data;
    EXPECT_EQ(sim.GetAircraftData(data), 0);
    EXPECT_EQ(data.altitude, 400) << "the newest";
    EXPECT_EQ(data.landingRate, -120) << "of a late one, which alone has it";
    EXPECT_TRUE(script.messages.empty());
    EXPECT_EQ(script.count("Request"), 2);

    answerTo("Request", {exceptionMessage(1, 42)});
    EXPECT_EQ(poll(), simresult::kCallFailed);
    answerTo("Request", {at(500)});
    EXPECT_EQ(poll(), 0) << "what was refused is asked for again";
    EXPECT_EQ(altitude, 500);
}

TEST_F(FsInterfaceSimConnectTest, ASlowSimulatorGivesItsDataAndIsNotLost)
{
    constexpr std::int64_t kPollMs = 1000;
    for (const std::int64_t latency : {700, 950, 1700}) {
        sim.Disconnect();
        connectSimulator();
        std::vector<std::pair<std::int64_t, Bytes>> due;
        std::int64_t now = 0; // begin of the poll
        std::int64_t sleptBefore = clock.sleptMs();
        const auto time = [&] {
            return now + clock.sleptMs() - sleptBefore;
        };
        script.onCall = [&](const std::string& call) {
            if (call.rfind("Request", 0) == 0) {
                const auto feet = static_cast<double>(time());
                due.emplace_back(time() + latency,
                                 aircraftAnswer(Numbers{{"PLANE ALTITUDE", feet}}));
            } else if (call.rfind("State", 0) == 0) {
                due.emplace_back(time() + latency, stateMessage(1));
            }
        };
        script.onFetch = [&] {
            while (!due.empty() && due.front().first <= time()) {
                script.messages.push_back(due.front().second);
                due.erase(due.begin());
            }
        };
        int answered = 0;
        for (int poll = 0; poll < 20; ++poll, now += kPollMs, sleptBefore = clock.sleptMs()) {
            aviation::structs::AircraftData data;
            const int result = sim.GetAircraftData(data);
            EXPECT_NE(result, simresult::kTimeout) << latency << ' ' << poll;
            if (result == simresult::kNone) {
                ++answered;
                EXPECT_GE(data.altitude, now - 2 * kPollMs) << latency;
            }
        }
        EXPECT_GE(answered, 9) << latency;
        script = SimConnectScript();
    }
}

TEST_F(FsInterfaceSimConnectTest, ALandingThatCameWithTheWeatherIsGivenWithTheNextData)
{
    const auto at = [](double feetPerSecond, int onGround) {
        return aircraftAnswer({{"VERTICAL SPEED", feetPerSecond}, {"SIM ON GROUND", onGround}});
    };
    connectSimulator();
    answerTo("Observation", {at(-2, 0)});
    EXPECT_EQ(sim.SetWeatherText(QStringLiteral("EDDF")), 0);
    answerTo("Observation", {at(0, 1)});
    EXPECT_EQ(sim.SetWeatherText(QStringLiteral("EDDM")), 0);
    answerTo("Request", {at(0, 1)});
    aviation::structs::AircraftData data;
    EXPECT_EQ(sim.GetAircraftData(data), 0);
    EXPECT_EQ(data.landingRate, -120);
    EXPECT_EQ(sim.GetAircraftData(data), 0);
    EXPECT_EQ(data.landingRate, 0) << "once";
}

TEST_F(FsInterfaceSimConnectTest, AHangWhilePausedByKeyIsSeen)
{
    connectSimulator();
    script.messages = {eventMessage(simconnectid::kPauseEvent, 1)};
    answerTo("State", {stateMessage(1)});
    for (int poll = 1; poll <= 10; ++poll) {
        EXPECT_EQ(this->poll(), simresult::kPaused) << "alive, whether it answers the aircraft";
    }
    script.onCall = nullptr;
    for (int poll = 1; poll <= 5; ++poll) {
        EXPECT_EQ(this->poll(), poll < 5 ? simresult::kCallFailed : simresult::kTimeout);
    }
}

TEST_F(FsInterfaceSimConnectTest, ChecksBetweenThePollsDoNotHideAHang)
{
    connectSimulator();
    for (int poll = 1; poll <= 5; ++poll) {
        EXPECT_EQ(sim.checkLink(), 0);
        EXPECT_EQ(this->poll(), poll < 5 ? simresult::kCallFailed : simresult::kTimeout);
    }
}

TEST_F(FsInterfaceSimConnectTest, TheEndOfTheSimulatorEndsTheLink)
{
    QString text;
    aviation::structs::AircraftFuel fuel;
    aviation::structs::AircraftPayload payload;
    aviation::structs::RadioFrequencys radios;
    std::vector<std::uint8_t> map;
    const std::function<int()> operations[] = {
        [this] { return poll(); },
        [&] { return sim.GetAircraftFuel(fuel); },
        [&] { return sim.GetAircraftPayload(payload); },
        [&] { return sim.GetRadioFrequencys(radios); },
        [&] { return sim.GetWeatherAt(text, 50.0, 8.0); },
        [&] { return sim.GetCloudState({}, map); },
        [&] { return sim.SetWeatherText(QStringLiteral("EDDF")); },
        [&] { return sim.checkLink(); },
    };
    int index = 0;
    for (const auto& operation : operations) {
        sim.Disconnect();
        connectSimulator();
        answerTo("Request", {aircraftAnswer()});
        EXPECT_EQ(poll(), 0) << index;
        script.onCall = nullptr;
        script.messages = {quitMessage()};
        const std::int64_t before = clock.sleptMs();
        EXPECT_EQ(operation(), simresult::kTimeout) << index;
        EXPECT_EQ(clock.sleptMs(), before) << index++;
    }
    sim.Disconnect();
    script.messages = {quitMessage()};
    EXPECT_EQ(sim.Connect(), simresult::kNotConnected);
}

TEST_F(FsInterfaceSimConnectTest, FetchingThatFailsIsNoAnswer)
{
    connectSimulator();
    script.noMessage = kPipeClosed;
    aviation::structs::AircraftFuel fuel;
    aviation::structs::AircraftPayload payload;
    QString text;
    EXPECT_EQ(sim.GetAircraftFuel(fuel), simresult::kCallFailed);
    EXPECT_EQ(sim.GetAircraftPayload(payload), simresult::kCallFailed);
    EXPECT_EQ(sim.GetWeatherAt(text, 50.0, 8.0), simresult::kCallFailed);
    EXPECT_TRUE(said("3 (Interface SimConnect) - Dispatch HRESULT FAILED"));
}

TEST_F(FsInterfaceSimConnectTest, FivePollsThatFailInARowEndTheLink)
{
    using Change = std::function<void()>;
    const Change kinds[] = {
        [this] {
            script.results = {{"Request", kPipeBroken}};
        },
        [this] {
            script.results = {{"Request", kFailed}};
        },
        [this] { script.noMessage = kPipeClosed; }, [] {}, // no answer
    };
    for (const Change& fail : kinds) {
        sim.Disconnect();
        connectSimulator();
        for (const int failures : {4, 5}) {
            answerTo("Request", {aircraftAnswer()});
            script.messages = {aircraftAnswer()}; // of a request that is still open
            script.results.clear();
            script.noMessage = kFailed;
            EXPECT_EQ(poll(), 0);
            script.onCall = nullptr;
            fail();
            for (int failure = 1; failure <= failures; ++failure) {
                EXPECT_EQ(poll(), failure < 5 ? simresult::kCallFailed : simresult::kTimeout);
            }
        }
        EXPECT_EQ(poll(), simresult::kTimeout);
        script = SimConnectScript();
    }
    sim.Disconnect();
    connectSimulator();
    script.noMessage = kPipeClosed;
    for (int check = 1; check <= 5; ++check) {
        EXPECT_EQ(sim.checkLink() == simresult::kTimeout, check == 5);
    }
}

TEST_F(FsInterfaceSimConnectTest, AnswersToAnAircraftRequest)
{
    connectSimulator();
    const SimConnectRequest otherDefinition{0, 1};
    const Bytes other = answer(otherDefinition, simConnectAircraftDefinition());
    const char* const kFailedLine = "3 (Interface SimConnect) - Get Aircraft Data failed";
    const char* const kDispatchLine = "3 (Interface SimConnect) - Dispatch HRESULT FAILED";
    const std::vector<Bytes> cutMessages{cut(stateMessage(0)), cut(exceptionMessage(1)),
                                         cut(openMessage()), cut(cloudMessage(0, 0)),
                                         cut(aircraftAnswer(), 669)};
    /// The messages, the result, waits of 50 ms and a line, null for any.
    const std::tuple<std::vector<Bytes>, int, int, const char*> rows[] = {
        {{}, 8, 10, kFailedLine},
        {{cut(aircraftAnswer()), other, Bytes(12), Bytes(300, '\x04')}, 8, 10, nullptr},
        {{stateMessage(0)}, 19, 0, nullptr},
        {{stateMessage(0, 11), stateMessage(1)}, 8, 10, nullptr},
        {cutMessages, 8, 10, kFailedLine},
        {{cloudMessage(4096, 4096)}, 20, 0, nullptr},
        {{cloudMessage(4096, 4095), cloudMessage(9, 9, 5)}, 8, 10, nullptr},
        {{openMessage()}, 8, 10, nullptr},
        {{exceptionMessage(1)}, 8, 10, kFailedLine},
        {std::vector<Bytes>(10, Bytes(5)), 8, 10, kDispatchLine},
    };
    int index = 0;
    for (const auto& [messages, result, waits, line] : rows) {
        aviation::structs::AircraftData data;
        script.messages = {aircraftAnswer()}; // to the request before
        answerTo("Request", {aircraftAnswer()});
        ASSERT_EQ(sim.GetAircraftData(data), 0);
        data = {};
        log.clear();
        answerTo("Request", messages);
        const std::int64_t before = clock.sleptMs();
        EXPECT_EQ(sim.GetAircraftData(data), result) << index;
        EXPECT_EQ(clock.sleptMs() - before, waits * 50) << index;
        EXPECT_TRUE(line == nullptr || said(line)) << index;
        EXPECT_EQ(data.name, L"unknown") << index;
        EXPECT_EQ(log.filter(QStringLiteral("EXCEPTION")).size(), index == 8 ? 1 : 0) << index;
        ++index;
    }
    log.clear();
    aviation::structs::AircraftData data;
    EXPECT_EQ(sim.GetAircraftData(data), simresult::kCallFailed);
    EXPECT_FALSE(said(kFailedLine)) << "once until the aircraft is read again";
}

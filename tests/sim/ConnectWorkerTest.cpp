#include "sim/ConnectWorker.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "sim/ConnectJobs.h"
#include "sim/SimulatorInterfaces.h"
#include "tests/sim/ScriptedFsuipc.h"
#include "tests/sim/SimConnectAnswers.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeFsInterface.h"
#include "tests/support/FakeRandom.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QTest>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <tuple>
#include <utility>

namespace {

constexpr int kLimitMs = 5000;

struct Finish
{
    int id;
    QString name;
    int error;
};

class ConnectWorkerTest : public ::testing::Test
{
protected:
    ConnectWorkerTest()
    {
        settings.setInterfaceType(aviation::interfaceid::kBridge);
        makeWorker(m_fakes);
    }
    void TearDown() override { worker.reset(); }

    void makeWorker(FsInterfaceFactory& interfaces)
    {
        worker = std::make_unique<ConnectWorker>(settings, interfaces, stop);
        QObject::connect(worker.get(), &ConnectWorker::sigJobFinish, &context,
                         [this](int id, const QString& name, int error) {
                             finished.push_back({id, name, error});
                         });
        QObject::connect(worker.get(), &ConnectWorker::sigOutputDebugString, &context,
                         [this](const QString& text, int level) {
                             if (level != loglevel::kDebug) {
                                 log.append(QStringLiteral("%1 ").arg(level) + text);
                             }
                         });
        QObject::connect(
            worker.get(), &ConnectWorker::sigProgressBar, &context,
            [this](qlonglong, qlonglong, const QString& text) { progress.append(text); });
    }

    void post(int id) { worker->AddJob(Job(id, QString())); }
    /// The log since the last call.
    std::string logged() { return std::exchange(log, {}).join(QLatin1Char('|')).toStdString(); }
    /// The calls since the last ones were cleared, or those that begin so.
    std::string calls(const char* start = "") const
    {
        return simulator.calls(QLatin1String(start)).join(QLatin1Char(',')).toStdString();
    }
    /// Lets the worker run until so many jobs have finished since the last call.
    bool finish(std::size_t jobs = 1)
    {
        finished.clear();
        worker->start();
        // No events while it runs: the thread sanitizer can't see how Qt guards the posted ones.
        EXPECT_TRUE(worker->wait(kLimitMs));
        worker->join();
        return QTest::qWaitFor([&] { return finished.size() >= jobs && worker->isFinished(); },
                               kLimitMs);
    }
    int run(const Job& job)
    {
        worker->AddJob(job);
        return finish() ? finished.back().error : -1000;
    }
    int run(int id, const QString& name = QString()) { return run(Job(id, name)); }
    /// A connected worker with nothing recorded.
    void connectWorker(aviation::FsId fs = aviation::fsid::kFsx, int interfaceId = 0)
    {
        simulator.answer([&](FakeSimulator::Answers& a) {
            a.fsVersion = fs;
            a.interfaceId = interfaceId;
        });
        ASSERT_EQ(run(connectjob::kConnect), 0);
        simulator.clearCalls();
        log.clear();
    }

    FakeClock clock{2024, 6, 1, 12};
    FakeRandom random;
    Settings settings{QString(), random};
    StopFlag stop;
    FakeSimulator simulator;
    FakeInterfaceFactory m_fakes{simulator};
    std::unique_ptr<ConnectWorker> worker;
    std::vector<Finish> finished;
    QStringList log;
    QStringList progress;
    QObject context; ///< what is still queued for a test dies with it
};

/// Over the interface to a scripted simulator.
class ConnectWorkerSimConnectTest : public ConnectWorkerTest
{
protected:
    ConnectWorkerSimConnectTest()
    {
        settings.setInterfaceType(aviation::interfaceid::kSimConnect);
        makeWorker(m_interfaces);
    }

    ScriptedBothClients clients;
    SimulatorInterfaces m_interfaces{settings, stop, clients};
};

} // namespace

TEST_F(ConnectWorkerTest, ConnectsAndDisconnects)
{
    simulator.answer([](FakeSimulator::Answers& a) {
        a.fsVersion = 13;
        a.fsName = QStringLiteral("<X>");
        a.interfaceId = 8;
    });
    EXPECT_EQ(run(connectjob::kConnect), 0);
    EXPECT_TRUE(worker->IsConnected());
    EXPECT_EQ(worker->fsVersion(), 13);
    EXPECT_EQ(worker->fsName(), QStringLiteral("<X>"));
    EXPECT_EQ(worker->interfaceType(), 8);
    EXPECT_EQ(logged(), "1 (ConnectWorker) - Connected|1 FS: &lt;X&gt;, Interface: Fake interface");
    EXPECT_EQ(run(connectjob::kDisconnect), 0);
    EXPECT_FALSE(worker->IsConnected());
    EXPECT_EQ(calls(), "create 4,Connect,GetFsVersion,GetInterface,Disconnect");
    EXPECT_EQ(run(connectjob::kDisconnect), simresult::kNoInterface);
}

TEST_F(ConnectWorkerTest, FailedConnects)
{
    const std::tuple<int, const char*, bool> rows[] = {
        {simresult::kNotConnected, "3 (ConnectWorker) - not connected, Sim not Found", false},
        {simresult::kWrongApiVersion,
         "3 FS or Server not found Error Code: 100 Error number not found", false},
        {simresult::kAlreadyConnected, "1 FS: Fake simulator, Interface: Fake interface", true}};
    for (const auto& [code, line, isConnected] : rows) {
        simulator.setResults(QStringLiteral("Connect"), {code});
        EXPECT_EQ(run(connectjob::kConnect), code);
        EXPECT_EQ(log.last().toStdString(), line);
        EXPECT_EQ(worker->IsConnected(), isConnected) << code;
    }
    EXPECT_EQ(calls("create"), "create 4,create 4") << "that of the second try stays";
    settings.setInterfaceType(9);
    run(connectjob::kDisconnect);
    EXPECT_EQ(run(connectjob::kConnect), simresult::kNotImplemented);
}

TEST_F(ConnectWorkerTest, DetectsTheInterface)
{
    settings.setInterfaceType(aviation::interfaceid::kAuto);
    const std::tuple<aviation::FsId, std::vector<int>, const char*> rows[] = {
        {2, {0, 2}, "create 1"},
        {3, {0, 0, 2}, "create 1,create 3"},
        {6, {0, 1, 0}, "create 1,create 3,create 1"},
        {10, {0, 2}, "create 1"},
        {3, {1, 0}, "create 1,create 2"}, // without FSUIPC
        {3, {1, 1}, "create 1,create 2"},
    };
    for (const auto& [fs, codes, objects] : rows) {
        simulator.clearCalls();
        simulator.answer([version = fs](FakeSimulator::Answers& a) { a.fsVersion = version; });
        simulator.setResults(QStringLiteral("Connect"), codes);
        EXPECT_EQ(run(connectjob::kConnect), codes.back()) << fs;
        EXPECT_EQ(calls("create"), objects);
        run(connectjob::kDisconnect);
    }
}

TEST_F(ConnectWorkerTest, JobsWithoutInterfaceFinishWith14)
{
    for (int id = 2; id <= 46; ++id) {
        const bool nothing =
            id == 2 || id == 18 || id == 20 || id == 28 || id == 31 || id == 34 || id > 44;
        EXPECT_EQ(run(id), nothing ? 0 : simresult::kNoInterface) << id;
    }
    EXPECT_TRUE(simulator.calls().isEmpty());
}

TEST_F(ConnectWorkerTest, EachJobCallsItsOperation)
{
    connectWorker();
    const XPlaneWindLayer layer;
    /// The job, its result, the call and the name at the end, null for as posted.
    const std::tuple<Job, int, const char*, const char*> rows[] = {
        {Job(14, QStringLiteral("a.WTB")), 0, "SendWeatherFile a.WTB", nullptr},
        {Job(15, XPlaneWeather(), QString()), 0, "SetWeatherData 80000 3", nullptr},
        {Job(16, XPlaneWeather(), QString()), 0, "SetWeatherData 80000 3", nullptr},
        {Job(19, {layer, layer}, QStringLiteral("w")), 0, "SetWindLayers 2", nullptr},
        {Job(21, QStringLiteral("9000")), 0, "SetVisibility 9000", nullptr},
        {Job(22, QString(), QByteArray(7, 'x')), 0, "SetGlobalWindFile 7", nullptr},
        {Job(23, QString(), QByteArray(8, 'x')), 0, "SetTurbulenceWindFile 8", nullptr},
        {Job(24, QString()), 0, "ActivateWeather", nullptr},
        {Job(25, QString()), 0, "ClearWeather", nullptr},
        {Job(26, QStringLiteral("ABCD:n:1.5:-2:30")), 0, "CreateStation ABCD n 1.5 -2 30", nullptr},
        {Job(27, QStringLiteral("ABCD:n:1.5:-2")), 0, "", nullptr},
        {Job(29, QStringLiteral("50.5;8")), 0, "GetWeatherAt 50.5 8",
         "EDDF 011150Z 24012KT 9999 Q1015"},
        {Job(29, QStringLiteral("50.5")), simresult::kRefused, "", nullptr},
        {Job(30, QStringLiteral("50:3")), simresult::kNotImplemented, "", nullptr},
        {Job(32, QStringLiteral("f.pln")), 0, "LoadFlightPlan f.pln", nullptr},
        {Job(33, QStringLiteral("%1 <b>")), 0, "SendText %1 <b> 5", nullptr},
        {Job(35, QStringLiteral("360:400")), 0,
         "SetWindAtAircraft Dir=360.00:Speed=400.00:Gust=-1.00", nullptr},
        {Job(35, QStringLiteral("361:10")), simresult::kWrongArguments, "", nullptr},
        {Job(35, QStringLiteral("10:401")), simresult::kWrongArguments, "", nullptr},
        {Job(35, QStringLiteral("nan:10")), simresult::kWrongArguments, "", nullptr},
        {Job(35, QStringLiteral("10")), simresult::kWrongArguments, "", nullptr},
        {Job(37, QString()), 0, "SetRadioFrequencys 11800", nullptr},
        {Job(38, QString()), 0, "GetDateTime", "01.01.1970 00:00:00"},
        {Job(39, QString()), 0, "RequestServerConfig", "[main]"},
        {Job(40, QStringLiteral("10.0.0.1")), 0, "AnnounceAddress 10.0.0.1", "0"},
        {Job(41, QString()), simresult::kNotImplemented, "", nullptr},
        {Job(44, QString()), simresult::kWrongFsVersion, "", nullptr},
    };
    for (const auto& [job, result, call, name] : rows) {
        simulator.clearCalls();
        EXPECT_EQ(run(job), result) << job.id;
        EXPECT_EQ(calls(), call) << job.id;
        EXPECT_EQ(finished.back().name, name == nullptr ? job.name : QString::fromLatin1(name));
    }
    settings.setFsMessage(false);
    settings.setInterfaceType(aviation::interfaceid::kSimConnect);
    simulator.clearCalls();
    EXPECT_EQ(run(connectjob::kSendText, QStringLiteral("silent")), 0);
    EXPECT_EQ(run(connectjob::kAnnounceAddress), simresult::kNoInterface);
    EXPECT_EQ(run(connectjob::kServerConfig), simresult::kNotImplemented);
    run(connectjob::kSetTheme, QStringLiteral("b.WTB"));
    EXPECT_EQ(calls(), "SetWeatherTheme b.WTB");
}

TEST_F(ConnectWorkerTest, AFailedReadEmptiesTheRecord)
{
    connectWorker();
    simulator.answer([](FakeSimulator::Answers& a) { a.fuel.tanks.resize(3); });
    run(connectjob::kGetFuel);
    EXPECT_EQ(worker->fuel().tanks.size(), 3U);
    simulator.setResults(QStringLiteral("GetAircraftFuel"), {10});
    run(connectjob::kGetFuel);
    EXPECT_TRUE(worker->fuel().tanks.empty());
    EXPECT_EQ(logged(), "3 (ConnectWorker) get aircraft fuel failed, code: 10");
}

TEST_F(ConnectWorkerTest, PauseIsSilentAndAFaultIsToldOnce)
{
    connectWorker();
    const std::vector<int> codes{19, 10, 10, 0, 10};
    simulator.setResults(QStringLiteral("GetAircraftData"), codes);
    for (const int expected : codes) {
        EXPECT_EQ(run(connectjob::kAircraftData), expected);
    }
    const std::string line = "3 (ConnectWorker) get aircraft data failed: Error number not found";
    EXPECT_EQ(logged(), line + '|' + line);
}

TEST_F(ConnectWorkerTest, SetsObservationsOneByOne)
{
    connectWorker(aviation::fsid::kFsx, aviation::interfaceid::kSimConnect);
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kNoWeather);
    EXPECT_EQ(logged(), "3 (ConnectWorker) - Set Weather failed. Weather data is empty");
    worker->setMetars(
        {QStringLiteral("AAAA 1"), QStringLiteral("BBBB <2>"), QStringLiteral("CCCC 3")});
    simulator.setResults(QStringLiteral("SetWeatherText"), {0, 8, 0});
    EXPECT_EQ(run(connectjob::kSetWeather), 0) << "the last call decides";
    EXPECT_EQ(calls(), "SetCustomWeatherMode,SetWeatherText AAAA 1,SetWeatherText BBBB <2>,"
                       "SetWeatherText CCCC 3");
    EXPECT_EQ(logged(), "1 (ConnectWorker) - Set Weather AAAA|"
                        "3 (ConnectWorker) - Set Weather failed. BBBB &lt;2&gt;|"
                        "1 (ConnectWorker) - Set Weather CCCC");
    EXPECT_EQ(progress.join(QLatin1Char('|')).toStdString(),
              "Set Weather AAAA, 1/3|Set Weather BBBB, 2/3|Set Weather CCCC, 3/3|"
              "Set Weather success");
    EXPECT_EQ(clock.sleptMs(), 300);
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kNoWeather) << "set weather is used up";
}

TEST_F(ConnectWorkerTest, UnansweredWeatherIsNotClaimed)
{
    connectWorker();
    simulator.answer([](FakeSimulator::Answers& a) { a.writeAnswered = false; });
    worker->setMetars({QStringLiteral("AAAA 1"), QStringLiteral("BBBB 2")});
    EXPECT_EQ(run(connectjob::kSetWeather), 0);
    EXPECT_EQ(run(Job(15, XPlaneWeather(), QString())), 0);
    EXPECT_EQ(run(Job(22, QString(), QByteArray(7, 'x'))), 0);
    EXPECT_EQ(logged(), "") << "nobody has said that it is set";
    EXPECT_EQ(progress.back(), QString()) << "nor is it shown";
    EXPECT_FALSE(worker->weatherAnswered());
    EXPECT_EQ(simulator.calls(QStringLiteral("SetWeatherText")).size(), 2)
        << "it is sent all the same";

    simulator.answer([](FakeSimulator::Answers& a) { a.writeAnswered = true; });
    EXPECT_EQ(run(Job(15, XPlaneWeather(), QString())), 0);
    EXPECT_EQ(logged(), "1 (ConnectWorker) - Set Weather ");
    EXPECT_TRUE(worker->weatherAnswered());
}

TEST_F(ConnectWorkerTest, WeatherThatIsRefusedIsNotClaimed)
{
    const QString success = QStringLiteral("Set Weather success");
    const std::pair<std::vector<int>, bool> rows[] = {
        {{8, 8}, false}, {{11, 11}, false}, {{0, 8}, true}, {{8, 0}, true}};
    for (const aviation::FsId fs : {aviation::fsid::kFsx, aviation::fsid::kXPlaneId8}) {
        for (const auto& [codes, claimed] : rows) {
            connectWorker(fs);
            worker->setMetars(std::vector<QString>(codes.size(), QStringLiteral("AAAA 1")));
            simulator.setResults(QStringLiteral("SetWeatherText"), codes);
            run(connectjob::kSetWeather);
            const bool asOneText = fs == aviation::fsid::kXPlaneId8;
            EXPECT_EQ(progress.back() == success, asOneText ? codes[0] == 0 : claimed) << codes[0];
            worker->setWeatherRecords(std::vector<NewWeather>(codes.size()));
            simulator.setResults(QStringLiteral("SetWeatherRecord"), codes);
            run(connectjob::kSetWeather);
            EXPECT_EQ(progress.back() == success, claimed) << codes[0];
            run(connectjob::kDisconnect);
        }
    }
}

TEST_F(ConnectWorkerTest, ALostLinkEndsTheRunOfStations)
{
    connectWorker();
    const std::vector<QString> metars(3, QStringLiteral("AAAA 1"));
    simulator.setResults(QStringLiteral("SetWeatherText"), {0, simresult::kTimeout});
    worker->setMetars(metars);
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kTimeout);
    EXPECT_EQ(simulator.calls(QStringLiteral("SetWeatherText")).size(), 2);
    EXPECT_EQ(progress.back(), QString()) << "no success";

    connectWorker();
    simulator.setResults(QStringLiteral("SetWeatherRecord"), {simresult::kTimeout});
    worker->setWeatherRecords(std::vector<NewWeather>(3));
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kTimeout);
    EXPECT_EQ(simulator.calls(QStringLiteral("SetWeatherRecord")).size(), 1);

    // A write without a reply is a success; whether the other end is gone shows the look at it.
    connectWorker();
    simulator.setResults(QStringLiteral("SetWeatherText"), {0});
    simulator.setResults(QStringLiteral("CheckLink"), {0, simresult::kTimeout});
    simulator.answer([](FakeSimulator::Answers& a) { a.writeAnswered = false; });
    worker->setMetars(metars);
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kTimeout);
    EXPECT_EQ(simulator.calls(QStringLiteral("SetWeatherText")).size(), 2);
}

TEST_F(ConnectWorkerSimConnectTest, ALinkThatIsCutWithoutAWordEndsTheRunOfStations)
{
    constexpr auto kPipeBroken = static_cast<simconnect::Result>(0xC000014BU);
    SimConnectScript& script = clients.simConnectScript;
    script.messages = {answers::openMessage()};
    ASSERT_EQ(run(connectjob::kConnect), 0);
    script.results = {{"Observation", simconnect::kFailed}};
    worker->setMetars(std::vector<QString>(9, QStringLiteral("AAAA 1")));
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kCallFailed);
    EXPECT_EQ(script.count("Observation"), 9) << "of texts that are refused all are tried";

    script.calls.clear();
    log.clear();
    script.results = {{"", kPipeBroken}};
    script.noMessage = kPipeBroken;
    worker->setMetars(std::vector<QString>(300, QStringLiteral("AAAA 1")));
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kTimeout);
    EXPECT_EQ(script.count("Observation"), 5);
    EXPECT_EQ(log.filter(QStringLiteral("Set Weather failed")).size(), 5);
    EXPECT_EQ(run(connectjob::kAircraftData), simresult::kNoInterface) << "for the next connect";
}

TEST_F(ConnectWorkerTest, SetsOneTextForXPlane)
{
    connectWorker(aviation::fsid::kXPlaneId8);
    worker->setWinds({QStringLiteral("W1"), QStringLiteral("W2")});
    for (int round = 0; round < 2; ++round) { // the winds stay
        worker->setMetars({QStringLiteral("AAAA 1")});
        simulator.clearCalls();
        EXPECT_EQ(run(connectjob::kSetXPlaneFiles), 0);
        EXPECT_EQ(calls(), "SetWeatherText -----METAR-----\r\nAAAA 1\n-----WIND-----\r\nW1\nW2\n");
    }
}

TEST_F(ConnectWorkerTest, SetsRecordsAndRefreshesFs2004)
{
    connectWorker(aviation::fsid::kFs2004, aviation::interfaceid::kFsuipc);
    worker->setMetars({QStringLiteral("KEPT 1")});
    std::vector<NewWeather> records(2);
    records[0].setIcao(L"AAAA");
    records[1].setIcao(L"BBBB");
    worker->setWeatherRecords(records);
    simulator.setResults(QStringLiteral("SetWeatherRecord"), {8, 0});
    EXPECT_EQ(run(connectjob::kSetWeather), 0);
    EXPECT_EQ(calls(), "SetWeatherRecord AAAA,SetWeatherRecord BBBB,WriteWeatherCommand 256");
    EXPECT_EQ(logged(), "3 Set Weather failed. AAAA|1 Set Weather BBBB");
    EXPECT_EQ(run(connectjob::kSetWeather), 0);
    EXPECT_EQ(calls("SetWeatherText"), "SetWeatherText KEPT 1")
        << "records leave the observations alone";
}

TEST_F(ConnectWorkerTest, CloudMapAsksForABoxAroundTheAircraft)
{
    connectWorker(aviation::fsid::kFsx, aviation::interfaceid::kSimConnect);
    simulator.answer([](FakeSimulator::Answers& a) {
        a.aircraft.altitude = 10000;
        a.clouds = {1, 2, 3};
    });
    run(connectjob::kAircraftData);
    simulator.setResults(QStringLiteral("GetCloudState"), {simresult::kCloudReply});
    EXPECT_EQ(run(connectjob::kCloudMap, QStringLiteral("50:3")), simresult::kCloudReply);
    EXPECT_EQ(simulator.calls().last(), QStringLiteral("GetCloudState 9999 10005"));
    EXPECT_EQ(worker->cloudState(), (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_EQ(run(connectjob::kCloudMap, QStringLiteral("50")), simresult::kNotImplemented);
}

TEST_F(ConnectWorkerTest, LostConnectionLeavesTheQueue)
{
    connectWorker();
    simulator.setResults(QStringLiteral("ClearWeather"), {simresult::kTimeout});
    post(connectjob::kClearWeather);
    post(connectjob::kActivateWeather);
    ASSERT_TRUE(finish(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.size(), 1U);
    EXPECT_EQ(worker->queuedJobs(), 1);
    EXPECT_FALSE(worker->isRunning());
    EXPECT_EQ(calls(), "ClearWeather,Disconnect");
    EXPECT_TRUE(worker->IsConnected()) << "until the disconnect that follows";
    post(connectjob::kDisconnect);
    ASSERT_TRUE(finish(2));
    for (const Finish& job : finished) {
        EXPECT_EQ(job.error, simresult::kNoInterface) << job.id;
    }
    EXPECT_FALSE(worker->IsConnected());
}

TEST_F(ConnectWorkerTest, AnAnswerToALostConnectionIsNotLeftBehind)
{
    connectWorker();
    simulator.setResults(QStringLiteral("ClearWeather"), {simresult::kTimeout});
    std::atomic<bool> posted{false};
    QObject::connect(
        worker.get(), &ConnectWorker::sigJobFinish, worker.get(),
        [&] {
            if (!posted.exchange(true)) {
                post(connectjob::kNotImplemented);
            }
        },
        Qt::DirectConnection);
    post(connectjob::kClearWeather);
    worker->start();
    EXPECT_TRUE(QTest::qWaitFor([this] { return finished.size() == 2; }, kLimitMs));
}

TEST_F(ConnectWorkerTest, EndsInTheMiddleOfAJob)
{
    connectWorker();
    QSemaphore begun;
    simulator.setHook([&](const QString& operation) {
        if (operation == QStringLiteral("SetWeatherText")) {
            begun.release();
            QThread::yieldCurrentThread();
        }
    });
    worker->setMetars(std::vector<QString>(1'000'000, QStringLiteral("AAAA 1")));
    post(connectjob::kSetWeather);
    worker->start();
    ASSERT_TRUE(begun.tryAcquire(1, kLimitMs));
    QElapsedTimer timer;
    timer.start();
    worker.reset();
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_LT(simulator.calls(QStringLiteral("SetWeatherText")).size(), 1'000'000);
}

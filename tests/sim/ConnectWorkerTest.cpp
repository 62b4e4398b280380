#include "sim/ConnectWorker.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "sim/BridgeFrame.h"
#include "sim/ConnectJobs.h"
#include "sim/SimulatorInterfaces.h"
#include "tests/sim/LoopbackBridge.h"
#include "tests/sim/ScriptedFsuipc.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeFsInterface.h"
#include "tests/support/FakeRandom.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
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
    ConnectWorkerTest() { makeWorker(m_fakes); }

    void makeWorker(FsInterfaceFactory& interfaces)
    {
        settings.setInterfaceType(aviation::interfaceid::kBridge);
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
    void TearDown() override { worker.reset(); }

    void post(int id, const QString& name = QString()) { worker->AddJob(Job(id, name)); }
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

NewWeather record(const wchar_t* icao)
{
    NewWeather weather;
    weather.setIcao(icao);
    return weather;
}

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
    EXPECT_EQ(log, (QStringList{QStringLiteral("1 (ConnectWorker) - Connected"),
                                QStringLiteral("1 FS: &lt;X&gt;, Interface: Fake interface")}));
    EXPECT_EQ(run(connectjob::kDisconnect), 0);
    EXPECT_FALSE(worker->IsConnected());
    EXPECT_EQ(simulator.calls(),
              (QStringList{QStringLiteral("create 4"), QStringLiteral("Connect"),
                           QStringLiteral("GetFsVersion"), QStringLiteral("GetInterface"),
                           QStringLiteral("Disconnect")}));
    EXPECT_EQ(run(connectjob::kDisconnect), simresult::kNoInterface);
}

TEST_F(ConnectWorkerTest, FailedConnects)
{
    const QString connectCall = QStringLiteral("Connect");
    simulator.setResults(connectCall, {simresult::kNotConnected});
    EXPECT_EQ(run(connectjob::kConnect), simresult::kNotConnected);
    EXPECT_EQ(log.last(), QStringLiteral("3 (ConnectWorker) - not connected, Sim not Found"));
    simulator.setResults(connectCall, {simresult::kWrongApiVersion});
    EXPECT_EQ(run(connectjob::kConnect), simresult::kWrongApiVersion);
    EXPECT_EQ(log.last(),
              QStringLiteral("3 FS or Server not found Error Code: 100 Error number not found"));
    EXPECT_FALSE(worker->IsConnected());
    simulator.setResults(connectCall, {simresult::kAlreadyConnected});
    EXPECT_EQ(run(connectjob::kConnect), simresult::kAlreadyConnected);
    EXPECT_TRUE(worker->IsConnected());
    EXPECT_EQ(simulator.calls(QStringLiteral("create")).size(), 2)
        << "the object of the second try stays for the third";
    settings.setInterfaceType(9);
    run(connectjob::kDisconnect);
    EXPECT_EQ(run(connectjob::kConnect), simresult::kNotImplemented);
}

TEST_F(ConnectWorkerTest, DetectsTheInterface)
{
    settings.setInterfaceType(aviation::interfaceid::kAuto);
    const struct
    {
        aviation::FsId fs;
        std::vector<int> codes;
        const char* objects;
    } rows[] = {
        {2, {0, 2}, "create 1"},
        {3, {0, 0, 2}, "create 1,create 3"},
        {6, {0, 1, 0}, "create 1,create 3,create 1"},
        {10, {0, 2}, "create 1"},
        {3, {13, 0}, "create 1"},
    };
    for (const auto& row : rows) {
        simulator.clearCalls();
        simulator.answer([&](FakeSimulator::Answers& a) { a.fsVersion = row.fs; });
        simulator.setResults(QStringLiteral("Connect"), row.codes);
        EXPECT_EQ(run(connectjob::kConnect), row.codes.back()) << row.fs;
        EXPECT_EQ(simulator.calls(QStringLiteral("create")).join(QLatin1Char(',')).toStdString(),
                  row.objects);
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
    settings.setSimVersion(13);
    const XPlaneWindLayer layer;
    const struct
    {
        Job job;
        int result;
        const char* call;
        const char* name; ///< null: as posted
    } rows[] = {
        {Job(14, QStringLiteral("a.WTB")), 0, "SendWeatherFile a.WTB", nullptr},
        {Job(15, XPlaneWeather(), QString()), 0, "SetWeatherData 80000 13", nullptr},
        {Job(16, XPlaneWeather(), QString()), 0, "SetWeatherData 80000 13", nullptr},
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
    for (const auto& row : rows) {
        simulator.clearCalls();
        EXPECT_EQ(run(row.job), row.result) << row.job.id;
        EXPECT_EQ(simulator.calls().join(QLatin1Char(',')).toStdString(), row.call) << row.job.id;
        EXPECT_EQ(finished.back().name,
                  row.name == nullptr ? row.job.name : QString::fromLatin1(row.name));
    }
    settings.setFsMessage(false);
    settings.setInterfaceType(aviation::interfaceid::kSimConnect);
    simulator.clearCalls();
    EXPECT_EQ(run(connectjob::kSendText, QStringLiteral("silent")), 0);
    EXPECT_EQ(run(connectjob::kAnnounceAddress), simresult::kNoInterface);
    EXPECT_EQ(run(connectjob::kServerConfig), simresult::kNotImplemented);
    run(connectjob::kSetTheme, QStringLiteral("b.WTB"));
    EXPECT_EQ(simulator.calls(), QStringList{QStringLiteral("SetWeatherTheme b.WTB")});
}

TEST_F(ConnectWorkerTest, CopiesRecordsInAndOut)
{
    connectWorker();
    simulator.answer([](FakeSimulator::Answers& a) {
        a.aircraft.altitude = 1000;
        a.fuel.tanks.resize(3);
        a.payload.stations.resize(2);
        a.radios.adf = 400;
    });
    run(connectjob::kAircraftData);
    run(connectjob::kGetFuel);
    run(connectjob::kEditorGetPayload);
    run(connectjob::kGetRadios);
    EXPECT_EQ(worker->aircraftData().altitude, 1000);
    EXPECT_EQ(worker->fuel().tanks.size(), 3U);
    EXPECT_EQ(worker->payload().stations.size(), 2U);
    EXPECT_EQ(worker->radios().adf, 400);

    simulator.setResults(QStringLiteral("GetAircraftFuel"), {10});
    run(connectjob::kGetFuel);
    EXPECT_TRUE(worker->fuel().tanks.empty());
    EXPECT_EQ(log,
              QStringList{QStringLiteral("3 (ConnectWorker) get aircraft fuel failed, code: 10")});
    worker->setFuel({{aviation::structs::FuelTank()}, 6.7});
    run(connectjob::kSetFuel);
    EXPECT_EQ(simulator.calls().last(), QStringLiteral("SetAircraftFuel 1"));
}

TEST_F(ConnectWorkerTest, PauseIsSilentAndAFaultIsToldOnce)
{
    connectWorker();
    simulator.setResults(QStringLiteral("GetAircraftData"), {19, 10, 10, 0, 10});
    for (const int expected : {19, 10, 10, 0, 10}) {
        EXPECT_EQ(run(connectjob::kAircraftData), expected);
    }
    const QString line =
        QStringLiteral("3 (ConnectWorker) get aircraft data failed: Error number not found");
    EXPECT_EQ(log, (QStringList{line, line}));
}

TEST_F(ConnectWorkerTest, SetsObservationsOneByOne)
{
    connectWorker(aviation::fsid::kFsx, aviation::interfaceid::kSimConnect);
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kNoWeather);
    EXPECT_EQ(log, QStringList{QStringLiteral(
                       "3 (ConnectWorker) - Set Weather failed. Weather data is empty")});
    log.clear();
    worker->setMetars(
        {QStringLiteral("AAAA 1"), QStringLiteral("BBBB <2>"), QStringLiteral("CCCC 3")});
    simulator.setResults(QStringLiteral("SetWeatherText"), {0, 13, 0});
    EXPECT_EQ(run(connectjob::kSetWeather), 0) << "the last call decides";
    EXPECT_EQ(simulator.calls(), (QStringList{QStringLiteral("SetCustomWeatherMode"),
                                              QStringLiteral("SetWeatherText AAAA 1"),
                                              QStringLiteral("SetWeatherText BBBB <2>"),
                                              QStringLiteral("SetWeatherText CCCC 3")}));
    EXPECT_EQ(log,
              (QStringList{QStringLiteral("1 (ConnectWorker) - Set Weather AAAA"),
                           QStringLiteral("3 (ConnectWorker) - Set Weather failed. BBBB &lt;2&gt;"),
                           QStringLiteral("1 (ConnectWorker) - Set Weather CCCC")}));
    EXPECT_EQ(progress, (QStringList{QStringLiteral("Set Weather AAAA, 1/3"),
                                     QStringLiteral("Set Weather BBBB, 2/3"),
                                     QStringLiteral("Set Weather CCCC, 3/3"),
                                     QStringLiteral("Set Weather success")}));
    EXPECT_EQ(clock.sleptMs(), 300);
    EXPECT_EQ(run(connectjob::kSetWeather), simresult::kNoWeather) << "set weather is used up";
}

TEST_F(ConnectWorkerTest, SetsOneTextForXPlane)
{
    connectWorker(aviation::fsid::kXPlaneId8);
    worker->setWinds({QStringLiteral("W1"), QStringLiteral("W2")});
    for (int round = 0; round < 2; ++round) { // the winds stay
        worker->setMetars({QStringLiteral("AAAA 1")});
        simulator.clearCalls();
        EXPECT_EQ(run(connectjob::kSetXPlaneFiles), 0);
        EXPECT_EQ(simulator.calls(),
                  QStringList{QStringLiteral("SetWeatherText -----METAR-----\r\nAAAA 1\n"
                                             "-----WIND-----\r\nW1\nW2\n")});
    }
}

TEST_F(ConnectWorkerTest, SetsRecordsAndRefreshesFs2004)
{
    connectWorker(aviation::fsid::kFs2004, aviation::interfaceid::kFsuipc);
    worker->setMetars({QStringLiteral("KEPT 1")});
    worker->setWeatherRecords({record(L"AAAA"), record(L"BBBB")});
    simulator.setResults(QStringLiteral("SetWeatherRecord"), {8, 0});
    EXPECT_EQ(run(connectjob::kSetWeather), 0);
    EXPECT_EQ(simulator.calls(), (QStringList{QStringLiteral("SetWeatherRecord AAAA"),
                                              QStringLiteral("SetWeatherRecord BBBB"),
                                              QStringLiteral("WriteWeatherCommand 256")}));
    EXPECT_EQ(log, (QStringList{QStringLiteral("3 Set Weather failed. AAAA"),
                                QStringLiteral("1 Set Weather BBBB")}));
    EXPECT_EQ(run(connectjob::kSetWeather), 0);
    EXPECT_EQ(simulator.calls().last(), QStringLiteral("SetWeatherText KEPT 1"))
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
    post(connectjob::kGetRadios);
    ASSERT_TRUE(finish(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.size(), 1U);
    EXPECT_EQ(worker->queuedJobs(), 2);
    EXPECT_FALSE(worker->isRunning());
    EXPECT_EQ(simulator.calls(),
              (QStringList{QStringLiteral("ClearWeather"), QStringLiteral("Disconnect")}));
    EXPECT_TRUE(worker->IsConnected()) << "until the disconnect that follows";
    post(connectjob::kDisconnect);
    ASSERT_TRUE(finish(3));
    for (const Finish& job : finished) {
        EXPECT_EQ(job.error, simresult::kNoInterface) << job.id;
    }
    EXPECT_FALSE(worker->IsConnected());
}

TEST_F(ConnectWorkerTest, NoPostedJobIsForgotten)
{
    connectWorker();
    // Posted while the worker is on its way out, when a start has no effect: behind the last look
    // at the queue, and as an answer to a lost connection.
    for (const bool lost : {false, true}) {
        finished.clear();
        simulator.setResults(QStringLiteral("ClearWeather"), {lost ? simresult::kTimeout : 0});
        QMutex gate;
        bool posted = false; // guarded by gate, as the slot's end is
        const auto postOnce = [&] {
            const aviation::ScopedLock lock(gate);
            if (!std::exchange(posted, true)) {
                post(connectjob::kNotImplemented);
            }
        };
        const auto late = lost ? QObject::connect(worker.get(), &ConnectWorker::sigJobFinish,
                                                  worker.get(), postOnce, Qt::DirectConnection)
                               : QObject::connect(worker.get(), &QThread::finished, worker.get(),
                                                  postOnce, Qt::DirectConnection);
        post(connectjob::kClearWeather);
        worker->start();
        EXPECT_TRUE(QTest::qWaitFor([this] { return finished.size() == 2; }, kLimitMs)) << lost;
        EXPECT_TRUE(QTest::qWaitFor([this] { return worker->isFinished(); }, kLimitMs));
        const aviation::ScopedLock lock(gate);
        QObject::disconnect(late);
        EXPECT_EQ(worker->queuedJobs(), 0);
    }
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

TEST_F(ConnectWorkerTest, LibrariesThatAreNotThereSaySo)
{
    ScriptedBothClients clients;
    clients.hasFsuipc = false;
    clients.hasSimConnect = false;
    SimulatorInterfaces real(settings, stop, clients);
    makeWorker(real);
    const QString fsuipc = QStringLiteral("3 (Interface FSUIPC) - no &lt;FSUIPC&gt; here");
    const QString simConnect =
        QStringLiteral("3 (Interface SimConnect) - no &lt;SimConnect&gt; here");
    const QString noServer =
        QStringLiteral("3 (ConnectWorker) - FS or Server not found Error Code: 1 Not Connected");
    const std::pair<int, QStringList> rows[] = {
        {0, {fsuipc, noServer}}, {1, {fsuipc}}, {2, {simConnect}}, {3, {fsuipc, simConnect}}};
    for (const auto& [id, lines] : rows) {
        log.clear();
        settings.setInterfaceType(id);
        EXPECT_EQ(run(connectjob::kConnect), simresult::kNotConnected) << id;
        EXPECT_EQ(
            log,
            lines + QStringList{QStringLiteral("3 (ConnectWorker) - not connected, Sim not Found")})
            << log.join(QLatin1Char('\n')).toStdString();
        EXPECT_FALSE(worker->IsConnected());
        EXPECT_EQ(run(connectjob::kAircraftData), simresult::kNoInterface);
    }
    EXPECT_EQ(real.create(0), nullptr);
    EXPECT_EQ(real.create(5), nullptr);
}

TEST_F(ConnectWorkerTest, DetectsWhatIsBehindTheLibraries)
{
    ScriptedBothClients clients;
    SimulatorInterfaces real(settings, stop, clients);
    makeWorker(real);
    settings.setInterfaceType(aviation::interfaceid::kAuto);
    const struct
    {
        std::uint32_t code; ///< FSUIPC's number of the simulator
        std::uint32_t openCode;
        simconnect::Result simConnect;
        int result;
        int interfaceId;
        const char* name;
        int fsuipcOpens;
    } rows[] = {
        {7, 0, simconnect::kOk, 0, 1, "FSUIPC", 1},
        {8, 0, simconnect::kOk, 0, 3, "FSUIPC + SimConnect", 2},
        {12, 0, simconnect::kOk, 0, 3, "FSUIPC + SimConnect", 2},
        {8, 0, simconnect::kFailed, 0, 1, "FSUIPC", 3},
        {13, 0, simconnect::kOk, 0, 1, "FSUIPC", 1},
        {8, 2, simconnect::kOk, 1, 0, "", 2},
    };
    for (const auto& row : rows) {
        clients.fsuipcScript = FsuipcScript();
        clients.fsuipcScript.code = row.code;
        clients.fsuipcScript.openCode = row.openCode;
        clients.simConnectScript = SimConnectScript();
        clients.simConnectScript.results["Open"] = row.simConnect;
        EXPECT_EQ(run(connectjob::kConnect), row.result) << row.code;
        EXPECT_EQ(worker->IsConnected(), row.result == 0);
        if (row.result == 0) {
            EXPECT_EQ(worker->interfaceType(), row.interfaceId) << row.code;
            EXPECT_EQ(worker->interfaceName(), QLatin1String(row.name));
        }
        EXPECT_EQ(clients.fsuipcScript.opens, row.fsuipcOpens) << row.code;
        run(connectjob::kDisconnect);
        EXPECT_EQ(clients.fsuipcScript.closes, row.openCode == 0 ? row.fsuipcOpens : 0);
    }
}

TEST_F(ConnectWorkerTest, SetsWeatherThroughBothLibraries)
{
    ScriptedBothClients clients;
    SimulatorInterfaces real(settings, stop, clients);
    makeWorker(real);
    for (const int id : {1, 3}) {
        settings.setInterfaceType(id);
        clients.fsuipcScript.code = id == 1 ? 7 : 8; // FS2004, FSX
        ASSERT_EQ(run(connectjob::kConnect), 0);
        clients.fsuipcScript.writes.clear();
        clients.simConnectScript.calls.clear();
        clients.fsuipcScript.beforeProcess = [&clients, count = 0]() mutable {
            clients.fsuipcScript.put(0xC824, ++count);
        };
        worker->setWeatherRecords({record(L"AAAA")});
        EXPECT_EQ(run(connectjob::kSetWeather), 0);
        const auto& writes = clients.fsuipcScript.writes;
        ASSERT_EQ(writes.size(), id == 1 ? 2U : 1U) << "only FS2004 needs the refresh";
        EXPECT_EQ(writes.front().bytes.size(), 1024);
        if (id == 1) {
            EXPECT_EQ(writes.back().offset, 0xC800U);
            EXPECT_EQ(writes.back().bytes, QByteArray::fromHex("0001"));
        }
        worker->setMetars({QStringLiteral("BBBB 1")});
        EXPECT_EQ(run(connectjob::kSetWeather), id == 1 ? simresult::kNotImplemented : 0);
        EXPECT_EQ(clients.simConnectScript.calls,
                  id == 1 ? std::vector<std::string>()
                          : (std::vector<std::string>{"Custom", "Observation BBBB 1"}));
        EXPECT_EQ(run(connectjob::kCloudMap, QStringLiteral("50:3")),
                  id == 1 ? simresult::kNotImplemented : simresult::kCallFailed);
        run(connectjob::kDisconnect);
    }
}

TEST_F(ConnectWorkerTest, TalksToABridgeOverSeveralRuns)
{
    const auto reply = [](const QByteArray& frame) {
        const auto id = static_cast<std::uint8_t>(frame.mid(6, 4).toInt());
        switch (frame.mid(1, 4).toInt()) {
        case bridgecommand::kHello:
            return LoopbackBridge::Answer{FrameBytes(bridgecommand::kHello, id, "API=3.3")};
        case bridgecommand::kConnectedFs:
            return LoopbackBridge::Answer{FrameBytes(bridgecommand::kConnectedFs,
                                                     bridgemessage::kFsConnected,
                                                     "a;b=8;c=Sim;d=6;e=Plugin")};
        default:
            return LoopbackBridge::Answer{FrameBytes(bridgecommand::kAnswer, id, "text")};
        }
    };
    LoopbackBridge bridge(reply);
    settings.setServerPort(bridge.port());
    BridgeTimeouts timeouts;
    timeouts.reply = 100;
    HostSimulatorClients clients;
    SimulatorInterfaces real(settings, stop, clients, timeouts);
    makeWorker(real);
    ASSERT_EQ(run(connectjob::kConnect), 0) << log.join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(worker->fsName(), QStringLiteral("Sim"));
    EXPECT_EQ(worker->interfaceType(), 6);
    for (int round = 0; round < 3; ++round) { // each on a thread of its own
        EXPECT_EQ(run(connectjob::kAircraftData), 0);
        EXPECT_EQ(run(connectjob::kSendText, QStringLiteral("text")), 0);
    }
    EXPECT_TRUE(bridge.frames().first().contains(
        QStringLiteral("Cirrilon v.%1").arg(Settings::version()).toUtf8()));
    bridge.setScript([](const QByteArray&) { return LoopbackBridge::Answer(); });
    EXPECT_EQ(run(connectjob::kAircraftData), simresult::kTimeout);
    EXPECT_EQ(run(connectjob::kAircraftData), simresult::kNoInterface);
    bridge.setScript(reply);
    EXPECT_EQ(run(connectjob::kConnect), 0) << "a new connection recovers";
}

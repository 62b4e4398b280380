#include "sim/FsInterfaceTcpClient.h"

#include "app/base/LogLevel.h"
#include "app/base/StopFlag.h"
#include "tests/sim/LoopbackBridge.h"
#include "tests/support/FakeClock.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <tuple>
#include <utility>

using Answer = LoopbackBridge::Answer;

namespace {

constexpr BridgeTimeouts kShort{2000, 2000, 150, 150, 0};

const QByteArray kSimulator = "FS=1;ID=8;Name=X <Plane>;Interface=6;IName=Plugin";
const QByteArray kAircraft =
    "AGLFeet1200:Alt=3000:TAS=250:GS=240:Hdg=271.5:VS=-800:Wind--Dir=180.5:Wind--Speed=12.25:"
    "MagVar=-3.5:Vis=9.5:Lat=50.0333:Lon=-8.5706:On--Ground=1:Engine--Off=0:Landing---Light==1:"
    "Door--Open=1:Parking----Brake==1";

QByteArray answer(int id, const QByteArray& data)
{
    return frameBytes(bridgecommand::kAnswer, static_cast<std::uint8_t>(id), data);
}
QByteArray refusal(int id, const QByteArray& data = QByteArray())
{
    return frameBytes(bridgecommand::kRefuse, static_cast<std::uint8_t>(id), data);
}

/// What a well-behaved server says to the two messages of the handshake; else nothing.
QByteArray handshake(const QByteArray& frame, const QByteArray& version = "3.3")
{
    if (frame.startsWith("@0001;")) {
        return frameBytes(bridgecommand::kHello, bridgemessage::kHello, "SERVERAPI=" + version);
    }
    if (frame.startsWith("@0002;")) {
        return frameBytes(bridgecommand::kConnectedFs, bridgemessage::kFsConnected, kSimulator);
    }
    return {};
}

class FsInterfaceTcpClientTest : public ::testing::Test
{
protected:
    void serve(LoopbackBridge::Script script, const BridgeTimeouts& timeouts = kShort)
    {
        client.reset();
        log.clear();
        server = std::make_unique<LoopbackBridge>(std::move(script));
        makeClient(server->port(), timeouts);
    }
    /// A connected client; what follows the handshake is answered by `script`.
    void serveConnected(const LoopbackBridge::Script& script,
                        const BridgeTimeouts& timeouts = kShort)
    {
        serve(
            [script](const QByteArray& frame) {
                const QByteArray greeting = handshake(frame);
                return greeting.isEmpty() ? script(frame) : Answer{greeting};
            },
            timeouts);
        ASSERT_EQ(client->Connect(), 0) << log.join(QLatin1Char('\n')).toStdString();
    }
    void makeClient(int port, const BridgeTimeouts& timeouts = kShort)
    {
        client = std::make_unique<FsInterfaceTcpClient>(
            QStringLiteral("127.0.0.1"), port, QStringLiteral("Cirrilon v.3"), stop, timeouts);
        QObject::connect(client.get(), &FsInterfaceBase::sigDebugString, client.get(),
                         [this](const QString& text, int level) {
                             if (level != loglevel::kDebug) {
                                 log.append(text);
                             }
                         });
    }
    bool said(const char* text) const { return !log.filter(QString::fromLatin1(text)).isEmpty(); }

    StopFlag stop;
    QStringList log;
    std::unique_ptr<LoopbackBridge> server;
    std::unique_ptr<FsInterfaceTcpClient> client;
};

} // namespace

TEST_F(FsInterfaceTcpClientTest, ShakesHands)
{
    serveConnected(
        [](const QByteArray& frame) { return Answer{answer(frame.mid(6, 4).toInt(), {})}; });
    aviation::FsId fs = 0;
    QString name;
    client->GetFsVersion(fs, name);
    EXPECT_EQ(fs, 8);
    EXPECT_EQ(name, QStringLiteral("X <Plane>"));
    EXPECT_EQ(client->Connect(), simresult::kAlreadyConnected);
    EXPECT_EQ(client->SetWeatherTheme("C:\\a/b\\c.WTB"), 0);
    EXPECT_EQ(server->frames().last(), "@0005;0010;00000005;c.WTB");
    EXPECT_EQ(client->LoadFlightPlan({}), simresult::kNotImplemented);
    EXPECT_EQ(client->Disconnect(), 0);
    EXPECT_EQ(client->ClearWeather(), simresult::kTimeout);
}

TEST_F(FsInterfaceTcpClientTest, GreetingsOfOtherServers)
{
    const QByteArray hello = frameBytes(1, 1, "SERVERAPI=3.3");
    const std::tuple<QByteArray, QByteArray, int, const char*> rows[] = {
        {frameBytes(1, 1, "SERVERAPI=3.30"), frameBytes(2, 81, kSimulator), 0, "Version = 3.30"},
        {frameBytes(1, 1, "SERVERAPI=3.2"), {}, 100, "Please update your Server version"},
        {frameBytes(1, 1, "SERVERAPI=<4>"), {}, 100, "Server API: &lt;4&gt; Client API: 3.3"},
        {frameBytes(1, 1, "SERVERAPI=4"), {}, 100, "Please update your Client version"},
        {frameBytes(1, 1, "no version"), frameBytes(2, 81, kSimulator), 0, "connected"},
        {frameBytes(1, 5, "SERVERAPI=9"), {}, 0, "connected"},
        {"?????", {}, 0, "connected"},
        {hello, frameBytes(2, 80, kSimulator), 1, "connected"},
        {hello, frameBytes(2, 81, "only;three;parts"), 0, "connected"},
        {hello, frameBytes(2, 81, "FS=1;no;id;Interface=0;here"), 0, "connected"},
        {hello, {}, 13, "The socket operation timed out."},
        {{}, {}, 13, "The socket operation timed out."},
        {hello.left(17), {}, 13, "can't be read"},
        {hello.left(22), {}, 13, "can't be read"},
    };
    for (const auto& [greeting, simulator, result, line] : rows) {
        serve([first = greeting, second = simulator](const QByteArray& frame) {
            return Answer{frame.startsWith("@0001;") ? first : second};
        });
        EXPECT_EQ(client->Connect(), result) << greeting.constData();
        EXPECT_EQ(client->connected(), result == 0) << greeting.constData();
        int interfaceId = 0;
        QString name;
        client->GetInterface(interfaceId, name);
        EXPECT_GT(interfaceId, 0) << simulator.constData();
        EXPECT_TRUE(said(line)) << greeting.constData()
                                << log.join(QLatin1Char('\n')).toStdString();
    }
}

TEST_F(FsInterfaceTcpClientTest, UnreachableServers)
{
    serve([](const QByteArray&) { return Answer(); });
    const int freed = server->port();
    server.reset();
    makeClient(freed);
    EXPECT_EQ(client->Connect(), simresult::kNotConnected);
    EXPECT_TRUE(said("The connection was refused by the peer."));
    for (const int port : {0, -1, 65536}) {
        makeClient(port);
        EXPECT_EQ(client->Connect(), simresult::kNotConnected) << port;
        EXPECT_TRUE(said("check the port settings"));
    }
}

TEST_F(FsInterfaceTcpClientTest, RepliesToARequest)
{
    const std::tuple<QByteArray, int> rows[] = {
        {answer(2, kAircraft), 0},
        {answer(3, kAircraft), simresult::kWrongMessage},
        {refusal(2), simresult::kRefused},
        {frameBytes(bridgecommand::kRead, 2, kAircraft), simresult::kTimeout},
        {"garbage", simresult::kWrongMessage},
        {"@0007;0002;00000", simresult::kTimeout},
        {"@0007;0002;99999999;x", simresult::kTimeout},
        {"@0007;0002;00000900;" + kAircraft, simresult::kTimeout},
        {"", simresult::kTimeout},
    };
    for (const auto& [reply, result] : rows) {
        serveConnected([bytes = reply](const QByteArray&) { return Answer{bytes}; });
        aviation::structs::AircraftData data;
        data.altitude = 77;
        EXPECT_EQ(client->GetAircraftData(data), result) << reply.constData();
        EXPECT_EQ(data.altitude, result == 0 ? 3000 : 77) << reply.constData();
    }
}

TEST_F(FsInterfaceTcpClientTest, RepliesInTwoPiecesCutAnywhere)
{
    const QByteArray reply = answer(2, kAircraft);
    int cut = 0;
    serveConnected([&](const QByteArray&) { return Answer{reply, ++cut}; }, BridgeTimeouts());
    for (int i = 1; i < reply.size(); ++i) {
        aviation::structs::AircraftData data;
        ASSERT_EQ(client->GetAircraftData(data), 0) << i;
        ASSERT_TRUE(data.parkingBrake) << i;
    }
}

TEST_F(FsInterfaceTcpClientTest, SilenceFailsOnlyCheckedWrites)
{
    serveConnected([](const QByteArray&) { return Answer(); });
    EXPECT_EQ(client->SendText("quiet", 5), 0);
    EXPECT_EQ(client->ActivateWeather(), 0);
    EXPECT_TRUE(log.filter(QStringLiteral("timed out")).isEmpty());
    EXPECT_EQ(client->ClearWeather(), simresult::kTimeout);
    EXPECT_EQ(client->SendText("still there", 5), 0);
    EXPECT_EQ(client->SetWeatherRecord(NewWeather()), simresult::kTimeout);
    EXPECT_EQ(log.filter(QStringLiteral("timed out")).size(), 1) << "said once";
    EXPECT_EQ(client->SendText("given up", 5), simresult::kTimeout);

    serveConnected([](const QByteArray&) { return Answer{QByteArray(65535, '@')}; });
    EXPECT_EQ(client->ClearWeather(), 0);
}

TEST_F(FsInterfaceTcpClientTest, ASwallowedWriteHoldsUpNothingAfterTwo)
{
    constexpr int kReplyMs = 400;
    const auto answersRequests = [](const QByteArray& frame) {
        return frame.startsWith("@0006;") ? Answer{answer(2, kAircraft)} : Answer();
    };
    serveConnected(answersRequests, {2000, 2000, kReplyMs, 150, 0, 10});
    const auto timeOf = [this](int writes) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < writes; ++i) {
            aviation::structs::AircraftData data;
            EXPECT_EQ(client->SetWindAtAircraft({}), 0);
            EXPECT_FALSE(client->writeAnswered());
            EXPECT_EQ(client->GetAircraftData(data), 0) << "requests are answered all the time";
        }
        return timer.elapsed();
    };
    EXPECT_GE(timeOf(2), 2 * kReplyMs);
    EXPECT_LT(timeOf(6), 2 * kReplyMs);
    EXPECT_EQ(log.filter(QStringLiteral("doesn't answer what is written")).size(), 1)
        << "said once";

    server->setScript([](const QByteArray&) { return Answer{answer(2, kAircraft)}; });
    EXPECT_EQ(client->ActivateWeather(), 0);
    EXPECT_TRUE(client->writeAnswered());
    server->setScript(answersRequests);
    EXPECT_GE(timeOf(1), kReplyMs - 20) << "the next silence is waited out again";
}

TEST_F(FsInterfaceTcpClientTest, AServerThatIsSlowWithWritesIsHeardAgain)
{
    constexpr int kLateMs = 300;
    for (const int pauseMs : {0, 2 * kLateMs}) { // the late reply comes in the request, or before
        serveConnected([](const QByteArray&) { return Answer(); }, {2000, 2000, 500, 150, 0, 100});
        EXPECT_EQ(client->SetWindAtAircraft({}), 0);
        EXPECT_EQ(client->SetWindAtAircraft({}), 0);
        server->setScript([](const QByteArray& frame) {
            if (frame.startsWith("@0006;")) {
                return Answer{answer(bridgemessage::kAircraftData, kAircraft)};
            }
            QThread::msleep(kLateMs);
            return Answer{answer(bridgemessage::kWind, "done")};
        });
        aviation::structs::AircraftData data;
        EXPECT_EQ(client->SetWindAtAircraft({}), 0);
        EXPECT_FALSE(client->writeAnswered());
        QThread::msleep(static_cast<unsigned long>(pauseMs));
        EXPECT_EQ(client->GetAircraftData(data), 0) << pauseMs;
        EXPECT_EQ(data.altitude, 3000) << "the aircraft moves on";
        EXPECT_EQ(client->SetWindAtAircraft({}), 0);
        EXPECT_TRUE(client->writeAnswered()) << "it is waited for again " << pauseMs;
        EXPECT_EQ(client->GetAircraftData(data), 0) << pauseMs;
    }
}

TEST_F(FsInterfaceTcpClientTest, TheLinkIsSeenToEndBetweenTheJobs)
{
    serveConnected([](const QByteArray& frame) {
        return Answer{answer(2, kAircraft), 0, frame.contains("bye")};
    });
    EXPECT_EQ(client->checkLink(), 0);
    EXPECT_EQ(client->SendText("bye", 5), 0);
    QElapsedTimer timer;
    timer.start();
    int link = 0;
    while (link == 0 && timer.elapsed() < 5000) {
        link = client->checkLink();
    }
    EXPECT_EQ(link, simresult::kTimeout);
    EXPECT_TRUE(said("The server closed the connection."));

    serveConnected([](const QByteArray&) { return Answer(); });
    EXPECT_EQ(client->checkLink(), 0) << "nobody has asked anything yet";
    EXPECT_EQ(client->SendText("quiet", 5), 0);
    EXPECT_EQ(client->checkLink(), simresult::kTimeout) << "a question shows that it is gone";

    serveConnected([](const QByteArray& frame) {
        return frame.startsWith("@0006;") ? Answer{answer(2, kAircraft)} : Answer();
    });
    EXPECT_EQ(client->SendText("quiet", 5), 0);
    EXPECT_EQ(client->checkLink(), 0) << "only its writes are lost";
}

TEST_F(FsInterfaceTcpClientTest, LateReplyIsNotTakenForTheNext)
{
    // The first message stays unanswered, and its reply comes before that of the second.
    QByteArray late;
    serveConnected([&late](const QByteArray& frame) {
        if (frame.contains("first")) {
            late = answer(bridgemessage::kText, {});
            return Answer();
        }
        const QByteArray reply = answer(bridgemessage::kAircraftData, kAircraft);
        return Answer{std::exchange(late, {}) + reply};
    });
    aviation::structs::AircraftData data;
    EXPECT_EQ(client->SendText("first", 5), 0);
    EXPECT_EQ(client->GetAircraftData(data), 0);
    EXPECT_EQ(data.altitude, 3000);
    EXPECT_EQ(client->GetAircraftData(data), 0);
}

TEST_F(FsInterfaceTcpClientTest, ClosedConnectionEndsEachOperation)
{
    const QByteArray reply = answer(2, kAircraft);
    for (const int bytes : {0, 10, 18, 60}) {
        serveConnected(
            [&](const QByteArray&) {
                return Answer{reply.left(bytes), 0, true};
            },
            BridgeTimeouts());
        aviation::structs::AircraftData data;
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(client->GetAircraftData(data), bytes == 10 ? 10 : 13) << bytes;
        EXPECT_EQ(client->SendText("gone", 5), simresult::kTimeout) << bytes;
        EXPECT_LT(timer.elapsed(), 2000) << "nobody waits for a closed connection";
        EXPECT_EQ(client->Connect(), 0) << "the next connect makes a new one";
    }
}

TEST_F(FsInterfaceTcpClientTest, StopFlagEndsAWait)
{
    for (const bool connecting : {true, false}) {
        StopFlag ended;
        LoopbackBridge quiet([connecting](const QByteArray& frame) {
            return Answer{connecting ? QByteArray() : handshake(frame)};
        });
        FsInterfaceTcpClient waiting(QStringLiteral("localhost"), quiet.port(), QString(), ended);
        if (!connecting) {
            ASSERT_EQ(waiting.Connect(), 0);
        }
        std::unique_ptr<QThread> raiser(QThread::create([&ended] {
            QThread::msleep(100);
            ended.raise();
        }));
        QElapsedTimer timer;
        timer.start();
        raiser->start();
        EXPECT_EQ(connecting ? waiting.Connect() : waiting.ClearWeather(), simresult::kTimeout);
        EXPECT_LT(timer.elapsed(), 1000);
        raiser->wait();
    }
}

TEST_F(FsInterfaceTcpClientTest, SendsFiles)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("wind.WTB")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(300'000, 'w'));
    file.close();
    const std::string path = file.fileName().toStdString();

    serveConnected([](const QByteArray&) { return Answer(); });
    const auto replyWith = [this](const QByteArray& reply) {
        server->setScript([reply](const QByteArray&) { return Answer{reply}; });
    };
    EXPECT_EQ(client->SendWeatherFile(path + "x"), simresult::kFileNotOpened);
    EXPECT_TRUE(said("(Client) - no good file failed! "));
    replyWith(answer(11, {}));
    EXPECT_EQ(client->SendWeatherFile(path), 0);
    EXPECT_EQ(server->frames().last().size(), 300'020);
    replyWith(refusal(11, "disk <full>"));
    EXPECT_EQ(client->SendWeatherFile(path), simresult::kNotDelivered);
    EXPECT_TRUE(said("(Client) - disk &lt;full&gt;"));
    replyWith({});
    EXPECT_EQ(client->SendWeatherFile(path), simresult::kTimeout);
    client->Disconnect();
    EXPECT_EQ(client->SendWeatherFile(path), simresult::kNotDelivered);
}

TEST_F(FsInterfaceTcpClientTest, ReceivesLongReplies)
{
    const QByteArray config(3'000'000, 'c');
    const std::tuple<Answer, int, const char*> rows[] = {
        {{answer(24, config), 50'000}, 0, ""},
        {{answer(24, "short"), 7}, 0, ""},
        {{"noise" + answer(24, "short")}, 0, ""},
        {{refusal(24)}, simresult::kRefused, ""},
        {{}, simresult::kTimeout, "timed out"},
        {{"noise"}, simresult::kWrongMessage, "(ServerThread) -  Wrong Message: noise"},
        {{"@0007;0024"}, simresult::kTimeout, "(ServerThread) - Wrong Message: @0007;0024"},
        {{"@" + QByteArray(40, 'x')}, simresult::kWrongMessage, "Message Error - Data in:@xxx"},
        {{QByteArray(100'000, 'x')}, simresult::kWrongMessage, "Wrong Message: xxx"},
        {{"@" + QByteArray(100'000, 'x')}, simresult::kWrongMessage, "Message Error - Data in:@x"},
        {{"@0007;0024;99999999;x"}, simresult::kTimeout, "Wrong Message"},
        {{"@0007;0024;00000009;x"}, simresult::kTimeout, "Message not complete."},
        {{"@0007;0024;00000009;x", 0, true}, simresult::kTimeout, "Message not complete."},
    };
    for (const auto& [reply, result, line] : rows) {
        serveConnected([sent = reply](const QByteArray&) { return sent; });
        QByteArray contents;
        EXPECT_EQ(client->requestServerConfig(contents), result) << line;
        EXPECT_EQ(!contents.isEmpty(), result == 0) << line;
        EXPECT_TRUE(said(line)) << line << log.join(QLatin1Char('\n')).toStdString();
    }
}

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
    return FrameBytes(bridgecommand::kAnswer, static_cast<std::uint8_t>(id), data);
}
QByteArray refusal(int id, const QByteArray& data = QByteArray())
{
    return FrameBytes(bridgecommand::kRefuse, static_cast<std::uint8_t>(id), data);
}

/// What a well-behaved server says to the two messages of the handshake; else nothing.
QByteArray handshake(const QByteArray& frame, const QByteArray& version = "3.3")
{
    if (frame.startsWith("@0001;")) {
        return FrameBytes(bridgecommand::kHello, bridgemessage::kHello, "SERVERAPI=" + version);
    }
    if (frame.startsWith("@0002;")) {
        return FrameBytes(bridgecommand::kConnectedFs, bridgemessage::kFsConnected, kSimulator);
    }
    return {};
}

class TcpClientTest : public ::testing::Test
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

TEST_F(TcpClientTest, ShakesHands)
{
    serveConnected([](const QByteArray&) { return Answer(); });
    aviation::FsId fs = 0;
    int interfaceId = 0;
    QString fsName;
    QString interfaceName;
    client->GetFsVersion(fs, fsName);
    client->GetInterface(interfaceId, interfaceName);
    EXPECT_EQ(fs, 8);
    EXPECT_EQ(fsName, QStringLiteral("X <Plane>"));
    EXPECT_EQ(interfaceId, 6);
    EXPECT_EQ(interfaceName, QStringLiteral("Plugin"));
    EXPECT_EQ(server->frames(), (QByteArrayList{"@0001;0001;00000026;CLIENTAPI=3.3;Cirrilon v.3",
                                                "@0002;0080;00000015;IS_FS_CONNECTED"}));
    EXPECT_EQ(client->Connect(), simresult::kAlreadyConnected);
    EXPECT_EQ(client->Disconnect(), 0);
    EXPECT_EQ(client->ClearWeather(), simresult::kTimeout);
}

TEST_F(TcpClientTest, GreetingsOfOtherServers)
{
    const QByteArray hello = FrameBytes(1, 1, "SERVERAPI=3.3");
    const struct
    {
        QByteArray greeting;
        QByteArray simulator;
        int result;
        const char* line;
    } rows[] = {
        {FrameBytes(1, 1, "SERVERAPI=3.30"), FrameBytes(2, 81, kSimulator), 0, "Version = 3.30"},
        {FrameBytes(1, 1, "SERVERAPI=3.2"), {}, 100, "Please update your Server version"},
        {FrameBytes(1, 1, "SERVERAPI=<4>"), {}, 100, "Server API: &lt;4&gt; Client API: 3.3"},
        {FrameBytes(1, 1, "SERVERAPI=4"), {}, 100, "Please update your Client version"},
        {FrameBytes(1, 1, "no version"), FrameBytes(2, 81, kSimulator), 0, "connected"},
        {FrameBytes(1, 5, "SERVERAPI=9"), {}, 0, "connected"},
        {"?????", {}, 0, "connected"},
        {hello, FrameBytes(2, 80, kSimulator), 1, "connected"},
        {hello, FrameBytes(2, 81, "only;three;parts"), 0, "connected"},
        {hello, FrameBytes(2, 81, "FS=1;no;id;Interface=0;here"), 0, "connected"},
        {hello, {}, 13, "The socket operation timed out."},
        {{}, {}, 13, "The socket operation timed out."},
        {hello.left(17), {}, 13, "can't be read"},
        {hello.left(22), {}, 13, "can't be read"},
    };
    for (const auto& row : rows) {
        serve([row](const QByteArray& frame) {
            return Answer{frame.startsWith("@0001;") ? row.greeting : row.simulator};
        });
        EXPECT_EQ(client->Connect(), row.result) << row.greeting.constData();
        EXPECT_EQ(client->connected(), row.result == 0) << row.greeting.constData();
        int interfaceId = 0;
        QString name;
        client->GetInterface(interfaceId, name);
        EXPECT_GT(interfaceId, 0) << row.simulator.constData();
        EXPECT_TRUE(said(row.line))
            << row.greeting.constData() << log.join(QLatin1Char('\n')).toStdString();
    }
}

TEST_F(TcpClientTest, UnreachableServers)
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

TEST_F(TcpClientTest, RepliesToARequest)
{
    const struct
    {
        QByteArray reply;
        int result;
    } rows[] = {
        {answer(2, kAircraft), 0},
        {answer(3, kAircraft), simresult::kWrongMessage},
        {refusal(2), simresult::kRefused},
        {FrameBytes(bridgecommand::kRead, 2, kAircraft), simresult::kTimeout},
        {"garbage", simresult::kWrongMessage},
        {"@0007;0002;00000", simresult::kTimeout},
        {"@0007;0002;99999999;x", simresult::kTimeout},
        {"@0007;0002;00000900;" + kAircraft, simresult::kTimeout},
        {{}, simresult::kTimeout},
    };
    for (const auto& row : rows) {
        serveConnected([row](const QByteArray&) { return Answer{row.reply}; });
        aviation::structs::AircraftData data;
        data.altitude = 77;
        EXPECT_EQ(client->GetAircraftData(data), row.result) << row.reply.constData();
        EXPECT_EQ(data.altitude, row.result == 0 ? 3000 : 77) << row.reply.constData();
    }
}

TEST_F(TcpClientTest, ReadsEveryKindOfData)
{
    serveConnected([](const QByteArray& frame) {
        const int id = frame.mid(6, 4).toInt();
        switch (id) {
        case bridgemessage::kFuel:
            return Answer{answer(id, "NumOfStation=1:FuelWeight=6.7:StationID=4|Name=Center|"
                                     "Capacity=100|Level=50")};
        case bridgemessage::kPayload:
            return Answer{answer(id, "NumOfStation=1:StationName=A|Type=1|MaxWeight=9|Weight=3")};
        case bridgemessage::kRadios:
            return Answer{answer(id, "comm1active=12180")};
        case bridgemessage::kDateTime:
            return Answer{answer(id, "86400")};
        default:
            return Answer{answer(id, "49002")};
        }
    });
    aviation::structs::AircraftFuel fuel;
    aviation::structs::AircraftPayload payload;
    aviation::structs::RadioFrequencys radios;
    QDateTime dateTime;
    QString port;
    EXPECT_EQ(client->GetAircraftFuel(fuel), 0);
    EXPECT_EQ(client->GetAircraftPayload(payload), 0);
    EXPECT_EQ(client->GetRadioFrequencys(radios), 0);
    EXPECT_EQ(client->GetDateTime(dateTime), 0);
    EXPECT_EQ(client->AnnounceAddress(QStringLiteral("10.0.0.7"), port), 0);
    EXPECT_EQ(fuel.tanks.size(), 1U);
    EXPECT_EQ(payload.totalWeight, 3.0);
    EXPECT_EQ(radios.comm1active, 12180);
    EXPECT_EQ(dateTime, QDateTime::fromSecsSinceEpoch(86400, Qt::UTC));
    EXPECT_EQ(port, QStringLiteral("49002"));
    EXPECT_EQ(server->frames().mid(2),
              (QByteArrayList{"@0006;0003;00000021;Request Aircraft fuel",
                              "@0006;0004;00000024;Request Aircraft payload",
                              "@0006;0018;00000018;Request Radio Data",
                              "@0006;0023;00000024;Request DateTime from FS",
                              "@0006;0025;00000008;10.0.0.7"}));
}

TEST_F(TcpClientTest, WritesEveryKindOfMessage)
{
    serveConnected(
        [](const QByteArray& frame) { return Answer{answer(frame.mid(6, 4).toInt(), {})}; });
    FsInterfaceBase& bridge = *client;
    XPlaneWeather weather;
    weather.WX = "METAR";
    const struct
    {
        int result;
        const char* frame;
    } rows[] = {
        {bridge.ClearWeather(), "@0005;0022;00000008;Clear Wx"},
        {bridge.SetAircraftFuel({}), "@0005;0003;00000034;NumOfStation=0:FuelWeight=0.000000"},
        {bridge.SetAircraftPayload({}), "@0005;0004;00000014;NumOfStation=0"},
        {bridge.SetWeatherRecord(NewWeather()), "@0005;0007;"},
        {bridge.SetWeatherText(QStringLiteral("EDDF \u00FC")), "@0005;0008;00000007;EDDF \xC3\xBC"},
        {bridge.SetWeatherData(weather, 8), "@0005;0009;"},
        {bridge.SetWeatherData(weather, kWeatherTextWx), "@0005;0028;"},
        {bridge.SetWeatherTheme("C:\\a/b\\c.WTB"), "@0005;0010;00000005;c.WTB"},
        {bridge.SetWindLayers({}), "@0005;0013;00000011;WindLayer{}"},
        {bridge.SetWindAtAircraft({270.5F, 12.0F, -1.0F, 0.0F}),
         "@0005;0006;00000033;Dir=270.50:Speed=12.00:Gust=-1.00"},
        {bridge.SetVisibility(9000), "@0005;0017;00000004;9000"},
        {bridge.SetGlobalWindFile("grib"), "@0005;0014;00000004;grib"},
        {bridge.SetTurbulenceWindFile("grib"), "@0005;0015;00000004;grib"},
        {bridge.ActivateWeather(), "@0005;0016;00000023;Activate Weather Xplane"},
        {bridge.SendText("Hello", 5), "@0005;0020;00000005;Hello"},
        {bridge.SetRadioFrequencys({}), "@0005;0018;00000168;comm1active=11800:"},
    };
    const QByteArrayList frames = server->frames().mid(2);
    ASSERT_EQ(frames.size(), static_cast<int>(std::size(rows)));
    for (int i = 0; i < frames.size(); ++i) {
        EXPECT_EQ(rows[i].result, 0) << rows[i].frame;
        EXPECT_TRUE(frames[i].startsWith(rows[i].frame)) << frames[i].constData();
    }
    EXPECT_EQ(bridge.LoadFlightPlan({}), simresult::kNotImplemented);
}

TEST_F(TcpClientTest, RepliesInTwoPiecesCutAnywhere)
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

TEST_F(TcpClientTest, SilenceFailsOnlyCheckedWrites)
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

TEST_F(TcpClientTest, LateReplyIsNotTakenForTheNext)
{
    // The first message stays unanswered, and its reply comes in front of that of the second.
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
    EXPECT_EQ(client->GetAircraftData(data), simresult::kWrongMessage);
    EXPECT_EQ(client->GetAircraftData(data), 0);
}

TEST_F(TcpClientTest, ClosedConnectionEndsEachOperation)
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

TEST_F(TcpClientTest, StopFlagEndsAWait)
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

TEST_F(TcpClientTest, SendsFiles)
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

TEST_F(TcpClientTest, ReceivesLongReplies)
{
    const QByteArray config(3'000'000, 'c');
    const struct
    {
        Answer answer;
        int result;
        const char* line;
    } rows[] = {
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
    for (const auto& row : rows) {
        serveConnected([&row](const QByteArray&) { return row.answer; });
        QByteArray contents;
        EXPECT_EQ(client->RequestServerConfig(contents), row.result) << row.line;
        EXPECT_EQ(!contents.isEmpty(), row.result == 0) << row.line;
        EXPECT_TRUE(said(row.line)) << row.line << log.join(QLatin1Char('\n')).toStdString();
    }
}

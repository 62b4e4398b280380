#include "sim/AircraftDatagrams.h"

#include "app/base/StopFlag.h"
#include "sim/BridgeDatagram.h"
#include "sim/BridgeFrame.h"
#include "sim/OwnAddress.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeClock.h"

#include <QNetworkInterface>
#include <QTest>
#include <QUdpSocket>

#include <functional>
#include <tuple>
#include <utility>
#include <vector>

namespace {

const QString kLoopback = "127.0.0.1"_q;

/// A bridge's push of an aircraft at a height in feet.
QByteArray aircraftDatagram(int height, std::uint8_t command = bridgecommand::kAnswer)
{
    const QByteArray text =
        "Height=" + QByteArray::number(height)
        + ":Alt=900:TAS=0:GS=0:Hdg=0:VS=0:WindDir=:00:WindSpeed==0:MagVar=0:Vis=0:"
          "Lat=50.5:Lon=8.5:OnGround===1:EngineOff===0:LandingLight=====0:"
          "DoorOpen===0:ParkingBrake======0";
    return frameBytes(command, bridgemessage::kAircraftData, text);
}

/// An address of this computer that is no loopback one; null without.
QHostAddress otherOwnAddress()
{
    for (const QHostAddress& address : QNetworkInterface::allAddresses()) {
        if (!address.isLoopback() && address.protocol() == QAbstractSocket::IPv4Protocol) {
            return address;
        }
    }
    return {};
}

class AircraftDatagramsTest : public SettingsFixture
{
protected:
    void SetUp() override
    {
        SettingsFixture::SetUp();
        settings = std::make_unique<Settings>(mainFile(), m_random);
        settings->setServerIp(kLoopback);
        settings->setMyIp(kLoopback);
        stream = std::make_unique<AircraftDatagrams>(
            *settings, stop,
            [this](const QString& text, int level) {
                lines.push_back({text, level});
            },
            StreamTimes{200, 10000});
        QObject::connect(stream.get(), &AircraftDatagrams::sigAircraft,
                         [this](const aviation::structs::AircraftData& aircraft, bool isAnswer) {
                             taken.push_back({aircraft.heightAgl, isAnswer});
                         });
    }
    void TearDown() override
    {
        stream.reset();
        settings.reset();
        SettingsFixture::TearDown();
    }

    void bindFreePort()
    {
        QUdpSocket probe;
        ASSERT_TRUE(probe.bind(QHostAddress(kLoopback), 0));
        port = probe.localPort();
        probe.close();
        stream->bind(settings->myIp(), QString::number(port));
        ASSERT_TRUE(stream->isBound());
        EXPECT_EQ(levelOf("UDP bind IP:127.0.0.1 Port:%1 "_q.arg(port)), 1);
    }
    void send(const QByteArray& bytes)
    {
        ASSERT_EQ(sender.writeDatagram(bytes, QHostAddress(kLoopback), port), bytes.size());
    }
    static bool wait(const std::function<bool()>& condition)
    {
        return QTest::qWaitFor(condition, 20000);
    }
    int linesWith(const QString& part) const
    {
        return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const auto& line) {
            return line.first.contains(part);
        }));
    }
    int levelOf(const QString& part) const
    {
        return !lines.empty() && lines.back().first.contains(part) ? lines.back().second : -1;
    }

    FakeClock clock{2024, 6, 1, 12};
    StopFlag stop;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<AircraftDatagrams> stream;
    std::vector<std::pair<QString, int>> lines;
    std::vector<std::pair<int, bool>> taken; ///< height, whether it was an answer
    QUdpSocket sender;
    quint16 port = 0;
};

TEST_F(AircraftDatagramsTest, NoDatagramIsLostAndOnlyAnAnswerIsOne)
{
    bindFreePort();
    std::vector<std::pair<int, bool>> expected;
    for (int i = 1; i <= 20; ++i) {
        send(aircraftDatagram(i) + QByteArray("\0rest", 5));
        expected.push_back({i, true});
    }
    send(aircraftDatagram(77, bridgecommand::kRead));
    expected.push_back({77, false});
    ASSERT_TRUE(wait([&] { return taken.size() >= expected.size(); }));
    EXPECT_EQ(taken, expected);

    stream->bind(settings->myIp(), QString::number(port));
    EXPECT_EQ(levelOf("UDP bind failed: "_q), 3) << "no second socket";
    EXPECT_TRUE(stream->isBound());
    stream->close();
    QUdpSocket again;
    EXPECT_TRUE(again.bind(QHostAddress(kLoopback), port)) << "the port is free again";
}

TEST_F(AircraftDatagramsTest, ForeignAndBrokenOnesAreDroppedWithALineEach)
{
    settings->setServerIp("127.0.0.2"_q);
    bindFreePort();
    send(aircraftDatagram(1));
    send(aircraftDatagram(2));
    const QString foreign = "UDP datagrams of 127.0.0.1 dropped"_q;
    ASSERT_TRUE(wait([&] { return linesWith(foreign) == 1; }));

    sender.close();
    ASSERT_TRUE(sender.bind(QHostAddress("127.0.0.2"_q), 0));
    send("garbage");
    send(QByteArray());
    send(aircraftDatagram(1).left(17));
    send(aircraftDatagram(3));
    ASSERT_TRUE(wait([&] { return !taken.empty(); }));
    EXPECT_EQ(taken.front().first, 3);
    EXPECT_EQ(linesWith(foreign), 1);
    EXPECT_EQ(linesWith("datagram without aircraft data"_q), 1);
}

TEST_F(AircraftDatagramsTest, OnlyAPortAndAnOwnAddressAreBound)
{
    const std::tuple<QString, QString, QString> rows[] = {
        {QString(), "5000"_q, "UDP bind failed: IP not selected"_q},
        {kLoopback, "0"_q, "UDP bind failed IP:127.0.0.1 Port:0 "_q},
        {kLoopback, "<b>"_q, "UDP bind failed IP:127.0.0.1 Port:&lt;b&gt; "_q},
        {"192.0.2.1"_q, "5000"_q, "UDP bind failed IP:192.0.2.1 Port:5000 "_q},
    };
    for (const auto& [address, number, line] : rows) {
        settings->setMyIp(address);
        stream->bind(settings->myIp(), number);
        EXPECT_EQ(levelOf(line), 3) << qPrintable(line);
        EXPECT_FALSE(stream->isBound());
    }
}

TEST_F(AircraftDatagramsTest, ItIsPolledUntilTheStreamFlowsAndAfterASilence)
{
    const QString warning = "Own IP address"_q;
    int silences = 0;
    QObject::connect(stream.get(), &AircraftDatagrams::sigSilent, [&silences] { ++silences; });
    EXPECT_TRUE(stream->takePollTurn());
    bindFreePort();
    EXPECT_TRUE(stream->takePollTurn()) << "nothing has come yet";
    send("garbage");
    ASSERT_TRUE(wait([&] { return linesWith("datagram without aircraft data"_q) == 1; }));
    EXPECT_TRUE(stream->takePollTurn()) << "nor anything that counts";
    for (int round = 0; round < 2; ++round) {
        send(aircraftDatagram(1));
        ASSERT_TRUE(wait([&] { return stream->isStreaming(); }));
        EXPECT_FALSE(stream->takePollTurn());
        clock.advance(std::chrono::seconds(10));
        EXPECT_TRUE(stream->takePollTurn()) << "now and then beside the stream";
        EXPECT_FALSE(stream->takePollTurn());
        ASSERT_TRUE(wait([&] { return !stream->isStreaming(); }));
        EXPECT_TRUE(stream->takePollTurn()) << "after the silence";
        EXPECT_EQ(linesWith(warning), 1) << "said once";
        EXPECT_EQ(silences, 1) << "so that a notice that was closed stays closed";
    }
    stream->close();
    bindFreePort();
    ASSERT_TRUE(wait([&] { return linesWith(warning) == 2; })) << "no datagram came at all";
}

TEST_F(AircraftDatagramsTest, AServerOnThisComputerSendsFromAnyOfItsAddresses)
{
    const QHostAddress other = otherOwnAddress();
    if (other.isNull()) {
        GTEST_SKIP() << "this computer has one address only";
    }
    bindFreePort();
    ASSERT_TRUE(sender.bind(other, 0));
    send(aircraftDatagram(5));
    ASSERT_TRUE(wait([&] { return !taken.empty(); }));
    EXPECT_EQ(taken.front().first, 5);
}

TEST(OwnAddressTest, ALoopbackAddressIsNotAnnouncedElsewhere)
{
    const QHostAddress elsewhere("198.51.100.7"_q);
    const QHostAddress way("198.51.100.2"_q);
    const QHostAddress loopback("127.0.0.1"_q);
    const std::tuple<QString, QHostAddress, QHostAddress, QString> rows[] = {
        {"127.0.0.1"_q, way, elsewhere, "198.51.100.2"_q},
        {"::1"_q, way, elsewhere, "198.51.100.2"_q},
        {"203.0.113.5"_q, way, elsewhere, "203.0.113.5"_q}, // the pilot knows better
        {QString(), way, elsewhere, QString()},
        {"127.0.0.1"_q, loopback, loopback, "127.0.0.1"_q},
        {"127.0.0.1"_q, QHostAddress(), QHostAddress(), "127.0.0.1"_q},
    };
    for (const auto& [setting, own, server, announced] : rows) {
        EXPECT_EQ(ownaddress::toAnnounce(setting, own, server), announced) << qPrintable(setting);
    }
    for (const QHostAddress& own : {loopback, otherOwnAddress()}) {
        EXPECT_EQ(ownaddress::toAnnounce("127.0.0.1"_q, own, own), "127.0.0.1"_q)
            << "no way leads out";
        EXPECT_EQ(ownaddress::reaching(own.toString()), QString());
    }
}

TEST(OwnAddressTest, TheWayToAServerNearbyIsTheAddressInItsNetwork)
{
    const QHostAddress own = otherOwnAddress();
    if (own.isNull()) {
        GTEST_SKIP() << "this computer has one address only";
    }
    const QHostAddress neighbour(own.toIPv4Address() ^ 1U);
    EXPECT_EQ(ownaddress::reaching(neighbour.toString()), own.toString());
}

TEST(BridgeDatagramTest, APortIsDecimalDigits)
{
    const std::pair<const char*, int> ports[] = {
        {"1", 1},     {"65535", 65535}, {"65536", 0}, {"0", 0},      {"", 0},         {"-1", 0},
        {" 5000", 0}, {"5000x", 0},     {"1e3", 0},   {"123456", 0}, {"127.0.0.1", 0}};
    for (const auto& [text, port] : ports) {
        EXPECT_EQ(portFromText(QString::fromLatin1(text)), port) << text;
    }
}

} // namespace

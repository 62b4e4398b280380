#include "sim/BridgeFrame.h"
#include "tests/app/ControllerFixture.h"

#include <QUdpSocket>

#include <tuple>

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
    return FrameBytes(command, bridgemessage::kAircraftData, text);
}

class ControllerBridgeTest : public ControllerFixture
{
protected:
    /// Connects, with the server's UDP stream at a free port.
    void bindStream()
    {
        QUdpSocket probe;
        ASSERT_TRUE(probe.bind(QHostAddress(kLoopback), 0));
        port = probe.localPort();
        probe.close();
        simulator.answer(
            [this](FakeSimulator::Answers& answers) { answers.udpPort = QString::number(port); });
        settings->setMyIp(kLoopback);
        make();
        connectTo(4, 8);
        ASSERT_EQ(view.linesWith("UDP bind IP:127.0.0.1 Port:%1 "_q.arg(port)), 1);
    }
    void send(const QByteArray& bytes)
    {
        ASSERT_EQ(sender.writeDatagram(bytes, QHostAddress(kLoopback), port), bytes.size());
    }

    QUdpSocket sender;
    quint16 port = 0;
};

TEST_F(ControllerBridgeTest, TheStreamReplacesPollingAndLosesNoDatagram)
{
    bindStream();
    simulator.clearCalls();
    controller->OnTimerOneSecond();
    settle();
    EXPECT_TRUE(simulator.calls("GetAircraftData"_q).isEmpty());
    constexpr int kDatagrams = 20;
    for (int i = 1; i <= kDatagrams; ++i) {
        send(aircraftDatagram(i) + QByteArray("\0rest", 5));
    }
    const QString finished = "JobName:Aircraft data from UDP  Finished"_q;
    ASSERT_TRUE(wait([&] { return view.linesWith(finished) == kDatagrams; }));
    EXPECT_EQ(view.aircraft.heightAgl, kDatagrams);

    send(aircraftDatagram(77, bridgecommand::kRead));
    ASSERT_TRUE(wait([&] { return controller->aircraft().heightAgl == 77; }));
    EXPECT_EQ(view.aircraft.heightAgl, kDatagrams) << "only an answer counts as a finished poll";

    controller->OnJobConnectWorkerFinished(40, QString::number(port), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(view.levelOf("UDP bind failed: "_q), 3) << "no second socket";
    controller->OnConnectClicked();
    settle();
    QUdpSocket again;
    EXPECT_TRUE(again.bind(QHostAddress(kLoopback), port)) << "the port is free again";
}

TEST_F(ControllerBridgeTest, ForeignAndBrokenDatagramsAreDroppedWithALineEach)
{
    settings->setServerIp("127.0.0.2"_q);
    bindStream();
    send(aircraftDatagram(1));
    send(aircraftDatagram(2));
    const QString foreign = "UDP datagrams of 127.0.0.1 dropped"_q;
    ASSERT_TRUE(wait([&] { return view.linesWith(foreign) == 1; }));

    sender.close();
    ASSERT_TRUE(sender.bind(QHostAddress("127.0.0.2"_q), 0));
    send("garbage");
    send(QByteArray());
    send(aircraftDatagram(1).left(17));
    send(aircraftDatagram(3));
    ASSERT_TRUE(wait([&] { return controller->aircraft().heightAgl == 3; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(view.linesWith(foreign), 1);
    EXPECT_EQ(view.linesWith("datagram without aircraft data"_q), 1);
}

TEST_F(ControllerBridgeTest, OnlyAPortAndAnOwnAddressAreBound)
{
    const std::tuple<QString, QString, QString> rows[] = {
        {QString(), "5000"_q, "UDP bind failed: IP not selected"_q},
        {kLoopback, "0"_q, "UDP bind failed IP:127.0.0.1 Port:0 "_q},
        {kLoopback, "<b>"_q, "UDP bind failed IP:127.0.0.1 Port:&lt;b&gt; "_q},
        {"192.0.2.1"_q, "5000"_q, "UDP bind failed IP:192.0.2.1 Port:5000 "_q},
    };
    make();
    for (const auto& [address, number, line] : rows) {
        settings->setMyIp(address);
        controller->OnJobConnectWorkerFinished(40, number, 0);
        QCoreApplication::processEvents();
        EXPECT_EQ(view.levelOf(line), 3) << qPrintable(line);
    }
}

} // namespace

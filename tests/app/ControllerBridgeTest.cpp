#include "sim/BridgeFrame.h"
#include "tests/app/ControllerFixture.h"

#include <QUdpSocket>

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

class ControllerBridgeTest : public ControllerFixture
{};

TEST_F(ControllerBridgeTest, TheStreamReplacesPolling)
{
    QUdpSocket sender;
    ASSERT_TRUE(sender.bind(QHostAddress(kLoopback), 0));
    const quint16 port = sender.localPort();
    sender.close();
    simulator.answer(
        [port](FakeSimulator::Answers& answers) { answers.udpPort = QString::number(port); });
    settings->setMyIp(kLoopback);
    make();
    connectTo(4, 8);
    simulator.clearCalls();
    controller->OnTimerOneSecond();
    settle();
    EXPECT_TRUE(simulator.calls("GetAircraftData"_q).isEmpty());

    const auto send = [&](const QByteArray& bytes) {
        EXPECT_EQ(sender.writeDatagram(bytes, QHostAddress(kLoopback), port), bytes.size());
    };
    send(aircraftDatagram(10));
    waitForLine("JobName:Aircraft data from UDP  Finished"_q);
    EXPECT_EQ(view.aircraft.heightAgl, 10);
    send(aircraftDatagram(77, bridgecommand::kRead));
    ASSERT_TRUE(wait([&] { return controller->aircraft().heightAgl == 77; }));
    EXPECT_EQ(view.aircraft.heightAgl, 10) << "only an answer counts as a finished poll";

    controller->OnConnectClicked();
    settle();
    QUdpSocket again;
    EXPECT_TRUE(again.bind(QHostAddress(kLoopback), port)) << "the port is free again";
}

} // namespace

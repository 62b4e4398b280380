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
    const auto polls = [&] {
        simulator.clearCalls();
        controller->OnTimerOneSecond();
        settle();
        return simulator.calls("GetAircraftData"_q).size();
    };
    EXPECT_EQ(polls(), 1) << "no datagram has come yet";

    const auto send = [&](const QByteArray& bytes) {
        EXPECT_EQ(sender.writeDatagram(bytes, QHostAddress(kLoopback), port), bytes.size());
    };
    send(aircraftDatagram(10));
    waitForLine("JobName:Aircraft data from UDP  Finished"_q);
    EXPECT_EQ(view.aircraft.heightAgl, 10);
    EXPECT_EQ(polls(), 0);
    clock.advance(std::chrono::seconds(10));
    EXPECT_EQ(polls(), 1) << "beside the stream";
    EXPECT_EQ(controller->aircraft().heightAgl, 10) << "the stream is newer than an answer";
    send(aircraftDatagram(77, bridgecommand::kRead));
    ASSERT_TRUE(wait([&] { return controller->aircraft().heightAgl == 77; }));
    EXPECT_EQ(view.aircraft.heightAgl, 10) << "only an answer counts as a finished poll";

    simulator.answer([](FakeSimulator::Answers& answers) { answers.aircraft.heightAgl = 55; });
    ASSERT_TRUE(wait([&] { return controller->aircraft().heightAgl == 55; }))
        << "after a silence the answer of a poll counts again";
    EXPECT_TRUE(view.notices[Notice::Connection].contains("Own IP address"_q));
    send(aircraftDatagram(78));
    ASSERT_TRUE(wait([&] { return controller->aircraft().heightAgl == 78; }));
    EXPECT_EQ(view.notices.count(Notice::Connection), 0U) << "settled";

    controller->OnConnectClicked();
    settle();
    QUdpSocket again;
    EXPECT_TRUE(again.bind(QHostAddress(kLoopback), port)) << "the port is free again";
}

TEST_F(ControllerBridgeTest, AServerElsewhereIsGivenAnAddressThatItCanReach)
{
    simulator.answer([](FakeSimulator::Answers& answers) {
        answers.ends = {QHostAddress("198.51.100.2"_q), QHostAddress("198.51.100.7"_q)};
    });
    settings->setMyIp(kLoopback);
    make();
    connectTo(4, 8);
    EXPECT_EQ(simulator.calls("AnnounceAddress"_q), QStringList{"AnnounceAddress 198.51.100.2"_q});
    EXPECT_EQ(view.linesWith("UDP bind failed IP:198.51.100.2"_q), 1) << "and bound, if it is ours";
}

TEST_F(ControllerBridgeTest, SwallowedWeatherIsShownUntilOneIsAnswered)
{
    make();
    connectTo(4, 8);
    for (const bool answered : {true, false, true}) {
        simulator.answer([answered](FakeSimulator::Answers& a) { a.writeAnswered = answered; });
        controller->OnNewJobConnectworker(Job(15, XPlaneWeather(), QString()));
        settle();
        EXPECT_EQ(view.notices.count(Notice::Weather), answered ? 0U : 1U);
    }
}

} // namespace

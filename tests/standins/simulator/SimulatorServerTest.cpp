#include "standins/simulator/Messages.h"
#include "standins/simulator/SimulatorThread.h"

#include <QTcpSocket>
#include <QUdpSocket>

#include <gtest/gtest.h>

#include <tuple>

namespace {

using simulator::SimulatorThread;
namespace command = simulator::command;
namespace message = simulator::message;

constexpr int kLimitMs = 10000;

class SimulatorServerTest : public ::testing::Test
{
protected:
    SimulatorServerTest() : simulator(options()) { port = simulator.startServer(); }
    static simulator::SimulatorOptions options()
    {
        simulator::SimulatorOptions options;
        options.udpIntervalMs = 20;
        options.start = QStringLiteral("cruise");
        return options;
    }
    void connectClient(QTcpSocket& client) const
    {
        client.connectToHost(QStringLiteral("127.0.0.1"), port);
        ASSERT_TRUE(client.waitForConnected(kLimitMs));
    }
    /// Sends a frame and reads until so many bytes came or the connection ended.
    static QByteArray ask(QTcpSocket& client, const simulator::Frame& frame, int bytes)
    {
        client.write(simulator::encodeFrame(frame));
        QByteArray answer;
        while (answer.size() < bytes && client.state() == QAbstractSocket::ConnectedState
               && client.waitForReadyRead(kLimitMs))
        {
            answer += client.readAll();
        }
        return answer + client.readAll();
    }

    SimulatorThread simulator;
    quint16 port = 0;
};

const simulator::Frame kWind{command::kWrite, message::kWind, "Dir=240.00:Speed=12.00:Gust=-1.00"};
const QByteArray kWindAnswer = "@0007;0006;00000002;OK";

TEST_F(SimulatorServerTest, MisbehavesOnDemandAndThenNoMore)
{
    using Row = std::tuple<const char*, QByteArray, bool>;
    for (const auto& [fault, answer, staysOpen] :
         {Row{"wrongid*1", "@0007;0106;00000002;OK", true}, Row{"cut:5*1", "@0007", true},
          Row{"cut:5,1*1", kWindAnswer, true}, Row{"slow:20*1", kWindAnswer, true},
          Row{"garbage:7*1", "#######", true}, Row{"huge*1", "@0007;0006;99999999;OK", true},
          Row{"refuse:full@5/6*1", "@0008;0006;00000004;full", true},
          Row{"silent@7*1", kWindAnswer, true}, Row{"close*1", "@0007;0006;", false},
          Row{"drop*1", "", false}, Row{"none", kWindAnswer, true}})
    {
        QTcpSocket client;
        connectClient(client);
        ASSERT_TRUE(simulator.setFault(QString::fromLatin1(fault)));
        EXPECT_EQ(ask(client, kWind, qMax(1, answer.size())), answer) << fault;
        if (staysOpen) {
            EXPECT_EQ(ask(client, kWind, kWindAnswer.size()), kWindAnswer) << fault;
        } else {
            EXPECT_TRUE(client.state() != QAbstractSocket::ConnectedState
                        || client.waitForDisconnected(kLimitMs))
                << fault;
        }
    }
}

TEST_F(SimulatorServerTest, ABrokenClientIsLetGoAndOthersAreServed)
{
    QTcpSocket good;
    connectClient(good);
    QTcpSocket bad;
    connectClient(bad);
    bad.write("@0005;0008;99999999;");
    EXPECT_TRUE(bad.waitForDisconnected(kLimitMs));
    EXPECT_EQ(ask(good, kWind, 1), kWindAnswer);
}

} // namespace

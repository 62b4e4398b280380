#include "app/ConnectionProbe.h"

#include "sim/BridgeFrame.h"
#include "tests/support/LoopbackHttp.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <gtest/gtest.h>

namespace {

constexpr int kPatienceMs = 10000;

/// "ok: text" or "no: text" of the test that `start` begins.
template <typename Start>
QString resultOf(ConnectionProbe& probe, Start start)
{
    QSignalSpy finished(&probe, &ConnectionProbe::sigFinished);
    start();
    if (finished.isEmpty() && !finished.wait(kPatienceMs)) {
        return QStringLiteral("no result");
    }
    EXPECT_FALSE(probe.isRunning());
    EXPECT_EQ(finished.size(), 1);
    return (finished.at(0).at(0).toBool() ? QStringLiteral("ok: ") : QStringLiteral("no: "))
           + finished.at(0).at(1).toString();
}

/// "[METAR]", one report and "[/METAR]" on lines of their own.
QByteArray Zipped()
{
    return QByteArray::fromBase64("H4sIAAAAAAACA4v2dQ1xDIrl8vYNDlAwMDQ0NDWOUnAMDfHnitaHSgEAGkO1"
                                  "WSMAAAA=");
}

TEST(ConnectionProbe, AnswersAreRecognised)
{
    struct
    {
        QByteArray data;
        const char* says;
        bool ok;
    } const rows[] = {
        {"", "empty", false},
        {"<!DOCTYPE html><html>", "web page", false},
        {"[METAR]\nKMSP 011153Z 1\nKDEN 011153Z 2\n[/METAR]\n", "METAR block with 2", true},
        {"[SYNOP]AAXX 1=AAXX 2=[/SYNOP][TAF]\nTAF X\n\n[/TAF]", "SYNOP block with 2", true},
        {"2019/07/01 11:53\nKMSP 011153Z 00000KT\n", "1 METAR reports", true},
        {QByteArray("GRIB\0\0", 6), "GRIB file", true},
        {"\x1f\x8b\x08 torn", "gzip data that can't be read", false},
        {"Error <b>no\ndata", "begins with: Error <b>no data", false},
        {Zipped(), "gzip data. It is a weather file with a METAR block with 1", true},
    };
    for (const auto& row : rows) {
        const ProbeResult result = DescribeWeatherAnswer(row.data);
        EXPECT_EQ(result.ok, row.ok) << row.data.constData();
        EXPECT_TRUE(result.text.contains(QLatin1String(row.says))) << qPrintable(result.text);
    }
}

TEST(ConnectionProbe, TellsWhatAnAddressGives)
{
    LoopbackHttp server;
    server.serve("/good.gz", Zipped());
    server.serve("/refused", "x", "403 Forbidden");
    server.stall("/silent");
    ConnectionProbe probe(HostNetwork());
    probe.setTimeLimits(300, 300);
    const auto ask = [&](const QString& url) {
        return resultOf(probe, [&] { probe.testAddress(QUrl(url)); });
    };
    EXPECT_TRUE(ask(server.url(QStringLiteral("/good.gz")))
                    .startsWith(QLatin1String("ok: HTTP status 200")));
    EXPECT_TRUE(ask(server.url(QStringLiteral("/refused")))
                    .startsWith(QLatin1String("no: HTTP status 403")));
    EXPECT_TRUE(
        ask(server.url(QStringLiteral("/silent"))).startsWith(QLatin1String("no: No answer")));
    EXPECT_TRUE(
        ask(QStringLiteral("ftp://a/b")).startsWith(QLatin1String("no: This is no address")));
    EXPECT_TRUE(ask(QStringLiteral("http://127.0.0.1:1/"))
                    .startsWith(QLatin1String("no: The server can't be reached")));
}

/// A bridge server that answers each frame with the next prepared block, cut into single bytes.
class FakeBridge
{
public:
    explicit FakeBridge(QList<QByteArray> answers) : m_answers(std::move(answers))
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                received << socket->readAll();
                const QByteArray answer =
                    m_answers.isEmpty() ? QByteArray() : m_answers.takeFirst();
                for (const char byte : answer) {
                    socket->write(&byte, 1);
                    socket->flush();
                }
            });
        });
    }
    int port() const { return m_server.serverPort(); }

    QList<QByteArray> received;

private:
    QTcpServer m_server;
    QList<QByteArray> m_answers;
};

TEST(ConnectionProbe, TellsWhatABridgeServerIs)
{
    const QByteArray hello = FrameBytes(1, 1, "SERVERAPI=3.30");
    struct
    {
        QList<QByteArray> answers;
        const char* says;
    } const rows[] = {
        {{hello, FrameBytes(2, 81, "FS;ID=13;NAME=X-Plane 12;IFID=8;IF=Plug-in")},
         "ok: Connected to 127.0.0.1:PORT, server API version 3.30. Simulator: X-Plane 12, through "
         "Plug-in."},
        {{hello, FrameBytes(2, 81, "nothing")},
         "ok: Connected to 127.0.0.1:PORT, server API "
         "version 3.30. The server has no simulator"},
        {{FrameBytes(1, 1, "SERVERAPI=2.9")},
         "no: A server answers at 127.0.0.1:PORT, but its API "
         "version is 2.9 and 3.3 is needed. Please update the "
         "server"},
        {{FrameBytes(1, 1, "SERVERAPI=4.0")},
         "no: A server answers at 127.0.0.1:PORT, but its API "
         "version is 4.0 and 3.3 is needed. Please update "
         "Cirrilon"},
        {{"HTTP/1.1 400 Bad Request\r\n\r\n"}, "no: Something answers"},
        {{"@0001;0001;99999999;"}, "no: Something answers"},
        {{}, "no: Something is listening there"},
    };
    for (const auto& row : rows) {
        FakeBridge bridge(row.answers);
        ConnectionProbe probe(HostNetwork());
        probe.setTimeLimits(1000, 1000);
        const QString result =
            resultOf(probe, [&] { probe.testBridge(QStringLiteral("127.0.0.1"), bridge.port()); });
        const QString port = QString::number(bridge.port());
        EXPECT_TRUE(
            result.startsWith(QString::fromLatin1(row.says).replace(QLatin1String("PORT"), port)))
            << qPrintable(result);
        EXPECT_TRUE(bridge.received.value(0).contains("CLIENTAPI=3.3;Cirrilon v."));
    }
    ConnectionProbe probe(HostNetwork());
    EXPECT_TRUE(resultOf(probe, [&] {
                    probe.testBridge(QStringLiteral("127.0.0.1"), 1);
                }).startsWith(QLatin1String("no: The connection was refused")));
}

} // namespace

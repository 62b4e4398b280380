#include "app/download/ConnectionProbe.h"

#include "sim/BridgeFrame.h"
#include "tests/support/LoopbackHttp.h"
#include "tests/support/Text.h"

#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
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
        return "no result"_q;
    }
    EXPECT_FALSE(probe.isRunning());
    EXPECT_EQ(finished.size(), 1);
    return (finished.at(0).at(0).toBool() ? "ok: "_q : "no: "_q) + finished.at(0).at(1).toString();
}

/// "[METAR]", one report and "[/METAR]" on lines of their own.
QByteArray zipped()
{
    return QByteArray::fromBase64("H4sIAAAAAAACA4v2dQ1xDIrl8vYNDlAwMDQ0NDWOUnAMDfHnitaHSgEAGkO1"
                                  "WSMAAAA=");
}

TEST(ConnectionProbeTest, AnswersAreRecognised)
{
    const std::tuple<QByteArray, QString, bool> rows[] = {
        {"", "empty"_q, false},
        {"<!DOCTYPE html><html>", "web page"_q, false},
        {"[METAR]\nKMSP 011153Z 1\nKDEN 011153Z 2\n[/METAR]\n", "METAR block with 2"_q, true},
        {"[SYNOP]AAXX 1=AAXX 2=[/SYNOP][TAF]\nTAF X\n\n[/TAF]", "SYNOP block with 2"_q, true},
        {"2019/07/01 11:53\nKMSP 011153Z 00000KT\n", "1 METAR reports"_q, true},
        {QByteArray("GRIB\0\0", 6), "GRIB file"_q, true},
        {"\x1f\x8b\x08 torn", "gzip data that can't be read"_q, false},
        {"Error <b>no\ndata", "begins with: Error <b>no data"_q, false},
        {zipped(), "gzip data. It is a weather file with a METAR block with 1"_q, true},
    };
    for (const auto& [data, says, ok] : rows) {
        const ProbeResult result = describeWeatherAnswer(data);
        EXPECT_EQ(result.ok, ok) << data.constData();
        EXPECT_TRUE(result.text.contains(says)) << qPrintable(result.text);
    }
}

TEST(ConnectionProbeTest, TellsWhatAnAddressGives)
{
    LoopbackHttp server;
    server.serve("/good.gz", zipped());
    server.serve("/refused", "x", "403 Forbidden");
    server.stall("/silent");
    ConnectionProbe probe(hostNetwork());
    probe.setTimeLimits(300, 300);
    const std::pair<QString, QString> rows[] = {
        {server.url("/good.gz"_q), "ok: HTTP status 200"_q},
        {server.url("/refused"_q), "no: HTTP status 403"_q},
        {server.url("/silent"_q), "no: No answer"_q},
        {"ftp://a/b"_q, "no: This is no address"_q},
        {"http://127.0.0.1:1/"_q, "no: The server can't be reached"_q},
    };
    for (const auto& [url, says] : rows) {
        const QString result =
            resultOf(probe, [&probe, &address = url] { probe.testAddress(QUrl(address)); });
        EXPECT_TRUE(result.startsWith(says)) << qPrintable(result);
    }
}

TEST(ConnectionProbeTest, ACancelledTestTellsNothing)
{
    LoopbackHttp server;
    server.stall("/half", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    QTcpServer silent;
    silent.listen(QHostAddress::LocalHost);
    ConnectionProbe probe(hostNetwork());
    QSignalSpy finished(&probe, &ConnectionProbe::sigFinished);
    for (const int waitMs : {0, 50}) {
        for (const bool bridge : {false, true}) {
            if (bridge) {
                probe.testBridge("127.0.0.1"_q, silent.serverPort());
            } else {
                probe.testAddress(QUrl(server.url("/half"_q)));
            }
            EXPECT_TRUE(probe.isRunning());
            QTest::qWait(waitMs);
            probe.cancel();
            EXPECT_FALSE(probe.isRunning());
        }
    }
    QTest::qWait(50);
    EXPECT_TRUE(finished.isEmpty());
    const QString result = resultOf(probe, [&] { probe.testAddress(QUrl(server.url("/none"_q))); });
    EXPECT_TRUE(result.startsWith("no: HTTP status 404"_q)) << "the next one isn't disturbed";
}

TEST(ConnectionProbeTest, TellsWhatABridgeServerIs)
{
    const QByteArray hello = frameBytes(1, 1, "SERVERAPI=3.30");
    const QString old = "no: A server answers at 127.0.0.1:PORT, but its API version is "_q;
    const std::pair<QList<QByteArray>, QString> rows[] = {
        {{hello, frameBytes(2, 81, "FS;ID=13;NAME=X-Plane 12;IFID=8;IF=Plug-in")},
         "ok: Connected to 127.0.0.1:PORT, server API version 3.30. "
         "Simulator: X-Plane 12, through Plug-in."_q},
        {{hello, frameBytes(2, 81, "nothing")},
         "ok: Connected to 127.0.0.1:PORT, server API version 3.30. The server has no simulator"_q},
        {{frameBytes(1, 1, "SERVERAPI=2.9")}, old + "2.9 and 3.3 is needed. Please update the s"_q},
        {{frameBytes(1, 1, "SERVERAPI=4.0")}, old + "4.0 and 3.3 is needed. Please update Cirr"_q},
        {{"HTTP/1.1 400 Bad Request\r\n\r\n"}, "no: Something answers"_q},
        {{"@0001;0001;99999999;"}, "no: Something answers"_q},
        {{}, "no: Something is listening there"_q},
    };
    ConnectionProbe probe(hostNetwork());
    probe.setTimeLimits(1000, 1000);
    const auto ask = [&probe](int port) {
        return resultOf(probe, [&] { probe.testBridge("127.0.0.1"_q, port); });
    };
    for (const auto& row : rows) {
        QList<QByteArray> answers = row.first;
        QByteArray received;
        QTcpServer bridge; // answers each frame with the next block, cut into single bytes
        bridge.listen(QHostAddress::LocalHost);
        QObject::connect(&bridge, &QTcpServer::newConnection, &bridge, [&] {
            QTcpSocket* socket = bridge.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [&, socket] {
                received += socket->readAll();
                for (const char byte : answers.isEmpty() ? QByteArray() : answers.takeFirst()) {
                    socket->write(&byte, 1);
                    socket->flush();
                }
            });
        });
        const QString result = ask(bridge.serverPort());
        const QString port = QString::number(bridge.serverPort());
        EXPECT_TRUE(result.startsWith(QString(row.second).replace("PORT"_q, port)))
            << qPrintable(result);
        EXPECT_TRUE(received.contains("CLIENTAPI=3.3;Cirrilon v."));
    }
    EXPECT_TRUE(ask(1).startsWith("no: The connection was refused"_q));
}

} // namespace

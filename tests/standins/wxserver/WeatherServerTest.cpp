#include "standins/wxserver/WeatherServer.h"

#include "app/base/Gzip.h"
#include "standins/wxserver/ServerProgram.h"
#include "standins/wxserver/WeatherFileText.h"
#include "standins/wxserver/WeatherServerThread.h"
#include "tests/support/FakeClock.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpSocket>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

namespace {

using namespace wxserver;

constexpr int kLimitMs = 20000;

struct Reply
{
    int status = 0;
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QByteArray body;
    QByteArray location;
    QByteArray disposition;
};

class WeatherServerTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_server.start()); }

    /// Gives up after `limitMs` without an end of the reply, or once it is longer than `limit`.
    Reply get(const QString& path, int limitMs = kLimitMs, qint64 limit = 100'000'000)
    {
        const std::unique_ptr<QNetworkReply> reply(
            m_network.get(QNetworkRequest(QUrl(m_server.url() + path))));
        QEventLoop loop;
        Reply read;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop, [&] {
            read.body += reply->readAll();
            if (read.body.size() > limit) {
                reply->abort();
            }
        });
        QTimer::singleShot(limitMs, reply.get(), &QNetworkReply::abort);
        loop.exec();
        read.body += reply->isOpen() ? reply->readAll() : QByteArray();
        read.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        read.error = reply->error();
        read.location = reply->rawHeader("Location");
        read.disposition = reply->rawHeader("Content-Disposition");
        return read;
    }
    void fault(const char* text) { ASSERT_TRUE(m_server.addFault(QString::fromLatin1(text))); }

    /// What the server answers to raw bytes until it closes.
    QByteArray raw(const QByteArray& bytes)
    {
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), m_server.port());
        socket.waitForConnected(kLimitMs);
        socket.write(bytes);
        QByteArray answer;
        while (socket.waitForReadyRead(kLimitMs)) {
            answer += socket.readAll();
        }
        return answer + socket.readAll();
    }

    WeatherServerThread m_server;
    QNetworkAccessManager m_network;
};

int metarsOf(const QByteArray& list)
{
    const GzipResult inflated = inflateGzip(list);
    return readReports(inflated.ok() ? inflated.data : list).metars.size();
}

TEST_F(WeatherServerTest, SpeaksPlainHttp)
{
    const QByteArray piped = raw("HEAD /global_wind.grib HTTP/1.1\r\n\r\nPOST / HTTP/1.1\r\n"
                                 "Content-Length: 4\r\n\r\nbodyGET /x HTTP/1.0\r\n\r\n");
    EXPECT_TRUE(piped.startsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_TRUE(piped.contains("\r\nContent-Length: 56826\r\n"));
    EXPECT_FALSE(piped.contains("7777")); // HEAD has no body
    EXPECT_TRUE(piped.contains("HTTP/1.1 405 "));
    EXPECT_TRUE(piped.contains("HTTP/1.1 404 "));
    EXPECT_TRUE(raw("nonsense\r\n\r\n").startsWith("HTTP/1.1 400 "));
    EXPECT_TRUE(raw(QByteArray(100000, 'a')).startsWith("HTTP/1.1 431 "));
    EXPECT_EQ(get(QStringLiteral("/global_wind.grib")).status, 200);
}

TEST_F(WeatherServerTest, MisbehavesOnDemandAndRecovers)
{
    const QString wind = QStringLiteral("/global_wind.grib");
    const int whole = get(wind).body.size();
    using Error = QNetworkReply::NetworkError;
    for (const auto& [text, error, bytes] :
         {std::tuple{"*=cutx1", Error::RemoteHostClosedError, whole / 2},
          {"*=length:5x1", Error::RemoteHostClosedError, whole},
          {"*=truncatex1", Error::NoError, whole / 2},
          {"*=trickle:200000x1", Error::NoError, whole},
          {"*=stallx1", Error::OperationCanceledError, 0},
          {"*=stall-bodyx1", Error::OperationCanceledError, whole / 2}})
    {
        fault(text);
        const Reply reply = get(wind, error == Error::OperationCanceledError ? 300 : kLimitMs);
        EXPECT_EQ(reply.error, error) << text;
        EXPECT_EQ(reply.body.size(), bytes) << text;
        EXPECT_EQ(get(wind).body.size(), whole) << text;
    }
    fault("*=endless:80x1");
    EXPECT_GT(get(wind, kLimitMs, 65 * 1024 * 1024).body.size(), 64 * 1024 * 1024);

    const QString list = QStringLiteral("/weather_noaa.gz");
    fault("/weather_*=status:503x2");
    EXPECT_EQ(get(QStringLiteral("/metar_noaa.txt")).status, 200);
    EXPECT_EQ(get(list).status, 503);
    EXPECT_EQ(get(list).status, 503);
    EXPECT_GT(metarsOf(get(list).body), 9000);
    fault("*=short:9x1");
    EXPECT_EQ(metarsOf(get(list).body), 9);
    fault("*=bombx1");
    const QByteArray bomb = get(list).body;
    EXPECT_LT(bomb.size(), 1'000'000);
    EXPECT_EQ(inflateGzip(bomb, 300LL * 1024 * 1024).error, QString());
    fault("*=redirect:ftp://127.0.0.1/x1");
    EXPECT_EQ(get(list).location, QByteArray("ftp://127.0.0.1/"));
    fault("*=name");
    EXPECT_TRUE(get(list).disposition.contains("../../../"));
    EXPECT_TRUE(get(QStringLiteral("/cirrilon_v3_history.php?type=1"))
                    .body.contains("<filename>../../../"));
    m_server.clearFaults(QStringLiteral("*"));
    EXPECT_EQ(get(list).disposition, QByteArray());
}

TEST(ServerProgramTest, ReadsArgumentsAndOrders)
{
    ServerOptions options;
    QString reason;
    const QString port = QStringLiteral("--port");
    EXPECT_TRUE(
        readOptions({port, QStringLiteral("81"), QStringLiteral("--quiet")}, options, reason));
    EXPECT_EQ(options.port, 81);
    EXPECT_FALSE(readOptions({port}, options, reason));
    EXPECT_FALSE(readOptions({port, QStringLiteral("99999")}, options, reason));
    EXPECT_FALSE(readOptions({QStringLiteral("--quit")}, options, reason));

    WeatherServer server;
    for (const char* const good :
         {"", "fault *=stall", "clear *", "clear", "info Version/cirrilonv3=4.0"})
    {
        EXPECT_TRUE(obey(server, QString::fromLatin1(good), reason)) << good;
    }
    for (const char* const bad : {"fault", "info x", "halt"}) {
        EXPECT_FALSE(obey(server, QString::fromLatin1(bad), reason)) << bad;
    }
}

} // namespace

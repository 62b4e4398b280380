#include "app/base/DownloadManager.h"

#include "app/base/SaveName.h"
#include "app/base/StopFlag.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeUserDialogs.h"
#include "tests/support/LoopbackHttp.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>

namespace {

constexpr int kPatienceMs = 10000;

class DownloadManagerTest : public SettingsFixture
{
protected:
    DownloadContext context()
    {
        return {&m_settings, HostNetwork(), &m_dialogs, &m_stop, m_limits};
    }
    QString tmp(const char* name) const { return m_settings.tmpFolder() + QLatin1String(name); }
    /// Runs a queue of paths; the last file and error.
    QVariantList download(const QStringList& paths)
    {
        auto* manager = new DownloadManager(context());
        QSignalSpy finished(manager, &DownloadManager::finished);
        QObject::connect(manager, &DownloadManager::sigDownloadError,
                         [this](int code, const QString&) { m_errors.append(code); });
        for (const QString& path : paths) {
            manager->append(QUrl(m_server.url(path)), QString());
        }
        const QPointer<DownloadManager> alive(manager);
        EXPECT_TRUE(finished.wait(kPatienceMs));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(alive.isNull());
        return finished.value(0);
    }
    /// Error of a synchronous fetch, and how long it took.
    int fetch(const QString& url)
    {
        QElapsedTimer timer;
        timer.start();
        DownloadManager manager(context());
        QByteArray data("untouched");
        const int error = manager.getToBytes(url, data);
        m_text = manager.lastErrorText();
        m_tookMs = timer.elapsed();
        EXPECT_EQ(data == "untouched", error != 0);
        EXPECT_EQ(m_text.isEmpty(), error == 0);
        return error;
    }

    Settings m_settings{QString(), m_random};
    FakeUserDialogs m_dialogs;
    StopFlag m_stop;
    DownloadLimits m_limits;
    LoopbackHttp m_server;
    QList<int> m_errors;
    QString m_text;
    qint64 m_tookMs = 0;
};

TEST_F(DownloadManagerTest, QueueSavesEachAddressUnderAFreeName)
{
    m_server.serve("/weather.gz", "packed");
    m_server.serve("/list/", "listed");
    const QVariantList last =
        download({QStringLiteral("/weather.gz"), QStringLiteral("/weather.gz?x=../../a"),
                  QStringLiteral("/weather.gz"), QStringLiteral("/list/")});
    EXPECT_EQ(last, (QVariantList{tmp("download"), 0}));
    for (const char* name : {"weather.gz", "weather.gz.0", "weather.gz.1"}) {
        EXPECT_EQ(read(tmp(name)), "packed") << name;
    }
    EXPECT_EQ(read(tmp("download")), "listed");
    EXPECT_TRUE(m_server.requests.first().contains("\r\nUser-Agent: Cirrilon 3.0\r\n"));
}

TEST_F(DownloadManagerTest, QueueGoesOnBehindAFailureAndKeepsNoHalfFile)
{
    m_server.serve("/second", "whole");
    const QVariantList last = download({QStringLiteral("/first"), QStringLiteral("/second")});
    EXPECT_EQ(last, (QVariantList{tmp("second"), 0}));
    EXPECT_EQ(m_errors, QList<int>{QNetworkReply::ContentNotFoundError});
    EXPECT_EQ(read(tmp("first")), "(missing)");
    EXPECT_EQ(download({QStringLiteral("/third")}).value(1), QNetworkReply::ContentNotFoundError);
}

TEST_F(DownloadManagerTest, QueueTellsWhenTheFolderCannotBeMade)
{
    write(Settings::documentsFolder() + QStringLiteral("/Cirrilonv3"), "a file");
    EXPECT_EQ(download({QStringLiteral("/weather.gz")}).value(1), -1);
    EXPECT_EQ(m_errors, (QList<int>{1, -1}));
    EXPECT_TRUE(m_server.requests.isEmpty());
}

TEST_F(DownloadManagerTest, SynchronousTargets)
{
    m_server.serve("/text", "Z\xC3\xBCrich");
    DownloadManager manager(context());
    QSignalSpy progress(&manager, &DownloadManager::sigDownloadProgress);
    QString text;
    EXPECT_EQ(manager.getToString(m_server.url(QStringLiteral("/text")), text), 0);
    EXPECT_EQ(text, QString::fromUtf8("Z\xC3\xBCrich"));
    ASSERT_FALSE(progress.isEmpty());
    EXPECT_TRUE(progress.last().value(2).toString().startsWith(QLatin1String("Downloading...")));

    write(path("file"), "before");
    EXPECT_NE(manager.getToFile(m_server.url(QStringLiteral("/none")), path("file")), 0);
    EXPECT_EQ(read(path("file")), "before");
    EXPECT_EQ(manager.getToFile(m_server.url(QStringLiteral("/text")), path("file")), 0);
    EXPECT_EQ(read(path("file")), "Z\xC3\xBCrich");

    const int before = m_server.requests.size();
    EXPECT_EQ(manager.getToFile(m_server.url(QStringLiteral("/text")), path("no/file")), -1);
    EXPECT_EQ(m_server.requests.size(), before);
    EXPECT_EQ(m_dialogs.warnings(), QStringList(QStringLiteral("Cirrilon - Download Error|Can not "
                                                               "open file ")
                                                + path("no/file")));
}

TEST_F(DownloadManagerTest, AuthorisationGivesTheHeaderNames)
{
    m_server.serve("/login", "welcome", "200 OK", "X-Limit: 5\r\n");
    DownloadManager manager(context());
    QString text;
    QList<QByteArray> headers;
    EXPECT_EQ(manager.getWithAuth(m_server.url(QStringLiteral("/login")), QStringLiteral("dTpw"),
                                  text, headers),
              0);
    EXPECT_EQ(text, QStringLiteral("welcome"));
    EXPECT_TRUE(headers.contains("X-Limit"));
    EXPECT_TRUE(m_server.requests.first().contains("\r\nAuthorization: Basic dTpw\r\n"));
}

TEST_F(DownloadManagerTest, RefusesWhatIsTooLarge)
{
    m_limits.replyBytes = 1000;
    const QByteArray big(1001, 'x');
    m_server.serve("/fits", big.left(1000));
    m_server.serve("/announced", big);
    m_server.serveRaw("/endless", "HTTP/1.1 200 OK\r\n\r\n" + big);
    EXPECT_EQ(fetch(m_server.url(QStringLiteral("/fits"))), 0);
    for (const char* name : {"/announced", "/endless"}) {
        EXPECT_EQ(fetch(m_server.url(QLatin1String(name))), QNetworkReply::UnknownContentError);
        EXPECT_TRUE(m_text.contains(QLatin1String("too large"))) << m_text.toStdString();
        EXPECT_EQ(download({QLatin1String(name)}).value(1), QNetworkReply::UnknownContentError);
        EXPECT_EQ(read(tmp(name + 1)), "(missing)");
    }
}

TEST_F(DownloadManagerTest, FollowsRedirectsWithinTheWebOnly)
{
    write(path("secret"), "secret");
    m_server.serve("/goal", "reached");
    m_server.serve("/moved", "", "302 Found",
                   "Location: " + m_server.url(QStringLiteral("/goal")).toUtf8() + "\r\n");
    m_server.serve("/round", "", "302 Found", "Location: /round\r\n");
    m_server.serve("/local", "", "302 Found",
                   "Location: file://" + path("secret").toUtf8() + "\r\n");
    EXPECT_EQ(fetch(m_server.url(QStringLiteral("/moved"))), 0);
    EXPECT_EQ(fetch(m_server.url(QStringLiteral("/round"))), QNetworkReply::TooManyRedirectsError);
    EXPECT_LE(m_server.count("/round"), 12); // six, some of which Qt may send twice
    EXPECT_NE(fetch(m_server.url(QStringLiteral("/local"))), 0);
    for (const QString& url :
         {QStringLiteral("file://") + path("secret"), QStringLiteral("data:,text"),
          QStringLiteral("ftp://127.0.0.1/a"), QStringLiteral("/weather.gz"), QString()})
    {
        EXPECT_EQ(fetch(url), QNetworkReply::ProtocolUnknownError) << url.toStdString();
    }
}

TEST_F(DownloadManagerTest, GivesUpATransferThatStalls)
{
    m_limits.stallMs = 200;
    m_server.stall("/silent");
    m_server.stall("/half", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    for (const char* name : {"/silent", "/half"}) {
        EXPECT_EQ(fetch(m_server.url(QLatin1String(name))), QNetworkReply::TimeoutError);
        EXPECT_TRUE(m_text.contains(QLatin1String("0.2 seconds"))) << m_text.toStdString();
    }
    EXPECT_EQ(download({QStringLiteral("/half")}).value(1), QNetworkReply::TimeoutError);

    m_limits = DownloadLimits();
    m_limits.wholeMs = 200; // the server may send a byte now and then
    EXPECT_EQ(fetch(m_server.url(QStringLiteral("/half"))), QNetworkReply::TimeoutError);
    EXPECT_TRUE(m_text.contains(QLatin1String("longer than 0.2 seconds"))) << m_text.toStdString();
}

TEST_F(DownloadManagerTest, LeavesNoHalfFileWhenDeleted)
{
    m_server.stall("/half", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    auto manager = std::make_unique<DownloadManager>(context());
    manager->append(QUrl(m_server.url(QStringLiteral("/half"))), QString());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !m_server.requests.isEmpty(); }, kPatienceMs));
    EXPECT_NE(read(tmp("half")), "(missing)");
    // The other face of a busy one gives way, and the transfer isn't disturbed.
    QByteArray data;
    EXPECT_EQ(manager->getToBytes(m_server.url(QStringLiteral("/half")), data),
              QNetworkReply::OperationCanceledError);
    EXPECT_NE(read(tmp("half")), "(missing)");
    manager.reset();
    EXPECT_EQ(read(tmp("half")), "(missing)");
}

TEST_F(DownloadManagerTest, GivesWayToTheEndOfTheProgram)
{
    m_server.stall("/silent");
    int error = 0;
    const std::unique_ptr<QThread> worker(
        QThread::create([&] { error = fetch(m_server.url(QStringLiteral("/silent"))); }));
    QSignalSpy ended(worker.get(), &QThread::finished);
    QTimer::singleShot(100, [this] { m_stop.raise(); });
    worker->start();
    ASSERT_TRUE(ended.wait(kPatienceMs));
    worker->wait();
    EXPECT_EQ(error, QNetworkReply::OperationCanceledError);
    EXPECT_LT(m_tookMs, 2000);
    // Raised before the start, nothing is sent, and what is queued is dropped.
    const int before = m_server.requests.size();
    EXPECT_EQ(download({QStringLiteral("/a"), QStringLiteral("/b")}).value(1),
              QNetworkReply::OperationCanceledError);
    EXPECT_EQ(m_server.requests.size(), before);
}

TEST_F(DownloadManagerTest, InflatesEitherHeaderAndSaysWhatIsWrong)
{
    const QByteArray zlib = qCompress(QByteArray(3000, 'x')).mid(4); // Qt adds the size
    EXPECT_EQ(DownloadManager::gUncompress(zlib), QByteArray(3000, 'x'));
    EXPECT_TRUE(DownloadManager::gUncompress("\x1f\x8b\x08\x00").isEmpty());
    EXPECT_TRUE(DownloadManager::gUncompress(zlib.left(zlib.size() - 1)).isEmpty());

    const struct
    {
        QByteArray packed;
        const char* reason;
    } rows[] = {
        {zlib, ""}, {"", "empty"}, {zlib.left(12), "truncated"}, {"<html></html>", "damaged"}};
    for (const auto& row : rows) {
        write(path("packed"), row.packed);
        write(path("plain"), "of the time before");
        QString reason;
        DownloadManager::gunzipFile(path("packed"), path("plain"), &reason);
        EXPECT_TRUE(reason.contains(QLatin1String(row.reason))) << reason.toStdString();
        EXPECT_EQ(read(path("plain")), reason.isEmpty() ? QByteArray(3000, 'x') : QByteArray());
    }
}

TEST(SaveName, NeverLeavesTheFolder)
{
    const struct
    {
        const char* url;
        const char* name;
    } rows[] = {
        {"http://h/a/weather_noaa.gz", "weather_noaa.gz"},
        {"http://h/a/b.php?f=/x/y", "b.php"},
        {"http://h", "download"},
        {"http://h/a/", "download"},
        {"http://h/a/..", "download"},
        {"http://h/a/%2e%2e", "download"},
        {"http://h/a/..%2Fpasswd", "passwd"},
        {"http://h/a/..%5Cpasswd", "download"},
        {"http://h/a/C:x", "download"},
        {"http://h/a/nul.txt", "download"},
        {"http://h/a/LPT1", "download"},
        {"http://h/a/com10.txt", "com10.txt"},
        {"http://h/a/a%00b", "download"},
        {"http://h/a/a%0Ab", "download"},
        {"http://h/a/a%E2%80%AEgpj.exe", "download"},
        {"http://h/a/end.", "download"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(savename::fromUrl(QUrl(QLatin1String(row.url))), QLatin1String(row.name))
            << row.url;
    }
    const QString longName = QStringLiteral("http://h/") + QString(300, QLatin1Char('a'));
    EXPECT_EQ(savename::fromUrl(QUrl(longName)), QStringLiteral("download"));
}

} // namespace

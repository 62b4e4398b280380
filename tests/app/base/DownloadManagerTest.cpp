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
        return {&m_settings, hostNetwork(), &m_dialogs, &m_stop, m_limits};
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

TEST_F(DownloadManagerTest, FetchedToMemoryARefusalIsSeenToo)
{
    m_server.serve("/good", "data");
    m_server.serve("/refused", "page", "403 Forbidden");
    m_server.serve("/large", QByteArray(2000, 'x'));
    m_limits.replyBytes = 1000;
    const struct
    {
        QString url;
        int error, status;
        QByteArray phrase, data;
        bool tooLarge;
    } rows[] = {
        {m_server.url("/good"_q), 0, 200, "OK", "data", false},
        {m_server.url("/refused"_q), QNetworkReply::ContentAccessDenied, 403, "Forbidden", "page",
         false},
        {m_server.url("/large"_q), QNetworkReply::UnknownContentError, 200, "OK", "", true},
        {"ftp://a/b"_q, QNetworkReply::ProtocolUnknownError, 0, "", "", false},
        {"http://127.0.0.1:1/"_q, QNetworkReply::ConnectionRefusedError, 0, "", "", false},
    };
    DownloadManager manager(context());
    int answers = 0;
    DownloadAnswer answer;
    QObject::connect(&manager, &DownloadManager::sigFetched, [&](const DownloadAnswer& given) {
        answer = given;
        ++answers;
    });
    for (const auto& row : rows) {
        SCOPED_TRACE(row.url.toStdString());
        answers = 0;
        manager.fetchToMemory(QUrl(row.url));
        EXPECT_EQ(answers, 0) << "from the event loop only";
        ASSERT_TRUE(QTest::qWaitFor([&] { return answers > 0; }, kPatienceMs));
        EXPECT_EQ(answer.error, row.error);
        EXPECT_EQ(answer.errorText.isEmpty(), row.error == 0);
        EXPECT_EQ(answer.status, row.status);
        EXPECT_EQ(answer.phrase, row.phrase);
        EXPECT_EQ(answer.data, row.data);
        EXPECT_EQ(answer.tooLarge, row.tooLarge);
    }
}

TEST_F(DownloadManagerTest, QueueSavesEachAddressUnderAFreeName)
{
    m_server.serve("/weather.gz", "packed");
    m_server.serve("/list/", "listed");
    const QVariantList last =
        download({"/weather.gz"_q, "/weather.gz?x=../../a"_q, "/weather.gz"_q, "/list/"_q});
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
    const QVariantList last = download({"/first"_q, "/second"_q});
    EXPECT_EQ(last, (QVariantList{tmp("second"), 0}));
    EXPECT_EQ(m_errors, QList<int>{QNetworkReply::ContentNotFoundError});
    EXPECT_EQ(read(tmp("first")), "(missing)");
    EXPECT_EQ(download({"/third"_q}).value(1), QNetworkReply::ContentNotFoundError);
}

TEST_F(DownloadManagerTest, QueueTellsWhenTheFolderCannotBeMade)
{
    write(Settings::documentsFolder() + "/Cirrilonv3"_q, "a file");
    EXPECT_EQ(download({"/weather.gz"_q}).value(1), -1);
    EXPECT_EQ(m_errors, (QList<int>{1, -1}));
    EXPECT_TRUE(m_server.requests.isEmpty());
}

TEST_F(DownloadManagerTest, SynchronousTargets)
{
    m_server.serve("/text", "Z\xC3\xBCrich");
    DownloadManager manager(context());
    QSignalSpy progress(&manager, &DownloadManager::sigDownloadProgress);
    QString text;
    EXPECT_EQ(manager.getToString(m_server.url("/text"_q), text), 0);
    EXPECT_EQ(text, QString::fromUtf8("Z\xC3\xBCrich"));
    ASSERT_FALSE(progress.isEmpty());
    EXPECT_TRUE(progress.last().value(2).toString().startsWith("Downloading..."_q));

    write(path("file"), "before");
    EXPECT_NE(manager.getToFile(m_server.url("/none"_q), path("file")), 0);
    EXPECT_EQ(read(path("file")), "before");
    EXPECT_EQ(manager.getToFile(m_server.url("/text"_q), path("file")), 0);
    EXPECT_EQ(read(path("file")), "Z\xC3\xBCrich");

    const int before = m_server.requests.size();
    EXPECT_EQ(manager.getToFile(m_server.url("/text"_q), path("no/file")), -1);
    EXPECT_EQ(m_server.requests.size(), before);
    EXPECT_EQ(m_dialogs.warnings(),
              QStringList("Cirrilon - Download Error|Can not open file "_q + path("no/file")));
}

TEST_F(DownloadManagerTest, AuthorisationGivesTheHeaderNames)
{
    m_server.serve("/login", "welcome", "200 OK", "X-Limit: 5\r\n");
    DownloadManager manager(context());
    QString text;
    QList<QByteArray> headers;
    EXPECT_EQ(manager.getWithAuth(m_server.url("/login"_q), "dTpw"_q, text, headers), 0);
    EXPECT_EQ(text, "welcome"_q);
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
    EXPECT_EQ(fetch(m_server.url("/fits"_q)), 0);
    for (const char* name : {"/announced", "/endless"}) {
        EXPECT_EQ(fetch(m_server.url(QLatin1String(name))), QNetworkReply::UnknownContentError);
        EXPECT_TRUE(m_text.contains("too large"_q)) << m_text.toStdString();
        EXPECT_EQ(download({QLatin1String(name)}).value(1), QNetworkReply::UnknownContentError);
        EXPECT_EQ(read(tmp(name + 1)), "(missing)");
    }
}

TEST_F(DownloadManagerTest, FollowsRedirectsWithinTheWebOnly)
{
    write(path("secret"), "secret");
    m_server.serve("/goal", "reached");
    m_server.serve("/moved", "", "302 Found",
                   "Location: " + m_server.url("/goal"_q).toUtf8() + "\r\n");
    m_server.serve("/round", "", "302 Found", "Location: /round\r\n");
    m_server.serve("/local", "", "302 Found",
                   "Location: file://" + path("secret").toUtf8() + "\r\n");
    EXPECT_EQ(fetch(m_server.url("/moved"_q)), 0);
    EXPECT_EQ(fetch(m_server.url("/round"_q)), QNetworkReply::TooManyRedirectsError);
    EXPECT_LE(m_server.count("/round"), 12); // six, some of which Qt may send twice
    EXPECT_NE(fetch(m_server.url("/local"_q)), 0);
    for (const QString& url : {"file://"_q + path("secret"), "data:,text"_q, "ftp://127.0.0.1/a"_q,
                               "/weather.gz"_q, QString()})
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
        EXPECT_TRUE(m_text.contains("0.2 seconds"_q)) << m_text.toStdString();
    }
    EXPECT_EQ(download({"/half"_q}).value(1), QNetworkReply::TimeoutError);

    m_limits = DownloadLimits();
    m_limits.wholeMs = 200; // the server may send a byte now and then
    EXPECT_EQ(fetch(m_server.url("/half"_q)), QNetworkReply::TimeoutError);
    EXPECT_TRUE(m_text.contains("longer than 0.2 seconds"_q)) << m_text.toStdString();
}

TEST_F(DownloadManagerTest, LeavesNoHalfFileWhenDeleted)
{
    m_server.stall("/half", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    auto manager = std::make_unique<DownloadManager>(context());
    manager->append(QUrl(m_server.url("/half"_q)), QString());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !m_server.requests.isEmpty(); }, kPatienceMs));
    EXPECT_NE(read(tmp("half")), "(missing)");
    // The other face of a busy one gives way, and the transfer isn't disturbed.
    QByteArray data;
    EXPECT_EQ(manager->getToBytes(m_server.url("/half"_q), data),
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
        QThread::create([&] { error = fetch(m_server.url("/silent"_q)); }));
    QSignalSpy ended(worker.get(), &QThread::finished);
    QTimer::singleShot(100, [this] { m_stop.raise(); });
    worker->start();
    ASSERT_TRUE(ended.wait(kPatienceMs));
    worker->wait();
    EXPECT_EQ(error, QNetworkReply::OperationCanceledError);
    EXPECT_LT(m_tookMs, 2000);
    // Raised before the start, nothing is sent, and what is queued is dropped.
    const int before = m_server.requests.size();
    EXPECT_EQ(download({"/a"_q, "/b"_q}).value(1), QNetworkReply::OperationCanceledError);
    EXPECT_EQ(m_server.requests.size(), before);
}

TEST_F(DownloadManagerTest, InflatesEitherHeaderAndSaysWhatIsWrong)
{
    const QByteArray zlib = qCompress(QByteArray(3000, 'x')).mid(4); // Qt adds the size
    EXPECT_EQ(DownloadManager::gUncompress(zlib), QByteArray(3000, 'x'));
    EXPECT_TRUE(DownloadManager::gUncompress("\x1f\x8b\x08\x00").isEmpty());
    EXPECT_TRUE(DownloadManager::gUncompress(zlib.left(zlib.size() - 1)).isEmpty());

    const std::pair<QByteArray, const char*> rows[] = {
        {zlib, ""}, {"", "empty"}, {zlib.left(12), "truncated"}, {"<html></html>", "damaged"}};
    for (const auto& [packed, expected] : rows) {
        write(path("packed"), packed);
        write(path("plain"), "of the time before");
        QString reason;
        DownloadManager::gunzipFile(path("packed"), path("plain"), &reason);
        EXPECT_TRUE(reason.contains(QLatin1String(expected))) << reason.toStdString();
        EXPECT_EQ(read(path("plain")), reason.isEmpty() ? QByteArray(3000, 'x') : QByteArray());
    }
}

TEST(SaveNameTest, NeverLeavesTheFolder)
{
    const std::pair<const char*, const char*> rows[] = {
        {"/weather_noaa.gz", "weather_noaa.gz"},
        {"/b.php?f=/x/y", "b.php"},
        {"/com10.txt", "com10.txt"},
        {"/..%2Fpasswd", "passwd"},
        {"/", "download"},
        {"/..", "download"},
        {"/%2e%2e", "download"},
        {"/..%5Cpasswd", "download"},
        {"/C:x", "download"},
        {"/nul.txt", "download"},
        {"/LPT1", "download"},
        {"/a%00b", "download"},
        {"/a%0Ab", "download"},
        {"/a%E2%80%AEgpj.exe", "download"},
        {"/end.", "download"},
    };
    for (const auto& [path, name] : rows) {
        const QUrl url("http://h/a"_q + QLatin1String(path));
        EXPECT_EQ(savename::fromUrl(url), QLatin1String(name)) << path;
    }
    const QString longName = "http://h/"_q + QString(300, QLatin1Char('a'));
    EXPECT_EQ(savename::fromUrl(QUrl(longName)), "download"_q);
    EXPECT_EQ(savename::fromUrl(QUrl("http://h"_q)), "download"_q);
}

} // namespace

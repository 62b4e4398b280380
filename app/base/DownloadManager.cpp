#include "app/base/DownloadManager.h"

#include "app/base/OutsideText.h"
#include "app/base/SaveName.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "app/base/UserDialogs.h"
#include "aviation/support/Clock.h"

#include <QDebug>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSaveFile>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

constexpr char kUserAgent[] = "Cirrilon 3.0";
constexpr int kFileError = -1;
constexpr int kFolderError = 1; ///< of sigDownloadError only
constexpr int kMaxRedirects = 5;
constexpr int kStopCheckMs = 50;

/// Error number and text of a download; 0 and empty for none.
struct Outcome
{
    int code = QNetworkReply::NoError;
    QString text;
};

/// A line of the debug stream.
void DebugLine(const QString& text)
{
    qDebug().noquote() << outsidetext::forTerminal(text);
}

QNetworkRequest MakeRequest(const QUrl& url)
{
    QNetworkRequest request(url);
    request.setRawHeader("User-Agent", kUserAgent);
    // Otherwise Qt asks for packed transfers and inflates them without a limit.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(kMaxRedirects);
    return request;
}

bool IsWeb(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty()
           && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

QString RateText(double bytesPerSecond)
{
    constexpr double kKilo = 1024.0;
    constexpr double kMega = kKilo * kKilo;
    QString unit = QStringLiteral("bytes/sec");
    double value = bytesPerSecond;
    if (bytesPerSecond >= kMega) {
        value = bytesPerSecond / kMega;
        unit = QStringLiteral("MB/s");
    } else if (bytesPerSecond >= kKilo) {
        value = bytesPerSecond / kKilo;
        unit = QStringLiteral("kB/s");
    }
    return QStringLiteral("Downloading...%1 %2").arg(value, 3, 'f', 1).arg(unit);
}

} // namespace

NetworkFactory HostNetwork()
{
    return [] {
        return std::make_unique<QNetworkAccessManager>();
    };
}

/// State of both faces, and the one transfer under way with its watchdogs.
class DownloadManager::Private
{
public:
    Private(DownloadManager& manager, DownloadContext given) : q(manager), context(std::move(given))
    {
        stallTimer.setSingleShot(true);
        stallTimer.setInterval(context.limits.stallMs);
        QObject::connect(&stallTimer, &QTimer::timeout, &q, [this] { giveUpStalled(); });
        wholeTimer.setSingleShot(true);
        wholeTimer.setInterval(context.limits.wholeMs);
        QObject::connect(&wholeTimer, &QTimer::timeout, &q, [this] { giveUpEndless(); });
        stopTimer.setInterval(kStopCheckMs);
        QObject::connect(&stopTimer, &QTimer::timeout, &q, [this] { giveWayIfStopped(); });
    }

    bool stopped() const { return context.stop != nullptr && context.stop->raised(); }
    void startClock() { startedMs = aviation::Clock::Current().MonotonicMs(); }
    /// Null if it isn't even tried; `outcome` then says why.
    QNetworkReply* begin(const QNetworkRequest& request);
    /// Takes what is left of the transfer and tells how it ended. The reply is the caller's.
    Outcome end();
    void take();
    void abort(int code, const QString& text);
    Outcome fetch(const QNetworkRequest& request, bool timed);
    bool openOutput(const QUrl& url);
    void reportQueueError();

    DownloadManager& q;
    DownloadContext context;
    std::unique_ptr<QNetworkAccessManager> network;
    QNetworkReply* reply = nullptr;                   ///< the transfer under way
    QList<QNetworkReply::RawHeaderPair> replyHeaders; ///< of the last one
    QByteArray body;                                  ///< what arrived, in the synchronous face
    qint64 received = 0;
    Outcome outcome; ///< why the transfer was given up from this side
    QTimer stallTimer;
    QTimer wholeTimer;
    QTimer stopTimer;
    qint64 startedMs = -1; ///< -1: not started, and the rate is one of a millisecond

    // The queue face.
    QList<QUrl> queue;
    QFile output;
    QString currentFileName;
    int downloadedCount = 0;
    int totalCount = 0;
    int lastError = 0;

private:
    void watch();
    void refuseAnnouncedSize();
    void refuseSize();
    void giveUpStalled();
    void giveUpEndless();
    void giveWayIfStopped();
};

QNetworkReply* DownloadManager::Private::begin(const QNetworkRequest& request)
{
    outcome = Outcome();
    body.clear();
    replyHeaders.clear();
    received = 0;
    if (stopped()) {
        outcome = {QNetworkReply::OperationCanceledError, QStringLiteral("The program ends")};
    } else if (!IsWeb(request.url())) {
        outcome = {QNetworkReply::ProtocolUnknownError,
                   QStringLiteral("Not an address of http or https: ")
                       + request.url().toDisplayString()};
    }
    if (outcome.code != QNetworkReply::NoError) {
        return nullptr;
    }
    if (network == nullptr) {
        network = context.network();
    }
    reply = network->get(request);
    watch();
    return reply;
}

void DownloadManager::Private::watch()
{
    QObject::connect(reply, &QNetworkReply::readyRead, &q, &DownloadManager::downloadReadyRead);
    QObject::connect(reply, &QNetworkReply::downloadProgress, &q,
                     &DownloadManager::downloadProgress);
    QObject::connect(reply, &QNetworkReply::metaDataChanged, &q, [this] {
        stallTimer.start();
        refuseAnnouncedSize();
    });
    stallTimer.start();
    wholeTimer.start();
    stopTimer.start();
}

void DownloadManager::Private::take()
{
    if (outcome.code != QNetworkReply::NoError || !reply->isOpen()) {
        return;
    }
    const QByteArray bytes = reply->readAll();
    if (bytes.isEmpty()) {
        return;
    }
    stallTimer.start();
    received += bytes.size();
    if (received > context.limits.replyBytes) {
        refuseSize();
    } else if (!output.isOpen()) {
        body += bytes;
    } else if (output.write(bytes) != bytes.size()) {
        abort(kFileError, QStringLiteral("Can not write file %1: %2")
                              .arg(output.fileName(), output.errorString()));
    }
}

void DownloadManager::Private::refuseAnnouncedSize()
{
    const qint64 announced = reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (announced > context.limits.replyBytes) {
        refuseSize();
    }
}

void DownloadManager::Private::refuseSize()
{
    abort(QNetworkReply::UnknownContentError,
          QStringLiteral("The answer is too large: more than %1 bytes")
              .arg(context.limits.replyBytes));
}

void DownloadManager::Private::giveUpStalled()
{
    abort(QNetworkReply::TimeoutError,
          QStringLiteral("The server sent nothing for %1 seconds")
              .arg(QString::number(context.limits.stallMs / 1000.0, 'f', 1)));
}

/// A server that sends a byte now and then would keep all further downloads out.
void DownloadManager::Private::giveUpEndless()
{
    abort(QNetworkReply::TimeoutError,
          QStringLiteral("The download took longer than %1 seconds")
              .arg(QString::number(context.limits.wholeMs / 1000.0, 'f', 1)));
}

void DownloadManager::Private::giveWayIfStopped()
{
    if (stopped()) {
        queue.clear();
        abort(QNetworkReply::OperationCanceledError, QStringLiteral("The program ends"));
    }
}

/// The first reason counts. The reply emits finished from within.
void DownloadManager::Private::abort(int code, const QString& text)
{
    if (outcome.code != QNetworkReply::NoError) {
        return;
    }
    outcome = {code, text};
    if (!reply->isFinished()) {
        reply->abort();
    }
}

Outcome DownloadManager::Private::end()
{
    stallTimer.stop();
    wholeTimer.stop();
    stopTimer.stop();
    take();
    Outcome result = outcome;
    if (result.code == QNetworkReply::NoError && reply->error() != QNetworkReply::NoError) {
        result = {reply->error(), reply->errorString()};
    }
    replyHeaders = reply->rawHeaderPairs();
    reply->disconnect(&q);
    return result;
}

Outcome DownloadManager::Private::fetch(const QNetworkRequest& request, bool timed)
{
    if (reply != nullptr) { // that one goes on undisturbed
        return {QNetworkReply::OperationCanceledError,
                QStringLiteral("Another download is still running")};
    }
    if (begin(request) == nullptr) {
        return outcome;
    }
    if (timed) {
        startClock();
    }
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished()) {
        loop.exec();
    }
    if (!reply->isFinished()) { // all loops of the thread were ended
        abort(QNetworkReply::OperationCanceledError, QStringLiteral("The program ends"));
    }
    outcome = end();
    delete std::exchange(reply, nullptr);
    if (outcome.code != QNetworkReply::NoError) {
        DebugLine(QStringLiteral("Download of %1 failed: %2\n")
                      .arg(request.url().toDisplayString(), outcome.text));
    }
    return outcome;
}

bool DownloadManager::Private::openOutput(const QUrl& url)
{
    const QString folder = context.settings->tmpFolder();
    if (!QDir().mkpath(folder)) {
        Q_EMIT q.sigDownloadError(
            kFolderError,
            QStringLiteral("(Downloader) - Can not create Directory '%1").arg(folder));
    }
    currentFileName = savename::freePath(folder, savename::fromUrl(url));
    output.setFileName(currentFileName);
    if (output.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        return true;
    }
    outcome = {kFileError, QStringLiteral("Problem opening save file '%1' for download '%2': %3\n")
                               .arg(currentFileName, url.toDisplayString(), output.errorString())};
    DebugLine(outcome.text);
    return false;
}

void DownloadManager::Private::reportQueueError()
{
    lastError = outcome.code;
    q.m_lastErrorText = outcome.text;
    Q_EMIT q.sigDownloadError(outcome.code, outcome.text.trimmed());
}

DownloadManager::DownloadManager(DownloadContext context, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(*this, std::move(context)))
{}

DownloadManager::~DownloadManager()
{
    if (d->reply != nullptr) {
        d->reply->disconnect(this);
        d->reply->abort();
        delete d->reply;
        if (d->output.isOpen()) {
            d->output.remove(); // half a file must not pass for a whole one
        }
    }
}

void DownloadManager::append(const QUrl& url, const QString& /*title*/)
{
    if (d->queue.isEmpty()) {
        QTimer::singleShot(0, this, &DownloadManager::startNextDownload);
    }
    d->queue.append(url);
    ++d->totalCount;
}

void DownloadManager::startNextDownload()
{
    if (d->reply != nullptr) {
        return; // an address appended meanwhile; it follows the running one
    }
    while (!d->queue.isEmpty()) {
        const QUrl url = d->queue.takeFirst();
        if (!d->openOutput(url)) {
            d->reportQueueError();
            continue;
        }
        if (d->begin(MakeRequest(url)) == nullptr) {
            d->output.remove();
            d->reportQueueError();
            continue;
        }
        // Queued, since giving up emits it from within the handlers of this object.
        connect(d->reply, &QNetworkReply::finished, this, &DownloadManager::downloadFinished,
                Qt::QueuedConnection);
        DebugLine(QStringLiteral("Downloading %1...\n").arg(url.toDisplayString()));
        d->startClock();
        return;
    }
    DebugLine(QStringLiteral("%1/%2 files downloaded successfully\n")
                  .arg(d->downloadedCount)
                  .arg(d->totalCount));
    deleteLater();
    Q_EMIT finished(d->currentFileName, d->lastError);
}

void DownloadManager::downloadProgress(qlonglong bytesReceived, qlonglong bytesTotal)
{
    const qint64 elapsed =
        d->startedMs < 0 ? 0 : aviation::Clock::Current().MonotonicMs() - d->startedMs;
    const double speed = static_cast<double>(bytesReceived) * 1000.0
                         / static_cast<double>(std::max<qint64>(elapsed, 1));
    Q_EMIT sigDownloadProgress(bytesReceived, bytesTotal, RateText(speed));
}

void DownloadManager::downloadReadyRead()
{
    if (d->reply != nullptr) {
        d->take();
    }
}

void DownloadManager::downloadFinished()
{
    if (d->reply == nullptr) {
        return;
    }
    d->outcome = d->end();
    std::exchange(d->reply, nullptr)->deleteLater();
    if (d->outcome.code == QNetworkReply::NoError && !d->output.flush()) {
        d->outcome = {kFileError, QStringLiteral("Can not write file %1: %2")
                                      .arg(d->output.fileName(), d->output.errorString())};
    }
    d->output.close();
    if (d->outcome.code != QNetworkReply::NoError) {
        DebugLine(QStringLiteral("Failed: %1\n").arg(d->outcome.text));
        d->output.remove(); // half a file must not pass for a whole one
        d->reportQueueError();
    } else {
        d->lastError = QNetworkReply::NoError;
        m_lastErrorText.clear();
        DebugLine(QStringLiteral("Succeeded.\n"));
        ++d->downloadedCount;
    }
    startNextDownload();
}

int DownloadManager::fetch(const QString& url, bool timed)
{
    const Outcome outcome = d->fetch(MakeRequest(QUrl(url)), timed);
    m_lastErrorText = outcome.text;
    return outcome.code;
}

int DownloadManager::getToFile(const QString& url, const QString& fileName)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        m_lastErrorText = file.errorString();
        if (d->context.dialogs != nullptr) {
            d->context.dialogs->warning(QStringLiteral("Cirrilon - Download Error"),
                                        QStringLiteral("Can not open file ") + fileName);
        }
        return kFileError;
    }
    const int error = fetch(url, true);
    if (error != QNetworkReply::NoError) {
        return error;
    }
    if (file.write(d->body) != d->body.size() || !file.commit()) {
        m_lastErrorText =
            QStringLiteral("Can not write file %1: %2").arg(fileName, file.errorString());
        return kFileError;
    }
    return QNetworkReply::NoError;
}

int DownloadManager::getToString(const QString& url, QString& text)
{
    const bool timed = false; // deliberately: the progress text shows no true rate here
    const int error = fetch(url, timed);
    if (error == QNetworkReply::NoError) {
        text = QString::fromUtf8(d->body.constData(), d->body.size());
    }
    return error;
}

int DownloadManager::getToBytes(const QString& url, QByteArray& data)
{
    const int error = fetch(url, true);
    if (error == QNetworkReply::NoError) {
        data = std::exchange(d->body, QByteArray());
    }
    return error;
}

int DownloadManager::getWithAuth(const QString& url, const QString& credentials, QString& text,
                                 QList<QByteArray>& headers)
{
    QNetworkRequest request = MakeRequest(QUrl(url));
    request.setRawHeader("Authorization", "Basic " + credentials.toUtf8());
    // Another server mustn't see the credentials.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::SameOriginRedirectPolicy);
    const Outcome outcome = d->fetch(request, true);
    m_lastErrorText = outcome.text;
    headers.clear();
    for (const auto& header : std::as_const(d->replyHeaders)) {
        headers.append(header.first);
        DebugLine(QString::fromUtf8(header.first) + QLatin1Char(':')
                  + QString::fromUtf8(header.second));
    }
    if (outcome.code == QNetworkReply::NoError) {
        text = QString::fromUtf8(d->body.constData(), d->body.size());
    }
    return outcome.code;
}

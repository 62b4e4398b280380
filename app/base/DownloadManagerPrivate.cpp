#include "app/base/DownloadManagerPrivate.h"

#include "app/base/OutsideText.h"
#include "app/base/SaveName.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "aviation/support/Clock.h"

#include <QDebug>
#include <QDir>
#include <QEventLoop>

#include <utility>

namespace {

constexpr int kFolderError = 1; ///< of sigDownloadError only
constexpr int kStopCheckMs = 50;

} // namespace

void downloadDebugLine(const QString& text)
{
    qDebug().noquote() << outsidetext::forTerminal(text);
}

DownloadManager::Private::Private(DownloadManager& manager, DownloadContext given)
    : q(manager)
    , context(std::move(given))
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

bool DownloadManager::Private::stopped() const
{
    return context.stop != nullptr && context.stop->raised();
}

void DownloadManager::Private::startClock()
{
    startedMs = aviation::Clock::current().MonotonicMs();
}

QNetworkReply* DownloadManager::Private::begin(const QNetworkRequest& request)
{
    outcome = DownloadOutcome();
    body.clear();
    replyHeaders.clear();
    received = 0;
    tooLarge = false;
    if (stopped()) {
        outcome = {QNetworkReply::OperationCanceledError, QStringLiteral("The program ends")};
    } else if (!isWebAddress(request.url())) {
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
        abort(kDownloadFileError, QStringLiteral("Can not write file %1: %2")
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
    tooLarge = true;
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

DownloadOutcome DownloadManager::Private::end()
{
    stallTimer.stop();
    wholeTimer.stop();
    stopTimer.stop();
    take();
    DownloadOutcome result = outcome;
    if (result.code == QNetworkReply::NoError && reply->error() != QNetworkReply::NoError) {
        result = {reply->error(), reply->errorString()};
    }
    replyHeaders = reply->rawHeaderPairs();
    reply->disconnect(&q);
    return result;
}

DownloadOutcome DownloadManager::Private::fetch(const QNetworkRequest& request, bool timed)
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
        downloadDebugLine(QStringLiteral("Download of %1 failed: %2\n")
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
    outcome = {kDownloadFileError,
               QStringLiteral("Problem opening save file '%1' for download '%2': %3\n")
                   .arg(currentFileName, url.toDisplayString(), output.errorString())};
    downloadDebugLine(outcome.text);
    return false;
}

void DownloadManager::Private::reportQueueError()
{
    lastError = outcome.code;
    q.m_lastErrorText = outcome.text;
    Q_EMIT q.sigDownloadError(outcome.code, outcome.text.trimmed());
}

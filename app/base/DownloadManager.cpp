#include "app/base/DownloadManagerPrivate.h"
#include "app/base/UserDialogs.h"
#include "aviation/support/Clock.h"

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
constexpr int kMaxRedirects = 5;

QNetworkRequest makeRequest(const QUrl& url)
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

QString rateText(double bytesPerSecond)
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

bool isWebAddress(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty()
           && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

NetworkFactory hostNetwork()
{
    return [] {
        return std::make_unique<QNetworkAccessManager>();
    };
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
        if (d->begin(makeRequest(url)) == nullptr) {
            d->output.remove();
            d->reportQueueError();
            continue;
        }
        // Queued, since giving up emits it from within the handlers of this object.
        connect(d->reply, &QNetworkReply::finished, this, &DownloadManager::downloadFinished,
                Qt::QueuedConnection);
        downloadDebugLine(QStringLiteral("Downloading %1...\n").arg(url.toDisplayString()));
        d->startClock();
        return;
    }
    downloadDebugLine(QStringLiteral("%1/%2 files downloaded successfully\n")
                          .arg(d->downloadedCount)
                          .arg(d->totalCount));
    deleteLater();
    Q_EMIT finished(d->currentFileName, d->lastError);
}

void DownloadManager::downloadProgress(qlonglong bytesReceived, qlonglong bytesTotal)
{
    const qint64 elapsed =
        d->startedMs < 0 ? 0 : aviation::Clock::current().MonotonicMs() - d->startedMs;
    const double speed = static_cast<double>(bytesReceived) * 1000.0
                         / static_cast<double>(std::max<qint64>(elapsed, 1));
    Q_EMIT sigDownloadProgress(bytesReceived, bytesTotal, rateText(speed));
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
        d->outcome = {kDownloadFileError, QStringLiteral("Can not write file %1: %2")
                                              .arg(d->output.fileName(), d->output.errorString())};
    }
    d->output.close();
    if (d->outcome.code != QNetworkReply::NoError) {
        downloadDebugLine(QStringLiteral("Failed: %1\n").arg(d->outcome.text));
        d->output.remove(); // half a file must not pass for a whole one
        d->reportQueueError();
    } else {
        d->lastError = QNetworkReply::NoError;
        m_lastErrorText.clear();
        downloadDebugLine(QStringLiteral("Succeeded.\n"));
        ++d->downloadedCount;
    }
    startNextDownload();
}

int DownloadManager::fetch(const QString& url, bool timed)
{
    const DownloadOutcome outcome = d->fetch(makeRequest(QUrl(url)), timed);
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
        return kDownloadFileError;
    }
    const int error = fetch(url, true);
    if (error != QNetworkReply::NoError) {
        return error;
    }
    if (file.write(d->body) != d->body.size() || !file.commit()) {
        m_lastErrorText =
            QStringLiteral("Can not write file %1: %2").arg(fileName, file.errorString());
        return kDownloadFileError;
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
    QNetworkRequest request = makeRequest(QUrl(url));
    request.setRawHeader("Authorization", "Basic " + credentials.toUtf8());
    // Another server mustn't see the credentials.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::SameOriginRedirectPolicy);
    const DownloadOutcome outcome = d->fetch(request, true);
    m_lastErrorText = outcome.text;
    headers.clear();
    for (const auto& header : std::as_const(d->replyHeaders)) {
        headers.append(header.first);
        downloadDebugLine(QString::fromUtf8(header.first) + QLatin1Char(':')
                          + QString::fromUtf8(header.second));
    }
    if (outcome.code == QNetworkReply::NoError) {
        text = QString::fromUtf8(d->body.constData(), d->body.size());
    }
    return outcome.code;
}

void DownloadManager::fetchToMemory(const QUrl& url)
{
    if (d->reply != nullptr) { // that one goes on undisturbed
        return;
    }
    if (d->begin(makeRequest(url)) == nullptr) {
        QTimer::singleShot(0, this, &DownloadManager::endFetch);
        return;
    }
    // Queued, since giving up emits it from within the handlers of this object.
    connect(d->reply, &QNetworkReply::finished, this, &DownloadManager::endFetch,
            Qt::QueuedConnection);
}

void DownloadManager::endFetch()
{
    DownloadAnswer answer;
    if (QNetworkReply* reply = d->reply) {
        d->outcome = d->end();
        answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        answer.phrase = reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toByteArray();
        std::exchange(d->reply, nullptr)->deleteLater();
    }
    answer.error = d->outcome.code;
    answer.errorText = d->outcome.text;
    answer.tooLarge = d->tooLarge;
    answer.data = std::exchange(d->body, QByteArray());
    m_lastErrorText = answer.errorText;
    Q_EMIT sigFetched(answer);
}

#pragma once

#include "app/base/DownloadManager.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <memory>

inline constexpr int kDownloadFileError = -1;

/// Error number and text of a download; 0 and empty for none.
struct DownloadOutcome
{
    int code = QNetworkReply::NoError;
    QString text;
};

/// A line of the debug stream.
void downloadDebugLine(const QString& text);

/// State of all faces, and the one transfer under way with its watchdogs.
class DownloadManager::Private
{
public:
    Private(DownloadManager& manager, DownloadContext given);

    bool stopped() const;
    void startClock();
    /// Null if it isn't even tried; `outcome` then says why.
    QNetworkReply* begin(const QNetworkRequest& request);
    /// Takes what is left of the transfer and says how it ended. The reply is the caller's.
    DownloadOutcome end();
    void take();
    void abort(int code, const QString& text);
    DownloadOutcome fetch(const QNetworkRequest& request, bool timed);
    bool openOutput(const QUrl& url);
    void reportQueueError();

    DownloadManager& q;
    DownloadContext context;
    std::unique_ptr<QNetworkAccessManager> network;
    QNetworkReply* reply = nullptr;                   ///< the transfer under way
    QList<QNetworkReply::RawHeaderPair> replyHeaders; ///< of the last one
    QByteArray body;                                  ///< what arrived, if not in a file
    qint64 received = 0;
    bool tooLarge = false;
    DownloadOutcome outcome; ///< why the transfer was given up from this side
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

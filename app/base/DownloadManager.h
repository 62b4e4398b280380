#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <vector>

class QNetworkAccessManager;
class Settings;
class StopFlag;
class UserDialogs;

/// Makes the network access of the calling thread.
using NetworkFactory = std::function<std::unique_ptr<QNetworkAccessManager>()>;
/// A QNetworkAccessManager of the host.
NetworkFactory hostNetwork();

/// What a download may take at most.
struct DownloadLimits
{
    qint64 replyBytes = 64LL * 1024 * 1024;
    int stallMs = 30000;  ///< a transfer without any progress for so long is given up
    int wholeMs = 900000; ///< so is one that trickles on for so long
    /// Before each new try of a weather list that failed; the first follows at once.
    std::vector<int> retryPausesMs{0, 2000, 5000, 10000, 30000, 60000};
};

/// What every download needs. Settings, dialogs and stop flag outlive it; dialogs may be null.
struct DownloadContext
{
    const Settings* settings = nullptr;
    NetworkFactory network;
    UserDialogs* dialogs = nullptr;
    const StopFlag* stop = nullptr;
    DownloadLimits limits;
};

/// What fetchToMemory came to.
struct DownloadAnswer
{
    int error = 0;         ///< as of the other faces
    QString errorText;     ///< empty without an error
    bool tooLarge = false; ///< given up above the limit
    int status = 0;        ///< of HTTP; 0 if no answer came
    QByteArray phrase;     ///< the server's word for the status
    QByteArray data;       ///< the body, that of a refusal too
};

/// True for an address of http or https with a host.
bool isWebAddress(const QUrl& url);

/// The one HTTP client of the program, an instance for each occasion, used on one thread. The queue
/// face (append) fetches addresses one after the other into files of the temporary folder and
/// deletes itself when done; a failed one doesn't stop the rest, its file is removed, and finished
/// names the last file and error. The synchronous face (get...) returns when the reply is complete
/// and runs a local event loop meanwhile; it serves threads that have no event loop of their own,
/// and must not be re-entered. The third face (fetchToMemory) never waits and serves whoever wants
/// to see a refusal as well; deleting the object ends it. Only http and https. A few redirects are
/// followed, never from https to http. A reply above the limit and a transfer that stalls or takes
/// too long are errors; a raised stop flag ends either face within 100 ms. The file of a queue that
/// is deleted in mid-transfer is removed. Errors are numbers of QNetworkReply::NetworkError; 0 is
/// success, -1 a file that can't be opened or written.
class DownloadManager : public QObject
{
    Q_OBJECT
public:
    explicit DownloadManager(DownloadContext context, QObject* parent = nullptr);
    ~DownloadManager() override;

    /// Adds an address to the queue and starts it from the event loop. The title isn't used. The
    /// file gets the last part of the address as its name, and a number where that is taken.
    void append(const QUrl& url, const QString& title);

    /// Fetches into a file, which is complete or as it was. The other targets too stay as they were
    /// unless the result is 0. Texts are read as UTF-8.
    [[nodiscard]] int getToFile(const QString& url, const QString& fileName);
    [[nodiscard]] int getToString(const QString& url, QString& text);
    [[nodiscard]] int getToBytes(const QString& url, QByteArray& data);
    /// Basic authorisation with credentials that are encoded already; gives the names of the
    /// reply's headers.
    [[nodiscard]] int getWithAuth(const QString& url, const QString& credentials, QString& text,
                                  QList<QByteArray>& headers);
    /// Begins to fetch one address; sigFetched follows, always from the event loop. Does nothing
    /// while another transfer runs.
    void fetchToMemory(const QUrl& url);
    QString lastErrorText() const { return m_lastErrorText; }

    /// The inflated bytes of gzip or zlib data; empty for damaged, truncated or oversized data.
    static QByteArray gUncompress(const QByteArray& data);
    /// Inflates a file to a file. A failed step leaves an empty or missing target, and its reason
    /// (empty on success) in `reason` if that isn't null. The target isn't flushed to the disk.
    static void gunzipFile(const QString& source, const QString& target, QString* reason = nullptr);

Q_SIGNALS:
    void finished(QString filename, int error);
    void sigDownloadProgress(qlonglong value, qlonglong total, QString text);
    void sigDownloadError(int errnum, QString errStr);
    void sigFetched(const DownloadAnswer& answer);

private Q_SLOTS:
    void startNextDownload();
    void downloadProgress(qlonglong bytesReceived, qlonglong bytesTotal);
    void downloadFinished();
    void downloadReadyRead();

private:
    class Private;

    void endFetch();
    int fetch(const QString& url, bool timed);

    std::unique_ptr<Private> d;
    QString m_lastErrorText;
};

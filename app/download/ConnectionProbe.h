#pragma once

#include "app/base/DownloadManager.h"
#include "sim/BridgeHandshake.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

class QTcpSocket;
class QUrl;

/// What a test found, as plain text for the user. Parts that come from outside are cut short and
/// free of control characters.
struct ProbeResult
{
    bool ok = false;
    QString text;
};

/// Says what an answer of a weather address holds: a gzip file, the blocks of a weather file, bare
/// reports, upper-air data, or a web page. `ok` if the program can use it. Never throws.
ProbeResult describeWeatherAnswer(const QByteArray& data);

/// Tests an address or a bridge server and says what it found; never waits. One test at a time, a
/// new one ends the one before without a result. Used on one thread, which has an event loop.
class ConnectionProbe : public QObject
{
    Q_OBJECT
public:
    explicit ConnectionProbe(NetworkFactory network, QObject* parent = nullptr);
    ~ConnectionProbe() override;

    /// Fetches an address: http or https, redirects never from https to http, 64 MB at most.
    void testAddress(const QUrl& url);
    /// Greets a bridge server and asks for its simulator; an answer within five seconds.
    void testBridge(const QString& host, int port);
    /// Ends the test without a result.
    void cancel();
    bool isRunning() const;

    /// For tests: how long a server may be silent. Applies to tests begun afterwards.
    void setTimeLimits(int addressMs, int bridgeMs);

Q_SIGNALS:
    void sigFinished(bool ok, QString text);

private:
    void finish(const ProbeResult& result);
    void onFetched(const DownloadAnswer& answer);
    void onBridgeConnected();
    void onBridgeData();
    void onBridgeError();
    void sendRequest();
    ProbeResult bridgeResult() const;
    ProbeResult versionResult() const;
    ProbeResult simulatorResult() const;
    void onTimeout();

    NetworkFactory m_network;
    DownloadManager* m_download = nullptr;      ///< the address test under way
    QTcpSocket* m_socket = nullptr;             ///< the bridge test under way
    std::optional<BridgeHandshake> m_handshake; ///< from the connection on
    QByteArray m_block;                         ///< what came of the bridge's next answer
    QString m_server;                           ///< "address:port" of the bridge
    QTimer m_limit;
    int m_addressMs;
    int m_bridgeMs;
};

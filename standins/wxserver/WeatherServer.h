#pragma once

#include "standins/wxserver/Fault.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class QTcpServer;

namespace wxserver {

class WeatherContents;
struct HttpAnswer;
struct HttpRequest;

/// A request as it came.
struct RequestRecord
{
    QString method;
    QString path;   ///< decoded, without the query
    QString query;  ///< as it came
    QString fault;  ///< name of the fault that was answered with, empty for none
    int status = 0; ///< status of the answer, 0 when there was none
};

/// A weather server on loopback for demonstrations and tests: it serves the bundled real weather
/// under the service's paths, with the reports' times moved to the present, and misbehaves on
/// demand. HTTP/1.1 after RFC 9110 and 9112: GET and HEAD, connections stay open when asked to.
/// Lives on one thread with an event loop; all operations are called on it (WeatherServerThread
/// does that for others). The time is asked of the process's clock.
class WeatherServer : public QObject
{
    Q_OBJECT
public:
    /// Serves the built-in demonstration data, or files of the same names ("weather.wx",
    /// "grib.txt.gz") in `dataFolder`.
    explicit WeatherServer(const QString& dataFolder = QString(), QObject* parent = nullptr);
    ~WeatherServer() override;

    /// Reads the data and listens on 127.0.0.1; port 0 takes a free one. False on failure, then
    /// errorText() says why.
    [[nodiscard]] bool start(quint16 port = 0);
    /// Closes the port and all connections. It can be started again, then on another port or the
    /// same.
    void stop();
    quint16 port() const;
    /// Base address without a slash at its end.
    QString url() const;
    QString errorText() const { return m_errorText; }

    void addFault(const Fault& fault) { m_faults.add(fault); }
    /// The same from text, see parseFault; false when it can't be read.
    [[nodiscard]] bool addFault(const QString& text);
    /// Takes back the orders with that pattern; without one all. Connections that stall go on
    /// stalling until their peer gives up or the server stops.
    void clearFaults(const QString& pattern = QString()) { m_faults.clear(pattern); }

    /// Sets a value of the info file, such as "Version/cirrilonv3". An empty value removes it.
    void setInfo(const QString& key, const QString& value);
    /// Serves `body` under a path (which begins with "/") instead of what is there.
    void setDocument(const QString& path, const QByteArray& body);

    /// The latest requests, at most 10,000, oldest first.
    const std::vector<RequestRecord>& requests() const { return m_requests; }
    /// Requests for a path since the start or clearRequests; every path with an empty one.
    int requestCount(const QString& path = QString()) const;
    void clearRequests();
    int connectionCount() const { return m_connections; }

Q_SIGNALS:
    /// An answer was begun, or a stall.
    void sigRequest(const wxserver::RequestRecord& request);

private:
    friend class HttpConnection;

    void takeConnections();
    HttpAnswer answerTo(const HttpRequest& request);
    void record(const RequestRecord& request);

    std::unique_ptr<WeatherContents> m_contents;
    QString m_dataFolder;
    bool m_loaded = false;
    QTcpServer* m_listener = nullptr;
    FaultList m_faults;
    std::vector<RequestRecord> m_requests;
    QHash<QString, int> m_counts;
    QString m_errorText;
    int m_connections = 0;
};

} // namespace wxserver

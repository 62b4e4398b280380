#include "standins/wxserver/WeatherServer.h"

#include "standins/wxserver/HttpConnection.h"
#include "standins/wxserver/WeatherContents.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace wxserver {

namespace {

constexpr int kMaxConnections = 100;
constexpr std::size_t kMaxRecords = 10000;
constexpr int kMaxPaths = 10000;
constexpr char kTrickName[] = "../../../cirrilon-escaped.gz";

} // namespace

WeatherServer::WeatherServer(const QString& dataFolder, QObject* parent)
    : QObject(parent)
    , m_contents(std::make_unique<WeatherContents>())
    , m_dataFolder(dataFolder)
{}

WeatherServer::~WeatherServer()
{
    stop();
}

bool WeatherServer::start(quint16 port)
{
    stop();
    if (!m_loaded) {
        m_loaded = m_contents->load(m_dataFolder, m_errorText);
    }
    if (!m_loaded) {
        return false;
    }
    m_listener = new QTcpServer(this);
    connect(m_listener, &QTcpServer::newConnection, this, &WeatherServer::takeConnections);
    if (!m_listener->listen(QHostAddress::LocalHost, port)) {
        m_errorText = m_listener->errorString();
        stop();
        return false;
    }
    m_errorText.clear();
    return true;
}

void WeatherServer::stop()
{
    delete m_listener;
    m_listener = nullptr;
    qDeleteAll(findChildren<HttpConnection*>(QString(), Qt::FindDirectChildrenOnly));
    m_connections = 0;
}

quint16 WeatherServer::port() const
{
    return m_listener ? m_listener->serverPort() : quint16{0};
}

QString WeatherServer::url() const
{
    return m_listener ? QStringLiteral("http://127.0.0.1:%1").arg(port()) : QString();
}

bool WeatherServer::addFault(const QString& text)
{
    Fault fault;
    const bool good = parseFault(text, fault, m_errorText);
    if (good) {
        addFault(fault);
    }
    return good;
}

void WeatherServer::setInfo(const QString& key, const QString& value)
{
    m_contents->setInfo(key, value);
}

void WeatherServer::setDocument(const QString& path, const QByteArray& body)
{
    m_contents->setDocument(path, body);
}

int WeatherServer::requestCount(const QString& path) const
{
    return m_counts.value(path);
}

void WeatherServer::clearRequests()
{
    m_requests.clear();
    m_counts.clear();
}

void WeatherServer::takeConnections()
{
    while (QTcpSocket* const socket = m_listener->nextPendingConnection()) {
        if (m_connections >= kMaxConnections) {
            delete socket;
            continue;
        }
        auto* const connection = new HttpConnection(socket, *this);
        ++m_connections;
        connect(connection, &HttpConnection::sigClosed, this, [this] { --m_connections; });
    }
}

HttpAnswer WeatherServer::answerTo(const HttpRequest& request)
{
    RequestRecord made{QString::fromLatin1(request.method), request.path, request.query, {}, 0};
    Fault fault;
    const bool isFaulty = m_faults.take(request.path, fault);
    const bool isTricky = isFaulty && fault.kind == FaultKind::Name;
    const QString trick = fault.text.isEmpty() ? QString::fromLatin1(kTrickName) : fault.text;
    m_contents->setTrickName(isTricky ? trick : QString());
    HttpAnswer answer =
        answerFor(m_contents->document(request, aviation::Clock::current().NowUtc()));
    if (request.method != "GET" && !request.isHead()) {
        answer = plainAnswer(405);
        answer.headers.append(QPair<QByteArray, QByteArray>("Allow", "GET, HEAD"));
    } else if (isFaulty) {
        applyFault(answer, request, fault);
        made.fault = faultName(fault.kind);
    }
    made.status = answer.delivery == Delivery::Nothing ? 0 : answer.status;
    record(made);
    return answer;
}

void WeatherServer::record(const RequestRecord& request)
{
    if (m_requests.size() >= kMaxRecords) {
        m_requests.erase(m_requests.begin(), m_requests.begin() + kMaxRecords / 10);
    }
    m_requests.push_back(request);
    ++m_counts[QString()];
    if (!request.path.isEmpty() && (m_counts.contains(request.path) || m_counts.size() < kMaxPaths))
    {
        ++m_counts[request.path];
    }
    Q_EMIT sigRequest(request);
}

} // namespace wxserver

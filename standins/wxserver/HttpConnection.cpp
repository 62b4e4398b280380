#include "standins/wxserver/HttpConnection.h"

#include "standins/wxserver/WeatherServer.h"

#include <QTcpSocket>

#include <algorithm>

namespace wxserver {

namespace {

constexpr int kSilenceMs = 30000;
constexpr int kTickMs = 100;
/// Read in one go; a peer that sends more waits.
constexpr qint64 kReadBytes = kMaxRequestBytes + kMaxIgnoredBodyBytes;
constexpr qint64 kFillingBytes = 256LL * 1024;
/// With more than this unsent no further request is answered.
constexpr qint64 kMaxUnsentBytes = 1024LL * 1024;

} // namespace

HttpConnection::HttpConnection(QTcpSocket* socket, WeatherServer& server)
    : QObject(&server)
    , m_server(server)
    , m_socket(socket)
{
    m_socket->setParent(this);
    m_socket->setReadBufferSize(kReadBytes);
    m_silence.setInterval(kSilenceMs);
    m_silence.setSingleShot(true);
    m_tick.setInterval(kTickMs);
    connect(m_socket, &QTcpSocket::readyRead, this, &HttpConnection::read);
    connect(m_socket, &QTcpSocket::disconnected, this, &HttpConnection::close);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &HttpConnection::sent);
    connect(&m_silence, &QTimer::timeout, this, &HttpConnection::close);
    connect(&m_tick, &QTimer::timeout, this, &HttpConnection::sendPart);
    m_silence.start();
}

void HttpConnection::read()
{
    while (!m_busy && m_socket->isOpen() && m_socket->bytesToWrite() < kMaxUnsentBytes) {
        m_buffer += m_socket->read(kReadBytes - m_buffer.size());
        HttpRequest request;
        switch (takeRequest(m_buffer, request)) {
        case HttpParse::Incomplete:
            return;
        case HttpParse::Complete:
            m_silence.start();
            answer(request);
            break;
        case HttpParse::BadRequest:
            refuse(400);
            return;
        case HttpParse::TooLarge:
            refuse(431);
            return;
        }
    }
}

void HttpConnection::refuse(int status)
{
    m_keepAlive = false;
    m_server.record({QString(), QString(), QString(), QString(), status});
    send(plainAnswer(status), true);
}

void HttpConnection::answer(const HttpRequest& request)
{
    m_keepAlive = request.keepAlive;
    send(m_server.answerTo(request), !request.isHead());
}

void HttpConnection::send(const HttpAnswer& answer, bool withBody)
{
    m_busy = true;
    // A body that ends early leaves nothing to read after it.
    const bool isWhole = answer.delivery == Delivery::Whole || answer.delivery == Delivery::Trickle;
    m_keepAlive = m_keepAlive && isWhole;
    if (answer.delivery == Delivery::Nothing) {
        m_silence.stop();
        return;
    }
    m_socket->write(answerHead(answer, m_keepAlive, aviation::Clock::current().NowUtc()));
    if (!withBody) {
        finish(m_keepAlive);
        return;
    }
    switch (answer.delivery) {
    case Delivery::Half:
        m_socket->write(answer.body.left(answer.body.size() / 2));
        m_silence.stop();
        return;
    case Delivery::CloseHalf:
        m_socket->write(answer.body.left(answer.body.size() / 2));
        break;
    case Delivery::Trickle:
        m_rest = answer.body;
        m_bytesPerTick = answer.bytesPerTick;
        m_tick.start();
        return;
    case Delivery::Endless:
        m_filling = answer.endlessBytes;
        sendFilling();
        return;
    default:
        m_socket->write(answer.body);
        break;
    }
    finish(m_keepAlive);
}

void HttpConnection::sendPart()
{
    m_silence.start();
    m_socket->write(m_rest.left(m_bytesPerTick));
    m_rest.remove(0, std::min(m_bytesPerTick, m_rest.size()));
    if (m_rest.isEmpty()) {
        m_tick.stop();
        finish(m_keepAlive);
    }
}

void HttpConnection::sent()
{
    if (m_silence.isActive()) {
        m_silence.start();
    }
    sendFilling();
    if (!m_buffer.isEmpty() || m_socket->bytesAvailable() > 0) {
        read();
    }
}

/// Keeps the socket's buffer short however long the body is.
void HttpConnection::sendFilling()
{
    while (m_filling > 0 && m_socket->bytesToWrite() < kFillingBytes) {
        const qint64 size = std::min(m_filling, kFillingBytes);
        m_filling -= size;
        m_socket->write(QByteArray(static_cast<int>(size), 'A'));
        if (m_filling == 0) {
            finish(false);
        }
    }
}

void HttpConnection::finish(bool keepAlive)
{
    m_busy = false;
    if (!keepAlive) {
        m_busy = true;
        m_socket->disconnectFromHost();
        return;
    }
    // From the event loop, so that a row of requests doesn't run deeper and deeper.
    if (!m_buffer.isEmpty() || m_socket->bytesAvailable() > 0) {
        QMetaObject::invokeMethod(
            this, [this] { read(); }, Qt::QueuedConnection);
    }
}

void HttpConnection::close()
{
    m_silence.stop();
    m_tick.stop();
    m_filling = 0;
    m_busy = true;
    Q_EMIT sigClosed();
    m_socket->disconnect(this);
    m_socket->abort();
    deleteLater();
}

} // namespace wxserver

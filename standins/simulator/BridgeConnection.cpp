#include "standins/simulator/BridgeConnection.h"

#include <QTcpSocket>
#include <QTimer>

namespace simulator {

namespace {

constexpr int kOtherId = 100; ///< how far a wrong message id lies from the right one
constexpr int kIds = 256;
constexpr qint64 kHugeLength = 99999999;
/// A client that doesn't read is let go.
constexpr qint64 kMostUnsent = kMaxDataLength;

} // namespace

BridgeConnection::BridgeConnection(QTcpSocket* socket, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
{
    m_socket->setParent(this);
    connect(m_socket, &QTcpSocket::readyRead, this, &BridgeConnection::onReadyRead);
    connect(m_socket, &QTcpSocket::disconnected, this, &BridgeConnection::closed);
}

void BridgeConnection::deliver(Frame frame, const Fault& fault)
{
    switch (fault.kind) {
    case FaultKind::Silent:
        return;
    case FaultKind::Slow:
        return sendLater(encodeFrame(frame), fault.number);
    case FaultKind::WrongId:
        frame.id = (frame.id + kOtherId) % kIds;
        return send(encodeFrame(frame));
    case FaultKind::Cut:
        return sendCut(encodeFrame(frame), fault);
    case FaultKind::Garbage:
        return send(QByteArray(fault.number, '#'));
    case FaultKind::Close:
        return closeInMidMessage(encodeFrame(frame));
    case FaultKind::Drop:
        return abort();
    case FaultKind::HugeLength:
        return send(encodeHeader(frame.command, frame.id, kHugeLength) + frame.data);
    default:
        return send(encodeFrame(frame));
    }
}

void BridgeConnection::abort()
{
    m_socket->abort();
}

void BridgeConnection::onReadyRead()
{
    m_reader.append(m_socket->readAll());
    while (const std::optional<Frame> frame = m_reader.next()) {
        Q_EMIT frameReceived(*frame);
    }
    if (m_reader.isBroken()) {
        Q_EMIT broken();
        abort();
    }
}

void BridgeConnection::send(const QByteArray& bytes)
{
    m_socket->write(bytes);
    if (m_socket->bytesToWrite() > kMostUnsent) {
        abort();
    }
}

void BridgeConnection::sendLater(const QByteArray& bytes, int milliseconds)
{
    QTimer::singleShot(milliseconds, this, [this, bytes] { send(bytes); });
}

void BridgeConnection::sendCut(const QByteArray& bytes, const Fault& fault)
{
    send(bytes.left(fault.number));
    if (fault.restAfterMs >= 0) {
        sendLater(bytes.mid(fault.number), fault.restAfterMs);
    }
}

void BridgeConnection::closeInMidMessage(const QByteArray& bytes)
{
    send(bytes.left(bytes.size() / 2));
    m_socket->disconnectFromHost(); // sends what is written before it closes
}

} // namespace simulator

#include "standins/simulator/AircraftStream.h"

namespace simulator {

AircraftStream::AircraftStream(std::function<QByteArray()> nextDatagram, QObject* parent)
    : QObject(parent)
    , m_nextDatagram(std::move(nextDatagram))
    , m_timer(this)
    , m_socket(this)
    , m_foreignSocket(this)
{
    connect(&m_timer, &QTimer::timeout, this, &AircraftStream::sendNow);
}

quint16 AircraftStream::portFor(const QHostAddress& address, quint16 wantedPort)
{
    if (wantedPort != 0) {
        return wantedPort;
    }
    quint16& port = m_ports[address.toString()];
    QUdpSocket probe;
    if (port == 0 && probe.bind(address, 0)) {
        port = probe.localPort();
    }
    return port;
}

void AircraftStream::start(const QHostAddress& address, quint16 port, int intervalMs)
{
    m_address = address;
    m_port = port;
    m_timer.start(intervalMs);
}

void AircraftStream::stop()
{
    m_timer.stop();
    m_socket.close();
    m_foreignSocket.close();
}

void AircraftStream::sendNow()
{
    const FaultKind kind = m_fault.kind;
    const int length = m_fault.number;
    m_fault.countDown();
    if (kind == FaultKind::UdpSilent) {
        return;
    }
    const QByteArray bytes =
        kind == FaultKind::UdpGarbage ? QByteArray(length, '#') : m_nextDatagram();
    if (socketFor(kind).writeDatagram(bytes, m_address, m_port) >= 0) {
        ++m_sent;
    }
}

/// Bound to an address, so that the client can see who sends.
QUdpSocket& AircraftStream::socketFor(FaultKind kind)
{
    const bool isForeign = kind == FaultKind::UdpForeign;
    QUdpSocket& socket = isForeign ? m_foreignSocket : m_socket;
    if (socket.state() != QAbstractSocket::BoundState) {
        socket.bind(
            QHostAddress(isForeign ? QStringLiteral("127.0.0.2") : QStringLiteral("127.0.0.1")), 0);
    }
    return socket;
}

} // namespace simulator

#pragma once

#include "standins/simulator/Fault.h"

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QTimer>
#include <QUdpSocket>

#include <functional>
#include <map>

namespace simulator {

/// Sends the aircraft again and again as a datagram to one client. Lives on the server's thread.
class AircraftStream : public QObject
{
    Q_OBJECT
public:
    /// `nextDatagram` gives the bytes of the next datagram.
    explicit AircraftStream(std::function<QByteArray()> nextDatagram, QObject* parent = nullptr);

    /// Where datagrams to that address go: `wantedPort`, or if it is 0 a port that is free there at
    /// the first call and stays the same for the address. 0 when there is none.
    quint16 portFor(const QHostAddress& address, quint16 wantedPort);
    void start(const QHostAddress& address, quint16 port, int intervalMs);
    void stop();
    bool isRunning() const { return m_timer.isActive(); }
    qint64 sentDatagrams() const { return m_sent; }
    void setFault(const Fault& fault) { m_fault = fault; }
    /// Sends one now, whatever the timer says.
    void sendNow();

private:
    QUdpSocket& socketFor(FaultKind kind);

    std::function<QByteArray()> m_nextDatagram;
    QTimer m_timer;
    QUdpSocket m_socket;
    QUdpSocket m_foreignSocket; ///< bound to 127.0.0.2
    QHostAddress m_address;
    quint16 m_port = 0;
    std::map<QString, quint16> m_ports; ///< by address
    Fault m_fault;
    qint64 m_sent = 0;
};

} // namespace simulator

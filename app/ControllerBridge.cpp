#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/cycle/CycleRules.h"
#include "sim/BridgeDatagram.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "sim/LogText.h"
#include "sim/SimResult.h"

#include <QHostInfo>
#include <QUdpSocket>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 kLargestDatagram = 65507;

} // namespace

/// The worker has dropped its interface. What is left is to show it and, if the user wants to be
/// connected from the start of the program, to come back by itself.
void Controller::connectionLost()
{
    const bool wasLinked = std::exchange(m_linked, false);
    if (IsConnected()) {
        switchConnection();
    } else if (wasLinked) {
        showDisconnected();
    }
    if (!wasLinked) {
        return; // a connect that failed, or the user has disconnected meanwhile
    }
    if (!m_settings.autoConnect()) {
        log(QStringLiteral("(Controller) - The connection to the simulator is lost. Press Connect "
                           "when the simulator or its bridge server runs again."),
            loglevel::kWarning);
        return;
    }
    scheduleReconnect();
    log(QStringLiteral("(Controller) - The connection to the simulator is lost. Cirrilon tries to "
                       "connect again by itself, first in 10 s, then at growing intervals. Press "
                       "Connect to try at once."),
        loglevel::kWarning);
}

void Controller::scheduleReconnect()
{
    m_reconnectDelayMs = cycle::NextReconnectDelay(m_reconnectDelayMs);
    m_reconnectTimer.start(m_reconnectDelayMs);
}

void Controller::endReconnecting()
{
    m_reconnectDelayMs = 0;
    m_reconnectTimer.stop();
}

void Controller::bindUdp(const QString& portText)
{
    const QString myIp = m_settings.myIp();
    if (myIp.isEmpty()) {
        log(QStringLiteral("(Controller) - UDP bind failed: IP not selected"), loglevel::kError);
        return;
    }
    if (m_udpSocket) {
        log(QStringLiteral("(Controller) - UDP bind failed: %1")
                .arg(QStringLiteral("bound already")),
            loglevel::kError);
        return;
    }
    const std::uint16_t port = cycle::PortFromText(portText);
    const QHostAddress address(myIp);
    m_udpSocket = std::make_unique<QUdpSocket>();
    connect(m_udpSocket.get(), &QUdpSocket::readyRead, this, &Controller::udpReadReady);
    udpBound = port != 0 && !address.isNull() && m_udpSocket->bind(address, port);
    const QString line = udpBound ? QStringLiteral("(Controller) - UDP bind IP:%1 Port:%2 ")
                                  : QStringLiteral("(Controller) - UDP bind failed IP:%1 Port:%2 ");
    log(line.arg(LogText(myIp), LogText(portText)),
        udpBound ? loglevel::kNotification : loglevel::kError);
    if (udpBound) {
        findUdpSenders();
    } else {
        closeUdp();
    }
}

void Controller::closeUdp()
{
    udpBound = false;
    if (m_udpSocket) {
        m_udpSocket->disconnect(this);
        m_udpSocket->close();
        m_udpSocket.release()->deleteLater(); // it may be its signal that led here
    }
}

/// Until the server's name is resolved its datagrams can't be told from others and are dropped.
void Controller::findUdpSenders()
{
    m_udpSenders.clear();
    m_udpForeignLogged = false;
    m_udpBadLogged = false;
    const QString server = m_settings.serverIp();
    const QHostAddress address(server);
    m_udpSendersKnown = !address.isNull();
    if (m_udpSendersKnown) {
        m_udpSenders = {address};
        return;
    }
    QHostInfo::lookupHost(server, this, [this, server](const QHostInfo& info) {
        if (server == m_settings.serverIp()) {
            m_udpSenders = info.addresses().toVector();
            m_udpSendersKnown = true;
        }
    });
}

bool Controller::isUdpSender(const QHostAddress& sender) const
{
    return std::any_of(m_udpSenders.begin(), m_udpSenders.end(),
                       [&sender](const QHostAddress& address) {
                           return address.isEqual(sender, QHostAddress::ConvertV4MappedToIPv4);
                       });
}

/// One datagram a call; those behind it get calls of their own. A read is tried even where nothing
/// waits any more, since a readyRead without a read would be the socket's last.
void Controller::udpReadReady()
{
    if (!m_udpSocket || m_stop.raised()) {
        return;
    }
    const qint64 size = m_udpSocket->pendingDatagramSize();
    QByteArray bytes(static_cast<int>(std::clamp<qint64>(size, 1, kLargestDatagram)), '\0');
    QHostAddress sender;
    const qint64 taken = m_udpSocket->readDatagram(bytes.data(), bytes.size(), &sender);
    if (m_udpSocket->hasPendingDatagrams()) {
        QTimer::singleShot(0, this, &Controller::udpReadReady);
    }
    if (taken < 0 || !m_udpSendersKnown) {
        return;
    }
    if (!isUdpSender(sender)) {
        logUdpOnce(m_udpForeignLogged,
                   QStringLiteral("(Controller) - UDP datagrams of %1 dropped: it isn't the server "
                                  "of the settings.")
                       .arg(LogText(sender.toString())));
    } else if (size > kLargestDatagram) {
        logUdpOnce(m_udpBadLogged,
                   QStringLiteral("(Controller) - UDP datagram too large, dropped"));
    } else {
        bytes.truncate(static_cast<int>(taken));
        takeDatagram(bytes);
    }
}

void Controller::takeDatagram(const QByteArray& bytes)
{
    const BridgeDatagram datagram = ParseDatagram(bytes);
    if (!datagram.hasAircraft) {
        logUdpOnce(m_udpBadLogged,
                   QStringLiteral("(Controller) - UDP datagram without aircraft data dropped; the "
                                  "server may be of another version."));
        return;
    }
    if (!datagram.fault.isEmpty()) {
        logUdpOnce(m_udpBadLogged,
                   QStringLiteral("(Controller) - ") + LogText(datagram.fault.trimmed()));
    }
    aircraftData = datagram.aircraft;
    if (datagram.isAircraftAnswer()) {
        OnJobConnectWorkerFinished(connectjob::kAircraftData,
                                   QStringLiteral("Aircraft data from UDP"), simresult::kNone);
    }
}

void Controller::logUdpOnce(bool& logged, const QString& text)
{
    if (!std::exchange(logged, true)) {
        log(text, loglevel::kWarning);
    }
}

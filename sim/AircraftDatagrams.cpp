#include "sim/AircraftDatagrams.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "aviation/support/Clock.h"
#include "sim/BridgeDatagram.h"
#include "sim/OwnAddress.h"

#include <QHostInfo>
#include <QNetworkInterface>
#include <QTimer>
#include <QUdpSocket>

#include <algorithm>
#include <utility>

AircraftDatagrams::AircraftDatagrams(const Settings& settings, const StopFlag& stop,
                                     LogFunction log, StreamTimes times, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_stop(stop)
    , m_log(std::move(log))
    , m_times(times)
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(m_times.silence);
    connect(&m_silence, &QTimer::timeout, this, &AircraftDatagrams::noteSilence);
}

AircraftDatagrams::~AircraftDatagrams() = default;

void AircraftDatagrams::bind(const QString& ownAddress, const QString& portText)
{
    if (ownAddress.isEmpty()) {
        m_log(QStringLiteral("(Controller) - UDP bind failed: IP not selected"), loglevel::kError);
        return;
    }
    if (m_socket) {
        m_log(QStringLiteral("(Controller) - UDP bind failed: %1")
                  .arg(QStringLiteral("bound already")),
              loglevel::kError);
        return;
    }
    const std::uint16_t port = portFromText(portText);
    const QHostAddress address(ownAddress);
    m_socket = std::make_unique<QUdpSocket>();
    connect(m_socket.get(), &QUdpSocket::readyRead, this, &AircraftDatagrams::readOne);
    m_bound = port != 0 && !address.isNull() && m_socket->bind(address, port);
    const QString line = m_bound ? QStringLiteral("(Controller) - UDP bind IP:%1 Port:%2 ")
                                 : QStringLiteral("(Controller) - UDP bind failed IP:%1 Port:%2 ");
    m_log(line.arg(outsidetext::forLog(ownAddress), outsidetext::forLog(portText)),
          m_bound ? loglevel::kNotification : loglevel::kError);
    if (m_bound) {
        m_ends = outsidetext::forLog(ownAddress + QLatin1Char(':') + portText);
        m_silenceLogged = false;
        m_silence.start();
        findSenders();
    } else {
        close();
    }
}

void AircraftDatagrams::close()
{
    m_bound = false;
    m_streaming = false;
    m_silence.stop();
    if (m_socket) {
        m_socket->disconnect(this);
        m_socket->close();
        m_socket.release()->deleteLater(); // it may be its signal that led here
    }
}

bool AircraftDatagrams::takePollTurn()
{
    const std::int64_t now = aviation::Clock::current().MonotonicMs();
    if (m_streaming && now - m_lastPollMs < m_times.slowPoll) {
        return false;
    }
    m_lastPollMs = now;
    return true;
}

void AircraftDatagrams::noteDatagram()
{
    m_silence.start();
    if (!std::exchange(m_streaming, true)) {
        Q_EMIT sigStreaming();
    }
}

void AircraftDatagrams::noteSilence()
{
    m_streaming = false;
    if (m_silenceLogged) {
        return; // the pilot may have closed the notice
    }
    logOnce(m_silenceLogged,
            QStringLiteral("(Controller) - No aircraft data come by UDP to %1, so they are asked "
                           "for. Check \"Own IP address\" in the settings under Interface, and "
                           "whether a firewall lets them through.")
                .arg(m_ends));
    Q_EMIT sigSilent();
}

/// Until the server's name is resolved its datagrams can't be singled out and are dropped.
void AircraftDatagrams::findSenders()
{
    m_senders.clear();
    m_foreignLogged = false;
    m_badLogged = false;
    const QString server = m_settings.serverIp();
    const QHostAddress address(server);
    m_sendersKnown = !address.isNull();
    if (m_sendersKnown) {
        setSenders({address});
        return;
    }
    QHostInfo::lookupHost(server, this, [this, server](const QHostInfo& info) {
        if (server == m_settings.serverIp()) {
            setSenders(info.addresses());
            m_sendersKnown = true;
        }
    });
}

/// Which of its addresses a server on this computer sends from depends on the way to the own
/// address.
void AircraftDatagrams::setSenders(const QList<QHostAddress>& server)
{
    m_senders = server;
    if (std::any_of(server.begin(), server.end(), ownaddress::isOwn)) {
        m_senders += QNetworkInterface::allAddresses();
    }
}

bool AircraftDatagrams::isSender(const QHostAddress& sender) const
{
    return std::any_of(m_senders.begin(), m_senders.end(), [&sender](const QHostAddress& address) {
        return address.isEqual(sender, QHostAddress::ConvertV4MappedToIPv4);
    });
}

/// A read is tried even where nothing waits, since a readyRead without a read would be the
/// socket's last.
void AircraftDatagrams::readOne()
{
    constexpr qint64 kLargestDatagram = 65507;
    if (!m_socket || m_stop.raised()) {
        return;
    }
    const qint64 size = m_socket->pendingDatagramSize();
    QByteArray bytes(static_cast<int>(std::clamp<qint64>(size, 1, kLargestDatagram)), '\0');
    QHostAddress sender;
    const qint64 taken = m_socket->readDatagram(bytes.data(), bytes.size(), &sender);
    if (m_socket->hasPendingDatagrams()) {
        QTimer::singleShot(0, this, &AircraftDatagrams::readOne);
    }
    if (taken < 0 || !m_sendersKnown) {
        return;
    }
    if (!isSender(sender)) {
        logOnce(m_foreignLogged,
                QStringLiteral("(Controller) - UDP datagrams of %1 dropped: it isn't the server "
                               "of the settings.")
                    .arg(outsidetext::forLog(sender.toString())));
    } else if (size > kLargestDatagram) {
        logOnce(m_badLogged, QStringLiteral("(Controller) - UDP datagram too large, dropped"));
    } else {
        bytes.truncate(static_cast<int>(taken));
        take(bytes);
    }
}

void AircraftDatagrams::take(const QByteArray& bytes)
{
    const BridgeDatagram datagram = parseDatagram(bytes);
    if (!datagram.hasAircraft) {
        logOnce(m_badLogged,
                QStringLiteral("(Controller) - UDP datagram without aircraft data dropped; the "
                               "server may be of another version."));
        return;
    }
    if (!datagram.fault.isEmpty()) {
        logOnce(m_badLogged,
                QStringLiteral("(Controller) - ") + outsidetext::forLog(datagram.fault.trimmed()));
    }
    noteDatagram();
    Q_EMIT sigAircraft(datagram.aircraft, datagram.isAircraftAnswer());
}

void AircraftDatagrams::logOnce(bool& logged, const QString& text)
{
    if (!std::exchange(logged, true)) {
        m_log(text, loglevel::kWarning);
    }
}

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "sim/BridgeHandshake.h"
#include "sim/FsInterfaceTcpClient.h"

#include <QDebug>

#include <limits>

namespace {

QString shortened(const QByteArray& utf8)
{
    constexpr int kLongestName = 256;
    return QString::fromUtf8(utf8.left(kLongestName));
}

} // namespace

int FsInterfaceTcpClient::Connect()
{
    if (m_connected && m_socket.isOpen()) {
        return simresult::kAlreadyConnected;
    }
    m_connected = false;
    m_silentReplies = 0;
    m_silentWrites = 0;
    m_unheardMs = 0;
    m_writeAnswered = true;
    m_silentWritesLogged = false;
    qDebug() << "Connect to Server IP:" << m_address << " Port:" << m_port;
    if (m_port < 1 || m_port > std::numeric_limits<std::uint16_t>::max()) {
        log(QStringLiteral("(Client) - The port %1 doesn't exist. Please check the port settings.")
                .arg(m_port),
            loglevel::kError);
        return simresult::kNotConnected;
    }
    if (!m_socket.open(m_address, static_cast<std::uint16_t>(m_port))) {
        return simresult::kNotConnected;
    }
    log(QStringLiteral("(Client) - connected"), loglevel::kNotification);
    const int result = greet();
    m_connected = result == simresult::kNone;
    return result;
}

int FsInterfaceTcpClient::greet()
{
    using Step = BridgeHandshake::Step;
    BridgeHandshake handshake(m_clientName);
    while (handshake.isOpen()) {
        const FsMessage request = handshake.request();
        if (m_socket.send(request.command, request.id, request.data) == 0) {
            return simresult::kTimeout;
        }
        const BridgeSocket::Reply reply = m_socket.ReadReply();
        if (reply.outcome != BridgeSocket::Outcome::Message) {
            return replyFault(reply);
        }
        handshake.take(reply.message);
        logServerVersion(handshake);
    }
    if (handshake.step() == Step::WrongVersion) {
        return simresult::kWrongApiVersion;
    }
    if (handshake.step() == Step::NoSimulatorReply) {
        return simresult::kNotConnected;
    }
    // Deliberately connects without versions too: such a server isn't asked for more.
    takeSimulator(handshake.simulator());
    return simresult::kNone;
}

/// Once, after the server's greeting.
void FsInterfaceTcpClient::logServerVersion(const BridgeHandshake& handshake)
{
    const bool wrong = handshake.step() == BridgeHandshake::Step::WrongVersion;
    const bool greeted = wrong || handshake.step() == BridgeHandshake::Step::AskSimulator;
    if (!greeted || !handshake.hasServerVersion()) {
        return;
    }
    const QString server = outsidetext::forLog(shortened(handshake.serverVersion()));
    log(QStringLiteral("(Client) - Server API Version = ") + server, loglevel::kNotification);
    if (!wrong) {
        return;
    }
    log(QStringLiteral("(Client) - Wrong Client-Server API Version. Server API: ") + server
            + QStringLiteral(" Client API: ") + QLatin1String(kBridgeApiVersion),
        loglevel::kError);
    log(handshake.clientIsNewer()
            ? QStringLiteral(
                "(Client) - Please update your Server version (Velkarin or Cirrilon-Bridge)")
            : QStringLiteral("(Client) - Please update your Client version (Cirrilon 3.0)"),
        loglevel::kError);
}

void FsInterfaceTcpClient::takeSimulator(const BridgeSimulator& simulator)
{
    m_fsVersion = simulator.fsId.value_or(m_fsVersion);
    m_fsName = simulator.fsName.value_or(m_fsName);
    m_interfaceName = simulator.interfaceName.value_or(m_interfaceName);
    const int interfaceId = simulator.interfaceId.value_or(m_interfaceId);
    if (interfaceId > 0) { // 0 stands for a choice that is still to be made
        m_interfaceId = interfaceId;
    }
}

int FsInterfaceTcpClient::Disconnect()
{
    m_connected = false;
    m_socket.close();
    return simresult::kNone;
}

#include "sim/BridgeHandshake.h"

#include "aviation/support/NumberText.h"

#include <QList>

namespace {

constexpr int kLongestName = 256;

QString textOf(const QByteArray& utf8)
{
    return QString::fromUtf8(utf8.left(kLongestName));
}

double numberOf(const QByteArray& text)
{
    return aviation::numberFromText(textOf(text).toStdWString());
}

/// The value of "key=value"; nothing without a "=".
std::optional<QString> valueOf(const QByteArray& part)
{
    const QList<QByteArray> pieces = part.split('=');
    return pieces.size() > 1 ? std::optional(textOf(pieces[1])) : std::nullopt;
}

std::optional<int> numberValueOf(const QByteArray& part)
{
    const std::optional<QString> text = valueOf(part);
    return text ? std::optional(aviation::integerFromText(text->toStdWString())) : std::nullopt;
}

/// Five parts, of which the first isn't read; with another number of them nothing is known.
BridgeSimulator simulatorOf(const QByteArray& data)
{
    constexpr int kParts = 5;
    const QList<QByteArray> parts = data.split(';');
    if (parts.size() != kParts) {
        return {};
    }
    return {numberValueOf(parts[1]), valueOf(parts[2]), numberValueOf(parts[3]), valueOf(parts[4])};
}

} // namespace

BridgeHandshake::BridgeHandshake(const QString& clientName) : m_clientName(clientName.toUtf8()) {}

FsMessage BridgeHandshake::request() const
{
    FsMessage message;
    if (m_step == Step::Greet) {
        message.command = bridgecommand::kHello;
        message.id = bridgemessage::kHello;
        message.data = QByteArray("CLIENTAPI=") + kBridgeApiVersion + ";" + m_clientName;
    } else {
        message.command = bridgecommand::kConnectedFs;
        message.id = bridgemessage::kIsFsConnected;
        message.data = "IS_FS_CONNECTED";
    }
    message.dataLength = message.data.size();
    return message;
}

void BridgeHandshake::take(const FsMessage& reply)
{
    if (m_step == Step::AskSimulator) {
        m_step = reply.id == bridgemessage::kFsConnected ? Step::Done : Step::NoSimulatorReply;
    } else if (reply.command == bridgecommand::kHello && reply.id == bridgemessage::kHello) {
        m_step = afterGreeting(reply.data);
    } else {
        m_step = Step::DoneUnversioned;
    }
    if (m_step == Step::Done || m_step == Step::DoneUnversioned) {
        m_simulator = simulatorOf(reply.data);
    }
}

/// The versions are compared as numbers: "3.30" is "3.3".
BridgeHandshake::Step BridgeHandshake::afterGreeting(const QByteArray& greeting)
{
    m_serverVersion = greeting.mid(greeting.indexOf('=') + 1);
    m_hasServerVersion = greeting.count('=') == 1;
    const bool fits =
        !m_hasServerVersion || numberOf(m_serverVersion) == numberOf(kBridgeApiVersion);
    return fits ? Step::AskSimulator : Step::WrongVersion;
}

bool BridgeHandshake::clientIsNewer() const
{
    return numberOf(kBridgeApiVersion) > numberOf(m_serverVersion);
}

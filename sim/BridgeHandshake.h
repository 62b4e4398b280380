#pragma once

#include "sim/BridgeFrame.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Version of the bridge protocol that this program speaks.
inline constexpr const char* kBridgeApiVersion = "3.3";

/// What a bridge server says of its simulator; empty where it says nothing.
struct BridgeSimulator
{
    std::optional<int> fsId; ///< aviation::FsId
    std::optional<QString> fsName;
    std::optional<int> interfaceId;
    std::optional<QString> interfaceName;
};

/// The handshake of a bridge client without its socket: send request(), hand the reply to take(),
/// and so on while it is open. Takes any reply and never throws.
class BridgeHandshake
{
public:
    enum class Step
    {
        Greet,           ///< open: the greeting goes out
        AskSimulator,    ///< open: the versions fit, the simulator is asked for
        Done,            ///< connected
        DoneUnversioned, ///< the first reply is no greeting: a server that knows no versions
        WrongVersion,
        NoSimulatorReply ///< the second reply is something else
    };

    /// The name is shown by the server.
    explicit BridgeHandshake(const QString& clientName);

    Step step() const { return m_step; }
    bool isOpen() const { return m_step == Step::Greet || m_step == Step::AskSimulator; }
    FsMessage request() const;
    void take(const FsMessage& reply);

    /// As the server spells it, valid after its greeting.
    const QByteArray& serverVersion() const { return m_serverVersion; }
    /// Whether the greeting names one version, which then has to fit; others are let pass.
    bool hasServerVersion() const { return m_hasServerVersion; }
    /// Whether it is the server that is to be updated.
    bool clientIsNewer() const;
    /// Valid when it is done.
    const BridgeSimulator& simulator() const { return m_simulator; }

private:
    Step afterGreeting(const QByteArray& greeting);

    QByteArray m_clientName;
    Step m_step = Step::Greet;
    QByteArray m_serverVersion;
    bool m_hasServerVersion = false;
    BridgeSimulator m_simulator;
};

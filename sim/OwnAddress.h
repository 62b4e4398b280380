#pragma once

#include <QHostAddress>
#include <QString>

/// Which address of this computer a bridge server can reach.
namespace ownaddress {

/// Whether a network interface of this computer has it.
bool isOwn(const QHostAddress& address);

/// The address to announce for the stream: that of the settings, unless it is a loopback address
/// and the server is on another computer, which can't reach it. Then it is the own end of the
/// connection. Null ends leave the setting as it is.
QString toAnnounce(const QString& setting, const QHostAddress& ownEnd,
                   const QHostAddress& serverEnd);

/// The address by which this computer reaches a server, an IP address; empty where there is no way,
/// or the server is on this computer. Sends nothing.
QString reaching(const QString& server);

} // namespace ownaddress

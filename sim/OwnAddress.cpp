#include "sim/OwnAddress.h"

#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QUdpSocket>

#include <algorithm>

namespace ownaddress {

bool isOwn(const QHostAddress& address)
{
    const QList<QHostAddress> own = QNetworkInterface::allAddresses();
    return std::any_of(own.begin(), own.end(), [&address](const QHostAddress& each) {
        return each.isEqual(address, QHostAddress::ConvertV4MappedToIPv4);
    });
}

QString toAnnounce(const QString& setting, const QHostAddress& ownEnd,
                   const QHostAddress& serverEnd)
{
    const bool known = !ownEnd.isNull() && !serverEnd.isNull();
    const bool reachable = !QHostAddress(setting.trimmed()).isLoopback();
    if (reachable || !known || ownEnd.isLoopback() || isOwn(serverEnd)) {
        return setting;
    }
    return ownEnd.toString();
}

QString reaching(const QString& server)
{
    constexpr quint16 kAnyPort = 9; // nothing is sent to it
    constexpr int kLimitMs = 100;   // the way is looked up in this computer
    const QHostAddress address(server);
    if (address.isNull() || isOwn(address)) {
        return {};
    }
    QUdpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.connectToHost(address, kAnyPort);
    if (!socket.waitForConnected(kLimitMs) || socket.localAddress().isLoopback()) {
        return {};
    }
    return socket.localAddress().toString();
}

} // namespace ownaddress

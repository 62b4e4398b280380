#pragma once

#include "standins/simulator/Fault.h"
#include "standins/simulator/Frame.h"

#include <QObject>

class QTcpSocket;

namespace simulator {

/// One client of the server: its socket, the frames that come and the answers that go, spoiled on
/// demand. Lives on the server's thread.
class BridgeConnection : public QObject
{
    Q_OBJECT
public:
    /// Takes the socket over.
    BridgeConnection(QTcpSocket* socket, QObject* parent);

    /// Sends an answer, or what the fault makes of it.
    void deliver(Frame frame, const Fault& fault);
    /// Closes at once.
    void abort();

Q_SIGNALS:
    void frameReceived(const Frame& frame);
    /// The client sent what can't be read; the connection is closed after it.
    void broken();
    void closed();

private:
    void onReadyRead();
    void send(const QByteArray& bytes);
    void sendLater(const QByteArray& bytes, int milliseconds);
    void sendCut(const QByteArray& bytes, const Fault& fault);
    void closeInMidMessage(const QByteArray& bytes);

    QTcpSocket* m_socket; ///< child
    FrameReader m_reader;
};

} // namespace simulator

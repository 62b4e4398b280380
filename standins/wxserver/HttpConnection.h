#pragma once

#include "standins/wxserver/HttpAnswer.h"
#include "standins/wxserver/HttpRequest.h"

#include <QObject>
#include <QTimer>

class QTcpSocket;

namespace wxserver {

class WeatherServer;

/// One connection of the server: reads requests one after the other, answers each before it reads
/// the next, and ends when the peer, an error or half a minute of silence ends it. Owned by the
/// server, on its thread.
class HttpConnection : public QObject
{
    Q_OBJECT
public:
    /// Takes over the socket.
    HttpConnection(QTcpSocket* socket, WeatherServer& server);

Q_SIGNALS:
    void sigClosed();

private:
    void read();
    void answer(const HttpRequest& request);
    void refuse(int status);
    void send(const HttpAnswer& answer, bool withBody);
    void sendPart();
    void sent();
    void sendFilling();
    void finish(bool keepAlive);
    void close();

    WeatherServer& m_server;
    QTcpSocket* m_socket;
    QTimer m_silence;
    QTimer m_tick;
    QByteArray m_buffer;  ///< received, not yet read
    QByteArray m_rest;    ///< body still to be sent bit by bit
    qint64 m_filling = 0; ///< bytes still to be sent of an endless body
    int m_bytesPerTick = 0;
    bool m_keepAlive = false;
    bool m_busy = false; ///< an answer is under way, or a stall
};

} // namespace wxserver

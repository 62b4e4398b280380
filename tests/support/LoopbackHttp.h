#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

/// A web server on loopback that answers with prepared bytes and closes. Lives on the thread whose
/// event loop serves it.
class LoopbackHttp
{
public:
    LoopbackHttp()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { accept(); });
    }

    QString url(const QString& path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
    }
    /// Answers a path, without its query, with a body of known length.
    void serve(const QByteArray& path, const QByteArray& body, const QByteArray& status = "200 OK",
               const QByteArray& headers = QByteArray())
    {
        serveRaw(path, "HTTP/1.1 " + status
                           + "\r\nContent-Length: " + QByteArray::number(body.size())
                           + "\r\nConnection: close\r\n" + headers + "\r\n" + body);
    }
    void serveRaw(const QByteArray& path, const QByteArray& answer)
    {
        m_answers.insert(path, answer);
    }
    /// Answers and then keeps the connection open in silence.
    void stall(const QByteArray& path, const QByteArray& answer = QByteArray())
    {
        m_stalled.insert(path, true);
        serveRaw(path, answer);
    }

    QList<QByteArray> requests; ///< heads, as they came
    int count(const QByteArray& path) const
    {
        int number = 0;
        for (const QByteArray& request : requests) {
            number += pathOf(request) == path ? 1 : 0;
        }
        return number;
    }

private:
    static QByteArray pathOf(const QByteArray& request)
    {
        const QByteArray target = request.split(' ').value(1);
        const int query = target.indexOf('?');
        return query < 0 ? target : target.left(query);
    }
    void accept()
    {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                const QByteArray request = socket->peek(16384);
                if (request.contains("\r\n\r\n")) {
                    socket->readAll();
                    answer(*socket, request);
                }
            });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    }
    void answer(QTcpSocket& socket, const QByteArray& request)
    {
        requests.append(request);
        const QByteArray path = pathOf(request);
        socket.write(m_answers.value(
            path, "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\nConnection: close\r\n\r\ngone"));
        if (!m_stalled.contains(path)) {
            socket.disconnectFromHost();
        }
    }

    QTcpServer m_server;
    QHash<QByteArray, QByteArray> m_answers;
    QHash<QByteArray, bool> m_stalled;
};

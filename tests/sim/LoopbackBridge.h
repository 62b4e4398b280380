#pragma once

#include "aviation/support/ScopedLock.h"

#include <QByteArrayList>
#include <QMutex>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <atomic>
#include <functional>
#include <utility>

/// A bridge server on loopback in a thread of its own: takes one client after the other and answers
/// each frame by a script.
class LoopbackBridge final : public QThread
{
public:
    struct Answer
    {
        QByteArray bytes;
        int cut = 0;        ///< the answer goes out in two pieces, the first of this size
        bool close = false; ///< the connection is closed after it
    };
    using Script = std::function<Answer(const QByteArray& frame)>;

    explicit LoopbackBridge(Script script) : m_script(std::move(script))
    {
        start();
        m_ready.acquire();
    }
    ~LoopbackBridge() override
    {
        m_stop = true;
        wait();
        const aviation::ScopedLock lock(m_mutex); // the thread sanitizer doesn't know of wait()
    }
    /// From the next frame on.
    void setScript(Script script)
    {
        const aviation::ScopedLock lock(m_mutex);
        m_script = std::move(script);
    }

    int port() const { return m_port; }
    QByteArrayList frames() const
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_frames;
    }

protected:
    void run() override
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost, 0);
        m_port = server.serverPort();
        m_ready.release();
        while (!m_stop) {
            if (server.waitForNewConnection(kSliceMs)) {
                serve(*server.nextPendingConnection());
            }
        }
        const aviation::ScopedLock lock(m_mutex);
    }

private:
    static constexpr int kSliceMs = 20;
    static constexpr int kHeader = 20;

    void serve(QTcpSocket& client)
    {
        QByteArray waiting;
        while (!m_stop && client.state() == QAbstractSocket::ConnectedState) {
            client.waitForReadyRead(kSliceMs);
            waiting += client.readAll();
            while (waiting.size() >= kHeader
                   && waiting.size() >= kHeader + waiting.mid(11, 8).toInt()) {
                const QByteArray frame = waiting.left(kHeader + waiting.mid(11, 8).toInt());
                waiting.remove(0, frame.size());
                answer(client, frame);
            }
        }
    }
    Answer answerTo(const QByteArray& frame)
    {
        const aviation::ScopedLock lock(m_mutex);
        m_frames.append(frame);
        return m_script(frame);
    }
    void answer(QTcpSocket& client, const QByteArray& frame)
    {
        const Answer answer = answerTo(frame);
        client.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        if (answer.cut > 0) {
            client.write(answer.bytes.left(answer.cut));
            client.waitForBytesWritten();
            QThread::msleep(1); // so that the pieces arrive as two
        }
        client.write(answer.bytes.mid(answer.cut));
        while (client.bytesToWrite() > 0 && client.waitForBytesWritten()) {
        }
        if (answer.close) {
            client.close();
        }
    }

    std::atomic<bool> m_stop{false};
    std::atomic<int> m_port{0};
    QSemaphore m_ready;
    mutable QMutex m_mutex; ///< guards all below
    Script m_script;        ///< called on the server's thread, under the lock
    QByteArrayList m_frames;
};

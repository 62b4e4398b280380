#pragma once

#include "sim/BridgeFrame.h"

#include <QByteArray>
#include <QHostAddress>
#include <QString>
#include <QTcpSocket>

#include <cstdint>
#include <functional>
#include <memory>

class StopFlag;

/// How long the bridge client waits, milliseconds.
struct BridgeTimeouts
{
    int connect = 5000;
    int write = 5000;       ///< since the last bytes went out
    int reply = 5000;       ///< for a whole reply, in however many pieces
    int stream = 10000;     ///< for the next bytes of a long reply
    int fileSettle = 1000;  ///< pause after a file
    int unheardWrite = 200; ///< for a reply to a write, once the server swallows them
};

/// Waiting of at most so many milliseconds: by the clock, and by the slices that were waited,
/// since a test's clock may stand still.
class WaitBudget
{
public:
    explicit WaitBudget(int milliseconds);
    bool spent() const { return left() <= 0; }
    /// The next piece of waiting, at most 50 ms.
    int slice() const;
    void count(int milliseconds) { m_counted += milliseconds; }

private:
    int left() const;

    int m_total;
    int m_counted = 0;
    std::int64_t m_start;
};

/// The connection of the bridge client: strictly request and reply, with waits that block the
/// calling thread. Each ends when the stop flag is raised, or when its thread is asked to end,
/// within a tenth of a second. Lives on ConnectWorker's thread, owned by FsInterfaceTcpClient.
class BridgeSocket
{
public:
    using Log = std::function<void(const QString& text, int level)>;

    /// What a wait for a reply brought.
    enum class Outcome
    {
        Nothing,    ///< no byte in time, or the connection ended
        Unreadable, ///< bytes, but a cut frame
        Message     ///< a message, an empty one for bytes that are no frame
    };
    struct Reply
    {
        Outcome outcome = Outcome::Nothing;
        int length = 0; ///< bytes of the block
        FsMessage message;
    };

    /// `stop` outlives the socket.
    BridgeSocket(const StopFlag& stop, const BridgeTimeouts& timeouts, Log log);

    /// Ends a connection that there may be and makes a new one. False when there is none in time.
    bool open(const QString& address, std::uint16_t port);
    bool isOpen() const;
    /// As isOpen(), after a look whether the server has closed meanwhile. Doesn't wait.
    bool stillStands();
    void close();
    /// The ends of the connection; null ones without it.
    QHostAddress ownAddress() const;
    QHostAddress serverAddress() const;
    /// Bytes written; 0 when they couldn't be written in time, which ends the connection. What
    /// still lay there of an earlier reply is thrown away first.
    int send(std::uint8_t command, std::uint8_t id, const QByteArray& data);
    /// Whether the last send threw a late reply away: the server is alive, only slow.
    bool droppedLateReply() const { return m_lateBytes > 0; }
    /// Takes what one wait delivers, and goes on within the same time where the frame's own length
    /// says that more must come.
    Reply ReadReply() { return ReadReply(m_timeouts.reply); }
    /// `begun`: what came of it already, with the reply before it.
    Reply ReadReply(int limitMs, const QByteArray& begun = QByteArray());
    /// For replies that may exceed one read. Appends what came to `output`, which then holds a
    /// frame after whatever stood before its "@", and returns the length.
    int ReceiveStream(QByteArray& output);

    /// Logs a fault in the pilot's terms, once until an answer comes again.
    void say(const QString& text);
    void sayTimeout();
    bool stopped() const;

private:
    static constexpr qint64 kReadBufferBytes = 1 << 20;

    void onError(QAbstractSocket::SocketError error);
    void waitWhileConnecting();
    bool waitForData(WaitBudget& budget);
    bool waitForBytes(int bytes);
    bool waitWritten();
    void dropStaleReply();

    bool readUpToMark(QByteArray& output);
    bool readHeader(QByteArray& output, QByteArray& header);
    bool readStreamData(int length, QByteArray& output);

    const StopFlag& m_stop;
    BridgeTimeouts m_timeouts;
    Log m_log;
    qint64 m_lateBytes = 0;               ///< thrown away by the last send
    QString m_said;                       ///< the last fault; empty after an answer
    std::unique_ptr<QTcpSocket> m_socket; ///< last, since its end may still report into the others
};

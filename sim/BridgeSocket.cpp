#include "sim/BridgeSocket.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/StopFlag.h"
#include "aviation/support/Clock.h"

#include <QEventLoop>
#include <QNetworkProxy>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

constexpr int kSliceMs = 50;

QString errorMessage(QAbstractSocket::SocketError error, const QString& socketText)
{
    switch (error) {
    case QAbstractSocket::HostNotFoundError:
        return QStringLiteral(
            "The host was not found. Please check the host name and port settings.");
    case QAbstractSocket::SocketAccessError:
        return QStringLiteral(
            "The socket operation failed because the application lacked the required privileges");
    case QAbstractSocket::SocketTimeoutError:
        return QStringLiteral("The socket operation timed out.");
    case QAbstractSocket::ConnectionRefusedError:
        return QStringLiteral("The connection was refused by the peer. Make sure the fortune "
                              "server is running, and check that the host name and port settings "
                              "are correct.");
    default:
        return QStringLiteral("The following error occurred: %1.").arg(socketText);
    }
}

} // namespace

WaitBudget::WaitBudget(int milliseconds)
    : m_total(milliseconds)
    , m_start(aviation::Clock::current().MonotonicMs())
{}

int WaitBudget::left() const
{
    const std::int64_t elapsed = aviation::Clock::current().MonotonicMs() - m_start;
    const std::int64_t spentMs = std::max<std::int64_t>(elapsed, m_counted);
    return m_total - static_cast<int>(std::min<std::int64_t>(spentMs, m_total));
}

int WaitBudget::slice() const
{
    return std::clamp(left(), 1, kSliceMs);
}

BridgeSocket::BridgeSocket(const StopFlag& stop, const BridgeTimeouts& timeouts, Log log)
    : m_stop(stop)
    , m_timeouts(timeouts)
    , m_log(std::move(log))
{}

bool BridgeSocket::stopped() const
{
    return m_stop.raised() || QThread::currentThread()->isInterruptionRequested();
}

bool BridgeSocket::isOpen() const
{
    return m_socket && m_socket->state() == QAbstractSocket::ConnectedState;
}

bool BridgeSocket::stillStands()
{
    // The end of the connection is seen only by whoever reads.
    if (isOpen() && m_socket->bytesAvailable() == 0) {
        m_socket->waitForReadyRead(0);
    }
    return isOpen();
}

QHostAddress BridgeSocket::ownAddress() const
{
    return isOpen() ? m_socket->localAddress() : QHostAddress();
}

QHostAddress BridgeSocket::serverAddress() const
{
    return isOpen() ? m_socket->peerAddress() : QHostAddress();
}

void BridgeSocket::close()
{
    m_socket.reset();
}

bool BridgeSocket::open(const QString& address, std::uint16_t port)
{
    m_said.clear();
    m_socket = std::make_unique<QTcpSocket>();
    m_socket->setProxy(QNetworkProxy::NoProxy);
    m_socket->setReadBufferSize(kReadBufferBytes);
    QObject::connect(m_socket.get(), &QAbstractSocket::errorOccurred, m_socket.get(),
                     [this](QAbstractSocket::SocketError error) { onError(error); });
    m_socket->connectToHost(address, port, QIODevice::ReadWrite);
    waitWhileConnecting();
    if (!isOpen()) {
        if (m_said.isEmpty() && !stopped()) {
            sayTimeout();
        }
        m_socket->abort();
        return false;
    }
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    return true;
}

/// The socket's own wait can't be cut into slices, and it looks up a host name without an end; so
/// the thread's events are worked instead.
void BridgeSocket::waitWhileConnecting()
{
    WaitBudget budget(m_timeouts.connect);
    QEventLoop loop;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&budget] { budget.count(kSliceMs); });
    tick.start(kSliceMs);
    while (!budget.spent() && !stopped() && !isOpen()
           && m_socket->state() != QAbstractSocket::UnconnectedState)
    {
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void BridgeSocket::onError(QAbstractSocket::SocketError error)
{
    // Each slice of a wait ends in a time-out; that of the whole wait is logged by sayTimeout. A
    // server that closes isn't reported: the next job says what it means.
    if (error != QAbstractSocket::SocketTimeoutError
        && error != QAbstractSocket::RemoteHostClosedError) {
        say(errorMessage(error, m_socket->errorString()));
    }
}

void BridgeSocket::say(const QString& text)
{
    if (text != m_said) {
        m_said = text;
        m_log(QStringLiteral("(Client) - ") + outsidetext::forLog(text), loglevel::kError);
    }
}

void BridgeSocket::sayTimeout()
{
    say(errorMessage(QAbstractSocket::SocketTimeoutError, QString()));
}

bool BridgeSocket::waitForData(WaitBudget& budget)
{
    while (m_socket->bytesAvailable() == 0 && !budget.spent() && !stopped() && isOpen()) {
        const int slice = budget.slice();
        if (!m_socket->waitForReadyRead(slice)) {
            budget.count(slice);
        }
    }
    return m_socket->bytesAvailable() > 0;
}

/// Waits until so many bytes lie there.
bool BridgeSocket::waitForBytes(int bytes)
{
    WaitBudget budget(m_timeouts.reply);
    while (m_socket->bytesAvailable() < bytes && !budget.spent() && !stopped() && isOpen()) {
        const int slice = budget.slice();
        if (!m_socket->waitForReadyRead(slice)) {
            budget.count(slice);
        }
    }
    return m_socket->bytesAvailable() >= bytes;
}

bool BridgeSocket::waitWritten()
{
    WaitBudget budget(m_timeouts.write);
    while (m_socket->bytesToWrite() > 0 && !budget.spent() && !stopped() && isOpen()) {
        const qint64 before = m_socket->bytesToWrite();
        const int slice = budget.slice();
        m_socket->waitForBytesWritten(slice);
        if (m_socket->bytesToWrite() < before) {
            budget = WaitBudget(m_timeouts.write);
        } else {
            budget.count(slice);
        }
    }
    return m_socket->bytesToWrite() == 0 && isOpen();
}

/// A reply that came too late would be taken for the next one, and so on for ever.
void BridgeSocket::dropStaleReply()
{
    constexpr int kMostRounds = 64;
    m_lateBytes = 0;
    for (int round = 0; round < kMostRounds && isOpen(); ++round) {
        if (m_socket->bytesAvailable() == 0 && !m_socket->waitForReadyRead(0)) {
            break;
        }
        m_lateBytes += m_socket->readAll().size();
    }
    if (m_lateBytes > 0) {
        m_log(QStringLiteral("(Client) - a late reply of %1 bytes is dropped").arg(m_lateBytes),
              loglevel::kDebug);
    }
}

int BridgeSocket::send(std::uint8_t command, std::uint8_t id, const QByteArray& data)
{
    if (!isOpen() || stopped() || data.size() > kLongestFrameData) {
        return 0;
    }
    dropStaleReply();
    const QByteArray frame = frameBytes(command, id, data);
    m_log(QStringLiteral("(Client) - write message: ") + outsidetext::forLog(frame),
          loglevel::kDebug);
    if (!isOpen() || m_socket->write(frame) != frame.size() || !waitWritten()) {
        // Half a frame may be on its way: nothing after it would be understood.
        m_socket->abort();
        return 0;
    }
    return frame.size();
}

BridgeSocket::Reply BridgeSocket::ReadReply(int limitMs, const QByteArray& begun)
{
    Reply reply;
    if (!m_socket) {
        return reply;
    }
    QByteArray block = begun;
    WaitBudget budget(limitMs);
    while (progressOf(block) == FrameProgress::Partial && waitForData(budget)) {
        block += m_socket->read(kReadBufferBytes);
    }
    if (block.isEmpty()) {
        return reply;
    }
    reply.length = block.size();
    const bool whole = progressOf(block) == FrameProgress::Complete
                       || block.size() < kFrameHeaderLength; // the parser decides on these
    const bool readable = whole && parseFrame(block, reply.message);
    reply.outcome = readable ? Outcome::Message : Outcome::Unreadable;
    if (readable) {
        m_said.clear();
    }
    return reply;
}

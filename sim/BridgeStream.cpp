#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "aviation/support/Clock.h"
#include "aviation/support/NumberText.h"
#include "sim/BridgeSocket.h"

#include <algorithm>

namespace {

constexpr char kFrameMark = '@';
constexpr int kHeaderBytes = kFrameHeaderLength - 1; // after the mark
constexpr int kHeaderFields = 3;
/// So many bytes that are no frame end the search for one.
constexpr int kMostNoise = 64 * 1024;

std::int32_t fieldNumber(const QByteArray& field)
{
    return aviation::integerFromText(QString::fromLatin1(field).toStdWString());
}

} // namespace

/// The bytes up to and with "@". What came without one is no message.
bool BridgeSocket::readUpToMark(QByteArray& output)
{
    WaitBudget budget(m_timeouts.reply);
    char byte = '\0';
    while (output.size() < kMostNoise && waitForData(budget) && m_socket->read(&byte, 1) == 1) {
        output += byte;
        if (byte == kFrameMark) {
            return true;
        }
    }
    if (!output.isEmpty()) {
        m_log(
            QStringLiteral("(ServerThread) -  Wrong Message: %1").arg(outsidetext::forLog(output)),
            loglevel::kError);
    }
    return false;
}

/// Rows of 19 bytes until one has the fields of a header.
bool BridgeSocket::readHeader(QByteArray& output, QByteArray& header)
{
    while (output.size() < kMostNoise && waitForBytes(kHeaderBytes)) {
        header = m_socket->read(kHeaderBytes);
        output += header;
        if (header.count(';') + 1 >= kHeaderFields) {
            return true;
        }
    }
    const QByteArray rest = m_socket->readAll();
    output += rest;
    m_log(
        header.isEmpty()
            ? QStringLiteral("(ServerThread) - Wrong Message: %1").arg(outsidetext::forLog(output))
            : QStringLiteral("(ServerThread) - Message Error - Data in:%1")
                  .arg(outsidetext::forLog(output)),
        loglevel::kError);
    return false;
}

bool BridgeSocket::readStreamData(int length, QByteArray& output)
{
    constexpr int kMostRounds = 1000;
    constexpr int kPauseMs = 10;
    int missing = length;
    for (int round = 0; round < kMostRounds && !stopped(); ++round) {
        const QByteArray piece = m_socket->read(std::min<qint64>(missing, kReadBufferBytes));
        output += piece;
        missing -= piece.size();
        if (missing <= 0) {
            return true;
        }
        WaitBudget budget(m_timeouts.stream);
        if (!waitForData(budget)) {
            m_socket->abort();
            break;
        }
        if (m_socket->bytesAvailable() < missing && m_socket->bytesAvailable() < kReadBufferBytes) {
            aviation::Clock::current().SleepMs(kPauseMs);
        }
    }
    m_log(QStringLiteral("(ServerThread) - Message not complete."), loglevel::kError);
    return false;
}

int BridgeSocket::ReceiveStream(QByteArray& output)
{
    QByteArray header;
    if (!m_socket || !readUpToMark(output) || !readHeader(output, header)) {
        return output.size();
    }
    const QList<QByteArray> fields = header.split(';');
    const std::int32_t length = fieldNumber(fields[2]);
    if (length < 0 || length > kLongestFrameData) {
        m_log(QStringLiteral("(ServerThread) - Wrong Message: %1").arg(outsidetext::forLog(header)),
              loglevel::kError);
        return output.size();
    }
    if (readStreamData(length, output)) {
        m_said.clear();
        // To Qt "%12" is place 12, filled after place 2: the id comes first and the name second.
        // With "%1" the line would change for those who search logs for it.
        m_log(QStringLiteral("(ServerThread) - Data in Command: %12 MsgId: %2")
                  .arg(QString::fromLatin1(commandName(fieldNumber(fields[0]))))
                  .arg(fieldNumber(fields[1])),
              loglevel::kDebug);
    }
    return output.size();
}

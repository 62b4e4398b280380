#include "standins/simulator/Frame.h"

namespace simulator {

namespace {

constexpr int kCommandAt = 1;
constexpr int kIdAt = 6;
constexpr int kLengthAt = 11;
constexpr int kShortDigits = 4;
constexpr int kLengthDigits = 8;
constexpr int kLargestNumber = 255;

QByteArray digits(qint64 value, int width)
{
    return QByteArray::number(value).rightJustified(width, '0');
}

/// The number of exactly `width` digits before a ";", -1 if there is none.
int numberAt(const QByteArray& bytes, int at, int width)
{
    int value = 0;
    for (int i = at; i < at + width; ++i) {
        if (bytes[i] < '0' || bytes[i] > '9') {
            return -1;
        }
        value = 10 * value + (bytes[i] - '0');
    }
    return bytes[at + width] == ';' ? value : -1;
}

} // namespace

QByteArray encodeHeader(int command, int id, qint64 length)
{
    return '@' + digits(command, kShortDigits) + ';' + digits(id, kShortDigits) + ';'
           + digits(length, kLengthDigits) + ';';
}

QByteArray encodeFrame(const Frame& frame)
{
    return encodeHeader(frame.command, frame.id, frame.data.size()) + frame.data;
}

void FrameReader::append(const QByteArray& bytes)
{
    if (!m_broken) {
        m_bytes += bytes;
    }
}

std::optional<Frame> FrameReader::next()
{
    if (!m_started && (!findStart() || !readHeader())) {
        return std::nullopt;
    }
    if (m_bytes.size() < m_awaited) {
        return std::nullopt;
    }
    Frame frame = *m_started;
    frame.data = m_bytes.left(m_awaited);
    m_bytes.remove(0, m_awaited);
    m_started.reset();
    return frame;
}

/// Drops what stands before an "@".
bool FrameReader::findStart()
{
    const int found = m_bytes.indexOf('@');
    const int skip = found < 0 ? m_bytes.size() : found;
    m_bytes.remove(0, skip);
    m_skipped += skip;
    return found >= 0;
}

bool FrameReader::readHeader()
{
    if (m_bytes.size() < kHeaderLength) {
        return false;
    }
    const int command = numberAt(m_bytes, kCommandAt, kShortDigits);
    const int id = numberAt(m_bytes, kIdAt, kShortDigits);
    const int length = numberAt(m_bytes, kLengthAt, kLengthDigits);
    m_broken = command < 0 || command > kLargestNumber || id < 0 || id > kLargestNumber
               || length < 0 || length > kMaxDataLength;
    if (m_broken) {
        m_bytes.clear();
        return false;
    }
    m_started = Frame{command, id, {}};
    m_awaited = length;
    m_bytes.remove(0, kHeaderLength);
    return true;
}

} // namespace simulator

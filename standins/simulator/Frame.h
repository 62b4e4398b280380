#pragma once

#include <QByteArray>

#include <optional>

namespace simulator {

/// One message of the bridge: "@0006;0023;00000024;" and as many bytes of data as the third number
/// says. Plain value.
struct Frame
{
    int command = 0; ///< 0 to 255
    int id = 0;      ///< 0 to 255
    QByteArray data;
};

/// Length of the header before the data.
inline constexpr int kHeaderLength = 20;
/// The largest data of a message that the stand-in takes; the wind files have some megabytes.
inline constexpr int kMaxDataLength = 64 * 1024 * 1024;

/// The bytes for the wire.
QByteArray encodeFrame(const Frame& frame);
/// The header alone, with any length, for faults.
QByteArray encodeHeader(int command, int id, qint64 length);

/// Cuts a stream of bytes into frames, however it was cut into pieces on its way. Bytes before
/// an "@" are skipped. A header that isn't one breaks the stream: nothing more comes out of it.
class FrameReader
{
public:
    void append(const QByteArray& bytes);
    /// The next whole frame, nothing while it isn't complete.
    std::optional<Frame> next();

    /// A header had no numbers or a length above kMaxDataLength.
    bool isBroken() const { return m_broken; }
    /// Bytes that stood before an "@".
    qint64 skippedBytes() const { return m_skipped; }
    /// Bytes that wait for the rest of their frame.
    int pendingBytes() const { return m_bytes.size(); }

private:
    bool findStart();
    bool readHeader();

    QByteArray m_bytes;
    std::optional<Frame> m_started; ///< header read, data awaited
    int m_awaited = 0;              ///< data bytes of m_started
    qint64 m_skipped = 0;
    bool m_broken = false;
};

} // namespace simulator

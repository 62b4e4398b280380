#include "standins/wxserver/Compress.h"

#include <zlib.h>

namespace wxserver {

namespace {

constexpr int kGzipBits = 15 + 16;
constexpr int kMemoryLevel = 8;
constexpr int kGzipHeadBytes = 10;

/// Deflates `data` with a stream that is opened and closed here; `flush` as zlib names it.
QByteArray deflated(const QByteArray& data, int windowBits, int flush)
{
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, kMemoryLevel,
                     Z_DEFAULT_STRATEGY)
        != Z_OK)
    {
        return {};
    }
    QByteArray input(data);
    const auto bound = deflateBound(&stream, static_cast<uLong>(input.size()));
    QByteArray output(static_cast<int>(bound) + 64, Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(output.data());
    stream.avail_out = static_cast<uInt>(output.size());
    deflate(&stream, flush);
    output.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return output;
}

void appendNumber(QByteArray& bytes, uLong number)
{
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.append(static_cast<char>((number >> shift) & 0xFFU));
    }
}

} // namespace

QByteArray gzipped(const QByteArray& data)
{
    return deflated(data, kGzipBits, Z_FINISH);
}

/// After a full flush a block depends on nothing before it and ends at a whole byte, so one block
/// can stand in the stream many times.
QByteArray gzipBomb(qint64 bytes)
{
    const QByteArray zeros(4 * 1024 * 1024, '\0');
    const QByteArray block = deflated(zeros, -15, Z_FULL_FLUSH);
    const auto* const data = reinterpret_cast<const Bytef*>(zeros.constData());
    const uLong blockSum = crc32(0, data, static_cast<uInt>(zeros.size()));
    QByteArray stream = gzipped({}).left(kGzipHeadBytes);
    uLong sum = crc32(0, nullptr, 0);
    qint64 total = 0;
    for (; total < bytes; total += zeros.size()) {
        stream += block;
        sum = crc32_combine(sum, blockSum, zeros.size());
    }
    stream += deflated({}, -15, Z_FINISH);
    appendNumber(stream, sum);
    appendNumber(stream, static_cast<uLong>(total & 0xFFFFFFFF));
    return stream;
}

} // namespace wxserver

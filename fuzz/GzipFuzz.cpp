#include "app/base/Gzip.h"

#include <zlib.h>

#include <cstdint>
#include <cstdlib>

namespace {

constexpr qint64 kLimit = 1024LL * 1024;

QByteArray packedForm(const QByteArray& plain)
{
    z_stream stream{};
    // The smallest window and least memory: their allocation is most of the time.
    constexpr int kWindowBits = 16 + 9;
    if (deflateInit2(&stream, 1, Z_DEFLATED, kWindowBits, 1, Z_DEFAULT_STRATEGY) != Z_OK) {
        std::abort();
    }
    QByteArray input = plain;
    QByteArray packed(static_cast<int>(deflateBound(&stream, static_cast<uLong>(plain.size()))),
                      '\0');
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    if (deflate(&stream, Z_FINISH) != Z_STREAM_END) {
        std::abort();
    }
    packed.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

} // namespace

/// Any bytes give contents within the limit or a reason; the bytes themselves, packed into two
/// members, come back whole; cut short they don't pass for whole.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const GzipResult result = inflateGzip(input, kLimit);
    if (result.data.size() > kLimit || (!result.ok() && !result.data.isEmpty())) {
        std::abort();
    }
    const int half = input.size() / 2;
    const QByteArray packed = packedForm(input.left(half)) + packedForm(input.mid(half));
    if (inflateGzip(packed).data != input || inflateGzip(packed.left(packed.size() - 1)).ok()) {
        std::abort();
    }
    return 0;
}

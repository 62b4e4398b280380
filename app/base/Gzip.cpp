#include "app/base/Gzip.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <new>

namespace {

constexpr int kGzipWindowBits = 16 + MAX_WBITS;   // 16 asks zlib for gzip framing
constexpr int kEitherWindowBits = 32 + MAX_WBITS; // 32 asks it to look at the header
constexpr qint64 kFirstBuffer = 64LL * 1024;
constexpr qint64 kLargestArray = std::numeric_limits<int>::max() / 2;

/// One run over the compressed bytes. The output grows by doubling, so its memory stays within
/// twice the contents.
class Inflater
{
public:
    Inflater(const QByteArray& input, int windowBits, qint64 limit)
        : m_input(input)
        , m_limit(std::clamp<qint64>(limit, 0, kLargestArray))
    {
        // zlib never writes to its input; its interface is older than const.
        m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(m_input.constData()));
        m_stream.avail_in = static_cast<uInt>(m_input.size());
        m_open = inflateInit2(&m_stream, windowBits) == Z_OK;
    }
    ~Inflater() { inflateEnd(&m_stream); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    GzipResult run()
    {
        QString error = m_open ? QString() : QStringLiteral("not enough memory to inflate");
        while (error.isEmpty() && !m_done) {
            error = step();
        }
        if (!error.isEmpty()) {
            return {QByteArray(), error};
        }
        m_output.resize(static_cast<int>(m_size));
        return {m_output, QString()};
    }

private:
    QString step()
    {
        makeRoom();
        const auto room = static_cast<uInt>(m_output.size() - m_size);
        m_stream.next_out = reinterpret_cast<Bytef*>(m_output.data() + m_size);
        m_stream.avail_out = room;
        const int code = inflate(&m_stream, Z_NO_FLUSH);
        m_size += room - m_stream.avail_out;
        if (m_size > m_limit) {
            return QStringLiteral("too large: inflates to more than %1 bytes").arg(m_limit);
        }
        return judge(code);
    }

    /// One byte above the limit has room, so that the limit itself isn't taken for an excess.
    void makeRoom()
    {
        if (m_size == m_output.size()) {
            const qint64 wanted = std::max<qint64>(kFirstBuffer, m_size * 2);
            m_output.resize(static_cast<int>(std::min(wanted, m_limit + 1)));
        }
    }

    QString judge(int code)
    {
        switch (code) {
        case Z_OK:
            return {};
        case Z_STREAM_END:
            m_done = !nextMember();
            return {};
        case Z_BUF_ERROR:
            return QStringLiteral("truncated gzip data: the end is missing");
        case Z_MEM_ERROR:
            return QStringLiteral("not enough memory to inflate");
        default:
            return QStringLiteral("damaged gzip data: ")
                   + QLatin1String(m_stream.msg != nullptr ? m_stream.msg : "unknown contents");
        }
    }

    bool nextMember()
    {
        const bool another =
            m_stream.avail_in >= 2 && m_stream.next_in[0] == 0x1F && m_stream.next_in[1] == 0x8B;
        return another && inflateReset(&m_stream) == Z_OK;
    }

    const QByteArray& m_input;
    qint64 m_limit;
    z_stream m_stream{};
    QByteArray m_output;
    qint64 m_size = 0; ///< bytes of m_output in use
    bool m_open = false;
    bool m_done = false;
};

GzipResult inflated(const QByteArray& compressed, int windowBits, qint64 limit)
{
    try {
        return Inflater(compressed, windowBits, limit).run();
    } catch (const std::bad_alloc&) {
        return {QByteArray(), QStringLiteral("not enough memory to inflate")};
    }
}

} // namespace

GzipResult inflateGzip(const QByteArray& compressed, qint64 limit)
{
    return inflated(compressed, kGzipWindowBits, limit);
}

GzipResult inflateZlibOrGzip(const QByteArray& compressed, qint64 limit)
{
    return inflated(compressed, kEitherWindowBits, limit);
}

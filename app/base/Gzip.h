#pragma once

#include <QByteArray>
#include <QString>

/// Nothing that comes from outside inflates to more than this many bytes.
inline constexpr qint64 kMaxInflatedBytes = 256LL * 1024 * 1024;

/// What inflating gave: either `data` or a reason in `error`, never both.
struct GzipResult
{
    QByteArray data;
    QString error; ///< empty on success; "truncated ...", "damaged ...", "too large ..."

    bool ok() const { return error.isEmpty(); }
};

/// Inflates gzip data (RFC 1952). The contents of several members follow each other; bytes after
/// the last member that begin no other are ignored, as padding. More than `limit` bytes of contents
/// is an error, found before they are all inflated. Never throws; callable from any thread.
[[nodiscard]] GzipResult inflateGzip(const QByteArray& compressed,
                                     qint64 limit = kMaxInflatedBytes);
/// The same for data of either header, gzip or zlib (RFC 1950).
[[nodiscard]] GzipResult inflateZlibOrGzip(const QByteArray& compressed,
                                           qint64 limit = kMaxInflatedBytes);

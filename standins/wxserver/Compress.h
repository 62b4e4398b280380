#pragma once

#include <QByteArray>

namespace wxserver {

/// The data as one gzip member (RFC 1952), without name and time of packing.
QByteArray gzipped(const QByteArray& data);
/// A small gzip member whose contents are zeros, at least `bytes` of them. Its sum is right.
QByteArray gzipBomb(qint64 bytes);

} // namespace wxserver

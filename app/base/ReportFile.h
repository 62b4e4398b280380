#pragma once

#include "app/base/Gzip.h"

#include <QString>

/// What reading gave: either `text` or a reason in `error`.
struct ReportFileResult
{
    QString text;
    QString error; ///< empty on success; "NAME: reason" otherwise

    bool ok() const { return error.isEmpty(); }
};

/// The text of a file's bytes. They are UTF-8; each byte that isn't becomes U+FFFD, a byte order
/// mark is dropped and NULs stay, so that a damaged line costs only itself. Line ends of other
/// systems become line feeds.
[[nodiscard]] QString reportText(const QByteArray& bytes);
/// Reads a file of reports. A name ending in ".gz" is inflated. Missing, unreadable, damaged and
/// files above `limit` bytes (before or after inflating) are errors. Callable from any thread.
[[nodiscard]] ReportFileResult readReportFile(const QString& fileName,
                                              qint64 limit = kMaxInflatedBytes);

#include "app/base/DownloadManager.h"
#include "app/base/Gzip.h"
#include "app/base/WriteFault.h"

#include <QDebug>
#include <QFile>

namespace {

constexpr int kShortestPacked = 5; // bytes

/// Empty, or why the target holds nothing.
QString gunzip(const QString& source, const QString& target)
{
    QFile packed(source);
    // In place: flushing half a dozen megabytes to the disk would stop the window.
    QFile plain(target);
    const bool readable = packed.open(QIODevice::ReadOnly);
    if (!plain.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return QStringLiteral("can not write %1: %2").arg(target, plain.errorString());
    }
    if (!readable) {
        return QStringLiteral("can not read %1: %2").arg(source, packed.errorString());
    }
    const QByteArray bytes = packed.readAll();
    if (bytes.size() < kShortestPacked) {
        return QStringLiteral("it is empty");
    }
    const GzipResult inflated = inflateZlibOrGzip(bytes);
    const bool written = plain.write(inflated.data) == inflated.data.size() && plain.flush();
    if (!written) {
        const QString reason = writeFault(plain);
        plain.resize(0);
        return QStringLiteral("can not write %1: %2").arg(target, reason);
    }
    return inflated.error;
}

} // namespace

QByteArray DownloadManager::gUncompress(const QByteArray& data)
{
    if (data.size() < kShortestPacked) {
        qWarning("gUncompress: Input data is truncated");
        return {};
    }
    return inflateZlibOrGzip(data).data;
}

void DownloadManager::gunzipFile(const QString& source, const QString& target, QString* reason)
{
    const QString error = gunzip(source, target);
    if (reason != nullptr) {
        *reason = error;
    }
}

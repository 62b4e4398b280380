#include "app/base/ReportFile.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <new>

namespace {

constexpr qint64 kChunk = 1024LL * 1024;

/// Reads until the end or until one chunk above the limit: devices don't say their size.
QByteArray readUpTo(QFile& file, qint64 limit)
{
    QByteArray bytes;
    while (bytes.size() <= limit) {
        const QByteArray chunk = file.read(kChunk);
        if (chunk.isEmpty()) {
            break;
        }
        bytes += chunk;
    }
    return bytes;
}

QString readBytes(const QString& fileName, qint64 limit, QByteArray& bytes)
{
    const QFileInfo info(fileName);
    if (info.isDir()) {
        return QStringLiteral("is a folder, not a file");
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return info.exists() ? QStringLiteral("can not be opened: ") + file.errorString()
                             : QStringLiteral("no such file");
    }
    bytes = readUpTo(file, limit);
    if (bytes.size() > limit) {
        return QStringLiteral("too large: more than %1 bytes").arg(limit);
    }
    return file.error() == QFileDevice::NoError
               ? QString()
               : QStringLiteral("can not be read: ") + file.errorString();
}

QString inflateIfPacked(const QString& fileName, qint64 limit, QByteArray& bytes)
{
    if (!fileName.endsWith(QLatin1String(".gz"), Qt::CaseInsensitive)) {
        return {};
    }
    GzipResult inflated = inflateGzip(bytes, limit);
    bytes.swap(inflated.data);
    return inflated.error;
}

/// "\r\n" becomes "\n". Without a "\r", as nearly always, that costs one look at the text.
void unifyLineEnds(QString& text)
{
    const int first = text.indexOf(QLatin1Char('\r'));
    if (first < 0) {
        return;
    }
    QChar* const begin = text.data();
    const QChar* const end = begin + text.size();
    QChar* to = begin + first;
    for (const QChar* from = to; from != end; ++from) {
        if (*from != QLatin1Char('\r') || from + 1 == end || from[1] != QLatin1Char('\n')) {
            *to++ = *from;
        }
    }
    text.truncate(static_cast<int>(to - begin));
}

} // namespace

QString reportText(const QByteArray& bytes)
{
    // The overload for byte arrays would stop at the first NUL.
    QString text = QString::fromUtf8(bytes.constData(), bytes.size());
    unifyLineEnds(text);
    return text;
}

ReportFileResult readReportFile(const QString& fileName, qint64 limit)
{
    ReportFileResult result;
    try {
        QByteArray bytes;
        QString reason = readBytes(fileName, limit, bytes);
        if (reason.isEmpty()) {
            reason = inflateIfPacked(fileName, limit, bytes);
        }
        if (!reason.isEmpty()) {
            result.error = fileName + QStringLiteral(": ") + reason;
        } else {
            result.text = reportText(bytes);
        }
    } catch (const std::bad_alloc&) {
        result.error = fileName + QStringLiteral(": not enough memory");
    }
    return result;
}

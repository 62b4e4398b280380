#include "standins/wxserver/HttpRequest.h"

#include <QList>
#include <QUrlQuery>

#include <algorithm>

namespace wxserver {

namespace {

bool isPlain(const QByteArray& text)
{
    return std::all_of(text.begin(), text.end(), [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte > 0x20 && byte < 0x7F;
    });
}

/// Path and query of the target; an absolute one loses its scheme and host.
bool readTarget(QByteArray target, HttpRequest& request)
{
    const QByteArray scheme("http://");
    if (target.startsWith(scheme)) {
        const int slash = target.indexOf('/', scheme.size());
        target = slash < 0 ? QByteArray("/") : target.mid(slash);
    }
    if (!target.startsWith('/') || !isPlain(target)) {
        return false;
    }
    const int mark = target.indexOf('?');
    const QByteArray path = mark < 0 ? target : target.left(mark);
    request.path = QString::fromUtf8(QByteArray::fromPercentEncoding(path));
    request.query = mark < 0 ? QString() : QString::fromLatin1(target.mid(mark + 1));
    return true;
}

bool readRequestLine(const QByteArray& line, HttpRequest& request)
{
    const QList<QByteArray> parts = line.split(' ');
    if (parts.size() != 3 || parts[0].isEmpty() || !isPlain(parts[0])) {
        return false;
    }
    request.method = parts[0];
    request.keepAlive = parts[2] == "HTTP/1.1";
    return (request.keepAlive || parts[2] == "HTTP/1.0") && readTarget(parts[1], request);
}

bool readHeader(const QByteArray& line, HttpRequest& request)
{
    const int colon = line.indexOf(':');
    if (colon < 1 || !isPlain(line.left(colon))) {
        return false;
    }
    request.headers.insert(line.left(colon).toLower(), line.mid(colon + 1).trimmed());
    return true;
}

/// What the headers say of the connection and of a body. A body in chunks isn't taken.
bool applyHeaders(HttpRequest& request)
{
    const QByteArray connection = request.headers.value("connection").toLower();
    if (connection == "close") {
        request.keepAlive = false;
    } else if (connection == "keep-alive") {
        request.keepAlive = true;
    }
    if (request.headers.contains("transfer-encoding")) {
        return false;
    }
    if (request.headers.contains("content-length")) {
        bool isNumber = false;
        request.bodyBytes = request.headers.value("content-length").toLongLong(&isNumber);
        return isNumber && request.bodyBytes >= 0;
    }
    return true;
}

} // namespace

QString HttpRequest::parameter(const QString& name) const
{
    return QUrlQuery(query).queryItemValue(name, QUrl::FullyDecoded);
}

HttpParse takeRequest(QByteArray& buffer, HttpRequest& request)
{
    const QByteArray ending("\r\n\r\n");
    const int end = buffer.indexOf(ending);
    if (end < 0 || end > kMaxRequestBytes) {
        return buffer.size() > kMaxRequestBytes ? HttpParse::TooLarge : HttpParse::Incomplete;
    }
    HttpRequest read;
    QList<QByteArray> lines = buffer.left(end).split('\n');
    for (QByteArray& line : lines) {
        if (line.endsWith('\r')) {
            line.chop(1);
        }
    }
    bool good = readRequestLine(lines.takeFirst(), read);
    for (const QByteArray& line : lines) {
        good = good && readHeader(line, read);
    }
    if (!good || !applyHeaders(read)) {
        return HttpParse::BadRequest;
    }
    if (read.bodyBytes > kMaxIgnoredBodyBytes) {
        return HttpParse::TooLarge;
    }
    const qint64 whole = end + ending.size() + read.bodyBytes;
    if (buffer.size() < whole) {
        return HttpParse::Incomplete;
    }
    buffer.remove(0, static_cast<int>(whole));
    request = read;
    return HttpParse::Complete;
}

} // namespace wxserver

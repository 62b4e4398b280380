#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace wxserver {

/// The longest head of a request that is read.
inline constexpr int kMaxRequestBytes = 16 * 1024;
/// The longest body of a request that is read and thrown away.
inline constexpr qint64 kMaxIgnoredBodyBytes = 64LL * 1024;

/// One request after RFC 9112, without its body, which no path of the service takes.
struct HttpRequest
{
    QByteArray method;
    QString path; ///< percent-decoded, begins with "/"
    QString query;
    QHash<QByteArray, QByteArray> headers; ///< names in lower case
    bool keepAlive = true;
    qint64 bodyBytes = 0; ///< length of the body that follows

    bool isHead() const { return method == "HEAD"; }
    /// The decoded value of a parameter of the query, empty when absent.
    QString parameter(const QString& name) const;
};

enum class HttpParse
{
    Incomplete,
    Complete,
    BadRequest,
    TooLarge
};

/// Takes one request off the front of `buffer`. On anything but Complete the buffer stays as it is;
/// after BadRequest and TooLarge the connection is unusable.
[[nodiscard]] HttpParse takeRequest(QByteArray& buffer, HttpRequest& request);

} // namespace wxserver

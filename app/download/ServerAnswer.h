#pragma once

#include <QByteArray>
#include <QString>

/// What a pilot reads of answers of weather servers. Pure.
namespace serveranswer {

/// Characters of an answer that fault looks at.
inline constexpr int kHeadSize = 512;

/// Why an answer can't be data.
enum class Fault
{
    None, ///< it may be data
    Empty,
    WebPage,
    ServerError ///< its first line is the server's word of an error
};
Fault faultKind(const QByteArray& head);

/// The same as words for "...: it is a web page"; empty if it may be data. Not escaped.
QString fault(const QByteArray& head);

/// True if the first line of an answer says that the server failed.
bool isErrorText(const QString& text);

/// A file that can't be opened or written, among the errors of a download.
inline constexpr int kFileError = -1;

/// What to do about an error of a download (QNetworkReply::NetworkError, 0 for an answer that is no
/// data); a sentence, or empty.
QString advice(int networkError);

} // namespace serveranswer

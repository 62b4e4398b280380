#pragma once

#include <QByteArray>
#include <QString>

/// Text that servers, simulators, files and users gave, as it may be shown. Pure.
namespace outsidetext {

/// For a log line, which is rich text: escaped, line breaks and other control characters as "\n"
/// and the like, so that it stays one line, and cut with a note of its length where a line of that
/// size helps nobody.
QString forLog(const QString& text);
QString forLog(const QByteArray& utf8);

/// For a plain sentence to the user: one line of 80 characters at most. Not escaped.
QString quoted(const QByteArray& utf8);

/// For a terminal, which no text can steer: control characters but line ends as "?".
QString forTerminal(QString text);

} // namespace outsidetext

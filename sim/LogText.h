#pragma once

#include <QByteArray>
#include <QString>

/// Text from outside as it may stand in a log line, which is rich text: escaped, line breaks and
/// other control characters as "\n" and the like, so that it stays one line, and cut with a note of
/// its length where a line of that size helps nobody.
QString LogText(const QString& text);
QString LogText(const QByteArray& utf8);

#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <vector>

/// The text form of Qt's INI settings files, read and written without Qt's reader. A value read is
/// a QString, a QByteArray, an invalid QVariant for "@Invalid()", or a QStringList for what no
/// option of the program has: a list, or a single typed value such as "@Variant(...)". The latter
/// stay texts and are written back unchanged, never unpacked: a crafted one could ask for any
/// amount of memory. Reading takes anything: lines without "=" are skipped. Linear in the text.
/// Pure.
namespace initext {

struct Line
{
    QString key; ///< with its section in front, "section/key"; those of [General] without one
    QVariant value;
};

/// Raw bytes above 127 in a value are taken as UTF-8.
std::vector<Line> parse(const QByteArray& text);

/// Whether a text has a section or a key that a person or a program could have meant, or nothing
/// but blanks and comments. Binary data and web pages have "=" in them as well, so parse() finds
/// lines there.
bool looksLikeIni(const QByteArray& text);

/// The files of the simulators, such as aircraft.cfg: a value is a QString and ends with its line;
/// quotes and backslashes are part of it. ";" and "//" outside of quotes begin a comment. [General]
/// is a section as any other. A key or value that isn't UTF-8 is Latin-1.
std::vector<Line> parseSimulator(const QByteArray& text);

/// A value as it stands after "=". All ASCII: other characters are written as "\x" escapes.
QByteArray valueText(const QVariant& value);

/// A section or key as it stands in the file.
QByteArray keyText(const QString& key);

} // namespace initext

#pragma once

#include <QByteArray>
#include <QSettings>

/// The text form of Qt's INI settings files, read and written without Qt's reader. A value read is
/// a QString, a QByteArray, an invalid QVariant for "@Invalid()", or a QStringList for what no
/// option of the program has: a list, or a single typed value such as "@Variant(...)". The latter
/// are kept as texts and written back unchanged, never unpacked: a crafted one could ask for any
/// amount of memory. Reading takes anything: lines without "=" are skipped, of equal keys the last
/// one counts. Linear in the text. Pure.
namespace initext {

/// Keys with their section in front, "section/key"; those of [General] without one. Raw bytes above
/// 127 are taken as UTF-8.
QSettings::SettingsMap parse(const QByteArray& text);

/// A value as it stands behind "=". All ASCII: other characters are written as "\x" escapes.
QByteArray valueText(const QVariant& value);

/// A section or key as it stands in the file.
QByteArray keyText(const QString& key);

} // namespace initext

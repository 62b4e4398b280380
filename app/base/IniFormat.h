#pragma once

#include <QSettings>

class QIODevice;

/// Larger settings files aren't read.
inline constexpr qint64 kMaxIniBytes = 4LL * 1024 * 1024;

/// The format with which QSettings is to open the program's INI files. Files look as in
/// QSettings::IniFormat, with two differences: a value of a type that no option has is never
/// unpacked, so a crafted file can't exhaust memory or stack, and keys stand in the order of the
/// option table on every platform, unknown ones behind them. Callable from any thread.
QSettings::Format iniFormat();

/// The two halves of the format. False if the device can't be read or holds too much.
bool readIni(QIODevice& device, QSettings::SettingsMap& map);
bool writeIni(QIODevice& device, const QSettings::SettingsMap& map);

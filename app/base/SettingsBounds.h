#pragma once

#include <QString>

/// What the program can bear of values that somebody wrote into a settings file by hand. Files are
/// bounded as they are read; what a page of the settings or a test sets is taken as it is. Pure.
namespace settingsbounds {

/// A value that can be used in the place of the one that stands in a file, by the option's key.
int bounded(const QString& key, int value);
/// The work folder ends with a separator, since names are put straight after it.
QString bounded(const QString& key, const QString& value);
/// Options of other types have no bounds.
template <typename T>
T bounded(const QString& /*key*/, const T& value)
{
    return value;
}

} // namespace settingsbounds

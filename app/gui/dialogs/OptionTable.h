#pragma once

#include "app/base/Settings.h"
#include "app/base/SettingsOptions.h"

#include <QString>

/// An option of Settings as the dialogs handle it: its key, and how it is read and written.
struct BoolOption
{
    const char* key;
    bool (Settings::*get)() const;
    void (Settings::*set)(bool);
};
struct IntOption
{
    const char* key;
    int (Settings::*get)() const;
    void (Settings::*set)(int);
};
struct TextOption
{
    const char* key;
    QString (Settings::*get)() const;
    void (Settings::*set)(const QString&);
};
struct BytesOption
{
    const char* key;
    QByteArray (Settings::*get)() const;
    void (Settings::*set)(const QByteArray&);
};

/// One constant for each row of the table, named as its getter.
namespace option {
#define CIRRILON_OPTION_ROW(type, getter, Setter, key, value, optionClass)                         \
    inline constexpr type##Option getter{key, &Settings::getter, &Settings::Setter};
CIRRILON_OPTIONS(CIRRILON_OPTION_ROW)
#undef CIRRILON_OPTION_ROW
} // namespace option

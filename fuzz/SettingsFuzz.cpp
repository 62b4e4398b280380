#include "app/base/IniFormat.h"
#include "app/base/IniText.h"
#include "app/base/Settings.h"
#include "aviation/support/RandomSource.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

QByteArray Written(const QSettings::SettingsMap& map)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!writeIni(buffer, map)) {
        std::abort();
    }
    return buffer.data();
}

/// What was read once can be written and read over and over without a change.
void CheckText(const QByteArray& input)
{
    const QByteArray first = Written(initext::parse(input));
    const QByteArray second = Written(initext::parse(first));
    if (Written(initext::parse(second)) != second) {
        std::abort();
    }
}

/// Qt keeps files that it knows by name, so each load takes a new one.
void LoadFrom(const QByteArray& text, Settings& settings)
{
    static const QTemporaryDir folder;
    static int number = 0;
    QFile file(folder.filePath(QString::number(++number)));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        std::abort();
    }
    file.close();
    settings.load(file.fileName(), Settings::FileRole::Main);
    file.remove();
}

/// What a save would write; a real one waits for the disk, which is too slow here.
QSettings::SettingsMap OptionsOf(const Settings& settings)
{
    QSettings::SettingsMap map;
#define CIRRILON_INSERT(type, getter, Setter, key, value, optionClass)                             \
    map.insert(QStringLiteral(key), settings.getter());
    CIRRILON_OPTIONS(CIRRILON_INSERT)
#undef CIRRILON_INSERT
    return map;
}

void RequireSame(const Settings& a, const Settings& b)
{
#define CIRRILON_REQUIRE(type, getter, Setter, key, value, optionClass)                            \
    if (a.getter() != b.getter()) {                                                                \
        std::abort();                                                                              \
    }
    CIRRILON_OPTIONS(CIRRILON_REQUIRE)
#undef CIRRILON_REQUIRE
}

} // namespace

/// A settings file of any contents loads, and its options come back unchanged from their own file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<int>(size));
    CheckText(input);

    aviation::SeededRandom random(1);
    Settings settings(QString(), random);
    LoadFrom(input, settings);
    Settings again(QString(), random);
    LoadFrom(Written(OptionsOf(settings)), again);
    RequireSame(settings, again);
    return 0;
}

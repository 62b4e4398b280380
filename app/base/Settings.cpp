#include "app/base/Settings.h"

#include "app/base/IniFile.h"
#include "app/base/SettingsBounds.h"
#include "aviation/support/RandomSource.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

/// The name that makes a file the main one.
constexpr char kMainFileName[] = "cirrilon.ini";

bool isMain(const QString& file, Settings::FileRole role)
{
    if (role == Settings::FileRole::ByName) {
        return QFileInfo(file).fileName() == QLatin1String(kMainFileName);
    }
    return role == Settings::FileRole::Main;
}

/// Stored values are texts or, once set in this run, what was set. Nothing for anything else.
std::optional<QString> storedText(const QVariant& stored)
{
    switch (static_cast<QMetaType::Type>(stored.type())) {
    case QMetaType::QString:
    case QMetaType::Bool:
    case QMetaType::Int:
        return stored.toString();
    default:
        return std::nullopt;
    }
}

/// Empty, "0" and "false" are false, every other text is true.
bool valueOr(const QVariant& stored, bool fallback)
{
    const std::optional<QString> text = storedText(stored);
    return text ? QVariant(*text).toBool() : fallback;
}

int valueOr(const QVariant& stored, int fallback)
{
    bool isNumber = false;
    const int value = storedText(stored).value_or(QString()).toInt(&isNumber);
    return isNumber ? value : fallback;
}

QString valueOr(const QVariant& stored, const QString& fallback)
{
    return storedText(stored).value_or(fallback);
}

QByteArray valueOr(const QVariant& stored, const QByteArray& fallback)
{
    const bool bytes = stored.type() == QVariant::ByteArray || stored.type() == QVariant::String;
    return bytes ? stored.toByteArray() : fallback;
}

/// By section, then by key.
QStringList sortedKeys(const IniFile& values)
{
    QStringList keys = values.keys();
    const auto sectionOf = [](const QString& key) {
        return key.leftRef(std::max(key.indexOf(QLatin1Char('/')), 0));
    };
    std::sort(keys.begin(), keys.end(), [&sectionOf](const QString& a, const QString& b) {
        return std::make_pair(sectionOf(a), QStringRef(&a))
               < std::make_pair(sectionOf(b), QStringRef(&b));
    });
    return keys;
}

bool isDamaged(IniFile::ReadResult result)
{
    return result == IniFile::ReadResult::Unreadable || result == IniFile::ReadResult::NotIni;
}

bool isLatLonPair(const QString& text)
{
    return text.count(QLatin1Char(':')) == 1;
}

} // namespace

Settings::Settings(const QString& file, aviation::RandomSource& random, QObject* parent)
    : QObject(parent)
{
    if (!file.isEmpty()) {
        m_mainFile = QFileInfo(file).absoluteFilePath();
        log(QStringLiteral("Expecting settings at ") + m_mainFile, loglevel::kNotification);
        load(file);
    }
    chooseWeatherServer(random);
    m_constructed = true;
}

void Settings::log(const QString& text, int level)
{
    if (m_constructed) {
        Q_EMIT sigDebugString(text, level);
    } else {
        m_earlyLog.push_back({text, level});
    }
}

std::vector<Settings::LogLine> Settings::takeEarlyLog()
{
    return std::exchange(m_earlyLog, {});
}

bool Settings::load(const QString& file, FileRole role)
{
    if (file.isEmpty()) {
        return true;
    }
    const QString path = QFileInfo(file).absoluteFilePath();
    lockedAssign(m_openFile, path);
    IniFile values;
    const bool damaged = isDamaged(values.read(path));
    if (damaged) {
        log(QStringLiteral("(Settings) - can not read %1, using defaults").arg(path),
            loglevel::kWarning);
        m_damagedFiles.append(path);
        m_unread.append(path);
    }
    const bool main = isMain(file, role);
    if (main) {
        lockedAssign(m_mainFile, path);
    }
    take(values, main);
    return !damaged;
}

QStringList Settings::takeDamagedFiles()
{
    return std::exchange(m_damagedFiles, {});
}

bool Settings::save(const QString& file, FileRole role)
{
    if (file.isEmpty()) {
        return true;
    }
    const QString path = QFileInfo(file).absoluteFilePath();
    lockedAssign(m_openFile, path);
    IniFile old;
    // One that was only locked when it was loaded can be good by now.
    const bool notInOptions = isDamaged(old.read(path)) || m_unread.contains(path);
    if (notInOptions && !putAside(path)) {
        // Writing would cost the keys that only the user sets, such as the servers' addresses.
        log(QStringLiteral("(Settings) - Error: can not read %1, so it isn't written either")
                .arg(path),
            loglevel::kError);
        return false;
    }
    const bool written = mergedInto(old, isMain(file, role)).write(path);
    if (!written) {
        log(QStringLiteral("(Settings) - Error: can not write ") + path, loglevel::kError);
    }
    return written;
}

QString Settings::damagedName(const QString& file)
{
    return file + QStringLiteral(".damaged");
}

/// By its name alone: what can't be read can't be copied, and a huge file would take its time.
bool Settings::putAside(const QString& path)
{
    const QString aside = damagedName(path);
    if (QFile::exists(path)) {
        QFile::remove(aside);
        if (!QFile::rename(path, aside)) {
            return false;
        }
    }
    m_unread.removeAll(path);
    log(QStringLiteral("(Settings) - %1 is kept as %2").arg(path, aside), loglevel::kWarning);
    return true;
}

template <typename T>
T Settings::taken(const QString& key, const T& value)
{
    T used = settingsbounds::bounded(key, value);
    if (used == value) {
        m_bounded.remove(key);
    } else {
        m_bounded.insert(key, {value, used});
    }
    return used;
}

template <typename T>
QVariant Settings::forFile(const QString& key, const T& value) const
{
    const auto found = m_bounded.constFind(key);
    return found != m_bounded.cend() && found->used == QVariant(value) ? found->inFile
                                                                       : QVariant(value);
}

void Settings::take(const IniFile& values, bool main)
{
    if (main) {
        readMainOptions(values);
    }
    readProfileOptions(values);
}

#define CIRRILON_READ(type, getter, Setter, key, fallback, optionClass)                            \
    CIRRILON_READ_##optionClass(getter, Setter, key, fallback)
#define CIRRILON_READ_OPTION(getter, Setter, key, fallback)                                        \
    Setter(taken(QStringLiteral(key), valueOr(values.value(QStringLiteral(key)), fallback)));
#define CIRRILON_SKIP_OPTION(getter, Setter, key, fallback)

void Settings::readMainOptions(const IniFile& values)
{
    const QString lastPos = mapLastPos();
#define CIRRILON_READ_Main CIRRILON_READ_OPTION
#define CIRRILON_READ_Profile CIRRILON_SKIP_OPTION
    CIRRILON_OPTIONS(CIRRILON_READ)
#undef CIRRILON_READ_Main
#undef CIRRILON_READ_Profile
    if (!isLatLonPair(mapLastPos())) {
        setMapLastPos(lastPos);
    }
}

void Settings::readProfileOptions(const IniFile& values){
#define CIRRILON_READ_Main CIRRILON_SKIP_OPTION
#define CIRRILON_READ_Profile CIRRILON_READ_OPTION
    CIRRILON_OPTIONS(CIRRILON_READ)
#undef CIRRILON_READ_Main
#undef CIRRILON_READ_Profile
}

/// An option that isn't written keeps its old value at its place in the table; keys of others stand
/// after it, sorted.
IniFile Settings::mergedInto(const IniFile& old, bool main) const
{
    constexpr bool kProfile = true;
    const bool kMain = main;
    IniFile values;
    const auto put = [&](bool isWritten, const QString& key, const auto& value) {
        if (isWritten) {
            values.setValue(key, value);
        } else if (old.contains(key)) {
            values.setValue(key, old.value(key));
        }
    };
#define CIRRILON_WRITE(type, getter, Setter, key, fallback, optionClass)                           \
    put(k##optionClass, QStringLiteral(key), forFile(QStringLiteral(key), getter()));
    CIRRILON_OPTIONS(CIRRILON_WRITE)
#undef CIRRILON_WRITE
    for (const QString& key : sortedKeys(old)) {
        if (!values.contains(key)) {
            values.setValue(key, old.value(key));
        }
    }
    return values;
}

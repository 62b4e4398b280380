#include "app/base/Settings.h"

#include "app/base/IniFormat.h"
#include "aviation/support/RandomSource.h"

#include <QFileInfo>
#include <QSettings>
#include <QVariant>

#include <optional>
#include <utility>

namespace {

/// The name that makes a file the main one.
constexpr char kMainFileName[] = "cirrilon.ini";

bool IsMain(const QString& file, Settings::FileRole role)
{
    if (role == Settings::FileRole::ByName) {
        return QFileInfo(file).fileName() == QLatin1String(kMainFileName);
    }
    return role == Settings::FileRole::Main;
}

/// Stored values are texts or, once set in this run, what was set. Nothing for anything else.
std::optional<QString> StoredText(const QVariant& stored)
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
bool ValueOr(const QVariant& stored, bool fallback)
{
    const std::optional<QString> text = StoredText(stored);
    return text ? QVariant(*text).toBool() : fallback;
}

int ValueOr(const QVariant& stored, int fallback)
{
    bool isNumber = false;
    const int value = StoredText(stored).value_or(QString()).toInt(&isNumber);
    return isNumber ? value : fallback;
}

QString ValueOr(const QVariant& stored, const QString& fallback)
{
    return StoredText(stored).value_or(fallback);
}

QByteArray ValueOr(const QVariant& stored, const QByteArray& fallback)
{
    const bool bytes = stored.type() == QVariant::ByteArray || stored.type() == QVariant::String;
    return bytes ? stored.toByteArray() : fallback;
}

bool IsLatLonPair(const QString& text)
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

Settings::~Settings() = default;

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

void Settings::open(const QString& file)
{
    const QString path = QFileInfo(file).absoluteFilePath();
    m_store = std::make_unique<QSettings>(path, iniFormat());
    lockedAssign(m_openFile, path);
}

void Settings::load(const QString& file, FileRole role)
{
    if (file.isEmpty()) {
        return;
    }
    open(file);
    if (m_store->status() != QSettings::NoError) {
        log(QStringLiteral("(Settings) - can not read %1, using defaults").arg(m_openFile),
            loglevel::kWarning);
    }
    if (IsMain(file, role)) {
        lockedAssign(m_mainFile, m_openFile);
        readMainOptions();
    }
    readProfileOptions();
}

void Settings::save(const QString& file, FileRole role)
{
    if (file.isEmpty()) {
        return;
    }
    if (m_store == nullptr || QFileInfo(file).absoluteFilePath() != m_openFile) {
        open(file);
    }
    writeOptions(IsMain(file, role));
    if (m_store->status() != QSettings::NoError) {
        log(QStringLiteral("(Settings) - Error: can not write ") + m_openFile, loglevel::kError);
    }
}

#define CIRRILON_READ(type, getter, Setter, key, fallback, optionClass)                            \
    CIRRILON_READ_##optionClass(getter, Setter, key, fallback)
#define CIRRILON_READ_OPTION(getter, Setter, key, fallback)                                        \
    Setter(ValueOr(m_store->value(QStringLiteral(key)), fallback));
#define CIRRILON_SKIP_OPTION(getter, Setter, key, fallback)

void Settings::readMainOptions()
{
    const QString lastPos = mapLastPos();
#define CIRRILON_READ_Main CIRRILON_READ_OPTION
#define CIRRILON_READ_Profile CIRRILON_SKIP_OPTION
    CIRRILON_OPTIONS(CIRRILON_READ)
#undef CIRRILON_READ_Main
#undef CIRRILON_READ_Profile
    if (!IsLatLonPair(mapLastPos())) {
        setMapLastPos(lastPos);
    }
}

void Settings::readProfileOptions()
{
#define CIRRILON_READ_Main CIRRILON_SKIP_OPTION
#define CIRRILON_READ_Profile CIRRILON_READ_OPTION
    CIRRILON_OPTIONS(CIRRILON_READ)
#undef CIRRILON_READ_Main
#undef CIRRILON_READ_Profile
}

void Settings::writeOptions(bool main)
{
    constexpr bool Profile = true;
    const bool Main = main;
#define CIRRILON_WRITE(type, getter, Setter, key, fallback, optionClass)                           \
    if (optionClass) {                                                                             \
        m_store->setValue(QStringLiteral(key), getter());                                          \
    }
    CIRRILON_OPTIONS(CIRRILON_WRITE)
#undef CIRRILON_WRITE
    m_store->sync();
}

#pragma once

#include "app/base/LogLevel.h"
#include "app/base/SettingsOptions.h"
#include "aviation/support/ScopedLock.h"

#include <QByteArray>
#include <QHash>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <atomic>
#include <vector>

class IniFile;

namespace aviation {
class Position;
class RandomSource;
} // namespace aviation

// The four kinds of option: numbers are atomics, texts stand under one short lock.
#define CIRRILON_ACCESS_NUMBER(type, getter, Setter)                                               \
    type getter() const                                                                            \
    {                                                                                              \
        return m_##getter.load(std::memory_order_relaxed);                                         \
    }                                                                                              \
    void Setter(type value)                                                                        \
    {                                                                                              \
        m_##getter.store(value, std::memory_order_relaxed);                                        \
    }
#define CIRRILON_ACCESS_TEXT(type, getter, Setter)                                                 \
    type getter() const                                                                            \
    {                                                                                              \
        return lockedCopy(m_##getter);                                                             \
    }                                                                                              \
    void Setter(const type& value)                                                                 \
    {                                                                                              \
        lockedAssign(m_##getter, value);                                                           \
    }
#define CIRRILON_ACCESS_Bool(getter, Setter) CIRRILON_ACCESS_NUMBER(bool, getter, Setter)
#define CIRRILON_ACCESS_Int(getter, Setter) CIRRILON_ACCESS_NUMBER(int, getter, Setter)
#define CIRRILON_ACCESS_Text(getter, Setter) CIRRILON_ACCESS_TEXT(QString, getter, Setter)
#define CIRRILON_ACCESS_Bytes(getter, Setter) CIRRILON_ACCESS_TEXT(QByteArray, getter, Setter)
#define CIRRILON_ACCESS(type, getter, Setter, key, value, optionClass)                             \
    CIRRILON_ACCESS_##type(getter, Setter)

#define CIRRILON_FIELD_Bool(getter, value) std::atomic<bool> m_##getter{value};
#define CIRRILON_FIELD_Int(getter, value) std::atomic<int> m_##getter{value};
#define CIRRILON_FIELD_Text(getter, value) QString m_##getter{value};
#define CIRRILON_FIELD_Bytes(getter, value) QByteArray m_##getter{value};
#define CIRRILON_FIELD(type, getter, Setter, key, value, optionClass)                              \
    CIRRILON_FIELD_##type(getter, value)

/// Every option of the program with its files, the folders and the addresses of the service.
/// Created first of all objects, owned by the window or the headless program. Options, folders and
/// addresses are readable from all threads; a value may change between two reads. Files are loaded
/// and saved on the main thread only.
///
/// Options, their getters, setters, keys and defaults: SettingsOptions.h.
class Settings : public QObject
{
    Q_OBJECT

public:
    /// Which options a file holds: Main files all, Profile files only the profile options.
    enum class FileRole
    {
        ByName, ///< Main if the file is named "cirrilon.ini"
        Main,
        Profile
    };

    struct LogLine
    {
        QString text;
        int level = loglevel::kDebug;
    };

    /// Loads `file` and chooses the weather server, perhaps by a number of `random`, which isn't
    /// used later. With an empty name the built-in defaults hold, and no file is read or written.
    Settings(const QString& file, aviation::RandomSource& random, QObject* parent = nullptr);

    CIRRILON_OPTIONS(CIRRILON_ACCESS)

    /// Reads the options of a file; what is missing or unreadable there gets its default, what is
    /// out of bounds (SettingsBounds.h) is bounded. A map/lastpos that doesn't consist of two parts
    /// around ":" leaves the value as it is. False if the file is there and can't be understood.
    bool load(const QString& file, FileRole role = FileRole::ByName);
    /// Writes the options into a file, whole or not at all. Other keys in it stay, and so do values
    /// out of bounds that nobody has changed. A file that can't be understood is put aside first
    /// and never overwritten. False if it wasn't written.
    bool save(const QString& file, FileRole role = FileRole::ByName);
    /// The name under which save() puts a file aside; an older one of this name is replaced.
    static QString damagedName(const QString& file);
    /// Files that load() couldn't understand. Empty at the second call.
    QStringList takeDamagedFiles();
    /// What load() does with the contents of a file: `main` is false for a profile.
    void take(const IniFile& values, bool main);
    /// What save() writes into a file that holds `old`.
    IniFile mergedInto(const IniFile& old, bool main) const;

    /// File names of the profiles, sorted.
    QStringList profiles() const;
    /// Path of a profile; empty for an empty name and for one that leaves the profiles' folder.
    QString profileFile(const QString& name) const;
    /// Saves to the selected profile, selects another one (an empty name: none) and loads it.
    void changeProfile(const QString& name);
    /// Moves the files of a folder with its sub-folders, whose empty shells stay. Links are moved,
    /// not followed. A file that can't be moved is logged and stays.
    void moveWorkFolder(const QString& oldFolder, const QString& newFolder);

    /// The user's documents folder, without a separator at its end.
    static QString documentsFolder();
    /// Doesn't follow the work folder, so it is the same for every profile and installation.
    QString tmpFolder() const;
    QString aircraftFilesFolder() const { return below("aircraftfiles/"); }
    QString backupsFolder() const { return below("Backups/"); }
    QString chartsFolder() const { return below("Charts/"); }
    QString weatherFilesFolder() const { return below("weatherfiles/"); }
    QString storedWxFolder() const { return below("storedwx/"); }
    QString profilesFolder() const { return below("profiles/"); }
    QString flightsFolder() const { return below("flights/"); }
    QString resFolder() const { return below("res/"); }

    /// The two weather servers: keys url/wxdata1 and url/wxdata2, read at each call, never written.
    QString serverOne() const;
    QString serverTwo() const;
    /// Base address of the info server, key url/fileinfo; file names are put straight after it.
    QString fileInfoUrl() const;
    /// Recorder login, keys url/host and url/checklogin (a path on that host).
    QString loginHost() const;
    QString checkLogin() const;

    /// Base address of the weather server in use; empty with an unknown weather/wxservertype.
    QString weatherServer() const { return lockedCopy(m_weatherServer); }
    void setWeatherServer(const QString& address) { lockedAssign(m_weatherServer, address); }
    /// A path at the weather server in use, with exactly one "/" between the two.
    QString weatherUrl(const QString& path) const;
    QString vatsimUrl(bool compressed) const;
    QString ivaoUrl(bool compressed) const;
    QString noaaUrl(bool compressed) const;
    /// This list exists in one form only.
    QString fs2020Url(bool compressed) const;
    /// Upper-air data at a position: one grid point, or the points around it.
    QString gribUrl(const aviation::Position& position, bool single) const;

    /// Log lines of the construction, when nobody could listen yet. Empty at the second call.
    std::vector<LogLine> takeEarlyLog();

    /// Version for display from the text in a version resource, "3,0,0,1".
    static QString versionText(const QString& resourceVersion);
    /// The version of this build, from the same numbers as the program's version resource.
    static QString version();

Q_SIGNALS:
    void sigDebugString(QString text, int level);

private:
    /// A copy that shares nothing with the field, so no thread counts references of another one.
    template <typename T>
    T lockedCopy(const T& field) const
    {
        const aviation::ScopedLock lock(m_textMutex);
        return T(field.constData(), field.size());
    }
    template <typename T>
    void lockedAssign(T& field, const T& value)
    {
        const aviation::ScopedLock lock(m_textMutex);
        field = value;
    }

    void log(const QString& text, int level);
    bool putAside(const QString& path);
    template <typename T>
    T taken(const QString& key, const T& value);
    template <typename T>
    QVariant forFile(const QString& key, const T& value) const;
    void readMainOptions(const IniFile& values);
    void readProfileOptions(const IniFile& values);
    void chooseWeatherServer(aviation::RandomSource& random);
    void moveFolder(const QString& from, const QString& to, const QString& target);
    void moveFile(const QString& from, const QString& to);
    QString below(const char* name) const { return workFolder() + QLatin1String(name); }
    QString urlValue(const QString& key, const QString& fallback) const;

    mutable QMutex m_textMutex; ///< guards every QString and QByteArray here but m_earlyLog
    CIRRILON_OPTIONS(CIRRILON_FIELD)
    QString m_weatherServer;
    QString m_openFile; ///< absolute; the one that was loaded or saved last
    QString m_mainFile; ///< absolute; the address keys are looked for there as well

    /// A value out of bounds as the file has it, and what is used in its place.
    struct Bounded
    {
        QVariant inFile;
        QVariant used;
    };

    // Main thread only.
    QHash<QString, Bounded> m_bounded; ///< by key
    QStringList m_damagedFiles;        ///< not asked for yet
    QStringList m_unread; ///< what they hold isn't in the options, so save() puts them aside
    bool m_constructed = false;
    std::vector<LogLine> m_earlyLog;
};

#undef CIRRILON_ACCESS_NUMBER
#undef CIRRILON_ACCESS_TEXT
#undef CIRRILON_ACCESS_Bool
#undef CIRRILON_ACCESS_Int
#undef CIRRILON_ACCESS_Text
#undef CIRRILON_ACCESS_Bytes
#undef CIRRILON_ACCESS
#undef CIRRILON_FIELD_Bool
#undef CIRRILON_FIELD_Int
#undef CIRRILON_FIELD_Text
#undef CIRRILON_FIELD_Bytes
#undef CIRRILON_FIELD

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <utility>
#include <vector>

/// Larger settings files aren't read.
inline constexpr qint64 kMaxIniBytes = 4LL * 1024 * 1024;

/// The contents of an INI file: values by key, in the order of the file, which is written again.
/// The format is Windows INI as QSettings::IniFormat reads and writes it, texts as UTF-8. What
/// differs: keys and sections are alike in any case on every platform, and a value of a type that
/// only a program could have stored ("@Variant(...)") is never unpacked, so a crafted file can't
/// exhaust memory or stack.
///
/// A key has its section in front, "section/key"; those of [General] and above the first section
/// have none. Of equal keys the last value counts and the first spelling is written. A value is
/// what IniText.h describes. Lines that are no INI cost themselves only.
///
/// A value: copies are independent, and each is used by one thread at a time.
class IniFile
{
public:
    /// How a text is read. Written is always the first.
    enum class Dialect
    {
        Qt,       ///< quotes, escapes, lists at commas; ";" begins a comment
        Simulator ///< aircraft.cfg and the like: values as they stand; ";" and "//" begin a comment
    };
    enum class ReadResult
    {
        Done,
        Missing,
        Unreadable, ///< no file, not to be opened, or above the limit
        NotIni      ///< has something else than an INI text; Qt dialect only
    };

    IniFile() = default;
    /// Takes any bytes.
    explicit IniFile(const QByteArray& text, Dialect dialect = Dialect::Qt);

    /// Replaces everything by the contents of a file; by nothing when it can't be read.
    [[nodiscard]] ReadResult read(const QString& fileName, Dialect dialect = Dialect::Qt,
                                  qint64 limit = kMaxIniBytes);
    /// Writes the file whole or leaves it as it is; makes its folder. False when it wasn't written.
    [[nodiscard]] bool write(const QString& fileName) const;
    /// What write() puts into the file: ASCII, lines end in a line feed.
    QByteArray toText() const;

    // All keys are looked for in the current group or row. A missing key gives the fallback.
    bool contains(const QString& key) const { return find(key) != nullptr; }
    /// As stored; invalid if it is missing.
    QVariant value(const QString& key) const;
    /// A list comes as one text again, its parts joined with ", ".
    QString text(const QString& key, const QString& fallback = QString()) const;
    /// Parts at commas outside of quotes; empty if the key is missing.
    QStringList list(const QString& key) const;
    /// 0 for what isn't a whole number from its first to its last character.
    int integer(const QString& key, int fallback = 0) const;
    /// The same for a finite number with a decimal point.
    double number(const QString& key, double fallback = 0.0) const;
    /// Empty, "0" and "false" are false, every other text is true.
    bool flag(const QString& key, bool fallback = false) const;

    /// A known key keeps place and spelling, a new one is the last of its section.
    void setValue(const QString& key, const QVariant& value);
    /// A key with all keys below it; an empty text removes the current group.
    void remove(const QString& key);

    /// Keys with their sections, in the order of the file, whatever the current group is.
    QStringList keys() const;
    /// The sections, in the order of the file, without [General].
    QStringList sections() const;

    void beginGroup(const QString& name);
    void endGroup() { leave(); }
    /// Rows of an array, from its key "size": not negative, and no more than the file has keys.
    int beginReadArray(const QString& name);
    /// Without a size the rows that are begun are counted, and endArray() writes their number.
    void beginWriteArray(const QString& name, int size = -1);
    /// Enters a row, counted from 0. Keys of the first row begin with "1/".
    void setArrayIndex(int index);
    void endArray();

    /// Equal keys, spellings and values in the same order; the current group doesn't count.
    friend bool operator==(const IniFile& a, const IniFile& b)
    {
        return a.m_sections == b.m_sections;
    }

private:
    struct Entry
    {
        QString key;
        QVariant value;
        bool operator==(const Entry& other) const;
    };
    struct Section
    {
        QString name;
        std::vector<Entry> entries;
        bool operator==(const Section& other) const = default;
    };
    struct Group
    {
        QString prefix;
        int rows = kNotCounted; ///< begun so far in an array whose size isn't given
    };
    static constexpr int kNotCounted = -1;

    const QVariant* find(const QString& key) const;
    void insert(const QString& fullKey, const QVariant& value);
    void enter(const QString& name, int rows);
    void leave();

    std::vector<Section> m_sections;
    QHash<QString, std::size_t> m_sectionPlaces;                  ///< by folded name
    QHash<QString, std::pair<std::size_t, std::size_t>> m_places; ///< section, entry by folded key
    std::vector<Group> m_groups;
    QString m_prefix; ///< of the current group or row, with its slash
};

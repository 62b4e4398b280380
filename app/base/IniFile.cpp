#include "app/base/IniFile.h"

#include "app/base/IniText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace {

constexpr QLatin1Char kSlash('/');

struct KeyParts
{
    QString section;
    QString key;
};

/// A leading slash is part of the key: cut off, each writing would lose one.
KeyParts partsOf(const QString& fullKey)
{
    const int slash = fullKey.indexOf(kSlash);
    return slash > 0 ? KeyParts{fullKey.left(slash), fullKey.mid(slash + 1)}
                     : KeyParts{QString(), fullKey};
}

QString fullKeyOf(const QString& section, const QString& key)
{
    return section.isEmpty() ? key : section + kSlash + key;
}

QByteArray sectionText(const QString& section)
{
    if (section.isEmpty()) {
        return "General";
    }
    const bool sameName = section.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0;
    return (sameName ? "%" : "") + initext::keyText(section);
}

} // namespace

bool IniFile::Entry::operator==(const Entry& other) const
{
    // Bytes and a text of equal characters compare as equal.
    return key == other.key && value.type() == other.value.type() && value == other.value;
}

IniFile::IniFile(const QByteArray& text, Dialect dialect)
{
    const std::vector<initext::Line> lines =
        dialect == Dialect::Qt ? initext::parse(text) : initext::parseSimulator(text);
    for (const initext::Line& line : lines) {
        insert(line.key, line.value);
    }
}

IniFile::ReadResult IniFile::read(const QString& fileName, Dialect dialect, qint64 limit)
{
    *this = IniFile();
    const QFileInfo info(fileName);
    if (!info.exists()) {
        return ReadResult::Missing;
    }
    QFile file(fileName);
    if (info.isDir() || !file.open(QIODevice::ReadOnly)) {
        return ReadResult::Unreadable;
    }
    const QByteArray text = file.read(limit + 1); // devices don't say their size
    if (text.size() > limit || file.error() != QFileDevice::NoError) {
        return ReadResult::Unreadable;
    }
    if (dialect == Dialect::Qt && !initext::looksLikeIni(text)) {
        return ReadResult::NotIni;
    }
    *this = IniFile(text, dialect);
    return ReadResult::Done;
}

bool IniFile::write(const QString& fileName) const
{
    QSaveFile file(fileName);
    const QByteArray text = toText();
    return QDir().mkpath(QFileInfo(fileName).absolutePath()) && file.open(QIODevice::WriteOnly)
           && file.write(text) == text.size() && file.commit();
}

QByteArray IniFile::toText() const
{
    QByteArray text;
    for (const Section& section : m_sections) {
        text += (text.isEmpty() ? "[" : "\n[") + sectionText(section.name) + "]\n";
        for (const Entry& entry : section.entries) {
            text += initext::keyText(entry.key) + '=' + initext::valueText(entry.value) + '\n';
        }
    }
    return text;
}

const QVariant* IniFile::find(const QString& key) const
{
    const auto place = m_places.constFind((m_prefix + key).toCaseFolded());
    return place == m_places.cend() ? nullptr
                                    : &m_sections[place->first].entries[place->second].value;
}

QVariant IniFile::value(const QString& key) const
{
    const QVariant* const stored = find(key);
    return stored == nullptr ? QVariant() : *stored;
}

QString IniFile::text(const QString& key, const QString& fallback) const
{
    const QVariant* const stored = find(key);
    if (stored == nullptr) {
        return fallback;
    }
    const bool list = stored->type() == QVariant::StringList;
    return list ? stored->toStringList().join(QLatin1String(", ")) : stored->toString();
}

QStringList IniFile::list(const QString& key) const
{
    const QVariant* const stored = find(key);
    return stored == nullptr ? QStringList() : stored->toStringList();
}

int IniFile::integer(const QString& key, int fallback) const
{
    return contains(key) ? text(key).toInt() : fallback;
}

double IniFile::number(const QString& key, double fallback) const
{
    const double number = contains(key) ? text(key).toDouble() : fallback;
    return std::isfinite(number) ? number : 0.0;
}

bool IniFile::flag(const QString& key, bool fallback) const
{
    return contains(key) ? QVariant(text(key)).toBool() : fallback;
}

void IniFile::setValue(const QString& key, const QVariant& value)
{
    insert(m_prefix + key, value);
}

void IniFile::insert(const QString& fullKey, const QVariant& value)
{
    const QString folded = fullKey.toCaseFolded();
    const auto known = m_places.constFind(folded);
    if (known != m_places.cend()) {
        m_sections[known->first].entries[known->second].value = value;
        return;
    }
    const KeyParts parts = partsOf(fullKey);
    const QString foldedSection = parts.section.toCaseFolded();
    if (!m_sectionPlaces.contains(foldedSection)) {
        m_sectionPlaces.insert(foldedSection, m_sections.size());
        m_sections.push_back({parts.section, {}});
    }
    const std::size_t section = m_sectionPlaces.value(foldedSection);
    m_places.insert(folded, {section, m_sections[section].entries.size()});
    m_sections[section].entries.push_back({parts.key, value});
}

void IniFile::remove(const QString& key)
{
    QString full = m_prefix + key;
    if (full.endsWith(kSlash)) {
        full.chop(1);
    }
    const QString folded = full.toCaseFolded();
    IniFile rest;
    for (const Section& section : m_sections) {
        for (const Entry& entry : section.entries) {
            const QString entryKey = fullKeyOf(section.name, entry.key);
            const QString other = entryKey.toCaseFolded();
            if (other != folded && !other.startsWith(folded + kSlash) && !full.isEmpty()) {
                rest.insert(entryKey, entry.value);
            }
        }
    }
    m_sections.swap(rest.m_sections);
    m_sectionPlaces.swap(rest.m_sectionPlaces);
    m_places.swap(rest.m_places);
}

QStringList IniFile::keys() const
{
    QStringList all;
    for (const Section& section : m_sections) {
        for (const Entry& entry : section.entries) {
            all.append(fullKeyOf(section.name, entry.key));
        }
    }
    return all;
}

QStringList IniFile::sections() const
{
    QStringList names;
    for (const Section& section : m_sections) {
        if (!section.name.isEmpty()) {
            names.append(section.name);
        }
    }
    return names;
}

void IniFile::enter(const QString& name, int rows)
{
    m_groups.push_back({m_prefix + name + kSlash, rows});
    m_prefix = m_groups.back().prefix;
}

void IniFile::leave()
{
    if (!m_groups.empty()) {
        m_groups.pop_back();
    }
    m_prefix = m_groups.empty() ? QString() : m_groups.back().prefix;
}

void IniFile::beginGroup(const QString& name)
{
    enter(name, kNotCounted);
}

int IniFile::beginReadArray(const QString& name)
{
    enter(name, kNotCounted);
    return std::clamp(integer(QStringLiteral("size")), 0, m_places.size());
}

void IniFile::beginWriteArray(const QString& name, int size)
{
    enter(name, size < 0 ? 0 : kNotCounted);
    if (size >= 0) {
        setValue(QStringLiteral("size"), size);
    } else {
        remove(QStringLiteral("size"));
    }
}

void IniFile::setArrayIndex(int index)
{
    if (m_groups.empty()) {
        return;
    }
    Group& array = m_groups.back();
    if (array.rows != kNotCounted) {
        array.rows = std::max(array.rows, index + 1);
    }
    m_prefix = array.prefix + QString::number(index + 1) + kSlash;
}

void IniFile::endArray()
{
    if (!m_groups.empty() && m_groups.back().rows != kNotCounted) {
        m_prefix = m_groups.back().prefix;
        setValue(QStringLiteral("size"), m_groups.back().rows);
    }
    leave();
}

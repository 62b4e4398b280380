#include "app/base/IniFormat.h"

#include "app/base/IniText.h"
#include "app/base/SettingsOptions.h"

#include <QHash>
#include <QIODevice>

#include <algorithm>
#include <limits>
#include <tuple>
#include <vector>

namespace {

constexpr int kUnknownRank = std::numeric_limits<int>::max();

/// One line to write. Sections stand where the first of their keys stands.
struct Entry
{
    QString section;
    QString key;
    const QVariant* value = nullptr;
    int rank = kUnknownRank;
    int sectionRank = kUnknownRank;
};

QHash<QString, int> MakeRanks()
{
    QHash<QString, int> ranks;
#define CIRRILON_RANK(type, getter, Setter, name, value, optionClass)                              \
    ranks.insert(QStringLiteral(name), ranks.size());
    CIRRILON_OPTIONS(CIRRILON_RANK)
#undef CIRRILON_RANK
    return ranks;
}

int RankOf(const QString& key)
{
    static const QHash<QString, int> ranks = MakeRanks();
    return ranks.value(key, kUnknownRank);
}

std::vector<Entry> OrderedEntries(const QSettings::SettingsMap& map)
{
    std::vector<Entry> entries;
    QHash<QString, int> sectionRanks;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        // A slash in front is part of the key: cut off, each writing would lose one.
        const int slash = std::max(it.key().indexOf(QLatin1Char('/')), 0);
        Entry entry{it.key().left(slash), it.key().mid(slash > 0 ? slash + 1 : 0), &it.value(),
                    RankOf(it.key())};
        const int known = sectionRanks.value(entry.section, kUnknownRank);
        sectionRanks.insert(entry.section, std::min(known, entry.rank));
        entries.push_back(entry);
    }
    for (Entry& entry : entries) {
        entry.sectionRank = sectionRanks.value(entry.section);
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.sectionRank, a.section, a.rank)
               < std::tie(b.sectionRank, b.section, b.rank);
    });
    return entries;
}

QByteArray SectionText(const QString& section)
{
    if (section.isEmpty()) {
        return "General";
    }
    const bool sameName = section.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0;
    return (sameName ? "%" : "") + initext::keyText(section);
}

} // namespace

QSettings::Format iniFormat()
{
#ifdef Q_OS_WIN
    constexpr Qt::CaseSensitivity kCase = Qt::CaseInsensitive;
#else
    constexpr Qt::CaseSensitivity kCase = Qt::CaseSensitive;
#endif
    static const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), readIni, writeIni, kCase);
    return format;
}

bool readIni(QIODevice& device, QSettings::SettingsMap& map)
{
    if (device.size() > kMaxIniBytes) {
        return false;
    }
    map = initext::parse(device.readAll());
    return true;
}

bool writeIni(QIODevice& device, const QSettings::SettingsMap& map)
{
    QByteArray text;
    const Entry* before = nullptr;
    const std::vector<Entry> entries = OrderedEntries(map);
    for (const Entry& entry : entries) {
        if (before == nullptr || before->section != entry.section) {
            text += (before == nullptr ? "[" : "\n[") + SectionText(entry.section) + "]\n";
        }
        text += initext::keyText(entry.key) + '=' + initext::valueText(*entry.value) + '\n';
        before = &entry;
    }
    return device.write(text) == text.size();
}

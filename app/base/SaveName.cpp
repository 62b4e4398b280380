#include "app/base/SaveName.h"

#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int kLongestName = 200; // bytes; file systems take 255, and a number may follow

bool isForbidden(QChar character)
{
    const bool sign = QStringLiteral("<>:\"|?*/\\").contains(character);
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format: // they turn the order of what is shown
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return sign;
    }
}

/// "COM1", "lpt9.txt" and the like are devices in every folder of some systems.
bool isDevice(const QString& name)
{
    const QString stem = name.section(QLatin1Char('.'), 0, 0).trimmed().toUpper();
    const bool numbered =
        stem.size() == 4
        && (stem.startsWith(QLatin1String("COM")) || stem.startsWith(QLatin1String("LPT")))
        && QStringLiteral("0123456789\u00B9\u00B2\u00B3").contains(stem.back());
    return numbered || stem == QLatin1String("CON") || stem == QLatin1String("PRN")
           || stem == QLatin1String("AUX") || stem == QLatin1String("NUL")
           || stem == QLatin1String("CONIN$") || stem == QLatin1String("CONOUT$");
}

bool isPlainFile(const QString& name)
{
    const bool badEnd = name.endsWith(QLatin1Char('.')) || name.endsWith(QLatin1Char(' '));
    return !name.isEmpty() && !badEnd && name.toUtf8().size() <= kLongestName
           && std::none_of(name.cbegin(), name.cend(), isForbidden) && !isDevice(name);
}

/// A link whose goal is missing doesn't "exist", but writing would go through it.
bool isTaken(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

namespace savename {

QString fromUrl(const QUrl& url)
{
    const QString name = url.path().section(QLatin1Char('/'), -1);
    return isPlainFile(name) ? name : QStringLiteral("download");
}

QString freePath(const QString& folder, const QString& name)
{
    QString path = folder + name;
    for (int number = 0; isTaken(path); ++number) {
        path = folder + name + QLatin1Char('.') + QString::number(number);
    }
    return path;
}

} // namespace savename

#include "app/base/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

QString Settings::documentsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString Settings::tmpFolder() const
{
    // File systems ignore the doubled separator, but it shows wherever the log names the folder.
    return documentsFolder() + QStringLiteral("/Cirrilonv3/") + QStringLiteral("/tmp/");
}

QString Settings::version()
{
    return versionText(QStringLiteral(CIRRILON_VERSION_RESOURCE));
}

QString Settings::versionText(const QString& resourceVersion)
{
    QString text = resourceVersion;
    return text.replace(QLatin1Char(','), QLatin1Char('.'));
}

QStringList Settings::profiles() const
{
    return QDir(profilesFolder())
        .entryList({QStringLiteral("*.INI"), QStringLiteral("*.ini")},
                   QDir::Files | QDir::CaseSensitive, QDir::Name);
}

QString Settings::profileFile(const QString& name) const
{
    const bool plainName = !name.isEmpty() && name != QLatin1String(".")
                           && name != QLatin1String("..") && !name.contains(QLatin1Char('/'))
                           && !name.contains(QLatin1Char('\\'));
    return plainName ? profilesFolder() + name : QString();
}

void Settings::changeProfile(const QString& name)
{
    save(profileFile(profile()));
    setProfile(name);
    load(profileFile(name));
    log(QStringLiteral("(Main) - Profile selected: ") + name, loglevel::kNotification);
}

void Settings::moveWorkFolder(const QString& oldFolder, const QString& newFolder)
{
    const QString from = QDir::cleanPath(QDir(oldFolder).absolutePath());
    const QString to = QDir::cleanPath(QDir(newFolder).absolutePath());
    if (oldFolder.isEmpty() || newFolder.isEmpty() || from == to) {
        return;
    }
    moveFolder(from, to, to);
}

/// `target` is the new folder as a whole: when it lies in the old one it isn't moved into itself.
void Settings::moveFolder(const QString& from, const QString& to, const QString& target)
{
    QDir().mkpath(to);
    const QFileInfoList entries =
        QDir(from).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& entry : entries) {
        const QString goal = to + QLatin1Char('/') + entry.fileName();
        if (entry.absoluteFilePath() == target) {
            continue;
        }
        if (entry.isDir() && !entry.isSymLink()) {
            moveFolder(entry.absoluteFilePath(), goal, target);
        } else {
            moveFile(entry.absoluteFilePath(), goal);
        }
    }
}

void Settings::moveFile(const QString& from, const QString& to)
{
    log(QStringLiteral("(Settings) - move file %1 to %2").arg(from, to), loglevel::kNotification);
    if (!QFile::rename(from, to)) {
        log(QStringLiteral("(Settings) - Error: can not move file %1 to %2").arg(from, to),
            loglevel::kError);
    }
}

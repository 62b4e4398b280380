#include "app/WorkingFolders.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace {

QStringList foldersOf(const Settings& settings)
{
    return {settings.tmpFolder(),           settings.workFolder(),
            settings.aircraftFilesFolder(), settings.weatherFilesFolder(),
            settings.profilesFolder(),      settings.flightsFolder(),
            settings.resFolder(),           settings.chartsFolder(),
            settings.storedWxFolder(),      settings.backupsFolder()};
}

} // namespace

bool workingfolders::create(const Settings& settings, const LogFunction& log)
{
    const QStringList folders = foldersOf(settings);
    for (const QString& folder : folders) {
        const QString path = folder.toHtmlEscaped();
        if (QFileInfo(folder).isDir()) {
            log(QStringLiteral("(Main) - Folder founded: <a href=\"") + path
                    + QStringLiteral("\"> ") + path + QStringLiteral(" </a>"),
                loglevel::kNotification);
        } else if (QDir().mkpath(folder)) {
            log(QStringLiteral("(Main) - Folder created: <b>") + path + QStringLiteral("</b>"),
                loglevel::kNotification);
        } else {
            log(QStringLiteral("(Main) -Cannot create folder: ") + path, loglevel::kError);
            return false;
        }
    }
    return true;
}

void workingfolders::sweepTemporary(const Settings& settings, const LogFunction& log)
{
    const QDir folder(settings.tmpFolder());
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.*")}, QDir::Files);
    for (const QFileInfo& entry : files) {
        QFile file(entry.filePath());
        const QString name = entry.filePath().toHtmlEscaped();
        if (file.remove()) {
            log(QStringLiteral("(Main) - file deleted: %1").arg(name), loglevel::kDebug);
        } else {
            log(QStringLiteral("(Main) -can not delete file: %1 , %2")
                    .arg(name, file.errorString().toHtmlEscaped()),
                loglevel::kError);
        }
    }
}

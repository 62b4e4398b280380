#include "app/base/SettingsPlace.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace settingsplace {

bool enterFolder(bool portable)
{
    if (portable || QFile::exists(QString::fromLatin1(kFileName))) {
        return true;
    }
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    return QDir().mkpath(folder) && QDir::setCurrent(folder);
}

} // namespace settingsplace

#include "app/Resources.h"

#include <QFile>

void initCirrilonResources()
{
    Q_INIT_RESOURCE(cirrilon);
}

QByteArray builtInFile(const char* name)
{
    initCirrilonResources();
    QFile file(QStringLiteral(":/files/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

#include "app/Resources.h"

#include <QFile>

void InitCirrilonResources()
{
    Q_INIT_RESOURCE(cirrilon);
}

QByteArray BuiltInFile(const char* name)
{
    InitCirrilonResources();
    QFile file(QStringLiteral(":/files/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

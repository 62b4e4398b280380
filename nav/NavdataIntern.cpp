#include "nav/NavdataIntern.h"

#include "app/base/LogLevel.h"
#include "nav/records/AirportTable.h"

#include <QDebug>
#include <QFile>

NavdataIntern::NavdataIntern(const QString& tableFile, QObject* parent)
    : NavdataBase(parent)
    , m_tableFile(tableFile)
{}

bool NavdataIntern::readAirports(const QString& file)
{
    const QString title = QStringLiteral("Reading airports");
    Airports.clear();
    Q_EMIT sigDebugString(QStringLiteral("(NavData) - reading airports"), loglevel::kNotification);
    QFile table(file.isEmpty() ? m_tableFile : pathOf(file));
    if (!table.open(QIODevice::ReadOnly)) {
        qDebug().noquote() << QStringLiteral("Can not read File: ") + table.errorString();
        Q_EMIT sigDebugString(
            QStringLiteral("(NavData) - can not read airport file. %1").arg(table.errorString()),
            loglevel::kError);
        return false;
    }
    Q_EMIT sigProgressBar(0, table.size(), title);
    Airports = readAirportTable(table.readAll());
    Q_EMIT sigProgressBar(0, 0, title);
    Q_EMIT sigDebugString(QStringLiteral("(NavData) - Airports: %1").arg(Airports.size()),
                          loglevel::kNotification);
    return true;
}

bool NavdataIntern::readAirportNames(const QString& file)
{
    return readAirports(file);
}

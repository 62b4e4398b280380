#include "nav/NavdataIntern.h"

#include "nav/records/AirportTable.h"

#include <QFile>

#include <utility>

NavdataIntern::NavdataIntern(QString tableFile) : m_tableFile(std::move(tableFile)) {}

QVector<QAirport> NavdataIntern::ReadAirports()
{
    QFile file(m_tableFile);
    return file.open(QIODevice::ReadOnly) ? ReadAirportTable(file.readAll()) : QVector<QAirport>();
}

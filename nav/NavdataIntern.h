#pragma once

#include "nav/records/NavdataBase.h"

#include <QString>

/// The navigation data that come with the program: the airports of a built-in table. Main thread.
class NavdataIntern final : public NavdataBase
{
public:
    /// `tableFile`: rows as ReadAirportTable wants them.
    explicit NavdataIntern(QString tableFile = QStringLiteral(":/files/airports"));

    QVector<QAirport> ReadAirports() override;

private:
    QString m_tableFile;
};

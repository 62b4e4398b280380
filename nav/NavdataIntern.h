#pragma once

#include "nav/records/NavdataBase.h"

#include <QString>

/// The navigation data that come with the program: the airports of a built-in table. Main thread.
class NavdataIntern final : public NavdataBase
{
    Q_OBJECT
public:
    /// `tableFile`: rows as readAirportTable wants them.
    explicit NavdataIntern(const QString& tableFile = QStringLiteral(":/files/airports"),
                           QObject* parent = nullptr);

    /// Replaces all airports.
    bool readAirports(const QString& file) override;
    /// Reads the airports.
    bool readAirportNames(const QString& file) override;

private:
    QString m_tableFile;
};

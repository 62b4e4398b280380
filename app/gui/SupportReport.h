#pragma once

#include <QString>
#include <QStringList>

class IniFile;

/// A text that a pilot sends to support: versions, settings and log, without what is nobody's
/// business. Pure but for the log file that is read.
namespace supportreport {

struct Parts
{
    QString simulator;      ///< as it has named itself; empty while none is connected
    const IniFile& options; ///< as they would be saved
    QString logFile;
    QString homeFolder; ///< stands as "~" wherever it comes up
};

QString text(const Parts& parts);

/// Without user names and passwords in addresses, values of keys and tokens in them, the names of
/// home folders, and the texts of `secrets`.
QString withoutSecrets(const QString& text, const QString& homeFolder, const QStringList& secrets);

} // namespace supportreport

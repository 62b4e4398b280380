#include "app/download/Wgrib.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace {

/// The fields and levels that weather is made of.
constexpr char kMatch[] =
    "(HGT:(100|200|300|400|500|600|700|850|925|950|1000|surface|max wind|tropopause))"
    "|(TMP:(100|200|300|400|500|600|700|850|925|950|1000|surface|max wind|tropopause"
    "|low cloud top level|middle cloud top level|high cloud top level))"
    "|(RH:(100|200|300|400|500|600|700|850|925|950|1000|2 m above ground))"
    "|(UGRD:(100|200|300|400|500|600|700|850|925|950|1000|10 m above ground|max wind|tropopause))"
    "|(VGRD:(100|200|300|400|500|600|700|850|925|950|1000|10 m above ground|max wind|tropopause))"
    "|(TCDC:(low cloud layer|middle cloud layer|high cloud layer|entire))"
    "|(PRMSL:(mean sea level))|(CFRZR:(surface))|(CICEP:(surface))|(CPRAT:(surface))"
    "|(CRAIN:(surface))|(CSNOW:(surface))|(CWAT:(surface))";

} // namespace

namespace wgrib {

QString findProgram()
{
    const QString name = QStringLiteral("wgrib2"); // the host adds its ending
    const QString beside = QStandardPaths::findExecutable(
        name, {QDir::currentPath(), QCoreApplication::applicationDirPath()});
    return beside.isEmpty() ? QStandardPaths::findExecutable(name) : beside;
}

QStringList arguments(const QString& gribFile, const QString& csvFile)
{
    return {gribFile, QStringLiteral("-match"), QLatin1String(kMatch), QStringLiteral("-csv"),
            csvFile};
}

} // namespace wgrib

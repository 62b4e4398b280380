#pragma once

#include <QString>
#include <QStringList>

/// The outside program wgrib2 (NOAA's reader of GRIB2 files), which makes a table of a GRIB2 file.
namespace wgrib {

/// Its file: in the current folder, else on the PATH; empty if it isn't installed.
QString findProgram();

/// Its arguments, each one as it is, without quoting.
QStringList arguments(const QString& gribFile, const QString& csvFile);

} // namespace wgrib

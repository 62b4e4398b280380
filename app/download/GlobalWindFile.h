#pragma once

#include "aviation/support/Clock.h"

#include <QString>

/// The run of the global forecast model whose wind file belongs to a moment.
struct GlobalWindFile
{
    QString date;  ///< "yyyymmdd" of the run, UTC
    int cycle = 0; ///< hour of the run: 0, 6, 12 or 18
    int step = 0;  ///< hours of forecast, a multiple of 6
    QString name;  ///< "gfs.t18z.wafs_grb45f06.grib2"

    /// The latest run that is out by then: it takes six hours. Pure.
    static GlobalWindFile at(aviation::Clock::UtcTime now);
};

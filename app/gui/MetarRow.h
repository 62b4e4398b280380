#pragma once

#include "aviation/Metar.h"

#include <QString>

/// A report as the METAR page shows it.
struct MetarRow
{
    QString text;    ///< the report, with its TAF on a line of its own; plain
    QString icao;    ///< key of the report
    QString decoded; ///< for people, plain, several lines
};

/// `metar` is decoded. A report at position (0, 0) reads "No metar found".
MetarRow makeMetarRow(const aviation::weather::Metar& metar);

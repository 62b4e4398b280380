#pragma once

#include "standins/wxserver/ReportTimes.h"

#include <QByteArray>
#include <QByteArrayList>

namespace wxserver {

/// The reports of a weather file, block by block.
struct WeatherReports
{
    QByteArrayList metars; ///< one line each
    QByteArrayList synops; ///< without the "=" at the end
    QByteArrayList tafs;   ///< one line each, each begins with "TAF "
};

/// Takes a weather file apart: blocks between [METAR], [SYNOP], [TAF] and their closing marks.
WeatherReports readReports(const QByteArray& weatherFile);
/// The reports with all their times moved.
WeatherReports movedReports(const WeatherReports& reports, const TimeShift& shift);

/// The blocks as text, without marks.
QByteArray metarText(const WeatherReports& reports);
QByteArray synopText(const WeatherReports& reports);
/// The whole weather file; a block without reports is there, empty.
QByteArray weatherFileText(const WeatherReports& reports);

/// A list of this server with at most so many METARs and nothing else: weather files, plain
/// reports, one a line, and the gzip form of both.
QByteArray shortened(const QByteArray& list, int metars);

} // namespace wxserver

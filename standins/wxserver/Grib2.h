#pragma once

#include <QByteArray>

#include <chrono>
#include <vector>

namespace wxserver {

/// A regular grid of values, rows from north to south, each from west to east.
struct Grib2Grid
{
    int columns = 0;
    int rows = 0;
    double north = 0.0;     ///< degrees
    double west = 0.0;      ///< degrees, negative in the west
    double increment = 1.0; ///< degrees in both directions
};

/// What the values are (WMO Manual on Codes, FM 92 GRIB, code tables 4.1 and 4.2, discipline 0).
struct Grib2Parameter
{
    int category = 0;
    int number = 0;
    int pressureHpa = 0;
};

/// One GRIB edition 2 message: sections 0, 1, 3 (template 3.0), 4 (4.0), 5 (5.0), 6, 7 and 8, the
/// values packed into 16 bits. `values` has rows * columns numbers.
QByteArray grib2Message(const Grib2Grid& grid, const Grib2Parameter& parameter,
                        std::chrono::sys_time<std::chrono::hours> analysis,
                        const std::vector<double>& values);

} // namespace wxserver

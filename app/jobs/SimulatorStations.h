#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

/// The weather stations that an installed simulator knows.
struct SimulatorStations
{
    QSet<QString> icaos;
    int count = 0;      ///< entries of the file, repeats included; 0 when it can't be read
    QStringList errors; ///< log lines, empty when the file was read
};

/// Reads "wxstationlist.bin" below the simulator's folder: text without separators, four characters
/// an ICAO. A missing file gives an empty list with the lines that say so.
SimulatorStations readSimulatorStations(const QString& simPath);

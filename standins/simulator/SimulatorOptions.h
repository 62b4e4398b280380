#pragma once

#include "aviation/Position.h"
#include "standins/simulator/Fault.h"
#include "standins/simulator/SimulatedFlight.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace simulator {

/// What the stand-in is and how it behaves. Plain value.
struct SimulatorOptions
{
    quint16 port = 0; ///< 0 any free one
    int fsId = 9;     ///< aviation::fsid
    int interfaceId = 4;
    QString simulatorName = QStringLiteral("Stand-in Simulator");
    QString interfaceName = QStringLiteral("Bridge");
    QString apiVersion = QStringLiteral("3.3");
    quint16 udpPort = 0;      ///< where datagrams go to, 0 a free port
    int udpIntervalMs = 1000; ///< between datagrams
    double speed = 1.0;       ///< seconds of the flight in one of the clock
    QString start;            ///< fraction or phase, empty for the gate
    Fault fault;

    // For the command line only.
    QString trackFile;
    std::optional<aviation::Position> from;
    std::optional<aviation::Position> to;
    bool quiet = false;
    bool help = false;
};

/// Reads the arguments after the program's name. Nothing if they are wrong; `error` says what.
std::optional<SimulatorOptions> parseOptions(const QStringList& arguments, QString* error);
/// The text of --help.
QString optionsHelp();

/// The flight that the options ask for, at its start. Nothing if the track can't be read, the
/// places are too close or the start is neither fraction nor phase; `error` says what.
std::optional<SimulatedFlight> makeFlight(const SimulatorOptions& options, QString* error);

} // namespace simulator

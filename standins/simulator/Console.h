#pragma once

#include <QString>

namespace simulator {

class SimulatorServer;

/// Does what a line of standard input says: "fault NAME", "speed X", "jump FRACTION|PHASE", "drop",
/// "status", "quit". Gives the line to print; empty for "quit". On the server's thread.
QString runConsoleLine(SimulatorServer& server, const QString& line);

} // namespace simulator

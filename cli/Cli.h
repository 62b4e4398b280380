#pragma once

#include <QStringList>

#include <iosfwd>

/// Runs the headless program in process: arguments after the program's name, streams in and out.
/// Returns the exit status. Needs a QCoreApplication. One call at a time: it installs the clock.
int runCli(const QStringList& arguments, std::istream& in, std::ostream& out, std::ostream& err);

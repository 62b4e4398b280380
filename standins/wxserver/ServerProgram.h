#pragma once

#include <QString>
#include <QStringList>

#include <iosfwd>
#include <vector>

namespace wxserver {

class WeatherServer;
struct RequestRecord;

/// What the command line says.
struct ServerOptions
{
    quint16 port = 0;
    QString dataFolder;
    QStringList orders; ///< lines for obey()
    bool quiet = false;
    bool help = false;
};

/// Reads the arguments after the program's name. False with a reason when they can't be read.
[[nodiscard]] bool readOptions(const QStringList& arguments, ServerOptions& options,
                               QString& reason);
/// The text of --help.
QString helpText();

/// Does what a line says: "fault PATTERN=KIND[:ARGUMENT][*N]", "clear [PATTERN]" or
/// "info KEY=VALUE". Empty lines do nothing. False with a reason when it can't be read.
[[nodiscard]] bool obey(WeatherServer& server, const QString& line, QString& reason);

/// A request as one line of the log.
QString requestLine(const RequestRecord& request);

/// Runs the server until a line "quit" comes in; the end of `in` doesn't end it. Returns the exit
/// status: 0, 1 when it can't listen or the data can't be read, 2 for wrong arguments. Needs a
/// QCoreApplication.
int runServer(const QStringList& arguments, std::istream& in, std::ostream& out, std::ostream& err);

} // namespace wxserver

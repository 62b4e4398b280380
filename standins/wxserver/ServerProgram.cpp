#include "standins/wxserver/ServerProgram.h"

#include "standins/wxserver/WeatherServer.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <istream>
#include <ostream>
#include <string>
#include <thread>

namespace wxserver {

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitArguments = 2;

/// One option with its value; `name` is the option's name.
bool readValue(const QString& name, const QString& value, ServerOptions& options, QString& reason)
{
    if (name == QLatin1String("--port")) {
        bool isNumber = false;
        options.port = value.toUShort(&isNumber);
        reason = isNumber ? QString() : QStringLiteral("not a port: %1").arg(value);
        return isNumber;
    }
    if (name == QLatin1String("--data")) {
        options.dataFolder = value;
        return true;
    }
    if (name == QLatin1String("--fault") || name == QLatin1String("--info")) {
        options.orders.append(name.mid(2) + QLatin1Char(' ') + value);
        return true;
    }
    reason = QStringLiteral("unknown option: %1").arg(name);
    return false;
}

/// What other texts may do to a terminal, they don't do here.
QString printable(QString text)
{
    for (QChar& letter : text) {
        letter = letter.isPrint() ? letter : QChar(QLatin1Char('?'));
    }
    return text.left(300);
}

/// Reads orders on a thread of its own, since reading waits; they run on the server's thread.
void readOrders(WeatherServer& server, std::istream& in, std::ostream& err)
{
    std::string line;
    while (std::getline(in, line)) {
        const QString order = QString::fromStdString(line).trimmed();
        if (order == QLatin1String("quit")) {
            QMetaObject::invokeMethod(&server, [] { QCoreApplication::quit(); });
            return;
        }
        QMetaObject::invokeMethod(&server, [&server, &err, order] {
            QString reason;
            if (!obey(server, order, reason)) {
                err << reason.toStdString() << std::endl;
            }
        });
    }
}

} // namespace

bool readOptions(const QStringList& arguments, ServerOptions& options, QString& reason)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        const QString name = argument.section(QLatin1Char('='), 0, 0);
        const bool isJoined = argument.startsWith(QLatin1String("--port="))
                              || argument.startsWith(QLatin1String("--data="));
        if (argument == QLatin1String("--quiet")) {
            options.quiet = true;
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            options.help = true;
        } else if (!isJoined && i + 1 == arguments.size()) {
            reason = QStringLiteral("unknown option, or its value is missing: %1").arg(argument);
            return false;
        } else if (!readValue(isJoined ? name : argument,
                              isJoined ? argument.section(QLatin1Char('='), 1) : arguments[++i],
                              options, reason))
        {
            return false;
        }
    }
    return true;
}

QString helpText()
{
    return QStringLiteral(
        "cirrilon-wxserver: a weather server on this computer, for demonstration and tests.\n"
        "It serves the bundled real reports of 1 July 2019 and the upper-air analysis of\n"
        "26 October 2010, with their day and time groups moved to the present; so wind and\n"
        "temperature aloft don't belong to the reports.\n\n"
        "  --port N            port on 127.0.0.1, 0 (the default) takes a free one\n"
        "  --data FOLDER       weather.wx and grib.txt.gz of this folder instead\n"
        "  --fault PATTERN=KIND[:ARGUMENT][*N]\n"
        "                      misbehave for the paths that match (\"*\" stands for any text),\n"
        "                      for the next N requests or until taken back. Kinds, and in "
        "brackets\n"
        "                      what the argument says: status (code), stall, stall-body, trickle\n"
        "                      (bytes each 0.1 s), truncate, damage, empty, short (METARs), html,\n"
        "                      error (text), length (bytes too many), cut, redirect (address),\n"
        "                      bomb, endless (MB), name (file name)\n"
        "  --info KEY=VALUE    a value of the info file, such as Version/cirrilonv3=3.1.0\n"
        "  --quiet             no line for each request\n"
        "  --help              this text\n\n"
        "Lines on standard input: fault ..., clear [PATTERN], info KEY=VALUE, quit\n");
}

bool obey(WeatherServer& server, const QString& line, QString& reason)
{
    const QString order = line.trimmed();
    const QString verb = order.section(QLatin1Char(' '), 0, 0);
    const QString rest = order.section(QLatin1Char(' '), 1).trimmed();
    if (verb.isEmpty()) {
        return true;
    }
    if (verb == QLatin1String("fault")) {
        Fault fault;
        if (!parseFault(rest, fault, reason)) {
            return false;
        }
        server.addFault(fault);
        return true;
    }
    if (verb == QLatin1String("clear")) {
        server.clearFaults(rest);
        return true;
    }
    const int equals = rest.indexOf(QLatin1Char('='));
    if (verb != QLatin1String("info") || equals < 1) {
        reason = QStringLiteral("can't be read: %1").arg(order);
        return false;
    }
    server.setInfo(rest.left(equals), rest.mid(equals + 1));
    return true;
}

QString requestLine(const RequestRecord& request)
{
    const QString query = request.query.isEmpty() ? QString() : QLatin1Char('?') + request.query;
    const QString status =
        request.status == 0 ? QStringLiteral("no answer") : QString::number(request.status);
    const QString fault =
        request.fault.isEmpty() ? QString() : QStringLiteral(" (fault: %1)").arg(request.fault);
    return printable(request.method + QLatin1Char(' ') + request.path + query) + QLatin1Char(' ')
           + status + fault;
}

int runServer(const QStringList& arguments, std::istream& in, std::ostream& out, std::ostream& err)
{
    ServerOptions options;
    QString reason;
    if (!readOptions(arguments, options, reason)) {
        err << reason.toStdString() << std::endl;
        return kExitArguments;
    }
    if (options.help) {
        out << helpText().toStdString() << std::flush;
        return 0;
    }
    WeatherServer server(options.dataFolder);
    for (const QString& order : options.orders) {
        if (!obey(server, order, reason)) {
            err << reason.toStdString() << std::endl;
            return kExitArguments;
        }
    }
    if (!server.start(options.port)) {
        err << server.errorText().toStdString() << std::endl;
        return kExitFailed;
    }
    out << "listening on " << server.url().toStdString() << '/' << std::endl;
    if (!options.quiet) {
        QObject::connect(&server, &WeatherServer::sigRequest, [&out](const RequestRecord& request) {
            out << requestLine(request).toStdString() << std::endl;
        });
    }
    std::thread reader([&] { readOrders(server, in, err); });
    const int status = QCoreApplication::exec();
    reader.join();
    return status;
}

} // namespace wxserver

#include "standins/simulator/Console.h"

#include "standins/simulator/SimulatorServer.h"

namespace simulator {

namespace {

QString setFault(SimulatorServer& server, const QString& text)
{
    const std::optional<Fault> fault = parseFault(text);
    if (!fault) {
        return QStringLiteral("no fault of that name: ") + text;
    }
    server.setFault(*fault);
    return QStringLiteral("fault ") + faultText(*fault);
}

QString setSpeed(SimulatorServer& server, const QString& text)
{
    bool isNumber = false;
    const double speed = text.toDouble(&isNumber);
    if (!isNumber || !(speed >= 0.0)) {
        return QStringLiteral("no speed: ") + text;
    }
    server.model().withFlight([speed](SimulatedFlight& flight) { flight.setSpeed(speed); });
    return QStringLiteral("speed ") + QString::number(speed);
}

QString status(SimulatorServer& server)
{
    const aviation::structs::AircraftData aircraft = server.model().peekAircraft();
    Phase phase = Phase::Boarding;
    server.model().withFlight([&phase](const SimulatedFlight& flight) { phase = flight.phase(); });
    return QStringLiteral("%1, %2 ft, %3 kt, at %4 %5, %6 connections, fault %7")
        .arg(phaseName(phase))
        .arg(aircraft.altitude)
        .arg(aircraft.groundSpeed)
        .arg(aircraft.position.latitude(), 0, 'f', 4)
        .arg(aircraft.position.longitude(), 0, 'f', 4)
        .arg(server.connections())
        .arg(faultText(server.fault()));
}

QString jump(SimulatorServer& server, const QString& place)
{
    bool known = false;
    server.model().withFlight(
        [&known, &place](SimulatedFlight& flight) { known = flight.jumpTo(place); });
    return known ? status(server) : QStringLiteral("no such place: ") + place;
}

} // namespace

QString runConsoleLine(SimulatorServer& server, const QString& line)
{
    const QString text = line.simplified();
    const QString word = text.section(QLatin1Char(' '), 0, 0);
    const QString argument = text.section(QLatin1Char(' '), 1);
    if (word == QLatin1String("fault")) {
        return setFault(server, argument);
    }
    if (word == QLatin1String("speed")) {
        return setSpeed(server, argument);
    }
    if (word == QLatin1String("jump")) {
        return jump(server, argument);
    }
    if (word == QLatin1String("drop")) {
        server.closeConnections();
        return QStringLiteral("connections closed");
    }
    if (word == QLatin1String("quit")) {
        return {};
    }
    return word == QLatin1String("status") ? status(server)
                                           : QStringLiteral("unknown command: ") + word;
}

} // namespace simulator

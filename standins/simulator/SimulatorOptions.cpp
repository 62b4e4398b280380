#include "standins/simulator/SimulatorOptions.h"

#include <QMap>

#include <cmath>
#include <functional>

namespace simulator {

namespace {

constexpr int kHighestPort = 65535;
constexpr int kHighestNumber = 1000;
constexpr int kShortestIntervalMs = 20;
constexpr int kLongestIntervalMs = 3600000;
constexpr double kHighestSpeed = 10000.0;

std::optional<int> numberIn(const QString& text, int least, int most)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    return isNumber && value >= least && value <= most ? std::optional(value) : std::nullopt;
}

/// "44.9,-93.2".
std::optional<aviation::Position> place(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    bool isLatitude = false;
    bool isLongitude = false;
    const double latitude = parts.first().toDouble(&isLatitude);
    const double longitude = parts.last().toDouble(&isLongitude);
    if (parts.size() != 2 || !isLatitude || !isLongitude || std::abs(latitude) > 90.0
        || std::abs(longitude) > 180.0)
    {
        return std::nullopt;
    }
    return aviation::Position(latitude, longitude);
}

template <class Target, class Value>
bool take(Target& target, const std::optional<Value>& value)
{
    if (value) {
        target = static_cast<Target>(*value);
    }
    return value.has_value();
}

bool takePlace(std::optional<aviation::Position>& target, const QString& text)
{
    target = place(text);
    return target.has_value();
}

bool takeSpeed(double& target, const QString& text)
{
    bool isNumber = false;
    target = text.toDouble(&isNumber);
    return isNumber && target >= 0.0 && target <= kHighestSpeed;
}

bool takeText(QString& target, const QString& text)
{
    target = text;
    return !text.isEmpty();
}

/// Stores the value of an option; false when it isn't one.
using Setter = std::function<bool(SimulatorOptions&, const QString&)>;
using Options = SimulatorOptions;

const QMap<QString, Setter>& setters()
{
    static const QMap<QString, Setter> kSetters{
        {QStringLiteral("--port"),
         [](Options& o, const QString& v) {
             return take(o.port, numberIn(v, 0, kHighestPort));
         }},
        {QStringLiteral("--track"),
         [](Options& o, const QString& v) {
             return takeText(o.trackFile, v);
         }},
        {QStringLiteral("--from"),
         [](Options& o, const QString& v) {
             return takePlace(o.from, v);
         }},
        {QStringLiteral("--to"),
         [](Options& o, const QString& v) {
             return takePlace(o.to, v);
         }},
        {QStringLiteral("--start"),
         [](Options& o, const QString& v) {
             return takeText(o.start, v);
         }},
        {QStringLiteral("--speed"),
         [](Options& o, const QString& v) {
             return takeSpeed(o.speed, v);
         }},
        {QStringLiteral("--fs-id"),
         [](Options& o, const QString& v) {
             return take(o.fsId, numberIn(v, 0, kHighestNumber));
         }},
        {QStringLiteral("--interface"),
         [](Options& o, const QString& v) {
             return take(o.interfaceId, numberIn(v, 0, kHighestNumber));
         }},
        {QStringLiteral("--name"),
         [](Options& o, const QString& v) {
             return takeText(o.simulatorName, v);
         }},
        {QStringLiteral("--interface-name"),
         [](Options& o, const QString& v) {
             return takeText(o.interfaceName, v);
         }},
        {QStringLiteral("--api"),
         [](Options& o, const QString& v) {
             return takeText(o.apiVersion, v);
         }},
        {QStringLiteral("--udp-port"),
         [](Options& o, const QString& v) {
             return take(o.udpPort, numberIn(v, 0, kHighestPort));
         }},
        {QStringLiteral("--udp-interval"),
         [](Options& o, const QString& v) {
             return take(o.udpIntervalMs, numberIn(v, kShortestIntervalMs, kLongestIntervalMs));
         }},
        {QStringLiteral("--fault"), [](Options& o, const QString& v) {
             return take(o.fault, parseFault(v));
         }}};
    return kSetters;
}

/// One argument with its value, if it has one; empty when all is well.
QString readOption(const QString& name, const QString& value, bool hasValue,
                   SimulatorOptions& options)
{
    const auto setter = setters().find(name);
    if (setter == setters().end()) {
        return QStringLiteral("unknown option %1").arg(name);
    }
    if (!hasValue) {
        return QStringLiteral("%1 needs a value").arg(name);
    }
    return (*setter)(options, value) ? QString()
                                     : QStringLiteral("%1 can't be \"%2\"").arg(name, value);
}

QString contradiction(const SimulatorOptions& options)
{
    if (options.from.has_value() != options.to.has_value()) {
        return QStringLiteral("--from and --to belong together");
    }
    return options.from && !options.trackFile.isEmpty()
               ? QStringLiteral("either --track or --from and --to")
               : QString();
}

} // namespace

std::optional<SimulatorOptions> parseOptions(const QStringList& arguments, QString* error)
{
    SimulatorOptions options;
    for (int i = 0; i < arguments.size() && error->isEmpty(); ++i) {
        const QString& name = arguments[i];
        if (name == QLatin1String("--quiet")) {
            options.quiet = true;
        } else if (name == QLatin1String("--help")) {
            options.help = true;
        } else {
            const bool hasValue = i + 1 < arguments.size();
            *error = readOption(name, arguments.value(i + 1), hasValue, options);
            ++i;
        }
    }
    if (error->isEmpty()) {
        *error = contradiction(options);
    }
    return error->isEmpty() ? std::optional(options) : std::nullopt;
}

QString optionsHelp()
{
    return QStringLiteral(
               "cirrilon-simulator: a stand-in simulator behind the bridge's protocol\n\n"
               "  --port N             port on 127.0.0.1, 0 any (0)\n"
               "  --track FILE         flies a recorded track instead of the built-in one\n"
               "  --from LAT,LON --to LAT,LON   flies the great circle\n"
               "  --start X            fraction of the flight or a phase, such as cruise\n"
               "  --speed X            seconds of the flight in one second (1)\n"
               "  --fs-id N            number of the simulator (9)\n"
               "  --interface N        number of the interface (4)\n"
               "  --name TEXT          name of the simulator\n"
               "  --interface-name TEXT   name of the interface\n"
               "  --api TEXT           API version (3.3)\n"
               "  --udp-port N         port that datagrams go to, 0 a free one (0)\n"
               "  --udp-interval MS    between datagrams (1000)\n"
               "  --fault NAME         misbehaves, see below\n"
               "  --quiet              prints only where it listens\n"
               "  --help               this text\n\n"
               "Lines on standard input: fault NAME, speed X, jump FRACTION|PHASE, drop, status, "
               "quit.\n\n"
               "Faults, as NAME[:ARGUMENT][@[COMMAND/]ID][*COUNT]:\n")
           + faultHelp();
}

std::optional<SimulatedFlight> makeFlight(const SimulatorOptions& options, QString* error)
{
    Track track;
    if (options.from && options.to) {
        track = greatCircleTrack(*options.from, *options.to);
        *error = track.empty() ? QStringLiteral("the places are less than 20 NM apart") : QString();
    } else {
        track = options.trackFile.isEmpty() ? demoTrack() : readTrackFile(options.trackFile, error);
    }
    if (track.empty()) {
        return std::nullopt;
    }
    SimulatedFlight flight(std::move(track));
    if (!options.start.isEmpty() && !flight.jumpTo(options.start)) {
        *error = QStringLiteral("\"%1\" is neither a fraction nor a phase").arg(options.start);
        return std::nullopt;
    }
    return flight;
}

} // namespace simulator

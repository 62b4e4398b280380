#include "cli/CliOptions.h"

#include "app/base/Settings.h"
#include "cli/InputChecks.h"

#include <QCommandLineParser>
#include <QDateTime>

#include <cmath>

namespace {

[[noreturn]] void wrongArguments(const QString& line)
{
    throw CliFailure{cliexit::kArguments, line};
}

/// One option: its name, what its value is, and the commands that take it.
struct OptionRow
{
    const char* name;
    const char* value;    ///< empty for a switch
    const char* commands; ///< blanks between; "*" for every command, "store" for those with a store
};

constexpr OptionRow kRows[] = {
    {"settings", "FILE", "*"},
    {"now", "YYYY-MM-DDThh:mm:ssZ", "*"},
    {"seed", "N", "*"},
    {"log", "LEVEL", "*"},
    {"airports", "FILE", "store nearest stations search prepare"},
    {"stations", "FILE", "store nearest stations search prepare"},
    {"weather", "FILE", "store nearest stations search prepare"},
    {"grib", "FILE", "store nearest stations search prepare"},
    {"elevation", "FEET", "decode"},
    {"strict", "", "decode"},
    {"at", "LAT,LON", "nearest stations prepare"},
    {"range", "NM", "stations"},
    {"sim", "N", "prepare"},
    {"interface", "N", "prepare"},
    {"icao", "ICAO", "record"},
    {"magvar", "DEGREES", "record"},
    {"destination", "ICAO", "fsuipc observations"},
    {"out", "PATH", "theme xplane-files"},
    {"generation", "11|12", "xplane-record"},
};

struct CommandRow
{
    const char* name;
    const char* subCommands; ///< blanks between; empty for none
    int arguments;           ///< positional arguments after the command
};

constexpr CommandRow kCommands[] = {
    {"decode", "metar synop grib", 0},
    {"store", "", 0},
    {"nearest", "", 0},
    {"stations", "", 0},
    {"search", "", 1},
    {"prepare", "record fsuipc observations theme xplane-files xplane-record", 0},
    {"wind", "steps", 0},
};

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

int integerOption(const QString& name, const QString& value)
{
    bool ok = false;
    const int number = value.toInt(&ok);
    if (!ok) {
        wrongArguments(QStringLiteral("--%1: \"%2\" is not a whole number").arg(name, value));
    }
    return number;
}

double numberOption(const QString& name, const QString& value)
{
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok || !std::isfinite(number)) {
        wrongArguments(QStringLiteral("--%1: \"%2\" is not a number").arg(name, value));
    }
    return number;
}

aviation::Position placeOption(const QString& value)
{
    const QStringList parts = value.split(QLatin1Char(','));
    bool latitudeOk = false;
    bool longitudeOk = false;
    const double latitude = parts.value(0).toDouble(&latitudeOk);
    const double longitude = parts.value(1).toDouble(&longitudeOk);
    const bool onEarth = std::abs(latitude) <= 90.0 && std::abs(longitude) <= 180.0;
    if (parts.size() != 2 || !latitudeOk || !longitudeOk || !onEarth) {
        wrongArguments(
            QStringLiteral("--at: \"%1\" is not LAT,LON in decimal degrees (latitude -90 "
                           "to 90, longitude -180 to 180)")
                .arg(value));
    }
    return {latitude, longitude};
}

aviation::Clock::UtcTime timeOption(const QString& value)
{
    constexpr int kDateLength = 10;
    constexpr int kLength = 20;
    // Date and time apart: as one they would be read in the system's zone, which has gaps.
    const QDate date = QDate::fromString(value.left(kDateLength), QStringLiteral("yyyy-MM-dd"));
    const QTime clock = QTime::fromString(value.mid(kDateLength), QStringLiteral("'T'hh:mm:ss'Z'"));
    const QDateTime time(date, clock, Qt::UTC);
    if (value.size() != kLength || !date.isValid() || !clock.isValid()) {
        wrongArguments(
            QStringLiteral("--now: \"%1\" is not a time of the form YYYY-MM-DDThh:mm:ssZ")
                .arg(value));
    }
    return aviation::Clock::UtcTime(std::chrono::milliseconds(time.toMSecsSinceEpoch()));
}

int levelOption(const QString& value)
{
    static const QStringList kNames{QStringLiteral("debug"), QStringLiteral("notification"),
                                    QStringLiteral("warning"), QStringLiteral("error")};
    const int named = kNames.indexOf(value.toLower());
    bool ok = false;
    const int number = value.toInt(&ok);
    if (named < 0 && (!ok || number < 0 || number > 3)) {
        wrongArguments(
            QStringLiteral("--log: \"%1\" is not a level from 0 (debug) to 3 (error)").arg(value));
    }
    return named >= 0 ? named : number;
}

std::uint32_t seedOption(const QString& value)
{
    bool ok = false;
    const uint seed = value.toUInt(&ok);
    if (!ok) {
        wrongArguments(
            QStringLiteral("--seed: \"%1\" is not a whole number from 0 to 4294967295").arg(value));
    }
    return seed;
}

/// What follows a command's name.
void takeRest(const CommandRow& row, QStringList positional, CliOptions& options)
{
    const QStringList subCommands = words(row.subCommands);
    if (!subCommands.isEmpty()) {
        const QString sub = positional.isEmpty() ? QString() : positional.takeFirst();
        if (!subCommands.contains(sub)) {
            wrongArguments(
                QStringLiteral("%1: \"%2\" is not one of %3")
                    .arg(QLatin1String(row.name), sub, subCommands.join(QStringLiteral(", "))));
        }
        options.command << sub;
    }
    if (positional.size() != row.arguments) {
        wrongArguments(QStringLiteral("%1: %2 argument(s) expected behind the command, got %3")
                           .arg(options.command.join(QLatin1Char(' ')))
                           .arg(row.arguments)
                           .arg(positional.size()));
    }
    options.criteria = positional.value(0);
}

void takeCommand(QStringList positional, CliOptions& options)
{
    if (positional.isEmpty()) {
        wrongArguments(QStringLiteral("no command; expected decode, store, nearest, stations, "
                                      "search, prepare or wind (see --help)"));
    }
    const QString name = positional.takeFirst();
    for (const CommandRow& row : kCommands) {
        if (name != QLatin1String(row.name)) {
            continue;
        }
        options.command << name;
        takeRest(row, positional, options);
        return;
    }
    wrongArguments(QStringLiteral("\"%1\" is not a command (see --help)").arg(name));
}

void checkOptionsBelong(const QCommandLineParser& parser, const CliOptions& options)
{
    for (const OptionRow& row : kRows) {
        const QString name = QLatin1String(row.name);
        const QStringList commands = words(row.commands);
        const bool fits = commands.contains(QStringLiteral("*"))
                          || commands.contains(options.command.first())
                          || commands.contains(options.command.last());
        if (parser.isSet(name) && !fits) {
            wrongArguments(QStringLiteral("--%1 does not go with %2")
                               .arg(name, options.command.join(QLatin1Char(' '))));
        }
        if (*row.value != '\0' && parser.isSet(name) && parser.value(name).isEmpty()) {
            wrongArguments(QStringLiteral("--%1: a value is expected (%2)")
                               .arg(name, QLatin1String(row.value)));
        }
    }
}

void checkRequired(const CliOptions& options)
{
    static const QStringList kNeedPlace{QStringLiteral("nearest"), QStringLiteral("stations"),
                                        QStringLiteral("prepare")};
    static const QStringList kNeedOut{QStringLiteral("theme"), QStringLiteral("xplane-files")};
    const QString name = options.command.join(QLatin1Char(' '));
    if (kNeedPlace.contains(options.command.first()) && !options.at) {
        wrongArguments(QStringLiteral("%1: --at LAT,LON is expected").arg(name));
    }
    if (kNeedOut.contains(options.command.last()) && options.out.isEmpty()) {
        wrongArguments(QStringLiteral("%1: --out is expected").arg(name));
    }
    if (options.generation != 11 && options.generation != 12) {
        wrongArguments(QStringLiteral("--generation: 11 or 12 is expected"));
    }
    if (options.command.first() == QLatin1String("search")) {
        const QString fault = inputchecks::criteriaFault(options.criteria);
        if (!fault.isEmpty()) {
            wrongArguments(QStringLiteral("search: \"%1\": %2").arg(options.criteria, fault));
        }
    }
    if (options.range && *options.range < 0) {
        wrongArguments(QStringLiteral("--range: a number of nautical miles from 0 on is expected"));
    }
}

void takeGlobalOptions(const QCommandLineParser& parser, CliOptions& options)
{
    options.settingsFile = parser.value(QStringLiteral("settings"));
    if (parser.isSet(QStringLiteral("now"))) {
        options.now = timeOption(parser.value(QStringLiteral("now")));
    }
    if (parser.isSet(QStringLiteral("seed"))) {
        options.seed = seedOption(parser.value(QStringLiteral("seed")));
    }
    if (parser.isSet(QStringLiteral("log"))) {
        options.logLevel = levelOption(parser.value(QStringLiteral("log")));
    }
}

std::optional<int> optionalInteger(const QCommandLineParser& parser, const QString& name)
{
    return parser.isSet(name) ? std::optional(integerOption(name, parser.value(name)))
                              : std::nullopt;
}

void takeCommandOptions(const QCommandLineParser& parser, CliOptions& options)
{
    options.airportsFile = parser.value(QStringLiteral("airports"));
    options.stationsFile = parser.value(QStringLiteral("stations"));
    options.weatherFile = parser.value(QStringLiteral("weather"));
    options.gribFile = parser.value(QStringLiteral("grib"));
    options.elevation = optionalInteger(parser, QStringLiteral("elevation")).value_or(0);
    options.strict = parser.isSet(QStringLiteral("strict"));
    if (parser.isSet(QStringLiteral("at"))) {
        options.at = placeOption(parser.value(QStringLiteral("at")));
    }
    options.range = optionalInteger(parser, QStringLiteral("range"));
    options.sim = optionalInteger(parser, QStringLiteral("sim"));
    options.interfaceType = optionalInteger(parser, QStringLiteral("interface"));
    options.icao = parser.value(QStringLiteral("icao"));
    if (parser.isSet(QStringLiteral("magvar"))) {
        options.magneticVariation =
            numberOption(QStringLiteral("magvar"), parser.value(QStringLiteral("magvar")));
    }
    options.destination = parser.value(QStringLiteral("destination"));
    options.out = parser.value(QStringLiteral("out"));
    options.generation = optionalInteger(parser, QStringLiteral("generation")).value_or(11);
}

/// Search criteria may begin with a negative number, which would be read as an option.
QString takeNegativeCriteria(QStringList& arguments)
{
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument.startsWith(QLatin1Char('-')) && argument.contains(QLatin1Char(';'))) {
            return arguments.takeAt(i);
        }
    }
    return {};
}

} // namespace

CliOptions parseCliOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringLiteral("version"));
    parser.addOption(help);
    parser.addOption(version);
    for (const OptionRow& row : kRows) {
        parser.addOption(QCommandLineOption(QString::fromLatin1(row.name), QString(),
                                            QString::fromLatin1(row.value)));
    }
    QStringList rest = arguments;
    const QString criteria = takeNegativeCriteria(rest);
    const bool parsed = parser.parse(QStringList{QStringLiteral("cirrilon-cli")} + rest);
    CliOptions options;
    options.help = parser.isSet(help);
    options.version = parser.isSet(version);
    if (options.help || options.version) {
        return options;
    }
    if (!parsed) {
        wrongArguments(parser.errorText() + QStringLiteral(" (see --help)"));
    }
    QStringList positional = parser.positionalArguments();
    if (!criteria.isEmpty()) {
        positional << criteria;
    }
    takeCommand(positional, options);
    checkOptionsBelong(parser, options);
    takeGlobalOptions(parser, options);
    takeCommandOptions(parser, options);
    checkRequired(options);
    return options;
}

QString cliVersion()
{
    return QStringLiteral("cirrilon-cli %1\n").arg(Settings::version());
}

QString cliHelp()
{
    return QStringLiteral(R"(Usage: cirrilon-cli [GLOBAL OPTIONS] COMMAND [ARGUMENTS]

Decodes aviation weather reports, asks the weather store and prepares simulator
weather, without a window. Never touches the network or the user's settings.

Global options:
  --settings FILE   INI file with the program's option keys (default: built in)
  --now TIME        YYYY-MM-DDThh:mm:ssZ, the clock of every age test (UTC)
  --seed N          seed of the random numbers (default: from the time)
  --log LEVEL       log lines from 0 debug, 1 notification, 2 warning, 3 error
                    on, to standard error (default: none)
  --help            this text
  --version         the version of this program

decode metar|synop|grib [--elevation FEET] [--strict] < reports
                    one JSON object for each line of standard input; METARs may
                    begin with METAR or SPECI. --strict prints null for every
                    field that the report doesn't hold

Store options, for all commands below:
  --airports FILE   table of airports (default: built in)
  --stations FILE   table of weather stations (default: built in)
  --weather FILE    [METAR], [SYNOP] and [TAF] blocks; ".gz" is inflated
  --grib FILE       upper-air text, one record a line; ".gz" is inflated

store               counts, and the stations that no table knows
nearest --at LAT,LON
                    the reports that stand for a place
stations --at LAT,LON [--range NM]
                    the airports around a place, nearest first
search 'MINWIND;MAXWIND;MINVIS;MAXVIS;WEATHER;PREFIX'
                    the METARs that match (knots, metres)

prepare WHAT --at LAT,LON [--sim N] [--interface N] ...
  record [--icao ICAO] [--magvar DEGREES]
                    one composed weather record as JSON
  fsuipc [--destination ICAO]
                    the records of all stations in range as JSON
  observations [--destination ICAO]
                    the observation strings of all stations in range
  theme --out BASE  the weather theme BASE.WTB and BASE.wt
  xplane-files --out DIRECTORY
                    METAR.rwx and WINDS.rwx
  xplane-record [--generation 11|12]
                    the record for direct output

wind steps < cases  direct wind control, step by step: one JSON object for each
                    line of standard input, 100000 steps and as many events
                    a line at most

Exit status: 0 done, 1 the work failed, 2 wrong arguments, 3 bad input file.
)");
}

#pragma once

#include "aviation/Position.h"
#include "aviation/support/Clock.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

/// Exit statuses of the headless program.
namespace cliexit {
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;    ///< the work failed
inline constexpr int kArguments = 2; ///< wrong arguments
inline constexpr int kInput = 3;     ///< an input file can't be read or isn't what it should be
} // namespace cliexit

/// Why a command ends early: its exit status and the one line for standard error.
struct CliFailure
{
    int exitStatus;
    QString line;
};

/// The command line, checked: numbers are numbers, places lie on the earth, and every option
/// belongs to the command that it stands with.
struct CliOptions
{
    QStringList command; ///< command and sub-command, such as "prepare", "record"
    bool help = false;
    bool version = false;

    QString settingsFile;
    std::optional<aviation::Clock::UtcTime> now;
    std::optional<std::uint32_t> seed;
    std::optional<int> logLevel;

    QString airportsFile;
    QString stationsFile;
    QString weatherFile;
    QString gribFile;

    std::int32_t elevation = 0; ///< feet
    bool strict = false;
    std::optional<aviation::Position> at;
    std::optional<int> range; ///< NM
    std::optional<int> sim;
    std::optional<int> interfaceType;
    QString icao;
    double magneticVariation = 0.0; ///< degrees
    QString destination;
    QString out;
    int generation = 11;
    QString criteria;
};

/// Reads the arguments after the program's name. Throws CliFailure with status 2.
CliOptions parseCliOptions(const QStringList& arguments);

/// The line of --version.
QString cliVersion();

/// The text of --help.
QString cliHelp();

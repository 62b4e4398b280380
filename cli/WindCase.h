#pragma once

#include "aviation/AircraftData.h"
#include "aviation/GribLevel.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A case of direct wind control, as one line of JSON has it.
namespace windcase {

/// All steps of a case together: a day and some hours, one a second.
inline constexpr int kMostSteps = 100000;
/// An event takes a hundred times as much memory as its shortest text.
inline constexpr int kMostEvents = 100000;

/// Why a line is no case.
struct BadLine
{
    QString reason;
};

struct Steering
{
    int degreesPerSecond = 1;
    int knotsPerSecond = 1;
    bool gusty = true;
};

struct Weather
{
    aviation::weather::Metar metar;
    aviation::weather::Synop synop;
    std::vector<aviation::weather::GribLevel> levels;
};

/// What happens at one time, in this order.
struct Event
{
    std::int64_t afterMs = 1000; ///< before the event
    std::optional<Weather> weather;
    std::optional<aviation::structs::AircraftData> aircraft;
    std::optional<Steering> settings;
    int steps = 0;
    int xplaneSteps = 0;
    std::int64_t everyMs = 1000; ///< before each step
};

struct Case
{
    std::optional<std::int64_t> startMs; ///< since 1970 UTC
    Steering settings;
    std::vector<std::int32_t> random;
    std::vector<Event> events;
};

/// Reads one line. An absent field, or one that is null, has its default: that of a fresh record,
/// and `defaults` for the settings. Throws BadLine for anything that is no case: no JSON object, a
/// value of another kind or out of range, more than kMostSteps steps or kMostEvents events.
Case readCase(const std::string& line, const Steering& defaults);

} // namespace windcase

#include "app/base/SettingsBounds.h"

#include "app/base/LogLevel.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

namespace settingsbounds {

namespace {

struct Bounds
{
    const char* key = nullptr;
    int lowest = 0;
    int highest = 0;
};

constexpr int kShortestInterval = 10;          // seconds
constexpr int kLongestInterval = 24 * 60 * 60; // seconds
constexpr int kShortestPoll = 20;              // milliseconds
constexpr int kLongestPoll = 60 * 1000;        // milliseconds
constexpr int kAny = std::numeric_limits<int>::max();

constexpr std::array kBounds{
    Bounds{"main/loggerlevel", loglevel::kDebug, loglevel::kError},
    Bounds{"weather/range", 10, 1000}, // NM
    Bounds{"weather/updatetime", kShortestInterval, kLongestInterval},
    Bounds{"weather/downloadupdatetime", kShortestInterval, kLongestInterval},
    Bounds{"interface/serverupdatetimemin", kShortestPoll, kLongestPoll},
    Bounds{"interface/serverupdatetimemax", kShortestPoll, kLongestPoll},
    Bounds{"weather/fswinddegreespersecond", 1, kAny},
    Bounds{"weather/fswindknotspersecond", 1, kAny},
};

bool endsAsFolder(const QString& path)
{
    return path.endsWith(QLatin1Char('/')) || path.endsWith(QDir::separator());
}

} // namespace

int bounded(const QString& key, int value)
{
    const auto* const found =
        std::find_if(std::begin(kBounds), std::end(kBounds),
                     [&key](const Bounds& row) { return key == QLatin1String(row.key); });
    return found == std::end(kBounds) ? value : std::clamp(value, found->lowest, found->highest);
}

QString bounded(const QString& key, const QString& value)
{
    // An empty one stays: with a separator it would be the root of the file system.
    const bool lacksEnd =
        key == QLatin1String("paths/workfolder") && !value.isEmpty() && !endsAsFolder(value);
    return lacksEnd ? value + QLatin1Char('/') : value;
}

} // namespace settingsbounds

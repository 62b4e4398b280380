#pragma once

#include <QString>

#include <cstddef>

/// A live list with fewer METARs is no good one.
inline constexpr std::size_t kFewestMetars = 10;

/// The text of a weather file on its way into the store, and what it may replace there.
struct WeatherList
{
    enum class Origin
    {
        File,     ///< any size, judged by nobody
        Live,     ///< world-wide: one of few METARs doesn't replace a better one
        External, ///< of the user's own addresses; may be small
        Kept      ///< of the last run
    };

    QString text;
    Origin origin = Origin::File;
    bool metarsFailed = false; ///< couldn't be fetched; those of before stay
    bool synopsFailed = false; ///< so do these
};

/// What became of a list.
struct DecodeOutcome
{
    WeatherList list;
    bool taken = false; ///< its reports are those of the store now
    bool good = false;  ///< taken, with all that a list of its origin has to have
};

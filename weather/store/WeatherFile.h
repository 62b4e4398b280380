#pragma once

#include <QStringView>

namespace aviation::weather {

/// The blocks of a weather file, views into its text. A block that the file lacks is empty.
struct WeatherBlocks
{
    QStringView metars; ///< one report a line
    QStringView synops; ///< reports separated by "="
    QStringView tafs;   ///< reports from "TAF " on, each ended by an empty line
};

/// Cuts a weather file ("weather.wx") into its blocks "[METAR]...[/METAR]", "[SYNOP]...[/SYNOP]"
/// and "[TAF]...[/TAF]". Of repeated markers the last one counts, opening and closing alike, and
/// case matters. Text outside the blocks is ignored. The text must outlive the result.
WeatherBlocks extractWeatherBlocks(QStringView text);
/// True if the last opening marker of a block has no closing one after it: a part of the file is
/// missing.
bool hasUnclosedBlock(QStringView text);

} // namespace aviation::weather

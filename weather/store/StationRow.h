#pragma once

#include "aviation/Station.h"

#include <optional>
#include <string>
#include <string_view>

namespace aviation::weather {

/// A row of the weather station table.
struct StationRow
{
    std::wstring number; ///< six digits, block and station number of the WMO and one more
    Station station;     ///< icao empty if the station has none; elevation in feet
};

/// Reads a row of fixed columns, as in the station lists of the WMO Publication No. 9, Volume A:
///
///     0  number, 6 digits      34  country, 2        43  longitude DDDMM and E or W
///     7  ICAO, 4, may be blank 37  latitude DDMM     50  elevation in metres, 4
///     14 name, 20                  and N or S
///
/// Empty for a row under 49 characters, and for one whose number, latitude or longitude is no
/// number or out of range. A carriage return at the end doesn't count.
std::optional<StationRow> parseStationRow(std::wstring_view row);

} // namespace aviation::weather

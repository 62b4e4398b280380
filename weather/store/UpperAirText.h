#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace aviation::weather {

/// First line of an upper-air text from the weather server.
struct UpperAirHeader
{
    std::wstring text;
    bool isError = false;  ///< the server says why there are no data
    std::int64_t time = 0; ///< of the data, seconds since 1970 UTC; 0 not given
};

/// Reads the header if the first line is one, that is, holds a "#" and at least one character more.
/// The time stands in the ten characters after "TIME:". False, without a change, otherwise.
bool readUpperAirHeader(std::wstring_view text, UpperAirHeader& header);

} // namespace aviation::weather

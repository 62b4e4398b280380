#pragma once

#include "weather/store/KeyMap.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace aviation::weather {

/// Cuts a TAF block into its reports, views from "TAF" up to the empty line that ends each. A last
/// report without an empty line is left out.
std::vector<std::wstring_view> splitTafs(std::wstring_view text);

/// The forecasts of the store. Used by one thread at a time.
class TafManager
{
public:
    std::size_t size() const { return m_tafs.size(); }
    /// Stores a report as cut from the block, without its line ends and its first four characters.
    /// Its first four characters then are its key, also when they aren't an ICAO but the word of
    /// an amended or corrected report. Reports under 10 characters are ignored.
    void add(std::wstring_view report);
    /// Empty when there is none.
    std::wstring taf(std::wstring_view icao) const;

private:
    std::vector<std::wstring> m_tafs;
    KeyMap m_index; ///< key to the entry's index counted from 1
};

} // namespace aviation::weather

#pragma once

#include "aviation/Station.h"
#include "weather/store/KeyMap.h"
#include "weather/store/PlacedTable.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace aviation::weather {

/// A table of reporting points with a key each. Used by one thread at a time.
class StationTable
{
public:
    std::size_t size() const { return m_stations.size(); }
    /// Appends; of equal keys the later entry is found.
    void add(std::wstring key, Station station);
    /// Index of a key counted from 1, 0 when unknown.
    std::size_t indexOf(std::wstring_view key) const;
    /// The entry at an index counted from 1; null for 0 and beyond the table.
    const Station* entry(std::size_t index) const
    {
        return index == 0 ? nullptr : m_stations.at(index - 1);
    }

    /// Copies of the entries strictly nearer than the range, nearest first.
    std::vector<Station> within(const Position& position, double rangeNm);
    /// The first of the nearest entries strictly within the limit, null without one.
    const Station* nearest(const Position& position, double limitNm);

private:
    PlacedTable<Station> m_stations;
    TableKeyMap m_index;
};

} // namespace aviation::weather

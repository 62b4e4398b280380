#pragma once

#include "aviation/Grib.h"
#include "weather/store/KeyMap.h"
#include "weather/store/PlacedTable.h"

#include <cstddef>
#include <vector>

namespace aviation::weather {

/// The upper-air records of the store, one a grid point. Used by one thread at a time.
class GribManager
{
public:
    std::size_t size() const { return m_gribs.size(); }
    const std::vector<Grib>& gribs() const { return m_gribs.entries(); }

    /// Replaces the record with the same key or appends. The header must be decoded. False, without
    /// a change, when the key's entry lies outside the table.
    [[nodiscard]] bool add(Grib grib);
    /// Finds the nearest record within 250 NM and puts it into `out` decoded. Returns its status, 0
    /// is good. Without a record `out` becomes a blank one and the status that `out` had before the
    /// call is returned: hand in a new Grib, whose status isn't 0.
    [[nodiscard]] int Nearest(const Position& position, Grib& out);

private:
    PlacedTable<Grib> m_gribs;
    KeyMap m_index; ///< grid point to the entry's index counted from 0
};

} // namespace aviation::weather

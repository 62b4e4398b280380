#pragma once

#include "aviation/Metar.h"
#include "weather/store/KeyMap.h"
#include "weather/store/PlacedTable.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace aviation::weather {

/// The METARs of the store in arrival order. Used by one thread at a time.
class MetarManager
{
public:
    std::size_t size() const { return m_metars.size(); }
    const std::vector<Metar>& metars() const { return m_metars.entries(); }

    /// Appends a placed report; its icao now names this one, earlier ones stay in the table.
    void add(Metar metar);
    /// Appends a report that the caller goes on with in its place, since moving one takes as long
    /// as reading its header. nameLast makes it the one that its icao names, dropLast takes it
    /// back.
    Metar& append(std::wstring reportText) { return m_metars.emplace(std::move(reportText)); }
    void nameLast();
    void dropLast() { m_metars.dropLast(); }
    bool contains(std::wstring_view icao) const { return m_index.find(icao) != m_index.end(); }
    /// Sets the outdated flag of the report that the icao names, if there is one.
    void markOutdated(std::wstring_view icao);
    /// Finds the nearest report within 3000 NM and decodes it into `out`; without one `out` becomes
    /// a blank METAR.
    bool Nearest(const Position& position, Metar& out);
    /// Makes room for as many reports.
    void reserve(std::size_t count)
    {
        m_metars.reserve(count);
        m_index.reserve(count);
    }

private:
    PlacedTable<Metar> m_metars;
    TableKeyMap m_index; ///< ICAO to the entry's index counted from 1
};

} // namespace aviation::weather

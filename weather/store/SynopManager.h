#pragma once

#include "aviation/Synop.h"
#include "weather/store/PlacedTable.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace aviation::weather {

/// The SYNOPs of the store in arrival order. Used by one thread at a time.
class SynopManager
{
public:
    /// Told entries walked, entries in all, entries deleted so far.
    using Progress = std::function<void(std::size_t, std::size_t, std::size_t)>;

    std::size_t size() const { return m_synops.size(); }
    const std::vector<Synop>& synops() const { return m_synops.entries(); }

    void add(Synop synop) { m_synops.add(std::move(synop)); }
    /// Appends a report that the caller goes on with in its place: they come by the ten thousand,
    /// and moving one costs as much as reading its header.
    Synop& append(std::wstring reportText) { return m_synops.emplace(std::move(reportText)); }
    void dropLast() { m_synops.dropLast(); }
    /// Takes out the reports older than the limit and those without a valid position or time; the
    /// order of the others stays. A header that was read has all of that. `now` in seconds since
    /// 1970 UTC. `progress` is called every 100 entries and may be empty. Returns what went, so
    /// that the caller chooses where its memory is given back.
    std::vector<Synop> takeOld(std::int64_t now, int maxAgeSeconds, const Progress& progress);
    /// Finds the nearest report within 1000 NM and decodes it into `out`; without one `out` becomes
    /// a blank SYNOP.
    bool Nearest(const Position& position, Synop& out);
    /// Makes room for as many reports.
    void reserve(std::size_t count) { m_synops.reserve(count); }

private:
    PlacedTable<Synop> m_synops;
};

} // namespace aviation::weather

#pragma once

#include "weather/store/NearestIndex.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace aviation::weather {

/// Entries that have a position, in arrival order, with an index over the positions that is built
/// when a search first needs it. Used by one thread at a time, searches included.
template <class Entry>
class PlacedTable
{
public:
    std::size_t size() const { return m_entries.size(); }
    const std::vector<Entry>& entries() const { return m_entries; }
    /// Null outside the table.
    const Entry* at(std::size_t index) const
    {
        return index < m_entries.size() ? &m_entries[index] : nullptr;
    }
    /// Null outside the table. The caller must not move the entry; replace does that.
    Entry* at(std::size_t index) { return index < m_entries.size() ? &m_entries[index] : nullptr; }

    void reserve(std::size_t count) { m_entries.reserve(count); }
    void add(Entry entry)
    {
        m_entries.push_back(std::move(entry));
        m_isIndexed = false;
    }
    /// Appends an entry made of the argument; the caller may place it until the next operation.
    template <class Argument>
    Entry& emplace(Argument&& argument)
    {
        m_isIndexed = false;
        return m_entries.emplace_back(std::forward<Argument>(argument));
    }
    /// Takes back what emplace has just appended.
    void dropLast() { m_entries.pop_back(); }
    void replace(std::size_t index, Entry entry)
    {
        m_isIndexed = m_isIndexed && m_entries[index].samePlace(entry);
        m_entries[index] = std::move(entry);
    }
    /// Erases the entries for which `isErased` says so. It is asked once for each, in order, and
    /// may change the entry or move from one that goes.
    template <class Predicate>
    void eraseIf(Predicate isErased)
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            if (isErased(m_entries[i])) {
                continue;
            }
            if (kept != i) {
                m_entries[kept] = std::move(m_entries[i]);
            }
            ++kept;
        }
        m_isIndexed = m_isIndexed && kept == m_entries.size();
        using Offset = typename std::vector<Entry>::difference_type;
        m_entries.erase(m_entries.begin() + static_cast<Offset>(kept), m_entries.end());
    }

    /// Index of the nearest entry, NearestIndex::kNone without one.
    std::size_t nearest(const Position& reference, double limitNm)
    {
        return index().nearest(reference, limitNm);
    }
    std::vector<std::size_t> within(const Position& reference, double rangeNm)
    {
        return index().within(reference, rangeNm);
    }

private:
    const NearestIndex& index()
    {
        if (!m_isIndexed) {
            std::vector<IndexedPlace> places;
            places.reserve(m_entries.size());
            for (const Entry& entry : m_entries) {
                places.push_back({entry.latitude(), entry.longitude()});
            }
            m_index = NearestIndex(std::move(places));
            m_isIndexed = true;
        }
        return m_index;
    }

    std::vector<Entry> m_entries;
    NearestIndex m_index;
    bool m_isIndexed = false;
};

} // namespace aviation::weather

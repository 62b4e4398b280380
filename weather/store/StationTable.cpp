#include "weather/store/StationTable.h"

#include <algorithm>
#include <utility>

namespace aviation::weather {

void StationTable::add(std::wstring key, Station station)
{
    m_stations.add(std::move(station));
    m_index.insert_or_assign(std::move(key), m_stations.size());
}

std::size_t StationTable::indexOf(std::wstring_view key) const
{
    const auto found = m_index.find(key);
    return found == m_index.end() ? 0 : found->second;
}

std::vector<Station> StationTable::within(const Position& position, double rangeNm)
{
    std::vector<std::pair<double, std::size_t>> order; // table order breaks a tie
    for (const std::size_t index : m_stations.within(position, rangeNm)) {
        order.emplace_back(searchDistanceNm(position, *m_stations.at(index)), index);
    }
    std::sort(order.begin(), order.end());
    std::vector<Station> stations;
    stations.reserve(order.size());
    for (const auto& [distance, index] : order) {
        stations.push_back(*m_stations.at(index));
    }
    return stations;
}

const Station* StationTable::nearest(const Position& position, double limitNm)
{
    return m_stations.at(m_stations.nearest(position, limitNm));
}

} // namespace aviation::weather

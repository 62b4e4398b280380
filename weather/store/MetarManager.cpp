#include "weather/store/MetarManager.h"

#include <utility>

namespace aviation::weather {

namespace {

constexpr double kMetarLimitNm = 3000.0;

} // namespace

void MetarManager::add(Metar metar)
{
    m_metars.add(std::move(metar));
    nameLast();
}

void MetarManager::nameLast()
{
    m_index.insert_or_assign(m_metars.entries().back().icao(), m_metars.size());
}

void MetarManager::markOutdated(std::wstring_view icao)
{
    const auto found = m_index.find(icao);
    if (found == m_index.end()) {
        return;
    }
    if (Metar* metar = m_metars.at(found->second - 1)) {
        metar->setOutdated(true);
    }
}

bool MetarManager::Nearest(const Position& position, Metar& out)
{
    const Metar* found = std::as_const(m_metars).at(m_metars.nearest(position, kMetarLimitNm));
    if (found == nullptr) {
        out = Metar();
        return false;
    }
    out = *found;
    out.Decode();
    return true;
}

} // namespace aviation::weather

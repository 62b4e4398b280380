#include "weather/store/GribManager.h"

#include <utility>

namespace aviation::weather {

namespace {

constexpr double kGribLimitNm = 250.0;

} // namespace

bool GribManager::add(Grib grib)
{
    const auto [found, isNew] = m_index.try_emplace(grib.key(), m_gribs.size());
    if (isNew) {
        m_gribs.add(std::move(grib));
        return true;
    }
    if (m_gribs.at(found->second) == nullptr) {
        return false;
    }
    m_gribs.replace(found->second, std::move(grib));
    return true;
}

int GribManager::Nearest(const Position& position, Grib& out)
{
    Grib* found = m_gribs.at(m_gribs.nearest(position, kGribLimitNm));
    if (found == nullptr) {
        const int before = out.status();
        out = Grib();
        return before;
    }
    // A record decodes to the same values at any time, so the entry keeps them for the next search.
    if (!found->isDecoded()) {
        found->Decode();
    }
    out = *found;
    return out.status();
}

} // namespace aviation::weather

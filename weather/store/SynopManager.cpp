#include "weather/store/SynopManager.h"

#include <utility>

namespace aviation::weather {

namespace {

constexpr double kSynopLimitNm = 1000.0;
constexpr std::size_t kProgressStep = 100;

/// Whether only the full decoder can say that the report is valid: its header wasn't read, or its
/// station number has slashes, which the header step alone lets pass.
bool needsDecoding(const Synop& synop)
{
    return !synop.isTimeValid() || synop.icao().find(L'/') != std::wstring::npos;
}

bool hasExpired(Synop& synop, std::int64_t now, int maxAgeSeconds)
{
    if (needsDecoding(synop)) {
        synop.Decode();
    }
    return synop.CheckAge(now, maxAgeSeconds) || !synop.isKnown() || !synop.isTimeValid();
}

} // namespace

std::vector<Synop> SynopManager::takeOld(std::int64_t now, int maxAgeSeconds,
                                         const Progress& progress)
{
    std::vector<Synop> old;
    std::size_t walked = 0;
    const std::size_t total = m_synops.size();
    m_synops.eraseIf([&](Synop& synop) {
        const bool isExpired = hasExpired(synop, now, maxAgeSeconds);
        if (isExpired) {
            old.push_back(std::move(synop));
        }
        if (++walked % kProgressStep == 0 && progress) {
            progress(walked, total, old.size());
        }
        return isExpired;
    });
    return old;
}

bool SynopManager::Nearest(const Position& position, Synop& out)
{
    const Synop* found = std::as_const(m_synops).at(m_synops.nearest(position, kSynopLimitNm));
    if (found == nullptr) {
        out = Synop();
        return false;
    }
    out = *found;
    out.Decode();
    return true;
}

} // namespace aviation::weather

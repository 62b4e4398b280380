#include "weather/store/SynopManager.h"

#include <utility>

namespace aviation::weather {

namespace {

constexpr double kSynopLimitNm = 1000.0;
/// A report time below this was never read from a report.
constexpr std::int64_t kFirstReadTime = 1500000;
constexpr std::size_t kProgressStep = 100;

bool IsExpired(Synop& synop, std::int64_t now, int maxAgeSeconds)
{
    if (synop.time() < kFirstReadTime || !synop.isDecoded()) {
        synop.Decode();
    }
    return synop.CheckAge(now, maxAgeSeconds) || !synop.isKnown() || !synop.isTimeValid();
}

} // namespace

int SynopManager::DeleteOld(std::int64_t now, int maxAgeSeconds, const Progress& progress)
{
    std::vector<Synop> synops = m_synops.release();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < synops.size(); ++i) {
        if (!IsExpired(synops[i], now, maxAgeSeconds)) {
            if (kept != i) {
                synops[kept] = std::move(synops[i]);
            }
            ++kept;
        }
        const std::size_t walked = i + 1;
        if (progress && walked % kProgressStep == 0) {
            progress(walked, synops.size(), walked - kept);
        }
    }
    const std::size_t deleted = synops.size() - kept;
    synops.resize(kept);
    m_synops.setEntries(std::move(synops));
    return static_cast<int>(deleted);
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

#pragma once

#include "aviation/Wind.h"

#include <cstdint>
#include <optional>

namespace aviation {
class RandomSource;
}

/// Artificial gusts near the ground: keeps an offset that is drawn anew every three seconds, and
/// the gust wind in force, which takes it over every four. Seconds are those of the process's
/// clock. Used by one thread at a time.
class GustModel
{
public:
    /// Kept, must outlive the model.
    explicit GustModel(aviation::RandomSource& random) : m_random(random) {}

    /// The gust wind to add to `wind` now. Without gusts it is zero, and a calm has none.
    aviation::weather::Wind update(const aviation::weather::Wind& wind, std::int32_t heightAgl,
                                   bool gusty);

    /// The gust offset for `wind`: direction and speed to add to it, gust and fourth value its own.
    /// No gust, (0, 0, -1, 0), from 3001 feet above ground on, and where nothing can be drawn. Nor
    /// has a calm a gust, which leaves the one drawn last as it is.
    aviation::weather::Wind draw(const aviation::weather::Wind& wind, std::int32_t heightAgl);

    /// The offset drawn last.
    const aviation::weather::Wind& windGust() const { return m_windGust; }
    /// What Update() returned last.
    const aviation::weather::Wind& inForce() const { return m_inForce; }

private:
    double drawBelow(double limit);

    aviation::RandomSource& m_random;
    aviation::weather::Wind m_windGust;
    aviation::weather::Wind m_inForce;
    std::optional<std::int64_t> m_lastDraw;   ///< seconds; none: long ago
    std::optional<std::int64_t> m_lastUpdate; ///< seconds; none: long ago
};

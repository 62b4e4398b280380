#pragma once

#include "aviation/Wind.h"

/// One limited step of a wind towards another. Pure functions; differences and limits are worked
/// out in double precision, so that a wind within reach is met exactly.
namespace windsteering {

/// The most that one step may change, both from 0 on.
struct Limits
{
    double degrees = 0.0;
    double knots = 0.0;
};

/// Limits of a step of so many milliseconds. Rates below 0 count as 0.
Limits limitsFor(double stepMs, int degreesPerSecond, int knotsPerSecond);

/// Folds into [0, 360) and stays below 360 in single precision too; not finite values give 0.
float foldedDirection(double degrees);

/// Both winds added, the direction folded; the fourth value is that of the first.
aviation::weather::Wind sum(const aviation::weather::Wind& wind,
                            const aviation::weather::Wind& offset);

/// `current` moved towards `aim` by at most the limits, the direction along the shorter way round.
/// A speed that falls always falls by the whole limit, also past its aim, and climbs back with the
/// next step: that asymmetry is deliberate. Where that would lead below 0 it goes to its aim
/// instead, 0 at least. Gust and fourth value stay. A value of `aim` that isn't
/// a number changes nothing.
aviation::weather::Wind stepped(const aviation::weather::Wind& current,
                                const aviation::weather::Wind& aim, const Limits& limits);

/// From 0 to 360 degrees, both included.
bool isDirectionInRange(const aviation::weather::Wind& wind);
/// From 0 to 200 knots, both included.
bool isSpeedInRange(const aviation::weather::Wind& wind);

} // namespace windsteering

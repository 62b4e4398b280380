#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "weather/output/CompositionOptions.h"
#include "weather/output/records/NewWeather.h"

/// Composes one layered record for one place out of the nearest reports: surface values from the
/// METAR, cloud shapes from the cloud codes of the SYNOP, winds, temperatures and cloud tops from
/// the upper-air levels, the rest by rules of thumb. All reports are expected to be decoded; a
/// report that was never found is a fresh object. Nothing throws; the functions may run on any
/// thread, the random source of the context is used by one at a time.
namespace composition {

/// Fills `record` and returns 0. A METAR that the three-hour rule calls old is replaced by the
/// SYNOP in METAR form first; the caller's objects stay as they are. `magneticVariation` in degrees
/// is added to the surface wind and to nothing else.
int GenerateWeather(const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                    const aviation::weather::Grib& grib, NewWeather& record,
                    double magneticVariation, CompositionContext& context);

/// Wind and temperature layers: two at the surface, above them one for each level that lies at
/// least 1000 feet above the station, as far as the record has room.
void SetWindAndTemperature(const aviation::weather::Metar& metar,
                           const aviation::weather::Synop& synop,
                           const aviation::weather::Grib& grib, NewWeather& record,
                           double magneticVariation, const CompositionOptions& options);

/// Results of SetVisibility. Composing goes on with each of them.
namespace visibilityresult {
inline constexpr int kDone = 0;
inline constexpr int kTooHigh = 1;           ///< the surface layer ends above 30000 metres
inline constexpr int kElevationTooHigh = -1; ///< a station above 30000 feet
} // namespace visibilityresult

/// Surface visibility and, for FSX to X-Plane 10, the layers above it in which the view opens up.
int SetVisibility(const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                  NewWeather& record, const CompositionContext& context);

/// Cloud layers, with a made-up fog layer or cirrus as the options ask. Returns 0: layers are
/// counted to eight before a cirrus joins them, so the record always has room, and no coverage
/// stays above eight octas.
int SetClouds(const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
              const aviation::weather::Grib& grib, NewWeather& record, CompositionContext& context);

} // namespace composition

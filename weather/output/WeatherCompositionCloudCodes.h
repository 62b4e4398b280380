#pragma once

#include "aviation/Cloud.h"
#include "aviation/GribLevel.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "weather/output/CompositionOptions.h"
#include "weather/output/records/NewWeather.h"

#include <cstdint>
#include <optional>
#include <vector>

/// How the cloud codes of a SYNOP (CL, CM and CH of the WMO Manual on Codes, tables 0513, 0515 and
/// 0509) and the weather shape a layer. Pure functions.
namespace composition {

/// CloudLayer::Type.
namespace layertype {
inline constexpr std::uint8_t kCirrus = 1;
inline constexpr std::uint8_t kStratus = 8;
inline constexpr std::uint8_t kCumulus = 9;
inline constexpr std::uint8_t kCumulonimbus = 10;
} // namespace layertype

/// CloudLayer::PrecipType.
namespace preciptype {
inline constexpr std::uint8_t kNone = 0;
inline constexpr std::uint8_t kRain = 1;
inline constexpr std::uint8_t kSnow = 2;
} // namespace preciptype

/// What shaping one cloud looks at.
struct CloudScene
{
    const aviation::weather::Metar& metar;
    const aviation::weather::Synop& synop;
    const std::vector<aviation::weather::GribLevel>& levels;
    const CompositionOptions& options;
};

/// A layer, and the one that mixed clouds put on top of it.
struct ShapedCloud
{
    CloudLayer layer;
    std::optional<CloudLayer> extra;
    bool isCirrus = false; ///< counts as the sky's cirrus, so none is made up
};

/// Shapes `layer`, made from `cloud`, by the code of the cloud's height band: up to 8000 feet the
/// low, up to 25000 the middle, above it the high one. Low and middle codes leave towering and
/// thunder clouds alone.
ShapedCloud shapeByCloudCode(const CloudLayer& layer, const aviation::weather::Cloud& cloud,
                             const CloudScene& scene);

/// Gives a low layer the precipitation of the phenomena text and a top by its intensity, then by
/// the humidity of the levels. From 3001 metres on it only loses its rate.
void AdjustLowCloud(CloudLayer& layer, const CloudScene& scene);

/// Ends the layer where the air above its base stops being saturated; leaves it alone when the
/// levels don't show it.
void CloudTopFromHumidity(CloudLayer& layer,
                          const std::vector<aviation::weather::GribLevel>& levels);

/// Whole metres above sea level of a height in feet above the station, truncated.
std::int64_t metresAboveSea(std::int32_t elevationFeet, std::int32_t feetAboveStation);

} // namespace composition

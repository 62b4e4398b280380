#include "weather/output/WeatherCompositionCloudCodes.h"

#include "weather/output/CompositionRules.h"
#include "weather/output/WeatherCompositionNumbers.h"

#include <array>

namespace composition {

using aviation::weather::Cloud;
using aviation::weather::GribLevel;
using aviation::weather::Metar;

namespace {

/// What a top is measured from: the cloud's base in whole metres, which truncates, or the layer's
/// lower height, which was rounded up.
enum class From
{
    Floor,
    Lower
};

/// One row of a code table. Heights and deviations in metres.
struct Shape
{
    std::uint8_t type = 0;
    std::uint8_t topShape = 0;
    From from = From::Lower;
    std::uint16_t height = 0;
    std::uint16_t deviation = 0;
    std::uint8_t turbulence = 0; ///< 0 keeps what the layer has
};

/// The layer that mixed clouds add; height 0 means none.
struct ExtraShape
{
    std::uint8_t type = 0;
    std::uint8_t topShape = 0;
    std::uint16_t deviation = 0;
    std::uint16_t height = 0;
};

constexpr int kCumulonimbusCode = 9; // of the low clouds
constexpr int kMixedLayerCode = 4;   // of the low clouds: spread-out cumulus changes its main layer
constexpr Shape kMixedLayer{layertype::kStratus, 0, From::Floor, 200};

constexpr std::array<Shape, 10> kLowShapes{{{layertype::kCumulus, 0, From::Floor, 300},
                                            {layertype::kCumulus, 0, From::Floor, 300},
                                            {layertype::kCumulus, 0, From::Floor, 1000},
                                            {layertype::kCumulus, 1, From::Floor, 6000},
                                            {layertype::kCumulus, 1, From::Floor, 500},
                                            {layertype::kStratus, 0, From::Lower, 250},
                                            {layertype::kStratus, 0, From::Floor, 1000},
                                            {layertype::kStratus, 0, From::Floor, 200},
                                            {layertype::kStratus, 1, From::Floor, 200, 50},
                                            {layertype::kCumulus, 2, From::Lower, 3000, 2000, 3}}};
constexpr std::array<ExtraShape, 10> kLowExtras{{{},
                                                 {},
                                                 {},
                                                 {},
                                                 {layertype::kCumulus, 1, 0, 300},
                                                 {layertype::kCumulus, 1, 50, 250},
                                                 {},
                                                 {layertype::kCumulus, 0, 0, 1000},
                                                 {layertype::kCumulus, 0, 200, 1000},
                                                 {layertype::kStratus, 2, 0, 300}}};
constexpr std::array<Shape, 10> kMiddleShapes{{{layertype::kStratus, 0, From::Lower, 500},
                                               {layertype::kStratus, 0, From::Lower, 500},
                                               {layertype::kStratus, 0, From::Lower, 3000},
                                               {layertype::kCumulus, 0, From::Lower, 500},
                                               {layertype::kCumulus, 0, From::Lower, 500},
                                               {layertype::kCumulus, 0, From::Lower, 500},
                                               {layertype::kCumulus, 0, From::Lower, 500},
                                               {layertype::kCumulus, 0, From::Lower, 500},
                                               {layertype::kCumulus, 1, From::Lower, 1000},
                                               {layertype::kCumulus, 1, From::Lower, 2000}}};
constexpr std::array<ExtraShape, 10> kMiddleExtras{{{},
                                                    {},
                                                    {},
                                                    {},
                                                    {},
                                                    {},
                                                    {},
                                                    {layertype::kStratus, 0, 0, 500},
                                                    {},
                                                    {layertype::kStratus, 0, 0, 2000}}};
constexpr std::array<Shape, 10> kHighShapes{{{layertype::kCirrus, 0, From::Lower, 50},
                                             {layertype::kCirrus, 0, From::Lower, 50},
                                             {layertype::kCirrus, 0, From::Lower, 300},
                                             {layertype::kCirrus, 0, From::Lower, 600},
                                             {layertype::kCirrus, 0, From::Lower, 100},
                                             {layertype::kCirrus, 0, From::Lower, 300},
                                             {layertype::kCirrus, 0, From::Lower, 1000},
                                             {layertype::kStratus, 0, From::Lower, 100},
                                             {layertype::kStratus, 0, From::Lower, 100},
                                             {layertype::kCumulus, 0, From::Lower, 300}}};
constexpr int kNoHighCloudCode = 10;

template <typename Row>
const Row* rowOf(const std::array<Row, 10>& table, int code)
{
    return code >= 0 && code < 10 ? &table[static_cast<std::size_t>(code)] : nullptr;
}

void applyShape(const Shape& shape, std::int64_t floorMetres, CloudLayer& layer)
{
    const std::int64_t from = shape.from == From::Floor ? floorMetres : layer.LowerAlt;
    layer.Type = shape.type;
    layer.TopShape = shape.topShape;
    layer.UpperAlt = word(from + shape.height);
    layer.Dev = shape.deviation;
    layer.Turbulence = shape.turbulence > 0 ? shape.turbulence : layer.Turbulence;
}

std::optional<CloudLayer> extraLayer(const ExtraShape* shape, const CloudLayer& below,
                                     const CompositionOptions& options)
{
    if (!options.mixedClouds || shape == nullptr || shape->height == 0) {
        return std::nullopt;
    }
    CloudLayer layer;
    layer.Cover = below.Cover;
    layer.LowerAlt = word(below.UpperAlt + 1);
    layer.UpperAlt = word(layer.LowerAlt + shape->height);
    layer.Type = shape->type;
    layer.TopShape = shape->topShape;
    layer.Dev = shape->deviation;
    return layer;
}

/// The weather goes to the layer written last, but a cumulonimbus keeps it below its stratus.
void shapeLow(ShapedCloud& shaped, const Cloud& cloud, const CloudScene& scene)
{
    const int code = scene.synop.lowCode();
    const bool mixedLayer = code == kMixedLayerCode && scene.options.mixedClouds;
    if (const Shape* row = mixedLayer ? &kMixedLayer : rowOf(kLowShapes, code)) {
        applyShape(*row, metresAboveSea(scene.metar.elevation(), cloud.base), shaped.layer);
    }
    if (code == kCumulonimbusCode) {
        AdjustLowCloud(shaped.layer, scene);
    }
    shaped.extra = extraLayer(rowOf(kLowExtras, code), shaped.layer, scene.options);
    if (code != kCumulonimbusCode) {
        AdjustLowCloud(shaped.extra ? *shaped.extra : shaped.layer, scene);
    }
}

void shapeMiddle(ShapedCloud& shaped, const CloudScene& scene)
{
    const int code = scene.synop.middleCode();
    if (const Shape* row = rowOf(kMiddleShapes, code)) {
        applyShape(*row, 0, shaped.layer);
    }
    shaped.extra = extraLayer(rowOf(kMiddleExtras, code), shaped.layer, scene.options);
}

void shapeHigh(ShapedCloud& shaped, const CloudScene& scene)
{
    const int code = scene.synop.highCode();
    shaped.isCirrus = code != kNoHighCloudCode;
    shaped.layer.TopShape = 0;
    if (const Shape* row = rowOf(kHighShapes, code)) {
        applyShape(*row, 0, shaped.layer);
    }
}

std::uint8_t showerType(const Metar& metar)
{
    constexpr float kSnowBelow = 1.0F; // degrees Celsius
    return metar.temperature() < kSnowBelow ? preciptype::kSnow : preciptype::kRain;
}

void precipitate(CloudLayer& layer, std::uint8_t type, int height)
{
    layer.PrecipType = type;
    layer.UpperAlt = word(height + layer.LowerAlt);
}

} // namespace

std::int64_t metresAboveSea(std::int32_t elevationFeet, std::int32_t feetAboveStation)
{
    return wholeMetres(static_cast<double>(elevationFeet) + feetAboveStation);
}

void CloudTopFromHumidity(CloudLayer& layer, const std::vector<GribLevel>& levels)
{
    constexpr double kCloudyHumidity = 80.0; // percent
    if (const auto top =
            topFromHumidity(levels, layer.LowerAlt, aviation::kFeetPerMetre, kCloudyHumidity))
    {
        layer.UpperAlt = word(truncated(*top));
    }
}

void AdjustLowCloud(CloudLayer& layer, const CloudScene& scene)
{
    constexpr int kHighestAdjusted = 3000; // metres
    constexpr int kShowerHeight = 2000;    // metres for each step of intensity
    constexpr int kThunderHeight = 3000;
    constexpr std::uint8_t kUnlikelyCover = 11;
    const Metar& metar = scene.metar;
    const int intensity = metar.intensity();
    if (layer.LowerAlt > kHighestAdjusted) {
        layer.PrecipRate = 0;
        return;
    }
    layer.PrecipBase = 0;
    layer.PrecipRate = octet(intensity);
    layer.PrecipType = preciptype::kNone;
    if (metar.phenomenaContain(L"RA") || metar.phenomenaContain(L"DZ")) {
        precipitate(layer, preciptype::kRain, intensity * kShowerHeight);
        layer.Dev = 0;
    }
    if (metar.phenomenaContain(L"SN")) {
        precipitate(layer, preciptype::kSnow, intensity * kShowerHeight);
        layer.Dev = 100;
    }
    if (metar.phenomenaContain(L"TS")) {
        precipitate(layer, showerType(metar), intensity * kThunderHeight);
        layer.Type = layertype::kCumulonimbus;
        layer.Dev = 100;
        layer.Turbulence = scene.options.turbulenceInCloud ? 3 : layer.Turbulence;
    }
    if (metar.phenomenaContain(L"SH")) {
        precipitate(layer, showerType(metar), intensity * kShowerHeight);
    }
    if (layer.Cover > kUnlikelyCover) {
        layer.Cover = 7;
        return;
    }
    CloudTopFromHumidity(layer, scene.levels);
}

ShapedCloud shapeByCloudCode(const CloudLayer& layer, const Cloud& cloud, const CloudScene& scene)
{
    constexpr std::int32_t kLowFeet = 8000;
    constexpr std::int32_t kMiddleFeet = 25000;
    ShapedCloud shaped{layer, std::nullopt, false};
    const bool ordinary = cloud.type == aviation::weather::cloudtype::kOrdinary;
    if (cloud.base > kMiddleFeet) {
        shapeHigh(shaped, scene);
    } else if (ordinary && cloud.base > kLowFeet) {
        shapeMiddle(shaped, scene);
    } else if (ordinary) {
        shapeLow(shaped, cloud, scene);
    }
    return shaped;
}

} // namespace composition

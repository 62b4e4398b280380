#include "weather/output/CompositionRules.h"
#include "weather/output/WeatherComposition.h"
#include "weather/output/WeatherCompositionCloudCodes.h"
#include "weather/output/WeatherCompositionNumbers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

namespace composition {

using aviation::weather::Cloud;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

constexpr std::size_t kMostLayers = 8; // before the made-up cirrus
static_assert(kMostLayers + 1 <= kCloudLayerSlots);

/// The layers in the order in which they are made. Counts all, keeps what the record can hold.
class LayerList
{
public:
    void add(const ShapedCloud& shaped)
    {
        store(shaped.layer);
        ++m_layers;
        if (shaped.extra) {
            store(*shaped.extra);
            ++m_extras;
        }
        m_hasCirrus = m_hasCirrus || shaped.isCirrus;
    }
    bool hasCirrus() const { return m_hasCirrus; }

    /// The layers that count: if there are more than eight with the extra ones, the first eight.
    std::span<const CloudLayer> counted() const
    {
        return std::span(m_slots).first(std::min(m_layers + m_extras, kMostLayers));
    }

private:
    void store(const CloudLayer& layer)
    {
        if (m_used < m_slots.size()) {
            m_slots[m_used++] = layer;
        }
    }

    std::array<CloudLayer, kCloudLayerSlots> m_slots{};
    std::size_t m_used = 0;
    std::size_t m_layers = 0;
    std::size_t m_extras = 0;
    bool m_hasCirrus = false;
};

double feetAboveSea(const Metar& metar, std::int32_t feetAboveStation)
{
    return static_cast<double>(metar.elevation()) + feetAboveStation;
}

std::int64_t metreAboveGround(const Metar& metar)
{
    return truncated(aviation::metresFromFeet(metar.elevation()) + 1.0);
}

bool isFoggy(const Metar& metar, const CompositionOptions& options)
{
    constexpr std::int32_t kFogVisibility = 2000; // metres
    constexpr std::int32_t kLowCloudFeet = 1000;
    const bool lowCloud =
        std::any_of(metar.clouds().begin(), metar.clouds().end(),
                    [](const Cloud& cloud) { return cloud.base < kLowCloudFeet; });
    return options.simulator == aviation::fsid::kFs2004 && options.generateStratus && !lowCloud
           && metar.visibility() < kFogVisibility
           && (metar.phenomenaContain(L"FG") || metar.phenomenaContain(L"BR"));
}

CloudLayer fogLayer(const Metar& metar)
{
    CloudLayer layer;
    layer.Cover = 8;
    layer.Type = layertype::kStratus;
    layer.LowerAlt = word(metreAboveGround(metar));
    layer.UpperAlt = word(layer.LowerAlt + 300);
    return layer;
}

/// Whole degrees between temperature and dew point.
std::int64_t fairWeatherSpread(const Metar& metar)
{
    return truncated(static_cast<double>(metar.temperature())
                     - static_cast<double>(metar.dewPoint()));
}

/// The limit is compared with the degrees and not with the height above them, on purpose: real air
/// never gets there, and skies under CAVOK stay clear.
bool hasFairWeatherCumulus(const Metar& metar, const CompositionOptions& options)
{
    constexpr std::int64_t kLeastSpread = 5000;
    return metar.clouds().empty() && metar.isCavok() && options.cavokCover > 0
           && fairWeatherSpread(metar) > kLeastSpread;
}

CloudLayer fairWeatherCumulus(const Metar& metar, const CompositionOptions& options)
{
    constexpr double kFeetPerDegree = 400.0;
    const double feet =
        metar.elevation() + static_cast<double>(fairWeatherSpread(metar)) * kFeetPerDegree;
    CloudLayer layer;
    layer.Type = layertype::kCumulus;
    layer.LowerAlt = word(roundedUp(aviation::metresFromFeet(feet)));
    layer.UpperAlt = word(layer.LowerAlt + 100);
    layer.Cover = octet(options.cavokCover);
    return layer;
}

/// Rain, snow and showers below 10000 feet; the later ones overrule the earlier.
void addPrecipitation(CloudLayer& layer, const Metar& metar, bool turbulent)
{
    const std::uint8_t rate = octet(metar.intensity());
    if (metar.phenomenaContain(L"RA") || metar.phenomenaContain(L"DZ")) {
        layer.PrecipType = preciptype::kRain;
        layer.PrecipRate = rate;
        layer.UpperAlt = word(layer.LowerAlt + 4000);
        layer.Turbulence = turbulent ? 2 : layer.Turbulence;
    }
    if (metar.phenomenaContain(L"SN") || metar.phenomenaContain(L"SG")) {
        layer.PrecipType = preciptype::kSnow;
        layer.PrecipRate = rate;
        layer.UpperAlt = word(layer.LowerAlt + 3000);
        layer.Icing = 2;
        layer.Turbulence = turbulent ? 1 : layer.Turbulence;
    }
    if (metar.phenomenaContain(L"SH")) {
        layer.PrecipType = metar.temperature() > 0.0F ? preciptype::kRain : preciptype::kSnow;
        layer.PrecipRate = rate;
        layer.UpperAlt = 6000; // above the sea, whatever the base
        layer.Turbulence = turbulent ? 1 : layer.Turbulence;
    }
}

void addThunder(CloudLayer& layer, const Metar& metar, std::int32_t base, bool turbulent)
{
    constexpr std::int32_t kHighestBaseFeet = 30000;
    constexpr double kThunderRate = 1.6;
    if (base >= kHighestBaseFeet || !metar.phenomenaContain(L"TS")) {
        return;
    }
    layer.PrecipType = preciptype::kRain;
    layer.PrecipRate = octet(truncated(metar.intensity() * kThunderRate));
    layer.UpperAlt = 10000;
    layer.Type = layertype::kCumulonimbus;
    layer.TopShape = 2;
    layer.Turbulence = turbulent ? 3 : layer.Turbulence;
}

/// Towering and thunder clouds end as cumulus, whatever the phenomena made of them before.
void shapeByType(CloudLayer& layer, const Cloud& cloud, std::int64_t floorMetres)
{
    namespace cloudtype = aviation::weather::cloudtype;
    const auto shape = [&](int height, std::uint8_t turbulence, std::uint8_t topShape) {
        layer.Type = layertype::kCumulus;
        layer.Turbulence = turbulence;
        layer.TopShape = topShape;
        layer.UpperAlt = word(floorMetres + height);
    };
    if (cloud.type == cloudtype::kToweringCumulus) {
        shape(4000, 3, 1);
    } else if (cloud.type == cloudtype::kCumulonimbus) {
        shape(2000, 1, 2);
    } else if (cloud.type == cloudtype::kCumulus) {
        shape(1000, 2, 1);
    }
}

CloudLayer plainLayer(const Cloud& cloud, const Metar& metar, const CompositionOptions& options)
{
    constexpr float kIcingBelow = 3.0F;              // degrees Celsius
    constexpr std::int32_t kHighestRainFeet = 10000; // above the station
    constexpr double kCirrusFeet = 28000.0;          // above the sea
    const bool turbulent = options.turbulenceInCloud;
    CloudLayer layer;
    layer.Cover = cloud.coverage > 0 ? cloud.coverage : octet(options.cavokCover);
    layer.LowerAlt = word(roundedUp(aviation::metresFromFeet(feetAboveSea(metar, cloud.base))));
    layer.Icing = metar.temperature() < kIcingBelow ? 1 : 0;
    layer.Turbulence = turbulent ? 1 : 0;
    layer.UpperAlt = word(layer.LowerAlt + 500);
    if (cloud.base < kHighestRainFeet) {
        addPrecipitation(layer, metar, turbulent);
    }
    layer.PrecipBase = signedWord(metreAboveGround(metar));
    layer.Type = layertype::kCumulus;
    addThunder(layer, metar, cloud.base, turbulent);
    if (feetAboveSea(metar, cloud.base) > kCirrusFeet) {
        layer.Type = layertype::kCirrus;
        layer.Turbulence = 0;
        layer.PrecipType = 0;
    }
    return layer;
}

void endBelow(CloudLayer& layer, double nextBaseFeet)
{
    const double next = aviation::metresFromFeet(nextBaseFeet);
    if (layer.UpperAlt > next) {
        layer.UpperAlt = word(truncated(next + 1.0));
    }
}

void addReportedClouds(LayerList& list, const CloudScene& scene)
{
    constexpr double kNearSynopNm = 200.0;
    const Metar& metar = scene.metar;
    const bool codesHold = spreadNm(metar, scene.synop) < kNearSynopNm;
    const std::vector<Cloud>& clouds = metar.clouds();
    for (std::size_t i = 0; i < clouds.size(); ++i) {
        CloudLayer layer = plainLayer(clouds[i], metar, scene.options);
        if (i + 1 < clouds.size()) {
            endBelow(layer, feetAboveSea(metar, clouds[i + 1].base));
        }
        shapeByType(layer, clouds[i], metresAboveSea(metar.elevation(), clouds[i].base));
        list.add(codesHold ? shapeByCloudCode(layer, clouds[i], scene)
                           : ShapedCloud{layer, std::nullopt, false});
    }
}

/// Writes the made-up cirrus after `count` layers; returns the new count.
std::size_t addRandomCirrus(NewWeather& record, std::size_t count, aviation::RandomSource& random)
{
    const RandomCirrus cirrus = drawCirrus(random);
    if (cirrus.cover == 0) {
        return count;
    }
    CloudLayer& layer = record.Cloud[count];
    layer = {};
    layer.Cover = octet(cirrus.cover);
    layer.LowerAlt = word(wholeMetres(cirrus.baseFeet));
    layer.UpperAlt = word(layer.LowerAlt + 100);
    layer.Type = layertype::kCirrus;
    return count + 1;
}

/// Keeps a layer below the next one, of which it may move the base.
void pushApart(CloudLayer& layer, CloudLayer* next)
{
    constexpr int kGap = 3; // metres
    const int nextBase = next != nullptr ? next->LowerAlt : 0;
    if (next != nullptr && layer.UpperAlt >= nextBase) {
        layer.UpperAlt = word(nextBase - kGap);
    }
    if (layer.LowerAlt > layer.UpperAlt) {
        layer.UpperAlt = word(layer.LowerAlt + 100);
    }
    if (next != nullptr && nextBase < layer.UpperAlt) {
        next->LowerAlt = word(layer.UpperAlt + kGap);
    }
}

void cleanUp(std::span<CloudLayer> layers, const CompositionOptions& options)
{
    constexpr std::uint8_t kOvercast = 8;
    constexpr int kHighestPrecipitation = 9000; // metres
    constexpr int kThickestStratus = 4000;      // metres
    for (std::size_t i = 0; i < layers.size(); ++i) {
        CloudLayer& layer = layers[i];
        layer.Cover = std::min(layer.Cover, kOvercast);
        pushApart(layer, i + 1 < layers.size() ? &layers[i + 1] : nullptr);
        if (layer.LowerAlt > kHighestPrecipitation) {
            layer.PrecipType = 0;
        }
        if (layer.Type == layertype::kStratus && layer.UpperAlt - layer.LowerAlt > kThickestStratus)
        {
            layer.UpperAlt = word(layer.LowerAlt + kThickestStratus);
        }
        layer.Icing = options.icingInClouds ? layer.Icing : std::uint8_t{0};
        layer.Turbulence = options.turbulenceInCloud ? layer.Turbulence : std::uint8_t{0};
    }
}

} // namespace

int SetClouds(const Metar& metar, const Synop& synop, const Grib& grib, NewWeather& record,
              CompositionContext& context)
{
    const CompositionOptions& options = context.options;
    LayerList list;
    if (isFoggy(metar, options)) {
        list.add({fogLayer(metar), std::nullopt, false});
    }
    if (hasFairWeatherCumulus(metar, options)) {
        list.add({fairWeatherCumulus(metar, options), std::nullopt, false});
    }
    addReportedClouds(list, {metar, synop, grib.levels(), options});
    record.Cloud = {};
    std::ranges::copy(list.counted(), record.Cloud.begin());
    std::size_t count = list.counted().size();
    if (options.generateCirrus && !list.hasCirrus()) {
        count = addRandomCirrus(record, count, context.random);
    }
    record.nCloudCtr = static_cast<std::int32_t>(count);
    cleanUp(std::span(record.Cloud).first(count), options);
    return 0;
}

} // namespace composition

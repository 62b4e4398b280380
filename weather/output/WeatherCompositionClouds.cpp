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

double FeetAboveSea(const Metar& metar, std::int32_t feetAboveStation)
{
    return static_cast<double>(metar.elevation()) + feetAboveStation;
}

std::int64_t MetreAboveGround(const Metar& metar)
{
    return Truncated(aviation::MetresFromFeet(metar.elevation()) + 1.0);
}

bool IsFoggy(const Metar& metar, const CompositionOptions& options)
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

CloudLayer FogLayer(const Metar& metar)
{
    CloudLayer layer;
    layer.Cover = 8;
    layer.Type = layertype::kStratus;
    layer.LowerAlt = Word(MetreAboveGround(metar));
    layer.UpperAlt = Word(layer.LowerAlt + 300);
    return layer;
}

/// Whole degrees between temperature and dew point.
std::int64_t FairWeatherSpread(const Metar& metar)
{
    return Truncated(static_cast<double>(metar.temperature())
                     - static_cast<double>(metar.dewPoint()));
}

/// The limit is compared with the degrees and not with the height above them, on purpose: real air
/// never gets there, and skies under CAVOK stay clear.
bool HasFairWeatherCumulus(const Metar& metar, const CompositionOptions& options)
{
    constexpr std::int64_t kLeastSpread = 5000;
    return metar.clouds().empty() && metar.isCavok() && options.cavokCover > 0
           && FairWeatherSpread(metar) > kLeastSpread;
}

CloudLayer FairWeatherCumulus(const Metar& metar, const CompositionOptions& options)
{
    constexpr double kFeetPerDegree = 400.0;
    const double feet =
        metar.elevation() + static_cast<double>(FairWeatherSpread(metar)) * kFeetPerDegree;
    CloudLayer layer;
    layer.Type = layertype::kCumulus;
    layer.LowerAlt = Word(RoundedUp(aviation::MetresFromFeet(feet)));
    layer.UpperAlt = Word(layer.LowerAlt + 100);
    layer.Cover = Octet(options.cavokCover);
    return layer;
}

/// Rain, snow and showers below 10000 feet; the later ones overrule the earlier.
void AddPrecipitation(CloudLayer& layer, const Metar& metar, bool turbulent)
{
    const std::uint8_t rate = Octet(metar.intensity());
    if (metar.phenomenaContain(L"RA") || metar.phenomenaContain(L"DZ")) {
        layer.PrecipType = preciptype::kRain;
        layer.PrecipRate = rate;
        layer.UpperAlt = Word(layer.LowerAlt + 4000);
        layer.Turbulence = turbulent ? 2 : layer.Turbulence;
    }
    if (metar.phenomenaContain(L"SN") || metar.phenomenaContain(L"SG")) {
        layer.PrecipType = preciptype::kSnow;
        layer.PrecipRate = rate;
        layer.UpperAlt = Word(layer.LowerAlt + 3000);
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

void AddThunder(CloudLayer& layer, const Metar& metar, std::int32_t base, bool turbulent)
{
    constexpr std::int32_t kHighestBaseFeet = 30000;
    constexpr double kThunderRate = 1.6;
    if (base >= kHighestBaseFeet || !metar.phenomenaContain(L"TS")) {
        return;
    }
    layer.PrecipType = preciptype::kRain;
    layer.PrecipRate = Octet(Truncated(metar.intensity() * kThunderRate));
    layer.UpperAlt = 10000;
    layer.Type = layertype::kCumulonimbus;
    layer.TopShape = 2;
    layer.Turbulence = turbulent ? 3 : layer.Turbulence;
}

/// Towering and thunder clouds end as cumulus, whatever the phenomena made of them before.
void ShapeByType(CloudLayer& layer, const Cloud& cloud, std::int64_t floorMetres)
{
    namespace cloudtype = aviation::weather::cloudtype;
    const auto shape = [&](int height, std::uint8_t turbulence, std::uint8_t topShape) {
        layer.Type = layertype::kCumulus;
        layer.Turbulence = turbulence;
        layer.TopShape = topShape;
        layer.UpperAlt = Word(floorMetres + height);
    };
    if (cloud.type == cloudtype::kToweringCumulus) {
        shape(4000, 3, 1);
    } else if (cloud.type == cloudtype::kCumulonimbus) {
        shape(2000, 1, 2);
    } else if (cloud.type == cloudtype::kCumulus) {
        shape(1000, 2, 1);
    }
}

CloudLayer PlainLayer(const Cloud& cloud, const Metar& metar, const CompositionOptions& options)
{
    constexpr float kIcingBelow = 3.0F;              // degrees Celsius
    constexpr std::int32_t kHighestRainFeet = 10000; // above the station
    constexpr double kCirrusFeet = 28000.0;          // above the sea
    const bool turbulent = options.turbulenceInCloud;
    CloudLayer layer;
    layer.Cover = cloud.coverage > 0 ? cloud.coverage : Octet(options.cavokCover);
    layer.LowerAlt = Word(RoundedUp(aviation::MetresFromFeet(FeetAboveSea(metar, cloud.base))));
    layer.Icing = metar.temperature() < kIcingBelow ? 1 : 0;
    layer.Turbulence = turbulent ? 1 : 0;
    layer.UpperAlt = Word(layer.LowerAlt + 500);
    if (cloud.base < kHighestRainFeet) {
        AddPrecipitation(layer, metar, turbulent);
    }
    layer.PrecipBase = SignedWord(MetreAboveGround(metar));
    layer.Type = layertype::kCumulus;
    AddThunder(layer, metar, cloud.base, turbulent);
    if (FeetAboveSea(metar, cloud.base) > kCirrusFeet) {
        layer.Type = layertype::kCirrus;
        layer.Turbulence = 0;
        layer.PrecipType = 0;
    }
    return layer;
}

void EndBelow(CloudLayer& layer, double nextBaseFeet)
{
    const double next = aviation::MetresFromFeet(nextBaseFeet);
    if (layer.UpperAlt > next) {
        layer.UpperAlt = Word(Truncated(next + 1.0));
    }
}

void AddReportedClouds(LayerList& list, const CloudScene& scene)
{
    constexpr double kNearSynopNm = 200.0;
    const Metar& metar = scene.metar;
    const bool codesHold = SpreadNm(metar, scene.synop) < kNearSynopNm;
    const std::vector<Cloud>& clouds = metar.clouds();
    for (std::size_t i = 0; i < clouds.size(); ++i) {
        CloudLayer layer = PlainLayer(clouds[i], metar, scene.options);
        if (i + 1 < clouds.size()) {
            EndBelow(layer, FeetAboveSea(metar, clouds[i + 1].base));
        }
        ShapeByType(layer, clouds[i], MetresAboveSea(metar.elevation(), clouds[i].base));
        list.add(codesHold ? ShapeByCloudCode(layer, clouds[i], scene)
                           : ShapedCloud{layer, std::nullopt, false});
    }
}

/// Writes the made-up cirrus behind `count` layers; returns the new count.
std::size_t AddRandomCirrus(NewWeather& record, std::size_t count, aviation::RandomSource& random)
{
    const RandomCirrus cirrus = DrawCirrus(random);
    if (cirrus.cover == 0) {
        return count;
    }
    CloudLayer& layer = record.Cloud[count];
    layer = {};
    layer.Cover = Octet(cirrus.cover);
    layer.LowerAlt = Word(WholeMetres(cirrus.baseFeet));
    layer.UpperAlt = Word(layer.LowerAlt + 100);
    layer.Type = layertype::kCirrus;
    return count + 1;
}

/// Keeps a layer below the next one, of which it may move the base.
void PushApart(CloudLayer& layer, CloudLayer* next)
{
    constexpr int kGap = 3; // metres
    const int nextBase = next != nullptr ? next->LowerAlt : 0;
    if (next != nullptr && layer.UpperAlt >= nextBase) {
        layer.UpperAlt = Word(nextBase - kGap);
    }
    if (layer.LowerAlt > layer.UpperAlt) {
        layer.UpperAlt = Word(layer.LowerAlt + 100);
    }
    if (next != nullptr && nextBase < layer.UpperAlt) {
        next->LowerAlt = Word(layer.UpperAlt + kGap);
    }
}

void CleanUp(std::span<CloudLayer> layers, const CompositionOptions& options)
{
    constexpr std::uint8_t kOvercast = 8;
    constexpr int kHighestPrecipitation = 9000; // metres
    constexpr int kThickestStratus = 4000;      // metres
    for (std::size_t i = 0; i < layers.size(); ++i) {
        CloudLayer& layer = layers[i];
        layer.Cover = std::min(layer.Cover, kOvercast);
        PushApart(layer, i + 1 < layers.size() ? &layers[i + 1] : nullptr);
        if (layer.LowerAlt > kHighestPrecipitation) {
            layer.PrecipType = 0;
        }
        if (layer.Type == layertype::kStratus && layer.UpperAlt - layer.LowerAlt > kThickestStratus)
        {
            layer.UpperAlt = Word(layer.LowerAlt + kThickestStratus);
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
    if (IsFoggy(metar, options)) {
        list.add({FogLayer(metar), std::nullopt, false});
    }
    if (HasFairWeatherCumulus(metar, options)) {
        list.add({FairWeatherCumulus(metar, options), std::nullopt, false});
    }
    AddReportedClouds(list, {metar, synop, grib.levels(), options});
    record.Cloud = {};
    std::ranges::copy(list.counted(), record.Cloud.begin());
    std::size_t count = list.counted().size();
    if (options.generateCirrus && !list.hasCirrus()) {
        count = AddRandomCirrus(record, count, context.random);
    }
    record.nCloudCtr = static_cast<std::int32_t>(count);
    CleanUp(std::span(record.Cloud).first(count), options);
    return 0;
}

} // namespace composition

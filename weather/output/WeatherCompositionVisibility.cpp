#include "app/base/LogLevel.h"
#include "app/base/SettingsValues.h"
#include "weather/output/CompositionRules.h"
#include "weather/output/WeatherComposition.h"
#include "weather/output/WeatherCompositionNumbers.h"

#include <array>
#include <span>

namespace composition {

using aviation::MetresToHundredthsOfMile;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

constexpr std::int32_t kTenKilometresOrMore = 9999; // how reports write it
constexpr int kEndOfLowHaze = 500;                  // metres

/// A range of visibilities, all in hundredths of a mile, and the step that is shown for it.
struct VisibilityStep
{
    int from;
    int to;
    int shown;
};

constexpr std::array<VisibilityStep, 8> kSurfaceSteps{{{200, 371, 372},
                                                       {373, 496, 497},
                                                       {498, 993, 994},
                                                       {995, 2174, 2175},
                                                       {2176, 2982, 2983},
                                                       {2984, 3976, 3977},
                                                       {3978, 4970, 4971},
                                                       // clear air collapses to 10 km on purpose,
                                                       // the layers above open up again
                                                       {4972, 65535, 622}}};
constexpr int kUpperStepFrom = 4972;
constexpr int kUpperStep = 6214; // 100 km

std::uint16_t snapped(int range)
{
    for (const VisibilityStep& step : kSurfaceSteps) {
        if (range >= step.from && range <= step.to) {
            return word(step.shown);
        }
    }
    return word(range);
}

std::uint16_t snappedAloft(int range)
{
    return range >= kUpperStepFrom ? word(kUpperStep) : snapped(range);
}

std::uint16_t surfaceRange(const Metar& metar, const Synop& synop,
                           const CompositionOptions& options)
{
    constexpr std::int32_t kNoVisibility = 99999;
    constexpr double kNearSynopNm = 50.0;
    constexpr std::int64_t kLargest = 65535;
    if (metar.visibility() != kTenKilometresOrMore) {
        return MetresToHundredthsOfMile(metar.visibility());
    }
    if (synop.visibility() != kNoVisibility && synop.visibility() > kTenKilometresOrMore
        && spreadNm(metar, synop) < kNearSynopNm)
    {
        return word(std::min(kLargest, truncated(synop.visibility() / 1.592 / 10.0)));
    }
    return MetresToHundredthsOfMile(static_cast<double>(options.vis9999) * 1000.0);
}

std::uint16_t hazeTop(const Metar& metar, std::uint16_t top)
{
    constexpr std::int32_t kLowCloudFeet = 6000;
    if (metar.clouds().empty() || metar.clouds().front().base >= kLowCloudFeet) {
        return top;
    }
    const double cloudFeet = static_cast<double>(metar.elevation()) + metar.clouds().front().base;
    const std::uint16_t cloud = word(wholeMetres(cloudFeet));
    return cloud > 3000 || cloud < kEndOfLowHaze ? word(kEndOfLowHaze) : cloud;
}

/// Up to five layers on top of the surface layer. Returns the height at which the last one ends.
int setUpperLayers(NewWeather& record, int thickness)
{
    constexpr int kLayers = 5;
    constexpr int kHighestTop = 4000; // metres; the layer that passes it is the last
    int lower = record.Vis.UpperAlt + 1;
    int range = record.Vis.Range + 100;
    record.nUpperVisCtr = 0;
    for (VisLayer& layer : std::span(record.UpperVis).first(kLayers)) {
        layer = {};
        layer.LowerAlt = signedWord(lower);
        layer.UpperAlt = word(lower + thickness);
        layer.Range = snappedAloft(range);
        ++record.nUpperVisCtr;
        lower += thickness;
        range = layer.Range + 1000;
        if (layer.UpperAlt > kHighestTop) {
            break;
        }
    }
    return lower;
}

void setHighestLayer(NewWeather& record, int lower, const CompositionContext& context)
{
    const CompositionOptions& options = context.options;
    if (context.log) {
        context.log(
            QStringLiteral("(WeatherWrapper) - set max vis: %1km").arg(options.visMax / 1000),
            loglevel::kDebug);
    }
    VisLayer& layer = record.UpperVis[static_cast<std::size_t>(record.nUpperVisCtr++)];
    layer = {};
    layer.LowerAlt = signedWord(lower);
    layer.UpperAlt = options.interfaceType == aviation::interfaceid::kFsuipc
                         ? std::uint16_t{30470}
                         : word(29000 - layer.LowerAlt);
    layer.Range = MetresToHundredthsOfMile(static_cast<double>(options.visMax) + 100000.0);
}

bool hasUpperVisibility(aviation::FsId simulator)
{
    return simulator >= aviation::fsid::kFsx && simulator <= aviation::fsid::kXPlaneId8;
}

} // namespace

int SetVisibility(const Metar& metar, const Synop& synop, NewWeather& record,
                  const CompositionContext& context)
{
    constexpr std::int32_t kHighestStationFeet = 30000;
    constexpr int kHighestTop = 30000; // metres
    const CompositionOptions& options = context.options;
    record.Vis = {};
    record.Vis.LowerAlt = -500;
    record.Vis.Range = MetresToHundredthsOfMile(metar.visibility());
    if (metar.elevation() > kHighestStationFeet) {
        return visibilityresult::kElevationTooHigh;
    }
    const std::uint16_t top = word(wholeMetres(static_cast<double>(metar.elevation()) + 2000.0));
    record.Vis.UpperAlt = top;
    if (top > kHighestTop) {
        return visibilityresult::kTooHigh;
    }
    const int range =
        std::max(surfaceRange(metar, synop, options), MetresToHundredthsOfMile(options.visMin));
    record.Vis.Range = snapped(range);
    record.Vis.UpperAlt = hazeTop(metar, top);
    if (!hasUpperVisibility(options.simulator)) {
        return visibilityresult::kDone;
    }
    const int lower = setUpperLayers(record, static_cast<int>(roundedUp(top / 5.0)));
    if (options.visMax != highestvisibility::kUnlimited) {
        setHighestLayer(record, lower, context);
    }
    return visibilityresult::kDone;
}

} // namespace composition

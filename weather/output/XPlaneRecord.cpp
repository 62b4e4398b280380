#include "weather/output/XPlaneRecord.h"

#include "app/base/LogLevel.h"
#include "aviation/Units.h"
#include "weather/output/CompositionRules.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

namespace {

using aviation::weather::Cloud;
using aviation::weather::Grib;
using aviation::weather::GribLevel;
using aviation::weather::Metar;
using aviation::weather::Synop;
using aviation::weather::Wind;

/// Feet per metre of this record, deliberately shorter than the system's constant.
constexpr double kXPlaneFeetPerMetre = 3.2808;
constexpr double kCirrusFrom = 28000.0;          ///< feet
constexpr std::int32_t kNoVisibility = 99999;    ///< metres, a SYNOP that doesn't know
constexpr std::int32_t kTenKmOrMore = 9999;      ///< metres
constexpr std::int64_t kMetresPerSetting = 1000; ///< visibility options are used times this

/// A cloud on its way into the record, heights in feet above the station. Doubles, since options
/// and tables may hold any number.
struct Layer
{
    int type = 0;
    int coverage = 0; ///< octas
    double base = 0.0;
    double top = 0.0;
};

struct Sources
{
    const Metar& metar;
    const Synop& synop;
    const Grib& grib;
    const CompositionOptions& options;
    XPlaneGeneration generation;
    double spreadNm; ///< between SYNOP and METAR
};

bool hasPrecipitation(const Metar& metar)
{
    return metar.phenomenaContain(L"RA") || metar.phenomenaContain(L"SH")
           || metar.phenomenaContain(L"SN");
}

float metresOf(double feet)
{
    return static_cast<float>(feet / kXPlaneFeetPerMetre);
}

float visibilityOf(const Sources& from)
{
    const std::int64_t seen = from.synop.visibility();
    std::int64_t metres = from.metar.visibility();
    if (metres == kTenKmOrMore) {
        const bool synopKnows =
            seen != kNoVisibility && seen > kTenKmOrMore && from.spreadNm < 50.0;
        metres = synopKnows ? seen : from.options.vis9999 * kMetresPerSetting;
    }
    metres = std::max(metres, from.options.visMin * kMetresPerSetting);
    return static_cast<float>(std::min(metres, from.options.visMax * kMetresPerSetting));
}

bool synopHasCirrus(const Sources& from)
{
    return from.synop.highCode() > 0 && from.spreadNm < 50.0;
}

void addSynopCirrus(std::vector<Layer>& layers, const Sources& from)
{
    constexpr std::int32_t kHighBand = 24000; // feet
    for (const Cloud& cloud : from.synop.clouds()) {
        if (cloud.base > kHighBand) {
            layers.push_back({aviation::weather::cloudtype::kCirrus, cloud.coverage,
                              static_cast<double>(cloud.base)});
        }
    }
}

/// The base of the fair-weather cloud counts from sea level, and the encoding adds the elevation
/// once more: deliberate.
Layer cavokLayer(const Sources& from)
{
    Cloud cloud;
    cloud.setCoverage(std::min(from.options.cavokCover, 8));
    if (from.synop.lowCode() > 1 && from.spreadNm < 100.0) {
        cloud.setCoverage(from.synop.lowCode());
    }
    return {aviation::weather::cloudtype::kCumulus, cloud.coverage,
            static_cast<double>(from.metar.elevation()) + from.options.cavokHeight};
}

std::vector<Layer> reportedLayers(const Sources& from)
{
    std::vector<Layer> layers;
    for (const Cloud& cloud : from.metar.clouds()) {
        layers.push_back({cloud.type, cloud.coverage, static_cast<double>(cloud.base)});
    }
    if (synopHasCirrus(from)) {
        addSynopCirrus(layers, from);
    }
    if (from.metar.isCavok() && from.options.cavokCover > 0) {
        layers.push_back(cavokLayer(from));
    }
    return layers;
}

/// The top that humidity gives, in feet above the station.
std::optional<double> humidTop(const Layer& layer, const Sources& from)
{
    constexpr std::size_t kFewestLevels = 4;
    constexpr double kMoistAir = 90.0; // percent
    if (from.grib.levels().size() < kFewestLevels) {
        return std::nullopt;
    }
    const double elevation = from.metar.elevation();
    const std::optional<double> top =
        composition::topFromHumidity(from.grib.levels(), layer.base + elevation, 1.0, kMoistAir);
    return top ? std::optional<double>(*top - elevation) : std::nullopt;
}

void setTop(Layer& layer, const Sources& from)
{
    constexpr double kThickness = 500.0;
    constexpr double kThunderTop = 20000.0;
    constexpr double kRainTop = 10000.0;
    layer.top = humidTop(layer, from).value_or(layer.base + kThickness);
    if (layer.top >= kCirrusFrom) {
        return;
    }
    if (from.metar.phenomenaContain(L"TS")) {
        layer.top = std::max(layer.top, kThunderTop);
    }
    if (hasPrecipitation(from.metar)) {
        layer.top = std::max(layer.top, kRainTop);
    }
}

/// Type and coverage by octas; X-Plane 11 knows four kinds of layer and a scale of its own.
XPlaneCloud octasForEleven(int octas)
{
    static constexpr std::int32_t kTypes[] = {0, 1, 1, 2, 2, 3, 3, 3, 4};
    static constexpr float kCoverages[] = {0.0F, 1.0F, 1.0F, 3.0F, 3.0F, 4.0F, 4.0F, 4.0F, 5.0F};
    const int row = std::clamp(octas, 0, 8);
    XPlaneCloud cloud;
    cloud.Type = kTypes[row];
    cloud.Coverage = kCoverages[row];
    return cloud;
}

XPlaneCloud encodedForEleven(const Layer& layer, bool cirrus)
{
    XPlaneCloud cloud = octasForEleven(layer.coverage);
    if (cirrus) {
        cloud.Type = 1;
        cloud.Coverage = 1.0F;
    }
    return cloud;
}

XPlaneCloud encodedForTwelve(const Layer& layer, bool cirrus)
{
    XPlaneCloud cloud;
    cloud.Type = cirrus ? 0 : 2;
    cloud.Coverage = static_cast<float>(layer.coverage * 0.125);
    return cloud;
}

XPlaneCloud encoded(const Layer& layer, const Sources& from)
{
    const double elevation = from.metar.elevation();
    const bool cirrus =
        layer.type == aviation::weather::cloudtype::kCirrus || layer.base + elevation > kCirrusFrom;
    XPlaneCloud cloud = from.generation == XPlaneGeneration::Twelve
                            ? encodedForTwelve(layer, cirrus)
                            : encodedForEleven(layer, cirrus);
    cloud.Base = metresOf(layer.base + elevation);
    cloud.Top = metresOf(layer.top + elevation);
    return cloud;
}

bool needsMist(const Sources& from, float visibility)
{
    constexpr float kMistMetres = 5000.0F;
    return hasPrecipitation(from.metar) && from.metar.phenomenaContain(L"BR")
           && from.options.generateStratus && visibility <= kMistMetres;
}

XPlaneCloud mistLayer(const Sources& from)
{
    constexpr std::int32_t kMistType = 5;
    constexpr double kAboveGround = 100.0; // feet
    constexpr float kThickness = 500.0F;   // metres
    XPlaneCloud mist;
    mist.Type = kMistType;
    mist.Base = metresOf(from.metar.elevation() + kAboveGround);
    mist.Top = mist.Base + kThickness;
    return mist;
}

/// A made-up cirrus, none if chance gives no cover. Its height is converted like that of the
/// layered record, to whole metres.
std::optional<XPlaneCloud> randomCirrusLayer(const Sources& from, aviation::RandomSource& random)
{
    constexpr float kThickness = 50.0F; // metres
    const composition::RandomCirrus drawn = composition::drawCirrus(random);
    if (drawn.cover == 0) {
        return std::nullopt;
    }
    const Layer layer{aviation::weather::cloudtype::kCirrus, drawn.cover,
                      static_cast<double>(drawn.baseFeet)};
    XPlaneCloud cloud = encoded(layer, from);
    cloud.Base = static_cast<float>(std::trunc(drawn.baseFeet / aviation::kFeetPerMetre));
    cloud.Top = cloud.Base + kThickness;
    return cloud;
}

std::vector<XPlaneCloud> cloudsOf(const Sources& from, float visibility,
                                  aviation::RandomSource& random)
{
    std::vector<XPlaneCloud> clouds;
    for (Layer& layer : reportedLayers(from)) {
        setTop(layer, from);
        clouds.push_back(encoded(layer, from));
    }
    if (clouds.empty() && needsMist(from, visibility)) {
        clouds.push_back(mistLayer(from));
    }
    if (clouds.size() < kXPlaneCloudLayers && !synopHasCirrus(from) && from.options.generateCirrus)
    {
        if (const auto cirrus = randomCirrusLayer(from, random)) {
            clouds.push_back(*cirrus);
        }
    }
    return clouds;
}

void setPrecipitation(const Metar& metar, XPlaneWeather& record)
{
    struct Row
    {
        float rain;
        float thunder;
        float rainOfThunder;
    };
    static constexpr Row kRows[] = {{0.2F, 0.3F, 0.4F}, {0.25F, 0.5F, 0.7F}, {0.5F, 0.8F, 1.0F}};
    const Row& row = kRows[std::clamp(metar.intensity() - 1, 0, 2)];
    if (hasPrecipitation(metar)) {
        record.RainPercent = row.rain;
    }
    if (metar.phenomenaContain(L"TS")) {
        record.ThunderstromPercent = row.thunder;
        record.RainPercent = row.rainOfThunder;
    }
}

Wind surfaceWind(const Sources& from)
{
    constexpr float kNoWind = -1.0F;
    if (from.metar.wind().Speed != kNoWind) {
        return from.metar.wind();
    }
    if (from.spreadNm < 50.0 && from.synop.windSeen()) {
        return from.synop.wind();
    }
    return from.grib.wind().Speed != kNoWind ? from.grib.wind() : from.metar.wind();
}

float shearSpeedOf(const Wind& wind, const Sources& from)
{
    constexpr float kUsualShear = 5.0F; // knots
    if (wind.Gust > 0.0F) {
        return wind.Gust - wind.Speed;
    }
    const float gust = from.synop.wind().Gust;
    return from.spreadNm < 30.0 && gust > wind.Speed ? gust - wind.Speed : kUsualShear;
}

XPlaneWindLayer windLayerAt(double altitudeFeet, const Wind& wind)
{
    XPlaneWindLayer layer;
    layer.Alt = metresOf(altitudeFeet);
    layer.Dir = wind.Dir;
    layer.Speed = wind.Speed;
    return layer;
}

XPlaneWindLayer surfaceLayer(const Sources& from)
{
    constexpr float kShearDegrees = 5.0F;
    constexpr double kFullTurbulenceKnots = 30.0;
    const Wind wind = surfaceWind(from);
    XPlaneWindLayer layer = windLayerAt(from.metar.elevation(), wind);
    layer.ShearDir = kShearDegrees;
    layer.ShearSpeed = shearSpeedOf(wind, from);
    if (from.options.gustySurfaceWind && wind.Speed > 0.0F) {
        layer.Turbulence =
            static_cast<float>(static_cast<double>(wind.Speed) / kFullTurbulenceKnots);
    }
    return layer;
}

void addLookups(std::vector<XPlaneWindLayer>& winds, const Grib& grib,
                std::initializer_list<std::int32_t> altitudesFeet)
{
    for (const std::int32_t altitude : altitudesFeet) {
        winds.push_back(windLayerAt(altitude, composition::levelAt(grib.levels(), altitude).wind));
    }
}

std::vector<XPlaneWindLayer> windsOf(const Sources& from)
{
    constexpr std::size_t kFewestLevels = 3;
    std::vector<XPlaneWindLayer> winds{surfaceLayer(from)};
    const std::vector<GribLevel>& levels = from.grib.levels();
    if (from.generation == XPlaneGeneration::Twelve) {
        addLookups(winds, from.grib, {3243, 6392, 9878, 13801, 18281, 23564, 30053, 34000, 39000});
    } else if (levels.size() < kFewestLevels) {
        addLookups(winds, from.grib, {30000, 50000});
    } else {
        for (const GribLevel& level : levels) {
            winds.push_back(windLayerAt(level.altitude, level.wind));
        }
    }
    return winds;
}

void setSurface(const Sources& from, XPlaneWeather& record)
{
    constexpr double kStandardHpa = 1013.2;
    constexpr double kStandardInches = 29.92;
    constexpr float kRateOfChange = 0.6F;
    record.Vis = visibilityOf(from);
    record.Temp = from.metar.SeaLevelTemperature();
    record.Dew = from.metar.SeaLevelDewPoint();
    record.Press =
        static_cast<float>(static_cast<double>(from.metar.qnh()) / kStandardHpa * kStandardInches);
    record.RateChangePercent = kRateOfChange;
    setPrecipitation(from.metar, record);
}

void SetClouds(const std::vector<XPlaneCloud>& clouds, XPlaneWeather& record,
               const CompositionContext& context)
{
    if (clouds.size() > record.Clouds.size() && context.log) {
        context.log(QStringLiteral("(Weather Converter) - XPlane clouds > 3"), loglevel::kDebug);
    }
    std::copy_n(clouds.begin(), std::min(clouds.size(), record.Clouds.size()),
                record.Clouds.begin());
}

} // namespace

void GenerateXPlaneWeather(const Metar& metar, const Synop& synop, const Grib& grib,
                           XPlaneGeneration generation, XPlaneWeather& out,
                           CompositionContext& context)
{
    const Sources from{metar,           synop,      grib,
                       context.options, generation, composition::spreadNm(synop, metar)};
    XPlaneWeather record;
    setSurface(from, record);
    SetClouds(cloudsOf(from, record.Vis, context.random), record, context);
    record.Winds = windsOf(from);
    record.TropoAltMeter = metresOf(grib.tropopause().altitude);
    record.TempTropo = static_cast<float>(grib.tropopause().temperature);
    out = std::move(record);
}

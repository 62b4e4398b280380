#include "weather/output/WeatherComposition.h"

#include "aviation/support/Clock.h"
#include "aviation/support/ReportTime.h"
#include "weather/output/WeatherCompositionNumbers.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace composition {

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

constexpr std::uint16_t kWriteWeather = 2;
constexpr std::uint16_t kWriteWeatherFs2004 = 258;
constexpr double kLowestQnh = 900.0;              // hPa, below it the report is not believed
constexpr std::uint16_t kPressWithoutQnh = 16208; // 1013 hPa times 16
constexpr std::wstring_view kGlobalStation = L"GLOB";

std::int32_t fixedPointElevation(std::int32_t feet)
{
    const double fixedPoint = aviation::metresFromFeet(static_cast<double>(feet) * 65536.0);
    constexpr std::int64_t kMin = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(truncated(fixedPoint), kMin, kMax));
}

std::uint16_t pressFromQnh(double qnh)
{
    constexpr double kParts = 16.0;
    return qnh < kLowestQnh ? kPressWithoutQnh : word(truncated(qnh * kParts));
}

void setHeader(const Metar& metar, NewWeather& record, const CompositionOptions& options)
{
    const bool fs2004 = options.simulator == aviation::fsid::kFs2004;
    record.setIcao(metar.icao());
    record.Command = fs2004 ? kWriteWeatherFs2004 : kWriteWeather;
    record.Flag = 0;
    record.Elev = fixedPointElevation(metar.elevation());
    if (std::wstring_view(metar.icao()).substr(0, kGlobalStation.size()) == kGlobalStation) {
        record.Dynamic = 0;
        record.Seconds = 0;
        record.Elev = 0;
    }
    record.nCloudCtr = 0;
    record.nUpperVisCtr = 0;
    record.nTempCtr = 0;
    record.nWindCtr = 1;
    record.Lat = 0.0;
    record.Lon = 0.0;
    record.Drift = 0;
    record.Press = pressFromQnh(static_cast<double>(metar.qnh()));
}

} // namespace

int GenerateWeather(const Metar& metar, const Synop& synop, const Grib& grib, NewWeather& record,
                    double magneticVariation, CompositionContext& context)
{
    Metar surface = metar;
    // A SYNOP without a place is one that wasn't found: what it would fill in nobody has reported.
    if (synop.isKnown()
        && aviation::isTimeGroupOld(surface.timeGroup(), aviation::Clock::current().NowUtc()))
    {
        synop.ToMetar(surface);
    }
    setHeader(surface, record, context.options);
    SetWindAndTemperature(surface, synop, grib, record, magneticVariation, context.options);
    SetVisibility(surface, synop, record, context);
    SetClouds(surface, synop, grib, record, context);
    return 0;
}

} // namespace composition

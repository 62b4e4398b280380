#include "weather/output/XPlaneFileText.h"

#include "app/base/LogLevel.h"
#include "aviation/Angles.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ReportTime.h"
#include "weather/output/CompositionRules.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

using aviation::integerText;
using aviation::narrowAscii;
using aviation::weather::Cloud;
using aviation::weather::Grib;
using aviation::weather::GribLevel;
using aviation::weather::Metar;
using aviation::weather::Station;
using aviation::weather::Synop;
using aviation::weather::Wind;

constexpr int kLargestFourDigits = 9999; ///< metres; also stands for "10 km or more"
constexpr std::size_t kMostClouds = 3;

/// A report set with the distances of its surface reports to the station.
struct Reports
{
    const Metar& metar;
    const Synop& synop;
    const Grib& grib;
    double metarNm;
    double synopNm;
};

std::int64_t wholeNumber(double value)
{
    constexpr double kLimit = 1e9;
    return std::isnan(value) ? 0 : static_cast<std::int64_t>(std::clamp(value, -kLimit, kLimit));
}

void logReports(const Station& station, const Reports& reports, const CompositionContext& context)
{
    if (!context.log) {
        return;
    }
    const auto say = [&context](const char* what, const std::wstring& text) {
        context.log(QLatin1String(what) + QString::fromStdWString(text), loglevel::kNotification);
    };
    say("Airport: ", station.icao());
    say("Metar: ", reports.metar.reportText());
    say("Synop: ", reports.synop.reportText());
}

/// Knots; X-Plane always gets a gust.
std::int64_t gustOf(const Reports& reports)
{
    const Wind& wind = reports.metar.wind();
    const Wind& other = reports.synop.wind();
    if (reports.synopNm < 20.0 && other.Gust > 0.0F) {
        return wholeNumber(static_cast<double>(wind.Speed) + static_cast<double>(other.Gust)
                           - static_cast<double>(other.Speed));
    }
    const std::int64_t gust = wholeNumber(static_cast<double>(wind.Gust));
    return gust != 0 ? gust : wholeNumber(static_cast<double>(wind.Speed) + 2.0);
}

std::string windGroup(const Wind& wind, std::int64_t gust)
{
    return integerText(wholeNumber(static_cast<double>(wind.Dir)), 3)
           + integerText(wholeNumber(static_cast<double>(wind.Speed)), 2) + "G"
           + integerText(gust, 2) + "KT";
}

std::string windText(const Reports& reports)
{
    if (reports.metar.windSeen()) {
        return windGroup(reports.metar.wind(), gustOf(reports));
    }
    const bool synopServes = reports.synopNm < 80.0 && reports.synop.windSeen();
    return synopServes ? windGroup(reports.synop.wind(), gustOf(reports)) : std::string();
}

std::string sectorText(const Metar& metar)
{
    if (metar.hasVariableLimits()) {
        return integerText(metar.variableFrom(), 3) + "V" + integerText(metar.variableTo(), 3);
    }
    constexpr double kHalfSector = 10.0;
    const double direction = static_cast<double>(metar.wind().Dir);
    return integerText(wholeNumber(aviation::Normalize360(direction - kHalfSector)), 3) + "V"
           + integerText(wholeNumber(aviation::Normalize360(direction + kHalfSector)), 3);
}

/// The SYNOP sees farther than the four digits of a METAR can say.
bool synopKnowsVisibility(const Reports& reports)
{
    const double nm = reports.synopNm;
    return reports.synop.visibilitySeen() && reports.metar.visibility() == kLargestFourDigits
           && (nm < 20.0 || (nm < 100.0 && nm < reports.metarNm));
}

std::string visibilityText(const Reports& reports)
{
    const std::int32_t metres = synopKnowsVisibility(reports)
                                    ? reports.synop.visibility()
                                    : std::min(reports.metar.visibility(), kLargestFourDigits);
    if (metres <= kLargestFourDigits) {
        return integerText(metres, 4);
    }
    return integerText(wholeNumber(std::ceil(metres / 1000.0 / aviation::kKmPerNm))) + "SM";
}

/// The high cloud that a SYNOP reports: its first layer in the high band or, when only the code of
/// the high clouds was reported, a cirrus of the total cover at an assumed height.
Cloud highCloudOf(const Synop& synop)
{
    constexpr std::int32_t kHighBand = 24000;      // feet
    constexpr std::int32_t kAssumedHeight = 30000; // feet
    Cloud high = synop.baseCloud();
    high.base = kAssumedHeight;
    const auto layer = std::find_if(synop.clouds().begin(), synop.clouds().end(),
                                    [](const Cloud& cloud) { return cloud.base > kHighBand; });
    if (layer != synop.clouds().end()) {
        high = *layer;
    }
    high.type = aviation::weather::cloudtype::kCirrus;
    return high;
}

void addIfCovering(std::vector<Cloud>& clouds, const Cloud& cloud)
{
    if (cloud.coverage >= 1) {
        clouds.push_back(cloud);
    }
}

void addRandomCirrus(std::vector<Cloud>& clouds, aviation::RandomSource& random)
{
    const composition::RandomCirrus drawn = composition::drawCirrus(random);
    Cloud cirrus;
    cirrus.type = aviation::weather::cloudtype::kCirrus;
    // The drawn height in feet is brought to metres and then stands in a group of feet,
    // deliberately: the cirrus lies at less than a third of it.
    cirrus.base = static_cast<std::int32_t>(drawn.baseFeet / aviation::kFeetPerMetre);
    cirrus.setCoverage(drawn.cover);
    addIfCovering(clouds, cirrus);
}

std::vector<Cloud> lowClouds(const Reports& reports, const CompositionOptions& options)
{
    std::vector<Cloud> clouds = reports.metar.clouds();
    const Synop& synop = reports.synop;
    if (clouds.empty() && reports.synopNm < 100.0 && synop.cloudsSeen() && synop.lowCode() > 0) {
        clouds.push_back(synop.baseCloud());
    }
    if (clouds.empty() && options.cavokCover > 0) {
        Cloud fair;
        fair.setCoverage(options.cavokCover);
        fair.base = options.cavokHeight;
        clouds.push_back(fair);
    }
    return clouds;
}

std::string cloudsText(const Reports& reports, CompositionContext& context)
{
    std::vector<Cloud> clouds = lowClouds(reports, context.options);
    bool cirrus = false;
    if (clouds.size() < kMostClouds) {
        const Synop& synop = reports.synop;
        cirrus = reports.synopNm < 100.0 && synop.cloudsSeen() && synop.highCode() > 0;
        addIfCovering(clouds, cirrus ? highCloudOf(synop) : reports.grib.highCloud());
    }
    if (clouds.size() < kMostClouds && context.options.generateCirrus && !cirrus) {
        addRandomCirrus(clouds, context.random);
    }
    std::string text;
    for (const Cloud& cloud : clouds) {
        text += aviation::weather::metarGroup(cloud) + " ";
    }
    return text;
}

/// The dew point deliberately takes the sign of the temperature: 2 and -1 degrees give "02/01".
std::string temperatureText(float celsius, bool negative)
{
    const std::string digits = integerText(std::abs(wholeNumber(static_cast<double>(celsius))), 2);
    return negative ? "M" + digits : digits;
}

/// Weather, clouds and both temperatures; a CAVOK report has none of them, only their separators.
std::string weatherGroups(const Reports& reports, CompositionContext& context)
{
    const Metar& metar = reports.metar;
    if (metar.isCavok()) {
        return "CAVOK   /";
    }
    const bool negative = metar.temperature() < 0.0F;
    return visibilityText(reports) + " " + narrowAscii(metar.phenomenaText()) + " "
           + cloudsText(reports, context) + " " + temperatureText(metar.temperature(), negative)
           + "/" + temperatureText(metar.dewPoint(), negative);
}

/// Degrees with up to six digits; a place closer to the equator or to Greenwich than the digits
/// show is 0, so that no exponent comes up.
std::string degreesText(double degrees)
{
    constexpr double kSmallestWithoutExponent = 1e-4;
    constexpr int kDigits = 6;
    const double shown = std::abs(degrees) < kSmallestWithoutExponent ? 0.0 : degrees;
    return QString::number(shown, 'g', kDigits).toStdString();
}

/// Temperature of a level as the file wants it: none in the lowest, no sign up where it is always
/// cold.
std::string levelTemperatureText(int celsius, std::int32_t altitudeFeet)
{
    constexpr std::int32_t kLowest = 3000;
    constexpr std::int32_t kUnsignedFrom = 34000;
    if (altitudeFeet == kLowest) {
        return {};
    }
    const std::string digits = integerText(std::abs(celsius), 2);
    if (celsius >= 0) {
        return "+" + digits;
    }
    return altitudeFeet >= kUnsignedFrom ? digits : "-" + digits;
}

/// Direction in tens of degrees, speed, temperature.
std::string levelText(const GribLevel& level, std::int32_t altitudeFeet)
{
    const std::string direction =
        integerText(wholeNumber(static_cast<double>(level.wind.Dir) / 10.0), 2);
    return direction + integerText(wholeNumber(static_cast<double>(level.wind.Speed)), 2)
           + levelTemperatureText(level.temperature, altitudeFeet);
}

} // namespace

void XPlaneMetarText(const Station& station, const Metar& metar, const Synop& synop,
                     const Grib& grib, std::string& text, CompositionContext& context)
{
    const Reports reports{metar, synop, grib, composition::spreadNm(metar, station),
                          composition::spreadNm(synop, station)};
    logReports(station, reports, context);
    text = aviation::slashedDateTime(aviation::Clock::current().NowUtc()) + "\n"
           + narrowAscii(station.icao()) + " " + narrowAscii(metar.timeGroup()) + "Z "
           + windText(reports) + " " + sectorText(metar) + " " + weatherGroups(reports, context)
           + " Q" + integerText(wholeNumber(static_cast<double>(metar.qnh())), 4);
}

void XPlaneWindsText(const Station& station, const Metar& /*metar*/, const Synop& /*synop*/,
                     const Grib& grib, std::string& text)
{
    constexpr std::int32_t kHeights[] = {3000,  6000,  9000,  12000, 18000,
                                         24000, 30000, 34000, 39000}; // feet
    text = "DEG " + degreesText(station.latitude()) + " " + degreesText(station.longitude());
    for (const std::int32_t height : kHeights) {
        text += ' ' + levelText(composition::levelAt(grib.levels(), height), height);
    }
}

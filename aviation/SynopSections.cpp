#include "aviation/SynopDecoding.h"
#include "aviation/SynopPatterns.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

/// Sections 2 to 5, and what all sections share.
namespace aviation::weather::synopdecoding {

namespace {

using namespace synoppatterns;

constexpr std::int32_t kUnknownHeight = -1;

/// Octas above 8 say that the sky can't be seen; a layer doesn't take them.
Cloud layerCloud(int octas, int type, std::int32_t base)
{
    Cloud cloud;
    cloud.setCoverage(octas);
    cloud.type = static_cast<std::uint8_t>(type);
    cloud.base = base;
    cloud.top = kUnknownHeight;
    cloud.altitude = kUnknownHeight;
    return cloud;
}

std::int32_t wholeKnots(const Reading& reading, int speed)
{
    return static_cast<std::int32_t>(reading.knots(speed));
}

void readCloudLayers(Reading& reading)
{
    while (const auto groups = reading.report.take<CloudLayer>()) {
        const std::int32_t base = cloudBaseFromCode(integerFromDigits(groups[3]));
        Cloud cloud = layerCloud(digit(groups[1].front()), digit(groups[2].front()), base);
        cloud.typeKnown = groups[2].front() != L'/';
        cloud.baseKnown = groups[3].find(L'/') == std::wstring_view::npos;
        reading.surface.clouds.push_back(cloud);
        reading.surface.cloudsSeen = true;
        reading.synop.cloudCodesRead = true;
    }
}

/// Of the supplementary groups only the highest gust since the last report matters.
void readSupplements(Reading& reading)
{
    constexpr int kHighestGust = 11;
    while (const auto groups = reading.report.take<Supplement>()) {
        if (integerFromDigits(groups[1]) == kHighestGust) {
            reading.surface.wind.Gust =
                static_cast<float>(reading.knots(integerFromDigits(groups[2])));
        }
    }
}

/// Sign character "0" is plus, any other one minus; tenths after it.
double tenthsBehindSign(std::wstring_view group)
{
    const double value = tenths(group.substr(2));
    return group[1] == L'0' ? value : -value;
}

void readNationalClouds(Reading& reading)
{
    while (const auto groups = reading.report.take<NationalCloud>()) {
        // Only the last digit of the height code is looked at.
        const std::int32_t base = cloudBaseFromCode(digit(groups[1][4]));
        Cloud cloud = layerCloud(digit(groups[1][1]), 0, base);
        cloud.baseKnown = groups[1][4] != L'/';
        reading.surface.clouds.push_back(cloud);
        reading.synop.cloudCodesRead = true;
    }
}

/// In metres per second the two peaks take over the gust of 10 minutes; whoever reads the fields
/// must not expect their own values there.
std::int32_t readPeak(Reading& reading, Field field, std::int32_t otherwise)
{
    constexpr std::size_t kSpeed = 3; ///< after "911"
    const auto groups = reading.report.take<GustPeak>();
    if (!groups) {
        return otherwise;
    }
    reading.surface.held.setFrom(field, groups[1].substr(kSpeed));
    return reading.inMetresPerSecond() ? reading.synop.gust10Minutes
                                       : integerFromDigits(groups[1].substr(kSpeed));
}

void readGusts(Reading& reading)
{
    SynopValues& synop = reading.synop;
    if (const auto groups = reading.report.take<Gust10Minutes>()) {
        synop.gust10Minutes = wholeKnots(reading, integerFromDigits(groups[1].substr(3)));
        reading.surface.held.setFrom(Field::Gust10Minutes, groups[1]);
    }
    synop.gust1 = readPeak(reading, Field::Gust1, synop.gust1);
    synop.gust2 = readPeak(reading, Field::Gust2, synop.gust2);
}

} // namespace

double Reading::knots(int speed) const
{
    return inMetresPerSecond() ? speed * kKnotsPerMetrePerSecond : speed;
}

bool Reading::inMetresPerSecond() const
{
    constexpr std::uint8_t kFirstKnotsIndicator = 2;
    return synop.windUnit < kFirstKnotsIndicator;
}

std::int32_t cloudBaseFromCode(int code)
{
    if (code >= 0 && code <= 50) {
        return code * 100;
    }
    if (code >= 56 && code <= 80) {
        return (code - 50) * 1000;
    }
    if (code >= 81 && code <= 89) {
        return (code - 74) * 5000;
    }
    if (code >= 90 && code <= 95) {
        return (code - 89) * 166;
    }
    if (code >= 96 && code <= 99) {
        constexpr double kFeet = 3.3285; // not the usual feet per metre; deliberate
        return static_cast<std::int32_t>((code - 94) * 500 * kFeet);
    }
    return 0;
}

void readSea(Reading& reading)
{
    if (reading.report.takeWhole<Section2>()) {
        reading.report
            .pass<Plain0, Plain1, Plain2, Plain3, Plain4, Plain5, Plain6, Plain7, Plain4>();
    }
}

void readRegional(Reading& reading)
{
    if (!reading.report.takeWhole<Section3>()) {
        return;
    }
    reading.report.pass<Plain0, MaximumTemperature, MinimumTemperature, GroundTemperature,
                        SnowTemperature, DailySunshine, Plain2, Plain3, Plain4, HourlySunshine,
                        Plain2, Plain3, Plain4, RegionalPrecipitation, Plain7>();
    readCloudLayers(reading);
    readSupplements(reading);
}

void readMountain(Reading& reading)
{
    if (reading.report.takeWhole<Section4>()) {
        reading.report.pass<AnyGroup>();
    }
}

void readNational(Reading& reading)
{
    const auto groups = reading.report.take<Section5>();
    if (!groups) {
        return;
    }
    reading.surface.temperature = static_cast<float>(tenthsBehindSign(groups[1]));
    reading.synop.seaValue = tenths(groups[2].substr(1));
    HeldFields& held = reading.surface.held;
    held.setFrom(Field::Temperature, groups[1]);
    held.setFrom(Field::Sea, groups[2]);
    const auto second = reading.report.take<SeaSecond>();
    reading.synop.seaSecondValue = second ? tenthsBehindSign(second[1]) : 0.0;
    held.set(Field::SeaSecond, second && second[1].find(L'/') == std::wstring_view::npos);
    reading.report.pass<National22, National23, National24, National25, National26, National3,
                        National4, National5, National7>();
    readNationalClouds(reading);
    readGusts(reading);
    reading.report.pass<PicGroup, BotGroup>();
}

} // namespace aviation::weather::synopdecoding

#include "aviation/SynopDecoding.h"
#include "aviation/SynopPatterns.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <array>

/// Section 1: what every report says of the surface.
namespace aviation::weather::synopdecoding {

namespace {

using namespace synoppatterns;

/// Base of the lowest cloud in feet (WMO code table 1600).
constexpr std::array<std::int32_t, 10> kBaseOfH = {166,  333,  666,  1000, 2000,
                                                   3333, 5000, 6666, 8333, 10000};
/// Visibility in metres of the codes 90 to 99 (WMO code table 4377).
constexpr std::array<std::int32_t, 10> kCoarseVisibility = {40,   50,   200,   500,   1000,
                                                            2000, 4000, 10000, 20000, 60000};

/// Whether a group of two characters is "//", which says that it isn't known.
bool areSlashes(std::wstring_view pair)
{
    return pair[0] == L'/' && pair[1] == L'/';
}

/// Metres of the code VV (WMO code table 4377). Tenths of a kilometre lose their fraction on
/// purpose. The codes 51 to 55 aren't used and keep `unchanged`.
std::int32_t visibilityFromCode(int code, std::int32_t unchanged)
{
    if (code <= 50) {
        return code / 10 * 1000;
    }
    if (code <= 55) {
        return unchanged;
    }
    if (code <= 80) {
        return (code - 50) * 1000;
    }
    return code <= 89 ? (code - 74) * 5000 : kCoarseVisibility[static_cast<std::size_t>(code - 90)];
}

void readVisibility(Reading& reading)
{
    constexpr std::int32_t kNoCode = -1;
    const auto groups = reading.report.take<Visibility>();
    if (!groups) {
        return;
    }
    SurfaceValues& surface = reading.surface;
    reading.synop.precipitationIndicator = static_cast<std::uint8_t>(digit(groups[1].front()));
    surface.held.set(Field::Precipitation);
    const wchar_t h = groups[3].front();
    surface.cloudsSeen = h != L'/';
    if (surface.cloudsSeen) {
        reading.synop.baseCloud.base = kBaseOfH[static_cast<std::size_t>(digit(h))];
        surface.held.set(Field::BaseHeight);
    }
    surface.visibilitySeen = !areSlashes(groups[4]);
    if (surface.visibilitySeen) {
        const std::int32_t metres = visibilityFromCode(integerFromDigits(groups[4]), kNoCode);
        surface.visibility = metres == kNoCode ? surface.visibility : metres;
        surface.held.set(Field::Visibility, metres != kNoCode);
    }
}

void readBaseCoverage(Reading& reading, wchar_t n)
{
    constexpr int kSkyObscured = 9;
    constexpr int kOvercast = 8;
    if (n != L'/') {
        const int octas = digit(n);
        reading.synop.baseCloud.setCoverage(octas == kSkyObscured ? kOvercast : octas);
        reading.surface.held.set(Field::BaseCoverage);
    }
}

/// A speed of 99 says that the next group holds it in three digits. Its knots are whole.
void readStrongWind(Reading& reading)
{
    if (const auto groups = reading.report.take<StrongWind>()) {
        Wind& wind = reading.surface.wind;
        wind.Speed =
            static_cast<float>(static_cast<int>(reading.knots(integerFromDigits(groups[1]))));
        wind.Gust = kNoGust;
    }
}

void readWind(Reading& reading)
{
    constexpr int kVariable = 99;
    constexpr int kSpeedFollows = 99;
    const auto groups = reading.report.take<SurfaceWind>();
    if (!groups) {
        return;
    }
    readBaseCoverage(reading, groups[1].front());
    SurfaceValues& surface = reading.surface;
    const int direction = integerFromDigits(groups[2]);
    const int speed = integerFromDigits(groups[3]);
    surface.windSeen = !areSlashes(groups[2]) && !areSlashes(groups[3]);
    if (surface.windSeen) {
        surface.wind = {direction == kVariable ? 0.0F : static_cast<float>(direction * 10),
                        static_cast<float>(reading.knots(speed)), kNoGust, 0.0F};
        surface.held.set(Field::Direction, direction != kVariable);
    }
    if (speed == kSpeedFollows) {
        readStrongWind(reading);
    }
}

double signedTenths(wchar_t sign, std::wstring_view digits)
{
    return sign == L'1' ? -tenths(digits) : tenths(digits);
}

void readTemperatures(Reading& reading)
{
    constexpr wchar_t kHumidityInstead = L'9';
    if (const auto groups = reading.report.take<Temperature>()) {
        reading.surface.temperature =
            static_cast<float>(signedTenths(groups[1].front(), groups[2]));
        reading.surface.held.setFrom(Field::Temperature, groups[2]);
    }
    if (const auto groups = reading.report.take<DewPoint>()) {
        const double value = signedTenths(groups[1].front(), groups[2]);
        reading.surface.dewPoint = static_cast<float>(value);
        const bool isHumidity = groups[1].front() == kHumidityInstead;
        if (isHumidity) {
            reading.synop.humidity = value;
        }
        reading.surface.held.setFrom(isHumidity ? Field::Humidity : Field::DewPoint, groups[2]);
    }
}

/// Four digits are tenths of hPa without the thousands. A slash in place of the tenths leaves whole
/// hPa.
double pressureOf(std::wstring_view digits)
{
    constexpr double kLeastWithThousands = 300.0;
    const double hpa = digits[3] == L'/' ? integerFromDigits(digits.substr(0, 3)) : tenths(digits);
    return hpa < kLeastWithThousands ? hpa + 1000.0 : hpa;
}

/// The digits that a pressure has to have.
std::wstring_view withoutTenths(std::wstring_view digits)
{
    return digits.substr(0, 3);
}

void readPressures(Reading& reading)
{
    if (const auto groups = reading.report.take<StationPressure>()) {
        reading.synop.stationPressure = pressureOf(groups[1]);
        reading.surface.held.setFrom(Field::StationPressure, withoutTenths(groups[1]));
    }
    if (const auto groups = reading.report.take<SeaLevelPressure>()) {
        reading.surface.qnh = static_cast<float>(pressureOf(groups[1]));
        reading.surface.held.setFrom(Field::Qnh, withoutTenths(groups[1]));
    }
}

void readCloudForms(Reading& reading)
{
    if (const auto groups = reading.report.take<CloudForms>()) {
        reading.synop.lowCode = static_cast<std::uint8_t>(digit(groups[2].front()));
        reading.synop.middleCode = static_cast<std::uint8_t>(digit(groups[3].front()));
        reading.synop.highCode = static_cast<std::uint8_t>(digit(groups[4].front()));
        reading.synop.cloudCodesRead = true;
        HeldFields& held = reading.surface.held;
        held.setFrom(Field::LowCode, groups[2]);
        held.setFrom(Field::MiddleCode, groups[3]);
        held.setFrom(Field::HighCode, groups[4]);
    }
}

} // namespace

void readSurface(Reading& reading)
{
    readVisibility(reading);
    readWind(reading);
    readTemperatures(reading);
    readPressures(reading);
    reading.report.pass<Geopotential, Tendency, Precipitation, PresentWeather>();
    readCloudForms(reading);
}

} // namespace aviation::weather::synopdecoding

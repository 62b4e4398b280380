#include "weather/output/ObservationString.h"

#include "aviation/Angles.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <algorithm>
#include <array>
#include <span>

using aviation::fixedText;
using aviation::integerText;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

constexpr double kDegreesPerStep = 1.52587890625e-5 * 360.0; // 360 / 65536, exact

constexpr std::array<const char*, 5> kTurbulence{"N", "L", "M", "H", "S"};
constexpr std::array<const char*, 6> kPrecipitationRate{"V", "V", "L", "M", "H", "D"};
constexpr std::array<const char*, 3> kPrecipitationType{"N", "R", "S"};
constexpr std::array<const char*, 5> kIcing{"N", "T", "L", "M", "S"};
constexpr std::array<const char*, 3> kTopShape{"F", "R", "A"};
constexpr std::array<const char*, 11> kCloudType{"", "CI", "",   "",   "",  "",
                                                 "", "",   "ST", "CU", "CB"};

template <std::size_t Size>
const char* letterOf(const std::array<const char*, Size>& table, std::uint8_t value)
{
    return value < Size ? table[value] : "";
}

/// The used slots of a layer array; a count beyond the slots or below zero is cut to what there is.
template <typename Layer, std::size_t Size>
std::span<const Layer> usedLayers(const std::array<Layer, Size>& slots, std::int32_t count)
{
    return std::span(slots).first(
        static_cast<std::size_t>(std::clamp(count, 0, static_cast<std::int32_t>(Size))));
}

int wholeDegrees(std::uint16_t steps)
{
    return steps * 360 >> 16;
}

std::wstring_view trimmed(std::wstring_view text)
{
    constexpr std::wstring_view kBlanks = L" \t\r\n\f\v";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::wstring_view::npos
               ? std::wstring_view()
               : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool namesCavok(const Metar& metar)
{
    return metar.phenomenaContain(L"CAVOK");
}

std::string stationAndTime(const Metar& metar)
{
    return aviation::narrowAscii(trimmed(metar.icao())) + " "
           + aviation::narrowAscii(metar.timeGroup()) + "Z ";
}

/// The form without gust has a second '&' before the turbulence letter, the one with gust has not:
/// deliberate.
std::string surfaceWind(const WindLayer& layer)
{
    constexpr const char* kGradualShear = "G ";
    const std::string wind = integerText(wholeDegrees(layer.Dir), 3) + integerText(layer.Speed, 2);
    const std::string top = integerText(layer.UpperAlt);
    const char* turbulence = letterOf(kTurbulence, layer.Turbulence);
    if (layer.Gust > 0) {
        return wind + "G" + integerText(layer.Speed + layer.Gust, 2) + "KT&D" + top + turbulence
               + kGradualShear;
    }
    return wind + "KT&D" + top + "&" + turbulence + kGradualShear;
}

std::string sectorLimit(double degrees)
{
    return integerText((static_cast<int>(degrees) + 360) % 360, 3);
}

std::string variableSector(const WindLayer& layer)
{
    if (layer.Variance == 0) {
        return {};
    }
    const double half = static_cast<int>(layer.Variance * kDegreesPerStep) * 0.5;
    const double direction = static_cast<int>(layer.Dir * kDegreesPerStep);
    return sectorLimit(direction - half) + "V" + sectorLimit(direction + half) + " ";
}

std::string cavokGroup(const Metar& metar)
{
    std::string text = metar.isCavok() ? "CAVOK " : "";
    if (namesCavok(metar)) {
        text += aviation::narrowAscii(metar.phenomenaText()) + " ";
    }
    return text;
}

std::string visibilityGroup(const VisLayer& layer)
{
    constexpr double kLargestInMetres = 9999.0;
    const double metres = layer.Range * 1.592 * 10.0; // a little short of a mile, on purpose
    const std::string range = metres > kLargestInMetres ? fixedText(metres / 1000.0, 0) + "KM"
                                                        : fixedText(metres, 0, 4) + "M";
    return range + "&B" + integerText(layer.LowerAlt, 4) + "&D"
           + integerText(layer.UpperAlt - layer.LowerAlt, 4) + " ";
}

void replaceAll(std::string& text, std::string_view what, std::string_view by)
{
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
        result.append(text, from, at - from).append(by);
        from = at + what.size();
    }
    text = result.append(text, from);
}

std::string presentWeather(const Metar& metar)
{
    if (namesCavok(metar)) {
        return {};
    }
    std::string text = aviation::narrowAscii(trimmed(metar.phenomenaText()));
    for (const char* dropped : {"BC", "NSC", "+", "-", " "}) {
        replaceAll(text, dropped, "");
    }
    replaceAll(text, "RA", "RERA");
    return text.size() > 1 ? text + " " : std::string();
}

std::string cloudGroup(const CloudLayer& layer, std::int32_t elevationFeet)
{
    if (layer.Cover == 0) {
        return {};
    }
    const char* type = letterOf(kCloudType, layer.Type);
    const double feetAboveStation = layer.LowerAlt * aviation::kFeetPerMetre - elevationFeet;
    return integerText(layer.Cover) + type
           + integerText(static_cast<std::int64_t>(feetAboveStation / 100.0), 3) + "&" + type
           + "000" + letterOf(kTopShape, layer.TopShape) + letterOf(kTurbulence, layer.Turbulence)
           + letterOf(kPrecipitationType, layer.PrecipType)
           + letterOf(kPrecipitationRate, layer.PrecipRate) + integerText(layer.PrecipBase, 3)
           + letterOf(kIcing, layer.Icing) + " ";
}

/// The width counts the minus sign: -5 becomes -05.
std::string signedDegrees(std::int16_t celsius)
{
    return integerText(celsius, celsius < 0 ? 3 : 2);
}

std::string temperatureGroup(const TempLayer& layer)
{
    return signedDegrees(layer.Day) + "/" + signedDegrees(layer.Dew) + "&A"
           + integerText(layer.Alt, 5) + " ";
}

std::string windAloft(const WindLayer& wind, const TempLayer& temperature)
{
    const double hundredsOfFeet = wind.UpperAlt * aviation::kFeetPerMetre / 100.0;
    return integerText(static_cast<std::int64_t>(hundredsOfFeet)) + " "
           + integerText(temperature.Day) + " " + integerText(wholeDegrees(wind.Dir)) + " "
           + integerText(wind.Speed);
}

std::string windsAloft(const NewWeather& record)
{
    const auto winds = usedLayers(record.Wind, record.nWindCtr);
    const auto temperatures = usedLayers(record.Temp, record.nTempCtr);
    std::string text;
    for (std::size_t i = 1; i < std::min(winds.size(), temperatures.size()); ++i) {
        text += (i > 1 ? " | " : "") + windAloft(winds[i], temperatures[i]);
    }
    return text;
}

} // namespace

std::string MetarString(const Metar& metar, const Synop& /*synop*/, const Grib& /*grib*/,
                        const NewWeather& record)
{
    std::string text = stationAndTime(metar) + surfaceWind(record.Wind[0])
                       + variableSector(record.Wind[0]) + cavokGroup(metar)
                       + visibilityGroup(record.Vis);
    for (const VisLayer& layer : usedLayers(record.UpperVis, record.nUpperVisCtr)) {
        text += visibilityGroup(layer);
    }
    text += presentWeather(metar);
    for (const CloudLayer& layer : usedLayers(record.Cloud, record.nCloudCtr)) {
        text += cloudGroup(layer, metar.elevation());
    }
    for (const TempLayer& layer : usedLayers(record.Temp, record.nTempCtr)) {
        text += temperatureGroup(layer);
    }
    return text + "Q" + fixedText(static_cast<double>(metar.qnh()), 0, 4) + " @@@ "
           + windsAloft(record);
}

void relabelObservation(std::string& text, std::wstring_view icao)
{
    constexpr std::size_t kNameLength = 4;
    const std::string name = aviation::narrowAscii(icao);
    if (text.compare(0, kNameLength, name) != 0) {
        text.replace(0, std::min(kNameLength, text.size()), name);
    }
}

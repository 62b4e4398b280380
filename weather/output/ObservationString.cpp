#include "weather/output/ObservationString.h"

#include "aviation/Angles.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <algorithm>
#include <array>
#include <span>

using aviation::FixedText;
using aviation::IntegerText;
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
const char* Letter(const std::array<const char*, Size>& table, std::uint8_t value)
{
    return value < Size ? table[value] : "";
}

/// The used slots of a layer array; a count beyond the slots or below zero is cut to what there is.
template <typename Layer, std::size_t Size>
std::span<const Layer> Used(const std::array<Layer, Size>& slots, std::int32_t count)
{
    return std::span(slots).first(
        static_cast<std::size_t>(std::clamp(count, 0, static_cast<std::int32_t>(Size))));
}

int WholeDegrees(std::uint16_t steps)
{
    return steps * 360 >> 16;
}

std::wstring_view Trimmed(std::wstring_view text)
{
    constexpr std::wstring_view kBlanks = L" \t\r\n\f\v";
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == std::wstring_view::npos
               ? std::wstring_view()
               : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool NamesCavok(const Metar& metar)
{
    return metar.phenomenaContain(L"CAVOK");
}

std::string StationAndTime(const Metar& metar)
{
    return aviation::NarrowAscii(Trimmed(metar.icao())) + " "
           + aviation::NarrowAscii(metar.timeGroup()) + "Z ";
}

/// The form without gust has a second '&' in front of the turbulence letter, the one with gust has
/// not: deliberate.
std::string SurfaceWind(const WindLayer& layer)
{
    constexpr const char* kGradualShear = "G ";
    const std::string wind = IntegerText(WholeDegrees(layer.Dir), 3) + IntegerText(layer.Speed, 2);
    const std::string top = IntegerText(layer.UpperAlt);
    const char* turbulence = Letter(kTurbulence, layer.Turbulence);
    if (layer.Gust > 0) {
        return wind + "G" + IntegerText(layer.Speed + layer.Gust, 2) + "KT&D" + top + turbulence
               + kGradualShear;
    }
    return wind + "KT&D" + top + "&" + turbulence + kGradualShear;
}

std::string SectorLimit(double degrees)
{
    return IntegerText((static_cast<int>(degrees) + 360) % 360, 3);
}

std::string VariableSector(const WindLayer& layer)
{
    if (layer.Variance == 0) {
        return {};
    }
    const double half = static_cast<int>(layer.Variance * kDegreesPerStep) * 0.5;
    const double direction = static_cast<int>(layer.Dir * kDegreesPerStep);
    return SectorLimit(direction - half) + "V" + SectorLimit(direction + half) + " ";
}

std::string Cavok(const Metar& metar)
{
    std::string text = metar.isCavok() ? "CAVOK " : "";
    if (NamesCavok(metar)) {
        text += aviation::NarrowAscii(metar.phenomenaText()) + " ";
    }
    return text;
}

std::string Visibility(const VisLayer& layer)
{
    constexpr double kLargestInMetres = 9999.0;
    const double metres = layer.Range * 1.592 * 10.0; // a little short of a mile, on purpose
    const std::string range = metres > kLargestInMetres ? FixedText(metres / 1000.0, 0) + "KM"
                                                        : FixedText(metres, 0, 4) + "M";
    return range + "&B" + IntegerText(layer.LowerAlt, 4) + "&D"
           + IntegerText(layer.UpperAlt - layer.LowerAlt, 4) + " ";
}

void ReplaceAll(std::string& text, std::string_view what, std::string_view by)
{
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
        result.append(text, from, at - from).append(by);
        from = at + what.size();
    }
    text = result.append(text, from);
}

std::string PresentWeather(const Metar& metar)
{
    if (NamesCavok(metar)) {
        return {};
    }
    std::string text = aviation::NarrowAscii(Trimmed(metar.phenomenaText()));
    for (const char* dropped : {"BC", "NSC", "+", "-", " "}) {
        ReplaceAll(text, dropped, "");
    }
    ReplaceAll(text, "RA", "RERA");
    return text.size() > 1 ? text + " " : std::string();
}

std::string CloudGroup(const CloudLayer& layer, std::int32_t elevationFeet)
{
    if (layer.Cover == 0) {
        return {};
    }
    const char* type = Letter(kCloudType, layer.Type);
    const double feetAboveStation = layer.LowerAlt * aviation::kFeetPerMetre - elevationFeet;
    return IntegerText(layer.Cover) + type
           + IntegerText(static_cast<std::int64_t>(feetAboveStation / 100.0), 3) + "&" + type
           + "000" + Letter(kTopShape, layer.TopShape) + Letter(kTurbulence, layer.Turbulence)
           + Letter(kPrecipitationType, layer.PrecipType)
           + Letter(kPrecipitationRate, layer.PrecipRate) + IntegerText(layer.PrecipBase, 3)
           + Letter(kIcing, layer.Icing) + " ";
}

/// The width counts the minus sign: -5 becomes -05.
std::string Degrees(std::int16_t celsius)
{
    return IntegerText(celsius, celsius < 0 ? 3 : 2);
}

std::string Temperature(const TempLayer& layer)
{
    return Degrees(layer.Day) + "/" + Degrees(layer.Dew) + "&A" + IntegerText(layer.Alt, 5) + " ";
}

std::string WindAloft(const WindLayer& wind, const TempLayer& temperature)
{
    const double hundredsOfFeet = wind.UpperAlt * aviation::kFeetPerMetre / 100.0;
    return IntegerText(static_cast<std::int64_t>(hundredsOfFeet)) + " "
           + IntegerText(temperature.Day) + " " + IntegerText(WholeDegrees(wind.Dir)) + " "
           + IntegerText(wind.Speed);
}

std::string WindsAloft(const NewWeather& record)
{
    const auto winds = Used(record.Wind, record.nWindCtr);
    const auto temperatures = Used(record.Temp, record.nTempCtr);
    std::string text;
    for (std::size_t i = 1; i < std::min(winds.size(), temperatures.size()); ++i) {
        text += (i > 1 ? " | " : "") + WindAloft(winds[i], temperatures[i]);
    }
    return text;
}

} // namespace

std::string MetarString(const Metar& metar, const Synop& /*synop*/, const Grib& /*grib*/,
                        const NewWeather& record)
{
    std::string text = StationAndTime(metar) + SurfaceWind(record.Wind[0])
                       + VariableSector(record.Wind[0]) + Cavok(metar) + Visibility(record.Vis);
    for (const VisLayer& layer : Used(record.UpperVis, record.nUpperVisCtr)) {
        text += Visibility(layer);
    }
    text += PresentWeather(metar);
    for (const CloudLayer& layer : Used(record.Cloud, record.nCloudCtr)) {
        text += CloudGroup(layer, metar.elevation());
    }
    for (const TempLayer& layer : Used(record.Temp, record.nTempCtr)) {
        text += Temperature(layer);
    }
    return text + "Q" + FixedText(static_cast<double>(metar.qnh()), 0, 4) + " @@@ "
           + WindsAloft(record);
}

void RelabelObservation(std::string& text, std::wstring_view icao)
{
    constexpr std::size_t kNameLength = 4;
    const std::string name = aviation::NarrowAscii(icao);
    if (text.compare(0, kNameLength, name) != 0) {
        text.replace(0, std::min(kNameLength, text.size()), name);
    }
}

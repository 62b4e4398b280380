#include "weather/output/records/NewWeatherText.h"

#include "aviation/support/NumberText.h"
#include "weather/output/records/TextFields.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

using recordtext::appendIntegers;

/// Characters of a record with all its layers in use; texts of thousands grow slowly without it.
constexpr std::size_t kUsualLength = 4096;

void append(std::string& text, const VisLayer& layer)
{
    appendIntegers(
        text, {{"UpperAlt", layer.UpperAlt}, {"LowerAlt", layer.LowerAlt}, {"Range", layer.Range}});
}

void append(std::string& text, const TempLayer& layer)
{
    appendIntegers(text, {{"Alt", layer.Alt},
                          {"Day", layer.Day},
                          {"DayNightVar", layer.DayNightVar},
                          {"Dew", layer.Dew}});
}

void append(std::string& text, const WindLayer& layer)
{
    appendIntegers(text, {{"UpperAlt", layer.UpperAlt},
                          {"Speed", layer.Speed},
                          {"Gust", layer.Gust},
                          {"Dir", layer.Dir},
                          {"Turbulence", layer.Turbulence},
                          {"Shear", layer.Shear},
                          {"Variance", layer.Variance},
                          {"SpeedFract", layer.SpeedFract},
                          {"CapAbove", layer.CapAbove}});
}

void append(std::string& text, const CloudLayer& layer)
{
    appendIntegers(text, {{"UpperAlt", layer.UpperAlt},
                          {"LowerAlt", layer.LowerAlt},
                          {"Dev", layer.Dev},
                          {"Cover", layer.Cover},
                          {"Type", layer.Type},
                          {"Turbulence", layer.Turbulence},
                          {"Icing", layer.Icing},
                          {"PrecipBase", layer.PrecipBase},
                          {"PrecipType", layer.PrecipType},
                          {"PrecipRate", layer.PrecipRate},
                          {"TopShape", layer.TopShape}});
}

/// "Name{layer|layer|}", a count below 1 leaves nothing between the braces.
template <class Layers>
void appendSection(std::string& text, const char* name, const Layers& layers, std::int32_t count)
{
    const auto used = std::clamp<std::int64_t>(count, 0, static_cast<std::int64_t>(layers.size()));
    text.append(name) += '{';
    std::for_each_n(layers.begin(), used, [&text](const auto& layer) {
        append(text, layer);
        text += '|';
    });
    text += '}';
}

/// Everything before the layers, each group with its ":". The two unsigned 32-bit fields are
/// printed as signed ones, as the bridge's "%i" does.
void appendHead(std::string& text, const NewWeather& record)
{
    appendIntegers(text, {{"Command", record.Command},
                          {"Flag", record.Flag},
                          {"Signature", static_cast<std::int32_t>(record.Signature)}});
    text.append(":Icao=").append(record.icaoText()) += ':';
    appendIntegers(text, {{"Dynamic", record.Dynamic}, {"Seconds", record.Seconds}});
    text.append(":Lat=").append(aviation::fixedText(record.Lat, 6));
    text.append(":Lon=").append(aviation::fixedText(record.Lon, 6)) += ':';
    appendIntegers(text, {{"Elev", record.Elev},
                          {"Timestamp", static_cast<std::int32_t>(record.Timestamp)},
                          {"Press", record.Press},
                          {"Drift", record.Drift}});
    text += ':';
    append(text, record.Vis);
    text += ':';
    appendIntegers(text, {{"nTempCtr", record.nTempCtr},
                          {"nWindCtr", record.nWindCtr},
                          {"nCloudCtr", record.nCloudCtr},
                          {"nUpperVisCtr", record.nUpperVisCtr}});
    text += ':';
}

} // namespace

std::string newWeatherText(const NewWeather& record)
{
    std::string text;
    text.reserve(kUsualLength);
    appendHead(text, record);
    appendSection(text, "TempLayer", record.Temp, record.nTempCtr);
    text += ':';
    appendSection(text, "WindLayer", record.Wind, record.nWindCtr);
    text += ':';
    appendSection(text, "VisLayer", record.UpperVis, record.nUpperVisCtr);
    text += ':';
    appendSection(text, "CloudLayer", record.Cloud, record.nCloudCtr);
    return text;
}

std::string recordHex(const NewWeather& record)
{
    static_assert(std::endian::native == std::endian::little, "the record is little-endian");
    constexpr char kDigits[] = "0123456789abcdef";
    std::array<unsigned char, sizeof(NewWeather)> bytes{};
    std::memcpy(bytes.data(), &record, sizeof record);
    std::string hex;
    hex.reserve(2 * bytes.size());
    for (const unsigned char byte : bytes) {
        hex += kDigits[byte >> 4U];
        hex += kDigits[byte & 0xFU];
    }
    return hex;
}

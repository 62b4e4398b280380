#include "weather/output/records/NewWeatherText.h"

#include "aviation/support/NumberText.h"
#include "weather/output/records/TextFields.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

using recordtext::AppendIntegers;

/// Characters of a record with all its layers in use; texts of thousands grow slowly without it.
constexpr std::size_t kUsualLength = 4096;

void Append(std::string& text, const VisLayer& layer)
{
    AppendIntegers(
        text, {{"UpperAlt", layer.UpperAlt}, {"LowerAlt", layer.LowerAlt}, {"Range", layer.Range}});
}

void Append(std::string& text, const TempLayer& layer)
{
    AppendIntegers(text, {{"Alt", layer.Alt},
                          {"Day", layer.Day},
                          {"DayNightVar", layer.DayNightVar},
                          {"Dew", layer.Dew}});
}

void Append(std::string& text, const WindLayer& layer)
{
    AppendIntegers(text, {{"UpperAlt", layer.UpperAlt},
                          {"Speed", layer.Speed},
                          {"Gust", layer.Gust},
                          {"Dir", layer.Dir},
                          {"Turbulence", layer.Turbulence},
                          {"Shear", layer.Shear},
                          {"Variance", layer.Variance},
                          {"SpeedFract", layer.SpeedFract},
                          {"CapAbove", layer.CapAbove}});
}

void Append(std::string& text, const CloudLayer& layer)
{
    AppendIntegers(text, {{"UpperAlt", layer.UpperAlt},
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
void AppendSection(std::string& text, const char* name, const Layers& layers, std::int32_t count)
{
    const auto used = std::clamp<std::int64_t>(count, 0, static_cast<std::int64_t>(layers.size()));
    text.append(name) += '{';
    std::for_each_n(layers.begin(), used, [&text](const auto& layer) {
        Append(text, layer);
        text += '|';
    });
    text += '}';
}

/// Everything in front of the layers, each group with its ":". The two unsigned 32-bit fields are
/// printed as signed ones, as the bridge's "%i" does.
void AppendHead(std::string& text, const NewWeather& record)
{
    AppendIntegers(text, {{"Command", record.Command},
                          {"Flag", record.Flag},
                          {"Signature", static_cast<std::int32_t>(record.Signature)}});
    text.append(":Icao=").append(record.icaoText()) += ':';
    AppendIntegers(text, {{"Dynamic", record.Dynamic}, {"Seconds", record.Seconds}});
    text.append(":Lat=").append(aviation::FixedText(record.Lat, 6));
    text.append(":Lon=").append(aviation::FixedText(record.Lon, 6)) += ':';
    AppendIntegers(text, {{"Elev", record.Elev},
                          {"Timestamp", static_cast<std::int32_t>(record.Timestamp)},
                          {"Press", record.Press},
                          {"Drift", record.Drift}});
    text += ':';
    Append(text, record.Vis);
    text += ':';
    AppendIntegers(text, {{"nTempCtr", record.nTempCtr},
                          {"nWindCtr", record.nWindCtr},
                          {"nCloudCtr", record.nCloudCtr},
                          {"nUpperVisCtr", record.nUpperVisCtr}});
    text += ':';
}

} // namespace

std::string NewWeatherText(const NewWeather& record)
{
    std::string text;
    text.reserve(kUsualLength);
    AppendHead(text, record);
    AppendSection(text, "TempLayer", record.Temp, record.nTempCtr);
    text += ':';
    AppendSection(text, "WindLayer", record.Wind, record.nWindCtr);
    text += ':';
    AppendSection(text, "VisLayer", record.UpperVis, record.nUpperVisCtr);
    text += ':';
    AppendSection(text, "CloudLayer", record.Cloud, record.nCloudCtr);
    return text;
}

std::string RecordHex(const NewWeather& record)
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

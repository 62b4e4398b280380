#include "weather/output/records/NewWeatherText.h"

#include "aviation/support/NumberText.h"
#include "weather/output/records/TextFields.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

using recordtext::JoinedIntegers;

std::string Text(const VisLayer& layer)
{
    return JoinedIntegers(
        {{"UpperAlt", layer.UpperAlt}, {"LowerAlt", layer.LowerAlt}, {"Range", layer.Range}});
}

std::string Text(const TempLayer& layer)
{
    return JoinedIntegers({{"Alt", layer.Alt},
                           {"Day", layer.Day},
                           {"DayNightVar", layer.DayNightVar},
                           {"Dew", layer.Dew}});
}

std::string Text(const WindLayer& layer)
{
    return JoinedIntegers({{"UpperAlt", layer.UpperAlt},
                           {"Speed", layer.Speed},
                           {"Gust", layer.Gust},
                           {"Dir", layer.Dir},
                           {"Turbulence", layer.Turbulence},
                           {"Shear", layer.Shear},
                           {"Variance", layer.Variance},
                           {"SpeedFract", layer.SpeedFract},
                           {"CapAbove", layer.CapAbove}});
}

std::string Text(const CloudLayer& layer)
{
    return JoinedIntegers({{"UpperAlt", layer.UpperAlt},
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
std::string Section(const char* name, const Layers& layers, std::int32_t count)
{
    const auto used = std::clamp<std::int64_t>(count, 0, static_cast<std::int64_t>(layers.size()));
    std::string text = std::string(name) + "{";
    std::for_each_n(layers.begin(), used,
                    [&text](const auto& layer) { text += Text(layer) + "|"; });
    return text + "}";
}

/// Everything in front of the layers, each group with its ":". The two unsigned 32-bit fields are
/// printed as signed ones, as the bridge's "%i" does.
std::string Head(const NewWeather& record)
{
    return JoinedIntegers({{"Command", record.Command},
                           {"Flag", record.Flag},
                           {"Signature", static_cast<std::int32_t>(record.Signature)}})
           + ":Icao=" + record.icaoText() + ":"
           + JoinedIntegers({{"Dynamic", record.Dynamic}, {"Seconds", record.Seconds}}) + ":Lat="
           + aviation::FixedText(record.Lat, 6) + ":Lon=" + aviation::FixedText(record.Lon, 6) + ":"
           + JoinedIntegers({{"Elev", record.Elev},
                             {"Timestamp", static_cast<std::int32_t>(record.Timestamp)},
                             {"Press", record.Press},
                             {"Drift", record.Drift}})
           + ":" + Text(record.Vis) + ":"
           + JoinedIntegers({{"nTempCtr", record.nTempCtr},
                             {"nWindCtr", record.nWindCtr},
                             {"nCloudCtr", record.nCloudCtr},
                             {"nUpperVisCtr", record.nUpperVisCtr}})
           + ":";
}

} // namespace

std::string NewWeatherText(const NewWeather& record)
{
    return Head(record) + Section("TempLayer", record.Temp, record.nTempCtr) + ":"
           + Section("WindLayer", record.Wind, record.nWindCtr) + ":"
           + Section("VisLayer", record.UpperVis, record.nUpperVisCtr) + ":"
           + Section("CloudLayer", record.Cloud, record.nCloudCtr);
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

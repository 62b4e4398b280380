#include "weather/output/records/XPlaneWeatherText.h"

#include "weather/output/records/TextFields.h"

namespace {

using recordtext::JoinedFixed;
using recordtext::JoinedIntegers;

std::string ValuesText(const XPlaneWeather& record)
{
    return JoinedFixed({{"Press", record.Press, 2},
                        {"Vis", record.Vis, 1},
                        {"Temp", record.Temp, 1},
                        {"Dew", record.Dew, 1},
                        {"RainPercent", record.RainPercent, 1},
                        {"ThunderstromPercent", record.ThunderstromPercent, 6},
                        {"WindTurbulencePercent", record.WindTurbulencePercent, 6},
                        {"RateChangePercent", record.RateChangePercent, 1},
                        {"WaveDir", record.WaveDir, 0},
                        {"WaveHeight", record.WaveHeight, 1},
                        {"WaveSpeed", record.WaveSpeed, 1},
                        {"WaveLenght", record.WaveLenght, 1},
                        {"TempTropo", record.TempTropo, 1},
                        {"TropoAltMeter", record.TropoAltMeter, 1}});
}

std::string CloudsText(const XPlaneWeather& record)
{
    std::string text = "Cloudlayer{";
    for (const XPlaneCloud& layer : record.Clouds) {
        text +=
            JoinedIntegers({{"Type", layer.Type}}) + ":"
            + JoinedFixed(
                {{"Coverage", layer.Coverage, 2}, {"Base", layer.Base, 0}, {"Top", layer.Top, 0}})
            + "|";
    }
    return text + "}:";
}

std::string LongText(const XPlaneWindLayer& layer)
{
    return JoinedFixed({{"Alt", layer.Alt, 0},
                        {"Dir", layer.Dir, 1},
                        {"Speed", layer.Speed, 0},
                        {"Turbulence", layer.Turbulence, 1},
                        {"ShearDir", layer.ShearDir, 1},
                        {"ShearSpeed", layer.ShearSpeed, 1}});
}

std::string ShortText(const XPlaneWindLayer& layer)
{
    return JoinedFixed({{"", layer.Alt, 0},
                        {"", layer.Dir, 1},
                        {"", layer.Speed, 0},
                        {"", layer.Turbulence, 1},
                        {"", layer.ShearDir, 1},
                        {"", layer.ShearSpeed, 1},
                        {"", layer.Further[0], 1},
                        {"", layer.Further[1], 1}});
}

std::string WindLayersText(const std::vector<XPlaneWindLayer>& layers,
                           std::string (*layerText)(const XPlaneWindLayer&))
{
    std::string text = "WindLayer{";
    for (const XPlaneWindLayer& layer : layers) {
        text += layerText(layer) + "|";
    }
    return text + "}";
}

} // namespace

std::string XPlaneWeatherText(const XPlaneWeather& record)
{
    return ValuesText(record) + CloudsText(record) + WindLayersLongText(record.Winds);
}

std::string XPlaneWeatherWxText(const XPlaneWeather& record)
{
    return ValuesText(record) + ":WX=" + record.WX + ":" + CloudsText(record)
           + WindLayersShortText(record.Winds);
}

std::string WindLayersLongText(const std::vector<XPlaneWindLayer>& layers)
{
    return WindLayersText(layers, LongText);
}

std::string WindLayersShortText(const std::vector<XPlaneWindLayer>& layers)
{
    return WindLayersText(layers, ShortText);
}

#include "weather/output/records/XPlaneWeatherText.h"

#include "weather/output/records/TextFields.h"

namespace {

using recordtext::joinedFixed;
using recordtext::joinedIntegers;

std::string valuesText(const XPlaneWeather& record)
{
    return joinedFixed({{"Press", record.Press, 2},
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

std::string cloudsText(const XPlaneWeather& record)
{
    std::string text = "Cloudlayer{";
    for (const XPlaneCloud& layer : record.Clouds) {
        text +=
            joinedIntegers({{"Type", layer.Type}}) + ":"
            + joinedFixed(
                {{"Coverage", layer.Coverage, 2}, {"Base", layer.Base, 0}, {"Top", layer.Top, 0}})
            + "|";
    }
    return text + "}:";
}

std::string longText(const XPlaneWindLayer& layer)
{
    return joinedFixed({{"Alt", layer.Alt, 0},
                        {"Dir", layer.Dir, 1},
                        {"Speed", layer.Speed, 0},
                        {"Turbulence", layer.Turbulence, 1},
                        {"ShearDir", layer.ShearDir, 1},
                        {"ShearSpeed", layer.ShearSpeed, 1}});
}

std::string shortText(const XPlaneWindLayer& layer)
{
    return joinedFixed({{"", layer.Alt, 0},
                        {"", layer.Dir, 1},
                        {"", layer.Speed, 0},
                        {"", layer.Turbulence, 1},
                        {"", layer.ShearDir, 1},
                        {"", layer.ShearSpeed, 1},
                        {"", layer.Further[0], 1},
                        {"", layer.Further[1], 1}});
}

std::string windLayersText(const std::vector<XPlaneWindLayer>& layers,
                           std::string (*layerText)(const XPlaneWindLayer&))
{
    std::string text = "WindLayer{";
    for (const XPlaneWindLayer& layer : layers) {
        text += layerText(layer) + "|";
    }
    return text + "}";
}

} // namespace

std::string xPlaneWeatherText(const XPlaneWeather& record)
{
    return valuesText(record) + cloudsText(record) + windLayersLongText(record.Winds);
}

std::string xPlaneWeatherWxText(const XPlaneWeather& record)
{
    return valuesText(record) + ":WX=" + record.WX + ":" + cloudsText(record)
           + windLayersShortText(record.Winds);
}

std::string windLayersLongText(const std::vector<XPlaneWindLayer>& layers)
{
    return windLayersText(layers, longText);
}

std::string windLayersShortText(const std::vector<XPlaneWindLayer>& layers)
{
    return windLayersText(layers, shortText);
}

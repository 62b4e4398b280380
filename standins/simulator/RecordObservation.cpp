#include "standins/simulator/RecordObservation.h"

#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cmath>

namespace simulator {

namespace {

using aviation::integerText;

constexpr double kDegreesPerUnit = 360.0 / 65536.0;
constexpr double kMetresPerElevUnit = 1.0 / 65536.0;
constexpr int kCumulonimbus = 10;

NewWeather standardWeather()
{
    NewWeather record;
    record.setIcao(L"GLOB");
    record.Press = 1013 * 16;
    record.Vis.Range = 6215; // ten kilometres
    record.nTempCtr = 1;
    record.Temp[0] = {0, 15, 0, 5};
    return record;
}

bool isPlain(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
}

std::string stationText(const NewWeather& record)
{
    std::string station = record.icaoText();
    std::replace_if(
        station.begin(), station.end(), [](char c) { return !isPlain(c); }, '?');
    return station.empty() ? "????" : station;
}

std::string timeText(std::int64_t secondsSince1970)
{
    const QDateTime utc = QDateTime::fromSecsSinceEpoch(secondsSince1970, Qt::UTC);
    return integerText(utc.date().day(), 2) + integerText(utc.time().hour(), 2)
           + integerText(utc.time().minute(), 2) + 'Z';
}

std::string windText(const NewWeather& record)
{
    if (record.nWindCtr < 1 || record.Wind[0].Speed == 0) {
        return "00000KT";
    }
    const WindLayer& wind = record.Wind[0];
    const long direction = std::lround(wind.Dir * kDegreesPerUnit);
    std::string text =
        integerText(direction == 0 ? 360 : direction, 3) + integerText(wind.Speed, 2);
    if (wind.Gust > 0) {
        text += 'G' + integerText(wind.Speed + wind.Gust, 2);
    }
    return text + "KT";
}

std::string visibilityText(const NewWeather& record)
{
    constexpr int kMost = 9999;
    return integerText(std::min(kMost, record.Vis.Range * aviation::kMetresPerStatuteMile / 100),
                       4);
}

std::size_t usedClouds(const NewWeather& record)
{
    return static_cast<std::size_t>(
        std::clamp(record.nCloudCtr, 0, static_cast<std::int32_t>(kCloudLayerSlots)));
}

/// Of the lowest layer that it falls from; empty when it is dry.
std::string precipitationText(const NewWeather& record)
{
    const auto end = record.Cloud.begin() + static_cast<std::ptrdiff_t>(usedClouds(record));
    const auto wet = std::find_if(record.Cloud.begin(), end, [](const CloudLayer& cloud) {
        return cloud.PrecipType != 0 && cloud.PrecipRate != 0;
    });
    if (wet == end) {
        return {};
    }
    constexpr int kModerate = 3;
    const std::string sign = wet->PrecipRate < kModerate ? "-" : "";
    return ' ' + (wet->PrecipRate > kModerate ? "+" : sign) + (wet->PrecipType == 1 ? "RA" : "SN");
}

std::string cloudText(const CloudLayer& cloud, double elevation)
{
    static constexpr std::array kAmounts{"FEW", "FEW", "FEW", "SCT", "SCT",
                                         "BKN", "BKN", "BKN", "OVC"};
    constexpr double kHighest = 999.0;
    const double hundreds = (cloud.LowerAlt - elevation) * aviation::kFeetPerMetre / 100.0;
    const auto amount = std::min<std::size_t>(cloud.Cover, kAmounts.size() - 1);
    return std::string(1, ' ') + kAmounts[amount]
           + integerText(std::lround(std::clamp(hundreds, 0.0, kHighest)), 3)
           + (cloud.Type == kCumulonimbus ? "CB" : "");
}

std::string cloudsText(const NewWeather& record)
{
    std::string text;
    for (std::size_t i = 0; i < usedClouds(record); ++i) {
        if (record.Cloud[i].Cover > 0) {
            text += cloudText(record.Cloud[i], record.Elev * kMetresPerElevUnit);
        }
    }
    return text.empty() ? " SKC" : text;
}

std::string degreesText(int celsius)
{
    return (celsius < 0 ? "M" : "") + integerText(std::abs(celsius), 2);
}

std::string temperatureText(const NewWeather& record)
{
    if (record.nTempCtr < 1) {
        return "/////";
    }
    return degreesText(record.Temp[0].Day) + '/' + degreesText(record.Temp[0].Dew);
}

std::string textOf(const NewWeather& record, std::int64_t secondsSince1970)
{
    constexpr double kUnitsPerHpa = 16.0;
    return stationText(record) + ' ' + timeText(secondsSince1970) + ' ' + windText(record) + ' '
           + visibilityText(record) + precipitationText(record) + cloudsText(record) + ' '
           + temperatureText(record) + " Q"
           + integerText(std::lround(record.Press / kUnitsPerHpa), 4);
}

} // namespace

std::string observationOf(const NewWeather* record, std::int64_t secondsSince1970)
{
    return textOf(record != nullptr ? *record : standardWeather(), secondsSince1970);
}

} // namespace simulator

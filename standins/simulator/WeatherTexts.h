#pragma once

#include "aviation/Wind.h"
#include "weather/output/records/NewWeather.h"
#include "weather/output/records/XPlaneWeather.h"

#include <QByteArray>

#include <optional>
#include <vector>

/// Readers of the weather that a client writes. They are strict: a wrong word, a number out of its
/// field's range or text after the end gives nothing, so that a client's mistake shows.
namespace simulator {

/// Message 7. As many layers as the counts say, at most those that the record has room for.
std::optional<NewWeather> readWeatherRecord(const QByteArray& text);
/// Message 9, or message 28 when `withWx` is set.
std::optional<XPlaneWeather> readWeatherData(const QByteArray& text, bool withWx);
/// Message 13.
std::optional<std::vector<XPlaneWindLayer>> readWindLayers(const QByteArray& text);
/// Message 6.
std::optional<aviation::weather::Wind> readWind(const QByteArray& text);

} // namespace simulator

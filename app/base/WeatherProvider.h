#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Position.h"
#include "aviation/Synop.h"

/// Results of WeatherProvider::GetWeather.
namespace placeweather {
inline constexpr int kFound = 0;
inline constexpr int kNoMetar = 1;
} // namespace placeweather

/// The weather at a place, for those who don't know the store. Main thread.
class WeatherProvider
{
public:
    WeatherProvider() = default;
    WeatherProvider(const WeatherProvider&) = delete;
    WeatherProvider& operator=(const WeatherProvider&) = delete;
    virtual ~WeatherProvider() = default;

    /// The nearest METAR, SYNOP and upper-air record, decoded. kNoMetar leaves all three as they
    /// were. With a METAR but without upper-air data these are fetched once, and the call waits for
    /// them; it is kFound whether they came or not, and what there is none of is blank.
    [[nodiscard]] virtual int GetWeather(const aviation::Position& position,
                                         aviation::weather::Metar& metar,
                                         aviation::weather::Synop& synop,
                                         aviation::weather::Grib& grib) = 0;
};

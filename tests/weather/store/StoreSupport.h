#pragma once

#include "weather/store/WeatherManager.h"

#include <string>
#include <utility>
#include <vector>

/// A store that keeps what it reports.
class ListeningStore final : public aviation::weather::WeatherManager
{
public:
    using Line = std::pair<std::wstring, int>;

    ListeningStore()
        : WeatherManager({[this](int /*value*/, int /*total*/, std::wstring text) {
                              steps.push_back(std::move(text));
                          },
                          [this](std::wstring text, int level) {
                              lines.emplace_back(std::move(text), level);
                          }})
    {}

    std::vector<std::wstring> steps;
    std::vector<Line> lines;
};

inline aviation::weather::Station makeStation(std::wstring icao, double latitude, double longitude,
                                              int elevation = 0)
{
    std::wstring name = L"Name of " + icao;
    std::wstring country = L"Country";
    return aviation::weather::Station(icao, name, country, elevation,
                                      aviation::Position(latitude, longitude));
}

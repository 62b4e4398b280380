#include "weather/output/records/NewWeather.h"

#include "aviation/support/NumberText.h"

#include <algorithm>

void NewWeather::setIcao(std::wstring_view icao)
{
    const std::string narrow = aviation::narrowAscii(icao.substr(0, Icao.size()));
    Icao.fill('\0');
    std::copy(narrow.begin(), narrow.end(), Icao.begin());
}

std::string NewWeather::icaoText() const
{
    return {Icao.begin(), std::find(Icao.begin(), Icao.end(), '\0')};
}

#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "aviation/support/NumberText.h"

#include <cmath>

namespace aviation::weather {

namespace {

/// Stands for the station identifier of a METAR that has none.
std::string identifierOfType(std::wstring_view reportText)
{
    std::string identifier;
    const auto holds = [reportText](std::wstring_view mark) {
        return reportText.find(mark) != std::wstring_view::npos;
    };
    if (holds(L"AAXX")) {
        identifier = "LAND ";
    }
    if (holds(L"BBXX")) {
        identifier = "SHIP ";
    }
    if (holds(L"OOXX")) {
        identifier = "MOBI ";
    }
    return identifier;
}

/// Without decimals, in at least `width` characters.
std::string rounded(float value, int width)
{
    return fixedText(static_cast<double>(value), 0, width);
}

std::string windGroup(const Wind& wind)
{
    const std::string gust = wind.Gust > 0.0F ? "G" + rounded(wind.Gust, 2) : std::string();
    return rounded(wind.Dir, 3) + rounded(wind.Speed, 2) + gust + "KT ";
}

std::string visibilityGroup(std::int32_t metres)
{
    constexpr std::int32_t kMostInMetres = 9999;
    return metres > kMostInMetres ? integerText(metres / 1000) + "KM "
                                  : integerText(metres, 4) + " ";
}

std::string cloudGroup(const Cloud& cloud)
{
    return coverageAbbreviation(cloud.coverage) + integerText(cloud.base / 100, 3) + " ";
}

std::string cloudGroups(const Synop& synop)
{
    if (synop.clouds().empty()) {
        return synop.baseCloud().coverage >= 1 ? cloudGroup(synop.baseCloud()) : std::string();
    }
    std::string groups;
    for (const Cloud& cloud : synop.clouds()) {
        groups += cloudGroup(cloud);
    }
    return groups;
}

std::string temperatureText(float celsius)
{
    return celsius < 0.0F ? "M" + rounded(std::fabs(celsius), 2) : rounded(celsius, 2);
}

/// Everything after the time group.
std::string surfaceGroups(const Synop& synop)
{
    return windGroup(synop.wind()) + visibilityGroup(synop.visibility()) + cloudGroups(synop)
           + temperatureText(synop.temperature()) + "/" + temperatureText(synop.dewPoint()) + " Q"
           + rounded(synop.qnh(), 4) + " ";
}

} // namespace

void Synop::ToMetar(Metar& metar) const
{
    const std::wstring start =
        metar.icao().empty() ? widen(identifierOfType(reportText())) : metar.icao() + L" ";
    metar.resetDecoded();
    metar.setReportText(start + timeGroup().data() + L" " + widen(surfaceGroups(*this)));
    static_cast<void>(metar.Decode());
    metar.setPosition(*this);
    metar.setCountry(country());
    metar.setName(name());
    metar.setElevation(elevation());
}

} // namespace aviation::weather

#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "aviation/support/NumberText.h"

#include <cmath>

namespace aviation::weather {

namespace {

/// Stands for the station identifier of a METAR that has none.
std::string IdentifierOfType(std::wstring_view reportText)
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
std::string Rounded(float value, int width)
{
    return FixedText(static_cast<double>(value), 0, width);
}

std::string WindGroup(const Wind& wind)
{
    const std::string gust = wind.Gust > 0.0F ? "G" + Rounded(wind.Gust, 2) : std::string();
    return Rounded(wind.Dir, 3) + Rounded(wind.Speed, 2) + gust + "KT ";
}

std::string VisibilityGroup(std::int32_t metres)
{
    constexpr std::int32_t kMostInMetres = 9999;
    return metres > kMostInMetres ? IntegerText(metres / 1000) + "KM "
                                  : IntegerText(metres, 4) + " ";
}

std::string CloudGroup(const Cloud& cloud)
{
    return CoverageAbbreviation(cloud.coverage) + IntegerText(cloud.base / 100, 3) + " ";
}

std::string CloudGroups(const Synop& synop)
{
    if (synop.clouds().empty()) {
        return synop.baseCloud().coverage >= 1 ? CloudGroup(synop.baseCloud()) : std::string();
    }
    std::string groups;
    for (const Cloud& cloud : synop.clouds()) {
        groups += CloudGroup(cloud);
    }
    return groups;
}

std::string TemperatureText(float celsius)
{
    return celsius < 0.0F ? "M" + Rounded(std::fabs(celsius), 2) : Rounded(celsius, 2);
}

/// Everything behind the time group.
std::string SurfaceGroups(const Synop& synop)
{
    return WindGroup(synop.wind()) + VisibilityGroup(synop.visibility()) + CloudGroups(synop)
           + TemperatureText(synop.temperature()) + "/" + TemperatureText(synop.dewPoint()) + " Q"
           + Rounded(synop.qnh(), 4) + " ";
}

} // namespace

void Synop::ToMetar(Metar& metar) const
{
    const std::wstring start =
        metar.icao().empty() ? Widen(IdentifierOfType(reportText())) : metar.icao() + L" ";
    metar.resetDecoded();
    metar.setReportText(start + timeGroup().data() + L" " + Widen(SurfaceGroups(*this)));
    static_cast<void>(metar.Decode());
    metar.setPosition(*this);
    metar.setCountry(country());
    metar.setName(name());
    metar.setElevation(elevation());
}

} // namespace aviation::weather

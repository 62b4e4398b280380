#include "aviation/Metar.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <cmath>

namespace aviation::weather {

namespace {

constexpr wchar_t kDegree = L'\u00B0';

std::wstring Line(std::wstring_view label, std::wstring_view value)
{
    return std::wstring(label).append(value) + L"\n";
}

std::wstring Number(std::int64_t value)
{
    return Widen(IntegerText(value));
}

std::wstring Fixed(float value, int precision, int width = 0)
{
    return Widen(FixedText(static_cast<double>(value), precision, width));
}

/// Truncated. Adding 0 turns the -0 of a small negative number into 0.
std::wstring Whole(float value)
{
    return Fixed(std::trunc(value) + 0.0F, 0);
}

std::wstring Direction(float degrees)
{
    return Fixed(degrees, 0, 3) + kDegree;
}

std::wstring StationText(const Station& station)
{
    return Line(L"ICAO: ", station.icao()) + Line(L"Name: ", station.name())
           + Line(L"Country: ", station.country()) + L"Position: "
           + Widen(FixedText(station.latitude(), 2)) + kDegree + L", "
           + Widen(FixedText(station.longitude(), 2)) + kDegree + L"\nElevation: "
           + Number(station.elevation()) + L"ft\n";
}

std::wstring WindLines(const Metar& metar)
{
    const Wind& wind = metar.wind();
    std::wstring text = L"Wind: " + Direction(wind.Dir) + L"/" + Fixed(wind.Speed, 0) + L"kt";
    if (wind.Gust > 0.0F) {
        text += L" Gust " + Fixed(wind.Gust, 0) + L"kt";
    }
    text += L"\n";
    if (metar.hasVariableLimits()) {
        text += L"Wind Variable: " + Direction(static_cast<float>(metar.variableFrom())) + L"-"
                + Direction(static_cast<float>(metar.variableTo())) + L"\n";
    }
    return text;
}

const wchar_t* CoverageWord(int octas)
{
    if (octas <= 0) {
        return L"Sky Clear";
    }
    if (octas <= 2) {
        return L"Few";
    }
    if (octas <= 4) {
        return L"Scattered";
    }
    return octas <= 7 ? L"Broken" : L"Overcast";
}

std::wstring CloudLines(const std::vector<Cloud>& clouds)
{
    std::wstring text;
    for (const Cloud& cloud : clouds) {
        text += std::wstring(L"Clouds: ") + CoverageWord(cloud.coverage) + L" at "
                + Number(cloud.base) + L"ft\n";
    }
    return text;
}

std::wstring OptionalLine(std::wstring_view label, std::wstring_view value)
{
    return value.empty() ? std::wstring() : Line(label, value);
}

std::wstring PressureLine(float qnh)
{
    return L"QNH: " + Whole(qnh) + L" hpa/" + Fixed(qnh / kHpaPerHundredthInch / 100.0F, 2)
           + L" Inch\n";
}

} // namespace

std::wstring Metar::GetDecodedText(std::int32_t visibilityOverride) const
{
    std::wstring text = OptionalLine(L"Info: ", m_infoText) + StationText(*this);
    if (reportText().empty()) {
        return text;
    }
    text += WindLines(*this);
    text += L"Visibility: " + Number(visibilityOverride != 0 ? visibilityOverride : visibility())
            + L"m\n";
    text += OptionalLine(L"RVR: ", runwayText());
    text += OptionalLine(L"Weather phenomena: ", phenomenaText());
    text += CloudLines(clouds());
    text += L"Temperature/Dewpoint: " + Whole(temperature()) + kDegree + L"/" + Whole(dewPoint())
            + kDegree + L"\n";
    return text + PressureLine(qnh());
}

} // namespace aviation::weather

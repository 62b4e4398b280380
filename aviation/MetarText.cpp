#include "aviation/Metar.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <cmath>

namespace aviation::weather {

namespace {

constexpr wchar_t kDegree = L'\u00B0';

std::wstring textLine(std::wstring_view label, std::wstring_view value)
{
    return std::wstring(label).append(value) + L"\n";
}

std::wstring numberText(std::int64_t value)
{
    return widen(integerText(value));
}

std::wstring fixed(float value, int precision, int width = 0)
{
    return widen(fixedText(static_cast<double>(value), precision, width));
}

/// Truncated. Adding 0 turns the -0 of a small negative number into 0.
std::wstring wholeNumber(float value)
{
    return fixed(std::trunc(value) + 0.0F, 0);
}

std::wstring directionText(float degrees)
{
    return fixed(degrees, 0, 3) + kDegree;
}

std::wstring stationText(const Station& station)
{
    return textLine(L"ICAO: ", station.icao()) + textLine(L"Name: ", station.name())
           + textLine(L"Country: ", station.country()) + L"Position: "
           + widen(fixedText(station.latitude(), 2)) + kDegree + L", "
           + widen(fixedText(station.longitude(), 2)) + kDegree + L"\nElevation: "
           + numberText(station.elevation()) + L"ft\n";
}

std::wstring windLines(const Metar& metar)
{
    const Wind& wind = metar.wind();
    std::wstring text = L"Wind: " + directionText(wind.Dir) + L"/" + fixed(wind.Speed, 0) + L"kt";
    if (wind.Gust > 0.0F) {
        text += L" Gust " + fixed(wind.Gust, 0) + L"kt";
    }
    text += L"\n";
    if (metar.hasVariableLimits()) {
        text += L"Wind Variable: " + directionText(static_cast<float>(metar.variableFrom())) + L"-"
                + directionText(static_cast<float>(metar.variableTo())) + L"\n";
    }
    return text;
}

const wchar_t* coverageWord(int octas)
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

std::wstring cloudLines(const std::vector<Cloud>& clouds)
{
    std::wstring text;
    for (const Cloud& cloud : clouds) {
        text += std::wstring(L"Clouds: ") + coverageWord(cloud.coverage) + L" at "
                + numberText(cloud.base) + L"ft\n";
    }
    return text;
}

std::wstring optionalLine(std::wstring_view label, std::wstring_view value)
{
    return value.empty() ? std::wstring() : textLine(label, value);
}

std::wstring pressureLine(float qnh)
{
    return L"QNH: " + wholeNumber(qnh) + L" hpa/" + fixed(qnh / kHpaPerHundredthInch / 100.0F, 2)
           + L" Inch\n";
}

} // namespace

std::wstring Metar::GetDecodedText(std::int32_t visibilityOverride) const
{
    std::wstring text = optionalLine(L"Info: ", m_infoText) + stationText(*this);
    if (reportText().empty()) {
        return text;
    }
    text += windLines(*this);
    text += L"Visibility: "
            + numberText(visibilityOverride != 0 ? visibilityOverride : visibility()) + L"m\n";
    text += optionalLine(L"RVR: ", runwayText());
    text += optionalLine(L"Weather phenomena: ", phenomenaText());
    text += cloudLines(clouds());
    text += L"Temperature/Dewpoint: " + wholeNumber(temperature()) + kDegree + L"/"
            + wholeNumber(dewPoint()) + kDegree + L"\n";
    return text + pressureLine(qnh());
}

} // namespace aviation::weather

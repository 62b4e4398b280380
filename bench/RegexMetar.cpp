#include "bench/RegexMetar.h"

#include "aviation/MetarPatterns.h"
#include "tests/support/Regex.h"

#include <algorithm>
#include <cwchar>
#include <vector>

using namespace aviation::weather;
namespace mp = aviation::weather::metarpatterns;

namespace {

template <class P>
std::wregex makeRegex()
{
    return std::wregex(P::text().begin(), P::text().end());
}

template <class List>
std::vector<std::wregex> makeRegexes()
{
    std::vector<std::wregex> regexes;
    List::forEach([&]<class P>() { regexes.push_back(makeRegex<P>()); });
    return regexes;
}

int numberOf(const std::wstring& text)
{
    return static_cast<int>(std::wcstol(text.c_str(), nullptr, 10));
}

bool contains(const std::wstring& text, const wchar_t* part)
{
    return text.find(part) != std::wstring::npos;
}

/// The working copy of the text and the groups of the last match.
struct Work
{
    std::wstring text;
    std::vector<std::wstring> groups;

    bool take(const std::wregex& regex)
    {
        std::wsmatch match;
        if (!std::regex_search(text, match, regex)) {
            return false;
        }
        groups.clear();
        for (const auto& group : match) {
            groups.push_back(group.str());
        }
        text.erase(0, groups[0].size());
        trim();
        return true;
    }

    void trim()
    {
        text.erase(0, std::min(text.find_first_not_of(L' '), text.size()));
        text.erase(text.find_last_not_of(L' ') + 1);
    }
};

} // namespace

struct RegexMetar::Patterns
{
    using WindList =
        aviation::pattern::PatternList<mp::WindKnots, mp::WindGustKnots, mp::WindMetres,
                                       mp::WindGustMetres, mp::VariableKnots, mp::VariableMetres,
                                       mp::VariableGustKnots, mp::VariableGustMetres>;
    using TemperatureList = aviation::pattern::PatternList<mp::BothBelowZero, mp::DewPointBelowZero,
                                                           mp::BothAboveZero, mp::NoDewPoint>;

    std::wregex header = makeRegex<mp::Header>();
    std::wregex modifier = makeRegex<mp::Modifier>();
    std::vector<std::wregex> winds = makeRegexes<WindList>();
    std::wregex sector = makeRegex<mp::VariableSector>();
    std::wregex cavok = makeRegex<mp::Cavok>();
    std::vector<std::wregex> searched = makeRegexes<mp::SearchedPatterns>();
    std::wregex metres = makeRegex<mp::Metres>();
    std::wregex moreThan = makeRegex<mp::MoreThanMetres>();
    std::wregex directional = makeRegex<mp::DirectionalMetres>();
    std::wregex runway = makeRegex<mp::RunwayVisualRange>();
    std::wregex tailRunway = makeRegex<mp::TailRunwayVisualRange>();
    std::wregex weather = makeRegex<mp::WeatherGroup>();
    std::wregex cloud = makeRegex<mp::CloudGroup>();
    std::vector<std::wregex> temperatures = makeRegexes<TemperatureList>();
    std::wregex hectopascals = makeRegex<mp::QnhHectopascals>();
    std::wregex inches = makeRegex<mp::QnhInches>();
};

namespace {

/// Index of the first pattern that matches, or -1.
int takeFirst(Work& work, const std::vector<std::wregex>& regexes)
{
    for (std::size_t at = 0; at < regexes.size(); ++at) {
        if (work.take(regexes[at])) {
            return static_cast<int>(at);
        }
    }
    return -1;
}

void storeWind(const std::vector<std::wstring>& groups, int pattern, SurfaceValues& values)
{
    const bool slashes = pattern == 0 && (groups[1] == L"///" || groups[2] == L"//");
    values.windSeen = !slashes;
    if (slashes) {
        return;
    }
    const bool metres = pattern == 2 || pattern == 3 || pattern == 5 || pattern == 7;
    const auto knots = [metres](const std::wstring& text) {
        return static_cast<float>(metres ? numberOf(text) / 0.5144444 : numberOf(text));
    };
    const std::size_t speed = pattern < 4 ? 2 : 1;
    values.wind.Dir = pattern < 4 ? static_cast<float>(numberOf(groups[1])) : 0.0F;
    values.wind.Speed = knots(groups[speed]);
    values.wind.Gust = groups.size() > speed + 1 ? knots(groups[speed + 1]) : 0.0F;
}

int fraction(const std::wstring& a, const std::wstring& b)
{
    return numberOf(b) == 0
               ? 0
               : static_cast<int>(static_cast<double>(numberOf(a)) / numberOf(b) * 1609.0);
}

int searchedVisibility(const std::vector<std::wstring>& groups, int pattern)
{
    switch (pattern) {
    case 0:
    case 2:
        return fraction(groups[1], groups[2]);
    case 1:
        return numberOf(groups[1]) * 1609 + fraction(groups[2], groups[3]);
    case 3:
        return groups[1].substr(0, 2) == L"10" ? 9999 : numberOf(groups[1]) * 1609;
    case 4:
        return numberOf(groups[1]) * 1609;
    default:
        return numberOf(groups[1]) * 1000;
    }
}

std::wstring takeRunways(Work& work, const std::wregex& regex)
{
    std::wstring texts;
    while (work.take(regex)) {
        texts += work.groups[0] + L" ";
    }
    return texts;
}

void storeWeather(std::wstring group, RegexMetarReading& reading, int elevation)
{
    if (contains(group, L"NSC")) {
        reading.metar.noSignificantCloud = true;
        reading.surface.clouds.push_back({0, 3, 5000, -1, elevation + 2000});
    }
    if (group[0] == L'-' || group[0] == L'+') {
        reading.metar.intensity = group[0] == L'-' ? 1 : 3;
        group.erase(0, 1);
    } else if (group[0] == L'/') {
        group.erase(0, 2);
    }
    reading.metar.phenomenaText += group;
}

void storeCloud(const std::wstring& group, SurfaceValues& values, int elevation)
{
    std::wstring height = group.size() >= 6 ? group.substr(3, 3) : L"";
    height = contains(group, L"VV") ? group.substr(2, 3) : height;
    Cloud cloud;
    const wchar_t* const codes[] = {L"VV", L"OVC", L"BKN", L"SCT", L"FEW"};
    const std::uint8_t octas[] = {8, 8, 7, 4, 2};
    for (std::size_t at = 0; at < 5; ++at) {
        cloud.coverage = contains(group, codes[at]) ? octas[at] : cloud.coverage;
    }
    cloud.base = numberOf(height) * 100;
    if (contains(height, L"///") && cloud.base == 0) {
        cloud.base = 100;
    }
    cloud.altitude = cloud.base + elevation;
    cloud.type = contains(group, L"TCU") ? 11 : cloud.type;
    cloud.type = contains(group, L"CB") ? 10 : cloud.type;
    if (cloud.coverage != 0) {
        values.clouds.push_back(cloud);
    }
    values.cloudsSeen = true;
}

void storeTemperature(const std::vector<std::wstring>& groups, int pattern, SurfaceValues& values)
{
    const int a = numberOf(groups[1]);
    values.temperature = static_cast<float>(pattern == 0 ? -a : a);
    if (pattern == 3) {
        values.dewPoint = values.temperature - 3;
    } else {
        const int b = numberOf(groups[2]);
        values.dewPoint = static_cast<float>(pattern == 2 ? b : -b);
    }
}

float seaLevel(float celsius, int elevation)
{
    const float feet = static_cast<float>(elevation);
    return static_cast<float>(static_cast<double>(feet) / 100 * 0.2 + static_cast<double>(celsius));
}

/// False when the value is out of range.
bool storeHectopascals(int value, float& qnh)
{
    value += value < 100 ? 1000 : 0;
    const bool good = value >= 800 && value <= 1300;
    qnh = good ? static_cast<float>(value) : 1013.0F;
    return good;
}

template <class Patterns>
void readVisibility(const Patterns& patterns, Work& work, RegexMetarReading& reading)
{
    SurfaceValues& surface = reading.surface;
    surface.visibility = 9999;
    surface.visibilitySeen = true;
    if (work.take(patterns.cavok)) {
        reading.metar.cavok = true;
        surface.cloudsSeen = true;
    } else if (const int searched = takeFirst(work, patterns.searched); searched >= 0) {
        surface.visibility = searchedVisibility(work.groups, searched);
    } else if (work.take(patterns.metres)) {
        surface.visibility = work.groups[1] == L"////" ? 9999 : numberOf(work.groups[1]);
    } else if (work.take(patterns.moreThan)) {
        surface.visibility = numberOf(work.groups[2]);
    } else {
        surface.visibilitySeen = false;
    }
}

/// From the weather groups on; returns the status.
template <class Patterns>
int readTail(const Patterns& patterns, Work& work, int elevation, RegexMetarReading& reading)
{
    SurfaceValues& surface = reading.surface;
    reading.metar.intensity = 2;
    while (work.take(patterns.weather)) {
        storeWeather(work.groups[0], reading, elevation);
    }
    while (work.take(patterns.cloud)) {
        storeCloud(work.groups[0], surface, elevation);
    }
    if (const int pattern = takeFirst(work, patterns.temperatures); pattern >= 0) {
        storeTemperature(work.groups, pattern, surface);
    }
    reading.metar.seaLevelTemperature = seaLevel(surface.temperature, elevation);
    reading.metar.seaLevelDewPoint = seaLevel(surface.dewPoint, elevation);
    if (work.take(patterns.hectopascals)) {
        if (!storeHectopascals(numberOf(work.groups[1]), surface.qnh)) {
            return 6;
        }
    } else if (work.take(patterns.inches)) {
        surface.qnh = static_cast<float>(numberOf(work.groups[1])) * 0.33864316F;
    }
    reading.metar.tailRunwayText = takeRunways(work, patterns.tailRunway);
    return 0;
}

} // namespace

RegexMetar::RegexMetar() : m_patterns(std::make_unique<const Patterns>()) {}

RegexMetar::~RegexMetar() = default;

RegexMetarReading RegexMetar::Decode(const std::wstring& report, int elevation) const
{
    RegexMetarReading reading;
    if (report.size() < 10) {
        reading.status = 7;
        return reading;
    }
    Work work{report, {}};
    if (work.take(m_patterns->header)) {
        reading.icao = work.groups[1];
        work.groups[2].copy(reading.metar.timeGroup.data(), 6);
    }
    work.take(m_patterns->modifier);
    const int wind = takeFirst(work, m_patterns->winds);
    if (wind < 0) {
        reading.status = 2;
        return reading;
    }
    storeWind(work.groups, wind, reading.surface);
    if (work.take(m_patterns->sector)) {
        reading.surface.variableFrom = numberOf(work.groups[1]);
        reading.surface.variableTo = numberOf(work.groups[2]);
    }
    readVisibility(*m_patterns, work, reading);
    while (work.take(m_patterns->directional)) {
    }
    reading.metar.runwayText = takeRunways(work, m_patterns->runway);
    reading.status = work.text.size() < 5 ? 10 : readTail(*m_patterns, work, elevation, reading);
    return reading;
}

#include "aviation/GroupReader.h"
#include "aviation/Metar.h"
#include "aviation/MetarPatterns.h"
#include "aviation/MetarVisibility.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ReportTime.h"

namespace aviation::weather {

namespace {

using namespace metarpatterns;
using namespace std::string_view_literals;

constexpr std::size_t kShortestReport = 10;
constexpr std::size_t kShortestRest = 5; ///< before the weather groups

constexpr std::uint8_t kLight = 1;
constexpr std::uint8_t kModerate = 2;
constexpr std::uint8_t kHeavy = 3;

float numberOf(std::wstring_view text)
{
    return static_cast<float>(integerFromDigits(text));
}

/// Two characters that are digits for sure; headers are read by the thousand.
int twoDigits(std::wstring_view text, std::size_t at)
{
    return static_cast<int>((text[at] - L'0') * 10 + (text[at + 1] - L'0'));
}

/// Written out, as is the next one, since the library's calls for wide characters take longer than
/// the few that a group has.
bool startsWith(std::wstring_view text, std::wstring_view part)
{
    if (text.size() < part.size()) {
        return false;
    }
    for (std::size_t at = 0; at < part.size(); ++at) {
        if (text[at] != part[at]) {
            return false;
        }
    }
    return true;
}

bool holds(std::wstring_view group, std::wstring_view part)
{
    while (group.size() >= part.size()) {
        if (startsWith(group, part)) {
            return true;
        }
        group.remove_prefix(1);
    }
    return false;
}

enum class SpeedUnit
{
    Knots,
    MetresPerSecond
};

float speedInKnots(std::wstring_view text, SpeedUnit unit)
{
    const int speed = integerFromDigits(text);
    return unit == SpeedUnit::Knots ? static_cast<float>(speed)
                                    : static_cast<float>(speed / kMetresPerSecondPerKnot);
}

/// The plain form is the only one that may hold slashes, for a wind that wasn't measured, and the
/// only one that says that there is no gust.
bool takePlainWind(GroupReader& report, SurfaceValues& values)
{
    const auto match = report.take<WindKnots>();
    if (!match) {
        return false;
    }
    values.windSeen = !startsWith(match[1], L"///"sv) && !startsWith(match[2], L"//"sv);
    if (values.windSeen) {
        values.wind.Dir = numberOf(match[1]);
        values.wind.Speed = numberOf(match[2]);
        values.wind.Gust = 0.0F;
    }
    values.held.set(Field::Direction, values.windSeen);
    return true;
}

/// Direction, speed and, when the pattern has one more group, gust.
template <class P>
bool takeWind(GroupReader& report, SurfaceValues& values, SpeedUnit unit)
{
    constexpr std::size_t kGust = 3;
    const auto match = report.take<P>();
    if (!match) {
        return false;
    }
    values.wind.Dir = numberOf(match[1]);
    values.wind.Speed = speedInKnots(match[2], unit);
    if constexpr (P::kGroups > kGust) {
        values.wind.Gust = speedInKnots(match[kGust], unit);
    }
    values.windSeen = true;
    values.held.set(Field::Direction);
    return true;
}

/// The same for VRB, which is stored as direction 0.
template <class P>
bool takeVariableWind(GroupReader& report, SurfaceValues& values, SpeedUnit unit)
{
    constexpr std::size_t kGust = 2;
    const auto match = report.take<P>();
    if (!match) {
        return false;
    }
    values.wind.Dir = 0.0F;
    values.wind.Speed = speedInKnots(match[1], unit);
    if constexpr (P::kGroups > kGust) {
        values.wind.Gust = speedInKnots(match[kGust], unit);
    }
    values.windSeen = true;
    return true;
}

/// False when no wind group stands there, which ends the decoding.
bool readWind(GroupReader& report, SurfaceValues& values)
{
    constexpr SpeedUnit kKnots = SpeedUnit::Knots;
    constexpr SpeedUnit kMetres = SpeedUnit::MetresPerSecond;
    return takePlainWind(report, values) || takeWind<WindGustKnots>(report, values, kKnots)
           || takeWind<WindMetres>(report, values, kMetres)
           || takeWind<WindGustMetres>(report, values, kMetres)
           || takeVariableWind<VariableKnots>(report, values, kKnots)
           || takeVariableWind<VariableMetres>(report, values, kMetres)
           || takeVariableWind<VariableGustKnots>(report, values, kKnots)
           || takeVariableWind<VariableGustMetres>(report, values, kMetres);
}

void readVariableSector(GroupReader& report, SurfaceValues& values)
{
    if (const auto match = report.take<VariableSector>()) {
        values.variableFrom = integerFromDigits(match[1]);
        values.variableTo = integerFromDigits(match[2]);
        values.held.set(Field::Sector, !holds(match[1], L"/"sv) && !holds(match[2], L"/"sv));
    }
}

bool readCavok(GroupReader& report, SurfaceValues& values)
{
    if (!report.takeWhole<Cavok>()) {
        return false;
    }
    values.visibility = kGoodVisibility;
    values.cloudsSeen = true;
    values.visibilitySeen = true;
    values.held.set(Field::Visibility);
    values.held.set(Field::Clouds);
    return true;
}

/// Texts of all the groups that match one after the other, each with a blank after it.
template <class P>
std::wstring takeRunwayTexts(GroupReader& report)
{
    std::wstring texts;
    while (const auto match = report.takeWhole<P>()) {
        texts.append(*match).push_back(L' ');
    }
    return texts;
}

/// The layer that stands for "no significant cloud". Its altitude deliberately doesn't
/// follow its base.
Cloud noSignificantCloudLayer(std::int32_t elevation)
{
    constexpr std::int32_t kBase = 5000;
    constexpr std::int32_t kAboveStation = 2000;
    constexpr std::uint8_t kOctas = 3;
    Cloud cloud;
    cloud.base = kBase;
    cloud.coverage = kOctas;
    cloud.isAssumed = true;
    cloud.altitude = altitudeAboveSea(kAboveStation, elevation);
    return cloud;
}

/// Takes the sign off a weather group and stores the intensity that it means.
std::wstring_view withoutSign(std::wstring_view group, std::uint8_t& intensity)
{
    constexpr std::size_t kSlashes = 2;
    switch (group.front()) {
    case L'-':
        intensity = kLight;
        return group.substr(1);
    case L'+':
        intensity = kHeavy;
        return group.substr(1);
    case L'/':
        return group.substr(kSlashes);
    default:
        return group;
    }
}

void readWeather(GroupReader& report, SurfaceValues& values, MetarValues& metar,
                 std::int32_t elevation)
{
    metar.intensity = kModerate;
    metar.phenomenaText.clear();
    while (const auto group = report.takeWhole<WeatherGroup>()) {
        if (holds(*group, L"NSC"sv)) {
            metar.noSignificantCloud = true;
            values.clouds.push_back(noSignificantCloudLayer(elevation));
        }
        if (*group == L"NSC"sv || *group == L"NCD"sv) {
            values.held.set(Field::Clouds);
        }
        metar.phenomenaText.append(withoutSign(*group, metar.intensity));
    }
}

struct CoverageRow
{
    std::wstring_view code;
    std::uint8_t octas;
};
constexpr CoverageRow kCoverageRows[] = {
    {L"FEW", 2}, {L"SCT", 4}, {L"BKN", 7}, {L"OVC", 8}, {L"VV", 8}};
constexpr std::size_t kHeightDigits = 3;

/// Octas of a cloud group; an earlier row wins. Other groups are no layer and have 0.
std::uint8_t coverageOf(std::wstring_view group)
{
    for (const CoverageRow& row : kCoverageRows) {
        if (holds(group, row.code)) {
            return row.octas;
        }
    }
    return 0;
}

/// The row of a group of a code and a height and nothing else, as most are; null for others. Such a
/// group has no room for a second code or a cloud type.
const CoverageRow* plainRowOf(std::wstring_view group)
{
    for (const CoverageRow& row : kCoverageRows) {
        if (group.size() == row.code.size() + kHeightDigits && startsWith(group, row.code)) {
            return &row;
        }
    }
    return nullptr;
}

std::uint8_t cloudTypeOf(std::wstring_view group)
{
    if (holds(group, L"CB"sv)) {
        return cloudtype::kCumulonimbus;
    }
    return holds(group, L"TCU"sv) ? cloudtype::kToweringCumulus : cloudtype::kOrdinary;
}

std::wstring_view heightTextOf(std::wstring_view group)
{
    if (holds(group, L"VV"sv)) {
        return group.substr(2, kHeightDigits);
    }
    return group.size() >= 2 * kHeightDigits ? group.substr(kHeightDigits, kHeightDigits)
                                             : std::wstring_view();
}

/// Feet. An unknown base counts as low, not as at the ground.
std::int32_t baseOf(std::wstring_view height)
{
    constexpr std::int32_t kFeetPerUnit = 100;
    constexpr std::int32_t kUnknownBase = 100;
    const std::int32_t base = integerFromDigits(height) * kFeetPerUnit;
    return base == 0 && height == L"///"sv ? kUnknownBase : base;
}

bool isHeight(std::wstring_view text)
{
    return !text.empty() && !holds(text, L"/"sv);
}

Cloud layerOf(std::wstring_view group)
{
    Cloud cloud;
    if (const CoverageRow* const plain = plainRowOf(group)) {
        cloud.coverage = plain->octas;
        const std::wstring_view height = group.substr(plain->code.size());
        cloud.base = baseOf(height);
        cloud.baseKnown = isHeight(height);
        return cloud;
    }
    cloud.coverage = coverageOf(group);
    const std::wstring_view height = heightTextOf(group);
    cloud.base = baseOf(height);
    cloud.baseKnown = isHeight(height);
    cloud.type = cloudTypeOf(group);
    cloud.typeKnown = cloud.type != cloudtype::kOrdinary;
    return cloud;
}

void readClouds(GroupReader& report, SurfaceValues& values, std::int32_t elevation)
{
    constexpr std::size_t kUsualLayers = 4;
    while (const auto group = report.takeWhole<CloudGroup>()) {
        Cloud cloud = layerOf(*group);
        cloud.altitude = altitudeAboveSea(cloud.base, elevation);
        if (cloud.coverage != 0) {
            values.clouds.reserve(kUsualLayers);
            values.clouds.push_back(cloud);
        }
        values.cloudsSeen = true;
        if (!startsWith(*group, L"///"sv)) {
            values.held.set(Field::Clouds);
        }
    }
}

/// Negates in whole numbers, so that M00 is 0 and not -0.
float belowZero(std::wstring_view text)
{
    return static_cast<float>(-integerFromDigits(text));
}

void storeTemperature(SurfaceValues& values, std::wstring_view text, float celsius)
{
    values.temperature = celsius;
    values.held.setFrom(Field::Temperature, text);
}

void storeDewPoint(SurfaceValues& values, std::wstring_view text, float celsius)
{
    values.dewPoint = celsius;
    values.held.setFrom(Field::DewPoint, text);
}

bool readTemperature(GroupReader& report, SurfaceValues& values)
{
    constexpr float kAssumedSpread = 3.0F;
    if (const auto match = report.take<BothBelowZero>()) {
        storeTemperature(values, match[1], belowZero(match[1]));
        storeDewPoint(values, match[2], belowZero(match[2]));
    } else if (const auto mixed = report.take<DewPointBelowZero>()) {
        storeTemperature(values, mixed[1], numberOf(mixed[1]));
        storeDewPoint(values, mixed[2], belowZero(mixed[2]));
    } else if (const auto plain = report.take<BothAboveZero>()) {
        storeTemperature(values, plain[1], numberOf(plain[1]));
        storeDewPoint(values, plain[2], numberOf(plain[2]));
    } else if (const auto single = report.take<NoDewPoint>()) {
        // Deliberately without the minus.
        storeTemperature(values, single[1], numberOf(single[1]));
        values.dewPoint = values.temperature - kAssumedSpread;
    } else {
        return false;
    }
    return true;
}

/// A value in degrees Celsius taken down to sea level at 0.2 degrees per 100 feet.
float atSeaLevel(float celsius, std::int32_t elevation)
{
    constexpr double kDegreesPerHundredFeet = 0.2;
    const double feet = static_cast<double>(static_cast<float>(elevation));
    return static_cast<float>(feet / 100.0 * kDegreesPerHundredFeet + static_cast<double>(celsius));
}

enum class Pressure
{
    Read,
    Missing,
    OutOfRange
};

Pressure storeHectopascals(std::wstring_view digits, float& qnh)
{
    constexpr int kLowest = 800;
    constexpr int kHighest = 1300;
    constexpr float kRejectedQnh = 1013.0F;
    int hectopascals = integerFromDigits(digits);
    if (hectopascals < 100) { // the leading 10 was left out
        hectopascals += 1000;
    }
    if (hectopascals < kLowest || hectopascals > kHighest) {
        qnh = kRejectedQnh;
        return Pressure::OutOfRange;
    }
    qnh = static_cast<float>(hectopascals);
    return Pressure::Read;
}

Pressure readPressure(GroupReader& report, float& qnh)
{
    if (const auto match = report.take<QnhHectopascals>()) {
        return storeHectopascals(match[1], qnh);
    }
    if (const auto match = report.take<QnhInches>()) {
        qnh = numberOf(match[1]) * kHpaPerHundredthInch;
        return Pressure::Read;
    }
    return Pressure::Missing;
}

} // namespace

void Metar::resetDecoded()
{
    m_values = {};
    m_metar = {};
    m_status = metarstatus::kDecoded;
    m_headerDecoded = false;
    m_decoded = false;
    m_outdated = false;
    m_message.clear();
    m_messageLevel = 0;
    setTime(0);
}

void Metar::readHeader(GroupReader& report)
{
    constexpr std::size_t kTimeDigits = 6;
    const auto match = report.take<Header>();
    if (!match) {
        return;
    }
    if (icao().empty()) {
        setIcao(std::wstring(match[1]));
    }
    const std::wstring_view time = match[2].substr(0, kTimeDigits);
    time.copy(m_metar.timeGroup.data(), kTimeDigits);
    setTime(reportSeconds(twoDigits(time, 0), twoDigits(time, 2), twoDigits(time, 4)));
}

int Metar::DecodeHeader()
{
    m_headerDecoded = true;
    m_status = metarstatus::kHeaderStarted;
    if (reportText().size() < kShortestReport) {
        return m_status = metarstatus::kTooShort;
    }
    GroupReader report(reportText());
    readHeader(report);
    return m_status = metarstatus::kDecoded;
}

int Metar::Decode()
{
    m_headerDecoded = true; // the header is read below, with the rest
    m_values.clouds.clear();
    if (reportText().size() < kShortestReport) {
        return m_status = metarstatus::kTooShort;
    }
    GroupReader report(reportText());
    report.trimEnd();
    readHeader(report);
    m_decoded = true;
    report.takeWhole<Modifier>();
    if (!readWind(report, m_values)) {
        return m_status = metarstatus::kNoWind;
    }
    readVariableSector(report, m_values);
    readVisibility(report);
    m_metar.runwayText = takeRunwayTexts<RunwayVisualRange>(report);
    if (report.rest().size() < kShortestRest) {
        return m_status = metarstatus::kNothingLeft;
    }
    readWeather(report, m_values, m_metar, elevation());
    readClouds(report, m_values, elevation());
    return readTail(report);
}

/// Visibility, and the further values of it by direction, which are passed over.
void Metar::readVisibility(GroupReader& report)
{
    if (readCavok(report, m_values)) {
        m_metar.cavok = true;
    } else {
        const bool isUnknown = startsWith(report.rest(), L"////"sv);
        const auto metres = visibilityFrom(report);
        m_values.held.set(Field::Visibility, metres && !isUnknown);
        m_values.visibilitySeen = metres.has_value();
        m_values.visibility = metres.value_or(kGoodVisibility);
        m_status = metres ? m_status : metarstatus::kNoVisibility;
    }
    while (report.takeWhole<DirectionalMetres>()) {
    }
}

/// Temperatures, pressure and what stands after them; returns the status of the whole decode.
int Metar::readTail(GroupReader& report)
{
    if (!readTemperature(report, m_values)) {
        m_status = metarstatus::kNoTemperature;
    }
    m_metar.seaLevelTemperature = atSeaLevel(m_values.temperature, elevation());
    m_metar.seaLevelDewPoint = atSeaLevel(m_values.dewPoint, elevation());
    const Pressure pressure = readPressure(report, m_values.qnh);
    m_values.held.set(Field::Qnh, pressure == Pressure::Read);
    if (pressure != Pressure::Read) {
        m_status = metarstatus::kPressure;
    }
    if (pressure == Pressure::OutOfRange) {
        return m_status;
    }
    m_metar.tailRunwayText = takeRunwayTexts<TailRunwayVisualRange>(report);
    return m_status = metarstatus::kDecoded;
}

} // namespace aviation::weather

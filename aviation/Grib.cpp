#include "aviation/Grib.h"

#include "aviation/GribPatterns.h"
#include "aviation/GroupReader.h"
#include "aviation/support/NumberText.h"

namespace aviation::weather {

namespace {

using namespace gribpatterns;

constexpr std::size_t kShortestReport = 5;
constexpr std::size_t kFewestLevels = 11;
/// Deliberately a little more than the feet per metre of everything else.
constexpr double kLevelFeetPerMetre = 3.28085;
constexpr std::int32_t kUnknownHeight = -1;

/// Kept in whole tenths of a degree, so that a difference is exact on every machine.
struct Temperatures
{
    int temperature; ///< tenths of a degree
    int dewPoint;    ///< tenths of a degree
};

/// The group TTTDD of a TEMP: tenths of a degree, odd ones negative, and the dew point depression
/// in tenths up to 50, in whole degrees plus 50 above. Slashes read as 0.
Temperatures temperaturesFrom(std::wstring_view group)
{
    constexpr int kMostTenths = 50;
    const int digits = integerFromDigits(group.substr(0, 3));
    const int depression = integerFromDigits(group.substr(3));
    const int temperature = digits % 2 != 0 ? -digits : digits;
    const int tenths = depression > kMostTenths ? (depression - kMostTenths) * 10 : depression;
    return {temperature, temperature - tenths};
}

/// The group dddff of a TEMP: a direction above 360 carries a hundred knots.
Wind windFrom(std::wstring_view group)
{
    constexpr int kFullCircle = 360;
    int direction = integerFromDigits(group.substr(0, 3));
    int speed = integerFromDigits(group.substr(3));
    if (direction > kFullCircle) {
        direction -= kFullCircle;
        speed += 100;
    }
    return {static_cast<float>(direction), static_cast<float>(speed), -1.0F, 0.0F};
}

std::int32_t feetFromMetres(int metres)
{
    return static_cast<std::int32_t>(metres * kLevelFeetPerMetre);
}

/// Pressure of a level code in hPa.
float pressureOfCode(int code)
{
    constexpr int kThousand = 0;
    constexpr int k925 = 92;
    if (code == kThousand) {
        return 1000.0F;
    }
    return code == k925 ? 925.0F : static_cast<float>(code * 10);
}

void storeLevel(GribValues& grib, HeldFields& held, const Level::Result& groups)
{
    constexpr int kMaximumWind = 77;
    constexpr int kTropopause = 88;
    constexpr std::int16_t kNoDewPoint = 99;
    const int code = integerFromDigits(groups[1].substr(0, 2));
    const std::int32_t altitude = feetFromMetres(integerFromDigits(groups[1].substr(2)));
    const Temperatures tenths = temperaturesFrom(groups[2]);
    const Wind wind = windFrom(groups[3]);
    const auto temperature = static_cast<std::int16_t>(tenths.temperature / 10);
    const bool hasTemperature = groups[2].find(L'/') == std::wstring_view::npos;
    if (code == kMaximumWind || code == kTropopause) {
        const bool wind77 = code == kMaximumWind;
        held.set(wind77 ? Field::MaximumWind : Field::Tropopause);
        held.set(wind77 ? Field::MaximumWindTemperature : Field::TropopauseTemperature,
                 hasTemperature);
        (code == kMaximumWind ? grib.maximumWind : grib.tropopause) =
            makeGribLevel(altitude, wind, temperature, kNoDewPoint, -1.0F);
        return;
    }
    grib.levels.push_back(makeGribLevel(altitude, wind, temperature,
                                        static_cast<std::int16_t>(tenths.dewPoint / 10),
                                        pressureOfCode(code)));
    grib.levelTemperatures.push_back(hasTemperature);
}

/// Only the first digit of a cloud group counts.
template <class CloudPattern>
bool readCloud(GroupReader& report, Cloud& cloud, std::int32_t base)
{
    const auto groups = report.take<CloudPattern>();
    if (groups) {
        cloud = Cloud();
        cloud.setCoverage(integerFromDigits(groups[1].substr(0, 1)));
        cloud.base = base;
        cloud.altitude = kUnknownHeight;
        cloud.baseKnown = false;
    }
    return static_cast<bool>(groups);
}

void readClouds(GroupReader& report, GribValues& grib, HeldFields& held)
{
    constexpr std::int32_t kLowBase = 5000;
    constexpr std::int32_t kUpperBase = 18000; // middle and high clouds alike
    held.set(Field::LowCloud, readCloud<LowCloud>(report, grib.lowCloud, kLowBase));
    held.set(Field::MiddleCloud, readCloud<MiddleCloud>(report, grib.middleCloud, kUpperBase));
    held.set(Field::HighCloud, readCloud<HighCloud>(report, grib.highCloud, kUpperBase));
}

} // namespace

bool Grib::readHeader(GroupReader& report)
{
    m_headerDecoded = true;
    const auto groups = report.take<Header>();
    if (!groups) {
        SetMessage(L"(GribDecoder) - no Grib header found", kMessageError);
        return false;
    }
    const double latitude = integerFromDigits(groups[3].substr(2)) / 10.0;
    const double longitude = integerFromDigits(groups[4].substr(1)) / 10.0;
    const wchar_t quadrant = groups[4].front();
    const bool south = quadrant == L'3' || quadrant == L'5';
    const bool west = quadrant == L'5' || quadrant == L'7';
    setPosition({south ? -latitude : latitude, west ? -longitude : longitude});
    m_grib.key = std::wstring(groups[3].substr(2)).append(groups[4]);
    return true;
}

void Grib::readSurface(GroupReader& report)
{
    constexpr int kLeastWithThousands = 800;
    const auto groups = report.take<Surface>();
    if (!groups) {
        SetMessage(L"(GribDecoder) - no Grib surface data found", kMessageError);
        return;
    }
    const int qnh = integerFromDigits(groups[1].substr(2));
    const Temperatures tenths = temperaturesFrom(groups[2]);
    m_values.qnh = static_cast<float>(qnh < kLeastWithThousands ? qnh + 1000 : qnh);
    m_values.temperature = static_cast<float>(tenths.temperature / 10.0);
    m_values.dewPoint = static_cast<float>(tenths.dewPoint / 10.0);
    m_values.wind = windFrom(groups[3]);
    for (const Field field : {Field::Qnh, Field::Temperature, Field::DewPoint, Field::Direction}) {
        m_values.held.set(field);
    }
}

int Grib::DecodeHeader()
{
    GroupReader report(m_reportText);
    return readHeader(report) ? gribstatus::kDecoded : gribstatus::kFailed;
}

int Grib::Decode()
{
    if (m_decoded || m_reportText.size() < kShortestReport) {
        return m_status;
    }
    m_grib.levels.clear();
    m_grib.levelTemperatures.clear();
    GroupReader report(m_reportText);
    readHeader(report);
    readSurface(report);
    while (const auto groups = report.take<Level>()) {
        storeLevel(m_grib, m_values.held, groups);
    }
    if (m_grib.levels.size() < kFewestLevels) {
        SetMessage(L"(GribDecoder) - too few layers of Level\n " + m_reportText, kMessageError);
    }
    readClouds(report, m_grib, m_values.held);
    m_decoded = true;
    return m_status = gribstatus::kDecoded;
}

} // namespace aviation::weather

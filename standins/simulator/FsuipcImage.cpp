#include "standins/simulator/FsuipcImage.h"

#include "aviation/Units.h"

#include <QDateTime>
#include <QString>

#include <algorithm>
#include <cmath>
#include <limits>

namespace simulator {

namespace {

using aviation::structs::AircraftData;
using aviation::structs::AircraftFuel;
using aviation::structs::AircraftPayload;
using aviation::structs::AircraftPayloadStation;
using aviation::structs::FuelTank;
using aviation::structs::RadioFrequencys;

constexpr double kTwo16 = 65536.0;
constexpr double kTwo32 = kTwo16 * kTwo16;
constexpr double kTwo64 = kTwo32 * kTwo32;
constexpr double kQuarterMeridian = 10001750.0; ///< metres from the equator to a pole
constexpr double kMetresPerNm = 1852.0;
constexpr double kKmPerStatuteMile = 1.609344;
constexpr std::uint16_t kBrakeSet = 32767;
constexpr double kHeaviestLoad = 10.0e6; ///< pounds
constexpr int kLeadingOne = 10000;

/// Rounded away from zero.
double outward(double value)
{
    return value < 0.0 ? std::floor(value) : std::ceil(value);
}

template <class Integer>
Integer limited(double value)
{
    using Limits = std::numeric_limits<Integer>;
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<Integer>(
        std::clamp(value, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

std::int32_t limited32(double value)
{
    return limited<std::int32_t>(value);
}

std::int64_t altitudeUnits(double feet)
{
    const double units = outward(aviation::metresFromFeet(feet) * kTwo32);
    constexpr double kBeyondRounding = 1.0; // no more than a fraction of a nanometre
    return std::llround(units + (units == 0.0 ? 0.0 : std::copysign(kBeyondRounding, units)));
}

/// The date line is the lowest number.
std::int64_t longitudeUnits(double degrees)
{
    const double units = std::remainder(degrees, 360.0) / 360.0 * kTwo64;
    constexpr double kEnd = kTwo64 / 2.0;
    return units < kEnd ? std::llround(units) : std::numeric_limits<std::int64_t>::min();
}

/// A part of the full circle, of which only the low bits count.
template <class Integer>
Integer circleUnits(double degrees, double circle)
{
    return static_cast<Integer>(std::llround(degrees / 360.0 * circle));
}

QByteArray bytesOf(const std::wstring& text)
{
    return QString::fromStdWString(text).toUtf8();
}

void showPlace(const AircraftData& aircraft, FsuipcImage& image)
{
    const double variation = static_cast<double>(aircraft.magneticVariation);
    image.put(offset::kLatitude,
              std::llround(aircraft.position.latitude() / 90.0 * kQuarterMeridian * kTwo32));
    image.put(offset::kLongitude, longitudeUnits(aircraft.position.longitude()));
    image.put(offset::kAltitude, altitudeUnits(aircraft.altitude));
    image.put(offset::kHeightAgl,
              limited32(outward(aviation::metresFromFeet(aircraft.heightAgl) * kTwo16)));
    image.put(offset::kMagneticVariation, circleUnits<std::int16_t>(variation, kTwo16));
    image.put(offset::kHeading, circleUnits<std::uint32_t>(aircraft.heading + variation, kTwo32));
    image.put(offset::kMagneticHeading, aircraft.heading * aviation::kPi / 180.0);
}

void showSpeeds(const AircraftData& aircraft, FsuipcImage& image)
{
    constexpr double kSecondsPerHour = 3600.0;
    constexpr double kAirspeedUnits = 128.0;
    image.put(offset::kGroundSpeed,
              limited32(outward(aircraft.groundSpeed * kMetresPerNm / kSecondsPerHour * kTwo16)));
    image.put(offset::kTrueAirspeed, limited32(aircraft.tas * kAirspeedUnits));
    showVerticalSpeed(offset::kVerticalSpeed, aircraft.verticalSpeed, image);
}

void showFlags(const AircraftData& aircraft, FsuipcImage& image)
{
    const auto flag = [](bool is) {
        return static_cast<std::uint16_t>(is ? 1 : 0);
    };
    image.put(offset::kOnGround, flag(aircraft.onGround));
    image.put(offset::kEngineRuns, flag(!aircraft.engineOff));
    image.put(offset::kLandingLight, flag(aircraft.landingLight));
    image.put(offset::kParkingBrake,
              static_cast<std::uint16_t>(aircraft.parkingBrake ? kBrakeSet : 0));
    image.put(offset::kDoors, static_cast<std::uint8_t>(aircraft.doorOpen ? 1 : 0));
}

void showAir(const AircraftData& aircraft, FsuipcImage& image)
{
    const double kilometres = static_cast<double>(aircraft.visibility);
    image.put(offset::kWindDirection, static_cast<double>(aircraft.wind.Dir));
    image.put(offset::kWindSpeed, static_cast<double>(aircraft.wind.Speed));
    image.put(offset::kTemperature, static_cast<double>(aircraft.temperature));
    image.put(offset::kVisibilityMetres, kilometres * 1000.0);
    image.put(offset::kVisibilityMiles,
              limited<std::uint16_t>(std::round(kilometres / kKmPerStatuteMile * 100.0)));
}

void showDetail(const AircraftData& aircraft, FsuipcImage& image)
{
    constexpr double kWeightUnits = 256.0;
    const auto weight = [](float pounds) {
        return limited32(std::round(static_cast<double>(pounds) * kWeightUnits));
    };
    image.put(offset::kEmptyWeight, weight(aircraft.emptyWeight));
    image.put(offset::kMaxGrossWeight, weight(aircraft.maxGrossWeight));
    image.put(offset::kTotalWeight, static_cast<double>(aircraft.totalWeight));
    image.put(offset::kFuelFlow, aircraft.fuelFlow);
    image.putText(offset::kName, 256, bytesOf(aircraft.name));
    image.putText(offset::kRegistration, 12, bytesOf(aircraft.registration));
    image.putText(offset::kAirline, 24, bytesOf(aircraft.airline));
    image.putText(offset::kType, 24, bytesOf(aircraft.type));
}

void showTime(std::int64_t secondsSince1970, FsuipcImage& image)
{
    const QDateTime utc = QDateTime::fromSecsSinceEpoch(secondsSince1970, Qt::UTC);
    const auto byte = [](int value) {
        return static_cast<std::uint8_t>(value);
    };
    image.put(offset::kZuluSecond, byte(utc.time().second()));
    image.put(offset::kZuluHour, byte(utc.time().hour()));
    image.put(offset::kZuluMinute, byte(utc.time().minute()));
    image.put(offset::kDay, byte(utc.date().day()));
    image.put(offset::kMonth, byte(utc.date().month()));
    image.put(offset::kYear, static_cast<std::uint16_t>(utc.date().year()));
}

/// The four low decimal digits, one in each hexadecimal one.
std::uint16_t toBcd(int value)
{
    int bcd = 0;
    for (int shift = 0; shift < 16; shift += 4) {
        bcd |= (value % 10) << shift;
        value /= 10;
    }
    return static_cast<std::uint16_t>(bcd);
}

std::optional<int> fromBcd(std::uint16_t bcd)
{
    int value = 0;
    for (int shift = 12; shift >= 0; shift -= 4) {
        const int digit = (bcd >> shift) & 0xF;
        if (digit > 9) {
            return std::nullopt;
        }
        value = value * 10 + digit;
    }
    return value;
}

} // namespace

void FsuipcImage::putText(std::uint32_t at, std::uint32_t size, const QByteArray& text)
{
    fillZero(at, size);
    std::copy_n(text.begin(), std::min<std::ptrdiff_t>(text.size(), size - 1), &m_bytes[at]);
}

QByteArray FsuipcImage::text(std::uint32_t at, std::uint32_t size) const
{
    const auto begin = m_bytes.begin() + at;
    const auto end = std::find(begin, begin + size - 1, 0);
    return QByteArray(reinterpret_cast<const char*>(&m_bytes[at]), static_cast<int>(end - begin));
}

void FsuipcImage::fillZero(std::uint32_t at, std::uint32_t size)
{
    std::fill_n(m_bytes.begin() + at, size, std::uint8_t{0});
}

void FsuipcImage::read(std::uint32_t at, std::uint32_t size, void* destination) const
{
    std::memcpy(destination, &m_bytes[at], size);
}

void FsuipcImage::write(std::uint32_t at, const std::vector<std::uint8_t>& bytes)
{
    std::copy(bytes.begin(), bytes.end(), m_bytes.begin() + at);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        m_written.set(at + i);
    }
}

bool FsuipcImage::wasWritten(std::uint32_t at, std::uint32_t size) const
{
    for (std::uint32_t i = 0; i < size; ++i) {
        if (!m_written[at + i]) {
            return false;
        }
    }
    return true;
}

void showAircraft(const AircraftData& aircraft, FsuipcImage& image)
{
    showPlace(aircraft, image);
    showSpeeds(aircraft, image);
    showFlags(aircraft, image);
    showAir(aircraft, image);
    showDetail(aircraft, image);
    showTime(aircraft.simTime, image);
}

void showVerticalSpeed(std::uint32_t at, int feetPerMinute, FsuipcImage& image)
{
    constexpr double kUnits = 256.0;
    constexpr double kSecondsPerMinute = 60.0;
    image.put(at, limited32(outward(aviation::metresFromFeet(feetPerMinute) / kSecondsPerMinute
                                    * kUnits)));
}

void showFuel(const AircraftFuel& fuel, FsuipcImage& image)
{
    constexpr double kWeightUnits = 256.0;
    image.put(offset::kFuelWeight,
              limited<std::uint16_t>(std::round(fuel.fuelWeight * kWeightUnits)));
    for (const offset::Tank& tank : offset::kTanks) {
        const auto found = std::find_if(fuel.tanks.begin(), fuel.tanks.end(),
                                        [&tank](const FuelTank& t) { return t.id == tank.id; });
        const bool isThere = found != fuel.tanks.end();
        const double level = isThere ? found->level / 100.0 * offset::kTankLevelFull : 0.0;
        image.put(tank.level, limited32(std::round(level)));
        image.put(tank.capacity, limited32(isThere ? std::round(found->capacity) : 0.0));
    }
}

void showPayload(const AircraftPayload& payload, FsuipcImage& image)
{
    const auto count = std::min<std::size_t>(payload.stations.size(), offset::kMostStations);
    image.fillZero(offset::kStations, offset::kMostStations * offset::kStationBytes);
    image.put(offset::kStationCount, static_cast<std::int32_t>(count));
    std::uint32_t at = offset::kStations;
    for (std::size_t i = 0; i < count; ++i, at += offset::kStationBytes) {
        image.put(at, static_cast<double>(payload.stations[i].weight));
        image.putText(at + offset::kStationName, offset::kStationNameBytes,
                      bytesOf(payload.stations[i].name));
    }
}

void showRadios(const RadioFrequencys& radios, FsuipcImage& image)
{
    for (const offset::Radio& radio : offset::kRadios) {
        image.put(radio.at, toBcd(radios.*radio.field));
    }
}

bool takeFuel(const FsuipcImage& image, AircraftFuel& fuel)
{
    bool wasWritten = false;
    for (FuelTank& tank : fuel.tanks) {
        const auto row = std::find_if(offset::kTanks.begin(), offset::kTanks.end(),
                                      [&tank](const offset::Tank& t) { return t.id == tank.id; });
        if (row != offset::kTanks.end() && image.wasWritten(row->level, sizeof(std::int32_t))) {
            const double share = image.get<std::int32_t>(row->level) / offset::kTankLevelFull;
            tank.level = 100.0 * std::clamp(share, 0.0, 1.0);
            wasWritten = true;
        }
    }
    return wasWritten;
}

bool takePayload(const FsuipcImage& image, AircraftPayload& payload)
{
    bool wasWritten = false;
    double total = 0.0;
    std::uint32_t at = offset::kStations;
    for (AircraftPayloadStation& station : payload.stations) {
        const bool isReachable =
            at < offset::kStations + offset::kMostStations * offset::kStationBytes;
        if (isReachable && image.wasWritten(at, sizeof(double))) {
            const double weight = image.get<double>(at);
            const bool isWeight = weight >= 0.0 && weight <= kHeaviestLoad;
            station.weight = isWeight ? static_cast<float>(weight) : station.weight;
            wasWritten = wasWritten || isWeight;
        }
        total += static_cast<double>(station.weight);
        at += offset::kStationBytes;
    }
    payload.totalWeight = wasWritten ? total : payload.totalWeight;
    return wasWritten;
}

bool takeRadios(const FsuipcImage& image, RadioFrequencys& radios)
{
    bool wasWritten = false;
    for (const offset::Radio& radio : offset::kRadios) {
        if (!image.wasWritten(radio.at, sizeof(std::uint16_t))) {
            continue;
        }
        if (const std::optional<int> value = fromBcd(image.get<std::uint16_t>(radio.at))) {
            radios.*radio.field =
                static_cast<std::uint16_t>(*value + (radio.isFrequency ? kLeadingOne : 0));
            wasWritten = true;
        }
    }
    return wasWritten;
}

} // namespace simulator

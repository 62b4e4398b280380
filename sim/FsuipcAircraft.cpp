#include "sim/FsuipcAircraft.h"

#include "aviation/Units.h"
#include "sim/FsuipcClient.h"
#include "sim/FsuipcOffsets.h"
#include "sim/SimValues.h"

#include <QDateTime>

#include <cmath>

using aviation::kFeetPerMetre;
using aviation::structs::AircraftData;
using simvalue::singleOf;
using simvalue::textOf;
using simvalue::truncated;

namespace {

constexpr double k2Pow16 = 65536.0;
constexpr double k2Pow32 = k2Pow16 * k2Pow16;
constexpr double kFullCircle = 360.0;

bool hasMetresVisible(aviation::FsId id)
{
    return id >= aviation::fsid::kFsx && id <= aviation::fsid::kPrepar3dV3;
}

std::int32_t feetPerMinute(std::int32_t metresPerSecondTimes256)
{
    return truncated(metresPerSecondTimes256 * 60.0 * kFeetPerMetre / 256.0);
}

double degreesOfRadians(double radians)
{
    constexpr double kPiOfTable = 3.1415927; // deliberately no more digits
    const double degrees = radians * 180.0 / kPiOfTable;
    return std::isfinite(degrees) ? degrees : 0.0;
}

float visibilityKilometres(const FsuipcAircraft& raw, aviation::FsId id)
{
    constexpr double kKmPerStatuteMile = 1.609344;
    return singleOf(hasMetresVisible(id) ? raw.metresVisible / 1000.0
                                         : raw.milesVisible / 100.0 * kKmPerStatuteMile);
}

/// Seconds since 1970 of "d.M.yyyy H:m:s"; `otherwise` for what is no time. Date and hour are read
/// apart, so that this computer's time zone plays no part.
std::int64_t secondsOf(const QString& text, std::int64_t otherwise)
{
    const QDate date =
        QDate::fromString(text.section(QLatin1Char(' '), 0, 0), QStringLiteral("d.M.yyyy"));
    const QTime time =
        QTime::fromString(text.section(QLatin1Char(' '), 1, 1), QStringLiteral("H:m:s"));
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC).toSecsSinceEpoch()
                                            : otherwise;
}

aviation::Position place(const FsuipcAircraft& raw)
{
    constexpr double kQuarter = 10001750.0; // metres from equator to pole
    constexpr double kPole = 90.0;
    const double latitude = static_cast<double>(raw.latitude) * kPole / (kQuarter * k2Pow32);
    if (std::abs(latitude) > kPole) {
        return {};
    }
    return {latitude, static_cast<double>(raw.longitude) * kFullCircle / (k2Pow32 * k2Pow32)};
}

void fillMotion(const FsuipcAircraft& raw, AircraftData& data)
{
    data.position = place(raw);
    data.verticalSpeed = feetPerMinute(raw.verticalSpeed);
    data.landingRate = feetPerMinute(raw.touchdownRate);
    data.heightAgl = truncated(raw.heightAgl * kFeetPerMetre / k2Pow16);
    data.altitude =
        truncated(static_cast<double>(raw.altitude) * kFeetPerMetre / k2Pow16 / k2Pow16);
    data.groundSpeed = truncated(raw.groundSpeed / k2Pow16 * 3600.0 / 1852.0);
    data.tas = truncated(raw.trueAirspeed / 128.0);
    data.heading = raw.heading * kFullCircle / k2Pow32;
    data.headingMagnetic = degreesOfRadians(raw.magneticHeading);
    data.magneticVariation = singleOf(raw.variation * kFullCircle / k2Pow16);
}

void fillState(const FsuipcAircraft& raw, AircraftData& data)
{
    data.onGround = raw.onGround == 1;
    data.parkingBrake = raw.parkingBrake != 0;
    data.engineOff = raw.engineFires == 0;
    data.landingLight = raw.landingLight != 0;
    data.doorOpen = raw.doors != 0;
    data.fuelFlow = singleOf(static_cast<double>(raw.fuelFlow));
    data.emptyWeight = singleOf(raw.emptyWeight / 256.0);
    data.maxGrossWeight = singleOf(raw.grossWeight / 256.0);
    data.totalWeight = singleOf(raw.totalWeight);
}

void fillTexts(const FsuipcAircraft& raw, AircraftData& data)
{
    data.name = textOf(raw.title).toStdWString();
    data.registration = textOf(raw.registration).toStdWString();
    data.airline = textOf(raw.airline).toStdWString();
    data.type = textOf(raw.type).toStdWString();
}

} // namespace

void FsuipcAircraft::queueReads(FsuipcClient& client, aviation::FsId id)
{
    namespace offset = fsuipcoffset;
    client.read(offset::kLatitude, latitude);
    client.read(offset::kLongitude, longitude);
    client.read(offset::kVerticalSpeed, verticalSpeed);
    client.read(offset::kTouchdownRate, touchdownRate);
    client.read(offset::kHeightAgl, heightAgl);
    client.read(offset::kAltitude, altitude);
    client.read(offset::kGroundSpeed, groundSpeed);
    client.read(offset::kTrueAirspeed, trueAirspeed);
    client.read(offset::kHeading, heading);
    client.read(offset::kMagneticHeading, magneticHeading);
    client.read(offset::kWindDirection, windDirection);
    client.read(offset::kWindSpeed, windSpeed);
    client.read(offset::kTemperature, temperature);
    client.read(offset::kOnGround, onGround);
    client.read(offset::kVariation, variation);
    if (hasMetresVisible(id)) {
        client.read(offset::kMetresVisible, metresVisible);
    } else {
        client.read(offset::kMilesVisible, milesVisible);
    }
    client.read(offset::kParkingBrake, parkingBrake);
    client.read(offset::kEngineFires, engineFires);
    client.read(offset::kLandingLight, landingLight);
    client.read(offset::kDoors, doors);
    client.read(offset::kAircraftTitle, title);
    client.read(offset::kRegistration, registration);
    client.read(offset::kAirline, airline);
    client.read(offset::kAircraftType, type);
    client.read(offset::kFuelFlow, fuelFlow);
    client.read(offset::kEmptyWeight, emptyWeight);
    client.read(offset::kGrossWeight, grossWeight);
    client.read(offset::kTotalWeight, totalWeight);
    client.read(offset::kZuluTime, time);
    client.read(offset::kZuluDay, day);
    client.read(offset::kZuluYear, year);
    client.read(offset::kZuluMonth, month);
}

void FsuipcAircraft::fill(AircraftData& data, aviation::FsId id) const
{
    constexpr float kNoGust = -1.0F;
    fillMotion(*this, data);
    fillState(*this, data);
    fillTexts(*this, data);
    data.wind = {singleOf(windDirection), singleOf(windSpeed), kNoGust, 0.0F};
    data.temperature = singleOf(temperature);
    data.visibility = visibilityKilometres(*this, id);
    data.simTime = secondsOf(timeText(), data.simTime);
}

QString FsuipcAircraft::timeText() const
{
    return QStringLiteral("%1.%2.%3 %4:%5:%6")
        .arg(QString::number(day), QString::number(month), QString::number(year),
             QString::number(time[1]), QString::number(time[2]), QString::number(time[0]));
}

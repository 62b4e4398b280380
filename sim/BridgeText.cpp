#include "sim/BridgeText.h"

#include "aviation/support/NumberText.h"
#include "sim/BridgeFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

using aviation::structs::AircraftData;
using aviation::structs::AircraftFuel;
using aviation::structs::AircraftPayload;
using aviation::structs::AircraftPayloadStation;
using aviation::structs::FuelTank;
using aviation::structs::RadioFrequencys;

namespace bridgetext {

namespace {

constexpr char kFieldMark = ':';
constexpr char kPartMark = '|';
constexpr std::int64_t kFirstSecond = -62135596800; // of the year 1, since 1970
constexpr std::int64_t kLastSecond = 253402300799;  // of the year 9999

// As they are written; of what is read only the lengths count, see Fields.
constexpr std::array<std::string_view, 28> kAircraftKeys{"HgtAgl=",
                                                         "Alt=",
                                                         "Tas=",
                                                         "Gs=",
                                                         "Hdg=",
                                                         "Vs=",
                                                         "Direction=",
                                                         "WindInKnots=",
                                                         "MagVar=",
                                                         "Vis=",
                                                         "Lat=",
                                                         "Lon=",
                                                         "IsOnGround=",
                                                         "EngineIsOff=",
                                                         "LandingLightIsOn=",
                                                         "IsDoorOpen=",
                                                         "ParkingBrakeIsSet=",
                                                         "Name=",
                                                         "Reg=",
                                                         "Airline=",
                                                         "Type=",
                                                         "FuelFlow=",
                                                         "EmptyWeight=",
                                                         "MaxGrossWeight=",
                                                         "TotalWeight=",
                                                         "LandRate=",
                                                         "FsTime=",
                                                         "Oat="};
constexpr std::array<std::string_view, 2> kFuelKeys{"NumOfStation=", "FuelWeight="};
constexpr std::array<std::string_view, 4> kTankKeys{"StationID=", "Name=", "Capacity=", "Level="};
constexpr std::array<std::string_view, 1> kPayloadKeys{"NumOfStation="};
constexpr std::array<std::string_view, 4> kStationKeys{
    "StationName=", "Type=", "MaxWeight=", "Weight="};
constexpr std::array<std::string_view, 3> kWindKeys{"Dir=", "Speed=", "Gust="};
constexpr std::array<std::string_view, 1> kBareNumber{""};

QByteArray fixed(double value)
{
    constexpr int kDigits = 6;
    return QByteArray::fromStdString(
        aviation::fixedText(std::isfinite(value) ? value : 0.0, kDigits));
}

/// A name can't end its field on the wire.
QByteArray wireName(const std::wstring& name)
{
    QByteArray text = QString::fromStdWString(name).toUtf8();
    return text.replace(kFieldMark, ' ').replace(kPartMark, ' ');
}

/// As many entries as the text announces and has.
int entryCount(std::int32_t announced, const Fields& fields, int heads)
{
    return std::clamp(announced, 0, std::max(0, fields.count() - heads));
}

void reportFault(const Fields& fields, const char* where, QString* fault)
{
    if (fields.failed() && fault != nullptr) {
        *fault = QString::fromLatin1(where) + fields.fault();
    }
}

void readMovement(Fields& fields, AircraftData& data)
{
    double latitude = 0.0;
    double longitude = 0.0;
    fields.read(0, data.heightAgl);
    fields.read(1, data.altitude);
    fields.read(2, data.tas);
    fields.read(3, data.groundSpeed);
    fields.read(4, data.heading);
    fields.read(5, data.verticalSpeed);
    fields.read(6, data.wind.Dir);
    fields.read(7, data.wind.Speed);
    fields.read(8, data.magneticVariation);
    fields.read(9, data.visibility);
    fields.read(10, latitude);
    fields.read(11, longitude);
    // A place that isn't on the earth is none.
    if (!fields.failed() && std::abs(latitude) <= 90.0 && std::abs(longitude) <= 360.0) {
        data.position = aviation::Position(latitude, longitude);
    }
}

void readState(Fields& fields, AircraftData& data)
{
    fields.read(12, data.onGround);
    fields.read(13, data.engineOff);
    fields.read(14, data.landingLight);
    fields.read(15, data.doorOpen);
    fields.read(16, data.parkingBrake);
}

void readDetail(Fields& fields, AircraftData& data)
{
    fields.read(17, data.name);
    fields.read(18, data.registration);
    fields.read(19, data.airline);
    fields.read(20, data.type);
    fields.read(21, data.fuelFlow);
    fields.read(22, data.emptyWeight);
    fields.read(23, data.maxGrossWeight);
    fields.read(24, data.totalWeight);
    fields.read(25, data.landingRate);
    std::int64_t time = 0;
    fields.read(26, time);
    data.simTime = time >= kFirstSecond && time <= kLastSecond ? time : data.simTime;
    fields.read(27, data.temperature);
}

bool readTank(const QByteArray& text, Fields& owner, FuelTank& tank)
{
    Fields parts(text, kPartMark, kTankKeys);
    parts.require(4);
    parts.read(0, tank.id);
    parts.read(1, tank.name);
    parts.read(2, tank.capacity);
    parts.read(3, tank.level);
    return owner.take(parts);
}

bool readStation(const QByteArray& text, Fields& owner, AircraftPayloadStation& station)
{
    Fields parts(text, kPartMark, kStationKeys);
    parts.require(4);
    parts.read(0, station.name);
    parts.read(1, station.type);
    parts.read(2, station.maxWeight);
    parts.read(3, station.weight);
    if (station.type < 0 || station.type >= static_cast<int>(station.typeNames.size())) {
        station.type = 0;
    }
    return owner.take(parts);
}

/// The radio fields in their order on the wire, which isn't that of the record.
struct RadioField
{
    std::string_view key;
    std::uint16_t RadioFrequencys::*value;
};
constexpr std::array<RadioField, 10> kRadioFields{{
    {"comm1active=", &RadioFrequencys::comm1active},
    {"comm1standby=", &RadioFrequencys::comm1standby},
    {"comm2active=", &RadioFrequencys::comm2active},
    {"comm2standby=", &RadioFrequencys::comm2standby},
    {"nav1active=", &RadioFrequencys::nav1active},
    {"nav1standby=", &RadioFrequencys::nav1standby},
    {"nav2active=", &RadioFrequencys::nav2active},
    {"nav2standby=", &RadioFrequencys::nav2standby},
    {"adf=", &RadioFrequencys::adf},
    {"transponder=", &RadioFrequencys::transponder},
}};
constexpr auto kRadioKeys = [] {
    std::array<std::string_view, kRadioFields.size()> keys;
    std::transform(kRadioFields.begin(), kRadioFields.end(), keys.begin(),
                   [](const RadioField& field) { return field.key; });
    return keys;
}();

} // namespace

AircraftData aircraftFromText(const QByteArray& text, QString* fault)
{
    AircraftData data;
    Fields fields(text, kFieldMark, kAircraftKeys);
    if (fields.count() < kAircraftFields) {
        return data;
    }
    readMovement(fields, data);
    readState(fields, data);
    readDetail(fields, data);
    reportFault(fields, "\nError in CAIRCRAFT::FromString - ", fault);
    return data;
}

QByteArray fuelText(const AircraftFuel& fuel)
{
    QByteArray text = "NumOfStation=" + QByteArray::number(static_cast<int>(fuel.tanks.size()))
                      + ":FuelWeight=" + fixed(fuel.fuelWeight);
    for (const FuelTank& tank : fuel.tanks) {
        text += ":StationID=" + QByteArray::number(tank.id) + "|Name=" + wireName(tank.name)
                + "|Capacity=" + fixed(tank.capacity) + "|Level=" + fixed(tank.level);
    }
    return text;
}

AircraftFuel fuelFromText(const QByteArray& text, QString* fault)
{
    constexpr int kHeads = 2;
    AircraftFuel fuel;
    Fields fields(text, kFieldMark, kFuelKeys);
    std::int32_t announced = 0;
    fields.read(0, announced);
    fields.read(1, fuel.fuelWeight);
    const int count = fields.failed() ? 0 : entryCount(announced, fields, kHeads);
    for (int i = 0; i < count && !fields.failed(); ++i) {
        FuelTank tank;
        if (readTank(fields.at(kHeads + i), fields, tank)) {
            fuel.tanks.push_back(tank);
        }
    }
    reportFault(fields, "\nError in Fuel::FromString - ", fault);
    return fuel;
}

QByteArray payloadText(const AircraftPayload& payload)
{
    QByteArray text =
        "NumOfStation=" + QByteArray::number(static_cast<int>(payload.stations.size()));
    for (const AircraftPayloadStation& station : payload.stations) {
        text += ":StationName=" + wireName(station.name)
                + "|Type=" + QByteArray::number(station.type)
                + "|MaxWeight=" + fixed(static_cast<double>(station.maxWeight))
                + "|Weight=" + fixed(static_cast<double>(station.weight));
    }
    return text;
}

AircraftPayload payloadFromText(const QByteArray& text, QString* fault)
{
    constexpr int kHeads = 1;
    AircraftPayload payload;
    Fields fields(text, kFieldMark, kPayloadKeys);
    std::int32_t announced = 0;
    fields.read(0, announced);
    const int count = fields.failed() ? 0 : entryCount(announced, fields, kHeads);
    for (int i = 0; i < count && !fields.failed(); ++i) {
        AircraftPayloadStation station;
        if (readStation(fields.at(kHeads + i), fields, station)) {
            payload.totalWeight += static_cast<double>(station.weight);
            payload.stations.push_back(station);
        }
    }
    reportFault(fields, "\nError in Payload::FromString - ", fault);
    return payload;
}

QByteArray radioText(const RadioFrequencys& radios)
{
    QByteArray text;
    for (const RadioField& field : kRadioFields) {
        text += (text.isEmpty() ? "" : ":")
                + QByteArray(field.key.data(), static_cast<int>(field.key.size()))
                + QByteArray::number(radios.*field.value);
    }
    return text;
}

RadioFrequencys radioFromText(const QByteArray& text, QString* fault)
{
    RadioFrequencys radios;
    Fields fields(text, kFieldMark, kRadioKeys);
    int index = 0;
    for (const RadioField& field : kRadioFields) {
        fields.read(index++, radios.*field.value);
    }
    reportFault(fields, "\nError in Radio::FromString - ", fault);
    return radios;
}

aviation::weather::Wind windFromText(const QByteArray& text, QString* fault)
{
    aviation::weather::Wind wind;
    Fields fields(text, kFieldMark, kWindKeys);
    fields.read(0, wind.Dir);
    fields.read(1, wind.Speed);
    fields.read(2, wind.Gust);
    reportFault(fields, "\nError in Wind::ToWind - ", fault);
    return wind;
}

bool longFromText(const QByteArray& text, qint64& value)
{
    Fields fields(text, '\0', kBareNumber);
    fields.require(1);
    std::int64_t number = 0;
    fields.read(0, number);
    if (!fields.failed()) {
        value = number;
    }
    return !fields.failed();
}

} // namespace bridgetext

#include "sim/BridgeText.h"

#include "aviation/support/NumberText.h"
#include "sim/BridgeFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

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

QByteArray Fixed(double value)
{
    constexpr int kDigits = 6;
    return QByteArray::fromStdString(
        aviation::FixedText(std::isfinite(value) ? value : 0.0, kDigits));
}

/// A name can't end its field on the wire.
QByteArray WireName(const std::wstring& name)
{
    QByteArray text = QString::fromStdWString(name).toUtf8();
    return text.replace(kFieldMark, ' ').replace(kPartMark, ' ');
}

/// As many entries as the text announces and has.
int EntryCount(std::int32_t announced, const Fields& fields, int heads)
{
    return std::clamp(announced, 0, std::max(0, fields.count() - heads));
}

void Report(const Fields& fields, const char* where, QString* fault)
{
    if (fields.failed() && fault != nullptr) {
        *fault = QString::fromLatin1(where) + fields.fault();
    }
}

void ReadMovement(Fields& fields, AircraftData& data)
{
    double latitude = 0.0;
    double longitude = 0.0;
    fields.read(0, 7, data.heightAgl);
    fields.read(1, 4, data.altitude);
    fields.read(2, 4, data.tas);
    fields.read(3, 3, data.groundSpeed);
    fields.read(4, 4, data.heading);
    fields.read(5, 3, data.verticalSpeed);
    fields.read(6, 10, data.wind.Dir);
    fields.read(7, 12, data.wind.Speed);
    fields.read(8, 7, data.magneticVariation);
    fields.read(9, 4, data.visibility);
    fields.read(10, 4, latitude);
    fields.read(11, 4, longitude);
    // A place that isn't on the earth is none.
    if (!fields.failed() && std::abs(latitude) <= 90.0 && std::abs(longitude) <= 360.0) {
        data.position = aviation::Position(latitude, longitude);
    }
}

void ReadState(Fields& fields, AircraftData& data)
{
    fields.read(12, 11, data.onGround);
    fields.read(13, 12, data.engineOff);
    fields.read(14, 17, data.landingLight);
    fields.read(15, 11, data.doorOpen);
    fields.read(16, 18, data.parkingBrake);
}

void ReadDetail(Fields& fields, AircraftData& data)
{
    fields.read(17, 5, data.name);
    fields.read(18, 4, data.registration);
    fields.read(19, 8, data.airline);
    fields.read(20, 5, data.type);
    fields.read(21, 9, data.fuelFlow);
    fields.read(22, 12, data.emptyWeight);
    fields.read(23, 15, data.maxGrossWeight);
    fields.read(24, 12, data.totalWeight);
    fields.read(25, 9, data.landingRate);
    fields.read(26, 7, data.simTime);
    fields.read(27, 4, data.temperature);
}

bool ReadTank(const QByteArray& text, Fields& owner, FuelTank& tank)
{
    Fields parts(text, kPartMark);
    parts.require(4);
    parts.read(0, 10, tank.id);
    parts.read(1, 5, tank.name);
    parts.read(2, 9, tank.capacity);
    parts.read(3, 6, tank.level);
    return owner.take(parts);
}

bool ReadStation(const QByteArray& text, Fields& owner, AircraftPayloadStation& station)
{
    Fields parts(text, kPartMark);
    parts.require(4);
    parts.read(0, 12, station.name);
    parts.read(1, 5, station.type);
    parts.read(2, 10, station.maxWeight);
    parts.read(3, 7, station.weight);
    if (station.type < 0 || station.type >= static_cast<int>(station.typeNames.size())) {
        station.type = 0;
    }
    return owner.take(parts);
}

/// The radio fields in their order on the wire, which isn't that of the record.
struct RadioField
{
    const char* name;
    int keyLength;
    std::uint16_t RadioFrequencys::*value;
};
constexpr std::array<RadioField, 10> kRadioFields{{
    {"comm1active", 12, &RadioFrequencys::comm1active},
    {"comm1standby", 13, &RadioFrequencys::comm1standby},
    {"comm2active", 12, &RadioFrequencys::comm2active},
    {"comm2standby", 13, &RadioFrequencys::comm2standby},
    {"nav1active", 11, &RadioFrequencys::nav1active},
    {"nav1standby", 12, &RadioFrequencys::nav1standby},
    {"nav2active", 11, &RadioFrequencys::nav2active},
    {"nav2standby", 12, &RadioFrequencys::nav2standby},
    {"adf", 4, &RadioFrequencys::adf},
    {"transponder", 12, &RadioFrequencys::transponder},
}};

} // namespace

AircraftData AircraftFromText(const QByteArray& text, QString* fault)
{
    AircraftData data;
    Fields fields(text, kFieldMark);
    if (fields.count() < kAircraftFields) {
        return data;
    }
    ReadMovement(fields, data);
    ReadState(fields, data);
    ReadDetail(fields, data);
    Report(fields, "\nError in CAIRCRAFT::FromString - ", fault);
    return data;
}

QByteArray FuelText(const AircraftFuel& fuel)
{
    QByteArray text = "NumOfStation=" + QByteArray::number(static_cast<int>(fuel.tanks.size()))
                      + ":FuelWeight=" + Fixed(fuel.fuelWeight);
    for (const FuelTank& tank : fuel.tanks) {
        text += ":StationID=" + QByteArray::number(tank.id) + "|Name=" + WireName(tank.name)
                + "|Capacity=" + Fixed(tank.capacity) + "|Level=" + Fixed(tank.level);
    }
    return text;
}

AircraftFuel FuelFromText(const QByteArray& text, QString* fault)
{
    constexpr int kHeads = 2;
    AircraftFuel fuel;
    Fields fields(text, kFieldMark);
    std::int32_t announced = 0;
    fields.read(0, 13, announced);
    fields.read(1, 11, fuel.fuelWeight);
    const int count = fields.failed() ? 0 : EntryCount(announced, fields, kHeads);
    for (int i = 0; i < count && !fields.failed(); ++i) {
        FuelTank tank;
        if (ReadTank(fields.at(kHeads + i), fields, tank)) {
            fuel.tanks.push_back(tank);
        }
    }
    Report(fields, "\nError in Fuel::FromString - ", fault);
    return fuel;
}

QByteArray PayloadText(const AircraftPayload& payload)
{
    QByteArray text =
        "NumOfStation=" + QByteArray::number(static_cast<int>(payload.stations.size()));
    for (const AircraftPayloadStation& station : payload.stations) {
        text += ":StationName=" + WireName(station.name)
                + "|Type=" + QByteArray::number(station.type)
                + "|MaxWeight=" + Fixed(static_cast<double>(station.maxWeight))
                + "|Weight=" + Fixed(static_cast<double>(station.weight));
    }
    return text;
}

AircraftPayload PayloadFromText(const QByteArray& text, QString* fault)
{
    constexpr int kHeads = 1;
    AircraftPayload payload;
    Fields fields(text, kFieldMark);
    std::int32_t announced = 0;
    fields.read(0, 13, announced);
    const int count = fields.failed() ? 0 : EntryCount(announced, fields, kHeads);
    for (int i = 0; i < count && !fields.failed(); ++i) {
        AircraftPayloadStation station;
        if (ReadStation(fields.at(kHeads + i), fields, station)) {
            payload.totalWeight += static_cast<double>(station.weight);
            payload.stations.push_back(station);
        }
    }
    Report(fields, "\nError in Payload::FromString - ", fault);
    return payload;
}

QByteArray RadioText(const RadioFrequencys& radios)
{
    QByteArray text;
    for (const RadioField& field : kRadioFields) {
        text += (text.isEmpty() ? "" : ":") + QByteArray(field.name) + "="
                + QByteArray::number(radios.*field.value);
    }
    return text;
}

RadioFrequencys RadioFromText(const QByteArray& text, QString* fault)
{
    RadioFrequencys radios;
    Fields fields(text, kFieldMark);
    int index = 0;
    for (const RadioField& field : kRadioFields) {
        fields.read(index++, field.keyLength, radios.*field.value);
    }
    Report(fields, "\nError in Radio::FromString - ", fault);
    return radios;
}

aviation::weather::Wind WindFromText(const QByteArray& text, QString* fault)
{
    aviation::weather::Wind wind;
    Fields fields(text, kFieldMark);
    fields.read(0, 4, wind.Dir);
    fields.read(1, 6, wind.Speed);
    fields.read(2, 5, wind.Gust);
    Report(fields, "\nError in Wind::ToWind - ", fault);
    return wind;
}

bool LongFromText(const QByteArray& text, qint64& value)
{
    Fields fields(text, '\0');
    fields.require(1);
    std::int64_t number = 0;
    fields.read(0, 0, number);
    if (!fields.failed()) {
        value = number;
    }
    return !fields.failed();
}

} // namespace bridgetext

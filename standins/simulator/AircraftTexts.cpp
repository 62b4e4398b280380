#include "standins/simulator/AircraftTexts.h"

#include "standins/simulator/FieldReader.h"

#include <QString>

#include <array>

namespace simulator {

namespace {

using aviation::structs::AircraftData;
using aviation::structs::AircraftFuel;
using aviation::structs::AircraftPayload;
using aviation::structs::AircraftPayloadStation;
using aviation::structs::FuelTank;
using aviation::structs::RadioFrequencys;

/// More stations than any aircraft has.
constexpr std::size_t kMostStations = 1000;

QByteArray decimal(double value, int digits = 6)
{
    return QByteArray::number(value, 'f', digits);
}

QByteArray flag(bool value)
{
    return value ? "1" : "0";
}

QByteArray name(const std::wstring& text)
{
    QString clean = QString::fromStdWString(text);
    clean.replace(QLatin1Char(':'), QLatin1Char(' ')).replace(QLatin1Char('|'), QLatin1Char(' '));
    return clean.toUtf8();
}

std::wstring nameFrom(const QByteArray& text)
{
    return QString::fromUtf8(text).toStdWString();
}

void appendFlight(QByteArray& text, const AircraftData& aircraft)
{
    text += "HgtAgl=" + QByteArray::number(aircraft.heightAgl);
    text += ":Alt=" + QByteArray::number(aircraft.altitude);
    text += ":Tas=" + QByteArray::number(aircraft.tas);
    text += ":Gs=" + QByteArray::number(aircraft.groundSpeed);
    text += ":Hdg=" + decimal(aircraft.heading, 2);
    text += ":Vs=" + QByteArray::number(aircraft.verticalSpeed);
    text += ":Direction=" + decimal(static_cast<double>(aircraft.wind.Dir), 2);
    text += ":WindInKnots=" + decimal(static_cast<double>(aircraft.wind.Speed), 2);
    text += ":MagVar=" + decimal(static_cast<double>(aircraft.magneticVariation), 2);
    text += ":Vis=" + decimal(static_cast<double>(aircraft.visibility), 3);
    text += ":Lat=" + decimal(aircraft.position.latitude());
    text += ":Lon=" + decimal(aircraft.position.longitude());
}

void appendState(QByteArray& text, const AircraftData& aircraft)
{
    text += ":IsOnGround=" + flag(aircraft.onGround);
    text += ":EngineIsOff=" + flag(aircraft.engineOff);
    text += ":LandingLightIsOn=" + flag(aircraft.landingLight);
    text += ":IsDoorOpen=" + flag(aircraft.doorOpen);
    text += ":ParkingBrakeIsSet=" + flag(aircraft.parkingBrake);
}

void appendDetail(QByteArray& text, const AircraftData& aircraft)
{
    text += ":Name=" + name(aircraft.name);
    text += ":Reg=" + name(aircraft.registration);
    text += ":Airline=" + name(aircraft.airline);
    text += ":Type=" + name(aircraft.type);
    text += ":FuelFlow=" + decimal(static_cast<double>(aircraft.fuelFlow), 1);
    text += ":EmptyWeight=" + decimal(static_cast<double>(aircraft.emptyWeight), 1);
    text += ":MaxGrossWeight=" + decimal(static_cast<double>(aircraft.maxGrossWeight), 1);
    text += ":TotalWeight=" + decimal(static_cast<double>(aircraft.totalWeight), 1);
    text += ":LandRate=" + QByteArray::number(aircraft.landingRate);
    text += ":FsTime=" + QByteArray::number(static_cast<qlonglong>(aircraft.simTime));
    text += ":Oat=" + decimal(static_cast<double>(aircraft.temperature), 1);
}

struct RadioField
{
    const char* word;
    std::uint16_t RadioFrequencys::*value;
};

constexpr std::array kRadioFields{RadioField{"comm1active=", &RadioFrequencys::comm1active},
                                  RadioField{":comm1standby=", &RadioFrequencys::comm1standby},
                                  RadioField{":comm2active=", &RadioFrequencys::comm2active},
                                  RadioField{":comm2standby=", &RadioFrequencys::comm2standby},
                                  RadioField{":nav1active=", &RadioFrequencys::nav1active},
                                  RadioField{":nav1standby=", &RadioFrequencys::nav1standby},
                                  RadioField{":nav2active=", &RadioFrequencys::nav2active},
                                  RadioField{":nav2standby=", &RadioFrequencys::nav2standby},
                                  RadioField{":adf=", &RadioFrequencys::adf},
                                  RadioField{":transponder=", &RadioFrequencys::transponder}};

} // namespace

QByteArray aircraftText(const AircraftData& aircraft)
{
    QByteArray text;
    appendFlight(text, aircraft);
    appendState(text, aircraft);
    appendDetail(text, aircraft);
    return text;
}

QByteArray fuelText(const AircraftFuel& fuel)
{
    QByteArray text = "NumOfStation=" + QByteArray::number(static_cast<int>(fuel.tanks.size()))
                      + ":FuelWeight=" + decimal(fuel.fuelWeight);
    for (const FuelTank& tank : fuel.tanks) {
        text += ":StationID=" + QByteArray::number(tank.id) + "|Name=" + name(tank.name)
                + "|Capacity=" + decimal(tank.capacity) + "|Level=" + decimal(tank.level);
    }
    return text;
}

std::optional<AircraftFuel> readFuel(const QByteArray& text)
{
    FieldReader reader(text);
    AircraftFuel fuel;
    std::uint16_t count = 0;
    reader.word("NumOfStation=").integer(count).word(":FuelWeight=").number(fuel.fuelWeight);
    while (reader.isGood() && !reader.isDone() && fuel.tanks.size() < kMostStations) {
        FuelTank& tank = fuel.tanks.emplace_back();
        reader.word(":StationID=").integer(tank.id).word("|Name=");
        tank.name = nameFrom(reader.textUntil("|"));
        reader.word("|Capacity=").number(tank.capacity).word("|Level=").number(tank.level);
    }
    const bool isWhole = reader.isDone() && fuel.tanks.size() == count;
    return isWhole ? std::optional(fuel) : std::nullopt;
}

QByteArray payloadText(const AircraftPayload& payload)
{
    QByteArray text =
        "NumOfStation=" + QByteArray::number(static_cast<int>(payload.stations.size()));
    for (const AircraftPayloadStation& station : payload.stations) {
        text += ":StationName=" + name(station.name) + "|Type=" + QByteArray::number(station.type)
                + "|MaxWeight=" + decimal(static_cast<double>(station.maxWeight))
                + "|Weight=" + decimal(static_cast<double>(station.weight));
    }
    return text;
}

std::optional<AircraftPayload> readPayload(const QByteArray& text)
{
    FieldReader reader(text);
    AircraftPayload payload;
    std::uint16_t count = 0;
    reader.word("NumOfStation=").integer(count);
    while (reader.isGood() && !reader.isDone() && payload.stations.size() < kMostStations) {
        AircraftPayloadStation& station = payload.stations.emplace_back();
        reader.word(":StationName=");
        station.name = nameFrom(reader.textUntil("|"));
        reader.word("|Type=").integer(station.type).word("|MaxWeight=").number(station.maxWeight);
        reader.word("|Weight=").number(station.weight);
        payload.totalWeight += static_cast<double>(station.weight);
    }
    const bool isWhole = reader.isDone() && payload.stations.size() == count;
    return isWhole ? std::optional(payload) : std::nullopt;
}

QByteArray radioText(const RadioFrequencys& radios)
{
    QByteArray text;
    for (const RadioField& field : kRadioFields) {
        text += field.word + QByteArray::number(static_cast<uint>(radios.*field.value));
    }
    return text;
}

std::optional<RadioFrequencys> readRadios(const QByteArray& text)
{
    FieldReader reader(text);
    RadioFrequencys radios;
    for (const RadioField& field : kRadioFields) {
        reader.word(field.word).integer(radios.*field.value);
    }
    return reader.isDone() ? std::optional(radios) : std::nullopt;
}

} // namespace simulator

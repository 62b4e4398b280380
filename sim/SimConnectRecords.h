#pragma once

#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>

/// Records from the data of SimConnect's messages. `data` holds as many bytes as the definition of
/// the record packs, whatever they are: numbers that aren't finite are 0, others are brought into
/// the range of their field, texts may lack their zero.
namespace simconnectdata {

/// The variables of the aircraft definition, in its order and units.
struct AircraftVariables
{
    double altitude;
    double latitude;
    double longitude;
    double heightAgl;
    double tas;
    double groundSpeed;
    double verticalSpeed; ///< feet per second
    double windDirection;
    double windSpeed;
    double temperature;
    double magneticVariation;
    double visibility; ///< metres
    double heading;    ///< radians
    std::int32_t onGround;
    std::int32_t inCloud;
    double parkingBrake;
    double combustion;
    double landingLight;
    std::array<double, 6> exits;
    QString title;
    QString type;
    QString registration;
    QString model;
    QString airline;
    QString flightNumber;
    std::int32_t fuelFlow;
    float emptyWeight;
    float maxGrossWeight;
    float totalWeight;
    std::int64_t zuluSeconds;
    std::int32_t zuluDay;
    std::int32_t zuluMonth;
    std::int32_t zuluYear;
};

AircraftVariables readAircraft(const char* data);
/// Whether the clock shows a time of the years 1900 to 9999.
bool isTime(const AircraftVariables& variables);
/// All but the landing rate. A place beyond 90 degrees of latitude or 360 of longitude is left
/// unknown, and so is the time if the clock shows none. Asks the clock and the time zone.
aviation::structs::AircraftData aircraftOf(const AircraftVariables& variables);
/// The vertical speed, not truncated.
double feetPerMinute(const AircraftVariables& variables);

/// Tanks with a capacity only.
aviation::structs::AircraftFuel readFuel(const char* data);
aviation::structs::AircraftPayload readPayload(const char* data);
aviation::structs::RadioFrequencys readRadios(const char* data);

} // namespace simconnectdata

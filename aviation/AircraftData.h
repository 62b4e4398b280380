#pragma once

#include "aviation/AircraftDetail.h"
#include "aviation/Position.h"
#include "aviation/Wind.h"

#include <cstdint>

namespace aviation::structs {

/// Flags of the aircraft in the simulator.
struct AircraftState
{
    bool onGround = false;
    bool parkingBrake = false; ///< position isn't 0
    bool engineOff = false;    ///< engine 1 burns no fuel
    bool landingLight = false;
    bool doorOpen = false; ///< any of the exits 0 to 5
};
static_assert(sizeof(AircraftState) == 5);

/// The aircraft as last seen in the simulator; copied whole between threads.
struct AircraftData : AircraftState, AircraftDetail
{
    Position position;
    std::int32_t heightAgl = 0;   ///< feet
    std::int32_t altitude = 0;    ///< feet above sea level
    std::int32_t tas = 0;         ///< knots
    std::int32_t groundSpeed = 0; ///< knots
    double heading = 0.0; ///< degrees; magnetic from SimConnect and bridge, true from FSUIPC
    double headingMagnetic = 0.0;   ///< degrees, filled by FSUIPC only
    std::int32_t verticalSpeed = 0; ///< feet per minute
    std::int32_t landingRate = 0;   ///< feet per minute, only in the first sample on the ground
    weather::Wind wind{0.0F, 0.0F, -1.0F, 0.0F};
    float temperature = 13.0F;      ///< degrees Celsius, outside air
    float visibility = 99999.0F;    ///< kilometres
    float magneticVariation = 0.0F; ///< degrees
    float totalWeight = 0.0F;       ///< pounds
    std::int64_t simTime = 0;       ///< seconds since 1970, the simulator's zulu time
};

} // namespace aviation::structs

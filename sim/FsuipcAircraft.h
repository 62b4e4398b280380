#pragma once

#include "aviation/AircraftData.h"
#include "aviation/FsId.h"

#include <QString>

#include <array>
#include <cstdint>

class FsuipcClient;

/// The aircraft as it stands in FSUIPC's memory, bit by bit; units in FsuipcOffsets.h. Plain value.
struct FsuipcAircraft
{
    std::int64_t latitude = 0;
    std::int64_t longitude = 0;
    std::int32_t verticalSpeed = 0;
    std::int32_t touchdownRate = 0;
    std::int32_t heightAgl = 0;
    std::int64_t altitude = 0;
    std::int32_t groundSpeed = 0;
    std::int32_t trueAirspeed = 0;
    std::uint32_t heading = 0;
    double magneticHeading = 0.0;
    double windDirection = 0.0;
    double windSpeed = 0.0;
    double temperature = 0.0;
    std::uint16_t onGround = 0;
    std::int16_t variation = 0;
    double metresVisible = 0.0;
    std::uint16_t milesVisible = 0;
    std::uint16_t parkingBrake = 0;
    std::uint16_t engineFires = 0;
    std::uint16_t landingLight = 0;
    std::uint8_t doors = 0;
    std::array<char, 256> title{};
    std::array<char, 12> registration{};
    std::array<char, 24> airline{};
    std::array<char, 24> type{};
    float fuelFlow = 0.0F;
    std::int32_t emptyWeight = 0;
    std::int32_t grossWeight = 0;
    double totalWeight = 0.0;
    std::array<std::uint8_t, 3> time{}; ///< second, hour, minute
    std::uint8_t day = 0;
    std::uint16_t year = 0;
    std::uint8_t month = 0;

    /// Queues a read of each; `id` says where the visibility stands.
    void queueReads(FsuipcClient& client, aviation::FsId id);
    /// The record; what FSUIPC doesn't have stays, and so does the time if it is none. A place
    /// beyond 90 degrees of latitude is left unknown.
    void fill(aviation::structs::AircraftData& data, aviation::FsId id) const;
    /// "d.M.yyyy H:m:s", UTC.
    QString timeText() const;
};

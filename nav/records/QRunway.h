#pragma once

#include <QString>

#include <cstdint>

/// One direction of a runway. Plain value.
struct QRunway
{
    double Lat = 0.0;           ///< degrees, of the threshold
    double Lon = 0.0;           ///< degrees, of the threshold
    QString Designator;         ///< "25L"
    std::uint16_t Heading = 0;  ///< degrees
    std::uint16_t Length = 0;   ///< feet
    std::uint8_t RadioType = 0; ///< not 0: it has a landing aid
    QString Frequency;          ///< of the landing aid, as its text in the source
    std::int32_t Elevation = 0; ///< feet
    QString Spare;              ///< no reader fills it
};

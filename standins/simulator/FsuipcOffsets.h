#pragma once

#include "aviation/RadioFrequencys.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// FSUIPC's published offsets that the simulator serves, each with its unit.
namespace simulator::offset {

inline constexpr std::size_t kMemoryBytes = 65536;

// Flight.
inline constexpr std::uint32_t kZuluSecond = 0x023A; ///< byte; hour and minute follow
inline constexpr std::uint32_t kZuluHour = 0x023B;
inline constexpr std::uint32_t kZuluMinute = 0x023C;
inline constexpr std::uint32_t kDay = 0x023D;   ///< byte, of the month
inline constexpr std::uint32_t kYear = 0x0240;  ///< 16 bits
inline constexpr std::uint32_t kMonth = 0x0242; ///< byte
inline constexpr std::uint32_t kLandingLight = 0x028C;
inline constexpr std::uint32_t kMagneticVariation = 0x02A0; ///< 16 bits, 1/65536 circle, west < 0
inline constexpr std::uint32_t kGroundSpeed = 0x02B4;       ///< 32 bits, 1/65536 m/s
inline constexpr std::uint32_t kTrueAirspeed = 0x02B8;      ///< 32 bits, 1/128 knot
inline constexpr std::uint32_t kVerticalSpeed = 0x02C8;     ///< 32 bits, 1/256 m/s
inline constexpr std::uint32_t kTouchdownSpeed = 0x030C;    ///< the same, stands still on ground
inline constexpr std::uint32_t kOnGround = 0x0366;          ///< 16 bits, 0 or 1
inline constexpr std::uint32_t kLatitude = 0x0560;  ///< 64 bits, 90 degrees = 10001750 * 2^32
inline constexpr std::uint32_t kLongitude = 0x0568; ///< 64 bits, 360 degrees = 2^64
inline constexpr std::uint32_t kAltitude = 0x0570;  ///< 64 bits, 2^-32 m
inline constexpr std::uint32_t kHeading = 0x0580;   ///< 32 bits, true, 360 degrees = 2^32
inline constexpr std::uint32_t kEngineRuns = 0x0894;
inline constexpr std::uint32_t kParkingBrake = 0x0BC8;     ///< 16 bits, 0 off, 32767 on
inline constexpr std::uint32_t kVisibilityMiles = 0x0E8A;  ///< 16 bits, 1/100 statute mile
inline constexpr std::uint32_t kFuelFlow = 0x1270;         ///< 32-bit float, pounds an hour
inline constexpr std::uint32_t kEmptyWeight = 0x1330;      ///< 32 bits, 1/256 pound
inline constexpr std::uint32_t kMaxGrossWeight = 0x1334;   ///< the same
inline constexpr std::uint32_t kWindDirection = 0x2DE0;    ///< double, degrees true
inline constexpr std::uint32_t kWindSpeed = 0x2DE8;        ///< double, knots
inline constexpr std::uint32_t kVisibilityMetres = 0x2DF0; ///< double
inline constexpr std::uint32_t kTotalWeight = 0x30C0;      ///< double, pounds
inline constexpr std::uint32_t kRegistration = 0x313C;     ///< 12 bytes of text
inline constexpr std::uint32_t kAirline = 0x3148;          ///< 24
inline constexpr std::uint32_t kType = 0x3160;             ///< 24
inline constexpr std::uint32_t kHeightAgl = 0x31E4;        ///< 32 bits, 1/65536 m
inline constexpr std::uint32_t kDoors = 0x3367;            ///< byte, a bit for each exit
inline constexpr std::uint32_t kTemperature = 0x34A8;      ///< double, degrees Celsius
inline constexpr std::uint32_t kName = 0x3D00;             ///< 256 bytes of text
inline constexpr std::uint32_t kMagneticHeading = 0x6040;  ///< double, radians

// Program.
inline constexpr std::uint32_t kRefinement = 0x3124;   ///< byte, which simulator exactly
inline constexpr std::uint32_t kTextDuration = 0x32FA; ///< 16 bits, seconds; shows the text
inline constexpr std::uint32_t kPauseKey = 0x0264;     ///< 16 bits, 0 runs, 1 paused by the key
inline constexpr std::uint32_t kMenu = 0x3365;         ///< byte, 0 runs, else a menu is open
inline constexpr std::uint32_t kText = 0x3380;
inline constexpr std::uint32_t kTextBytes = 128;

// Weather.
inline constexpr std::uint32_t kObservation = 0xB800;
inline constexpr std::uint32_t kObservationBytes = 2000;
inline constexpr std::uint32_t kWeather = 0xC800;        ///< command word or the whole record
inline constexpr std::uint32_t kWeatherCounter = 0xC824; ///< 32 bits

// Load.
inline constexpr double kTankLevelFull = 8388608.0;    ///< 128 * 65536
inline constexpr std::uint32_t kFuelWeight = 0x0AF4;   ///< 16 bits, 1/256 pound a gallon
inline constexpr std::uint32_t kStationCount = 0x13FC; ///< 32 bits
inline constexpr std::uint32_t kStations = 0x1400;
inline constexpr std::uint32_t kStationBytes = 48; ///< weight, three 64-bit arms, name
inline constexpr std::uint32_t kStationName = 32;  ///< within the station
inline constexpr std::uint32_t kStationNameBytes = 16;
inline constexpr std::uint32_t kMostStations = 61;

struct Tank
{
    int id;
    std::uint32_t level;    ///< 32 bits, kTankLevelFull
    std::uint32_t capacity; ///< 32 bits, gallons
};
inline constexpr std::array kTanks{
    Tank{1, 0x0B8C, 0x0B90},  Tank{2, 0x0B84, 0x0B88}, Tank{3, 0x0B7C, 0x0B80},
    Tank{4, 0x0B74, 0x0B78},  Tank{5, 0x1244, 0x1248}, Tank{6, 0x124C, 0x1250},
    Tank{7, 0x0B94, 0x0B98},  Tank{8, 0x0B9C, 0x0BA0}, Tank{9, 0x0BA4, 0x0BA8},
    Tank{10, 0x1254, 0x1258}, Tank{11, 0x125C, 0x1260}};

/// 16 bits of BCD each.
struct Radio
{
    std::uint32_t at;
    std::uint16_t aviation::structs::RadioFrequencys::*field;
    bool isFrequency; ///< stands without its leading 1
};
using Radios = aviation::structs::RadioFrequencys;
inline constexpr std::array kRadios{
    Radio{0x034E, &Radios::comm1active, true},  Radio{0x3118, &Radios::comm2active, true},
    Radio{0x311A, &Radios::comm1standby, true}, Radio{0x311C, &Radios::comm2standby, true},
    Radio{0x0350, &Radios::nav1active, true},   Radio{0x0352, &Radios::nav2active, true},
    Radio{0x311E, &Radios::nav1standby, true},  Radio{0x3120, &Radios::nav2standby, true},
    Radio{0x0354, &Radios::transponder, false}, Radio{0x034C, &Radios::adf, false}};

} // namespace simulator::offset

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Offsets of FSUIPC's published table that the program uses; after each its size in bytes.
/// Integers are little endian and signed unless said otherwise.
namespace fsuipcoffset {

inline constexpr std::uint32_t kZuluTime = 0x023A;      ///< 3: second, hour, minute
inline constexpr std::uint32_t kZuluDay = 0x023D;       ///< 1: day of the month
inline constexpr std::uint32_t kZuluYear = 0x0240;      ///< 2, unsigned
inline constexpr std::uint32_t kZuluMonth = 0x0242;     ///< 1
inline constexpr std::uint32_t kPauseKey = 0x0264;      ///< 2: not 0 while the pause key holds
inline constexpr std::uint32_t kLandingLight = 0x028C;  ///< 2
inline constexpr std::uint32_t kVariation = 0x02A0;     ///< 2: degrees * 65536 / 360, east positive
inline constexpr std::uint32_t kGroundSpeed = 0x02B4;   ///< 4: metres per second * 65536
inline constexpr std::uint32_t kTrueAirspeed = 0x02B8;  ///< 4: knots * 128
inline constexpr std::uint32_t kVerticalSpeed = 0x02C8; ///< 4: metres per second * 256
inline constexpr std::uint32_t kTouchdownRate = 0x030C; ///< 4: metres per second * 256
inline constexpr std::uint32_t kOnGround = 0x0366;      ///< 2
inline constexpr std::uint32_t kLatitude = 0x0560;      ///< 8: 90 degrees are 10001750 * 2^32
inline constexpr std::uint32_t kLongitude = 0x0568;     ///< 8: 360 degrees are 2^64
inline constexpr std::uint32_t kAltitude = 0x0570;      ///< 8: metres * 2^32
inline constexpr std::uint32_t kHeading = 0x0580;       ///< 4, unsigned: 360 degrees are 2^32
inline constexpr std::uint32_t kEngineFires = 0x0894;   ///< 2
inline constexpr std::uint32_t kFuelWeight = 0x0AF4;    ///< 2, unsigned: pounds per gallon * 256
inline constexpr std::uint32_t kParkingBrake = 0x0BC8;  ///< 2
inline constexpr std::uint32_t kMilesVisible = 0x0E8A;  ///< 2, unsigned: statute miles * 100
inline constexpr std::uint32_t kFuelFlow = 0x1270;      ///< 4: float
inline constexpr std::uint32_t kEmptyWeight = 0x1330;   ///< 4: pounds * 256
inline constexpr std::uint32_t kGrossWeight = 0x1334;   ///< 4: pounds * 256, the maximum
inline constexpr std::uint32_t kWindDirection = 0x2DE0; ///< 8: double, degrees
inline constexpr std::uint32_t kWindSpeed = 0x2DE8;     ///< 8: double, knots
inline constexpr std::uint32_t kMetresVisible = 0x2DF0; ///< 8: double
inline constexpr std::uint32_t kTotalWeight = 0x30C0;   ///< 8: double, pounds
inline constexpr std::uint32_t kSimulatorModel = 0x3124;  ///< 1, refines the simulator's name
inline constexpr std::uint32_t kRegistration = 0x313C;    ///< 12: text
inline constexpr std::uint32_t kAirline = 0x3148;         ///< 24: text
inline constexpr std::uint32_t kAircraftType = 0x3160;    ///< 24: text
inline constexpr std::uint32_t kHeightAgl = 0x31E4;       ///< 4: metres * 65536
inline constexpr std::uint32_t kTextDuration = 0x32FA;    ///< 2: seconds
inline constexpr std::uint32_t kMenu = 0x3365;            ///< 1: not 0 while a menu is open
inline constexpr std::uint32_t kDoors = 0x3367;           ///< 1
inline constexpr std::uint32_t kScreenText = 0x3380;      ///< 128: text
inline constexpr std::uint32_t kTemperature = 0x34A8;     ///< 8: double, degrees Celsius
inline constexpr std::uint32_t kAircraftTitle = 0x3D00;   ///< 256: text
inline constexpr std::uint32_t kMagneticHeading = 0x6040; ///< 8: double, radians
inline constexpr std::uint32_t kObservation = 0xB800;     ///< 2000: text, at the aircraft
inline constexpr std::uint32_t kWeather = 0xC800; ///< 1024: NewWeather; 2: the command word alone
inline constexpr std::uint32_t kWeatherCounter = 0xC824; ///< 4: weather writes

inline constexpr std::size_t kScreenTextBytes = 128;
inline constexpr std::size_t kObservationBytes = 2000;

/// Commands of the weather command word.
inline constexpr std::uint16_t kClearWeather = 3;

/// Tanks in the order of their ids, 1 to 11. Levels: 4, full is 8388608. Capacities: 4, gallons.
struct Tank
{
    std::uint32_t level;
    std::uint32_t capacity;
};
inline constexpr std::array kTanks{
    Tank{2956, 2960}, Tank{2948, 2952}, Tank{2940, 2944}, Tank{2932, 2936},
    Tank{4676, 4680}, Tank{4684, 4688}, Tank{2964, 2968}, Tank{2972, 2976},
    Tank{2980, 2984}, Tank{4692, 4696}, Tank{4700, 4704},
};

/// Payload: 4, the number of stations; then 48 bytes each.
inline constexpr std::uint32_t kPayloadCount = 0x13FC;
/// As many as the published table has room for: after 5120 + 48 * 61 other things begin.
inline constexpr std::size_t kMostStations = 61;
inline constexpr std::size_t kStationNameBytes = 16;
/// 8: double, pounds.
constexpr std::uint32_t stationWeight(std::size_t station)
{
    return static_cast<std::uint32_t>(5120 + 48 * station);
}
/// kStationNameBytes: text.
constexpr std::uint32_t stationName(std::size_t station)
{
    return static_cast<std::uint32_t>(5152 + 48 * station);
}

} // namespace fsuipcoffset

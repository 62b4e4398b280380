#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// Layer of visibility.
struct VisLayer
{
    std::uint16_t UpperAlt = 0; ///< metres
    std::int16_t LowerAlt = 0;  ///< metres
    std::uint16_t Range = 0;    ///< hundredths of a statute mile
    std::uint16_t Padding = 0;
};
static_assert(sizeof(VisLayer) == 8);

struct TempLayer
{
    std::uint16_t Alt = 0; ///< metres
    std::int16_t Day = 0;  ///< degrees Celsius
    std::int16_t DayNightVar = 0;
    std::int16_t Dew = 0; ///< degrees Celsius
};
static_assert(sizeof(TempLayer) == 8);

struct WindLayer
{
    std::uint16_t UpperAlt = 0;  ///< metres
    std::uint16_t Speed = 0;     ///< knots
    std::uint16_t Gust = 0;      ///< knots above the speed
    std::uint16_t Dir = 0;       ///< degrees * 65536 / 360
    std::uint8_t Turbulence = 0; ///< 0 to 4
    std::uint8_t Shear = 0;
    std::uint16_t Variance = 0; ///< degrees * 65536 / 360
    std::uint16_t SpeedFract = 0;
    std::uint16_t CapAbove = 0;
};
static_assert(sizeof(WindLayer) == 16);

struct CloudLayer
{
    std::uint16_t UpperAlt = 0;  ///< top, metres above sea level
    std::uint16_t LowerAlt = 0;  ///< base, metres above sea level
    std::uint16_t Dev = 0;       ///< deviation of the base, metres
    std::uint8_t Cover = 0;      ///< octas
    std::uint8_t Type = 0;       ///< 1 cirrus, 8 stratus, 9 cumulus, 10 cumulonimbus
    std::uint8_t Turbulence = 0; ///< 0 to 3
    std::uint8_t Icing = 0;      ///< 0 to 2
    std::int16_t PrecipBase = 0; ///< metres above sea level
    std::uint8_t PrecipType = 0; ///< 0 none, 1 rain, 2 snow
    std::uint8_t PrecipRate = 0; ///< 0 to 5
    std::uint8_t TopShape = 0;   ///< 0 to 2
    std::uint8_t Padding = 0;
};
static_assert(sizeof(CloudLayer) == 16);

inline constexpr std::size_t kTempLayerSlots = 24;
inline constexpr std::size_t kWindLayerSlots = 24;
inline constexpr std::size_t kCloudLayerSlots = 16;
inline constexpr std::size_t kUpperVisSlots = 12;

/// The layered weather of one station in the binary layout of FSUIPC's weather interface ("New
/// Weather Interface", 1024 bytes). Plain value: written to the simulator byte by byte, so a field
/// is 0 unless somebody set it.
struct NewWeather
{
    std::uint16_t Command = 0; ///< 2 writes weather, 258 for FS2004
    std::uint16_t Flag = 0;
    std::uint32_t Signature = 0;
    std::array<char, 4> Icao{}; ///< ASCII, zero bytes after a shorter name
    std::uint16_t Dynamic = 0;
    std::uint16_t Seconds = 0;
    double Lat = 0.0;
    double Lon = 0.0;
    std::int32_t Elev = 0; ///< metres in 16.16 fixed point
    std::uint32_t Timestamp = 0;
    std::uint16_t Press = 1013; ///< QNH in hPa times 16; fresh 1013 as it stands
    std::int16_t Drift = 0;
    VisLayer Vis; ///< surface visibility
    std::int32_t nTempCtr = 0;
    std::array<TempLayer, kTempLayerSlots> Temp{};
    std::int32_t nWindCtr = 0;
    std::array<WindLayer, kWindLayerSlots> Wind{};
    std::int32_t nCloudCtr = 0;
    std::array<CloudLayer, kCloudLayerSlots> Cloud{};
    std::array<std::uint8_t, 12> Reserved1{};
    std::int32_t nUpperVisCtr = 0;
    std::array<VisLayer, kUpperVisSlots> UpperVis{};
    std::array<std::uint8_t, 16> Reserved2{};

    /// Stores at most four characters, the rest zero; characters above 127 become '?'.
    void setIcao(std::wstring_view icao);
    /// The station up to its first zero byte.
    std::string icaoText() const;
};
static_assert(sizeof(NewWeather) == 1024);
static_assert(std::is_trivially_copyable_v<NewWeather>);
static_assert(offsetof(NewWeather, Icao) == 8);
static_assert(offsetof(NewWeather, Lat) == 16);
static_assert(offsetof(NewWeather, Elev) == 32);
static_assert(offsetof(NewWeather, Press) == 40);
static_assert(offsetof(NewWeather, Vis) == 44);
static_assert(offsetof(NewWeather, nTempCtr) == 52);
static_assert(offsetof(NewWeather, nWindCtr) == 248);
static_assert(offsetof(NewWeather, Wind) == 252);
static_assert(offsetof(NewWeather, nCloudCtr) == 636);
static_assert(offsetof(NewWeather, Cloud) == 640);
static_assert(offsetof(NewWeather, nUpperVisCtr) == 908);
static_assert(offsetof(NewWeather, UpperVis) == 912);

#pragma once

#include <cstdint>
#include <string_view>

namespace aviation::weather {

/// A field of which the value alone doesn't say whether it was reported: a default or an assumption
/// would look alike.
enum class Field : std::uint8_t
{
    Direction, ///< of the wind; a variable wind holds none
    Sector,
    Visibility,
    Clouds, ///< layers, or that there are none
    Temperature,
    DewPoint,
    Qnh,
    Precipitation,
    BaseHeight,
    BaseCoverage,
    Humidity,
    StationPressure,
    LowCode,
    MiddleCode,
    HighCode,
    Gust10Minutes,
    Gust1,
    Gust2,
    Sea,
    SeaSecond,
    MaximumWind,
    MaximumWindTemperature,
    Tropopause,
    TropopauseTemperature,
    LowCloud,
    MiddleCloud,
    HighCloud
};

/// The fields that a report holds itself.
class HeldFields
{
public:
    bool has(Field field) const { return (m_bits & bitOf(field)) != 0; }
    void set(Field field, bool held = true)
    {
        m_bits = held ? m_bits | bitOf(field) : m_bits & ~bitOf(field);
    }
    /// Held where the text of the group has a digit in every place.
    void setFrom(Field field, std::wstring_view group)
    {
        set(field, group.find(L'/') == std::wstring_view::npos);
    }

private:
    static constexpr std::uint32_t bitOf(Field field)
    {
        return std::uint32_t{1} << static_cast<unsigned>(field);
    }

    std::uint32_t m_bits = 0;
};

} // namespace aviation::weather

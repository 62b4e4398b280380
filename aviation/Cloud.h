#pragma once

#include <cstdint>
#include <string>

namespace aviation::weather {

/// Cloud::type values with a meaning of their own; SYNOP layers carry the WMO genus digit instead.
namespace cloudtype {
inline constexpr std::uint8_t kOrdinary = 0;
inline constexpr std::uint8_t kCirrus = 1;
inline constexpr std::uint8_t kCumulus = 9;
inline constexpr std::uint8_t kCumulonimbus = 10;
inline constexpr std::uint8_t kToweringCumulus = 11;
} // namespace cloudtype

/// One decoded cloud layer of a report.
struct Cloud
{
    std::uint8_t type = cloudtype::kOrdinary;
    std::uint8_t coverage = 0; ///< octas, 0 to 8
    std::int32_t base = 0;     ///< feet above the station
    std::int32_t top = -1;     ///< feet, -1 until somebody has set it
    std::int32_t altitude = 0; ///< base in feet above mean sea level
    bool typeKnown = false;    ///< the report says one
    bool baseKnown = true;     ///< false: the report says none, and the base is an assumption
    bool isAssumed = false;    ///< stands for "no significant cloud", which is no layer

    /// Refuses a value above 8: returns false and leaves the field alone.
    bool setCoverage(int octas);
};

/// A height above a station in feet as one above the sea. Saturates: a damaged table may hold any
/// elevation.
std::int32_t altitudeAboveSea(std::int32_t aboveStation, std::int32_t elevation);

/// "FEW", "SCT", "BKN" or "OVC" for 1 to 8 octas, empty otherwise.
const char* coverageAbbreviation(int octas);

/// The layer as a METAR group (ICAO Annex 3): abbreviation, base / 100 in three digits, "CI", "CB"
/// or "TCU" by type. Coverage 0 leaves the abbreviation empty.
std::string metarGroup(const Cloud& cloud);

} // namespace aviation::weather

#pragma once

#include <cstdint>

namespace aviation::structs {

/// Radios of the simulated aircraft. Frequencies are hundredths of a megahertz: 118.00 MHz is
/// 11800. Plain value.
struct RadioFrequencys
{
    std::uint16_t comm1active = 11800;
    std::uint16_t comm1standby = 11800;
    std::uint16_t comm2active = 11800;
    std::uint16_t comm2standby = 11800;
    std::uint16_t nav1active = 10800;
    std::uint16_t nav1standby = 10800;
    std::uint16_t nav2active = 10800;
    std::uint16_t nav2standby = 10800;
    std::uint16_t transponder = 7000; ///< the four octal digits read as a decimal number
    std::uint16_t adf = 384;          ///< kHz, as a decimal number
    std::uint16_t adfDefault = 384;   ///< always 384 and never read; part of the record's layout
};
static_assert(sizeof(RadioFrequencys) == 22);

} // namespace aviation::structs

#pragma once

#include <cstdint>

/// Numbers in the form that FSUIPC's memory has for radios. Pure functions.
namespace fsuipcvalue {

/// A word of four decimal digits as a number: 0x1800 is 1800. Reading ends at another digit.
std::uint16_t fromBcd(std::uint16_t word);
/// 1800 is 0x1800; of more than four digits the last four.
std::uint16_t toBcd(std::uint16_t number);

} // namespace fsuipcvalue

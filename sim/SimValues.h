#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// Values as simulators have them in their memory and messages. Pure functions for whatever stands
/// there.
namespace simvalue {

/// The integer part, limited to the range of its type; 0 for what isn't a number.
std::int32_t truncated(double value);

/// In single precision, limited to finite values; 0 for what isn't a number.
float singleOf(double value);

/// A text up to its first zero, or all of it: UTF-8, or Latin-1 where it isn't that.
QString textOf(const char* bytes, std::size_t size);
template <std::size_t kSize>
QString textOf(const std::array<char, kSize>& bytes)
{
    return textOf(bytes.data(), kSize);
}

/// UTF-8 of at most so many bytes, cut between two characters.
std::string cutText(const std::string& utf8, std::size_t most);

/// A word of four decimal digits, one in four bits each, as a number: 0x1800 is 1800. Reading ends
/// at another digit.
std::uint16_t fromBcd(std::uint16_t word);
/// 1800 is 0x1800; of more than four digits the last four.
std::uint16_t toBcd(std::uint16_t number);

} // namespace simvalue

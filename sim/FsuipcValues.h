#pragma once

#include <QString>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

/// Values as they stand in FSUIPC's memory. Pure functions for whatever bytes a simulator has
/// there.
namespace fsuipcvalue {

/// The integer part, kept within the limits of its type; 0 for what isn't a number.
inline std::int32_t Truncated(double value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<std::int32_t>(
        std::clamp(value, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

/// In single precision, kept finite; 0 for what isn't a number.
inline float Single(double value)
{
    constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
    return std::isnan(value) ? 0.0F : static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

/// A text up to its first zero, or all of it: UTF-8, or Latin-1 where it isn't that.
QString Text(const char* bytes, std::size_t size);
template <std::size_t kSize>
QString Text(const std::array<char, kSize>& bytes)
{
    return Text(bytes.data(), kSize);
}

/// A word of four decimal digits as a number: 0x1800 is 1800. Reading ends at another digit.
std::uint16_t FromBcd(std::uint16_t word);
/// 1800 is 0x1800; of more than four digits the last four.
std::uint16_t ToBcd(std::uint16_t number);

} // namespace fsuipcvalue

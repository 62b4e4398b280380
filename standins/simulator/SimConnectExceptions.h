#pragma once

#include <cstdint>

/// Numbers of SimConnect's exceptions, as the simulators' makers publish them.
namespace simulator::exception {
inline constexpr std::uint32_t kError = 1;
inline constexpr std::uint32_t kSizeMismatch = 2;
inline constexpr std::uint32_t kUnrecognizedId = 3;
inline constexpr std::uint32_t kNameUnrecognized = 7;
inline constexpr std::uint32_t kEventIdDuplicate = 9;
inline constexpr std::uint32_t kTooManyRequests = 12;
inline constexpr std::uint32_t kWeatherInvalidMetar = 14;
inline constexpr std::uint32_t kWeatherUnableToGetObservation = 15;
inline constexpr std::uint32_t kWeatherUnableToCreateStation = 16;
inline constexpr std::uint32_t kInvalidDataType = 18;
inline constexpr std::uint32_t kDataError = 20;
inline constexpr std::uint32_t kLoadFlightPlanFailed = 23;
inline constexpr std::uint32_t kInvalidEnum = 27;
inline constexpr std::uint32_t kOutOfBounds = 31;
} // namespace simulator::exception

#pragma once

#include <QString>

#include <cstdint>
#include <string>

namespace simulator {

inline constexpr std::size_t kLongestCallText = 65536;

/// An argument of a call, cut to kLongestCallText; a null pointer is an empty text.
std::string textOf(const char* text);
/// The same, from UTF-8.
QString wideTextOf(const char* text);
/// Fit for the book of calls.
std::string number(std::uint32_t value);
std::string number(float value);

} // namespace simulator

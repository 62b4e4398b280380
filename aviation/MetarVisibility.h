#pragma once

#include "aviation/GroupReader.h"

#include <cstdint>
#include <optional>

namespace aviation::weather {

/// Visibility in metres of 10 km and more, and of a report that doesn't give one.
inline constexpr std::int32_t kGoodVisibility = 9999;

/// Cuts off the visibility group of a METAR and gives its metres. A group in miles or kilometres
/// may stand anywhere in the rest: its length is then cut off the front, not the group itself.
std::optional<std::int32_t> visibilityFrom(GroupReader& report);

} // namespace aviation::weather

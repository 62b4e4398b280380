#pragma once

#include "aviation/support/Clock.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace aviation {

/// Seconds since 1970 of a report's day, hour and minute, UTC. Month and year are the current ones;
/// a day above today's belongs to the month before. The seconds of `now` stay. Values out of range
/// roll over as calendar arithmetic does: day 0 is the last day of the month before.
std::int64_t reportSeconds(std::chrono::sys_seconds now, int day, int hour, int minute);
/// The same from the process's clock.
inline std::int64_t reportSeconds(int day, int hour, int minute)
{
    const std::chrono::seconds now(Clock::current().nowSeconds());
    return reportSeconds(std::chrono::sys_seconds(now), day, hour, minute);
}
inline std::int64_t reportSeconds(Clock::UtcTime now, int day, int hour, int minute)
{
    return reportSeconds(std::chrono::floor<std::chrono::seconds>(now), day, hour, minute);
}

/// The rough three-hour rule on a time group "ddhhmm...": a report of another UTC day is old; one
/// of today is old when its hour lies more than three below the present one, whatever the minutes,
/// so between 00:00 and 03:59 none of today is. A group without an hour counts as 00, one without a
/// day is old.
bool isTimeGroupOld(std::wstring_view timeGroup, Clock::UtcTime now);

/// "yyyy/MM/dd hh:mm" in UTC.
std::string slashedDateTime(Clock::UtcTime now);

/// As C's asctime, "Thu Jan  1 00:00:00 1970\n" with the line feed, in UTC.
std::string ascTime(Clock::UtcTime now);

/// Seconds since 1970.
inline std::int64_t epochSeconds(Clock::UtcTime now)
{
    return std::chrono::floor<std::chrono::seconds>(now).time_since_epoch().count();
}

} // namespace aviation

#include "aviation/support/ReportTime.h"

#include "aviation/support/NumberText.h"

namespace aviation {

namespace {

using std::chrono::days;
using std::chrono::seconds;

struct UtcParts
{
    std::chrono::year_month_day date{};
    std::chrono::hh_mm_ss<seconds> time{};
    unsigned weekday = 0; ///< 0 Sunday
};

UtcParts partsOf(Clock::UtcTime now)
{
    const auto midnight = std::chrono::floor<days>(now);
    return {std::chrono::year_month_day(midnight),
            std::chrono::hh_mm_ss<seconds>(std::chrono::floor<seconds>(now - midnight)),
            std::chrono::weekday(midnight).c_encoding()};
}

int dayOf(const UtcParts& parts)
{
    return static_cast<int>(static_cast<unsigned>(parts.date.day()));
}

std::string clockText(const UtcParts& parts, bool withSeconds)
{
    std::string text = integerText(parts.time.hours().count(), 2) + ":"
                       + integerText(parts.time.minutes().count(), 2);
    return withSeconds ? text + ":" + integerText(parts.time.seconds().count(), 2) : text;
}

} // namespace

std::int64_t reportSeconds(std::chrono::sys_seconds now, int day, int hour, int minute)
{
    const auto today = std::chrono::floor<days>(now);
    const std::chrono::year_month_day date(today);
    const int dayToday = static_cast<int>(static_cast<unsigned>(date.day()));
    std::chrono::sys_days first = today - days(dayToday - 1);
    if (day > dayToday) {
        first = std::chrono::sys_days((date.year() / date.month() - std::chrono::months(1)) / 1);
    }
    const seconds secondOfMinute = (now - today) % std::chrono::minutes(1);
    const auto reported = first + days(day - 1) + std::chrono::hours(hour)
                          + std::chrono::minutes(minute) + secondOfMinute;
    return reported.time_since_epoch().count();
}

bool isTimeGroupOld(std::wstring_view timeGroup, Clock::UtcTime now)
{
    constexpr int kLimitHours = 3;
    const UtcParts parts = partsOf(now);
    const int day = integerFromText(timeGroup.substr(0, 2));
    if (day != dayOf(parts)) {
        return true;
    }
    const int hour = timeGroup.size() > 2 ? integerFromText(timeGroup.substr(2, 2)) : 0;
    return hour < parts.time.hours().count() - kLimitHours;
}

std::string slashedDateTime(Clock::UtcTime now)
{
    const UtcParts parts = partsOf(now);
    return integerText(static_cast<int>(parts.date.year()), 4) + "/"
           + integerText(static_cast<unsigned>(parts.date.month()), 2) + "/"
           + integerText(dayOf(parts), 2) + " " + clockText(parts, false);
}

std::string ascTime(Clock::UtcTime now)
{
    static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const UtcParts parts = partsOf(now);
    const std::string day = std::to_string(dayOf(parts));
    return std::string(kDays[parts.weekday]) + " "
           + kMonths[static_cast<unsigned>(parts.date.month()) - 1] + (day.size() < 2 ? "  " : " ")
           + day + " " + clockText(parts, true) + " "
           + std::to_string(static_cast<int>(parts.date.year())) + "\n";
}

} // namespace aviation

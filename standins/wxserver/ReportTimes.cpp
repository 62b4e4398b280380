#include "standins/wxserver/ReportTimes.h"

#include <QByteArrayList>

#include <algorithm>
#include <cctype>
#include <optional>

namespace wxserver {

namespace {

using aviation::Clock;
using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using Minute = std::chrono::sys_time<minutes>;

constexpr int kTimeGroupLength = 7; // ddhhmmZ

bool allDigits(const QByteArray& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char letter) {
        return letter >= '0' && letter <= '9';
    });
}

QByteArray twoDigits(int number)
{
    return QByteArray::number(number).rightJustified(2, '0');
}

/// The moment of day, hour and minute that lies nearest to `around`; nothing when no date is like
/// that. Hour 24 is the end of the day.
std::optional<Minute> momentOf(int day, int hour, int minute, Clock::UtcTime around)
{
    if (day < 1 || day > 31 || hour > 24 || minute > 59) {
        return std::nullopt;
    }
    const std::chrono::year_month_day today(std::chrono::floor<days>(around));
    std::optional<Minute> best;
    for (const int months : {-1, 0, 1}) {
        const auto month =
            std::chrono::year_month(today.year(), today.month()) + std::chrono::months(months);
        const std::chrono::year_month_day date = month / std::chrono::day(unsigned(day));
        if (!date.ok()) {
            continue;
        }
        const Minute moment = std::chrono::sys_days(date) + hours(hour) + minutes(minute);
        if (!best || std::chrono::abs(moment - around) < std::chrono::abs(*best - around)) {
            best = moment;
        }
    }
    return best;
}

/// Day and hour, with the minutes too when the text has six digits; moved, or as it is.
QByteArray movedDigits(const QByteArray& digits, const TimeShift& shift)
{
    const int hour = digits.mid(2, 2).toInt();
    const auto moment = momentOf(digits.left(2).toInt(), hour, digits.mid(4).toInt(), shift.from);
    if (!moment) {
        return digits;
    }
    const Minute moved = *moment + shift.by;
    auto day = std::chrono::floor<days>(moved);
    int newHour = static_cast<int>(std::chrono::floor<hours>(moved - day).count());
    // The end of a day stays the end of a day.
    if (hour == 24 && newHour == 0) {
        newHour = 24;
        day -= days(1);
    }
    const auto number = unsigned(std::chrono::year_month_day(day).day());
    return twoDigits(static_cast<int>(number)) + twoDigits(newHour) + digits.mid(4);
}

bool isTimeGroup(const QByteArray& group)
{
    return (group.size() == kTimeGroupLength && group.endsWith('Z') && allDigits(group.left(6)))
           || (group.size() == kTimeGroupLength - 1 && allDigits(group));
}

/// Hour and minute of a trend ("TL1330"), moved within the day.
QByteArray movedTrend(const QByteArray& group, hours by)
{
    const bool isTrend =
        group.size() == 6 && allDigits(group.mid(2))
        && (group.startsWith("FM") || group.startsWith("TL") || group.startsWith("AT"));
    if (!isTrend) {
        return group;
    }
    const auto hour = (group.mid(2, 2).toInt() + by.count() % 24 + 24) % 24;
    return group.left(2) + twoDigits(static_cast<int>(hour)) + group.mid(4);
}

/// dddd/dddd or TX12/0115Z: day and hour after or around the slash.
QByteArray movedPeriod(const QByteArray& group, const TimeShift& shift)
{
    const int slash = group.indexOf('/');
    const QByteArray before = group.left(slash);
    const QByteArray after = group.mid(slash + 1);
    if (before.size() == 4 && after.size() == 4 && allDigits(before) && allDigits(after)) {
        return movedDigits(before, shift) + '/' + movedDigits(after, shift);
    }
    const bool isExtreme = (before.startsWith("TX") || before.startsWith("TN")) && after.size() == 5
                           && after.endsWith('Z') && allDigits(after.left(4));
    return isExtreme ? before + '/' + movedDigits(after.left(4), shift) + 'Z' : group;
}

QByteArray movedTafGroup(const QByteArray& group, const TimeShift& shift)
{
    if (group.contains('/')) {
        return movedPeriod(group, shift);
    }
    if (group.endsWith('Z') && isTimeGroup(group)) {
        return movedDigits(group.left(6), shift) + 'Z';
    }
    if (group.size() == 8 && group.startsWith("FM") && allDigits(group.mid(2))) {
        return "FM" + movedDigits(group.mid(2), shift);
    }
    return group;
}

/// Index of the time group among the first groups of a METAR, -1 without one.
int timeGroupIndex(const QByteArrayList& groups)
{
    for (int i = 1; i < groups.size() && i < 4; ++i) {
        if (isTimeGroup(groups[i])) {
            return i;
        }
    }
    return -1;
}

} // namespace

bool metarTime(const QByteArray& report, Clock::UtcTime around, Minute& time)
{
    const QByteArrayList groups = report.left(40).split(' ');
    const int at = timeGroupIndex(groups);
    if (at < 0) {
        return false;
    }
    const QByteArray& group = groups[at];
    const auto moment =
        momentOf(group.left(2).toInt(), group.mid(2, 2).toInt(), group.mid(4, 2).toInt(), around);
    if (moment) {
        time = *moment;
    }
    return moment.has_value();
}

QByteArray movedMetar(const QByteArray& report, const TimeShift& shift)
{
    Minute time;
    if (!metarTime(report, shift.from, time)) {
        return report;
    }
    TimeShift own = shift;
    if (time > shift.from) {
        own.by -= std::chrono::ceil<hours>(time - shift.from);
    }
    QByteArrayList groups = report.split(' ');
    const int at = timeGroupIndex(groups);
    groups[at] = movedDigits(groups[at].left(6), own) + groups[at].mid(6);
    for (int i = at + 1; i < groups.size() && groups[i] != "RMK"; ++i) {
        groups[i] = movedTrend(groups[i], own.by);
    }
    return groups.join(' ');
}

QByteArray movedTaf(const QByteArray& report, const TimeShift& shift)
{
    QByteArrayList groups = report.split(' ');
    for (QByteArray& group : groups) {
        group = movedTafGroup(group, shift);
    }
    return groups.join(' ');
}

QByteArray movedSynop(const QByteArray& report, const TimeShift& shift)
{
    QByteArrayList groups = report.split(' ');
    const int at = groups.first() == "AAXX" ? 1 : 2;
    const bool isSynop = at == 1 || groups.first() == "BBXX" || groups.first() == "OOXX";
    if (!isSynop || groups.size() <= at || groups[at].size() != 5 || !allDigits(groups[at].left(4)))
    {
        return report;
    }
    groups[at] = movedDigits(groups[at].left(4), shift) + groups[at].mid(4);
    return groups.join(' ');
}

} // namespace wxserver

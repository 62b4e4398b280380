#pragma once

#include "aviation/support/Clock.h"

#include <QByteArray>

#include <chrono>
#include <vector>

/// Moving of reports to another time: pure functions on the report's text. Groups after the WMO
/// Manual on Codes: FM 15 and FM 16 (METAR), FM 51 (TAF), FM 12 and FM 13 (SYNOP).
namespace wxserver {

using Hour = std::chrono::sys_time<std::chrono::hours>;

/// From where and to where the reports move.
struct TimeShift
{
    aviation::Clock::UtcTime from; ///< the "now" of the reports as they are, for month and year
    std::chrono::hours by{0};      ///< what is added; minutes stay
};

/// The METAR with its time group and the times of its trend moved. A report that would then be
/// later than `from` + `by` goes back by whole hours. Texts without a time group stay as they are.
QByteArray movedMetar(const QByteArray& report, const TimeShift& shift);
/// Moves issue, validity, FM and TX/TN groups and other groups of day, hour, minute and Z.
QByteArray movedTaf(const QByteArray& report, const TimeShift& shift);
/// Moves the group of day and hour after AAXX, and after BBXX or OOXX and the call sign.
QByteArray movedSynop(const QByteArray& report, const TimeShift& shift);

/// Time of a METAR after its time group; false without one.
[[nodiscard]] bool metarTime(const QByteArray& report, aviation::Clock::UtcTime around,
                             std::chrono::sys_time<std::chrono::minutes>& time);

} // namespace wxserver

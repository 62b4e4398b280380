#include "standins/wxserver/UpperAirField.h"

#include <QByteArrayList>

#include <algorithm>
#include <cmath>

namespace wxserver {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hours;

/// Half the diagonal of a grid cell of one degree: who is farther from each point lies outside.
constexpr double kOutsideDegrees = 0.75;
/// Reach of the points around.
constexpr double kAroundDegrees = 2.01;
/// Length of "GRIB YYGG1 yymm0".
constexpr int kHeadLength = 16;
constexpr int kFirstLevelGroup = 8;

bool readPoint(const QByteArray& line, UpperAirField::Point& point)
{
    const QByteArrayList groups = line.left(64).split(' ');
    if (groups.size() < kFirstLevelGroup || groups[0] != "GRIB" || groups[3].size() != 5
        || groups[4].size() != 5)
    {
        return false;
    }
    const char quadrant = groups[4][0];
    const bool south = quadrant == '3' || quadrant == '5';
    const bool west = quadrant == '5' || quadrant == '7';
    point.latitude = groups[3].mid(2).toInt() / (south ? -10.0 : 10.0);
    point.longitude = groups[4].mid(1).toInt() / (west ? -10.0 : 10.0);
    point.line = line;
    return true;
}

QByteArray digits(int number)
{
    return QByteArray::number(number).rightJustified(2, '0');
}

/// The line with the day, hour, year and month of the analysis.
QByteArray withTime(const QByteArray& line, std::chrono::sys_time<hours> hour)
{
    const auto day = floor<days>(hour);
    const std::chrono::year_month_day date(day);
    const int year = int(date.year()) % 100;
    const auto hourOfDay = static_cast<int>((hour - day).count());
    const QByteArray head = "GRIB " + digits(static_cast<int>(unsigned(date.day())))
                            + digits(hourOfDay) + "1 " + digits(year)
                            + digits(static_cast<int>(unsigned(date.month()))) + '0';
    return head + line.mid(kHeadLength);
}

QByteArray headLine(std::chrono::sys_time<hours> hour)
{
    const std::chrono::seconds seconds = hour.time_since_epoch();
    return "# TIME:" + QByteArray::number(qlonglong(seconds.count())).rightJustified(10, '0')
           + '\n';
}

} // namespace

std::chrono::sys_time<hours> analysisHour(aviation::Clock::UtcTime now)
{
    constexpr hours kCycle(6);
    const auto hour = floor<hours>(now);
    return hour - (hour - floor<days>(hour)) % kCycle;
}

bool levelWind(const QByteArray& line, const QByteArray& code, FieldWind& wind)
{
    const QByteArrayList groups = line.split(' ');
    for (int i = kFirstLevelGroup; i + 2 < groups.size(); i += 3) {
        const QByteArray& value = groups[i + 2];
        if (groups[i].size() == 7 && groups[i].startsWith(code) && value.size() >= 5) {
            wind.direction = value.left(3).toInt();
            wind.speed = value.mid(3).toInt();
            // Speeds of 100 to 199 knots stand with 360 added to the direction.
            if (wind.direction > 360) {
                wind.direction -= 360;
                wind.speed += 100;
            }
            return true;
        }
    }
    return false;
}

UpperAirField::UpperAirField(const QByteArray& text)
{
    for (const QByteArray& line : text.split('\n')) {
        Point point;
        if (readPoint(line.trimmed(), point)) {
            m_points.push_back(std::move(point));
        }
    }
}

QByteArray UpperAirField::answer(double latitude, double longitude, bool single,
                                 aviation::Clock::UtcTime now) const
{
    const auto distance = [&](const Point& point) {
        return std::hypot(point.latitude - latitude, point.longitude - longitude);
    };
    const auto nearest =
        std::min_element(m_points.begin(), m_points.end(),
                         [&](const Point& a, const Point& b) { return distance(a) < distance(b); });
    if (nearest == m_points.end() || !(distance(*nearest) <= kOutsideDegrees)) {
        return "#Error: no upper-air data for " + QByteArray::number(latitude, 'f', 2) + ", "
               + QByteArray::number(longitude, 'f', 2) + '\n';
    }
    const auto hour = analysisHour(now);
    QByteArray text = headLine(hour) + withTime(nearest->line, hour) + '\n';
    for (const Point& point : m_points) {
        const bool isNear = std::abs(point.latitude - nearest->latitude) < kAroundDegrees
                            && std::abs(point.longitude - nearest->longitude) < kAroundDegrees;
        if (!single && isNear && &point != &*nearest) {
            text += withTime(point.line, hour) + '\n';
        }
    }
    return text;
}

QByteArray UpperAirField::whole(aviation::Clock::UtcTime now) const
{
    const auto hour = analysisHour(now);
    QByteArray text = headLine(hour);
    for (const Point& point : m_points) {
        text += withTime(point.line, hour) + '\n';
    }
    return text;
}

} // namespace wxserver

#pragma once

#include "aviation/support/Clock.h"

#include <QByteArray>

#include <cstddef>
#include <vector>

namespace wxserver {

/// One level of a record for the two wind files.
struct FieldWind
{
    double direction = 0.0; ///< degrees, where it comes from
    double speed = 0.0;     ///< knots
};

/// The upper-air records of a model analysis, one line of text a grid point, on a regular grid.
class UpperAirField
{
public:
    struct Point
    {
        double latitude = 0.0;
        double longitude = 0.0;
        QByteArray line;
    };

    /// Reads the text of tools/generate/upper_air.py. Lines that are no record are passed over.
    explicit UpperAirField(const QByteArray& text = {});

    const std::vector<Point>& points() const { return m_points; }
    /// Answer of the service: a head line with the time of the analysis, then the nearest record
    /// or, not `single`, the records within two degrees of it. Outside of the field one line that
    /// begins with "#Error:". The times are moved to the analysis cycle before `now`.
    QByteArray answer(double latitude, double longitude, bool single,
                      aviation::Clock::UtcTime now) const;
    /// All records in the same form.
    QByteArray whole(aviation::Clock::UtcTime now) const;

private:
    std::vector<Point> m_points;
};

/// The wind of the level with two digits `code` in a record, false without that level.
[[nodiscard]] bool levelWind(const QByteArray& line, const QByteArray& code, FieldWind& wind);

/// The latest analysis hour (00, 06, 12, 18 UTC) not after `now`.
std::chrono::sys_time<std::chrono::hours> analysisHour(aviation::Clock::UtcTime now);

} // namespace wxserver

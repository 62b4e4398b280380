#include "standins/simulator/Track.h"

#include <QDateTime>
#include <QFile>
#include <QList>
#include <QMap>

#include <cmath>

static void initSimulatorResources() // outside of the namespace: the macro needs it
{
    Q_INIT_RESOURCE(simulator);
}

namespace simulator {

namespace {

constexpr qint64 kMostBytes = 64LL * 1024 * 1024;
constexpr std::size_t kMostPoints = 200000;

/// Columns of a line by the names of the head line.
class Line
{
public:
    Line(const QMap<QByteArray, int>& columns, const QByteArray& text)
        : m_columns(columns)
        , m_fields(text.split(','))
    {}
    QByteArray text(const char* column) const
    {
        return m_fields.value(m_columns.value(column, -1)).trimmed();
    }
    /// 0 for an empty field or one that isn't a number.
    double number(const char* column, bool* isNumber = nullptr) const
    {
        const double value = text(column).toDouble(isNumber);
        return std::isfinite(value) ? value : 0.0;
    }

private:
    const QMap<QByteArray, int>& m_columns;
    QList<QByteArray> m_fields;
};

QMap<QByteArray, int> columnsOf(const QByteArray& head)
{
    QMap<QByteArray, int> columns;
    const QList<QByteArray> names = head.trimmed().split(',');
    for (int i = 0; i < names.size(); ++i) {
        columns.insert(names[i].trimmed(), i);
    }
    return columns;
}

/// Seconds since 1970, not a number without a valid time and place.
double readPoint(const Line& line, TrackPoint& point)
{
    const QString time = QString::fromLatin1(line.text("time_utc"));
    const QDateTime when = QDateTime::fromString(time, Qt::ISODate);
    bool hasLatitude = false;
    bool hasLongitude = false;
    point.latitude = line.number("latitude", &hasLatitude);
    point.longitude = line.number("longitude", &hasLongitude);
    if (!when.isValid() || !hasLatitude || !hasLongitude || std::abs(point.latitude) > 90.0
        || std::abs(point.longitude) > 180.0)
    {
        return std::nan("");
    }
    point.altitude = line.number("altitude_ft");
    point.groundSpeed = line.number("groundspeed_kt");
    point.track = line.number("track_deg");
    point.verticalRate = line.number("vertical_rate_fpm");
    point.onGround = line.text("onground").compare("true", Qt::CaseInsensitive) == 0;
    return static_cast<double>(when.toSecsSinceEpoch());
}

Track readLines(const QList<QByteArray>& lines)
{
    const QMap<QByteArray, int> columns = columnsOf(lines.first());
    Track track;
    double start = 0.0;
    for (int i = 1; i < lines.size() && track.size() < kMostPoints; ++i) {
        TrackPoint point;
        const double time = readPoint(Line(columns, lines[i]), point);
        start = track.empty() ? time : start;
        point.seconds = time - start;
        if (!std::isnan(time) && (track.empty() || point.seconds >= track.back().seconds)) {
            track.push_back(point);
        }
    }
    return track;
}

} // namespace

Track readTrack(const QByteArray& text, QString* error)
{
    Track track = readLines(text.split('\n'));
    if (track.size() < 2) {
        track.clear();
        if (error != nullptr) {
            *error = QStringLiteral("the track has less than two points with time and position");
        }
    }
    return track;
}

Track readTrackFile(const QString& fileName, QString* error)
{
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly) && file.size() <= kMostBytes) {
        return readTrack(file.read(kMostBytes), error);
    }
    if (error != nullptr) {
        *error = QStringLiteral("can't read the track %1").arg(fileName);
    }
    return {};
}

Track demoTrack()
{
    initSimulatorResources();
    return readTrackFile(QStringLiteral(":/simulator/track.csv"));
}

} // namespace simulator

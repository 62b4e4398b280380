#pragma once

#include "aviation/Position.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace simulator {

/// The aircraft at one moment of a track. Plain value.
struct TrackPoint
{
    double seconds = 0.0; ///< since the track's first point
    double latitude = 0.0;
    double longitude = 0.0;
    double altitude = 0.0;     ///< feet
    double groundSpeed = 0.0;  ///< knots
    double track = 0.0;        ///< degrees true
    double verticalRate = 0.0; ///< feet per minute
    bool onGround = false;
};

/// A flight from its first to its last point, in order of time.
using Track = std::vector<TrackPoint>;

/// Reads comma-separated text with a head line. Columns are found by their names: time_utc
/// (yyyy-MM-ddThh:mm:ssZ), latitude, longitude, altitude_ft, groundspeed_kt, track_deg,
/// vertical_rate_fpm, onground (True, False); others are ignored. Lines without time or position
/// are left out, so are those that go back in time. An empty track when fewer than two lines
/// remain; `error` then says why. At most 200,000 points.
Track readTrack(const QByteArray& text, QString* error = nullptr);
/// The same from a file of at most 64 MB.
Track readTrackFile(const QString& fileName, QString* error = nullptr);
/// The built-in flight from Minneapolis to Denver.
Track demoTrack();

/// A made-up flight between two places at sea level: taxi, take-off, climb to a level that fits the
/// distance, a three-degree descent, landing. Empty when the places are less than 20 NM apart.
Track greatCircleTrack(const aviation::Position& from, const aviation::Position& to);

} // namespace simulator

#pragma once

#include "nav/records/QStation.h"

#include <QMetaType>
#include <QString>

#include <cstdint>

/// What a waypoint is.
namespace waypointtype {
inline constexpr std::uint8_t kUser = 0; ///< a position of the user, or unknown
inline constexpr std::uint8_t kAirport = 1;
inline constexpr std::uint8_t kVor = 2;
inline constexpr std::uint8_t kVorDme = 3;
inline constexpr std::uint8_t kDme = 4;
inline constexpr std::uint8_t kNdb = 5;
inline constexpr std::uint8_t kIls = 6;
inline constexpr std::uint8_t kIlsDme = 7;
inline constexpr std::uint8_t kFix = 8;
inline constexpr std::uint8_t kOther = 9;
} // namespace waypointtype

/// Which report the weather of a waypoint comes from.
namespace waypointweather {
inline constexpr std::uint8_t kNone = 0; ///< none yet
inline constexpr std::uint8_t kMetar = 1;
inline constexpr std::uint8_t kUpperAir = 3;
} // namespace waypointweather

/// A navaid, a fix, or a point of a route with the leg that ends there and its weather. In the
/// fields of a leg -1 means that nothing is calculated: always so at the first point of a plan.
/// Plain value.
struct QWaypoint : QStation
{
    static constexpr std::int32_t kNotCalculated = -1;

    QWaypoint() = default;
    /// An airport, whatever the station is.
    explicit QWaypoint(const QStation& station);
    QWaypoint(std::uint8_t type, const QString& name, const QString& ident, const QString& region,
              double lat, double lon, std::int32_t elevation, const QString& frequency);

    /// The type as plans and exports name it. That of a DME is "Unknown" and that of a user
    /// position "unknown": readers of exported plans know no other spelling.
    QString typeText() const;

    std::uint8_t Type = waypointtype::kUser;
    std::uint8_t ProcedureKind = 0;  ///< of the procedure that it belongs to; 0 enroute
    QString Frequency;               ///< of a navaid, as its text in the source; empty for a fix
    float Course = kNotCalculated;   ///< true course of the leg, degrees
    float Distance = kNotCalculated; ///< length of the leg, NM
    std::int16_t Temperature = 13;   ///< degrees Celsius; a plan without weather shows this value
    std::int16_t DewPoint = 5;       ///< degrees Celsius; likewise
    std::uint16_t WindDir = 0;       ///< degrees
    std::int16_t WindSpeed = 0;      ///< knots
    QString MetarText;               ///< raw text of the nearest METAR
    QString WeatherText;             ///< raw text of the report that was used
    QString GribText;                ///< raw upper-air line
    std::uint8_t WeatherSource = waypointweather::kNone;
    std::int32_t TAS = kNotCalculated;         ///< knots
    std::int32_t GroundSpeed = kNotCalculated; ///< knots
    std::int32_t Heading = kNotCalculated;     ///< degrees
    std::int32_t LegTime = kNotCalculated;     ///< minutes
    std::int32_t LegFuel = kNotCalculated;     ///< pounds
    QString Remarks; ///< free text; the name of the procedure that it belongs to
};
Q_DECLARE_METATYPE(QWaypoint)

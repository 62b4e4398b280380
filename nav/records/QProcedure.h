#pragma once

#include "nav/records/QWaypoint.h"

#include <QString>
#include <QVector>

#include <cstdint>

/// Kinds of a procedure; waypoints that it brought into a route have its kind too.
namespace procedurekind {
inline constexpr std::int32_t kUnknown = 0;
inline constexpr std::int32_t kSid = 1;
inline constexpr std::int32_t kStar = 2;
inline constexpr std::int32_t kFinal = 3; ///< a final approach
} // namespace procedurekind

/// A SID, a STAR or a final approach of an airport. Plain value.
struct QProcedure
{
    std::int32_t Kind = procedurekind::kUnknown;
    QString Name;
    QString Text;                 ///< its whole block as the file has it
    QString Runway;               ///< as the file has it
    QVector<QWaypoint> Waypoints; ///< of the legs that end at a fix
};

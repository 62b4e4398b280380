#pragma once

#include "nav/records/QAirport.h"
#include "nav/records/QWaypoint.h"

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QVector>

#include <cstdint>

/// A flight plan. Plain value.
struct QFlightplan
{
    /// The idents of all waypoints in their order, with a blank between two.
    QString routeText() const;

    /// Once both ends are set the first is the departure, the last the destination.
    QVector<QWaypoint> Waypoints;
    std::int32_t Id = -1; ///< at the server of plans; -1 none
    QString Title;
    QString Type;                    ///< "IFR" or "VFR"
    QString RouteType;               ///< "HighAlt" and the like
    std::int32_t CruiseAltitude = 0; ///< feet
    QAirport Departure;
    QAirport Destination;
    QAirport Alternate;
    double Distance = 0.0;        ///< NM, as the source of the route says
    std::int32_t Likes = 0;       ///< as the source of the route says
    std::int32_t MaxAltitude = 0; ///< feet, as the source of the route says
    QString Notes;
    QDateTime Created;
    std::int32_t UserId = -1; ///< at the server of plans; -1 none
    QString UserName;
    /// 0 while fuel is shown as volume; otherwise 1 pounds, anything else kilograms.
    std::int32_t FuelWeightUnit = 1;
    /// 0 while fuel is shown as weight; otherwise the volume unit of the settings.
    std::int32_t FuelVolumeUnit = 1;
};
Q_DECLARE_METATYPE(QFlightplan)

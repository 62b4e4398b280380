#include "nav/records/QFlightplan.h"

#include <QStringList>

QString QFlightplan::routeText() const
{
    QStringList idents;
    for (const QWaypoint& waypoint : Waypoints) {
        idents << waypoint.Ident;
    }
    return idents.join(QLatin1Char(' '));
}

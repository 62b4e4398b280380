#include "nav/records/QWaypoint.h"

#include <array>

QWaypoint::QWaypoint(const QStation& station) : QStation(station), Type(waypointtype::kAirport) {}

QWaypoint::QWaypoint(std::uint8_t type, const QString& name, const QString& ident,
                     const QString& region, double lat, double lon, std::int32_t elevation,
                     const QString& frequency)
    : QStation(name, ident, region, lat, lon, elevation)
    , Type(type)
    , Frequency(frequency)
{}

QString QWaypoint::typeText() const
{
    static constexpr std::array kTexts{"unknown", "Airport", "VOR",  "VOR",         "Unknown",
                                       "NDB",     "ILS",     "ILSD", "Intersection"};
    return QString::fromLatin1(Type < kTexts.size() ? kTexts[Type] : "Unknown");
}

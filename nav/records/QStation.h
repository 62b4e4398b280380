#pragma once

#include "aviation/Position.h"

#include <QString>

#include <cstdint>

/// A plain pair of coordinates, decimal degrees, north and east positive.
struct QLatLon
{
    double Lat = 0.0;
    double Lon = 0.0;

    /// Initial true course to another place, degrees in [0, 360); 0 between equal places.
    double courseTo(const QLatLon& other) const
    {
        return aviation::BearingDeg(Lat, Lon, other.Lat, other.Lon);
    }
    /// Great-circle distance to another place, NM.
    double distanceTo(const QLatLon& other) const
    {
        return aviation::DistanceNm(Lat, Lon, other.Lat, other.Lon);
    }
};

/// Base of the navigation records: a named point. Plain value.
struct QStation : QLatLon
{
    QStation() = default;
    explicit QStation(const QString& ident) : Ident(ident) {}
    QStation(const QString& name, const QString& ident, const QString& region, double lat,
             double lon, std::int32_t elevation)
        : QLatLon{lat, lon}
        , Name(name)
        , Ident(ident)
        , Region(region)
        , Elevation(elevation)
    {}
    QStation(const QStation&) = default;
    QStation(QStation&&) = default;
    QStation& operator=(const QStation&) = default;
    QStation& operator=(QStation&&) = default;
    virtual ~QStation() = default;

    QString Name;   ///< long name
    QString Ident;  ///< ICAO code or identifier; every search compares this field
    QString Region; ///< country or ICAO region
    QString Spare;  ///< copied with the record, no reader fills it
    /// Feet; the planned altitude for a waypoint of a flight plan.
    std::int32_t Elevation = 0;
};

#pragma once

#include <QString>

#include <cstdint>

/// A plain pair of coordinates, decimal degrees, north and east positive.
struct QLatLon
{
    double Lat = 0.0;
    double Lon = 0.0;
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

    QString Name;               ///< long name
    QString Ident;              ///< ICAO code or identifier; every search compares this field
    QString Region;             ///< country or ICAO region
    QString Spare;              ///< copied with the record, no reader fills it
    std::int32_t Elevation = 0; ///< feet
};

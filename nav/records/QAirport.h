#pragma once

#include "aviation/Station.h"
#include "nav/records/QProcedure.h"
#include "nav/records/QRunway.h"
#include "nav/records/QStation.h"

#include <QMetaType>
#include <QVector>

#include <cstdint>

/// An airport of the navigation data. Plain value.
struct QAirport : QStation
{
    QAirport() = default;
    explicit QAirport(const QString& ident) : QStation(ident) {}
    /// `longestRunway` in feet, as in the field.
    QAirport(const QString& name, const QString& ident, const QString& region, double lat,
             double lon, std::int32_t elevation, std::uint16_t longestRunway = 0)
        : QStation(name, ident, region, lat, lon, elevation)
        , LongestRunway(longestRunway)
    {}
    /// Without runways and procedures.
    explicit QAirport(const aviation::weather::Station& station)
        : QStation(QString::fromStdWString(station.name()), QString::fromStdWString(station.icao()),
                   QString::fromStdWString(station.country()), station.latitude(),
                   station.longitude(), station.elevation())
    {}

    QVector<QRunway> Runways;
    QVector<QProcedure> Procedures;
    std::uint16_t LongestRunway = 0; ///< feet, 0 unknown
    QString Spare2;                  ///< no reader fills it
    std::int32_t AirportValue = 0;   ///< a number of the source that is passed on with the record
};
Q_DECLARE_METATYPE(QAirport)

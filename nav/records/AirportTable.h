#pragma once

#include "nav/records/QAirport.h"

#include <QByteArray>
#include <QVector>

/// Reads the built-in table of airports, UTF-8 text of rows "icao;name;country;elev;lat;lon;...":
/// elevation in feet, decimals cut off, and decimal degrees. Further fields aren't read. The ident
/// keeps the blanks that pad it to four characters. Lines that begin with "#" are comments. A row
/// with under six fields or without coordinates of this earth is left out.
QVector<QAirport> readAirportTable(const QByteArray& text);

/// Reads the user's own airports ("airportsadd.dat"): the same rows without the further fields, and
/// a decimal comma is accepted in the coordinates.
QVector<QAirport> parseAdditionalAirports(const QByteArray& text);

#pragma once

#include <QString>

/// Whether input files are what they should be. Pure functions of their contents; each gives the
/// reason why nothing in them can be understood, or an empty text.
namespace inputchecks {

/// A weather file: at least one whole block, and a report in it unless all blocks are empty.
QString weatherFault(const QString& text);

/// Upper-air text: at least one record, unless a header line says that there is none.
QString upperAirFault(const QString& text);

/// A settings file: at least one key of the program, unless it holds nothing but comments.
QString settingsFault(const QString& file);

/// The fields MINWIND;MAXWIND;MINVIS;MAXVIS;WEATHER;PREFIX of a search.
QString criteriaFault(const QString& criteria);

} // namespace inputchecks

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/// The user's own lists in the work folder: "airportsadd.dat", rows
/// "icao;name;country;elev;lat;lon" with the elevation in feet and decimal degrees, and
/// "icaosoldnew.dat", rows "old icao,new icao". The files are UTF-8; one that isn't is read as
/// Latin-1, and written as UTF-8. Comments ("#") and lines that are no rows stay where they stand,
/// so that saving loses nothing of what the user wrote. All functions are free of state.
namespace airportlist {

/// Fields of an airport's row.
inline constexpr int kIcao = 0;
inline constexpr int kName = 1;
inline constexpr int kCountry = 2;
inline constexpr int kElevation = 3;
inline constexpr int kLatitude = 4;
inline constexpr int kLongitude = 5;
inline constexpr int kAirportFields = 6;

/// Fields of a pair.
inline constexpr int kOldIcao = 0;
inline constexpr int kNewIcao = 1;
inline constexpr int kPairFields = 2;

/// A row with the lines that stand before it and aren't rows.
struct Row
{
    QStringList fields;
    QString rest; ///< what follows the last field in the file, with its separator
    QStringList before;
};

struct List
{
    QVector<Row> rows;
    QStringList after;  ///< such lines after the last row
    int unreadable = 0; ///< such lines that are neither comments nor empty
};

/// The kinds of list.
enum class Kind
{
    Airports,
    OldIcaos
};

/// Name of the file in the work folder.
QString fileName(Kind kind);
/// Its first line, without the line end.
QString firstLine(Kind kind);

/// Rows whose fields can't be used become unreadable lines. The first line is dropped, since
/// bytesOf writes it anew. A comma in coordinates becomes a point.
List parse(Kind kind, const QByteArray& bytes);
QByteArray bytesOf(Kind kind, const List& list);

/// Reads a file; a missing one is an empty list. `error` is set for one that can't be read or is
/// above 16 MB.
List read(Kind kind, const QString& path, QString& error);
/// Writes a file, whole or not at all, and makes its folder. Empty, or why it failed.
[[nodiscard]] QString write(Kind kind, const QString& path, const List& list);

/// Something in a row that can't be taken. Texts for the user are made from it by the dialog.
enum class Fault
{
    None,
    IcaoForm,       ///< three or four letters or digits
    IcaoTwice,      ///< another row has it
    SamePair,       ///< old and new are the same
    Separator,      ///< ";" or a line break in a name or country
    ElevationForm,  ///< a number from -2000 to 30000
    LatitudeRange,  ///< a number from -90 to 90
    LongitudeRange, ///< a number from -180 to 180
    NoPosition      ///< 0, 0 means unknown
};
/// The fault of one field by itself or beside the others of its row.
Fault fieldFault(Kind kind, const QStringList& fields, int field);
/// The form in which a field is written: without blanks around it, ICAO codes in capital letters, a
/// decimal point.
QString normalized(Kind kind, int field, const QString& text);

} // namespace airportlist

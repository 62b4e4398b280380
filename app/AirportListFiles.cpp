#include "app/AirportListFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QTextCodec>

#include <algorithm>
#include <cmath>
#include <optional>

namespace airportlist {

namespace {

constexpr qint64 kLargestFile = 16LL * 1024 * 1024;
constexpr double kLowestElevation = -2000.0;
constexpr double kHighestElevation = 30000.0;
constexpr double kPole = 90.0;
constexpr double kDateLine = 180.0;

QChar separatorOf(Kind kind)
{
    return kind == Kind::Airports ? QLatin1Char(';') : QLatin1Char(',');
}

int fieldCount(Kind kind)
{
    return kind == Kind::Airports ? kAirportFields : kPairFields;
}

/// Files that were written by an editor of another system aren't always UTF-8.
QString decoded(const QByteArray& bytes)
{
    QTextCodec::ConverterState state;
    const QTextCodec* utf8 = QTextCodec::codecForName("UTF-8");
    const QString text = utf8->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars > 0 || state.remainingChars > 0 ? QString::fromLatin1(bytes) : text;
}

bool isIcao(const QString& text)
{
    const auto isAscii = [](QChar c) {
        return (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
               || (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
    };
    return (text.size() == 3 || text.size() == 4) && std::all_of(text.begin(), text.end(), isAscii);
}

/// A number in the form that files use, never "nan" or "inf".
std::optional<double> numberOf(const QString& text)
{
    bool ok = false;
    const double value = QLocale::c().toDouble(text, &ok);
    return ok && std::isfinite(value) && !text.contains(QLatin1Char(','))
               ? std::optional<double>(value)
               : std::nullopt;
}

bool isWithin(const QString& text, double lowest, double highest)
{
    const std::optional<double> value = numberOf(text);
    return value && *value >= lowest && *value <= highest;
}

bool isZero(const QString& text)
{
    return std::abs(numberOf(text).value_or(1.0)) < 1e-9;
}

Fault airportFault(const QStringList& fields, int field)
{
    const QString& text = fields.at(field);
    switch (field) {
    case kIcao:
        return isIcao(text) ? Fault::None : Fault::IcaoForm;
    case kName:
    case kCountry:
        return text.contains(QLatin1Char(';')) || text.contains(QLatin1Char('\n'))
                       || text.contains(QLatin1Char('\r'))
                   ? Fault::Separator
                   : Fault::None;
    case kElevation:
        return text.isEmpty() || isWithin(text, kLowestElevation, kHighestElevation)
                   ? Fault::None
                   : Fault::ElevationForm;
    case kLatitude:
        return isWithin(text, -kPole, kPole) ? Fault::None : Fault::LatitudeRange;
    default:
        break;
    }
    if (!isWithin(text, -kDateLine, kDateLine)) {
        return Fault::LongitudeRange;
    }
    return isZero(text) && isZero(fields.at(kLatitude)) ? Fault::NoPosition : Fault::None;
}

Fault pairFault(const QStringList& fields, int field)
{
    if (!isIcao(fields.at(field))) {
        return Fault::IcaoForm;
    }
    const bool same = field == kNewIcao && fields.at(kOldIcao) == fields.at(kNewIcao);
    return same ? Fault::SamePair : Fault::None;
}

/// Nothing for a line that is no row.
std::optional<Row> parseRow(Kind kind, const QString& line)
{
    const QStringList parts = line.split(separatorOf(kind));
    const int count = fieldCount(kind);
    if (line.startsWith(QLatin1Char('#')) || parts.size() < count) {
        return std::nullopt;
    }
    Row row;
    for (int field = 0; field < count; ++field) {
        row.fields << normalized(kind, field, parts.at(field));
    }
    for (int field = 0; field < count; ++field) {
        if (fieldFault(kind, row.fields, field) != Fault::None) {
            return std::nullopt;
        }
    }
    for (int part = count; part < parts.size(); ++part) {
        row.rest += separatorOf(kind) + parts.at(part);
    }
    return row;
}

} // namespace

QString fileName(Kind kind)
{
    return kind == Kind::Airports ? QStringLiteral("airportsadd.dat")
                                  : QStringLiteral("icaosoldnew.dat");
}

QString firstLine(Kind kind)
{
    return kind == Kind::Airports ? QStringLiteral("# icao;name;country;elev;lat;lon;")
                                  : QStringLiteral("#old icao,new icao");
}

QString normalized(Kind kind, int field, const QString& text)
{
    QString result = text.trimmed();
    if (kind == Kind::OldIcaos || field == kIcao) {
        return result.toUpper();
    }
    if (field >= kElevation) {
        result.replace(QLatin1Char(','), QLatin1Char('.'));
    }
    return result;
}

Fault fieldFault(Kind kind, const QStringList& fields, int field)
{
    return kind == Kind::Airports ? airportFault(fields, field) : pairFault(fields, field);
}

List parse(Kind kind, const QByteArray& bytes)
{
    List list;
    QStringList lines = decoded(bytes).split(QLatin1Char('\n'));
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    for (QString& line : lines) {
        while (line.endsWith(QLatin1Char('\r'))) {
            line.chop(1);
        }
        std::optional<Row> row = parseRow(kind, line);
        if (row) {
            row->before.swap(list.after);
            list.rows.push_back(*row);
        } else if (line.trimmed() != firstLine(kind)) {
            const bool silent = line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#'));
            list.unreadable += silent ? 0 : 1;
            list.after << line;
        }
    }
    return list;
}

QByteArray bytesOf(Kind kind, const List& list)
{
    QStringList lines{firstLine(kind)};
    for (const Row& row : list.rows) {
        lines << row.before << row.fields.join(separatorOf(kind)) + row.rest;
    }
    lines << list.after;
    return (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
}

List read(Kind kind, const QString& path, QString& error)
{
    QFile file(path);
    if (!file.exists()) {
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return {};
    }
    const QByteArray bytes = file.read(kLargestFile + 1);
    if (bytes.size() > kLargestFile) {
        error = QStringLiteral("larger than 16 MB");
        return {};
    }
    return parse(kind, bytes);
}

QString write(Kind kind, const QString& path, const List& list)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    const QByteArray bytes = bytesOf(kind, list);
    const bool done =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return done ? QString() : file.errorString();
}

} // namespace airportlist

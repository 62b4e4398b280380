#include "cli/InputChecks.h"

#include "app/base/IniFile.h"
#include "app/base/SettingsOptions.h"
#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "cli/ReportPrefix.h"
#include "weather/store/TextPieces.h"
#include "weather/store/UpperAirText.h"
#include "weather/store/WeatherFile.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace inputchecks {

using namespace aviation::weather;

namespace {

bool isBlank(QStringView text)
{
    return text.trimmed().isEmpty();
}

template <class IsReport>
bool anyPiece(QStringView text, wchar_t separator, const IsReport& isReport)
{
    const std::wstring wide = text.toString().toStdWString();
    TextPieces pieces(wide, separator);
    while (const auto piece = pieces.next()) {
        if (isReport(*piece)) {
            return true;
        }
    }
    return false;
}

bool isMetar(std::wstring_view line)
{
    Metar metar{std::wstring(withoutReportPrefix(line))};
    static_cast<void>(metar.DecodeHeader());
    return !metar.timeGroup().empty();
}

bool isSynop(std::wstring_view piece)
{
    return Synop(withoutLineEnds(piece)).DecodeHeader() == synopstatus::kDecoded;
}

bool isUpperAir(std::wstring_view line)
{
    return Grib(std::wstring(line)).DecodeHeader() == gribstatus::kDecoded;
}

/// The keys of the options, and of the addresses that only the user sets.
bool holdsKey(const IniFile& values)
{
#define CIRRILON_KEY(type, getter, Setter, key, value, optionClass) key,
    static const char* const kKeys[] = {CIRRILON_OPTIONS(CIRRILON_KEY) "url/wxdata1", "url/wxdata2",
                                        "url/fileinfo"};
#undef CIRRILON_KEY
    return std::any_of(std::begin(kKeys), std::end(kKeys),
                       [&values](const char* key) { return values.contains(QLatin1String(key)); });
}

bool holdsOnlyComments(const QString& file)
{
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QList<QByteArray> lines = input.read(kMaxIniBytes).split('\n');
    return std::all_of(lines.begin(), lines.end(), [](const QByteArray& line) {
        const QByteArray text = line.trimmed();
        return text.isEmpty() || text.startsWith(';') || text.startsWith('#')
               || (text.startsWith('[') && text.endsWith(']'));
    });
}

} // namespace

QString weatherFault(const QString& text)
{
    const WeatherBlocks blocks = extractWeatherBlocks(text);
    if (blocks.metars.isNull() && blocks.synops.isNull() && blocks.tafs.isNull()) {
        return QStringLiteral("no [METAR], [SYNOP] or [TAF] block");
    }
    const bool empty = isBlank(blocks.metars) && isBlank(blocks.synops) && isBlank(blocks.tafs);
    if (empty || anyPiece(blocks.metars, L'\n', isMetar) || anyPiece(blocks.synops, L'=', isSynop)
        || blocks.tafs.contains(u"TAF"))
    {
        return {};
    }
    return QStringLiteral("no report in its blocks can be understood");
}

QString upperAirFault(const QString& text)
{
    UpperAirHeader header;
    if (readUpperAirHeader(text.toStdWString(), header)) {
        const int end = text.indexOf(QLatin1Char('\n'));
        if (end < 0 || isBlank(QStringView(text).mid(end))) {
            return {};
        }
    }
    return anyPiece(text, L'\n', isUpperAir)
               ? QString()
               : QStringLiteral("no upper-air record can be understood");
}

QString settingsFault(const QString& file)
{
    IniFile values;
    if (values.read(file) != IniFile::ReadResult::Done) {
        return QStringLiteral("no readable settings file");
    }
    return holdsKey(values) || holdsOnlyComments(file)
               ? QString()
               : QStringLiteral("no key of the settings can be understood");
}

QString criteriaFault(const QString& criteria)
{
    constexpr int kFields = 6;
    constexpr int kNumbers = 4;
    const QStringList fields = criteria.split(QLatin1Char(';'));
    if (fields.size() != kFields) {
        return QStringLiteral("MINWIND;MAXWIND;MINVIS;MAXVIS;WEATHER;PREFIX are expected");
    }
    double numbers[kNumbers] = {};
    for (int i = 0; i < kNumbers; ++i) {
        bool ok = false;
        numbers[i] = fields.at(i).toDouble(&ok);
        if (!ok || !std::isfinite(numbers[i])) {
            return QStringLiteral("field %1, \"%2\", is not a number").arg(i + 1).arg(fields.at(i));
        }
    }
    if (numbers[0] > numbers[1] || numbers[2] > numbers[3]) {
        return QStringLiteral("a smallest value is above its greatest one");
    }
    return {};
}

} // namespace inputchecks

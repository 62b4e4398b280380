// The documents beside the report lists: info file, history, events and the two wind files.
#include "app/base/Gzip.h"
#include "standins/wxserver/Compress.h"
#include "standins/wxserver/Grib2.h"
#include "standins/wxserver/WeatherContents.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace wxserver {

namespace {

using std::chrono::hours;
using std::chrono::minutes;

constexpr int kHistoryHours = 24;
constexpr int kSynopType = 4;
constexpr int kGribType = 5;
constexpr double kMetresPerSecondPerKnot = 1852.0 / 3600.0;
constexpr char kTextType[] = "text/plain; charset=utf-8";
constexpr char kGzipType[] = "application/gzip";
constexpr char kBinaryType[] = "application/octet-stream";

Document found(const QByteArray& body, const char* type)
{
    return {true, body, type};
}

QDateTime dateTime(std::chrono::sys_time<hours> hour)
{
    const std::chrono::seconds seconds = hour.time_since_epoch();
    return QDateTime::fromSecsSinceEpoch(seconds.count(), Qt::UTC);
}

QString iniValue(QString value)
{
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    value.replace(QLatin1Char('"'), QLatin1String("\\\""));
    value.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return QLatin1Char('"') + value + QLatin1Char('"');
}

struct HistoryEntry
{
    int type;
    QString typeText;
    QString folder;
    QString filename;
};

void writeEntry(QXmlStreamWriter& xml, const QDateTime& time, const HistoryEntry& entry)
{
    xml.writeStartElement(QStringLiteral("date"));
    xml.writeAttribute(QStringLiteral("time"),
                       time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    xml.writeTextElement(QStringLiteral("type"), QString::number(entry.type));
    xml.writeTextElement(QStringLiteral("type_string"), entry.typeText);
    xml.writeTextElement(QStringLiteral("filename"), entry.filename);
    xml.writeTextElement(QStringLiteral("folder"), entry.folder);
    xml.writeEndElement();
}

/// Column and row of the field; the bundled one is regular and complete.
bool gridOf(const std::vector<UpperAirField::Point>& points, Grib2Grid& grid)
{
    const auto next = std::find_if(points.begin(), points.end(), [&](const auto& point) {
        return point.latitude != points.front().latitude;
    });
    grid.columns = static_cast<int>(next - points.begin());
    grid.rows = static_cast<int>(points.size()) / grid.columns;
    grid.north = points.front().latitude;
    grid.west = points.front().longitude;
    return points.size() == static_cast<std::size_t>(grid.columns) * std::size_t(grid.rows);
}

struct Components
{
    double u = 0.0; ///< m/s towards the east
    double v = 0.0; ///< m/s towards the north
};

Components componentsAt(const QByteArray& line, const QByteArray& code)
{
    FieldWind wind;
    if (!levelWind(line, code, wind)) {
        return {};
    }
    const double angle = wind.direction * std::numbers::pi / 180.0;
    const double speed = wind.speed * kMetresPerSecondPerKnot;
    return {-speed * std::sin(angle), -speed * std::cos(angle)};
}

} // namespace

/// The values of a service whose programs are up to date and whose servers have little to do.
QMap<QString, QString> WeatherContents::defaultInfo()
{
    const QString version = QStringLiteral("3.0.0");
    const QString page = QStringLiteral("https://www.cirrilon.example/download");
    const QString installer = page + QStringLiteral("/cirrilon_installer.exe");
    return {{QStringLiteral("Version/cirrilonv3"), version},
            {QStringLiteral("Version/cirrilonv3min"), version},
            {QStringLiteral("Version/cirrilonv3beta"), version},
            {QStringLiteral("UpdateInfo/info"), QStringLiteral("This is a demonstration.")},
            {QStringLiteral("UpdateInfo/UrlStableVersionManually"), page},
            {QStringLiteral("UpdateInfo/UrlStableVersionAutomatic"), installer},
            {QStringLiteral("UpdateInfo/UrlBetaVersionManually"), page},
            {QStringLiteral("UpdateInfo/UrlBetaVersionAutomatic"), installer},
            {QStringLiteral("Serverload/wxdata"), QStringLiteral("0.4")},
            {QStringLiteral("Serverload/wxdata2"), QStringLiteral("0.3")}};
}

void WeatherContents::setInfo(const QString& key, const QString& value)
{
    if (value.isEmpty()) {
        m_info.remove(key);
    } else {
        m_info.insert(key, value);
    }
}

Document WeatherContents::infoFile() const
{
    QString text;
    QString group;
    for (auto row = m_info.constBegin(); row != m_info.constEnd(); ++row) {
        const QString rowGroup = row.key().section(QLatin1Char('/'), 0, 0);
        if (rowGroup != group) {
            group = rowGroup;
            text += QStringLiteral("[%1]\n").arg(group);
        }
        text += row.key().section(QLatin1Char('/'), 1) + QLatin1Char('=') + iniValue(row.value())
                + QLatin1Char('\n');
    }
    return found(text.toUtf8(), kTextType);
}

Document WeatherContents::historyList(const QString& type, Hour hour) const
{
    const int metarType = std::clamp(type.toInt(), 1, 3);
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("dates_available"));
    for (int back = kHistoryHours; back >= 0; --back) {
        const QDateTime time = dateTime(hour - hours(back));
        const QString stamp = time.toString(QStringLiteral("yyyyMMddhh"));
        for (const auto& [number, kind] :
             {std::pair(metarType, "metar"), std::pair(kSynopType, "synop"),
              std::pair(kGribType, "grib")})
        {
            const QString name =
                QStringLiteral("%1_%2_%3.gz").arg(QLatin1String(kind)).arg(number).arg(stamp);
            writeEntry(xml, time,
                       {number, QLatin1String(kind), stamp.left(8),
                        m_trickName.isEmpty() ? name : m_trickName});
        }
    }
    xml.writeEndDocument();
    return found(text, "text/xml; charset=utf-8");
}

/// A file of the list: "metar_1_2026010112.gz" and the like, of the last day.
Document WeatherContents::historyFile(const QString& name, Hour thisHour)
{
    QDateTime time = QDateTime::fromString(name.section(QLatin1Char('_'), 2).left(10),
                                           QStringLiteral("yyyyMMddhh"));
    time.setTimeSpec(Qt::UTC);
    if (!time.isValid() || !name.endsWith(QLatin1String(".gz"))) {
        return {};
    }
    const Hour hour{std::chrono::floor<hours>(std::chrono::seconds(time.toSecsSinceEpoch()))};
    if (hour > thisHour || hour < thisHour - hours(kHistoryHours)) {
        return {};
    }
    if (name.startsWith(QLatin1String("grib_"))) {
        return found(gzipped(m_field.whole(hour)), kGzipType);
    }
    if (name.startsWith(QLatin1String("synop_"))) {
        return found(gzipped(synopText(reportsAt(hour))), kGzipType);
    }
    const bool ivao = name.startsWith(QLatin1String("metar_3_"));
    const Source source = ivao ? Source::Ivao : Source::Vatsim;
    return name.startsWith(QLatin1String("metar_"))
               ? found(gzipped(metarText(sourceReports(source, hour))), kGzipType)
               : Document();
}

Document WeatherContents::events(aviation::Clock::UtcTime now) const
{
    const std::chrono::sys_time<hours> hour = std::chrono::ceil<hours>(now);
    QJsonArray list;
    int ahead = 0;
    for (const char* const icao : {"KMSP", "KDEN"}) {
        list.append(QJsonObject{
            {QStringLiteral("title"),
             QStringLiteral("Demonstration: weather at %1").arg(QLatin1String(icao))},
            {QStringLiteral("icao"), QLatin1String(icao)},
            {QStringLiteral("start"), dateTime(hour + hours(ahead)).toString(Qt::ISODate)},
            {QStringLiteral("end"), dateTime(hour + hours(ahead + 2)).toString(Qt::ISODate)}});
        ahead += 3;
    }
    const QJsonObject root{{QStringLiteral("events"), list}};
    return found(QJsonDocument(root).toJson(), "application/json");
}

/// The wind of the field at 300, 250 and 200 hPa: U and V, one message each.
Document WeatherContents::windFile(Hour hour) const
{
    constexpr int kMomentum = 2;
    constexpr int kWindU = 2;
    constexpr int kWindV = 3;
    Grib2Grid grid;
    if (!gridOf(m_field.points(), grid)) {
        return {};
    }
    const auto analysis = analysisHour(hour);
    QByteArray file;
    for (const int pressure : {300, 250, 200}) {
        std::vector<double> u;
        std::vector<double> v;
        for (const UpperAirField::Point& point : m_field.points()) {
            const Components wind = componentsAt(point.line, QByteArray::number(pressure / 10));
            u.push_back(wind.u);
            v.push_back(wind.v);
        }
        file += grib2Message(grid, {kMomentum, kWindU, pressure}, analysis, u);
        file += grib2Message(grid, {kMomentum, kWindV, pressure}, analysis, v);
    }
    return found(file, kBinaryType);
}

/// No turbulence is bundled, so the shear of the wind between 300 and 200 hPa stands for it, in
/// percent of a strong one.
Document WeatherContents::turbulenceFile(Hour hour) const
{
    constexpr int kAtmosphere = 19;
    constexpr int kClearAirTurbulence = 22;
    constexpr double kStrongShear = 40.0; // m/s between the two levels
    Grib2Grid grid;
    if (!gridOf(m_field.points(), grid)) {
        return {};
    }
    std::vector<double> percent;
    for (const UpperAirField::Point& point : m_field.points()) {
        const Components low = componentsAt(point.line, "30");
        const Components high = componentsAt(point.line, "20");
        const double shear = std::hypot(high.u - low.u, high.v - low.v);
        percent.push_back(std::min(100.0, 100.0 * shear / kStrongShear));
    }
    return found(
        grib2Message(grid, {kAtmosphere, kClearAirTurbulence, 250}, analysisHour(hour), percent),
        kBinaryType);
}

} // namespace wxserver

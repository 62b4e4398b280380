#include "standins/wxserver/WeatherContents.h"

#include "app/base/Gzip.h"
#include "standins/wxserver/Compress.h"
#include "standins/wxserver/Grib2.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>

/// The data are in a static library, where they have to be asked for, outside of any namespace.
static void initializeDemoData()
{
    Q_INIT_RESOURCE(demo);
}

namespace wxserver {

namespace {

using std::chrono::floor;
using std::chrono::hours;
using std::chrono::minutes;

/// The clock of the bundled reports; ten minutes past the hour, so that a late report is in.
constexpr minutes kPastTheHour(10);
constexpr std::chrono::sys_time<hours> kBundledHour =
    std::chrono::sys_days(std::chrono::year(2019) / 7 / 1) + hours(12);
/// Each source leaves out the stations of one of so many groups.
constexpr int kStationGroups = 17;
/// Most history files in memory at a time, since each is about as long as a list.
constexpr int kMaxCached = 40;
constexpr char kGzipType[] = "application/gzip";
constexpr char kTextType[] = "text/plain; charset=us-ascii";
constexpr char kBinaryType[] = "application/octet-stream";

Document found(const QByteArray& body, const char* type)
{
    return {true, body, type};
}

TimeShift shiftTo(std::chrono::sys_time<hours> hour)
{
    return {kBundledHour + kPastTheHour, hour - kBundledHour};
}

std::chrono::sys_time<hours> hourOf(aviation::Clock::UtcTime now)
{
    return floor<hours>(now - kPastTheHour);
}

int stationGroup(const QByteArray& report)
{
    const QByteArray icao = report.left(4);
    int sum = 0;
    for (const char letter : icao) {
        sum = sum * 31 + static_cast<unsigned char>(letter);
    }
    return sum % kStationGroups;
}

QString fileOf(const QString& folder, const QString& name)
{
    return folder.isEmpty() ? QStringLiteral(":/demo/") + name : QDir(folder).filePath(name);
}

bool readFile(const QString& name, QByteArray& data, QString& reason)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = name + QStringLiteral(": ") + file.errorString();
        return false;
    }
    data = file.readAll();
    return true;
}

QByteArray slashedMinute(std::chrono::sys_time<minutes> time)
{
    const auto day = floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const auto minute = (time - day).count();
    return QStringLiteral("%1/%2/%3 %4:%5")
        .arg(int(date.year()))
        .arg(unsigned(date.month()), 2, 10, QLatin1Char('0'))
        .arg(unsigned(date.day()), 2, 10, QLatin1Char('0'))
        .arg(minute / 60, 2, 10, QLatin1Char('0'))
        .arg(minute % 60, 2, 10, QLatin1Char('0'))
        .toLatin1();
}

/// Newest first, and above each report its date and time, as cycle files have it.
QByteArrayList asCycleFile(const QByteArrayList& reports, aviation::Clock::UtcTime now)
{
    std::vector<std::pair<std::chrono::sys_time<minutes>, QByteArray>> timed;
    for (const QByteArray& report : reports) {
        std::chrono::sys_time<minutes> time{};
        if (metarTime(report, now, time)) {
            timed.emplace_back(time, report);
        }
    }
    std::stable_sort(timed.begin(), timed.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    QByteArrayList lines;
    for (const auto& [time, report] : timed) {
        lines << slashedMinute(time) << report;
    }
    return lines;
}

} // namespace

bool WeatherContents::load(const QString& dataFolder, QString& reason)
{
    initializeDemoData();
    QByteArray weather;
    QByteArray packedField;
    if (!readFile(fileOf(dataFolder, QStringLiteral("weather.wx")), weather, reason)
        || !readFile(fileOf(dataFolder, QStringLiteral("grib.txt.gz")), packedField, reason))
    {
        return false;
    }
    const GzipResult field = inflateGzip(packedField);
    if (!field.ok()) {
        reason = QStringLiteral("grib.txt.gz: ") + field.error;
        return false;
    }
    m_reports = readReports(weather);
    m_field = UpperAirField(field.data);
    m_cache.clear();
    m_movedHour = Hour{};
    if (m_reports.metars.isEmpty() || m_field.points().empty()) {
        reason = QStringLiteral("no reports or no upper-air records in the data");
        return false;
    }
    return true;
}

Document WeatherContents::document(const HttpRequest& request, aviation::Clock::UtcTime now)
{
    QString path = request.path;
    // No path names a file, so one that climbs is as good as its last part.
    if (path.contains(QLatin1String("..")) || path.contains(QLatin1Char('\\'))) {
        path.replace(QLatin1Char('\\'), QLatin1Char('/'));
        path = QLatin1Char('/') + path.section(QLatin1Char('/'), -1);
    }
    while (path.startsWith(QLatin1String("//"))) {
        path.remove(0, 1);
    }
    if (const auto own = m_own.constFind(path); own != m_own.constEnd()) {
        return found(*own, kBinaryType);
    }
    const Hour hour = hourOf(now);
    if (path == QLatin1String("/get_gribv3.php")) {
        return upperAir(request, now);
    }
    if (path == QLatin1String("/cirrilon_v3_info.php")) {
        return infoFile();
    }
    if (path == QLatin1String("/cirrilon_v3_history.php")) {
        return historyList(request.parameter(QStringLiteral("type")), hour);
    }
    if (path == QLatin1String("/index.php")
        && request.parameter(QStringLiteral("option")) == QLatin1String("com_eventwx"))
    {
        return events(now);
    }
    if (m_cacheHour != hour || m_cache.size() >= kMaxCached) {
        m_cache.clear();
        m_cacheHour = hour;
    }
    if (const auto cached = m_cache.constFind(path); cached != m_cache.constEnd()) {
        return *cached;
    }
    const Document made = list(path.mid(1), hour);
    if (made.found) {
        m_cache.insert(path, made);
    }
    return made;
}

Document WeatherContents::list(const QString& name, Hour hour)
{
    struct Row
    {
        const char* name;
        Source source;
        bool whole;
    };
    static constexpr std::array kLists{
        Row{"weather_vatsim.gz", Source::Vatsim, true},
        Row{"weather_ivao.gz", Source::Ivao, true},
        Row{"weather_noaa.gz", Source::Noaa, true},
        Row{"metar_vatsim.txt", Source::Vatsim, false},
        Row{"metar_ivao.txt", Source::Ivao, false},
        Row{"metar_noaa.txt", Source::Noaa, false},
        Row{"metar_fs2020.txt", Source::All, true},
    };
    for (const Row& row : kLists) {
        if (name == QLatin1String(row.name)) {
            const Document text = weatherList(row.source, row.whole, hour);
            const bool packed = name.endsWith(QLatin1String(".gz"));
            return packed ? found(gzipped(text.body), kGzipType) : text;
        }
    }
    if (name == QLatin1String("global_wind.grib")) {
        return windFile(hour);
    }
    if (name == QLatin1String("global_turbulence.grib")) {
        return turbulenceFile(hour);
    }
    if (name == QLatin1String("grib_1x1.gz")) {
        return found(gzipped(m_field.whole(hour + kPastTheHour)), kGzipType);
    }
    if (name.startsWith(QLatin1String("external/"))) {
        return external(name, hour);
    }
    return name.startsWith(QLatin1String("history/"))
               ? historyFile(name.section(QLatin1Char('/'), -1), hour)
               : Document();
}

const WeatherReports& WeatherContents::reportsAt(Hour hour)
{
    if (m_movedHour != hour) {
        m_moved = movedReports(m_reports, shiftTo(hour));
        m_movedHour = hour;
    }
    return m_moved;
}

WeatherReports WeatherContents::sourceReports(Source source, Hour hour)
{
    WeatherReports reports = reportsAt(hour);
    const auto isLeftOut = [source](const QByteArray& report) {
        return source != Source::All && stationGroup(report) == static_cast<int>(source);
    };
    QByteArrayList& metars = reports.metars;
    metars.erase(std::remove_if(metars.begin(), metars.end(), isLeftOut), metars.end());
    if (source == Source::Noaa) {
        metars = asCycleFile(metars, hour + kPastTheHour);
    }
    return reports;
}

Document WeatherContents::weatherList(Source source, bool whole, Hour hour)
{
    WeatherReports reports = sourceReports(source, hour);
    if (!whole) {
        return found("[METAR]\n" + metarText(reports) + "[/METAR]\n", kTextType);
    }
    return found(weatherFileText(reports), kTextType);
}

Document WeatherContents::external(const QString& name, Hour hour)
{
    if (name.endsWith(QLatin1String("metar.txt"))) {
        return found(metarText(sourceReports(Source::Noaa, hour)), kTextType);
    }
    if (name.endsWith(QLatin1String("synop.txt"))) {
        return found(synopText(reportsAt(hour)), kTextType);
    }
    return name.endsWith(QLatin1String(".grib2")) ? windFile(hour) : Document();
}

Document WeatherContents::upperAir(const HttpRequest& request, aviation::Clock::UtcTime now) const
{
    bool latitudeRead = false;
    bool longitudeRead = false;
    const double latitude = request.parameter(QStringLiteral("lat")).toDouble(&latitudeRead);
    const double longitude = request.parameter(QStringLiteral("lon")).toDouble(&longitudeRead);
    if (!latitudeRead || !longitudeRead || !(std::abs(latitude) <= 90.0)
        || !(std::abs(longitude) <= 360.0))
    {
        return found("#Error: wrong position\n", kTextType);
    }
    const bool single = request.parameter(QStringLiteral("mode")) == QLatin1String("single");
    const double turned = longitude > 180.0 ? longitude - 360.0 : longitude;
    return found(m_field.answer(latitude, turned, single, now), kTextType);
}

} // namespace wxserver

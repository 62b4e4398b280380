#include "cli/WindCase.h"

#include "cli/JsonFields.h"

#include <QJsonDocument>

#include <algorithm>
#include <limits>

namespace windcase {

using namespace aviation::weather;
using aviation::structs::AircraftData;

namespace {

constexpr std::int64_t kLongestPauseMs = 1000000000;   // eleven days
constexpr std::int64_t kLastStartMs = 250000000000000; // the year 9892

Wind readWind(const JsonFields& fields, const Wind& fallback)
{
    return {fields.real("dir", fallback.Dir), fields.real("speed", fallback.Speed),
            fields.real("gust", fallback.Gust), fallback.Fourth};
}

/// Six digits ddhhmm, or empty when absent. "Z" may stand after them and the minutes may be left
/// out, since only day and hour count.
QString readTimeGroup(const JsonFields& fields)
{
    QString group = fields.text("timeGroup");
    if (group.endsWith(QLatin1Char('Z'))) {
        group.chop(1);
    }
    const bool digits = std::all_of(group.begin(), group.end(), [](QChar c) {
        return c >= QLatin1Char('0') && c <= QLatin1Char('9');
    });
    constexpr int kDigits = 6;
    constexpr int kDigitsToTheHour = 4;
    if (group.size() == kDigitsToTheHour) {
        group += QStringLiteral("00");
    }
    if (!group.isEmpty() && (!digits || group.size() != kDigits)) {
        fields.refuse("timeGroup", QStringLiteral("six digits ddhhmm"));
    }
    return group;
}

/// What METAR and SYNOP share.
void readReport(const JsonFields& fields, WeatherBase& report)
{
    report.setWind(readWind(fields, report.wind()));
    report.setElevation(fields.integer32("elevation", report.elevation()));
    report.setTemperature(fields.real("temperature", report.temperature()));
    report.setDewPoint(fields.real("dewPoint", report.dewPoint()));
    report.setPosition(aviation::Position(fields.number("lat", 0.0, -90.0, 90.0),
                                          fields.number("lon", 0.0, -360.0, 360.0)));
}

Metar readMetar(const JsonFields& fields)
{
    Metar metar;
    const QString group = readTimeGroup(fields);
    if (!group.isEmpty()) {
        metar.setReportText(L"ZZZZ " + group.toStdWString() + L"Z");
        static_cast<void>(metar.DecodeHeader());
    }
    readReport(fields, metar);
    metar.setVariableLimits(fields.integer32("variableFrom", metar.variableFrom()),
                            fields.integer32("variableTo", metar.variableTo()));
    return metar;
}

/// The time group of a SYNOP has no minutes.
Synop readSynop(const JsonFields& fields)
{
    constexpr std::size_t kDayAndHour = 4;
    Synop synop;
    const std::wstring group = readTimeGroup(fields).toStdWString();
    const std::wstring time = group.empty() ? L"0000" : group.substr(0, kDayAndHour);
    synop.setReportText(L"AAXX " + time + L"1 00000");
    static_cast<void>(synop.DecodeHeader());
    readReport(fields, synop);
    return synop;
}

GribLevel readLevel(const JsonFields& fields)
{
    GribLevel level;
    level.altitude = fields.integer32("altitude", level.altitude);
    level.wind.Dir = fields.real("dir", level.wind.Dir);
    level.wind.Speed = fields.real("speed", level.wind.Speed);
    return level;
}

JsonFields entry(const JsonFields& fields, const char* name, const QJsonArray& list, int index)
{
    const QString path = fields.pathOf(name, index);
    if (!list.at(index).isObject()) {
        throw BadField{path + QStringLiteral(": an object is expected")};
    }
    return {list.at(index).toObject(), path + QLatin1Char('.')};
}

Weather readWeather(const JsonFields& fields)
{
    const JsonFields none{QJsonObject(), QString()};
    Weather weather;
    weather.metar = readMetar(fields.object("metar").value_or(none));
    weather.synop = readSynop(fields.object("synop").value_or(none));
    const QJsonArray levels = fields.list("levels");
    for (int i = 0; i < levels.size(); ++i) {
        weather.levels.push_back(readLevel(entry(fields, "levels", levels, i)));
    }
    return weather;
}

AircraftData readAircraft(const JsonFields& fields)
{
    AircraftData data;
    data.altitude = fields.integer32("altitude", data.altitude);
    data.heightAgl = fields.integer32("heightAgl", data.heightAgl);
    data.magneticVariation = fields.real("magneticVariation", data.magneticVariation);
    if (const auto wind = fields.object("wind")) {
        data.wind = readWind(*wind, data.wind);
    } else {
        data.wind.Speed = -1.0F; // the simulator reports none, and no step starts from it
    }
    return data;
}

Steering readSteering(const JsonFields& fields, const Steering& defaults)
{
    return {fields.integer32("degreesPerSecond", defaults.degreesPerSecond),
            fields.integer32("knotsPerSecond", defaults.knotsPerSecond),
            fields.flag("gusty", defaults.gusty)};
}

int readCount(const JsonFields& fields, const char* name)
{
    return static_cast<int>(fields.integer(name, 0, 0, kMostSteps));
}

Event readEvent(const JsonFields& fields, const Steering& defaults)
{
    Event event;
    event.afterMs = fields.integer("after", event.afterMs, 0, kLongestPauseMs);
    if (const auto weather = fields.object("weather")) {
        event.weather = readWeather(*weather);
    }
    if (const auto aircraft = fields.object("aircraft")) {
        event.aircraft = readAircraft(*aircraft);
    }
    if (const auto settings = fields.object("settings")) {
        event.settings = readSteering(*settings, defaults);
    }
    event.steps = readCount(fields, "steps");
    event.xplaneSteps = readCount(fields, "xplaneSteps");
    event.everyMs = fields.integer("every", event.everyMs, 0, kLongestPauseMs);
    return event;
}

std::vector<std::int32_t> readRandom(const JsonFields& fields)
{
    std::vector<std::int32_t> numbers;
    for (const auto& value : fields.list("random")) {
        const double number = value.toDouble(-1.0);
        if (!(number >= 0.0 && number <= std::numeric_limits<std::int32_t>::max())) {
            fields.refuse("random", QStringLiteral("a list of numbers from 0 to 2147483647"));
        }
        numbers.push_back(static_cast<std::int32_t>(number));
    }
    return numbers;
}

Case readCase(const JsonFields& fields, const Steering& defaults)
{
    Case wind;
    if (fields.has("start")) {
        wind.startMs = fields.integer("start", 0, 0, kLastStartMs);
    }
    wind.settings = readSteering(fields.object("settings").value_or(JsonFields({}, {})), defaults);
    wind.random = readRandom(fields);
    const QJsonArray events = fields.list("events");
    if (events.size() > kMostEvents) {
        throw BadField{QStringLiteral("more than %1 events in one case").arg(kMostEvents)};
    }
    int steps = 0;
    for (int i = 0; i < events.size(); ++i) {
        wind.events.push_back(readEvent(entry(fields, "events", events, i), defaults));
        steps += wind.events.back().steps + wind.events.back().xplaneSteps;
        if (steps > kMostSteps) {
            throw BadField{QStringLiteral("more than %1 steps in one case").arg(kMostSteps)};
        }
    }
    return wind;
}

} // namespace

Case readCase(const std::string& line, const Steering& defaults)
{
    constexpr std::size_t kLongestLine = 64U << 20U;
    if (line.size() > kLongestLine) {
        throw BadLine{QStringLiteral("the line is longer than 64 MB")};
    }
    QJsonParseError error{};
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray(line.data(), static_cast<int>(line.size())), &error);
    if (!document.isObject()) {
        throw BadLine{document.isNull() ? error.errorString()
                                        : QStringLiteral("a JSON object is expected")};
    }
    try {
        return readCase(JsonFields(document.object(), {}), defaults);
    } catch (const BadField& field) {
        throw BadLine{field.reason};
    }
}

} // namespace windcase

#include "cli/StrictJson.h"

#include "cli/Json.h"

#include <QJsonArray>

#include <algorithm>
#include <initializer_list>
#include <tuple>

namespace clijson {

using namespace aviation::weather;

namespace {

void nullUnless(bool held, QJsonObject& object, const char* name)
{
    if (!held) {
        object[QLatin1String(name)] = QJsonValue();
    }
}

/// Empty texts are held by nobody.
void nullEmptyTexts(QJsonObject& object, std::initializer_list<const char*> names)
{
    for (const char* const name : names) {
        nullUnless(!object[QLatin1String(name)].toString().isEmpty(), object, name);
    }
}

struct FieldName
{
    const char* name;
    Field field;
};

void nullUnheld(QJsonObject& object, const WeatherBase& report,
                std::initializer_list<FieldName> names)
{
    for (const FieldName& row : names) {
        nullUnless(report.holds(row.field), object, row.name);
    }
}

QJsonValue strictWind(const WeatherBase& report, bool held)
{
    if (!held) {
        return {};
    }
    const Wind& wind = report.wind();
    QJsonObject object{{QStringLiteral("dir"), static_cast<double>(wind.Dir)},
                       {QStringLiteral("speed"), static_cast<double>(wind.Speed)},
                       {QStringLiteral("gust"), static_cast<double>(wind.Gust)}};
    nullUnless(report.holds(Field::Direction), object, "dir");
    nullUnless(wind.Gust > 0.0F, object, "gust");
    return object;
}

/// `object` is what the cloud prints as else. Only METARs say altitudes, by their station's.
QJsonObject strictCloud(QJsonObject object, const Cloud& cloud, bool coverageHeld,
                        bool altitudeHeld = false)
{
    nullUnless(cloud.typeKnown, object, "type");
    nullUnless(coverageHeld, object, "coverage");
    nullUnless(cloud.baseKnown, object, "base");
    nullUnless(cloud.top >= 0, object, "top");
    nullUnless(cloud.baseKnown && altitudeHeld, object, "altitude");
    return object;
}

/// The layers that the report lists; `held`: it says something of them, if only that there is none.
QJsonValue strictClouds(const QJsonArray& printed, const WeatherBase& report, bool held)
{
    const bool isMetar = report.kind() == ReportKind::Metar;
    QJsonArray strict;
    for (int i = 0; i < printed.size(); ++i) {
        const Cloud& cloud = report.clouds()[static_cast<std::size_t>(i)];
        if (!cloud.isAssumed) {
            strict.append(
                strictCloud(printed.at(i).toObject(), cloud, cloud.coverage != 0, isMetar));
        }
    }
    return held ? QJsonValue(strict) : QJsonValue();
}

void nullLevelTemperature(QJsonObject& level, bool held)
{
    for (const char* const name : {"temperature", "dewPoint", "humidity"}) {
        nullUnless(held, level, name);
    }
}

/// Maximum wind and tropopause have neither dew point nor pressure.
QJsonValue strictPeak(const QJsonValue& printed, bool held, bool temperatureHeld)
{
    if (!held) {
        return {};
    }
    QJsonObject level = printed.toObject();
    nullUnless(temperatureHeld, level, "temperature");
    for (const char* const name : {"dewPoint", "humidity", "pressure"}) {
        nullUnless(false, level, name);
    }
    return level;
}

QJsonValue strictLevels(const QJsonArray& printed, const GribValues& grib)
{
    QJsonArray levels;
    for (int i = 0; i < printed.size(); ++i) {
        QJsonObject level = printed.at(i).toObject();
        nullLevelTemperature(level, grib.levelTemperatures[static_cast<std::size_t>(i)]);
        levels.append(level);
    }
    return levels.isEmpty() ? QJsonValue() : QJsonValue(levels);
}

/// Weather groups without the ones that say that there is no cloud.
bool hasPhenomena(const Metar& metar)
{
    QString text = QString::fromStdWString(metar.phenomenaText());
    for (const char* const group : {"NSC", "NCD", "/"}) {
        text.remove(QLatin1String(group));
    }
    return !text.trimmed().isEmpty();
}

/// Ships are timed by their call sign, which is no time as a rule.
bool hasTime(const Synop& synop)
{
    constexpr std::size_t kDayAndHour = 4;
    const std::wstring_view digits = synop.timeGroup().substr(0, kDayAndHour);
    return synop.isTimeValid() && std::all_of(digits.begin(), digits.end(), [](wchar_t c) {
               return c >= L'0' && c <= L'9';
           });
}

} // namespace

QJsonObject strictMetar(const Metar& metar)
{
    QJsonObject object = fromMetar(metar);
    nullEmptyTexts(object, {"icao", "time", "runway", "tailRunway"});
    object[QStringLiteral("wind")] = strictWind(metar, metar.windSeen());
    object[QStringLiteral("clouds")] =
        strictClouds(object[QStringLiteral("clouds")].toArray(), metar, metar.holds(Field::Clouds));
    nullUnheld(object, metar,
               {{"variable", Field::Sector},
                {"visibility", Field::Visibility},
                {"temperature", Field::Temperature},
                {"dewPoint", Field::DewPoint},
                {"seaLevelTemperature", Field::Temperature},
                {"seaLevelDewPoint", Field::DewPoint},
                {"qnh", Field::Qnh}});
    nullUnless(hasPhenomena(metar), object, "phenomena");
    nullUnless(hasPhenomena(metar), object, "intensity");
    return object;
}

QJsonObject strictSynop(const Synop& synop)
{
    QJsonObject object = fromSynop(synop);
    const bool hasHeader = synop.isTimeValid();
    nullEmptyTexts(object, {"station", "name"});
    nullUnless(hasHeader, object, "type");
    nullUnless(hasHeader, object, "metar");
    nullUnless(hasTime(synop), object, "time");
    nullUnless(hasHeader && synop.synop().windUnit != kWindUnitUnknown, object, "windUnit");
    nullUnless(synop.isKnown(), object, "lat");
    nullUnless(synop.isKnown(), object, "lon");
    object[QStringLiteral("wind")] = strictWind(synop, synop.windSeen());
    Cloud base = synop.baseCloud();
    base.baseKnown = synop.holds(Field::BaseHeight);
    const bool covered = synop.holds(Field::BaseCoverage);
    object[QStringLiteral("baseCloud")] =
        base.baseKnown || covered
            ? strictCloud(object[QStringLiteral("baseCloud")].toObject(), base, covered)
            : QJsonValue();
    object[QStringLiteral("clouds")] =
        strictClouds(object[QStringLiteral("clouds")].toArray(), synop, !synop.clouds().empty());
    nullUnheld(object, synop,
               {{"precipitationIndicator", Field::Precipitation},
                {"visibility", Field::Visibility},
                {"temperature", Field::Temperature},
                {"dewPoint", Field::DewPoint},
                {"qnh", Field::Qnh},
                {"stationPressure", Field::StationPressure},
                {"humidity", Field::Humidity},
                {"low", Field::LowCode},
                {"middle", Field::MiddleCode},
                {"high", Field::HighCode},
                {"gust10", Field::Gust10Minutes},
                {"gust1", Field::Gust1},
                {"gust2", Field::Gust2},
                {"seaValue", Field::Sea},
                {"seaSecondValue", Field::SeaSecond}});
    return object;
}

QJsonObject strictGrib(const Grib& grib)
{
    QJsonObject object = fromGrib(grib);
    nullEmptyTexts(object, {"key"});
    nullUnless(grib.isKnown(), object, "lat");
    nullUnless(grib.isKnown(), object, "lon");
    object[QStringLiteral("wind")] = strictWind(grib, grib.holds(Field::Direction));
    nullUnheld(
        object, grib,
        {{"temperature", Field::Temperature}, {"dewPoint", Field::DewPoint}, {"qnh", Field::Qnh}});
    object[QStringLiteral("levels")] =
        strictLevels(object[QStringLiteral("levels")].toArray(), grib.grib());
    object[QStringLiteral("maximumWind")] =
        strictPeak(object[QStringLiteral("maximumWind")], grib.holds(Field::MaximumWind),
                   grib.holds(Field::MaximumWindTemperature));
    object[QStringLiteral("tropopause")] =
        strictPeak(object[QStringLiteral("tropopause")], grib.holds(Field::Tropopause),
                   grib.holds(Field::TropopauseTemperature));
    const std::tuple<const char*, Field, const Cloud&> clouds[] = {
        {"lowCloud", Field::LowCloud, grib.lowCloud()},
        {"middleCloud", Field::MiddleCloud, grib.middleCloud()},
        {"highCloud", Field::HighCloud, grib.highCloud()}};
    for (const auto& [name, field, cloud] : clouds) {
        const QLatin1String key(name);
        object[key] =
            grib.holds(field) ? strictCloud(object[key].toObject(), cloud, true) : QJsonValue();
    }
    return object;
}

} // namespace clijson

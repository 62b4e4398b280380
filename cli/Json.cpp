#include "cli/Json.h"

#include "weather/output/records/NewWeatherText.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace clijson {

using namespace aviation::weather;

namespace {

QString text(const std::wstring& wide)
{
    return QString::fromStdWString(wide);
}

double number(float value)
{
    return static_cast<double>(value);
}

QJsonObject fromWind(const Wind& wind)
{
    return {{QStringLiteral("dir"), number(wind.Dir)},
            {QStringLiteral("speed"), number(wind.Speed)},
            {QStringLiteral("gust"), number(wind.Gust)}};
}

QJsonObject fromCloud(const Cloud& cloud)
{
    return {{QStringLiteral("type"), cloud.type},
            {QStringLiteral("coverage"), cloud.coverage},
            {QStringLiteral("base"), cloud.base},
            {QStringLiteral("top"), cloud.top},
            {QStringLiteral("altitude"), cloud.altitude}};
}

QJsonArray fromClouds(const std::vector<Cloud>& clouds)
{
    QJsonArray array;
    for (const Cloud& cloud : clouds) {
        array.append(fromCloud(cloud));
    }
    return array;
}

QJsonObject fromLevel(const GribLevel& level)
{
    return {{QStringLiteral("altitude"), level.altitude},
            {QStringLiteral("dir"), number(level.wind.Dir)},
            {QStringLiteral("speed"), number(level.wind.Speed)},
            {QStringLiteral("temperature"), level.temperature},
            {QStringLiteral("dewPoint"), level.dewPoint},
            {QStringLiteral("humidity"), number(level.humidity)},
            {QStringLiteral("pressure"), number(level.pressure)}};
}

QJsonObject fromSeen(const WeatherBase& report)
{
    return {{QStringLiteral("clouds"), report.cloudsSeen()},
            {QStringLiteral("visibility"), report.visibilitySeen()},
            {QStringLiteral("wind"), report.windSeen()}};
}

/// What all three kinds of report print alike.
QJsonObject fromReport(const WeatherBase& report)
{
    return {{QStringLiteral("status"), report.status()},
            {QStringLiteral("message"), text(report.GetMessage())},
            {QStringLiteral("wind"), fromWind(report.wind())},
            {QStringLiteral("temperature"), number(report.temperature())},
            {QStringLiteral("dewPoint"), number(report.dewPoint())},
            {QStringLiteral("qnh"), number(report.qnh())}};
}

} // namespace

QJsonObject fromMetar(const Metar& metar)
{
    QJsonObject object = fromReport(metar);
    object[QStringLiteral("icao")] = text(metar.icao());
    object[QStringLiteral("time")] = text(std::wstring(metar.timeGroup()));
    object[QStringLiteral("variable")] = QJsonObject{{QStringLiteral("from"), metar.variableFrom()},
                                                     {QStringLiteral("to"), metar.variableTo()}};
    object[QStringLiteral("visibility")] = metar.visibility();
    object[QStringLiteral("cavok")] = metar.isCavok();
    object[QStringLiteral("clouds")] = fromClouds(metar.clouds());
    object[QStringLiteral("phenomena")] = text(metar.phenomenaText());
    object[QStringLiteral("intensity")] = metar.intensity();
    object[QStringLiteral("runway")] = text(metar.runwayText());
    object[QStringLiteral("tailRunway")] = text(metar.tailRunwayText());
    object[QStringLiteral("nsc")] = metar.noSignificantCloud();
    object[QStringLiteral("seaLevelTemperature")] = number(metar.SeaLevelTemperature());
    object[QStringLiteral("seaLevelDewPoint")] = number(metar.SeaLevelDewPoint());
    object[QStringLiteral("seen")] = fromSeen(metar);
    object[QStringLiteral("text")] = text(metar.GetDecodedText());
    return object;
}

QJsonObject fromSynop(const Synop& synop)
{
    const SynopValues& values = synop.synop();
    Metar asMetar;
    synop.ToMetar(asMetar);
    QJsonObject object = fromReport(synop);
    object[QStringLiteral("type")] = static_cast<int>(values.type);
    object[QStringLiteral("station")] = text(synop.icao());
    object[QStringLiteral("name")] = text(synop.name());
    object[QStringLiteral("time")] = text(values.timeGroup.data());
    object[QStringLiteral("lat")] = synop.latitude();
    object[QStringLiteral("lon")] = synop.longitude();
    object[QStringLiteral("windUnit")] = values.windUnit;
    object[QStringLiteral("precipitationIndicator")] = values.precipitationIndicator;
    object[QStringLiteral("visibility")] = synop.visibility();
    object[QStringLiteral("stationPressure")] = values.stationPressure;
    object[QStringLiteral("humidity")] = values.humidity;
    object[QStringLiteral("baseCloud")] = fromCloud(values.baseCloud);
    object[QStringLiteral("low")] = values.lowCode;
    object[QStringLiteral("middle")] = values.middleCode;
    object[QStringLiteral("high")] = values.highCode;
    object[QStringLiteral("cloudCodesRead")] = values.cloudCodesRead;
    object[QStringLiteral("clouds")] = fromClouds(synop.clouds());
    object[QStringLiteral("gust10")] = values.gust10Minutes;
    object[QStringLiteral("gust1")] = values.gust1;
    object[QStringLiteral("gust2")] = values.gust2;
    object[QStringLiteral("seaValue")] = values.seaValue;
    object[QStringLiteral("seaSecondValue")] = values.seaSecondValue;
    object[QStringLiteral("seen")] = fromSeen(synop);
    object[QStringLiteral("metar")] = text(asMetar.reportText());
    return object;
}

QJsonObject fromGrib(const Grib& grib)
{
    QJsonArray levels;
    for (const GribLevel& level : grib.levels()) {
        levels.append(fromLevel(level));
    }
    QJsonObject object = fromReport(grib);
    object[QStringLiteral("key")] = text(grib.key());
    object[QStringLiteral("lat")] = grib.latitude();
    object[QStringLiteral("lon")] = grib.longitude();
    object[QStringLiteral("levels")] = levels;
    object[QStringLiteral("maximumWind")] = fromLevel(grib.maximumWind());
    object[QStringLiteral("tropopause")] = fromLevel(grib.tropopause());
    object[QStringLiteral("lowCloud")] = fromCloud(grib.lowCloud());
    object[QStringLiteral("middleCloud")] = fromCloud(grib.middleCloud());
    object[QStringLiteral("highCloud")] = fromCloud(grib.highCloud());
    return object;
}

QJsonObject fromStation(const Station& station)
{
    return {{QStringLiteral("icao"), text(station.icao())},
            {QStringLiteral("name"), text(station.name())},
            {QStringLiteral("country"), text(station.country())},
            {QStringLiteral("lat"), station.latitude()},
            {QStringLiteral("lon"), station.longitude()},
            {QStringLiteral("elevation"), station.elevation()},
            {QStringLiteral("distance"), station.distance()}};
}

QJsonObject fromRecord(const NewWeather& record)
{
    return {{QStringLiteral("icao"), QString::fromStdString(record.icaoText())},
            {QStringLiteral("text"), QString::fromStdString(newWeatherText(record))},
            {QStringLiteral("hex"), QString::fromStdString(recordHex(record))}};
}

std::string jsonLine(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}

} // namespace clijson

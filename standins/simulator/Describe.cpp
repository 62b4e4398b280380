#include "standins/simulator/Describe.h"

#include "aviation/Units.h"

#include <QList>

#include <algorithm>

namespace simulator {

namespace {

constexpr int kLongestText = 200;
constexpr double kPressUnitsPerHpa = 16.0;
constexpr double kDegreesPerUnit = 360.0 / 65536.0;
constexpr double kFrequencyUnits = 100.0;

QString number(double value, int digits = 0)
{
    return QString::number(value, 'f', digits);
}

QString number(float value, int digits = 0)
{
    return number(static_cast<double>(value), digits);
}

/// "240/12" of degrees and knots.
QString windText(double direction, double speed)
{
    return number(direction).rightJustified(3, QLatin1Char('0')) + QLatin1Char('/')
           + number(speed).rightJustified(2, QLatin1Char('0'));
}

QString megahertz(std::uint16_t frequency)
{
    return number(frequency / kFrequencyUnits, 2);
}

/// Lines that aren't empty between two marks of the block form.
int linesBetween(const QByteArray& text, const char* mark, const char* end)
{
    const int from = text.indexOf(mark) + static_cast<int>(qstrlen(mark));
    const int to = end != nullptr ? text.indexOf(end, from) : -1;
    const QList<QByteArray> lines = text.mid(from, to < 0 ? -1 : to - from).split('\n');
    return static_cast<int>(std::count_if(lines.begin(), lines.end(), [](const QByteArray& line) {
        return !line.trimmed().isEmpty();
    }));
}

} // namespace

QString printable(const QByteArray& text)
{
    QString line = QString::fromUtf8(text.left(4 * kLongestText));
    std::replace_if(
        line.begin(), line.end(), [](QChar c) { return !c.isPrint(); }, QLatin1Char(' '));
    if (line.size() > kLongestText) {
        line = line.left(kLongestText) + QStringLiteral("...");
    }
    return line.simplified();
}

QString describe(const NewWeather& record)
{
    QString text = QStringLiteral("weather record %1: QNH %2")
                       .arg(printable(QByteArray::fromStdString(record.icaoText())),
                            number(record.Press / kPressUnitsPerHpa));
    if (record.nWindCtr > 0) {
        text += QStringLiteral(", wind ")
                + windText(record.Wind[0].Dir * kDegreesPerUnit, record.Wind[0].Speed);
    }
    if (record.nTempCtr > 0) {
        text += QStringLiteral(", %1 C").arg(record.Temp[0].Day);
    }
    const double visibility = record.Vis.Range * aviation::kMetresPerStatuteMile / 100.0;
    return text
           + QStringLiteral(", visibility %1 m, %2 clouds, %3 winds, %4 temperatures")
                 .arg(number(visibility))
                 .arg(record.nCloudCtr)
                 .arg(record.nWindCtr)
                 .arg(record.nTempCtr);
}

QString describe(const XPlaneWeather& weather)
{
    const auto clouds = std::count_if(weather.Clouds.begin(), weather.Clouds.end(),
                                      [](const XPlaneCloud& cloud) { return cloud.Type > 0; });
    QString text =
        QStringLiteral("weather data: QNH %1 inHg, visibility %2 m, %3 C, dew point %4 C, ")
            .arg(number(weather.Press, 2), number(weather.Vis), number(weather.Temp, 1),
                 number(weather.Dew, 1));
    text += QStringLiteral("%1 clouds, %2 winds").arg(clouds).arg(weather.Winds.size());
    return weather.WX.empty()
               ? text
               : text + QStringLiteral(", WX ") + printable(QByteArray::fromStdString(weather.WX));
}

QString describe(const std::vector<XPlaneWindLayer>& layers)
{
    QString text = QStringLiteral("wind layers: %1").arg(layers.size());
    if (!layers.empty()) {
        text +=
            QStringLiteral(", lowest ")
            + windText(static_cast<double>(layers[0].Dir), static_cast<double>(layers[0].Speed));
    }
    return text;
}

QString describe(const aviation::weather::Wind& wind)
{
    return QStringLiteral("wind at the aircraft: ")
           + windText(static_cast<double>(wind.Dir), static_cast<double>(wind.Speed));
}

QString describe(const aviation::structs::AircraftFuel& fuel)
{
    double gallons = 0.0;
    for (const aviation::structs::FuelTank& tank : fuel.tanks) {
        gallons += tank.capacity * tank.level / 100.0;
    }
    return QStringLiteral("fuel: %1 lb in %2 tanks")
        .arg(number(gallons * fuel.fuelWeight))
        .arg(fuel.tanks.size());
}

QString describe(const aviation::structs::AircraftPayload& payload)
{
    return QStringLiteral("payload: %1 lb on %2 stations")
        .arg(number(payload.totalWeight))
        .arg(payload.stations.size());
}

QString describe(const aviation::structs::RadioFrequencys& radios)
{
    return QStringLiteral("radios: COM1 %1, COM2 %2, NAV1 %3, NAV2 %4, ADF %5, squawk %6")
        .arg(megahertz(radios.comm1active), megahertz(radios.comm2active),
             megahertz(radios.nav1active), megahertz(radios.nav2active))
        .arg(radios.adf)
        .arg(radios.transponder, 4, 10, QLatin1Char('0'));
}

QString describeWeatherText(const QByteArray& text)
{
    constexpr const char* kMetars = "-----METAR-----";
    constexpr const char* kWinds = "-----WIND-----";
    if (!text.contains(kMetars)) {
        return QStringLiteral("weather text ") + printable(text);
    }
    return QStringLiteral("weather text: %1 reports, %2 winds")
        .arg(linesBetween(text, kMetars, kWinds))
        .arg(text.contains(kWinds) ? linesBetween(text, kWinds, nullptr) : 0);
}

} // namespace simulator

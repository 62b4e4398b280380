#include "app/gui/AircraftTexts.h"

#include <QDateTime>

#include <cmath>

namespace aircrafttexts {

namespace {

constexpr float kUnlimited = 10000000.0F;
constexpr float kMetresBelowKm = 10.0F;
constexpr double kFullCircle = 360.0;

/// Three digits, in [0, 360).
QString degreesText(double value)
{
    double folded = std::fmod(value, kFullCircle);
    if (!std::isfinite(folded)) {
        folded = 0.0;
    }
    const int whole = static_cast<int>(std::lround(folded < 0.0 ? folded + kFullCircle : folded));
    return QString::number(whole % 360).rightJustified(3, QLatin1Char('0'));
}

QString wholeText(double value)
{
    return QString::number(value, 'f', 0);
}

QString megahertzText(std::uint16_t frequency)
{
    return QStringLiteral("%1.%2")
        .arg(frequency / 100)
        .arg(frequency % 100, 2, 10, QLatin1Char('0'));
}

} // namespace

QString courseText(double trueDegrees, double variation)
{
    return QStringLiteral("%1 T %2 Mag")
        .arg(degreesText(trueDegrees), degreesText(trueDegrees - variation));
}

QString headingText(const aviation::structs::AircraftData& data)
{
    const double variation = static_cast<double>(data.magneticVariation);
    const bool headingIsTrue = data.headingMagnetic != 0.0;
    return courseText(headingIsTrue ? data.heading : data.heading + variation, variation);
}

QString visibilityText(float kilometres)
{
    if (kilometres < kMetresBelowKm) {
        return QStringLiteral("%1 m").arg(wholeText(static_cast<double>(kilometres) * 1000.0));
    }
    if (kilometres == kUnlimited) {
        return QStringLiteral("unlimited");
    }
    return QStringLiteral("%1 km").arg(wholeText(static_cast<double>(kilometres)));
}

QString windText(const aviation::weather::Wind& wind, double variation)
{
    const double direction = static_cast<double>(wind.Dir);
    const QString sign = QStringLiteral("\u00B0");
    return QStringLiteral("%1%2/%3kt  %4%5 Mag")
        .arg(degreesText(direction), sign, wholeText(static_cast<double>(wind.Speed)),
             degreesText(direction - variation), sign);
}

QString simTimeText(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)
        .toString(QStringLiteral("yyyy.MM.dd hh:mm:ss"));
}

QString activeAndStandby(std::uint16_t active, std::uint16_t standby)
{
    return QStringLiteral("%1  (%2)").arg(megahertzText(active), megahertzText(standby));
}

} // namespace aircrafttexts

#include "app/gui/AircraftTexts.h"

#include <QDateTime>

#include <cmath>

namespace aircrafttexts {

namespace {

constexpr float kUnlimited = 10000000.0F;
constexpr float kMetresBelowKm = 10.0F;
constexpr double kFullCircle = 360.0;

/// Three digits, in [0, 360).
QString Degrees(double value)
{
    double folded = std::fmod(value, kFullCircle);
    if (!std::isfinite(folded)) {
        folded = 0.0;
    }
    const int whole = static_cast<int>(std::lround(folded < 0.0 ? folded + kFullCircle : folded));
    return QString::number(whole % 360).rightJustified(3, QLatin1Char('0'));
}

QString Whole(double value)
{
    return QString::number(value, 'f', 0);
}

} // namespace

QString Course(double trueDegrees, double variation)
{
    return QStringLiteral("%1 T %2 Mag")
        .arg(Degrees(trueDegrees), Degrees(trueDegrees - variation));
}

QString Heading(const aviation::structs::AircraftData& data)
{
    const double variation = static_cast<double>(data.magneticVariation);
    const bool headingIsTrue = data.headingMagnetic != 0.0;
    return Course(headingIsTrue ? data.heading : data.heading + variation, variation);
}

QString Visibility(float kilometres)
{
    if (kilometres < kMetresBelowKm) {
        return QStringLiteral("%1 m").arg(Whole(static_cast<double>(kilometres) * 1000.0));
    }
    if (kilometres == kUnlimited) {
        return QStringLiteral("unlimited");
    }
    return QStringLiteral("%1 km").arg(Whole(static_cast<double>(kilometres)));
}

QString WindText(const aviation::weather::Wind& wind, double variation)
{
    const double direction = static_cast<double>(wind.Dir);
    const QString sign = QStringLiteral("\u00B0");
    return QStringLiteral("%1%2/%3kt  %4%5 Mag")
        .arg(Degrees(direction), sign, Whole(static_cast<double>(wind.Speed)),
             Degrees(direction - variation), sign);
}

QString SimTime(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)
        .toString(QStringLiteral("yyyy.MM.dd hh:mm:ss"));
}

} // namespace aircrafttexts

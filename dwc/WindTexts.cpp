#include "dwc/WindTexts.h"

#include <QStringList>

namespace windtexts {

using aviation::weather::Wind;

namespace {

QString General(float value)
{
    return QString::number(static_cast<double>(value));
}

QString Fixed(float value, int decimals)
{
    return QString::number(static_cast<double>(value), 'f', decimals);
}

} // namespace

QString JobName(const Wind& wind)
{
    return QStringLiteral("%1:%2").arg(General(wind.Dir), General(wind.Speed));
}

QString Layers(const std::vector<XPlaneWindLayer>& layers)
{
    QStringList texts;
    for (const XPlaneWindLayer& layer : layers) {
        texts << QStringLiteral("(%1):%2/%3")
                     .arg(Fixed(layer.Alt, 0), Fixed(layer.Dir, 1), Fixed(layer.Speed, 1));
    }
    return texts.join(QLatin1Char(' '));
}

QString DirectionError(const Wind& wind)
{
    return QStringLiteral("(DWC - WindAtAC) - Wind Dir Error: %1/%2kt")
        .arg(General(wind.Dir), General(wind.Speed));
}

QString SpeedError(const Wind& wind)
{
    return QStringLiteral("(DWC - WindAtAC) - Wind Speed Error: %1/%2kt")
        .arg(General(wind.Dir), General(wind.Speed));
}

} // namespace windtexts

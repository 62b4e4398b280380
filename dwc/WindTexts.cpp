#include "dwc/WindTexts.h"

#include <QStringList>

namespace windtexts {

using aviation::weather::Wind;

namespace {

QString generalText(float value)
{
    return QString::number(static_cast<double>(value));
}

QString fixed(float value, int decimals)
{
    return QString::number(static_cast<double>(value), 'f', decimals);
}

} // namespace

QString jobName(const Wind& wind)
{
    return QStringLiteral("%1:%2").arg(generalText(wind.Dir), generalText(wind.Speed));
}

QString layersText(const std::vector<XPlaneWindLayer>& layers)
{
    QStringList texts;
    for (const XPlaneWindLayer& layer : layers) {
        texts << QStringLiteral("(%1):%2/%3")
                     .arg(fixed(layer.Alt, 0), fixed(layer.Dir, 1), fixed(layer.Speed, 1));
    }
    return texts.join(QLatin1Char(' '));
}

QString directionError(const Wind& wind)
{
    return QStringLiteral("(DWC - WindAtAC) - Wind Dir Error: %1/%2kt")
        .arg(generalText(wind.Dir), generalText(wind.Speed));
}

QString speedError(const Wind& wind)
{
    return QStringLiteral("(DWC - WindAtAC) - Wind Speed Error: %1/%2kt")
        .arg(generalText(wind.Dir), generalText(wind.Speed));
}

} // namespace windtexts

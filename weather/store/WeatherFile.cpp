#include "weather/store/WeatherFile.h"

#include <QString>

namespace aviation::weather {

namespace {

QStringView BlockBetween(QStringView text, QStringView opening, QStringView closing)
{
    const qsizetype start = text.lastIndexOf(opening);
    const qsizetype end = text.lastIndexOf(closing);
    if (start < 0 || end < start + opening.size()) {
        return {};
    }
    const qsizetype first = start + opening.size();
    return text.mid(first, end - first);
}

} // namespace

WeatherBlocks ExtractWeatherBlocks(QStringView text)
{
    return {BlockBetween(text, u"[METAR]", u"[/METAR]"),
            BlockBetween(text, u"[SYNOP]", u"[/SYNOP]"), BlockBetween(text, u"[TAF]", u"[/TAF]")};
}

} // namespace aviation::weather

#include "weather/store/WeatherFile.h"

#include <QString>

namespace aviation::weather {

namespace {

constexpr qsizetype kNone = -1;

/// Markers of one block and where the last of each stands.
struct Marks
{
    QStringView opening;
    QStringView closing;
    qsizetype start = kNone;
    qsizetype end = kNone;
};

/// Notes the marker that stands at that place, if there is one.
void note(QStringView text, qsizetype at, Marks& marks)
{
    const QStringView rest = text.mid(at);
    if (rest.startsWith(marks.opening)) {
        marks.start = at;
    } else if (rest.startsWith(marks.closing)) {
        marks.end = at;
    }
}

QStringView blockBetween(QStringView text, const Marks& marks)
{
    const qsizetype first = marks.start + marks.opening.size();
    if (marks.start == kNone || marks.end < first) {
        return {};
    }
    return text.mid(first, marks.end - first);
}

} // namespace

/// In one pass over the brackets, since reports hold none and files have some million characters.
WeatherBlocks extractWeatherBlocks(QStringView text)
{
    constexpr QLatin1Char kBracket('[');
    Marks metars{u"[METAR]", u"[/METAR]"};
    Marks synops{u"[SYNOP]", u"[/SYNOP]"};
    Marks tafs{u"[TAF]", u"[/TAF]"};
    for (qsizetype at = text.indexOf(kBracket); at >= 0; at = text.indexOf(kBracket, at + 1)) {
        for (Marks* marks : {&metars, &synops, &tafs}) {
            note(text, at, *marks);
        }
    }
    return {blockBetween(text, metars), blockBetween(text, synops), blockBetween(text, tafs)};
}

} // namespace aviation::weather

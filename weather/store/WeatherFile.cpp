#include "weather/store/WeatherFile.h"

#include <QString>

#include <algorithm>
#include <array>

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

bool isClosed(const Marks& marks)
{
    return marks.start != kNone && marks.end >= marks.start + marks.opening.size();
}

QStringView blockBetween(QStringView text, const Marks& marks)
{
    const qsizetype first = marks.start + marks.opening.size();
    return isClosed(marks) ? text.mid(first, marks.end - first) : QStringView();
}

/// METARs, SYNOPs and TAFs, in one pass over the brackets, since reports hold none and files have
/// some million characters.
std::array<Marks, 3> findMarks(QStringView text)
{
    constexpr QLatin1Char kBracket('[');
    std::array<Marks, 3> all{Marks{u"[METAR]", u"[/METAR]"}, Marks{u"[SYNOP]", u"[/SYNOP]"},
                             Marks{u"[TAF]", u"[/TAF]"}};
    for (qsizetype at = text.indexOf(kBracket); at >= 0; at = text.indexOf(kBracket, at + 1)) {
        for (Marks& marks : all) {
            note(text, at, marks);
        }
    }
    return all;
}

} // namespace

WeatherBlocks extractWeatherBlocks(QStringView text)
{
    const auto [metars, synops, tafs] = findMarks(text);
    return {blockBetween(text, metars), blockBetween(text, synops), blockBetween(text, tafs)};
}

bool hasUnclosedBlock(QStringView text)
{
    const std::array<Marks, 3> all = findMarks(text);
    return std::any_of(all.begin(), all.end(),
                       [](const Marks& marks) { return marks.start != kNone && !isClosed(marks); });
}

} // namespace aviation::weather

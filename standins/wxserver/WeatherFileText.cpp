#include "standins/wxserver/WeatherFileText.h"

#include "app/base/Gzip.h"
#include "standins/wxserver/Compress.h"

#include <algorithm>

namespace wxserver {

namespace {

/// The text between the marks of a block, without the line feed after the first one.
QByteArray block(const QByteArray& text, const QByteArray& name)
{
    const QByteArray opening = '[' + name + "]";
    const int from = text.indexOf(opening);
    const int to = text.indexOf("[/" + name + "]");
    const int start = from + opening.size();
    return from < 0 || to < start ? QByteArray() : text.mid(start, to - start);
}

QByteArrayList pieces(const QByteArray& text, char separator)
{
    QByteArrayList list;
    for (const QByteArray& piece : text.split(separator)) {
        if (const QByteArray trimmed = piece.trimmed(); !trimmed.isEmpty()) {
            list.append(trimmed);
        }
    }
    return list;
}

using Move = QByteArray (*)(const QByteArray&, const TimeShift&);

QByteArrayList moved(const QByteArrayList& reports, const TimeShift& shift, Move move)
{
    QByteArrayList list;
    list.reserve(reports.size());
    for (const QByteArray& report : reports) {
        list.append(move(report, shift));
    }
    return list;
}

QByteArray joined(const QByteArrayList& reports, const QByteArray& ending)
{
    return reports.isEmpty() ? QByteArray() : reports.join(ending) + ending;
}

} // namespace

WeatherReports readReports(const QByteArray& weatherFile)
{
    QByteArray tafs = block(weatherFile, "TAF");
    tafs.replace('\r', "");
    return {pieces(block(weatherFile, "METAR"), '\n'), pieces(block(weatherFile, "SYNOP"), '='),
            pieces(tafs, '\n')};
}

WeatherReports movedReports(const WeatherReports& reports, const TimeShift& shift)
{
    return {moved(reports.metars, shift, movedMetar), moved(reports.synops, shift, movedSynop),
            moved(reports.tafs, shift, movedTaf)};
}

QByteArray metarText(const WeatherReports& reports)
{
    return joined(reports.metars, "\n");
}

QByteArray synopText(const WeatherReports& reports)
{
    return joined(reports.synops, "=\n");
}

QByteArray weatherFileText(const WeatherReports& reports)
{
    return "[METAR]\n" + metarText(reports) + "[/METAR]\n[SYNOP]\n" + synopText(reports)
           + "[/SYNOP]\n[TAF]\n" + joined(reports.tafs, "\n\n") + "[/TAF]\n";
}

QByteArray shortened(const QByteArray& list, int metars)
{
    const GzipResult inflated = inflateGzip(list);
    const QByteArray text = inflated.ok() ? inflated.data : list;
    const bool isWeatherFile = text.contains("[METAR]");
    const QByteArrayList all = pieces(isWeatherFile ? block(text, "METAR") : text, '\n');
    WeatherReports few;
    std::copy_if(all.begin(), all.end(), std::back_inserter(few.metars),
                 [&](const QByteArray& line) {
                     return line.size() >= 10 && line[4] == ' ' && few.metars.size() < metars;
                 });
    const QByteArray cut = isWeatherFile ? weatherFileText(few) : metarText(few);
    return inflated.ok() ? gzipped(cut) : cut;
}

} // namespace wxserver

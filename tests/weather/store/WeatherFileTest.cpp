#include "weather/store/WeatherFile.h"

#include <QString>

#include <gtest/gtest.h>

using aviation::weather::ExtractWeatherBlocks;
using aviation::weather::WeatherBlocks;

namespace {

struct Row
{
    const char* what;
    QString text;
    QString metars;
    QString synops;
    QString tafs;
};

QString Q(const char* text)
{
    return QString::fromLatin1(text);
}

TEST(WeatherFile, CutsBlocks)
{
    const Row rows[] = {
        {"in any order", Q("x[TAF]t\n[/TAF]y[METAR]\nm\n[/METAR]z[SYNOP]s=[/SYNOP]"), Q("\nm\n"),
         Q("s="), Q("t\n")},
        {"the last opening marker", Q("[METAR]a[/METAR][METAR]b[/METAR]"), Q("b"), Q(""), Q("")},
        {"an inner opening marker", Q("[METAR]a[METAR]b[/METAR]"), Q("b"), Q(""), Q("")},
        {"the last closing marker", Q("[METAR]a[/METAR]b[/METAR]"), Q("a[/METAR]b"), Q(""), Q("")},
        {"closed before the last opening", Q("[METAR]a[/METAR][METAR]b"), Q(""), Q(""), Q("")},
        {"no closing", Q("[METAR]a"), Q(""), Q(""), Q("")},
        {"other case", Q("[metar]a[/metar]"), Q(""), Q(""), Q("")},
        {"one block within another", Q("[METAR]a[TAF]b[/TAF]c[/METAR]"), Q("a[TAF]b[/TAF]c"), Q(""),
         Q("b")},
    };
    for (const Row& row : rows) {
        const WeatherBlocks blocks = ExtractWeatherBlocks(row.text);
        EXPECT_EQ(blocks.metars.toString(), row.metars) << row.what;
        EXPECT_EQ(blocks.synops.toString(), row.synops) << row.what;
        EXPECT_EQ(blocks.tafs.toString(), row.tafs) << row.what;
    }
}

TEST(WeatherFile, ManyHalfMarkersAreReadInOnePass)
{
    const QString text =
        Q("[METAR]ok[/METAR]") + Q("[META[/META[SYNO[/SYNO[TA[/TA").repeated(400000);
    EXPECT_EQ(ExtractWeatherBlocks(text).metars.toString(), Q("ok"));
}

} // namespace

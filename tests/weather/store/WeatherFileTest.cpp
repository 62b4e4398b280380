#include "weather/store/WeatherFile.h"

#include <QString>

#include <gtest/gtest.h>

#include <array>
#include <utility>

using aviation::weather::extractWeatherBlocks;
using aviation::weather::WeatherBlocks;

namespace {

TEST(WeatherFileTest, CutsBlocks)
{
    /// The text, its METARs, SYNOPs and TAFs.
    const std::array<const char*, 4> rows[] = {
        {"x[TAF]t\n[/TAF]y[METAR]\nm\n[/METAR]z[SYNOP]s=[/SYNOP]", "\nm\n", "s=", "t\n"},
        {"[METAR]a[/METAR][METAR]b[/METAR]", "b"},
        {"[METAR]a[METAR]b[/METAR]", "b"},
        {"[METAR]a[/METAR]b[/METAR]", "a[/METAR]b"},
        {"[METAR]a[/METAR][METAR]b", ""},
        {"[METAR]a", ""},
        {"[metar]a[/metar]", ""},
        {"[METAR]a[TAF]b[/TAF]c[/METAR]", "a[TAF]b[/TAF]c", "", "b"},
        {"[[METAR]a[[/METAR][TAF][/TAF][/SYNOP][SYNOP]", "a["},
    };
    for (const auto& [text, metars, synops, tafs] : rows) {
        const QString whole = QString::fromLatin1(text);
        const WeatherBlocks blocks = extractWeatherBlocks(whole);
        EXPECT_EQ(blocks.metars, QLatin1String(metars)) << text;
        EXPECT_EQ(blocks.synops, QLatin1String(synops)) << text;
        EXPECT_EQ(blocks.tafs, QLatin1String(tafs)) << text;
    }
}

TEST(WeatherFileTest, KnowsWhereTheEndOfABlockIsMissing)
{
    const std::pair<const char*, bool> rows[] = {
        {"", false},
        {"[METAR]a[/METAR][SYNOP]s=[/SYNOP][TAF]t[/TAF]", false},
        {"[/METAR][METAR]a[/METAR]", false},
        {"[METAR]a[/METAR][SYNOP]s=", true},
        {"[METAR]a[/MET", true},
        {"[METAR]a[/METAR][METAR]b", true},
        {"[METAR]a[/METAR][TAF]t[/SYNOP]", true},
    };
    for (const auto& [text, unclosed] : rows) {
        EXPECT_EQ(aviation::weather::hasUnclosedBlock(QString::fromLatin1(text)), unclosed) << text;
    }
}

TEST(WeatherFileTest, ManyHalfMarkersAreReadInOnePass)
{
    const QString text = QStringLiteral("[METAR]ok[/METAR]")
                         + QStringLiteral("[META[/META[SYNO[/SYNO[TA[/TA").repeated(400000);
    EXPECT_EQ(extractWeatherBlocks(text).metars, QLatin1String("ok"));
}

} // namespace

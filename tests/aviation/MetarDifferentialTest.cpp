#include "aviation/Metar.h"
#include "tests/support/PatternSamples.h"
#include "tests/support/RegexMetar.h"
#include "tests/support/ReportLines.h"

#include <gtest/gtest.h>

using aviation::SeededRandom;
using aviation::weather::Metar;

namespace {

/// Real and odd reports, each as it is and with a few characters spoiled.
TEST(MetarDifferential, DecodesWhatTheChainOfRegularExpressionsDecodes)
{
    const RegexMetar reference;
    SeededRandom random(1969);
    for (const char* const file : {"/metar/reports.txt", "/metar/odd.txt"}) {
        const auto reports = ReportLines(CIRRILON_TEST_DATA + std::string(file));
        ASSERT_FALSE(reports.empty()) << file;
        for (std::wstring report : reports) {
            for (int spoils = 0; spoils < 4; ++spoils) {
                Metar metar(report);
                metar.setElevation(spoils == 0 ? random.Next() % 9000 - 100 : 0);
                static_cast<void>(metar.Decode());
                EXPECT_EQ(FirstDifference(reference.Decode(report, metar.elevation()), metar), "")
                    << testing::PrintToString(report);
                report = Spoiled(std::move(report), random);
            }
        }
    }
}

} // namespace

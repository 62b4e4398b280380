#include "aviation/Metar.h"
#include "tests/support/PatternSamples.h"
#include "tests/support/RegexMetar.h"
#include "tests/support/ReportLines.h"

#include <gtest/gtest.h>

using aviation::SeededRandom;
using aviation::weather::Metar;

namespace {

void ExpectSame(const RegexMetar& reference, const std::wstring& report, int elevation)
{
    Metar metar(report);
    metar.setElevation(elevation);
    static_cast<void>(metar.Decode());
    EXPECT_EQ(FirstDifference(reference.Decode(report, elevation), metar), "")
        << testing::PrintToString(report);
}

/// Real and odd reports, each as it is and with a few characters spoiled.
TEST(MetarDifferential, DecodesWhatTheChainOfRegularExpressionsDecodes)
{
    const RegexMetar reference;
    SeededRandom random(1969);
    int count = 0;
    for (const char* const file : {"/metar/reports.txt", "/metar/odd.txt"}) {
        for (const std::wstring& report : ReportLines(CIRRILON_TEST_DATA + std::string(file))) {
            ExpectSame(reference, report, random.Next() % 9000 - 100);
            std::wstring spoiled = report;
            for (int spoils = 0; spoils < 3; ++spoils) {
                spoiled = Spoiled(std::move(spoiled), random);
                ExpectSame(reference, spoiled, 0);
            }
            ++count;
        }
    }
    EXPECT_GT(count, 1000);
}

} // namespace

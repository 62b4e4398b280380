#include "aviation/Synop.h"
#include "tests/support/FakeClock.h"
#include "tests/support/PatternSamples.h"
#include "tests/support/RegexSynop.h"
#include "tests/support/ReportLines.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace aviation;
using namespace aviation::weather;

namespace {

auto CloudFields(const Cloud& cloud)
{
    return std::tuple(cloud.type, cloud.coverage, cloud.base, cloud.top, cloud.altitude);
}

auto WindFields(const Wind& wind)
{
    return std::tuple(wind.Dir, wind.Speed, wind.Gust, wind.Fourth);
}

auto SynopFields(const SynopValues& synop)
{
    return std::tuple(synop.timeGroup, synop.cloudCodesRead, synop.type, int{synop.windUnit},
                      int{synop.precipitationIndicator}, CloudFields(synop.baseCloud),
                      int{synop.lowCode}, int{synop.middleCode}, int{synop.highCode},
                      synop.humidity, synop.stationPressure, synop.seaValue, synop.seaSecondValue,
                      synop.gust10Minutes, synop.gust1, synop.gust2);
}

void ExpectSameAsByRegex(const std::wstring& report)
{
    SCOPED_TRACE(testing::PrintToString(report));
    Synop synop(report);
    static_cast<void>(synop.Decode());
    const RegexSynop other = DecodeSynopByRegex(report);
    EXPECT_EQ(
        std::tuple(synop.status(), synop.icao(), synop.name(), synop.latitude(), synop.longitude()),
        std::tuple(other.status, other.icao, other.name, other.position.latitude(),
                   other.position.longitude()));
    EXPECT_EQ(std::tuple(synop.visibility(), synop.temperature(), synop.dewPoint(), synop.qnh(),
                         synop.cloudsSeen(), synop.visibilitySeen(), synop.windSeen()),
              std::tuple(other.surface.visibility, other.surface.temperature,
                         other.surface.dewPoint, other.surface.qnh, other.surface.cloudsSeen,
                         other.surface.visibilitySeen, other.surface.windSeen));
    EXPECT_EQ(WindFields(synop.wind()), WindFields(other.surface.wind));
    EXPECT_EQ(SynopFields(synop.synop()), SynopFields(other.synop));
    ASSERT_EQ(synop.clouds().size(), other.surface.clouds.size());
    for (std::size_t i = 0; i < synop.clouds().size(); ++i) {
        EXPECT_EQ(CloudFields(synop.clouds()[i]), CloudFields(other.surface.clouds[i])) << i;
    }
}

TEST(SynopDifferential, RealAndSpoiledReportsDecodeAsWithStandardExpressions)
{
    const FakeClock clock(2023, 1, 21, 13, 20);
    SeededRandom random(20230121);
    for (const char* const file : {"/synop/reports.txt", "/synop/odd.txt"}) {
        const auto reports = ReportLines(CIRRILON_TEST_DATA + std::string(file));
        ASSERT_FALSE(reports.empty()) << file;
        for (std::wstring report : reports) {
            for (int spoils = 0; spoils < 4; ++spoils) {
                ExpectSameAsByRegex(report);
                report = Spoiled(std::move(report), random);
            }
            ASSERT_FALSE(testing::Test::HasFailure()) << "one report tells enough";
        }
    }
}

} // namespace

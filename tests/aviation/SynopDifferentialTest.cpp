#include "aviation/Synop.h"
#include "tests/support/FakeClock.h"
#include "tests/support/RegexSynop.h"
#include "tests/support/ReportLines.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <vector>

using namespace aviation;
using namespace aviation::weather;

namespace {

std::vector<std::wstring> RealReports()
{
    std::vector<std::wstring> reports = ReportLines(CIRRILON_TEST_DATA "/synop/reports.txt");
    const std::vector<std::wstring> odd = ReportLines(CIRRILON_TEST_DATA "/synop/odd.txt");
    reports.insert(reports.end(), odd.begin(), odd.end());
    return reports;
}

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

/// Changes, drops, doubles or inserts a few characters, mostly such as reports have.
std::wstring Mutated(std::wstring report, std::mt19937& random)
{
    static const std::wstring kCharacters = L"0123456789/// \t=AX35Z[a_";
    for (int change = 0; change < 3 && !report.empty(); ++change) {
        const std::size_t at = random() % report.size();
        const wchar_t character = kCharacters[random() % kCharacters.size()];
        switch (random() % 4) {
        case 0:
            report[at] = character;
            break;
        case 1:
            report.erase(at, 1 + random() % 6);
            break;
        case 2:
            report.insert(at, 1, character);
            break;
        default:
            report.insert(at, report.substr(at, random() % 12));
        }
    }
    return report;
}

} // namespace

TEST(SynopDifferentialTest, RealAndMutatedReportsDecodeAsWithStandardExpressions)
{
    const FakeClock clock(2023, 1, 21, 13, 20);
    const std::vector<std::wstring> reports = RealReports();
    ASSERT_GT(reports.size(), 1000U);
    std::mt19937 random(20230121);
    for (const std::wstring& report : reports) {
        ExpectSameAsByRegex(report);
        ExpectSameAsByRegex(Mutated(report, random));
        if (testing::Test::HasFailure()) {
            break; // one report tells enough
        }
    }
}

#include "tests/cli/RunCliHere.h"
#include "tests/support/ExpectedFile.h"

#include <gtest/gtest.h>

#include <TestPaths.h>
#include <algorithm>

namespace {

struct Reports
{
    const char* kind;
    const char* files; ///< below tests/data: .in has the reports, .out what each decodes to
};

class DecodeCommandTest : public ::testing::TestWithParam<Reports>
{};

/// Together the reports go every way through the decoders; see tests/data/SOURCES.md.
TEST_P(DecodeCommandTest, GivesTheExpectedValuesOfEveryReport)
{
    const std::string files = GetParam().files;
    const std::string reports = fileContents(CIRRILON_TEST_DATA "/" + files + ".in");
    ASSERT_FALSE(reports.empty());
    const CliResult result = runCli(words("--now 2023-01-21T13:20:00Z decode --elevation 300")
                                        << QString::fromLatin1(GetParam().kind),
                                    reports);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    expectFile(result.out, files + ".out");
}

class StrictDecodeTest : public ::testing::TestWithParam<Reports>
{};

/// Defaults, assumptions and what stands in slashes is null.
TEST_P(StrictDecodeTest, GivesOnlyWhatTheReportHolds)
{
    const std::string files = GetParam().files;
    const CliResult result = runCli(words("--now 2019-07-01T13:20:00Z decode --strict")
                                        << QString::fromLatin1(GetParam().kind),
                                    fileContents(CIRRILON_TEST_DATA "/" + files + ".in"));
    EXPECT_EQ(result.status, 0);
    expectFile(result.out, files + ".out");
}

INSTANTIATE_TEST_SUITE_P(Rows, StrictDecodeTest,
                         ::testing::Values(Reports{"metar", "metar/strict"},
                                           Reports{"synop", "synop/strict"},
                                           Reports{"grib", "upperair/strict"}),
                         [](const auto& row) { return std::string(row.param.kind); });

INSTANTIATE_TEST_SUITE_P(
    Rows, DecodeCommandTest,
    ::testing::Values(Reports{"metar", "metar/reports"}, Reports{"metar", "metar/odd"},
                      Reports{"metar", "metar/forms"}, Reports{"synop", "synop/reports"},
                      Reports{"synop", "synop/odd"}, Reports{"synop", "synop/forms"},
                      Reports{"grib", "upperair/reports"}, Reports{"grib", "upperair/forms"}),
    [](const auto& row) {
        std::string name = row.param.files;
        std::replace(name.begin(), name.end(), '/', '_');
        return name;
    });

} // namespace

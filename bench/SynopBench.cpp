#include "aviation/Grib.h"
#include "aviation/Synop.h"
#include "bench/CpuTime.h"
#include "bench/RegexSynop.h"
#include "tests/support/ReportLines.h"

#include <TestPaths.h>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <vector>

using aviation::weather::Grib;
using aviation::weather::Synop;

namespace {

/// The reports of the test data, or of the file that the environment names.
std::vector<std::wstring> corpusOf(const char* environment, const char* standard)
{
    const char* const file = std::getenv(environment);
    return reportLines(file != nullptr ? file : standard);
}

const std::vector<std::wstring>& synops()
{
    static const std::vector<std::wstring> lines =
        corpusOf("CIRRILON_SYNOP_CORPUS", CIRRILON_SOURCE_DIR "/tests/data/synop/reports.txt");
    return lines;
}

const std::vector<std::wstring>& gribs()
{
    static const std::vector<std::wstring> lines =
        corpusOf("CIRRILON_GRIB_CORPUS", CIRRILON_SOURCE_DIR "/tests/data/upperair/grib.txt");
    return lines;
}

/// Runs `decode` over a corpus a turn and states the time a report. Fresh objects are made, some at
/// a time, outside of the measured time.
template <class Report, class Decode>
void runOverCorpus(benchmark::State& state, const std::vector<std::wstring>& lines, Decode decode)
{
    constexpr std::size_t kObjects = 64;
    for (auto _ : state) {
        std::chrono::duration<double> spent{};
        for (std::size_t at = 0; at < lines.size(); at += kObjects) {
            const auto first = lines.begin() + static_cast<std::ptrdiff_t>(at);
            const auto count = std::min(kObjects, lines.size() - at);
            std::vector<Report> reports(first, first + static_cast<std::ptrdiff_t>(count));
            const auto start = cpuTime();
            for (Report& report : reports) {
                decode(report);
            }
            spent += cpuTime() - start;
        }
        state.SetIterationTime(spent.count());
    }
    const double reports =
        static_cast<double>(state.iterations()) * static_cast<double>(lines.size());
    using benchmark::Counter;
    state.counters["per report"] = Counter(reports, Counter::kIsRate | Counter::kInvert);
}

void synopDecode(benchmark::State& state)
{
    runOverCorpus<Synop>(state, synops(),
                         [](Synop& synop) { benchmark::DoNotOptimize(synop.Decode()); });
}

void synopHeaderDecode(benchmark::State& state)
{
    runOverCorpus<Synop>(state, synops(),
                         [](Synop& synop) { benchmark::DoNotOptimize(synop.DecodeHeader()); });
}

/// The same chain with std::wregex, built once: the baseline of the full decode.
void synopRegexDecode(benchmark::State& state)
{
    runOverCorpus<Synop>(state, synops(), [](Synop& synop) {
        benchmark::DoNotOptimize(decodeSynopByRegex(synop.reportText()));
    });
}

void gribDecode(benchmark::State& state)
{
    runOverCorpus<Grib>(state, gribs(),
                        [](Grib& grib) { benchmark::DoNotOptimize(grib.Decode()); });
}

} // namespace

BENCHMARK(synopDecode)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(synopHeaderDecode)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(synopRegexDecode)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(gribDecode)->Unit(benchmark::kMillisecond)->UseManualTime();

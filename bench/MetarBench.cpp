#include "aviation/Metar.h"
#include "bench/CpuTime.h"
#include "bench/RegexMetar.h"
#include "tests/support/ReportLines.h"

#include <TestPaths.h>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>

using aviation::weather::Metar;

namespace {

/// The reports of the test data, or of the file that the environment names.
const std::vector<std::wstring>& corpus()
{
    static const std::vector<std::wstring> lines = [] {
        const char* const file = std::getenv("CIRRILON_METAR_CORPUS");
        return reportLines(file != nullptr ? file
                                           : CIRRILON_SOURCE_DIR "/tests/data/metar/reports.txt");
    }();
    return lines;
}

enum class Objects
{
    Fresh, ///< the strings and lists of the result are allocated in the measured time
    Used   ///< an earlier decode has allocated them
};

/// Runs `decode` over the whole corpus a turn and states the time a report. The objects are made,
/// some at a time, outside of the measured time.
template <class Decode>
void runOverCorpus(benchmark::State& state, Decode decode, Objects objects = Objects::Fresh)
{
    constexpr std::size_t kObjects = 64;
    const std::vector<std::wstring>& lines = corpus();
    for (auto _ : state) {
        std::chrono::duration<double> spent{};
        for (std::size_t at = 0; at < lines.size(); at += kObjects) {
            const auto first = lines.begin() + static_cast<std::ptrdiff_t>(at);
            const auto count = std::min(kObjects, lines.size() - at);
            std::vector<Metar> metars(first, first + static_cast<std::ptrdiff_t>(count));
            if (objects == Objects::Used) {
                std::for_each(metars.begin(), metars.end(), decode);
            }
            const auto start = cpuTime();
            std::for_each(metars.begin(), metars.end(), decode);
            spent += cpuTime() - start;
        }
        state.SetIterationTime(spent.count());
    }
    const double reports =
        static_cast<double>(state.iterations()) * static_cast<double>(lines.size());
    using benchmark::Counter;
    state.counters["per report"] = Counter(reports, Counter::kIsRate | Counter::kInvert);
}

void decodeFull(Metar& metar)
{
    benchmark::DoNotOptimize(metar.Decode());
}

void decodeHeader(Metar& metar)
{
    benchmark::DoNotOptimize(metar.DecodeHeader());
}

void fullDecode(benchmark::State& state)
{
    runOverCorpus(state, decodeFull);
}

void headerDecode(benchmark::State& state)
{
    runOverCorpus(state, decodeHeader);
}

void fullDecodeOfUsedObject(benchmark::State& state)
{
    runOverCorpus(state, decodeFull, Objects::Used);
}

void headerDecodeOfUsedObject(benchmark::State& state)
{
    runOverCorpus(state, decodeHeader, Objects::Used);
}

/// The same chain with std::wregex, built once: the baseline of the full decode.
void regexDecode(benchmark::State& state)
{
    static const RegexMetar regexMetar;
    runOverCorpus(state, [](Metar& metar) {
        benchmark::DoNotOptimize(regexMetar.Decode(metar.reportText(), metar.elevation()));
    });
}

} // namespace

BENCHMARK(fullDecode)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(headerDecode)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(fullDecodeOfUsedObject)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(headerDecodeOfUsedObject)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(regexDecode)->Unit(benchmark::kMillisecond)->UseManualTime();

int main(int argc, char** argv)
{
    if (corpus().empty()) {
        std::fputs("no reports: set CIRRILON_METAR_CORPUS to a file with one report a line\n",
                   stderr);
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

#include "aviation/support/Clock.h"
#include "weather/output/ObservationString.h"
#include "weather/output/WeatherComposition.h"

#include <array>
#include <benchmark/benchmark.h>

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

/// Stands within three hours of the reports below.
class BenchClock final : public aviation::Clock
{
public:
    BenchClock() { install(this); }
    ~BenchClock() override { install(nullptr); }
    UtcTime NowUtc() const override
    {
        using namespace std::chrono;
        return UtcTime(sys_days(2019y / July / 1) + hours(12) + minutes(30));
    }
    std::int64_t MonotonicMs() const override { return 0; }
    void SleepMs(int /*milliseconds*/) override {}
};

/// One station with everything in it: four cloud layers, a near SYNOP, 18 levels.
struct Scene
{
    Scene()
    {
        const aviation::Position here(50.0, 8.5);
        metar.setPosition(here);
        metar.setElevation(364);
        metar.Decode();
        synop.setPosition(here);
        synop.Decode();
        std::wstring record = L"GRIB 01120 00000 99500 10085 99013 15250 18007";
        for (int i = 0; i < 18; ++i) {
            record += L" " + std::to_wstring(92 - 4 * i) + L"0" + std::to_wstring(1000 + 450 * i)
                      + L" 08004 27045";
        }
        grib.setReportText(record);
        grib.Decode();
        options.mixedClouds = true;
    }

    Metar metar{L"EDDF 011220Z 24012G25KT 200V280 4000 -SHRA FEW008 BKN012 OVC025CB BKN120 12/11 "
                L"Q0989 NOSIG"};
    Synop synop{L"AAXX 01123 10637 41/57 72412 10124 20113 40150 8572/"};
    Grib grib;
    CompositionOptions options;
};

void GenerateWeather(benchmark::State& state)
{
    BenchClock clock;
    const Scene scene;
    aviation::SeededRandom random(1);
    CompositionContext context{scene.options, random, {}};
    for (auto _ : state) {
        NewWeather record;
        composition::GenerateWeather(scene.metar, scene.synop, scene.grib, record, 3.0, context);
        benchmark::DoNotOptimize(record);
    }
}
BENCHMARK(GenerateWeather)->Unit(benchmark::kMicrosecond);

/// An old METAR: writing the SYNOP as one and decoding it is most of the work.
void generateWeatherFromSynop(benchmark::State& state)
{
    const Scene scene;
    aviation::SeededRandom random(1);
    CompositionContext context{scene.options, random, {}};
    for (auto _ : state) {
        NewWeather record;
        Metar blank;
        blank.setIcao(L"EDDF");
        composition::GenerateWeather(blank, scene.synop, scene.grib, record, 3.0, context);
        benchmark::DoNotOptimize(record);
    }
}
BENCHMARK(generateWeatherFromSynop)->Unit(benchmark::kMicrosecond);

void observationText(benchmark::State& state)
{
    BenchClock clock;
    const Scene scene;
    aviation::SeededRandom random(1);
    CompositionContext context{scene.options, random, {}};
    NewWeather record;
    composition::GenerateWeather(scene.metar, scene.synop, scene.grib, record, 3.0, context);
    for (auto _ : state) {
        benchmark::DoNotOptimize(MetarString(scene.metar, scene.synop, scene.grib, record));
    }
}
BENCHMARK(observationText)->Unit(benchmark::kMicrosecond);

} // namespace

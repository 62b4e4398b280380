#include "app/base/Settings.h"
#include "aviation/support/RandomSource.h"
#include "dwc/ModelDirectWindControl.h"
#include "tests/support/FakeClock.h"

#include <benchmark/benchmark.h>

namespace {

/// A step over as many levels as an upper-air record has, climbing through all of them. The METAR
/// is as fresh or as old as the argument says; for an old one the SYNOP is made into one each time.
void windStep(benchmark::State& state)
{
    constexpr int kLevels = 26;
    constexpr int kFeetPerLevel = 2000;
    FakeClock clock(2019, 7, 1, 12, 40);
    aviation::SeededRandom random(1);
    const Settings settings(QString(), random);
    ModelDirectWindControl model(settings, random);
    aviation::weather::Metar metar(L"EDDF 011220Z 24012KT 9999 FEW030 22/12 Q1015");
    metar.Decode();
    std::vector<aviation::weather::GribLevel> levels;
    levels.reserve(kLevels);
    for (int i = 0; i < kLevels; ++i) {
        levels.push_back(
            {i * kFeetPerLevel, {static_cast<float>(i * 14 % 360), static_cast<float>(i), -1.0F}});
    }
    model.setReports(state.range(0) != 0 ? aviation::weather::Metar() : metar,
                     aviation::weather::Synop(), levels);
    aviation::structs::AircraftData aircraft;
    for (auto _ : state) {
        aircraft.altitude = (aircraft.altitude + 33) % (kLevels * kFeetPerLevel);
        aircraft.heightAgl = aircraft.altitude;
        model.SetAircraftData(aircraft);
        clock.advance(std::chrono::seconds(1));
        if (clock.nowSeconds() % 3600 == 0) {
            clock.advance(std::chrono::hours(-1)); // the report stays as fresh as it is
        }
        model.Step();
        benchmark::DoNotOptimize(model.GetWind());
    }
}

} // namespace

BENCHMARK(windStep)->ArgName("old")->Arg(0)->Arg(1)->Unit(benchmark::kNanosecond);

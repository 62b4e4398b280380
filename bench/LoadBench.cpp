#include "app/Resources.h"
#include "app/WeatherJobs.h"
#include "app/WeatherWorker.h"
#include "app/base/ReportFile.h"
#include "app/base/Settings.h"
#include "aviation/support/RandomSource.h"
#include "bench/WorldHour.h"
#include "nav/records/AirportTable.h"
#include "tools/wxserver/Compress.h"
#include "weather/output/WeatherWrapper.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int kSynops = 19200;

/// The weather of the world hour as a server sends it, its SYNOPs repeated, and the built-in
/// tables.
struct World
{
    World()
    {
        QFile file(packed);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(wxserver::gzipped(WorldHourText(kSynops).toUtf8()));
        }
        store.addAirports(ReadAirportTable(BuiltInFile("airports")));
        store.setWeatherStations(QString::fromUtf8(BuiltInFile("wxstations")));
    }

    void decode()
    {
        worker.addJob(Job(weatherjob::kDecodeWeather, QString()));
        worker.start();
        worker.join();
    }

    WorldHourClock clock;
    aviation::SeededRandom random{1};
    Settings settings{QString(), random};
    WeatherWrapper store{settings, random};
    WeatherWorker worker{store, settings, nullptr};
    QTemporaryDir folder;
    const QString packed = folder.filePath(QStringLiteral("weather.wx.gz"));
};

void Count(benchmark::State& state, const World& world)
{
    state.counters["metars"] = static_cast<double>(world.store.metarCount());
    state.counters["synops"] = static_cast<double>(world.store.synopCount());
}

/// From the file as it was downloaded to the store: inflated, read and decoded.
void GzToStore(benchmark::State& state)
{
    World world;
    for (auto _ : state) {
        world.worker.setWeatherText(readReportFile(world.packed).text);
        world.decode();
    }
    Count(state, world);
}
BENCHMARK(GzToStore)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void ReadGz(benchmark::State& state)
{
    const World world;
    for (auto _ : state) {
        benchmark::DoNotOptimize(readReportFile(world.packed).text);
    }
}
BENCHMARK(ReadGz)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void DecodeJob(benchmark::State& state)
{
    World world;
    world.worker.setWeatherText(readReportFile(world.packed).text);
    for (auto _ : state) {
        world.decode();
    }
    Count(state, world);
}
BENCHMARK(DecodeJob)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

} // namespace

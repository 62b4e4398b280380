#include "app/Resources.h"
#include "app/base/ReportFile.h"
#include "app/base/Settings.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/RandomSource.h"
#include "bench/WorldHour.h"
#include "nav/records/AirportTable.h"
#include "standins/wxserver/Compress.h"
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
            file.write(wxserver::gzipped(worldHourText(kSynops).toUtf8()));
        }
        store.addAirports(readAirportTable(builtInFile("airports")));
        store.setWeatherStations(QString::fromUtf8(builtInFile("wxstations")));
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

void count(benchmark::State& state, const World& world)
{
    state.counters["metars"] = static_cast<double>(world.store.metarCount());
    state.counters["synops"] = static_cast<double>(world.store.synopCount());
}

/// From the file as it was downloaded to the store: inflated, read and decoded.
void gzToStore(benchmark::State& state)
{
    World world;
    for (auto _ : state) {
        world.worker.setWeatherText(readReportFile(world.packed).text);
        world.decode();
    }
    count(state, world);
}
BENCHMARK(gzToStore)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void readGz(benchmark::State& state)
{
    const World world;
    for (auto _ : state) {
        benchmark::DoNotOptimize(readReportFile(world.packed).text);
    }
}
BENCHMARK(readGz)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void decodeJob(benchmark::State& state)
{
    World world;
    world.worker.setWeatherText(readReportFile(world.packed).text);
    for (auto _ : state) {
        world.decode();
    }
    count(state, world);
}
BENCHMARK(decodeJob)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

} // namespace

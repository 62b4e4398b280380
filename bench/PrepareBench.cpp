#include "app/Resources.h"
#include "app/base/ReportFile.h"
#include "app/base/Settings.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/Clock.h"
#include "aviation/support/RandomSource.h"
#include "bench/WorldHour.h"
#include "nav/records/AirportTable.h"
#include "weather/output/WeatherWrapper.h"
#include "weather/store/WeatherManager.h"

#include <TestPaths.h>
#include <atomic>
#include <benchmark/benchmark.h>

namespace {

/// The built-in tables, the weather of the world hour and the upper-air field.
struct World
{
    World()
    {
        store.addAirports(readAirportTable(builtInFile("airports")));
        store.setWeatherStations(QString::fromUtf8(builtInFile("wxstations")));
        const QString demo = QStringLiteral(CIRRILON_SOURCE_DIR "/resources/demo/");
        store.initializeWeather(readReportFile(demo + QStringLiteral("grib.txt.gz")).text,
                                aviation::weather::storekind::kUpperAir);
        worker.setWeatherText(readReportFile(demo + QStringLiteral("weather.wx")).text);
        // The program's log takes every line.
        QObject::connect(&store, &WeatherWrapper::sigDebugString,
                         [this](const QString& text) { logged += text.size(); });
        run(Job(weatherjob::kDecodeWeather, QString()));
    }

    void run(const Job& job)
    {
        worker.addJob(job);
        worker.start();
        worker.join();
    }

    WorldHourClock clock;
    aviation::SeededRandom random{1};
    Settings settings{QString(), random};
    WeatherWrapper store{settings, random};
    WeatherWorker worker{store, settings, nullptr};
    std::atomic<qint64> logged{0}; ///< characters
};

void prepareJob(benchmark::State& state, int job, aviation::Position place)
{
    static World world;
    aviation::structs::AircraftData aircraft;
    aircraft.position = place;
    world.worker.setAircraftData(aircraft);
    for (auto _ : state) {
        world.run(Job(job, QString()));
    }
    std::vector<aviation::weather::Station> stations;
    world.store.StationsInRange(place, world.settings.range(), stations);
    state.counters["stations"] = static_cast<double>(stations.size());
}

const aviation::Position kFrankfurt(50.03, 8.57);
const aviation::Position kNewYork(40.64, -73.78);

BENCHMARK_CAPTURE(prepareJob, fsuipc_frankfurt, weatherjob::kFsuipcAll, kFrankfurt)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(prepareJob, fsuipc_newyork, weatherjob::kFsuipcAll, kNewYork)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(prepareJob, observations_frankfurt, weatherjob::kSimConnectAll, kFrankfurt)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(prepareJob, observations_newyork, weatherjob::kSimConnectAll, kNewYork)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(prepareJob, xplane_files_frankfurt, weatherjob::kXPlaneFiles, kFrankfurt)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(prepareJob, xplane_files_newyork, weatherjob::kXPlaneFiles, kNewYork)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime();

} // namespace

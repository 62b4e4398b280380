#include "nav/records/AirportTable.h"
#include "weather/store/WeatherManager.h"

#include <QFile>
#include <QString>

#include <TestPaths.h>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <random>
#include <vector>

using namespace aviation::weather;
using aviation::Position;

namespace {

constexpr std::size_t kReports = 10000;
constexpr std::size_t kQueries = 512;
constexpr double kMetarLimit = 3000.0;
constexpr double kSynopLimit = 1000.0;
constexpr double kGribLimit = 250.0;

double between(std::mt19937& random, double low, double high)
{
    return low + (high - low) * static_cast<double>(random()) / 4294967295.0;
}

std::vector<Position> scattered(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<Position> places;
    for (std::size_t i = 0; i < count; ++i) {
        places.emplace_back(between(random, -60, 75), between(random, -180, 180));
    }
    return places;
}

/// Whole degrees, as upper-air records lie.
std::vector<Position> gridOf(std::size_t count)
{
    std::vector<Position> places;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = i / 200;
        places.emplace_back(-13.0 + static_cast<double>(row),
                            -100.0 + static_cast<double>(i % 200));
    }
    return places;
}

const std::vector<Position>& queryPlaces()
{
    static const std::vector<Position> queries = [] {
        std::vector<Position> places = scattered(kQueries / 2, 2);
        for (const Position& place : scattered(kQueries / 2, 3)) { // as far from two grid points
            places.emplace_back(std::floor(place.latitude()) + 0.5, std::floor(place.longitude()));
        }
        return places;
    }();
    return queries;
}

std::size_t walk(const std::vector<Position>& places, const Position& query, double limit)
{
    double best = limit;
    std::size_t found = NearestIndex::kNone;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double distance = searchDistanceNm(query, places[i]);
        if (distance < best) {
            best = distance;
            found = i;
        }
    }
    return found;
}

NearestIndex indexOf(const std::vector<Position>& places)
{
    std::vector<IndexedPlace> indexed;
    indexed.reserve(places.size());
    for (const Position& place : places) {
        indexed.push_back({place.latitude(), place.longitude()});
    }
    return NearestIndex(std::move(indexed));
}

/// The baseline: a walk over the table with an arc cosine each.
void nearestByWalk(benchmark::State& state, const std::vector<Position>& places, double limit)
{
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(walk(places, queryPlaces()[turn++ % kQueries], limit));
    }
}

void nearestByIndex(benchmark::State& state, const std::vector<Position>& places, double limit)
{
    const NearestIndex index = indexOf(places);
    for (const Position& query : queryPlaces()) {
        if (index.nearest(query, limit) != walk(places, query, limit)) {
            state.SkipWithError("the index finds another entry than the walk");
            return;
        }
    }
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(index.nearest(queryPlaces()[turn++ % kQueries], limit));
    }
}

BENCHMARK_CAPTURE(nearestByWalk, metar, scattered(kReports, 1), kMetarLimit);
BENCHMARK_CAPTURE(nearestByIndex, metar, scattered(kReports, 1), kMetarLimit);
BENCHMARK_CAPTURE(nearestByWalk, synop, scattered(kReports, 4), kSynopLimit);
BENCHMARK_CAPTURE(nearestByIndex, synop, scattered(kReports, 4), kSynopLimit);
BENCHMARK_CAPTURE(nearestByWalk, grib, gridOf(kReports), kGribLimit);
BENCHMARK_CAPTURE(nearestByIndex, grib, gridOf(kReports), kGribLimit);

void buildIndexOf20000(benchmark::State& state)
{
    const std::vector<Position> places = scattered(2 * kReports, 5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(indexOf(places));
    }
}
BENCHMARK(buildIndexOf20000)->Unit(benchmark::kMillisecond);

QByteArray resource(const char* name)
{
    QFile file(QStringLiteral(CIRRILON_SOURCE_DIR "/resources/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::wstring weatherBlock(const char* name)
{
    const QString text = QString::fromUtf8(resource("demo/weather.wx"));
    const QString opening = QLatin1Char('[') + QLatin1String(name) + QLatin1Char(']');
    const int start = text.indexOf(opening) + opening.size();
    const int end = text.indexOf(QLatin1String("[/") + QLatin1String(name) + QLatin1Char(']'));
    return text.mid(start, end - start).toStdWString();
}

/// The bundled SYNOPs over and over.
std::wstring twentyThousandSynops()
{
    const std::wstring some = weatherBlock("SYNOP");
    const auto reports = static_cast<std::size_t>(std::count(some.begin(), some.end(), L'='));
    std::wstring text;
    for (std::size_t count = 0; reports > 0 && count < 2 * kReports; count += reports) {
        text += some;
    }
    return text;
}

void fillTables(WeatherManager& store)
{
    for (const QAirport& airport : readAirportTable(resource("airports"))) {
        std::wstring icao = airport.Ident.toStdWString();
        std::wstring name = airport.Name.toStdWString();
        std::wstring country = airport.Region.toStdWString();
        store.addAirport(
            Station(icao, name, country, airport.Elevation, Position(airport.Lat, airport.Lon)));
    }
    store.setWeatherStations(QString::fromUtf8(resource("wxstations")).toStdWString());
}

void initializeWorldHour(benchmark::State& state)
{
    WeatherManager store;
    fillTables(store);
    const std::wstring metars = weatherBlock("METAR");
    const std::wstring synops = twentyThousandSynops();
    const std::wstring tafs = weatherBlock("TAF");
    for (auto _ : state) {
        store.Initialize(metars, storekind::kMetar, false);
        store.Initialize(synops, storekind::kSynop, false);
        store.Initialize(tafs, storekind::kTaf, false);
    }
    state.counters["metars"] = static_cast<double>(store.metarCount());
    state.counters["synops"] = static_cast<double>(store.synopCount());
    state.counters["failed"] = static_cast<double>(store.failedMetarStations().size());
}
BENCHMARK(initializeWorldHour)->Unit(benchmark::kMillisecond);

/// From the bytes of both resource files to filled tables.
void readBothTables(benchmark::State& state)
{
    const QByteArray airports = resource("airports");
    const QByteArray stations = resource("wxstations");
    for (auto _ : state) {
        WeatherManager store;
        benchmark::DoNotOptimize(readAirportTable(airports));
        store.setWeatherStations(QString::fromUtf8(stations).toStdWString());
        if (store.stationCount() == 0) {
            state.SkipWithError("no tables");
        }
    }
}
BENCHMARK(readBothTables)->Unit(benchmark::kMillisecond);

/// Whole searches in a store of that size, the copy and the decode of the report included.
void searchMetarWhole(benchmark::State& state)
{
    MetarManager metars;
    for (const Position& place : scattered(kReports, 1)) {
        Metar metar(L"EDDF 011150Z 18005KT 150V210 9999 FEW030 BKN040CB 21/10 Q1013 NOSIG");
        metar.setPosition(place);
        metars.add(std::move(metar));
    }
    std::size_t turn = 0;
    for (auto _ : state) {
        Metar found;
        benchmark::DoNotOptimize(metars.Nearest(queryPlaces()[turn++ % kQueries], found));
    }
}
BENCHMARK(searchMetarWhole);

/// A few records more in a store that has thousands, then a search: the loop that waits for data.
void addGribsAndSearch(benchmark::State& state)
{
    WeatherManager store;
    const std::vector<Position> grid = gridOf(5000);
    const auto record = [](const Position& place) {
        const auto digits = [](double value, int width) {
            std::wstring text = std::to_wstring(static_cast<int>(std::abs(value) * 10.0));
            return text.insert(0, static_cast<std::size_t>(width) - text.size(), L'0');
        };
        return L"GRIB 01121 00000 99" + digits(place.latitude(), 3)
               + (place.latitude() < 0 ? L" 5" : L" 7") + digits(place.longitude(), 4)
               + L" 99013 15055 27010\n";
    };
    std::wstring all;
    for (const Position& place : grid) {
        all += record(place);
    }
    store.Initialize(all, storekind::kUpperAir, false);
    int extra = 0;
    for (auto _ : state) {
        const int row = extra / 100;
        store.Initialize(record(Position(60.0 + 0.1 * (extra % 100), -0.1 * row)),
                         storekind::kUpperAir, false);
        ++extra;
        Grib grib;
        benchmark::DoNotOptimize(store.SearchGrib(Position(60, 0), grib));
    }
}
BENCHMARK(addGribsAndSearch)->Unit(benchmark::kMicrosecond)->Iterations(500);

} // namespace

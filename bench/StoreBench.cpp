#include "nav/records/AirportTable.h"
#include "weather/store/WeatherManager.h"

#include <QFile>
#include <QString>

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

double Between(std::mt19937& random, double low, double high)
{
    return low + (high - low) * static_cast<double>(random()) / 4294967295.0;
}

std::vector<Position> Scattered(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<Position> places;
    for (std::size_t i = 0; i < count; ++i) {
        places.emplace_back(Between(random, -60, 75), Between(random, -180, 180));
    }
    return places;
}

/// Whole degrees, as upper-air records lie.
std::vector<Position> Grid(std::size_t count)
{
    std::vector<Position> places;
    for (std::size_t i = 0; i < count; ++i) {
        places.emplace_back(-13.0 + static_cast<double>(i / 200),
                            -100.0 + static_cast<double>(i % 200));
    }
    return places;
}

const std::vector<Position>& Queries()
{
    static const std::vector<Position> queries = [] {
        std::vector<Position> places = Scattered(kQueries / 2, 2);
        for (const Position& place : Scattered(kQueries / 2, 3)) { // as far from two grid points
            places.emplace_back(std::floor(place.latitude()) + 0.5, std::floor(place.longitude()));
        }
        return places;
    }();
    return queries;
}

std::size_t Walk(const std::vector<Position>& places, const Position& query, double limit)
{
    double best = limit;
    std::size_t found = NearestIndex::kNone;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double distance = SearchDistanceNm(query, places[i]);
        if (distance < best) {
            best = distance;
            found = i;
        }
    }
    return found;
}

NearestIndex IndexOf(const std::vector<Position>& places)
{
    std::vector<IndexedPlace> indexed;
    for (const Position& place : places) {
        indexed.push_back({place.latitude(), place.longitude()});
    }
    return NearestIndex(std::move(indexed));
}

/// The baseline: a walk over the table with an arc cosine each.
void NearestByWalk(benchmark::State& state, const std::vector<Position>& places, double limit)
{
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Walk(places, Queries()[turn++ % kQueries], limit));
    }
}

void NearestByIndex(benchmark::State& state, const std::vector<Position>& places, double limit)
{
    const NearestIndex index = IndexOf(places);
    for (const Position& query : Queries()) {
        if (index.nearest(query, limit) != Walk(places, query, limit)) {
            state.SkipWithError("the index finds another entry than the walk");
            return;
        }
    }
    std::size_t turn = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(index.nearest(Queries()[turn++ % kQueries], limit));
    }
}

BENCHMARK_CAPTURE(NearestByWalk, metar, Scattered(kReports, 1), kMetarLimit);
BENCHMARK_CAPTURE(NearestByIndex, metar, Scattered(kReports, 1), kMetarLimit);
BENCHMARK_CAPTURE(NearestByWalk, synop, Scattered(kReports, 4), kSynopLimit);
BENCHMARK_CAPTURE(NearestByIndex, synop, Scattered(kReports, 4), kSynopLimit);
BENCHMARK_CAPTURE(NearestByWalk, grib, Grid(kReports), kGribLimit);
BENCHMARK_CAPTURE(NearestByIndex, grib, Grid(kReports), kGribLimit);

void BuildIndexOf20000(benchmark::State& state)
{
    const std::vector<Position> places = Scattered(2 * kReports, 5);
    for (auto _ : state) {
        benchmark::DoNotOptimize(IndexOf(places));
    }
}
BENCHMARK(BuildIndexOf20000)->Unit(benchmark::kMillisecond);

QByteArray Resource(const char* name)
{
    QFile file(QStringLiteral(CIRRILON_SOURCE_DIR "/resources/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::wstring WeatherBlock(const char* name)
{
    const QString text = QString::fromUtf8(Resource("demo/weather.wx"));
    const QString opening = QLatin1Char('[') + QLatin1String(name) + QLatin1Char(']');
    const int start = text.indexOf(opening) + opening.size();
    const int end = text.indexOf(QLatin1String("[/") + QLatin1String(name) + QLatin1Char(']'));
    return text.mid(start, end - start).toStdWString();
}

/// The bundled SYNOPs over and over.
std::wstring TwentyThousandSynops()
{
    const std::wstring some = WeatherBlock("SYNOP");
    const auto reports = static_cast<std::size_t>(std::count(some.begin(), some.end(), L'='));
    std::wstring text;
    for (std::size_t count = 0; reports > 0 && count < 2 * kReports; count += reports) {
        text += some;
    }
    return text;
}

void FillTables(WeatherManager& store)
{
    for (const QAirport& airport : ReadAirportTable(Resource("airports"))) {
        std::wstring icao = airport.Ident.toStdWString();
        std::wstring name = airport.Name.toStdWString();
        std::wstring country = airport.Region.toStdWString();
        store.AddAirport(
            Station(icao, name, country, airport.Elevation, Position(airport.Lat, airport.Lon)));
    }
    store.SetWeatherStations(QString::fromUtf8(Resource("wxstations")).toStdWString());
}

void InitializeWorldHour(benchmark::State& state)
{
    WeatherManager store;
    FillTables(store);
    const std::wstring metars = WeatherBlock("METAR");
    const std::wstring synops = TwentyThousandSynops();
    const std::wstring tafs = WeatherBlock("TAF");
    for (auto _ : state) {
        store.Initialize(metars, storekind::kMetar, false);
        store.Initialize(synops, storekind::kSynop, false);
        store.Initialize(tafs, storekind::kTaf, false);
    }
    state.counters["metars"] = static_cast<double>(store.MetarCount());
    state.counters["synops"] = static_cast<double>(store.SynopCount());
    state.counters["failed"] = static_cast<double>(store.FailedMetarStations().size());
}
BENCHMARK(InitializeWorldHour)->Unit(benchmark::kMillisecond);

/// From the bytes of both resource files to filled tables.
void ReadBothTables(benchmark::State& state)
{
    const QByteArray airports = Resource("airports");
    const QByteArray stations = Resource("wxstations");
    for (auto _ : state) {
        WeatherManager store;
        benchmark::DoNotOptimize(ReadAirportTable(airports));
        store.SetWeatherStations(QString::fromUtf8(stations).toStdWString());
        if (store.StationCount() == 0) {
            state.SkipWithError("no tables");
        }
    }
}
BENCHMARK(ReadBothTables)->Unit(benchmark::kMillisecond);

/// Whole searches in a store of that size, the copy and the decode of the report included.
void SearchMetarWhole(benchmark::State& state)
{
    MetarManager metars;
    for (const Position& place : Scattered(kReports, 1)) {
        Metar metar(L"EDDF 011150Z 18005KT 150V210 9999 FEW030 BKN040CB 21/10 Q1013 NOSIG");
        metar.setPosition(place);
        metars.Add(std::move(metar));
    }
    std::size_t turn = 0;
    for (auto _ : state) {
        Metar found;
        benchmark::DoNotOptimize(metars.Nearest(Queries()[turn++ % kQueries], found));
    }
}
BENCHMARK(SearchMetarWhole);

/// A few records more in a store that has thousands, then a search: the loop that waits for data.
void AddGribsAndSearch(benchmark::State& state)
{
    WeatherManager store;
    const std::vector<Position> grid = Grid(5000);
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
        store.Initialize(record(Position(60.0 + 0.1 * (extra % 100), -0.1 * (extra / 100))),
                         storekind::kUpperAir, false);
        ++extra;
        Grib grib;
        benchmark::DoNotOptimize(store.SearchGrib(Position(60, 0), grib));
    }
}
BENCHMARK(AddGribsAndSearch)->Unit(benchmark::kMicrosecond)->Iterations(500);

} // namespace

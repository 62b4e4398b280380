#include "nav/records/AirportTable.h"
#include "weather/store/NearestIndex.h"
#include "weather/store/WeatherManager.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

using namespace aviation::weather;

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

/// Rows end in places of this earth, and the index answers as a walk does.
void checkAirports(const QVector<QAirport>& airports)
{
    std::vector<IndexedPlace> places;
    for (const QAirport& airport : airports) {
        require(std::abs(airport.Lat) <= 90.0 && std::abs(airport.Lon) <= 180.0);
        places.push_back({airport.Lat, airport.Lon});
    }
    const NearestIndex index(places);
    const aviation::Position reference(50.0, 8.5);
    double best = 3000.0;
    std::size_t expected = NearestIndex::kNone;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double distance = searchDistanceNm(
            reference, aviation::Position(places[i].latitude, places[i].longitude));
        if (distance < best) {
            best = distance;
            expected = i;
        }
    }
    require(index.nearest(reference, 3000.0) == expected);
    require(expected == NearestIndex::kNone || !index.within(reference, 3000).empty());
}

} // namespace

/// Both resource tables and the user's airports: never more entries than lines.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const auto lines = static_cast<std::size_t>(bytes.count('\n')) + 1;
    const QVector<QAirport> airports = readAirportTable(bytes);
    const QVector<QAirport> additional = parseAdditionalAirports(bytes);
    require(static_cast<std::size_t>(airports.size()) <= lines);
    require(static_cast<std::size_t>(additional.size()) <= lines);
    checkAirports(airports);
    checkAirports(additional);

    WeatherManager store;
    store.setWeatherStations(QString::fromUtf8(bytes).toStdWString());
    require(store.stationCount() <= lines);
    return 0;
}

#include "weather/store/NearestIndex.h"
#include "weather/store/WeatherFile.h"
#include "weather/store/WeatherManager.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace aviation::weather;

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void addPlaces(WeatherManager& store)
{
    const wchar_t* const airports[] = {L"EDDF", L"KDEN", L"KMSP"};
    double latitude = 10.0;
    for (std::wstring icao : airports) {
        std::wstring name;
        std::wstring country;
        store.addAirport(Station(icao, name, country, 0, aviation::Position(latitude, 8.0)));
        latitude += 10.0;
    }
    store.setWeatherStations(L"106370 EDDF   FRANKFURT/MAIN      DL 5003N 00836E 0112   \n");
}

/// The nearest METAR by a walk, which must be the one that the search finds.
void checkSearch(WeatherManager& store, const aviation::Position& position)
{
    double best = 3000.0;
    std::wstring expected;
    for (const Metar& metar : store.getMetars()) {
        const double distance = searchDistanceNm(position, metar);
        if (distance < best) {
            best = distance;
            expected = metar.reportText();
        }
    }
    Metar found;
    require(store.SearchMetar(position, found) == (best < 3000.0));
    require(found.reportText() == expected);
}

} // namespace

/// A weather file: blocks lie within the text, and nothing is stored or failed that no line holds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const WeatherBlocks blocks = extractWeatherBlocks(text);
    for (const QStringView block : {blocks.metars, blocks.synops, blocks.tafs}) {
        require(block.isEmpty() || (block.begin() >= text.cbegin() && block.end() <= text.cend()));
    }
    WeatherManager store;
    addPlaces(store);
    const std::wstring metars = blocks.metars.toString().toStdWString();
    const std::wstring synops = blocks.synops.toString().toStdWString();
    store.Initialize(metars, storekind::kMetar, size % 2 == 0);
    store.Initialize(synops, storekind::kSynop, false);
    store.Initialize(blocks.tafs.toString().toStdWString(), storekind::kTaf, false);
    const auto lines = std::count(metars.begin(), metars.end(), L'\n') + 1;
    const auto pieces = std::count(synops.begin(), synops.end(), L'=') + 1;
    require(store.metarCount() + store.failedMetarStations().size()
            <= static_cast<std::size_t>(lines));
    require(store.synopCount() + store.failedSynopStations().size()
            <= static_cast<std::size_t>(pieces));
    checkSearch(store, aviation::Position(10.0, 8.0));
    checkSearch(store, aviation::Position(26.0, -30.0));
    const std::size_t before = store.synopCount();
    const int deleted = store.deleteOldSynops(25200);
    require(before == store.synopCount() + static_cast<std::size_t>(deleted));
    Synop synop;
    store.SearchSynop(aviation::Position(50.0, 8.0), synop);
    return 0;
}

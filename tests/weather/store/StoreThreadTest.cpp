#include "tests/weather/store/StoreSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace aviation::weather;
using aviation::Position;

namespace {

constexpr int kRounds = 60;
constexpr int kReports = 50;

/// Airports and a METAR for each of them.
std::wstring fill(WeatherManager& store)
{
    std::wstring metars;
    for (int i = 10; i < 10 + kReports; ++i) {
        const std::wstring icao = L"ED" + std::to_wstring(i);
        store.addAirport(makeStation(icao, i, 8));
        metars += icao + L" 011150Z 18005KT 9999 21/10 Q1013\n";
    }
    store.Initialize(metars, storekind::kMetar, false);
    return metars;
}

void renew(WeatherManager& store, const std::wstring& metars, int round)
{
    const std::wstring number = std::to_wstring(round % 10);
    store.Initialize(metars, storekind::kMetar, false);
    store.Initialize(L"BBXX 0110 01124 99500 10100 41498 51010=BBXX 0111 01124 99510 10100 41498=",
                     storekind::kSynop, false);
    store.Initialize(L"TAF EDDF 011100Z 0112/0218\n\n", storekind::kTaf, false);
    store.Initialize(L"GRIB 01121 00000 99500 1008" + number + L" 99013 15055 27010\n",
                     storekind::kUpperAir, false);
    store.deleteOldSynops(25200);
    store.addAirport(makeStation(L"NEW ", -50, round));
}

void readOnce(WeatherManager& store)
{
    EXPECT_EQ(store.getMetars().size(), std::size_t{kReports});
    Metar metar;
    EXPECT_TRUE(store.SearchMetar(Position(30, 8), metar));
    EXPECT_EQ(metar.icao(), L"ED30");
    Grib grib;
    store.SearchGrib(Position(50, 8), grib);
    Synop synop;
    store.SearchSynop(Position(50, 8), synop);
    Station station;
    EXPECT_TRUE(store.getStation(L"ED12", station));
    store.NearestAirport(Position(30, 8), station);
    store.GetTaf(L"EDDF");
    store.failedSynopStations();
}

/// The worker renews the store while the main thread reads it: a reader sees whole tables only.
TEST(StoreThreadTest, ReadersSeeWholeTables)
{
    ListeningStore store;
    const std::wstring metars = fill(store);
    std::atomic<bool> isDone{false};
    std::thread reader([&] {
        while (!isDone) {
            readOnce(store);
        }
    });
    for (int round = 0; round < kRounds; ++round) {
        renew(store, metars, round);
    }
    isDone = true;
    reader.join();
    EXPECT_EQ(store.airportCount(), std::size_t{kReports + kRounds});
}

/// A listener may ask the store from within a callback.
TEST(StoreThreadTest, CallbacksMayAskTheStore)
{
    const WeatherManager* asked = nullptr;
    std::size_t count = 0;
    WeatherManager store({[&](int, int, const std::wstring&) {
                              count += asked->metarCount() + asked->gribCount() + 1;
                          },
                          [&](const std::wstring&, int) {
                              count += asked->synopCount() + 1;
                          }});
    asked = &store;
    store.Initialize(L"EDDF 011150Z 18005KT 9999 21/10 Q1013\n", storekind::kMetar, false);
    store.Initialize(L"#Error", storekind::kUpperAir, false);
    std::wstring synops;
    for (int i = 0; i < 100; ++i) {
        synops += L"BBXX 0111 01124 99510 10100 41498=";
    }
    store.Initialize(synops, storekind::kSynop, false);
    count = 0;
    store.deleteOldSynops(25200);
    EXPECT_GE(count, 1U);
}

} // namespace

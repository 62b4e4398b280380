#include "tests/weather/store/StoreSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace aviation::weather;
using aviation::Position;

namespace {

constexpr int kRounds = 60;
constexpr int kReports = 50;

struct Texts
{
    std::wstring metars;
    std::wstring synops;
};

Texts fill(WeatherManager& store)
{
    Texts texts;
    for (int i = 0; i < kReports; ++i) {
        const std::wstring number = std::to_wstring(10 + i);
        store.AddAirport(MakeStation(L"ED" + number, 10.0 + i, 8));
        texts.metars.append(L"ED").append(number).append(L" 011150Z 18005KT 9999 21/10 Q1013\n");
        texts.synops.append(L"BBXX 01").append(number).append(L" 01124 99500 10100 41498 51010=");
    }
    store.Initialize(texts.metars, storekind::kMetar, false);
    return texts;
}

void renew(WeatherManager& store, const Texts& texts, int round)
{
    const std::wstring number = std::to_wstring(round % 10);
    store.Initialize(texts.metars, storekind::kMetar, false);
    store.Initialize(texts.synops, storekind::kSynop, false);
    store.Initialize(L"TAF EDDF 011100Z 0112/0218\n\n", storekind::kTaf, false);
    store.Initialize(L"GRIB 01121 00000 99500 1008" + number + L" 99013 15055 27010\n",
                     storekind::kUpperAir, false);
    store.DeleteOldSynops(25200);
    store.AddAirport(MakeStation(L"NEW ", -50, round));
}

void readOnce(WeatherManager& store)
{
    EXPECT_EQ(store.MetarCount(), std::size_t{kReports});
    EXPECT_EQ(store.GetMetars().size(), std::size_t{kReports});
    Metar metar;
    EXPECT_TRUE(store.SearchMetar(Position(30, 8), metar));
    EXPECT_EQ(metar.icao(), L"ED30");
    Grib grib;
    store.SearchGrib(Position(50, 8), grib);
    Synop synop;
    store.SearchSynop(Position(50, 8), synop);
    Station station;
    EXPECT_TRUE(store.GetStation(L"ED12", station));
    store.NearestAirport(Position(30, 8), station);
    store.GetTaf(L"EDDF");
    store.FailedSynopStations();
}

/// The worker renews the store while the main thread reads it: a reader sees whole tables only.
TEST(StoreThread, ReadersSeeWholeTables)
{
    ListeningStore store;
    const Texts texts = fill(store);
    std::atomic<bool> isDone{false};
    std::thread reader([&] {
        while (!isDone) {
            readOnce(store);
        }
    });
    for (int round = 0; round < kRounds; ++round) {
        renew(store, texts, round);
    }
    isDone = true;
    reader.join();
    EXPECT_EQ(store.AirportCount(), std::size_t{kReports + kRounds});
}

/// A listener may ask the store from within a callback.
TEST(StoreThread, CallbacksMayAskTheStore)
{
    class AskingStore final : public WeatherManager
    {
    public:
        void progress(int, int, std::wstring) override
        {
            m_asked += MetarCount() + GribCount() + 1;
        }
        void debug(std::wstring, int) override { m_asked += SynopCount() + 1; }
        std::size_t m_asked = 0;
    };
    AskingStore store;
    store.Initialize(L"EDDF 011150Z 18005KT 9999 21/10 Q1013\n", storekind::kMetar, false);
    store.Initialize(L"#Error", storekind::kUpperAir, false);
    EXPECT_GE(store.m_asked, 4U);
}

} // namespace

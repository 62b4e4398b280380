#include "aviation/Position.h"
#include "tests/support/FakeClock.h"
#include "tests/weather/store/StoreSupport.h"

#include <gtest/gtest.h>

using namespace aviation::weather;
using aviation::Position;

namespace {

class SearchTest : public ::testing::Test
{
protected:
    void metars(const std::wstring& text) { m_store.Initialize(text, storekind::kMetar, false); }

    FakeClock m_clock{2019, 7, 1, 12, 30};
    WeatherManager m_store;
};

TEST_F(SearchTest, MetarComesDecodedAndTheEarlierOfEqualsWins)
{
    m_store.addAirports({makeStation(L"EDDF", 50, 8), makeStation(L"ETOU", 50, 8)});
    metars(L"ETOU 011150Z 18005KT 9999 21/10 Q1013\n"
           L"EDDF 011150Z 19005KT 9999 21/10 Q1014\n"
           L"ETOU 011120Z 20005KT 9999 21/10 Q1015\n");
    Metar metar;
    ASSERT_TRUE(m_store.SearchMetar(Position(50.2, 8), metar));
    EXPECT_EQ(metar.qnh(), 1013.0F);
    EXPECT_FALSE(m_store.getMetars().front().isDecoded()) << "the entry stays as it came";
}

TEST_F(SearchTest, LimitsDifferByKind)
{
    m_store.addAirport(makeStation(L"EDDF", 50, 8));
    m_store.setWeatherStations(L"106370 EDDF   FRANKFURT/MAIN      DL 5000N 00800E 0112   \n");
    metars(L"EDDF 011150Z 18005KT 9999 21/10 Q1013\n");
    m_store.Initialize(L"AAXX 01124 10637 42960 50000 10210=", storekind::kSynop, false);
    m_store.Initialize(L"GRIB 01121 00000 99500 10080 99013 15055 27010\n", storekind::kUpperAir,
                       false);
    const auto southOf = [](double nm) {
        return Position(50.0 - nm * 1.852 / 6378.137 * 180.0 / 3.141592653589793, 8.0);
    };
    const auto found = [&](double nm) {
        Metar metar;
        Synop synop;
        Grib grib;
        return std::vector<bool>{m_store.SearchMetar(southOf(nm), metar),
                                 m_store.SearchSynop(southOf(nm), synop),
                                 m_store.SearchGrib(southOf(nm), grib)};
    };
    EXPECT_EQ(found(249.9), (std::vector<bool>{true, true, true}));
    EXPECT_EQ(found(1000.1), (std::vector<bool>{true, false, false}));
    EXPECT_EQ(found(2999.9), (std::vector<bool>{true, false, false}));
    EXPECT_EQ(found(3000.1), (std::vector<bool>{false, false, false}));
}

TEST_F(SearchTest, FlagsAnOldEntryInTheStoreOnly)
{
    m_store.addAirport(makeStation(L"EDDF", 50, 8));
    for (const bool isOld : {false, true}) { // 12:30 now
        metars(isOld ? L"EDDF 010859Z 18005KT 9999 21/10 Q1013\n"
                     : L"EDDF 010900Z 18005KT 9999 21/10 Q1013\n");
        for (int search = 0; search < 2; ++search) {
            Metar metar;
            EXPECT_TRUE(m_store.SearchMetar(Position(50, 8), metar)) << "old ones are found too";
            EXPECT_FALSE(metar.isOutdated());
        }
        EXPECT_EQ(m_store.getMetars().front().isOutdated(), isOld);
    }
}

TEST_F(SearchTest, StationsInRangeAreSortedAndTheLimitIsExcluded)
{
    m_store.addAirports({makeStation(L"FAR ", 51, 8), makeStation(L"NEAR", 50.1, 8),
                         makeStation(L"NONE", 0, 0), makeStation(L"MID ", 49.5, 8)});
    std::vector<Station> stations{makeStation(L"OLD ", 1, 1)};
    const auto namesWithin = [&](int nm) {
        m_store.StationsInRange(Position(50.1, 8), nm, stations);
        std::wstring names;
        for (const Station& station : stations) {
            names += station.icao();
        }
        return names;
    };
    EXPECT_EQ(namesWithin(100), L"NEARMID FAR ");
    EXPECT_EQ(namesWithin(0), L"");
    EXPECT_EQ(namesWithin(2147483647), L"NEARMID FAR NONE");
}

TEST_F(SearchTest, NearestAirportLiesWithin20Nm)
{
    m_store.addAirports({makeStation(L"AAAA", 50, 8), makeStation(L"BBBB", 50.2, 8),
                         makeStation(L"CCCC", 50.2, 8)});
    Station station;
    m_store.NearestAirport(Position(50.15, 8), station);
    EXPECT_EQ(station.icao(), L"BBBB");
    m_store.NearestAirport(Position(49, 8), station);
    EXPECT_EQ(station.icao(), L"BBBB") << "nothing near leaves the output alone";
    m_store.addAirport(makeStation(L"DDDD", 49, 8));
    m_store.NearestAirport(Position(49, 8), station);
    EXPECT_EQ(station.icao(), L"DDDD") << "an airport added later is found";
}

} // namespace

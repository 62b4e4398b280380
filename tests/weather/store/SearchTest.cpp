#include "aviation/Position.h"
#include "tests/support/FakeClock.h"
#include "tests/weather/store/StoreSupport.h"

#include <gtest/gtest.h>

using namespace aviation::weather;
using aviation::Position;

namespace {

class Search : public ::testing::Test
{
protected:
    void metars(const std::wstring& text) { m_store.Initialize(text, storekind::kMetar, false); }
    bool isFlagged(std::size_t index) const { return m_store.GetMetars()[index].isOutdated(); }

    FakeClock m_clock{2019, 7, 1, 12, 30};
    WeatherManager m_store;
};

TEST_F(Search, EmptyStoreGivesBlankReports)
{
    Metar metar(L"EDDF 011150Z 18005KT 9999 21/10 Q1013");
    metar.Decode();
    EXPECT_FALSE(m_store.SearchMetar(Position(50, 8), metar));
    EXPECT_EQ(metar.reportText(), L"");
    EXPECT_EQ(metar.icao(), L"");
    EXPECT_EQ(metar.kind(), ReportKind::Metar);

    Synop synop(L"AAXX 01124 10637 42960 50000 10210");
    synop.Decode();
    EXPECT_FALSE(m_store.SearchSynop(Position(50, 8), synop));
    EXPECT_EQ(synop.reportText(), L"");
    EXPECT_EQ(synop.timeGroup(), L"000000Z");

    Grib grib;
    EXPECT_FALSE(m_store.SearchGrib(Position(50, 8), grib));
    EXPECT_EQ(grib.status(), gribstatus::kFresh);

    Station station = MakeStation(L"KEPT", 1, 1);
    m_store.NearestAirport(Position(50, 8), station);
    EXPECT_EQ(station.icao(), L"KEPT");
}

TEST_F(Search, MetarComesDecodedAndTheEarlierOfEqualsWins)
{
    m_store.AddAirports({MakeStation(L"EDDF", 50, 8), MakeStation(L"ETOU", 50, 8),
                         MakeStation(L"EDFH", 49.9, 7.2)});
    metars(L"ETOU 011150Z 18005KT 9999 21/10 Q1013\n"
           L"EDDF 011150Z 19005KT 9999 21/10 Q1014\n"
           L"ETOU 011120Z 20005KT 9999 21/10 Q1015\n");
    Metar metar;
    ASSERT_TRUE(m_store.SearchMetar(Position(50.2, 8), metar));
    EXPECT_EQ(metar.icao(), L"ETOU");
    EXPECT_EQ(metar.qnh(), 1013.0F);
    EXPECT_TRUE(metar.isDecoded());
    EXPECT_FALSE(m_store.GetMetars().front().isDecoded()) << "the entry stays as it came";
}

TEST_F(Search, LimitsDifferByKind)
{
    m_store.AddAirport(MakeStation(L"EDDF", 50, 8));
    m_store.SetWeatherStations(L"106370 EDDF   FRANKFURT/MAIN      DL 5000N 00800E 0112   \n");
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
    EXPECT_EQ(found(250.1), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(found(999.9), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(found(1000.1), (std::vector<bool>{true, false, false}));
    EXPECT_EQ(found(2999.9), (std::vector<bool>{true, false, false}));
    EXPECT_EQ(found(3000.1), (std::vector<bool>{false, false, false}));
}

TEST_F(Search, GribWithoutARecordReturnsTheStatusBefore)
{
    GribManager gribs;
    Grib record(L"GRIB 01121 00000 99500 10080 99013 15055 27010");
    record.DecodeHeader();
    ASSERT_TRUE(gribs.Add(std::move(record)));
    Grib out;
    EXPECT_EQ(gribs.Nearest(Position(0.5, 0), out), gribstatus::kFresh);
    EXPECT_EQ(gribs.Nearest(Position(50, 8), out), gribstatus::kDecoded);
    EXPECT_EQ(out.key(), L"50010080");
    EXPECT_EQ(gribs.Nearest(Position(50, 8), out), gribstatus::kDecoded) << "decoded once only";
    EXPECT_EQ(gribs.Nearest(Position(0.5, 0), out), gribstatus::kDecoded)
        << "that of the record handed in";
    EXPECT_EQ(out.key(), L"") << "though it is blank now";
    EXPECT_EQ(out.status(), gribstatus::kFresh);
}

struct AgeRow
{
    const wchar_t* timeGroup;
    int day;
    int hour;
    int minute;
    bool isOld;
};

TEST(SearchAge, FlagsTheEntryInTheStoreOnly)
{
    const AgeRow rows[] = {
        {L"010900Z", 1, 12, 59, false}, {L"010900Z", 1, 12, 10, false},
        {L"010859Z", 1, 12, 0, true},   {L"020900Z", 1, 12, 0, true},
        {L"012359Z", 2, 0, 5, true},    {L"020000Z", 2, 2, 59, false},
        {L"020000Z", 2, 3, 0, false},   {L"020059Z", 2, 4, 0, true},
    };
    for (const AgeRow& row : rows) {
        const FakeClock clock(2019, 7, static_cast<unsigned>(row.day), row.hour, row.minute);
        WeatherManager store;
        store.AddAirport(MakeStation(L"EDDF", 50, 8));
        store.Initialize(std::wstring(L"EDDF ") + row.timeGroup + L" 18005KT 9999 21/10 Q1013\n",
                         storekind::kMetar, false);
        for (int search = 0; search < 2; ++search) {
            Metar metar;
            EXPECT_TRUE(store.SearchMetar(Position(50, 8), metar)) << "old ones are found too";
            EXPECT_FALSE(metar.isOutdated());
        }
        EXPECT_EQ(store.GetMetars().front().isOutdated(), row.isOld)
            << row.day << " " << row.hour << ":" << row.minute;
    }
}

TEST_F(Search, AgeFlagGoesToTheEntryThatTheIcaoNames)
{
    m_store.AddAirport(MakeStation(L"EDDF", 50, 8));
    metars(L"EDDF 010250Z 18005KT 9999 21/10 Q1013\nEDDF 011150Z 18005KT 9999 21/10 Q1013\n");
    Metar metar;
    m_store.SearchMetar(Position(50, 8), metar);
    EXPECT_EQ(metar.timeGroup(), L"010250");
    EXPECT_FALSE(isFlagged(0));
    EXPECT_TRUE(isFlagged(1));
}

std::wstring NamesInRange(const WeatherManager& store, const Position& position, int nm)
{
    std::vector<Station> stations{MakeStation(L"OLD ", 1, 1)};
    store.StationsInRange(position, nm, stations);
    std::wstring names;
    for (const Station& station : stations) {
        names += station.icao();
    }
    return names;
}

TEST_F(Search, StationsInRangeAreSortedAndTheLimitIsExcluded)
{
    m_store.AddAirports({MakeStation(L"FAR ", 51, 8), MakeStation(L"NEAR", 50.1, 8),
                         MakeStation(L"NONE", 0, 0), MakeStation(L"MID ", 49.5, 8)});
    EXPECT_EQ(NamesInRange(m_store, Position(50, 8), 100), L"NEARMID FAR ");
    EXPECT_EQ(NamesInRange(m_store, Position(50, 8), 60), L"NEARMID ");
    EXPECT_EQ(NamesInRange(m_store, Position(50.1, 8), 1), L"NEAR");
    EXPECT_EQ(NamesInRange(m_store, Position(50.1, 8), 0), L"");
    EXPECT_EQ(NamesInRange(m_store, Position(50, 8), 2147483647), L"NEARMID FAR NONE");
    EXPECT_EQ(NamesInRange(m_store, Position(0, 0), 500), L"");
}

TEST_F(Search, NearestAirportLiesWithin20Nm)
{
    m_store.AddAirports({MakeStation(L"AAAA", 50, 8), MakeStation(L"BBBB", 50.2, 8),
                         MakeStation(L"CCCC", 50.2, 8)});
    Station station;
    m_store.NearestAirport(Position(50.15, 8), station);
    EXPECT_EQ(station.icao(), L"BBBB");
    m_store.NearestAirport(Position(49, 8), station);
    EXPECT_EQ(station.icao(), L"BBBB") << "nothing near leaves the output alone";
    m_store.AddAirport(MakeStation(L"DDDD", 49, 8));
    m_store.NearestAirport(Position(49, 8), station);
    EXPECT_EQ(station.icao(), L"DDDD") << "an airport added later is found";
}

} // namespace

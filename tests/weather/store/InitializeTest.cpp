#include "tests/support/FakeClock.h"
#include "tests/weather/store/StoreSupport.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

namespace {

using Names = std::vector<std::wstring>;

/// Noon of the day that the reports here are of.
class Initialize : public ::testing::Test
{
protected:
    Initialize()
    {
        m_store.AddAirports({MakeStation(L"EDDF", 50.03, 8.57, 364),
                             MakeStation(L"KDEN", 39.86, -104.67, 5431),
                             MakeStation(L"KMSP", 44.88, -93.22, 841)});
        m_store.SetWeatherStations(L"106370 EDDF   FRANKFURT/MAIN      DL 5003N 00836E 0112   \n"
                                   L"724690        DENVER              US 3946N 10452W 1640   \n");
        m_store.progresses.clear();
    }

    bool metars(const std::wstring& text, bool noaaFormat = false)
    {
        return m_store.Initialize(text, storekind::kMetar, noaaFormat);
    }
    Names metarTexts() const
    {
        Names texts;
        for (const Metar& metar : m_store.GetMetars()) {
            texts.push_back(metar.reportText());
        }
        return texts;
    }
    bool synops(const std::wstring& text)
    {
        return m_store.Initialize(text, storekind::kSynop, false);
    }
    bool gribs(const std::wstring& text)
    {
        return m_store.Initialize(text, storekind::kUpperAir, false);
    }
    bool tafs(const std::wstring& text) { return m_store.Initialize(text, storekind::kTaf, false); }

    FakeClock m_clock{2019, 7, 1, 12, 30};
    ListeningStore m_store;
};

TEST_F(Initialize, PlacesMetarsByTheAirportTable)
{
    EXPECT_TRUE(metars(L"KDEN 011153Z 18005KT 10SM CLR 21/10 A3005\n"));
    ASSERT_EQ(m_store.MetarCount(), 1U);
    const Metar metar = m_store.GetMetars().front();
    EXPECT_EQ(metar.icao(), L"KDEN");
    EXPECT_EQ(metar.name(), L"Name of KDEN");
    EXPECT_EQ(metar.country(), L"Country");
    EXPECT_EQ(metar.elevation(), 5431);
    EXPECT_EQ(metar.latitude(), 39.86);
    EXPECT_EQ(metar.time(), 1561981980) << "the report's own time, not the table's";
    EXPECT_FALSE(metar.isDecoded()) << "the full decode is left to the search";
}

TEST_F(Initialize, SkipsShortLinesAndDateLinesWithoutATrace)
{
    metars(L"EDDF 0112\n"
           L"2019/07/01 11:50\n"
           L"2019/07/01\n"
           L"\n"
           L"EDDF 011150Z 18005KT 9999 21/10 Q1013");
    EXPECT_EQ(m_store.MetarCount(), 1U) << "an unclosed last line counts";
    EXPECT_TRUE(m_store.FailedMetarStations().empty());
}

TEST_F(Initialize, ListsMetarsWithoutAnAirportOnceEach)
{
    metars(L"XXXX 011150Z 18005KT 9999 21/10 Q1013\n"
           L"EDDF 011150Z 18005KT 9999 21/10 Q1013\n"
           L"YYYY 011150Z 18005KT 9999 21/10 Q1013\n"
           L"XXXX 011120Z 18005KT 9999 21/10 Q1013\n"
           L"no header at all\n");
    EXPECT_EQ(m_store.FailedMetarStations(), (Names{L"XXXX", L"YYYY", L"XXXX", L""}));
    metars(L"");
    EXPECT_TRUE(m_store.FailedMetarStations().empty());
}

TEST_F(Initialize, NoaaFormatKeepsTheFirstReportOfAStation)
{
    const std::wstring text = L"EDDF 011150Z first\n"
                              L"KDEN 011153Z other\n"
                              L"EDDF 011120Z second\n";
    metars(text, true);
    EXPECT_EQ(metarTexts(), (Names{L"EDDF 011150Z first", L"KDEN 011153Z other"}));
    metars(text, false);
    EXPECT_EQ(metarTexts(),
              (Names{L"EDDF 011150Z first", L"KDEN 011153Z other", L"EDDF 011120Z second"}));
    metars(L"KMSP 011153Z anew\n", false);
    EXPECT_EQ(metarTexts(), (Names{L"KMSP 011153Z anew"})) << "each text replaces the earlier one";
}

TEST_F(Initialize, TellsMetarProgressEveryTenthLine)
{
    std::wstring text;
    for (int i = 0; i < 25; ++i) {
        text += L"EDDF 011150Z 18005KT 9999\n";
    }
    metars(text);
    const std::vector<ListeningStore::Progress> expected{
        {0, 1, L"Initialize of metar data"},
        {10, 25, L"Initialize of metar data 10 from 25"},
        {20, 25, L"Initialize of metar data 20 from 25"},
        {0, 0, L"metar initialization completed"}};
    EXPECT_EQ(m_store.progresses, expected);
    EXPECT_EQ(m_store.lines.back(),
              ListeningStore::Line(L"(WeatherManager) - metar initialization completed: 25", 1));
}

TEST_F(Initialize, PlacesLandSynopsByTheirNumberWithAZero)
{
    EXPECT_TRUE(synops(L"AAXX 01124 10637 42960 50000 10210\r\n20100 40150=\n"
                       L"AAXX 01124 10638 42960 50000 10210=\n"
                       L"short=\n"));
    ASSERT_EQ(m_store.SynopCount(), 1U);
    EXPECT_EQ(m_store.FailedSynopStations(), Names{L"10638"});
    Synop synop;
    ASSERT_TRUE(m_store.SearchSynop(aviation::Position(50, 8), synop));
    EXPECT_EQ(synop.icao(), L"10637");
    EXPECT_EQ(synop.name(), L"FRANKFURT/MAIN");
    EXPECT_EQ(synop.country(), L"DL");
    EXPECT_EQ(synop.elevation(), 367);
    EXPECT_EQ(synop.reportText(), L"AAXX 01124 10637 42960 50000 1021020100 40150");
}

TEST_F(Initialize, KeepsSynopsThatCarryTheirPosition)
{
    synops(
        L"BBXX DBBH 01124 99500 10100 41498 51010=OOXX AB12 01124 99400 71050 12345 46/// 41498=");
    EXPECT_EQ(m_store.SynopCount(), 2U);
    EXPECT_TRUE(m_store.FailedSynopStations().empty());
    Synop synop;
    ASSERT_TRUE(m_store.SearchSynop(aviation::Position(50, 10.1), synop));
    EXPECT_EQ(synop.name(), L"DBBH");
    EXPECT_EQ(synop.latitude(), 50.0);
}

TEST_F(Initialize, DropsSynopsWithoutAHeader)
{
    synops(L"NIL NIL NIL NIL=AAXX 01124 10637 42960 50000=\n");
    EXPECT_EQ(m_store.SynopCount(), 1U);
    EXPECT_TRUE(m_store.FailedSynopStations().empty());
    EXPECT_EQ(m_store.lines.front(),
              ListeningStore::Line(L"(SynopDecoder) - Error: Header - No Synop Type founded: "
                                   L"NIL NIL NIL NIL",
                                   0));
}

TEST_F(Initialize, TellsSynopProgressEvery100Pieces)
{
    std::wstring text;
    for (int i = 0; i < 150; ++i) {
        text += i % 2 == 0 ? L"AAXX 01124 10637 42960=" : L"=";
    }
    synops(text);
    const std::vector<ListeningStore::Progress> expected{
        {0, 1, L"Initialize of additional weather data"},
        {100, 150, L"Initialize of additional weather data 100 from 150"},
        {0, 0, L"additional weather data initialization completed"}};
    EXPECT_EQ(m_store.progresses, expected);
    EXPECT_EQ(m_store.lines.back().first,
              L"(WeatherManager) - additional weather data initialization completed: 75");
}

std::wstring GribLine(const std::wstring& place, const std::wstring& qnh = L"013")
{
    return L"GRIB 01121 00000 " + place + L" 99" + qnh + L" 15055 27010 0000100 15055 27010\n";
}

TEST_F(Initialize, GribsAccumulateAndReplaceTheirGridPoint)
{
    EXPECT_TRUE(gribs(GribLine(L"99450 70930") + L"\n" + GribLine(L"99450 70940")));
    EXPECT_EQ(m_store.GribCount(), 2U);
    EXPECT_TRUE(gribs(L"# TIME:2561982400 GFS\n" + GribLine(L"99450 70930", L"020")
                      + GribLine(L"99460 70930")));
    EXPECT_EQ(m_store.GribCount(), 3U);
    Grib grib;
    ASSERT_TRUE(m_store.SearchGrib(aviation::Position(45, -93), grib));
    EXPECT_EQ(grib.qnh(), 1020.0F);
    EXPECT_EQ(grib.time(), 2561982400) << "ten digits exceed 32 bits";
    ASSERT_TRUE(m_store.SearchGrib(aviation::Position(45, -94), grib));
    EXPECT_EQ(grib.time(), 0);
    EXPECT_EQ(m_store.progresses.front(), ListeningStore::Progress(0, 1, L"Initalize wind data"));
    EXPECT_EQ(m_store.progresses.back(),
              ListeningStore::Progress(0, 0, L"grib data initialization completed"));
}

TEST_F(Initialize, UpperAirHeaderThatTellsAnErrorChangesNothing)
{
    gribs(GribLine(L"99450 70930"));
    EXPECT_FALSE(gribs(L"#Error: no data\n" + GribLine(L"99450 70940")));
    EXPECT_EQ(m_store.GribCount(), 1U);
    EXPECT_EQ(m_store.lines.back(), ListeningStore::Line(L"#Error: no data", 0));
}

TEST_F(Initialize, FirstUpperAirLineIsDataUnlessItIsAHeader)
{
    struct
    {
        const wchar_t* first;
        std::size_t gribs;
    } const rows[] = {{L"GFS #1 TIME:15\n", 1}, {L"#\n", 2}, {L"Error\n", 2}, {L"", 1}};
    for (const auto& row : rows) {
        ListeningStore store;
        EXPECT_TRUE(
            store.Initialize(row.first + GribLine(L"99450 70930"), storekind::kUpperAir, false));
        EXPECT_EQ(store.GribCount(), row.gribs) << std::wstring(row.first).size();
    }
}

TEST_F(Initialize, TellsUpperAirProgressEverySixthLine)
{
    std::wstring text;
    for (int i = 0; i < 13; ++i) {
        text += GribLine(L"99450 7093" + std::to_wstring(i % 10));
    }
    gribs(text);
    ASSERT_EQ(m_store.progresses.size(), 4U);
    EXPECT_EQ(m_store.progresses[1],
              ListeningStore::Progress(6, 13, L"Initialize of wind data 6 from 13"));
    EXPECT_EQ(m_store.GribCount(), 10U);
}

TEST_F(Initialize, StoresTafsByTheirFirstFourCharacters)
{
    EXPECT_TRUE(tafs(L"xx\nTAF EDDF 011100Z 0112/0218\n BECMG 0114/0116\r\n\n"
                     L"TAF AMD KDEN 011120Z 0112/0218 18005KT\n\n"
                     L"TAF KD\n\n"
                     L"TAF KMSP 011120Z 0112/0218 18005KT\n"));
    EXPECT_EQ(m_store.TafCount(), 2U) << "too short, and without its empty line";
    EXPECT_EQ(m_store.GetTaf(L"EDDF"), L"EDDF 011100Z 0112/0218 BECMG 0114/0116");
    EXPECT_EQ(m_store.GetTaf(L"KDEN"), L"");
    EXPECT_EQ(m_store.GetTaf(L"AMD "), L"AMD KDEN 011120Z 0112/0218 18005KT");
    EXPECT_EQ(m_store.GetTaf(L"KMSP"), L"");
    tafs(L"");
    EXPECT_EQ(m_store.TafCount(), 0U);
    EXPECT_EQ(m_store.GetTaf(L"EDDF"), L"");
}

TEST_F(Initialize, LaterTafOfAStationIsFound)
{
    tafs(L"TAF EDDF one two\n\nTAF EDDF three\n\n");
    EXPECT_EQ(m_store.TafCount(), 2U);
    EXPECT_EQ(m_store.GetTaf(L"EDDF"), L"EDDF three");
}

TEST_F(Initialize, TellsTafProgressEveryEleventhReport)
{
    std::wstring text;
    for (int i = 0; i < 12; ++i) {
        text += L"TAF EDDF 011100Z\n\n";
    }
    tafs(text);
    const std::vector<ListeningStore::Progress> expected{{0, 1, L"Initialize of TAF"},
                                                         {11, 12, L"Initialize of TAF 11 from 12"},
                                                         {0, 0, L"TAF initialization completed"}};
    EXPECT_EQ(m_store.progresses, expected);
    EXPECT_EQ(m_store.lines.back(),
              ListeningStore::Line(L"(WeatherManager) - TAF initialization completed: 12", 1));
}

TEST_F(Initialize, UnknownKindDoesNothing)
{
    for (const int kind : {0, 4, 6, -1}) {
        EXPECT_FALSE(m_store.Initialize(L"EDDF 011150Z 18005KT 9999 21/10 Q1013\n", kind, false));
    }
    EXPECT_TRUE(m_store.progresses.empty());
}

std::wstring LandSynop(const std::wstring& dayHour)
{
    return L"AAXX " + dayHour + L"4 10637 42960 50000 10210=";
}

TEST_F(Initialize, DeletesSynopsByAgeAndValidity)
{
    // Now is the 1st, 12:30. A day above today's is one of the month before.
    synops(LandSynop(L"0112") + LandSynop(L"0104") + LandSynop(L"0105") + LandSynop(L"0106")
           + LandSynop(L"3012") + LandSynop(L"//12") + LandSynop(L"0111"));
    ASSERT_EQ(m_store.SynopCount(), 7U);
    EXPECT_EQ(m_store.DeleteOldSynops(25200), 4);
    EXPECT_EQ(m_store.SynopCount(), 3U);
    m_clock.Advance(std::chrono::hours(6));
    EXPECT_EQ(m_store.DeleteOldSynops(25200), 2) << "those of 06:00 and 11:00";
    Synop first;
    ASSERT_TRUE(m_store.SearchSynop(aviation::Position(50, 8), first));
    EXPECT_EQ(first.timeGroup(), L"011200Z");
}

TEST_F(Initialize, SynopOfExactlyTheLimitStays)
{
    synops(LandSynop(L"0112"));
    EXPECT_EQ(m_store.DeleteOldSynops(1800), 0);
    EXPECT_EQ(m_store.DeleteOldSynops(1799), 1);
}

TEST_F(Initialize, TellsDeletionProgressEvery100Synops)
{
    std::wstring text;
    for (int i = 0; i < 250; ++i) {
        text += i % 2 == 0 ? L"AAXX 01004 10637 42960 50000=" : L"AAXX 01124 10637 42960 50000=";
    }
    synops(text);
    m_store.progresses.clear();
    EXPECT_EQ(m_store.DeleteOldSynops(25200), 125);
    const std::vector<ListeningStore::Progress> expected{
        {100, 250, L"check of additional weather data 100 from 250, deleted: 50"},
        {200, 250, L"check of additional weather data 200 from 250, deleted: 100"}};
    EXPECT_EQ(m_store.progresses, expected);
}

TEST(QuietStore, PlainManagerWorksWithoutAListener)
{
    WeatherManager store;
    store.AddAirport(MakeStation(L"EDDF", 50, 8));
    EXPECT_TRUE(store.Initialize(L"EDDF 011150Z 18005KT 9999 21/10 Q1013\nbroken line\n",
                                 storekind::kMetar, true));
    EXPECT_EQ(store.MetarCount(), 1U);
    EXPECT_FALSE(store.Initialize(L"#Error", storekind::kUpperAir, true));
}

} // namespace

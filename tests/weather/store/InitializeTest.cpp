#include "tests/support/FakeClock.h"
#include "tests/weather/store/StoreSupport.h"

#include <gtest/gtest.h>

using namespace aviation::weather;

namespace {

using Names = std::vector<std::wstring>;

/// Noon of the day that the reports here are of.
class InitializeTest : public ::testing::Test
{
protected:
    InitializeTest()
    {
        m_store.addAirports(
            {makeStation(L"EDDF", 50.03, 8.57, 364), makeStation(L"KDEN", 39.86, -104.67, 5431)});
        m_store.setWeatherStations(L"106370 EDDF   FRANKFURT/MAIN      DL 5003N 00836E 0112   \n");
    }

    bool metars(const std::wstring& text) { return fill(text, storekind::kMetar); }
    bool synops(const std::wstring& text) { return fill(text, storekind::kSynop); }
    bool gribs(const std::wstring& text) { return fill(text, storekind::kUpperAir); }
    bool tafs(const std::wstring& text) { return fill(text, storekind::kTaf); }
    bool fill(const std::wstring& text, int kind) { return m_store.Initialize(text, kind, false); }

    const FakeClock m_clock{2019, 7, 1, 12, 30};
    ListeningStore m_store;
};

TEST_F(InitializeTest, PlacesMetarsByTheAirportTable)
{
    metars(L"EDDF 0112\n"
           L"2019/07/01 11:50\n"
           L"\n"
           L"KDEN 011153Z 18005KT 10SM CLR 21/10 A3005");
    ASSERT_EQ(m_store.metarCount(), 1U) << "an unclosed last line counts";
    EXPECT_TRUE(m_store.failedMetarStations().empty());
    const Metar metar = m_store.getMetars().front();
    EXPECT_EQ(metar.name(), L"Name of KDEN");
    EXPECT_EQ(metar.elevation(), 5431);
    EXPECT_EQ(metar.latitude(), 39.86);
    EXPECT_EQ(metar.time(), 1561981980) << "the report's own time, not the table's";
}

TEST_F(InitializeTest, ListsMetarsWithoutAnAirport)
{
    metars(L"XXXX 011150Z 18005KT 9999 21/10 Q1013\n"
           L"EDDF 011150Z 18005KT 9999 21/10 Q1013\n"
           L"YYYY 011150Z 18005KT 9999 21/10 Q1013\n"
           L"XXXX 011120Z 18005KT 9999 21/10 Q1013\n"
           L"no header at all\n");
    EXPECT_EQ(m_store.failedMetarStations(), (Names{L"XXXX", L"YYYY", L"XXXX", L""}));
}

TEST_F(InitializeTest, FewerReportsThanWantedReplaceOnlyFewerStill)
{
    const std::wstring one = L"EDDF 011150Z 18005KT 9999 21/10 Q1013\n";
    const std::wstring two = one + L"KDEN 011153Z 18005KT 10SM CLR 21/10 A3005\n";
    const auto take = [this](const std::wstring& text) {
        return m_store.Initialize(text, storekind::kMetar, false, 3);
    };
    EXPECT_TRUE(take(one));
    EXPECT_TRUE(take(two));
    EXPECT_FALSE(take(one + L"XXXX 011150Z 18005KT 9999 21/10 Q1013\n"));
    EXPECT_EQ(m_store.metarCount(), 2U);
    EXPECT_TRUE(m_store.failedMetarStations().empty());
    EXPECT_TRUE(take(two)) << "as many, but newer";
}

TEST_F(InitializeTest, PlacesLandSynopsByTheirNumberWithAZero)
{
    EXPECT_TRUE(synops(L"AAXX 01124 10637 42960 50000 10210\r\n20100 40150=\n"
                       L"AAXX 01124 10638 42960 50000 10210=\n"
                       L"NIL NIL NIL NIL=short=\n"));
    ASSERT_EQ(m_store.synopCount(), 1U);
    EXPECT_EQ(m_store.failedSynopStations(), Names{L"10638"});
    Synop synop;
    ASSERT_TRUE(m_store.SearchSynop(aviation::Position(50, 8), synop));
    EXPECT_EQ(synop.name(), L"FRANKFURT/MAIN");
    EXPECT_EQ(synop.elevation(), 367);
    EXPECT_EQ(synop.reportText(), L"AAXX 01124 10637 42960 50000 1021020100 40150");
}

TEST_F(InitializeTest, KeepsSynopsThatCarryTheirPosition)
{
    synops(
        L"BBXX DBBH 01124 99500 10100 41498 51010=OOXX AB12 01124 99400 71050 12345 46/// 41498=");
    EXPECT_EQ(m_store.synopCount(), 2U);
    Synop synop;
    ASSERT_TRUE(m_store.SearchSynop(aviation::Position(50, 10.1), synop));
    EXPECT_EQ(synop.name(), L"DBBH");
}

std::wstring gribLine(const std::wstring& place, const std::wstring& qnh = L"013")
{
    return L"GRIB 01121 00000 " + place + L" 99" + qnh + L" 15055 27010 0000100 15055 27010\n";
}

TEST_F(InitializeTest, GribsAccumulateAndReplaceTheirGridPoint)
{
    EXPECT_TRUE(gribs(gribLine(L"99450 70930") + L"\n" + gribLine(L"99450 70940")));
    EXPECT_EQ(m_store.gribCount(), 2U);
    EXPECT_TRUE(gribs(L"# TIME:2561982400 GFS\n" + gribLine(L"99450 70930", L"020")
                      + gribLine(L"99460 70930")));
    EXPECT_EQ(m_store.gribCount(), 3U);
    Grib grib;
    ASSERT_TRUE(m_store.SearchGrib(aviation::Position(45, -93), grib));
    EXPECT_EQ(grib.qnh(), 1020.0F);
    EXPECT_EQ(grib.time(), 2561982400) << "ten digits exceed 32 bits";
    ASSERT_TRUE(m_store.SearchGrib(aviation::Position(45, -94), grib));
    EXPECT_EQ(grib.time(), 0);
}

TEST_F(InitializeTest, UpperAirHeaderThatTellsAnErrorChangesNothing)
{
    gribs(gribLine(L"99450 70930"));
    EXPECT_FALSE(gribs(L"#Error: no data\n" + gribLine(L"99450 70940")));
    EXPECT_EQ(m_store.gribCount(), 1U);
    EXPECT_EQ(m_store.lines.back(), ListeningStore::Line(L"#Error: no data", 0));
}

TEST_F(InitializeTest, StoresTafsByTheirFirstFourCharacters)
{
    EXPECT_TRUE(tafs(L"xx\nTAF EDDF one two\n\n"
                     L"TAF EDDF 011100Z 0112/0218\n BECMG 0114/0116\r\n\n"
                     L"TAF AMD KDEN 011120Z 0112/0218 18005KT\n\n"
                     L"TAF KD\n\n"
                     L"TAF KMSP 011120Z 0112/0218 18005KT\n"));
    EXPECT_EQ(m_store.tafCount(), 3U) << "too short, and without its empty line";
    EXPECT_EQ(m_store.GetTaf(L"EDDF"), L"EDDF 011100Z 0112/0218 BECMG 0114/0116") << "the later";
    EXPECT_EQ(m_store.GetTaf(L"AMD "), L"AMD KDEN 011120Z 0112/0218 18005KT");
    tafs(L"");
    EXPECT_EQ(m_store.GetTaf(L"EDDF"), L"");
}

TEST_F(InitializeTest, DeletesSynopsByAgeAndValidity)
{
    // Now is the 1st, 12:30. A day above today's is one of the month before.
    std::wstring text;
    for (const wchar_t* dayHour : {L"0112", L"0104", L"0105", L"0106", L"3012", L"//12", L"0111"}) {
        text.append(L"AAXX ").append(dayHour).append(L"4 10637 42960 50000 10210=");
    }
    synops(text);
    EXPECT_EQ(m_store.deleteOldSynops(25200), 4);
    EXPECT_EQ(m_store.synopCount(), 3U);
    EXPECT_EQ(m_store.deleteOldSynops(5400), 1) << "that of 06:00, the limit itself stays";
    EXPECT_EQ(m_store.deleteOldSynops(1799), 2);
}

TEST_F(InitializeTest, TellsHowManySynopsItDeletesAndLeavesTheOthersInPlace)
{
    std::wstring text;
    for (int i = 0; i < 250; ++i) { // every fifth is of the day before
        text += i % 5 == 0 ? L"AAXX 30124 10637 42960=" : L"AAXX 01124 10637 42960=";
    }
    synops(text);
    m_store.steps.clear();
    EXPECT_EQ(m_store.deleteOldSynops(25200), 50);
    EXPECT_EQ(m_store.steps,
              (Names{L"check of additional weather data 100 from 250, deleted: 20",
                     L"check of additional weather data 200 from 250, deleted: 40"}));
    EXPECT_EQ(m_store.deleteOldSynops(25200), 0);
    Synop synop;
    EXPECT_TRUE(m_store.SearchSynop(aviation::Position(50, 8), synop));
    EXPECT_EQ(synop.timeGroup(), L"011200Z");
}

TEST(SynopManagerTest, TakesOutWhatTheFullDecoderRefuses)
{
    const FakeClock clock(2019, 7, 1, 12, 30);
    SynopManager synops;
    for (const wchar_t* number : {L"10637", L"1063/"}) { // the header step alone takes slashes
        for (const bool isHeaderRead : {false, true}) {
            Synop synop(std::wstring(L"AAXX 01124 ") + number + L" 42960");
            synop.setPosition(aviation::Position(50, 8));
            if (isHeaderRead) {
                EXPECT_EQ(synop.DecodeHeader(), synopstatus::kDecoded);
            }
            synops.add(std::move(synop));
        }
    }
    EXPECT_EQ(synops.takeOld(clock.nowSeconds(), 25200, {}).size(), 2U);
    EXPECT_EQ(synops.synops().at(1).icao(), L"10637");
}

} // namespace

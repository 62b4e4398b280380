#include "app/cycle/ReportChoice.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

using aviation::Position;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

const Position kAircraft(50.0, 8.0);

/// A METAR of noon, or a SYNOP, so many NM north of the aircraft.
Metar metarAt(double northNm, const wchar_t* time = L"011150Z")
{
    Metar metar(L"EDDF " + std::wstring(time) + L" 24012KT 9999 FEW030 22/12 Q1015");
    metar.Decode();
    metar.setIcao(L"EDDF");
    metar.setPosition(Position(50.0 + northNm / 60.0, 8.0));
    return metar;
}

Synop synopAt(double northNm)
{
    Synop synop(L"AAXX 01121 10637 11458 52406 10221 20121 30024 40150 57005 82130");
    synop.Decode();
    synop.setPosition(Position(50.0 + northNm / 60.0, 8.0));
    return synop;
}

TEST(ReportChoiceTest, TheSynopIsShownWhenItIsNearerOrTheMetarOld)
{
    const FakeClock clock(2019, 7, 1, 12, 10);
    const std::tuple<double, double, const wchar_t*, bool> rows[] = {
        {9.0, 5.0, L"011150Z", false},   {11.0, 5.0, L"011150Z", true},
        {11.0, 12.0, L"011150Z", false}, {5.0, 54.0, L"010550Z", true},
        {101.0, 49.0, L"011150Z", true}, {60.0, 70.0, L"011150Z", false},
        {5.0, 56.0, L"010550Z", false},  {5.0, 300.0, L"010550Z", false},
    };
    for (const auto& [metarNm, synopNm, time, synopShown] : rows) {
        Synop synop = synopAt(synopNm);
        const Metar shown =
            reportchoice::forAircraft(metarAt(metarNm, time), synop, kAircraft, clock.NowUtc());
        EXPECT_EQ(shown.reportText().substr(0, 4) == L"LAND", synopShown)
            << metarNm << ' ' << synopNm;
        if (!synopShown) {
            EXPECT_EQ(shown.visFromSynop(), synopNm < 50.0 ? synop.visibility() : -1);
        }
    }
    Synop none;
    EXPECT_EQ(reportchoice::forAircraft(metarAt(500.0), none, kAircraft, clock.NowUtc()).icao(),
              L"EDDF");
}

TEST(ReportChoiceTest, ARequestShowsTheSynopFirstWhenAnotherStationAnswers)
{
    const std::tuple<const wchar_t*, int, double, std::size_t, bool> rows[] = {
        {L"EDDF", 0, 20.0, 1, true},  {L"EDDF", 0, 60.0, 1, false}, {L"EDFH", 0, 20.0, 2, false},
        {L"EDFH", 8, 20.0, 1, false}, {L"EDFH", 9, 20.0, 2, false},
    };
    for (const auto& [icao, error, synopNm, shown, visibility] : rows) {
        const auto reports = reportchoice::forRequest(metarAt(5.0), synopAt(synopNm), kAircraft,
                                                      {icao, error, L"EDDF 0112/0218"});
        ASSERT_EQ(reports.size(), shown) << error;
        EXPECT_EQ(reports.back().icao(), L"EDDF");
        EXPECT_EQ(reports.back().tafText(), L"EDDF 0112/0218");
        EXPECT_EQ(reports.back().visFromSynop() != -1, visibility) << error;
    }
    EXPECT_EQ(reportchoice::forRequest(metarAt(5.0), Synop(), kAircraft, {L"EDFH", 0, {}}).size(),
              1U);
}

TEST(ReportChoiceTest, WithoutAMetarTheSynopStandsIn)
{
    const Synop synop = synopAt(3.0);
    EXPECT_EQ(reportchoice::metarForRequest(Metar(), synop, 7).latitude(), synop.latitude());
    EXPECT_EQ(reportchoice::metarForRequest(metarAt(1.0), synop, 0).icao(), L"EDDF");
    EXPECT_TRUE(reportchoice::metarForRequest(Metar(), Synop(), 7).reportText().empty());
}

} // namespace

#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <string>

using namespace aviation;
using namespace aviation::weather;

namespace {

TEST(SynopToMetar, Lines)
{
    const FakeClock clock(2023, 1, 21, 13, 20);
    const std::pair<std::wstring, const wchar_t*> rows[] = {
        {L"AAXX 21123 15001 05515 32931 10103 21090 39765 40250 57020 333 83145 81533 91108",
         L"LAND 211200Z 29031G08KT 1000 SCT045 FEW033 10/M09 Q1025 "},
        {L"AAXX 21121 15001 02999 00000 11004 20015", L"LAND 211200Z 00000KT 60KM M00/02 Q1013 "},
        {L"AAXX 21121 15001 02997 80505 10125 20135 40255 333 89000 80515",
         L"LAND 211200Z 05010KT 10KM 000 015 12/14 Q1026 "},
        {L"AAXX 21121 15001 02950 99910 11000 10105",
         L"LAND 211200Z 00019KT 5000 OVC100 -0/00 Q1013 "},
        {L"AAXX 21123 15001 42/01 /2799 00123 11155 21165",
         L"LAND 211200Z 270123KT 0000 M16/M16 Q1013 "},
        {L"BBXX 211212 21123 99607 70455 46/// /1204 10251",
         L"SHIP 211200Z 12004KT 30KM 25/00 Q1013 "},
        {L"OOXX 2112Z 21123 99607 70455 46/// /1204 10251",
         L"MOBI 211200Z 12004KT 30KM 25/00 Q1013 "},
    };
    for (const auto& [report, line] : rows) {
        Synop synop(report);
        EXPECT_EQ(synop.Decode(), 0) << testing::PrintToString(report);
        Metar metar;
        synop.ToMetar(metar);
        EXPECT_EQ(metar.reportText(), line) << testing::PrintToString(report);
    }
}

TEST(SynopToMetar, TheMetarIsDecodedFromItsNewLine)
{
    Synop synop(L"AAXX 21123 10384 02599 52710 10103 21090 40250 333 85060 91125");
    synop.setPosition({52.4, 13.5});
    synop.setName(L"Berlin-Tempelhof");
    synop.setCountry(L"GM");
    synop.setElevation(157);
    EXPECT_EQ(synop.Decode(), 0);
    Metar metar;
    synop.ToMetar(metar);
    EXPECT_EQ(metar.timeGroup(), L"211200");
    EXPECT_EQ(metar.wind().Gust, 25.0F);
    EXPECT_EQ(metar.visibility(), 60000);
    EXPECT_EQ(metar.qnh(), 1025.0F);
    EXPECT_EQ(metar.icao() + metar.name() + metar.country(), L"LANDBerlin-TempelhofGM");
    EXPECT_EQ(metar.elevation(), 157);
    EXPECT_EQ(metar.latitude(), 52.4);
}

TEST(SynopToMetar, NothingOfAnEarlierReportStays)
{
    Metar metar(L"EDDB 201220Z 24005KT 200V280 CAVOK 21/05 Q1030");
    metar.setInfoText(L"note");
    metar.setElevation(1000);
    EXPECT_EQ(metar.Decode(), 0);
    ASSERT_TRUE(metar.isCavok() && metar.hasVariableLimits());

    Synop synop(L"AAXX 21123 10384 02525 52710 10103 21090 40250");
    EXPECT_EQ(synop.Decode(), 0);
    synop.ToMetar(metar);
    EXPECT_EQ(metar.icao(), L"EDDB");
    EXPECT_EQ(metar.infoText(), L"note");
    EXPECT_EQ(metar.reportText(), L"EDDB 211200Z 27010KT 2000 BKN033 10/M09 Q1025 ");
    EXPECT_FALSE(metar.isCavok() || metar.hasVariableLimits());
    ASSERT_EQ(metar.clouds().size(), 1U);
    EXPECT_EQ(metar.clouds().front().altitude, 3300 + 1000); // the elevation before the copy
    EXPECT_EQ(metar.elevation(), 0);
    EXPECT_EQ(metar.time(), synop.time());
}

} // namespace

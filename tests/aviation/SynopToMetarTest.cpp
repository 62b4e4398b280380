#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <string>

using namespace aviation;
using namespace aviation::weather;

namespace {

TEST(SynopToMetarTest, TheMetarIsDecodedFromItsNewLine)
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

TEST(SynopToMetarTest, NothingOfAnEarlierReportStays)
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

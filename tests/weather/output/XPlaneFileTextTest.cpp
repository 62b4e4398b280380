#include "weather/output/XPlaneFileText.h"

#include "tests/support/FakeClock.h"
#include "tests/weather/output/XPlaneFixture.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using namespace aviation::weather;
using namespace xplanetest;

class XPlaneFileText : public ::testing::Test
{
protected:
    XPlaneFileText()
    {
        m_station.setPosition(kAirport);
        m_station.setIcao(L"EDDF");
    }

    /// The text behind "date\nEDDF 011150Z ".
    std::string groups(const Metar& metar, const Synop& synop = {}, const Grib& grib = {})
    {
        const std::string head = "2019/07/01 12:05\nEDDF 011150Z ";
        std::string text;
        XPlaneMetarText(m_station, metar, synop, grib, text, m_here.context);
        EXPECT_EQ(text.substr(0, head.size()), head);
        return text.substr(head.size());
    }

    FakeClock m_clock{2019, 7, 1, 12, 5, 59};
    Station m_station;
    Surroundings m_here;
};

TEST_F(XPlaneFileText, NearSynopFillsWhatTheMetarLacks)
{
    const Metar calm = DecodedMetar(L"EDDF 011150Z /////KT 9999 05/M02 Q1021");
    struct Row
    {
        double synopNm;
        const char* text;
    };
    const Row rows[] = {
        {10.0, "27012G13KT 350V010 14SM  BKN033 FEW280CI  05/02 Q1021"}, // gust and visibility too
        {60.0, "27012G02KT 350V010 9999  BKN033 FEW280CI  05/02 Q1021"},
        {90.0, " 350V010 9999  BKN033 FEW280CI  05/02 Q1021"},
        {110.0, " 350V010 9999  FEW050 SCT121CI  05/02 Q1021"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(groups(calm, DecodedSynop(row.synopNm)), row.text) << row.synopNm;
    }
}

} // namespace

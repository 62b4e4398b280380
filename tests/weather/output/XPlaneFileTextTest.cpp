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
    std::string winds(const Grib& grib) const
    {
        std::string text;
        XPlaneWindsText(m_station, {}, {}, grib, text);
        return text;
    }

    FakeClock m_clock{2019, 7, 1, 12, 5, 59};
    Station m_station;
    Surroundings m_here;
};

TEST_F(XPlaneFileText, WritesTheReportWithItsSeparators)
{
    const Metar rain =
        DecodedMetar(L"EDDF 011150Z 27012G22KT 240V300 4500 -RA BR BKN014 OVC030CB M02/M11 Q0998");
    EXPECT_EQ(groups(rain),
              "27012G22KT 240V300 4500 RA BR  BKN014 OVC030CB SCT121CI  M02/M11 Q0998");
    ASSERT_EQ(m_here.log.size(), 3U);
    EXPECT_EQ(m_here.log[0].first, "Airport: EDDF");
    EXPECT_EQ(m_here.log[1].first,
              "Metar: " + QString::fromStdWString(rain.reportText()).toStdString());
    EXPECT_EQ(m_here.log[2].first, "Synop: ");
}

TEST_F(XPlaneFileText, CavokLeavesWeatherCloudsAndTemperaturesOut)
{
    EXPECT_EQ(groups(DecodedMetar(L"EDDF 011150Z 36005KT CAVOK 15/10 Q1013")),
              "36005G07KT 350V010 CAVOK   / Q1013");
}

TEST_F(XPlaneFileText, MissingGroupsKeepTheirBlanks)
{
    m_here.context.options.generateCirrus = false;
    EXPECT_EQ(groups(DecodedMetar(L"EDDF 011150Z /////KT 9999 15/10 Q1013")),
              " 350V010 9999  FEW050  15/10 Q1013");
    m_here.context.options.cavokCover = 0;
    EXPECT_EQ(groups(DecodedMetar(L"EDDF 011150Z /////KT 9999 15/10 Q1013")),
              " 350V010 9999   15/10 Q1013");
}

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
    // Wind of a SYNOP that has none isn't made up.
    EXPECT_EQ(groups(calm, DecodedSynop(10.0, L"AAXX 01123 10637 11575 7////")).substr(0, 9),
              " 350V010 ");
}

TEST_F(XPlaneFileText, SynopVisibilityCountsWhenItIsTheNearerOne)
{
    struct Row
    {
        const wchar_t* visibility;
        double metarNm;
        double synopNm;
        const char* group;
    };
    const Row rows[] = {
        {L"9999", 60.0, 50.0, " 14SM "}, {L"9999", 50.0, 60.0, " 9999 "},
        {L"9999", 5.0, 19.0, " 14SM "},  {L"9999", 120.0, 101.0, " 9999 "},
        {L"8000", 60.0, 10.0, " 8000 "}, {L"15KM", 0.0, 200.0, " 9999 "},
        {L"0050", 60.0, 10.0, " 0050 "},
    };
    for (const Row& row : rows) {
        const std::wstring text =
            std::wstring(L"EDDF 011150Z 27012KT ") + row.visibility + L" FEW030 15/10 Q1013";
        EXPECT_EQ(groups(DecodedMetar(text, row.metarNm), DecodedSynop(row.synopNm)).substr(18, 6),
                  row.group)
            << row.metarNm << " " << row.synopNm;
    }
}

TEST_F(XPlaneFileText, GustIsAlwaysWritten)
{
    struct Row
    {
        Wind wind;
        double synopNm;
        const char* group;
    };
    const Row rows[] = {
        {{270.0F, 12.0F, 22.9F, 0.0F}, 25.0, "27012G22KT"},
        {{5.0F, 3.0F, 0.9F, 0.0F}, 25.0, "00503G05KT"},
        {{270.0F, 20.0F, 22.0F, 0.0F},
         10.0,
         "27020G33KT"}, // the SYNOP blows 13 knots above its mean
    };
    for (const Row& row : rows) {
        Metar metar = DecodedMetar(L"EDDF 011150Z 27012KT 9999 FEW030 15/10 Q1013");
        metar.setWind(row.wind);
        EXPECT_EQ(groups(metar, DecodedSynop(row.synopNm)).substr(0, 10), row.group);
    }
}

TEST_F(XPlaneFileText, HighCloudsComeFromSynopOrUpperAir)
{
    const Metar metar = DecodedMetar(L"EDDF 011150Z 27012KT 8000 FEW030 15/10 Q1013");
    const auto clouds = [&](const Synop& synop, const Grib& grib) {
        return groups(metar, synop, grib).substr(25);
    };
    EXPECT_EQ(clouds({}, DecodedGrib(L"H6100")), "FEW030 BKN180 SCT121CI  15/10 Q1013");
    EXPECT_EQ(clouds(DecodedSynop(10.0), DecodedGrib(L"H6100")), "FEW030 FEW280CI  15/10 Q1013");
    // Only the code of the high clouds: total cover at the usual height.
    EXPECT_EQ(clouds(DecodedSynop(10.0, L"AAXX 01123 10637 11575 32712 82001"), {}),
              "FEW030 SCT300CI  15/10 Q1013");
    EXPECT_EQ(groups(DecodedMetar(L"EDDF 011150Z 27012KT 8000 FEW010 FEW020 FEW030 15/10 Q1013"),
                     DecodedSynop(10.0), DecodedGrib(L"H6100"))
                  .substr(25),
              "FEW010 FEW020 FEW030  15/10 Q1013");
}

TEST_F(XPlaneFileText, DewPointTakesTheSignOfTheTemperature)
{
    struct Row
    {
        float temperature;
        float dewPoint;
        const char* tail;
    };
    for (const Row& row : {Row{5.0F, -2.0F, " 05/02 Q"}, Row{-1.0F, 1.0F, " M01/M01 Q"},
                           Row{-0.5F, -7.9F, " M00/M07 Q"}, Row{0.0F, 0.0F, " 00/00 Q"}})
    {
        Metar metar = DecodedMetar(L"EDDF 011150Z 27012KT 8000 FEW030 15/10 Q0998");
        metar.setTemperature(row.temperature);
        metar.setDewPoint(row.dewPoint);
        EXPECT_NE(groups(metar).find(row.tail + std::string("0998")), std::string::npos);
    }
}

TEST_F(XPlaneFileText, WindsAtNineHeights)
{
    EXPECT_EQ(winds(DecodedGrib()), "DEG 50 8.5 2720 2825+05 2825+05 2935-03 2935-03 3050-21 "
                                    "3050-21 318045 318045");
    m_station.setPosition({-12.3456789, 0.00002});
    EXPECT_EQ(winds(Grib()), "DEG -12.3457 0 0000 0000-99 0000-99 0000-99 0000-99 0000-99 0000-99 "
                             "000099 000099");
}

} // namespace

#include "weather/output/ObservationString.h"

#include "tests/weather/output/CompositionFixture.h"

using aviation::weather::Metar;

namespace {

class ObservationStringTest : public CompositionTest
{
protected:
    /// A record with one wind, one temperature layer and no cloud.
    static NewWeather Plain()
    {
        NewWeather record;
        record.Wind[0].Dir = 49152;
        record.Wind[0].Speed = 9;
        record.Wind[0].UpperAlt = 210;
        record.Vis = {609, -500, 622, 0};
        record.Temp[0] = {120, 3, 0, -3};
        record.nTempCtr = 1;
        record.nWindCtr = 1;
        return record;
    }
    static std::string TextOf(const NewWeather& record,
                              const std::string& report = "EDDF 011220Z 27009KT 9999 15/08 Q1013",
                              int elevation = 0)
    {
        return MetarString(MetarOf(report, elevation), {}, {}, record);
    }
};

TEST_F(ObservationStringTest, joinsAllGroups)
{
    EXPECT_EQ(TextOf(Plain()), "EDDF 011220Z 27009KT&D210&NG 9902M&B-500&D1109 "
                               "03/-03&A00120 Q1013 @@@ ");
}

TEST_F(ObservationStringTest, marksTheWindWithGustByOneSignLess)
{
    struct Row
    {
        int gust;
        int turbulence;
        const char* group;
    };
    for (const Row& row : {Row{0, 0, "27009KT&D210&NG "}, Row{0, 4, "27009KT&D210&SG "},
                           Row{0, 5, "27009KT&D210&G "}, Row{5, 1, "27009G14KT&D210LG "},
                           Row{91, 2, "27009G100KT&D210MG "}, Row{5, 3, "27009G14KT&D210HG "}})
    {
        NewWeather record = Plain();
        record.Wind[0].Gust = static_cast<std::uint16_t>(row.gust);
        record.Wind[0].Turbulence = static_cast<std::uint8_t>(row.turbulence);
        EXPECT_EQ(TextOf(record).substr(13, std::string(row.group).size()), row.group);
    }
}

TEST_F(ObservationStringTest, spreadsTheVariableSectorAroundTheDirection)
{
    struct Row
    {
        int direction; ///< steps
        int variance;  ///< steps
        const char* sector;
    };
    for (const Row& row : {Row{49152, 3640, " 260V279 "}, // 270 and 9.5 degrees to each side
                           Row{0, 3640, " 351V009 "},     // cut towards zero, then folded
                           Row{65535, 3641, " 349V009 "}, // 359 and 10
                           Row{49152, 32768, " 180V000 "}, Row{182, 65353, " 181V179 "}})
    {
        NewWeather record = Plain();
        record.Wind[0].Dir = static_cast<std::uint16_t>(row.direction);
        record.Wind[0].Variance = static_cast<std::uint16_t>(row.variance);
        EXPECT_EQ(TextOf(record).substr(28, 9), row.sector);
    }
}

TEST_F(ObservationStringTest, changesToKilometresAboveTenThousandMetres)
{
    struct Row
    {
        int range;
        int lower;
        int upper;
        const char* group;
    };
    for (const Row& row :
         {Row{622, -500, 609, "9902M&B-500&D1109 "}, Row{628, 0, 0, "9998M&B0000&D0000 "},
          Row{629, 610, 732, "10KM&B0610&D0122 "}, Row{6250, 0, 5, "100KM&B0000&D0005 "},
          Row{6214, 0, 5, "99KM&B0000&D0005 "}, Row{65535, -3, 12000, "1043KM&B-003&D12003 "},
          Row{3, 0, 1, "0048M&B0000&D0001 "}, Row{0, 0, 1, "0000M&B0000&D0001 "}})
    {
        NewWeather record = Plain();
        record.nUpperVisCtr = 1;
        record.UpperVis[0] = {static_cast<std::uint16_t>(row.upper),
                              static_cast<std::int16_t>(row.lower),
                              static_cast<std::uint16_t>(row.range), 0};
        EXPECT_NE(TextOf(record).find("&D1109 " + std::string(row.group) + "03/"),
                  std::string::npos)
            << TextOf(record);
    }
}

TEST_F(ObservationStringTest, cleansThePresentWeather)
{
    const std::pair<const char*, const char*> rows[] = {
        {"-RA", "RERA "},
        {"-SHRA", "SHRERA "},
        {"+TSRA BR", "TSRERABR "},
        {"BCFG", "FG "},
        {"NSC", ""},
        {"BCFG RA SN", "FGRERASN "},
        {"/ABC", ""},
        {"", ""},
    };
    for (const auto& [weather, group] : rows) {
        const std::string text =
            TextOf(Plain(), "EDDF 011220Z 27009KT 9999 " + std::string(weather) + " 15/08 Q1013");
        EXPECT_NE(text.find("&D1109 " + std::string(group) + "03/"), std::string::npos) << text;
    }
}

TEST_F(ObservationStringTest, repeatsCavok)
{
    const std::string text = TextOf(Plain(), "EDDF 011220Z 27009KT CAVOK 15/08 Q1013");
    EXPECT_EQ(text.substr(0, 41), "EDDF 011220Z 27009KT&D210&NG CAVOK 9902M&");
}

TEST_F(ObservationStringTest, describesCloudLayers)
{
    struct Row
    {
        CloudLayer layer;
        const char* group;
    };
    // upper, lower, dev, cover, type, turbulence, icing, base, kind, rate, shape of the top
    const Row rows[] = {
        {{1415, 1026, 0, 7, 9, 1, 0, 111, 0, 0, 0, 0}, "7CU030&CU000FLNV111N "},
        {{1415, 1026, 0, 8, 10, 3, 2, -5, 1, 3, 2, 0}, "8CB030&CB000AHRM-05L "},
        {{9500, 9144, 0, 1, 1, 0, 0, 1, 2, 5, 1, 0}, "1CI296&CI000RNSD001N "},
        {{500, 10, 0, 8, 8, 2, 1, 1, 1, 2, 0, 0}, "8ST-03&ST000FMRL001T "},
        {{1415, 1026, 0, 7, 4, 9, 9, 1, 9, 9, 9, 0}, "7030&000001 "},
        {{1415, 1026, 0, 0, 9, 1, 0, 111, 0, 0, 0, 0}, ""},
    };
    for (const Row& row : rows) {
        NewWeather record = Plain();
        record.nCloudCtr = 1;
        record.Cloud[0] = row.layer;
        const std::string text = TextOf(record, "EDDF 011220Z 27009KT 9999 15/08 Q1013", 364);
        EXPECT_NE(text.find("&D1109 " + std::string(row.group) + "03/"), std::string::npos) << text;
    }
}

TEST_F(ObservationStringTest, writesTemperaturesAndPressure)
{
    NewWeather record = Plain();
    record.nTempCtr = 3;
    record.Temp[0] = {10, -3, 0, -12};
    record.Temp[1] = {210, 0, 0, 5};
    record.Temp[2] = {12000, -100, 0, 100};
    EXPECT_NE(TextOf(record, "EDDF 011220Z 27009KT 9999 15/08 A2953")
                  .find(" -03/-12&A00010 00/05&A00210 -100/100&A12000 Q1000 @@@ "),
              std::string::npos);
    EXPECT_NE(TextOf(record, "EDDF 011220Z 27009KT 9999 15/08 Q0987").find(" Q0987 "),
              std::string::npos);
}

TEST_F(ObservationStringTest, listsTheWindsAloft)
{
    NewWeather record = Plain();
    const auto aloft = [&record](int winds, int temperatures) {
        record.nWindCtr = winds;
        record.nTempCtr = temperatures;
        const std::string text = TextOf(record);
        return text.substr(text.find("@@@") + 3);
    };
    record.Wind[1] = {410, 11, 5, 51882, 0, 0, 0, 0, 0};
    record.Wind[2] = {9144, 85, 0, 0, 0, 0, 0, 0, 0};
    record.Temp[1].Day = 2;
    record.Temp[2].Day = -44;
    EXPECT_EQ(aloft(1, 3), " ");
    EXPECT_EQ(aloft(2, 3), " 13 2 284 11");
    EXPECT_EQ(aloft(3, 3), " 13 2 284 11 | 300 -44 0 85");
    EXPECT_EQ(aloft(3, 2), " 13 2 284 11");
    EXPECT_EQ(aloft(-5, 1000), " ");
    const std::string all = aloft(1000, 1000);
    EXPECT_EQ(std::count(all.begin(), all.end(), '|'), 22);
}

TEST_F(ObservationStringTest, rewritesAComposedReport)
{
    options.generateCirrus = false;
    const Metar metar = MetarOf("EDDF 011220Z 24012G25KT 3000 -RA BKN012 08/07 Q0998", 364);
    EXPECT_EQ(MetarString(metar, {}, {}, Compose(metar)),
              "EDDF 011220Z 23912G25KT&D210LG 229V248 2977M&B-500&D1000 5922M&B0501&D0144 "
              "35KM&B0645&D0144 63KM&B0789&D0144 99KM&B0933&D0144 99KM&B1077&D0144 RERA "
              "7CU012&CU000FMRV111N 08/07&A00120 07/06&A00320 Q0998 @@@ 13 7 254 14");
}

TEST_F(ObservationStringTest, trimsTheStation)
{
    Metar metar = MetarOf("EDDF 011220Z 27009KT 9999 15/08 Q1013");
    metar.setIcao(L" 00C ");
    EXPECT_EQ(MetarString(metar, {}, {}, Plain()).substr(0, 12), "00C 011220Z ");
    EXPECT_EQ(MetarString(Metar(), {}, {}, Plain()).substr(0, 9), " Z 27009K");
}

TEST(RelabelObservationTest, replacesFourCharactersByAnotherName)
{
    struct Row
    {
        const char* text;
        const wchar_t* icao;
        const char* result;
    };
    for (const Row& row :
         {Row{"EDDF 011220Z", L"EDDF", "EDDF 011220Z"},
          Row{"EDDF 011220Z", L"GLOB", "GLOB 011220Z"}, Row{"00C 011220Z", L"00C ", "00C 011220Z"},
          Row{"00C 011220Z", L"00C", "00C011220Z"}, Row{"ABC", L"GLOB", "GLOB"},
          Row{"", L"GLOB", "GLOB"}})
    {
        std::string text = row.text;
        RelabelObservation(text, row.icao);
        EXPECT_EQ(text, row.result);
    }
}

} // namespace

#include "tests/weather/output/CompositionFixture.h"

#include <algorithm>

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;
using aviation::weather::Wind;

namespace {

std::uint16_t Steps(int degrees)
{
    return static_cast<std::uint16_t>(degrees * 65536 / 360);
}

std::string Report(const std::string& wind)
{
    return "EDDF 011220Z " + wind + " 9999 FEW030 15/08 Q1013";
}

class CompositionWindTest : public CompositionTest
{
protected:
    NewWeather WindsOf(const Metar& metar, const Synop& synop = {}, const Grib& grib = {},
                       double magneticVariation = 0.0)
    {
        NewWeather record;
        composition::SetWindAndTemperature(metar, synop, grib, record, magneticVariation, options);
        return record;
    }
};

TEST_F(CompositionWindTest, takesTheSurfaceWindFromTheFirstReportThatHasOne)
{
    struct Row
    {
        const char* what;
        const char* metarWind;
        const char* synopWind;
        double synopNm;
        const char* gribWind;
        int direction;
        int speed;
    };
    const Row rows[] = {
        {"METAR", "27010KT", "/0909", 5, "18007", 270, 10},
        {"variable METAR with a speed", "VRB03KT", "/0909", 5, "18007", 0, 3},
        {"METAR with direction only", "27000KT", "/0909", 5, "18007", 270, 0},
        {"calm: near SYNOP", "00000KT", "/0909", 19, "18007", 90, 9},
        {"unreadable: near SYNOP", "/////KT", "/0909", 19, "18007", 90, 9},
        {"SYNOP too far: model", "00000KT", "/0909", 21, "18007", 180, 7},
        {"SYNOP calm too: model", "00000KT", "/0000", 5, "18007", 180, 7},
        {"all calm", "00000KT", "/0000", 5, "00000", 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Synop synop =
            SynopOf(std::string("AAXX 01123 10637 46/// ") + row.synopWind, North(row.synopNm));
        const NewWeather record =
            WindsOf(MetarOf(Report(row.metarWind)), synop, GribOf({}, row.gribWind));
        EXPECT_EQ(record.Wind[0].Dir, Steps(row.direction));
        EXPECT_EQ(record.Wind[0].Speed, row.speed);
        EXPECT_EQ(record.Wind[1].Speed, row.speed + 2);
    }
}

TEST_F(CompositionWindTest, treatsAModelWindOfMinusOneAsCalm)
{
    Grib grib;
    grib.setWind({200.0F, -1.0F, -1.0F, 0.0F});
    const NewWeather record = WindsOf(MetarOf(Report("00000KT")), {}, grib);
    EXPECT_EQ(record.Wind[0].Dir, 0);
    EXPECT_EQ(record.Wind[0].Speed, 0);
}

TEST_F(CompositionWindTest, addsTheVariationToTheSurfaceOnlyAndWraps)
{
    const Grib grib = GribOf({{85, 1500, "15050", "27010"}});
    const NewWeather east = WindsOf(MetarOf(Report("27010KT")), {}, grib, 3.0);
    EXPECT_EQ(east.Wind[0].Dir, 49698);
    EXPECT_EQ(east.Wind[1].Dir, 52428); // 270 + 15 + 3
    EXPECT_EQ(east.Wind[2].Dir, 49152);
    const NewWeather west = WindsOf(MetarOf(Report("00103KT")), {}, grib, -11.5);
    EXPECT_EQ(west.Wind[0].Dir, 65536 - 1911); // -10.5 degrees
    EXPECT_EQ(WindsOf(MetarOf(Report("36005KT"))).Wind[0].Dir, 0);
}

TEST_F(CompositionWindTest, turnsTheSecondLayerFromTheDirectionOfTheMetarItself)
{
    EXPECT_EQ(WindsOf(MetarOf(Report("35010KT"))).Wind[1].Dir, Steps(5));
    // the surface wind comes from the model, the turn starts from the calm METAR
    const NewWeather record = WindsOf(MetarOf(Report("00000KT")), {}, GribOf({}, "18007"));
    EXPECT_EQ(record.Wind[0].Dir, Steps(180));
    EXPECT_EQ(record.Wind[1].Dir, Steps(15));
}

TEST_F(CompositionWindTest, derivesTurbulenceFromTheSpeed)
{
    const std::pair<const char*, int> rows[] = {
        {"27005KT", 0}, {"27009KT", 0}, {"27010KT", 1}, {"27012KT", 1},
        {"27014KT", 1}, {"27015KT", 2}, {"27019KT", 2}, {"27020KT", 3},
        {"27024KT", 3}, {"27025KT", 4}, {"27030KT", 4},
    };
    for (const auto& [wind, turbulence] : rows) {
        SCOPED_TRACE(wind);
        options.gustySurfaceWind = true;
        options.directWindControl = true;
        EXPECT_EQ(WindsOf(MetarOf(Report(wind))).Wind[0].Turbulence, turbulence);
        options.gustySurfaceWind = false;
        EXPECT_EQ(WindsOf(MetarOf(Report(wind))).Wind[0].Turbulence, 0);
        options.directWindControl = false;
        EXPECT_EQ(WindsOf(MetarOf(Report(wind))).Wind[0].Turbulence, turbulence);
    }
}

TEST_F(CompositionWindTest, makesGustAndVarianceByReportAndOption)
{
    struct Row
    {
        const char* wind;
        bool gusty;
        int gust;
        int variance;
    };
    const Row rows[] = {
        {"27010KT", true, 5, 3640},
        {"27010KT", false, 0, 0},
        {"27010G22KT", true, 12, 3640},
        {"27010G22KT", false, 0, 0},
        {"27010G15MPS", true, 10, 3640}, // 29.2 - 19 knots
        {"00000G08KT", true, 1, 3640},   // over the 7 knots of the model
        {"36008KT 350V010", true, 5, 3640},
        {"36008KT 350V010", false, 0, 3640},
        {"18008KT 170V190", true, 5, 3640},
        {"18008KT 090V270", true, 5, 32768},
        {"18008KT 270V090", true, 5, 32768},
        {"36008KT 010V350", true, 5, 61895}, // only the larger limit first folds at north
        {"18008KT 180V180", true, 5, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.wind);
        options.gustySurfaceWind = row.gusty;
        const NewWeather record = WindsOf(MetarOf(Report(row.wind)), {}, GribOf({}, "18007"));
        EXPECT_EQ(record.Wind[0].Gust, row.gust);
        EXPECT_EQ(record.Wind[0].Variance, row.variance);
        EXPECT_EQ(record.Wind[1].Gust, row.gust);
        EXPECT_EQ(record.Wind[1].Variance, row.variance);
    }
}

TEST_F(CompositionWindTest, opensTheWholeCircleForADirectionOfMinusOne)
{
    Metar metar = MetarOf(Report("27010KT"));
    metar.setWind({-1.0F, 5.0F, 0.0F, 0.0F});
    const NewWeather record = WindsOf(metar);
    EXPECT_EQ(record.Wind[0].Dir, 182);
    EXPECT_EQ(record.Wind[0].Variance, 65353);
    EXPECT_EQ(record.Wind[1].Dir, Steps(14));
}

TEST_F(CompositionWindTest, putsTheSurfaceLayersOnTopOfTheStation)
{
    struct Row
    {
        int elevation;
        int metres;
    };
    for (const Row& row : {Row{0, 0}, Row{364, 110}, Row{-1, 0}, Row{-3, 0}, Row{-4, 200},
                           Row{-1266, 200}, Row{14472, 4411}})
    {
        SCOPED_TRACE(row.elevation);
        const NewWeather record = WindsOf(MetarOf(Report("27010KT"), row.elevation));
        EXPECT_EQ(record.Wind[0].UpperAlt, row.metres + 100);
        EXPECT_EQ(record.Wind[1].UpperAlt, row.metres + 300);
        EXPECT_EQ(record.Temp[0].Alt, row.metres + 10);
        EXPECT_EQ(record.Temp[1].Alt, row.metres + 210);
        for (const int layer : {0, 1}) {
            EXPECT_EQ(record.Wind[layer].SpeedFract, 65000);
            EXPECT_EQ(record.Wind[layer].CapAbove, 500);
            EXPECT_EQ(record.Wind[layer].Shear, 0);
        }
        EXPECT_EQ(record.nWindCtr, 2);
        EXPECT_EQ(record.nTempCtr, 2);
    }
}

TEST_F(CompositionWindTest, truncatesTemperaturesTowardsZero)
{
    Metar metar = MetarOf(Report("27010KT"));
    metar.setTemperature(-0.6F);
    metar.setDewPoint(-2.4F);
    const NewWeather record = WindsOf(metar);
    EXPECT_EQ(record.Temp[0].Day, 0);
    EXPECT_EQ(record.Temp[0].Dew, -2);
    EXPECT_EQ(record.Temp[1].Day, -1);
    EXPECT_EQ(record.Temp[1].Dew, -3);
}

TEST_F(CompositionWindTest, makesALayerOfEachLevelAThousandFeetAboveTheStation)
{
    // 305 metres are 1000.6 feet
    const Grib grib = GribOf(
        {{0, 305, "15050", "10011"}, {85, 1500, "03355", "36030"}, {50, 5600, "21560", "725120"}});
    const NewWeather low = WindsOf(MetarOf(Report("27010KT"), 0), {}, grib);
    EXPECT_EQ(low.nWindCtr, 5);
    EXPECT_EQ(low.nTempCtr, 5);
    EXPECT_EQ(low.Wind[2].UpperAlt, 304);
    EXPECT_EQ(low.Wind[2].Speed, 11);
    EXPECT_EQ(low.Wind[2].Dir, Steps(100));
    EXPECT_EQ(low.Wind[2].CapAbove, 0);
    EXPECT_EQ(low.Wind[3].Dir, 0); // 360 degrees wrap
    EXPECT_EQ(low.Wind[4].Dir, Steps(5));
    EXPECT_EQ(low.Wind[4].Speed, 220);
    EXPECT_EQ(low.Temp[3].Alt, low.Wind[3].UpperAlt);
    EXPECT_EQ(low.Temp[3].Day, -3);
    EXPECT_EQ(low.Temp[3].Dew, -8);
    EXPECT_EQ(low.Temp[3].DayNightVar, 0);

    EXPECT_EQ(WindsOf(MetarOf(Report("27010KT"), 1), {}, grib).nWindCtr, 4);
    EXPECT_EQ(WindsOf(MetarOf(Report("27010KT"), 20000), {}, grib).nWindCtr, 2);
}

TEST_F(CompositionWindTest, thinsOutTheLowerLevelsForThemeFiles)
{
    std::vector<Level> levels;
    for (int i = 0; i < 14; ++i) {
        levels.push_back({76 - i, 1000 + i * 500, "15050", "27010"});
    }
    options.weatherMode = 1;
    const NewWeather record = WindsOf(MetarOf(Report("27010KT")), {}, GribOf(levels));
    EXPECT_EQ(record.nWindCtr, 2 + 5 + 4);
    std::vector<int> heights;
    for (int i = 2; i < record.nWindCtr; ++i) {
        heights.push_back((record.Wind[static_cast<std::size_t>(i)].UpperAlt + 5) / 10 * 10);
    }
    EXPECT_EQ(heights, (std::vector<int>{1000, 2000, 3000, 4000, 5000, 6000, 6500, 7000, 7500}));
}

TEST_F(CompositionWindTest, staysInsideTheRecordWithThousandsOfLevels)
{
    const std::vector<Level> levels(5000, Level{50, 5500, "15050", "27010"});
    const Grib grib = GribOf(levels);
    ASSERT_EQ(grib.levels().size(), levels.size());
    NewWeather record = WindsOf(MetarOf(Report("27010KT")), {}, grib);
    EXPECT_EQ(record.nWindCtr, 24);
    EXPECT_EQ(record.nTempCtr, 24);
    EXPECT_EQ(record.Wind[23].Speed, 10);
    EXPECT_EQ(record.nCloudCtr, 0);
}

} // namespace

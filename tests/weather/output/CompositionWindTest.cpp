#include "tests/weather/output/CompositionFixture.h"

#include <algorithm>

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;
using aviation::weather::Wind;

namespace {

std::uint16_t steps(int degrees)
{
    return static_cast<std::uint16_t>(degrees * 65536 / 360);
}

std::string reportWith(const std::string& wind)
{
    return "EDDF 011220Z " + wind + " 9999 FEW030 15/08 Q1013";
}

class CompositionWindTest : public CompositionTest
{
protected:
    NewWeather windsOf(const Metar& metar, const Synop& synop = {}, const Grib& grib = {},
                       double magneticVariation = 0.0)
    {
        NewWeather record;
        composition::SetWindAndTemperature(metar, synop, grib, record, magneticVariation, options);
        return record;
    }
};

TEST_F(CompositionWindTest, TakesTheSurfaceWindFromTheFirstReportThatHasOne)
{
    struct Row
    {
        const char* metarWind;
        const char* synopWind;
        double synopNm;
        const char* gribWind;
        int direction;
        int speed;
    };
    const Row rows[] = {
        {"27010KT", "/0909", 5, "18007", 270, 10}, {"VRB03KT", "/0909", 5, "18007", 0, 3},
        {"27000KT", "/0909", 5, "18007", 270, 0}, // a direction is enough
        {"00000KT", "/0909", 19, "18007", 90, 9},  {"/////KT", "/0909", 19, "18007", 90, 9},
        {"00000KT", "/0909", 21, "18007", 180, 7}, // SYNOP too far
        {"00000KT", "/0000", 5, "18007", 180, 7},  {"00000KT", "/0000", 5, "00000", 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.metarWind << row.synopWind << row.synopNm);
        const Synop synop =
            synopOf(std::string("AAXX 01123 10637 46/// ") + row.synopWind, north(row.synopNm));
        const NewWeather record =
            windsOf(metarOf(reportWith(row.metarWind)), synop, gribOf({}, row.gribWind));
        EXPECT_EQ(record.Wind[0].Dir, steps(row.direction));
        EXPECT_EQ(record.Wind[0].Speed, row.speed);
        EXPECT_EQ(record.Wind[1].Speed, row.speed + 2);
    }
    Grib grib;
    grib.setWind({200.0F, -1.0F, -1.0F, 0.0F}); // calm too
    const NewWeather record = windsOf(metarOf(reportWith("00000KT")), {}, grib);
    EXPECT_EQ(record.Wind[0].Dir, 0);
    EXPECT_EQ(record.Wind[0].Speed, 0);
}

TEST_F(CompositionWindTest, AddsTheVariationToTheSurfaceOnlyAndWraps)
{
    const Grib grib = gribOf({{85, 1500, "15050", "27010"}});
    const NewWeather east = windsOf(metarOf(reportWith("27010KT")), {}, grib, 3.0);
    EXPECT_EQ(east.Wind[0].Dir, 49698);
    EXPECT_EQ(east.Wind[1].Dir, 52428); // 270 + 15 + 3
    EXPECT_EQ(east.Wind[2].Dir, 49152);
    const NewWeather west = windsOf(metarOf(reportWith("00103KT")), {}, grib, -11.5);
    EXPECT_EQ(west.Wind[0].Dir, 65536 - 1911); // -10.5 degrees
    EXPECT_EQ(windsOf(metarOf(reportWith("36005KT"))).Wind[0].Dir, 0);
}

TEST_F(CompositionWindTest, TurnsTheSecondLayerFromTheDirectionOfTheMetarItself)
{
    EXPECT_EQ(windsOf(metarOf(reportWith("35010KT"))).Wind[1].Dir, steps(5));
    // the surface wind comes from the model, the turn starts from the calm METAR
    const NewWeather record = windsOf(metarOf(reportWith("00000KT")), {}, gribOf({}, "18007"));
    EXPECT_EQ(record.Wind[0].Dir, steps(180));
    EXPECT_EQ(record.Wind[1].Dir, steps(15));
}

TEST_F(CompositionWindTest, DerivesTurbulenceFromTheSpeed)
{
    const std::pair<const char*, int> rows[] = {{"27009KT", 0}, {"27010KT", 1}, {"27014KT", 1},
                                                {"27015KT", 2}, {"27019KT", 2}, {"27020KT", 3},
                                                {"27024KT", 3}, {"27025KT", 4}};
    for (const auto& [wind, turbulence] : rows) {
        for (const auto& [gusty, direct] : {std::pair(true, true), {false, true}, {false, false}}) {
            options.gustySurfaceWind = gusty;
            options.directWindControl = direct;
            EXPECT_EQ(windsOf(metarOf(reportWith(wind))).Wind[0].Turbulence,
                      gusty || !direct ? turbulence : 0)
                << wind << gusty << direct;
        }
    }
}

TEST_F(CompositionWindTest, MakesGustAndVarianceByReportAndOption)
{
    const std::tuple<const char*, bool, int, int> rows[] = {
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
    for (const auto& [wind, gusty, gust, variance] : rows) {
        options.gustySurfaceWind = gusty;
        const NewWeather record = windsOf(metarOf(reportWith(wind)), {}, gribOf({}, "18007"));
        for (const int layer : {0, 1}) {
            EXPECT_EQ(record.Wind[layer].Gust, gust) << wind;
            EXPECT_EQ(record.Wind[layer].Variance, variance) << wind;
        }
    }
}

TEST_F(CompositionWindTest, OpensTheWholeCircleForADirectionOfMinusOne)
{
    Metar metar = metarOf(reportWith("27010KT"));
    metar.setWind({-1.0F, 5.0F, 0.0F, 0.0F});
    const NewWeather record = windsOf(metar);
    EXPECT_EQ(record.Wind[0].Dir, 182);
    EXPECT_EQ(record.Wind[0].Variance, 65353);
    EXPECT_EQ(record.Wind[1].Dir, steps(14));
}

TEST_F(CompositionWindTest, PutsTheSurfaceLayersOnTopOfTheStation)
{
    const std::pair<int, int> rows[] = {{0, 0},    {364, 110},   {-1, 0},      {-3, 0},
                                        {-4, 200}, {-1266, 200}, {14472, 4411}};
    for (const auto& [elevation, metres] : rows) {
        SCOPED_TRACE(elevation);
        const NewWeather record = windsOf(metarOf(reportWith("27010KT"), elevation));
        EXPECT_EQ(record.Wind[0].UpperAlt, metres + 100);
        EXPECT_EQ(record.Wind[1].UpperAlt, metres + 300);
        EXPECT_EQ(record.Temp[0].Alt, metres + 10);
        EXPECT_EQ(record.Temp[1].Alt, metres + 210);
    }
}

TEST_F(CompositionWindTest, TruncatesTemperaturesTowardsZero)
{
    Metar metar = metarOf(reportWith("27010KT"));
    metar.setTemperature(-0.6F);
    metar.setDewPoint(-2.4F);
    const NewWeather record = windsOf(metar);
    EXPECT_EQ(record.Temp[0].Day, 0);
    EXPECT_EQ(record.Temp[0].Dew, -2);
    EXPECT_EQ(record.Temp[1].Day, -1);
    EXPECT_EQ(record.Temp[1].Dew, -3);
}

TEST_F(CompositionWindTest, MakesALayerOfEachLevelAThousandFeetAboveTheStation)
{
    // 305 metres are 1000.6 feet
    const Grib grib = gribOf(
        {{0, 305, "15050", "10011"}, {85, 1500, "03355", "36030"}, {50, 5600, "21560", "725120"}});
    const NewWeather low = windsOf(metarOf(reportWith("27010KT"), 0), {}, grib);
    EXPECT_EQ(low.nTempCtr, 5);
    EXPECT_EQ(low.Wind[2].UpperAlt, 304);
    EXPECT_EQ(low.Wind[2].Dir, steps(100));
    EXPECT_EQ(low.Wind[3].Dir, 0); // 360 degrees wrap
    EXPECT_EQ(low.Wind[4].Dir, steps(5));
    EXPECT_EQ(low.Wind[4].Speed, 220);
    EXPECT_EQ(low.Temp[3].Alt, low.Wind[3].UpperAlt);
    EXPECT_EQ(low.Temp[3].Day, -3);
    EXPECT_EQ(low.Temp[3].Dew, -8);
    for (const auto& [elevation, layers] : {std::pair(0, 5), std::pair(1, 4), std::pair(20000, 2)})
    {
        EXPECT_EQ(windsOf(metarOf(reportWith("27010KT"), elevation), {}, grib).nWindCtr, layers);
    }
}

TEST_F(CompositionWindTest, ThinsOutTheLowerLevelsForThemeFiles)
{
    std::vector<Level> levels;
    for (int i = 0; i < 14; ++i) {
        levels.push_back({76 - i, 1000 + i * 500, "15050", "27010"});
    }
    options.weatherMode = 1;
    const NewWeather record = windsOf(metarOf(reportWith("27010KT")), {}, gribOf(levels));
    std::vector<int> heights;
    for (int i = 2; i < record.nWindCtr; ++i) {
        heights.push_back((record.Wind[static_cast<std::size_t>(i)].UpperAlt + 5) / 10 * 10);
    }
    EXPECT_EQ(heights, (std::vector<int>{1000, 2000, 3000, 4000, 5000, 6000, 6500, 7000, 7500}));
}

TEST_F(CompositionWindTest, StaysInsideTheRecordWithThousandsOfLevels)
{
    const std::vector<Level> levels(5000, Level{50, 5500, "15050", "27010"});
    const Grib grib = gribOf(levels);
    ASSERT_EQ(grib.levels().size(), levels.size());
    NewWeather record = windsOf(metarOf(reportWith("27010KT")), {}, grib);
    EXPECT_EQ(record.nWindCtr, 24);
    EXPECT_EQ(record.nTempCtr, 24);
    EXPECT_EQ(record.Wind[23].Speed, 10);
    EXPECT_EQ(record.nCloudCtr, 0) << "what lies behind the winds";
}

} // namespace

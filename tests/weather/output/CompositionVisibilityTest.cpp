#include "app/base/LogLevel.h"
#include "tests/weather/output/CompositionFixture.h"

#include <array>

using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

class CompositionVisibilityTest : public CompositionTest
{
protected:
    static Metar MetarWith(int visibility, const std::string& clouds = "", int elevation = 0)
    {
        Metar metar = MetarOf("EDDF 011220Z 27010KT 9999 " + clouds + " 15/08 Q1013", elevation);
        metar.setVisibility(visibility);
        return metar;
    }
    /// Metres that come to so many hundredths of a mile.
    static int MetresFor(int hundredths) { return static_cast<int>(hundredths / 0.0621371); }

    NewWeather VisibilityOf(const Metar& metar, const Synop& synop = {}, int result = 0)
    {
        NewWeather record;
        EXPECT_EQ(composition::SetVisibility(metar, synop, record, context), result);
        return record;
    }
};

TEST_F(CompositionVisibilityTest, snapsTheSurfaceRangeToShownSteps)
{
    const std::array<std::array<int, 2>, 25> rows{
        {{0, 0},       {125, 125},   {199, 199},   {200, 372},   {371, 372},
         {372, 372},   {373, 497},   {496, 497},   {497, 497},   {498, 994},
         {993, 994},   {994, 994},   {995, 2175},  {2174, 2175}, {2175, 2175},
         {2176, 2983}, {2983, 2983}, {2984, 3977}, {3976, 3977}, {3977, 3977},
         {3978, 4971}, {4970, 4971}, {4971, 4971}, {4972, 622},  {65535, 622}}};
    for (const auto& [range, shown] : rows) {
        SCOPED_TRACE(range);
        EXPECT_EQ(VisibilityOf(MetarWith(MetresFor(range))).Vis.Range, shown);
    }
    const std::pair<int, int> metres[] = {
        {2000, 125}, {4000, 372}, {5000, 372}, {1100000, 622}, {-5, 0}};
    for (const auto& [visibility, shown] : metres) {
        SCOPED_TRACE(visibility);
        EXPECT_EQ(VisibilityOf(MetarWith(visibility)).Vis.Range, shown);
    }
}

TEST_F(CompositionVisibilityTest, opensTenKilometresByOptionOrNearSynop)
{
    struct Row
    {
        const char* what;
        int vis9999;
        int visibility;
        const char* synopVisibility; ///< VV
        double synopNm;
        int range;
    };
    const Row rows[] = {
        {"the default ends at the cap", 30000, 9999, "//", 500, 622},
        {"10 km", 10, 9999, "//", 500, 994},
        {"60 km", 60, 9999, "//", 500, 3977},
        {"SYNOP of 20 km", 30000, 9999, "98", 10, 2175},
        {"SYNOP of 60 km", 30000, 9999, "99", 49, 3977},
        {"SYNOP too far", 10, 9999, "99", 51, 994},
        {"SYNOP of 9 km", 10, 9999, "59", 10, 994},
        {"a lower METAR stays", 10, 8000, "99", 10, 497 * 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        options.vis9999 = row.vis9999;
        Synop synop = SynopOf(std::string("AAXX 01123 10637 46/") + row.synopVisibility + " /0909",
                              North(row.synopNm));
        EXPECT_EQ(VisibilityOf(MetarWith(row.visibility), synop).Vis.Range, row.range);
    }
    options.vis9999 = 10;
    Synop none = SynopOf("AAXX 01123 10637 46/99 /0909");
    none.setVisibility(99999); // stands for not known
    EXPECT_EQ(VisibilityOf(MetarWith(9999), none).Vis.Range, 994);
}

TEST_F(CompositionVisibilityTest, liftsToTheLowestVisibility)
{
    options.visMin = 1500;
    EXPECT_EQ(VisibilityOf(MetarWith(100)).Vis.Range, 94);
    EXPECT_EQ(VisibilityOf(MetarWith(2000)).Vis.Range, 125);
}

TEST_F(CompositionVisibilityTest, endsLowHazeAtTheFirstCloud)
{
    struct Row
    {
        const char* clouds;
        int elevation;
        int upper;
    };
    const Row rows[] = {
        {"", 364, 720},                                       // (364 + 2000) feet
        {"FEW060", 364, 720},                                 // too high to matter
        {"FEW059", 364, 1909},  {"FEW030 BKN010", 364, 1025}, // the first one, not the lowest
        {"FEW010", 0, 500},                                   // 304 metres
        {"FEW016", 0, 500},                                   // 487 metres
        {"FEW017", 0, 518},     {"FEW050", 5000, 500},        // 3047 metres
        {"BKN002", -1266, 500},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.clouds);
        const NewWeather record = VisibilityOf(MetarWith(5000, row.clouds, row.elevation));
        EXPECT_EQ(record.Vis.UpperAlt, row.upper);
        EXPECT_EQ(record.Vis.LowerAlt, -500);
    }
}

TEST_F(CompositionVisibilityTest, opensUpInLayersForTheirSimulators)
{
    for (const aviation::FsId simulator : {0, 1, 2, 9, 10, 12, 13}) {
        options.simulator = simulator;
        EXPECT_EQ(VisibilityOf(MetarWith(9999)).nUpperVisCtr, 0) << simulator;
    }
    for (const aviation::FsId simulator : {3, 4, 5, 6, 8}) {
        SCOPED_TRACE(simulator);
        options.simulator = simulator;
        const NewWeather record = VisibilityOf(MetarWith(9999));
        ASSERT_EQ(record.nUpperVisCtr, 5);
        EXPECT_EQ(record.Vis.UpperAlt, 609);
        const std::array<std::array<int, 3>, 5> layers{{{610, 732, 994},
                                                        {732, 854, 2175},
                                                        {854, 976, 3977},
                                                        {976, 1098, 6214},
                                                        {1098, 1220, 6214}}};
        for (std::size_t i = 0; i < layers.size(); ++i) {
            EXPECT_EQ(record.UpperVis[i].LowerAlt, layers[i][0]);
            EXPECT_EQ(record.UpperVis[i].UpperAlt, layers[i][1]);
            EXPECT_EQ(record.UpperVis[i].Range, layers[i][2]);
        }
    }
}

TEST_F(CompositionVisibilityTest, stacksLayersOnTheHazeWithTheThicknessOfTheUncutLayer)
{
    // surface layer to 3352 metres, cut to 500 by the cloud; a fifth of 3352 each
    const NewWeather cut = VisibilityOf(MetarWith(2000, "FEW010", 9000));
    EXPECT_EQ(cut.Vis.UpperAlt, 500);
    ASSERT_EQ(cut.nUpperVisCtr, 5);
    EXPECT_EQ(cut.UpperVis[0].LowerAlt, 501);
    EXPECT_EQ(cut.UpperVis[4].UpperAlt, 501 + 5 * 671);
    EXPECT_EQ(cut.UpperVis[0].Range, 372); // 125 + 100
    EXPECT_EQ(cut.UpperVis[1].Range, 2175);
    // without the cloud the first layer passes 4000 metres already
    const NewWeather high = VisibilityOf(MetarWith(2000, "", 9000));
    EXPECT_EQ(high.nUpperVisCtr, 1);
    EXPECT_EQ(high.UpperVis[0].UpperAlt, 3353 + 671);
}

TEST_F(CompositionVisibilityTest, closesTheSkyAtTheHighestVisibility)
{
    options.visMax = 50500;
    const NewWeather fsuipc = VisibilityOf(MetarWith(9999));
    ASSERT_EQ(fsuipc.nUpperVisCtr, 6);
    EXPECT_EQ(fsuipc.UpperVis[5].LowerAlt, 1220);
    EXPECT_EQ(fsuipc.UpperVis[5].UpperAlt, 30470);
    EXPECT_EQ(fsuipc.UpperVis[5].Range, 9352);
    using Line = std::pair<std::string, int>;
    EXPECT_EQ(logged,
              std::vector<Line>{Line("(WeatherWrapper) - set max vis: 50km", loglevel::kDebug)});

    options.interfaceType = aviation::interfaceid::kSimConnect;
    options.visMax = 2000000000;
    const NewWeather other = VisibilityOf(MetarWith(9999));
    EXPECT_EQ(other.UpperVis[5].UpperAlt, 29000 - 1220);
    EXPECT_EQ(other.UpperVis[5].Range, 65535);
}

TEST_F(CompositionVisibilityTest, givesUpFarAboveTheEarth)
{
    const NewWeather high = VisibilityOf(MetarWith(5000, "", 30001), {},
                                         composition::visibilityresult::kElevationTooHigh);
    EXPECT_EQ(high.Vis.Range, 311);
    EXPECT_EQ(high.nUpperVisCtr, 0);
    VisibilityOf(MetarWith(5000, "", 30000));
}

} // namespace

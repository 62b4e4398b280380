#include "tests/weather/output/CompositionFixture.h"

using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

class CompositionVisibilityTest : public CompositionTest
{
protected:
    static Metar metarWith(int visibility, int elevation = 0)
    {
        Metar metar = metarOf("EDDF 011220Z 27010KT 9999 15/08 Q1013", elevation);
        metar.setVisibility(visibility);
        return metar;
    }

    NewWeather visibilityOf(const Metar& metar, const Synop& synop = {}, int result = 0)
    {
        NewWeather record;
        EXPECT_EQ(composition::SetVisibility(metar, synop, record, context), result);
        return record;
    }
};

TEST_F(CompositionVisibilityTest, SnapsTheSurfaceRangeToShownSteps)
{
    const std::pair<int, int> rows[] = {{0, 0},       {199, 199},   {200, 372},   {372, 372},
                                        {373, 497},   {497, 497},   {498, 994},   {994, 994},
                                        {995, 2175},  {2175, 2175}, {2176, 2983}, {2983, 2983},
                                        {2984, 3977}, {3977, 3977}, {3978, 4971}, {4971, 4971},
                                        {4972, 622},  {65535, 622}, {68351, 622}, {-1, 0}};
    for (const auto& [range, shown] : rows) {
        const int metres = static_cast<int>(range / 0.0621371);
        EXPECT_EQ(visibilityOf(metarWith(metres)).Vis.Range, shown) << range;
    }
}

TEST_F(CompositionVisibilityTest, OpensTenKilometresByOptionOrNearSynop)
{
    struct Row
    {
        int vis9999;
        int visibility;
        const char* synopVisibility; ///< VV
        double synopNm;
        int range;
    };
    const Row rows[] = {
        {30000, 9999, "//", 500, 622},                                // ends at the cap
        {10, 9999, "//", 500, 994},    {30000, 9999, "99", 49, 3977}, // 60 km
        {10, 9999, "99", 51, 994},                                    // too far
        {10, 9999, "59", 10, 994},                                    // 9 km
        {10, 8000, "99", 10, 994},                                    // a lower METAR stays
    };
    for (const Row& row : rows) {
        options.vis9999 = row.vis9999;
        Synop synop = synopOf(std::string("AAXX 01123 10637 46/") + row.synopVisibility + " /0909",
                              north(row.synopNm));
        EXPECT_EQ(visibilityOf(metarWith(row.visibility), synop).Vis.Range, row.range)
            << row.vis9999 << " " << row.synopVisibility << " " << row.synopNm;
    }
}

TEST_F(CompositionVisibilityTest, OpensUpInLayersForTheirSimulators)
{
    for (const aviation::FsId simulator : {0, 1, 2, 9, 10, 12, 13}) {
        options.simulator = simulator;
        EXPECT_EQ(visibilityOf(metarWith(9999)).nUpperVisCtr, 0) << simulator;
    }
    for (const aviation::FsId simulator : {3, 4, 5, 6, 8}) {
        options.simulator = simulator;
        EXPECT_EQ(visibilityOf(metarWith(9999)).nUpperVisCtr, 5) << simulator;
    }
    const NewWeather record = visibilityOf(metarWith(9999));
    EXPECT_EQ(record.UpperVis[0].LowerAlt, 610);
    EXPECT_EQ(record.UpperVis[4].UpperAlt, 1220);
    EXPECT_EQ(record.UpperVis[1].Range, 2175);
    // above a high station the first layer passes 4000 metres already
    EXPECT_EQ(visibilityOf(metarWith(2000, 9000)).nUpperVisCtr, 1);
    visibilityOf(metarWith(5000, 30000));
    visibilityOf(metarWith(5000, 30001), {}, composition::visibilityresult::kElevationTooHigh);
}

TEST_F(CompositionVisibilityTest, ClosesTheSkyAtTheHighestVisibility)
{
    options.visMax = 50500;
    const NewWeather fsuipc = visibilityOf(metarWith(9999));
    ASSERT_EQ(fsuipc.nUpperVisCtr, 6);
    EXPECT_EQ(fsuipc.UpperVis[5].UpperAlt, 30470);
    EXPECT_EQ(fsuipc.UpperVis[5].Range, 9352);
    options.interfaceType = aviation::interfaceid::kSimConnect;
    options.visMax = 2000000000;
    const NewWeather other = visibilityOf(metarWith(9999));
    EXPECT_EQ(other.UpperVis[5].UpperAlt, 29000 - 1220);
    EXPECT_EQ(other.UpperVis[5].Range, 65535);
}

} // namespace

#include "tests/weather/output/CompositionFixture.h"

using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

using CompositionRecordTest = CompositionTest;

const char* const kQuiet = "EDDF 011220Z 27010KT 9999 FEW030 15/08 Q1013";

TEST_F(CompositionRecordTest, ClearsTheGlobalStation)
{
    Metar metar = metarOf(kQuiet, 364);
    metar.setIcao(L"GLOB");
    NewWeather record;
    record.Dynamic = 4;
    record.Flag = 7;
    composition::GenerateWeather(metar, {}, {}, record, 0.0, context);
    EXPECT_EQ(record.Elev, 0);
    EXPECT_EQ(record.Dynamic, 0);
    EXPECT_EQ(record.Flag, 0);
    EXPECT_EQ(record.Wind[0].UpperAlt, 210); // the layers stay those of the station
    EXPECT_EQ(compose(metarOf(kQuiet, -1266)).Elev, -25288821);
}

TEST_F(CompositionRecordTest, StoresSixteenthsOfPressure)
{
    const std::pair<float, int> rows[] = {
        {1013.2F, 16211}, {850.0F, 16208}, {899.9F, 16208}, {900.0F, 14400}, {1050.0F, 16800}};
    for (const auto& [qnh, press] : rows) {
        Metar metar = metarOf(kQuiet);
        metar.setQnh(qnh);
        EXPECT_EQ(compose(metar).Press, press) << qnh;
    }
}

TEST_F(CompositionRecordTest, ReplacesAnOldMetarByTheSynop)
{
    const Synop synop = synopOf("AAXX 01123 10637 46/57 /2030 10124 20082 40150");
    for (const bool old : {false, true}) {
        const FakeClock now(2019, 7, 1, old ? 16 : 15, 0); // old by more than three hours
        const Metar metar = metarOf("EDDF 011200Z 27010KT 9999 FEW030 15/08 Q1013");
        const NewWeather record = compose(metar, synop);
        EXPECT_EQ(record.Wind[0].Speed, old ? 30 : 10);
        EXPECT_EQ(record.Press, (old ? 1015 : 1013) * 16);
        EXPECT_EQ(record.nCloudCtr, old ? 0 : 1);
        EXPECT_EQ(metar.wind().Speed, 10.0F); // the caller's report stays
    }
}

TEST_F(CompositionRecordTest, AnOldMetarStaysWhereNoSynopIsFound)
{
    const FakeClock now(2019, 7, 2, 0, 10);
    const NewWeather record = compose(metarOf("EDDF 012350Z 27010KT 9999 FEW030 15/08 Q1003"));
    EXPECT_EQ(record.Wind[0].Speed, 10);
    EXPECT_EQ(record.Press, 1003 * 16);
    EXPECT_EQ(record.nCloudCtr, 1);
}

TEST_F(CompositionRecordTest, SurvivesAbsurdValues)
{
    constexpr float kHuge = 3.0e38F;
    Metar metar = metarOf(kQuiet);
    metar.setElevation(2147483647);
    metar.setWind({kHuge, -kHuge, kHuge, 0.0F});
    metar.setTemperature(-kHuge);
    metar.setQnh(kHuge);
    metar.setVisibility(-2147483647);
    metar.setVariableLimits(2147483647, -2147483647);
    metar.addCloud({0, 255, 2147483647, -1, 0});
    metar.addCloud({10, 255, -2147483647, -1, 0});
    options.visMax = -2147483647;
    options.cavokCover = -2147483647;
    const NewWeather record = compose(metar, cloudCodes(9, 9, 9), {}, 1.0e300);
    EXPECT_LE(record.nCloudCtr, 16);
    EXPECT_EQ(record.nWindCtr, 2);
}

} // namespace

#include "tests/weather/output/CompositionFixture.h"

#include <cstring>

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

using CompositionRecordTest = CompositionTest;

const char* const kQuiet = "EDDF 011220Z 27010KT 9999 FEW030 15/08 Q1013";

TEST_F(CompositionRecordTest, fillsTheHeader)
{
    const NewWeather record = Compose(MetarOf(kQuiet, 364));
    EXPECT_EQ(record.Command, 2);
    EXPECT_EQ(record.Flag, 0);
    EXPECT_EQ(record.Signature, 0U);
    EXPECT_EQ(record.icaoText(), "EDDF");
    EXPECT_EQ(record.Elev, 7271035); // 364 * 65536 / 3.28084
    EXPECT_EQ(record.Press, 1013 * 16);
    EXPECT_EQ(record.Lat, 0.0);
    EXPECT_EQ(record.Lon, 0.0);
    options.simulator = aviation::fsid::kFs2004;
    EXPECT_EQ(Compose(MetarOf(kQuiet)).Command, 258);
    EXPECT_EQ(Compose(MetarOf(kQuiet, -1266)).Elev, -25288821);
}

TEST_F(CompositionRecordTest, clearsTheGlobalStation)
{
    Metar metar = MetarOf(kQuiet, 364);
    metar.setIcao(L"GLOB");
    NewWeather record;
    record.Dynamic = 4;
    record.Seconds = 9;
    record.Flag = 7;
    composition::GenerateWeather(metar, {}, {}, record, 0.0, context);
    EXPECT_EQ(record.icaoText(), "GLOB");
    EXPECT_EQ(record.Elev, 0);
    EXPECT_EQ(record.Dynamic, 0);
    EXPECT_EQ(record.Seconds, 0);
    EXPECT_EQ(record.Flag, 0);
    EXPECT_EQ(record.Wind[0].UpperAlt, 210); // the layers stay those of the station
}

TEST_F(CompositionRecordTest, storesSixteenthsOfPressure)
{
    const std::pair<float, int> rows[] = {
        {1013.2F, 16211}, {850.0F, 16208}, {899.9F, 16208}, {900.0F, 14400}, {1050.0F, 16800}};
    for (const auto& [qnh, press] : rows) {
        Metar metar = MetarOf(kQuiet);
        metar.setQnh(qnh);
        EXPECT_EQ(Compose(metar).Press, press) << qnh;
    }
}

TEST_F(CompositionRecordTest, replacesAnOldMetarByTheSynop)
{
    struct Row
    {
        const char* what;
        const char* timeGroup;
        int nowDay;
        int nowHour;
        int nowMinute;
        bool old;
    };
    const Row rows[] = {
        {"same hour", "011200Z", 1, 14, 30, false},
        {"hour of three hours ago", "011200Z", 1, 15, 30, false},
        {"an hour more", "011200Z", 1, 16, 0, true},
        {"midnight: nothing of today is old", "010000Z", 1, 2, 59, false},
        {"midnight: yesterday is old", "302350Z", 1, 0, 10, true},
        {"from three on it counts again", "010000Z", 1, 4, 0, true},
        {"a later day", "021200Z", 1, 12, 0, true},
    };
    const Synop synop = SynopOf("AAXX 01123 10637 46/57 /2030 10124 20082 40150");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const FakeClock now(2019, 7, static_cast<unsigned>(row.nowDay), row.nowHour, row.nowMinute);
        const Metar metar =
            MetarOf("EDDF " + std::string(row.timeGroup) + " 27010KT 9999 FEW030 15/08 Q1013");
        const NewWeather record = Compose(metar, synop);
        EXPECT_EQ(record.icaoText(), "EDDF");
        EXPECT_EQ(record.Wind[0].Speed, row.old ? 30 : 10);
        EXPECT_EQ(record.Temp[0].Day, row.old ? 12 : 15);
        EXPECT_EQ(record.Press, (row.old ? 1015 : 1013) * 16);
        EXPECT_EQ(record.nCloudCtr, row.old ? 0 : 1);
        EXPECT_EQ(metar.wind().Speed, 10.0F); // the caller's report stays
    }
}

TEST_F(CompositionRecordTest, composesQuietWeatherFromNothing)
{
    Metar metar;
    metar.setIcao(L"ZZZZ");
    const NewWeather record = Compose(metar);
    EXPECT_EQ(record.icaoText(), "ZZZZ");
    EXPECT_EQ(record.Press, 1013 * 16);
    EXPECT_EQ(record.nWindCtr, 2);
    EXPECT_EQ(record.Wind[0].Speed, 0);
    EXPECT_EQ(record.Temp[0].Day, 15);
    EXPECT_EQ(record.nCloudCtr, 0);
    EXPECT_EQ(record.nUpperVisCtr, 5);
}

TEST_F(CompositionRecordTest, leavesEveryUnnamedByteZero)
{
    NewWeather record = Compose(MetarOf(kQuiet, 364));
    for (TempLayer& layer : record.Temp) {
        EXPECT_EQ(layer.DayNightVar, 0);
    }
    for (std::size_t i = 2; i < kWindLayerSlots; ++i) {
        const WindLayer none;
        EXPECT_EQ(std::memcmp(&record.Wind[i], &none, sizeof none), 0);
    }
    for (std::size_t i = 1; i < kCloudLayerSlots; ++i) {
        const CloudLayer none;
        EXPECT_EQ(std::memcmp(&record.Cloud[i], &none, sizeof none), 0);
    }
    EXPECT_EQ(record.Timestamp, 0U);
    EXPECT_EQ(record.Drift, 0);
}

TEST_F(CompositionRecordTest, survivesAbsurdValues)
{
    constexpr float kHuge = 3.0e38F;
    Metar metar = MetarOf(kQuiet);
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
    const NewWeather record = Compose(metar, CloudCodes(9, 9, 9), {}, 1.0e300);
    EXPECT_LE(record.nCloudCtr, 16);
    EXPECT_EQ(record.nWindCtr, 2);
}

TEST_F(CompositionRecordTest, composesAWholeWinterStation)
{
    random.setNumbers({7000, 10});
    options.mixedClouds = true;
    const Metar metar =
        MetarOf("EDDM 011220Z 24012G25KT 200V280 4000 -SHSN BKN012 OVC025CB M01/M03 Q0989", 1487);
    const Synop synop = CloudCodes(8, 7, 0, North(12));
    const Grib grib = GribOf({{0, 50, "01104", "24015"},
                              {92, 800, "05304", "25030"},
                              {70, 2950, "12504", "27045"},
                              {50, 5400, "28560", "28080"}});
    const NewWeather record = Compose(metar, synop, grib, 3.5);
    EXPECT_EQ(record.Press, 15824);
    EXPECT_EQ(record.Elev, 29703378);
    EXPECT_EQ(record.Vis.Range, 372);
    EXPECT_EQ(record.Vis.UpperAlt, 818);
    EXPECT_EQ(record.UpperVis[0].LowerAlt, 819);
    EXPECT_EQ(record.UpperVis[0].UpperAlt, 1032); // a fifth of 1062 metres more
    EXPECT_EQ(record.UpperVis[0].Range, 497);
    EXPECT_EQ(record.nUpperVisCtr, 5);

    EXPECT_EQ(record.Wind[0].UpperAlt, 553);
    EXPECT_EQ(record.Wind[0].Dir, 44327); // 243.5 degrees
    EXPECT_EQ(record.Wind[0].Gust, 13);
    EXPECT_EQ(record.Wind[0].Turbulence, 1);
    EXPECT_EQ(record.Wind[0].Variance, 14563); // 80 degrees apart
    EXPECT_EQ(record.Wind[1].Dir, 47058);      // 258.5 degrees
    EXPECT_EQ(record.nWindCtr, 5);             // the level at 50 metres is in the ground
    EXPECT_EQ(record.Wind[2].UpperAlt, 799);
    EXPECT_EQ(record.Temp[4].Day, -28);
    EXPECT_EQ(record.Temp[4].Dew, -38);

    ASSERT_EQ(record.nCloudCtr, 4);
    const CloudLayer& low = record.Cloud[0];
    EXPECT_EQ(low.Cover, 7);
    EXPECT_EQ(low.Type, 8);
    EXPECT_EQ(low.LowerAlt, 819);
    EXPECT_EQ(low.UpperAlt, 1018); // 1019 touches nothing but the base of the layer above
    const CloudLayer& extra = record.Cloud[1];
    EXPECT_EQ(extra.Type, 9);
    EXPECT_EQ(extra.Dev, 100);
    EXPECT_EQ(extra.LowerAlt, 1019);
    EXPECT_EQ(extra.PrecipType, 2);
    EXPECT_EQ(extra.UpperAlt, 1213);
    const CloudLayer& thunder = record.Cloud[2];
    EXPECT_EQ(thunder.LowerAlt, 1216);
    EXPECT_EQ(thunder.UpperAlt, 3215);
    EXPECT_EQ(thunder.TopShape, 2);
    EXPECT_EQ(record.Cloud[3].LowerAlt, 12191);
    EXPECT_EQ(record.Cloud[3].Cover, 2);
}

} // namespace

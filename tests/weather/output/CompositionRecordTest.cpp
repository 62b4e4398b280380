#include "tests/weather/output/CompositionFixture.h"

using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

using CompositionRecordTest = CompositionTest;

const char* const kQuiet = "EDDF 011220Z 27010KT 9999 FEW030 15/08 Q1013";

TEST_F(CompositionRecordTest, clearsTheGlobalStation)
{
    Metar metar = MetarOf(kQuiet, 364);
    metar.setIcao(L"GLOB");
    NewWeather record;
    record.Dynamic = 4;
    record.Flag = 7;
    composition::GenerateWeather(metar, {}, {}, record, 0.0, context);
    EXPECT_EQ(record.Elev, 0);
    EXPECT_EQ(record.Dynamic, 0);
    EXPECT_EQ(record.Flag, 0);
    EXPECT_EQ(record.Wind[0].UpperAlt, 210); // the layers stay those of the station
    EXPECT_EQ(Compose(MetarOf(kQuiet, -1266)).Elev, -25288821);
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
    };
    const Synop synop = SynopOf("AAXX 01123 10637 46/57 /2030 10124 20082 40150");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const FakeClock now(2019, 7, static_cast<unsigned>(row.nowDay), row.nowHour, row.nowMinute);
        const Metar metar =
            MetarOf("EDDF " + std::string(row.timeGroup) + " 27010KT 9999 FEW030 15/08 Q1013");
        const NewWeather record = Compose(metar, synop);
        EXPECT_EQ(record.Wind[0].Speed, row.old ? 30 : 10);
        EXPECT_EQ(record.Press, (row.old ? 1015 : 1013) * 16);
        EXPECT_EQ(record.nCloudCtr, row.old ? 0 : 1);
        EXPECT_EQ(metar.wind().Speed, 10.0F); // the caller's report stays
    }
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

} // namespace

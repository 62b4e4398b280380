#include "weather/output/XPlaneRecord.h"

#include "tests/weather/output/XPlaneFixture.h"
#include "weather/output/records/XPlaneWeatherText.h"

#include <gtest/gtest.h>

namespace {

using namespace aviation::weather;
using namespace xplanetest;

const std::wstring kThunder = L"EDDF 011150Z 27012G22KT 4500 +TSRA BR BKN014 OVC030CB 12/11 Q0998";
const std::wstring kFair = L"EDDF 011150Z 09009KT 9999 FEW014 15/10 Q1013";

class XPlaneRecord : public ::testing::Test
{
protected:
    XPlaneWeather generate(const Metar& metar, const Synop& synop = {},
                           const Grib& grib = DecodedGrib())
    {
        XPlaneWeather record;
        record.Winds.resize(7); // whatever stood there is gone afterwards
        GenerateXPlaneWeather(metar, synop, grib, m_generation, record, m_here.context);
        return record;
    }

    XPlaneGeneration m_generation = XPlaneGeneration::Eleven;
    Surroundings m_here;
};

void ExpectCloud(const XPlaneCloud& cloud, const XPlaneCloud& wanted)
{
    EXPECT_EQ(cloud.Type, wanted.Type);
    EXPECT_EQ(cloud.Coverage, wanted.Coverage);
    EXPECT_NEAR(cloud.Base, wanted.Base, 0.5F);
    EXPECT_NEAR(cloud.Top, wanted.Top, 0.5F);
}

TEST_F(XPlaneRecord, WholeTextForEleven)
{
    EXPECT_EQ(XPlaneWeatherText(generate(DecodedMetar(kThunder))),
              "Press=29.47:Vis=4500.0:Temp=12.7:Dew=11.7:RainPercent=1.0:"
              "ThunderstromPercent=0.800000:WindTurbulencePercent=0.000000:RateChangePercent=0.6:"
              "WaveDir=0:WaveHeight=0.0:WaveSpeed=0.0:WaveLenght=0.0:TempTropo=-56.0:"
              "TropoAltMeter=11499.9"
              "Cloudlayer{Type=3:Coverage=4.00:Base=538:Top=6207|"
              "Type=4:Coverage=5.00:Base=1025:Top=6207|"
              "Type=1:Coverage=1.00:Base=12191:Top=12241|}:"
              "WindLayer{Alt=111:Dir=270.0:Speed=12:Turbulence=0.4:ShearDir=5.0:ShearSpeed=10.0|"
              "Alt=111:Dir=270.0:Speed=10:Turbulence=0.0:ShearDir=0.0:ShearSpeed=0.0|"
              "Alt=762:Dir=270.0:Speed=20:Turbulence=0.0:ShearDir=0.0:ShearSpeed=0.0|"
              "Alt=1457:Dir=280.0:Speed=25:Turbulence=0.0:ShearDir=0.0:ShearSpeed=0.0|"
              "Alt=3012:Dir=290.0:Speed=35:Turbulence=0.0:ShearDir=0.0:ShearSpeed=0.0|"
              "Alt=5574:Dir=300.0:Speed=50:Turbulence=0.0:ShearDir=0.0:ShearSpeed=0.0|"
              "Alt=9164:Dir=310.0:Speed=80:Turbulence=0.0:ShearDir=0.0:ShearSpeed=0.0|}");
}

TEST_F(XPlaneRecord, WholeTextForTwelve)
{
    m_generation = XPlaneGeneration::Twelve;
    m_here.context.options.gustySurfaceWind = false;
    EXPECT_EQ(XPlaneWeatherWxText(generate(DecodedMetar(kThunder))),
              "Press=29.47:Vis=4500.0:Temp=12.7:Dew=11.7:RainPercent=1.0:"
              "ThunderstromPercent=0.800000:WindTurbulencePercent=0.000000:RateChangePercent=0.6:"
              "WaveDir=0:WaveHeight=0.0:WaveSpeed=0.0:WaveLenght=0.0:TempTropo=-56.0:"
              "TropoAltMeter=11499.9:WX=:"
              "Cloudlayer{Type=2:Coverage=0.88:Base=538:Top=6207|"
              "Type=2:Coverage=1.00:Base=1025:Top=6207|"
              "Type=0:Coverage=0.38:Base=12191:Top=12241|}:"
              "WindLayer{111:270.0:12:0.0:5.0:10.0:0.0:0.0|988:270.0:20:0.0:0.0:0.0:0.0:0.0|"
              "1948:280.0:25:0.0:0.0:0.0:0.0:0.0|3011:280.0:25:0.0:0.0:0.0:0.0:0.0|"
              "4207:290.0:35:0.0:0.0:0.0:0.0:0.0|5572:290.0:35:0.0:0.0:0.0:0.0:0.0|"
              "7182:300.0:50:0.0:0.0:0.0:0.0:0.0|9160:300.0:50:0.0:0.0:0.0:0.0:0.0|"
              "10363:310.0:80:0.0:0.0:0.0:0.0:0.0|11887:310.0:80:0.0:0.0:0.0:0.0:0.0|}");
}

TEST_F(XPlaneRecord, CoverageOfBothGenerations)
{
    m_here.context.options.generateCirrus = false;
    struct Row
    {
        const wchar_t* group;
        XPlaneCloud eleven;
        XPlaneCloud twelve;
    };
    const Row rows[] = {
        {L"FEW100", {1, 1.0F, 3159.0F, 3311.4F}, {2, 0.25F, 3159.0F, 3311.4F}},
        {L"SCT100", {2, 3.0F, 3159.0F, 3311.4F}, {2, 0.5F, 3159.0F, 3311.4F}},
        {L"BKN100", {3, 4.0F, 3159.0F, 3311.4F}, {2, 0.875F, 3159.0F, 3311.4F}},
        {L"OVC100", {4, 5.0F, 3159.0F, 3311.4F}, {2, 1.0F, 3159.0F, 3311.4F}},
        {L"OVC277", {1, 1.0F, 8554.0F, 8706.4F}, {0, 1.0F, 8554.0F, 8706.4F}}, // 28064 feet
        {L"OVC276", {4, 5.0F, 8523.5F, 8675.9F}, {2, 1.0F, 8523.5F, 8675.9F}},
    };
    for (const Row& row : rows) {
        const Metar metar =
            DecodedMetar(std::wstring(L"EDDF 011150Z 09009KT 9999 ") + row.group + L" 15/10 Q1013");
        m_generation = XPlaneGeneration::Eleven;
        ExpectCloud(generate(metar).Clouds[0], row.eleven);
        m_generation = XPlaneGeneration::Twelve;
        ExpectCloud(generate(metar).Clouds[0], row.twelve);
    }
}

TEST_F(XPlaneRecord, TopsFollowHumidityAndRain)
{
    struct Row
    {
        const wchar_t* weather;
        const wchar_t* group;
        double topFeet; ///< above sea level
    };
    const Row rows[] = {
        {L"", L"BKN014", 4780.0},
        {L"", L"BKN060", 6864.0}, // base in the moist air's level, none above it
        {L"SHRA ", L"BKN014", 10364.0},
        {L"SN ", L"BKN120", 12864.0},
        {L"VCTS ", L"BKN014", 20364.0},
        {L"TSRA ", L"BKN275", 28364.0}, // high enough as it is
    };
    for (const Row& row : rows) {
        const Metar metar = DecodedMetar(std::wstring(L"EDDF 011150Z 09009KT 9999 ") + row.weather
                                         + row.group + L" 15/10 Q1013");
        EXPECT_NEAR(generate(metar).Clouds[0].Top, row.topFeet / 3.2808, 0.5) << row.topFeet;
    }
    // Without upper air a cloud is 500 feet thick.
    EXPECT_NEAR(generate(DecodedMetar(kFair), {}, Grib()).Clouds[0].Top, 2264 / 3.2808, 0.5);
}

TEST_F(XPlaneRecord, VisibilityByReportsAndOptions)
{
    CompositionOptions& options = m_here.context.options;
    EXPECT_EQ(generate(DecodedMetar(kFair)).Vis, 30000000.0F);
    EXPECT_EQ(generate(DecodedMetar(kFair), DecodedSynop(49.0)).Vis, 25000.0F);
    EXPECT_EQ(generate(DecodedMetar(kFair), DecodedSynop(51.0)).Vis, 30000000.0F);
    EXPECT_EQ(generate(DecodedMetar(kThunder), DecodedSynop(1.0)).Vis, 4500.0F);
    options.visMin = 6;
    EXPECT_EQ(generate(DecodedMetar(kThunder)).Vis, 6000.0F);
    options.visMax = 40;
    EXPECT_EQ(generate(DecodedMetar(kFair)).Vis, 40000.0F);
    options.vis9999 = 2147483647;
    EXPECT_EQ(generate(DecodedMetar(kFair)).Vis, 40000.0F);
}

TEST_F(XPlaneRecord, SynopCirrusTakesThePlaceOfTheRandomOne)
{
    const XPlaneWeather near = generate(DecodedMetar(kFair), DecodedSynop(49.0));
    ExpectCloud(near.Clouds[1], {1, 1.0F, 8645.5F, 8797.9F});
    ExpectCloud(near.Clouds[2], {});
    const XPlaneWeather far = generate(DecodedMetar(kFair), DecodedSynop(51.0));
    ExpectCloud(far.Clouds[1], {1, 1.0F, 12191.0F, 12241.0F});
}

TEST_F(XPlaneRecord, CavokGetsACloudFromOptionsOrSynop)
{
    const Metar cavok = DecodedMetar(L"EDDF 011150Z 09009KT CAVOK 15/10 Q1013");
    m_generation = XPlaneGeneration::Twelve;
    // 5000 feet and twice the elevation.
    ExpectCloud(generate(cavok).Clouds[0], {2, 0.125F, 1745.9F, 1898.3F});
    EXPECT_EQ(generate(cavok, DecodedSynop(99.0)).Clouds[0].Coverage, 0.625F);
    EXPECT_EQ(generate(cavok, DecodedSynop(101.0)).Clouds[0].Coverage, 0.125F);
    const Synop nine = DecodedSynop(60.0, L"AAXX 01123 10637 11575 72712 82900");
    EXPECT_EQ(generate(cavok, nine).Clouds[0].Coverage, 0.125F) << "nine octas don't exist";
    m_here.context.options.cavokCover = 0;
    ExpectCloud(generate(cavok).Clouds[0], {0, 0.375F, 12191.0F, 12241.0F});
}

TEST_F(XPlaneRecord, FourthLayerIsDroppedAndLogged)
{
    const Metar metar =
        DecodedMetar(L"EDDF 011150Z 09009KT 9999 FEW010 SCT050 BKN060 OVC100 15/10 Q1013");
    const XPlaneWeather record = generate(metar);
    EXPECT_EQ(record.Clouds[2].Type, 3);
    ASSERT_EQ(m_here.log.size(), 1U);
    EXPECT_EQ(m_here.log[0].first, "(Weather Converter) - XPlane clouds > 3");
    generate(DecodedMetar(L"EDDF 011150Z 09009KT 9999 FEW010 SCT050 BKN060 15/10 Q1013"));
    EXPECT_EQ(m_here.log.size(), 1U);
}

TEST_F(XPlaneRecord, MistUnderAnEmptySky)
{
    m_here.context.options.generateStratus = true;
    const Metar mist = DecodedMetar(L"EDDF 011150Z 09009KT 5000 RA BR 15/10 Q1013");
    ExpectCloud(generate(mist).Clouds[0], {5, 0.0F, 141.4F, 641.4F});
    const Metar clear = DecodedMetar(L"EDDF 011150Z 09009KT 5001 RA BR 15/10 Q1013");
    EXPECT_NE(generate(clear).Clouds[0].Type, 5);
    EXPECT_NE(generate(DecodedMetar(L"EDDF 011150Z 09009KT 5000 BR 15/10 Q1013")).Clouds[0].Type,
              5);
    m_here.context.options.generateStratus = false;
    EXPECT_NE(generate(mist).Clouds[0].Type, 5);
}

TEST_F(XPlaneRecord, RainAndThunderByIntensity)
{
    struct Row
    {
        const wchar_t* weather;
        float rain;
        float thunder;
    };
    const Row rows[] = {
        {L"-RA ", 0.2F, 0.0F},   {L"SHSN ", 0.25F, 0.0F}, {L"+SN ", 0.5F, 0.0F},
        {L"-TSRA ", 0.4F, 0.3F}, {L"TSGR ", 0.7F, 0.5F},  {L"+TSRA ", 1.0F, 0.8F},
        {L"+DZ ", 0.0F, 0.0F},
    };
    for (const Row& row : rows) {
        const XPlaneWeather record = generate(DecodedMetar(
            std::wstring(L"EDDF 011150Z 09009KT 9999 ") + row.weather + L"BKN014 15/10 Q1013"));
        EXPECT_EQ(record.RainPercent, row.rain);
        EXPECT_EQ(record.ThunderstromPercent, row.thunder);
    }
}

TEST_F(XPlaneRecord, SurfaceWindAndItsShear)
{
    struct Row
    {
        Wind metar;
        double synopNm;
        float direction;
        float speed;
        float shear;
    };
    const Row rows[] = {
        {{90.0F, 9.0F, 0.0F, 0.0F}, 29.0, 90.0F, 9.0F, 16.0F}, // the SYNOP's gust of 25
        {{90.0F, 9.0F, 0.0F, 0.0F}, 31.0, 90.0F, 9.0F, 5.0F},
        {{90.0F, 9.0F, 15.0F, 0.0F}, 29.0, 90.0F, 9.0F, 6.0F},
        {{90.0F, 30.0F, 0.0F, 0.0F}, 29.0, 90.0F, 30.0F, 5.0F},
        {{0.0F, -1.0F, 0.0F, 0.0F}, 49.0, 270.0F, 12.0F, 13.0F},
        {{0.0F, -1.0F, 0.0F, 0.0F}, 51.0, 260.0F, 8.0F, 5.0F}, // surface wind of the upper air
    };
    for (const Row& row : rows) {
        Metar metar = DecodedMetar(kFair);
        metar.setWind(row.metar);
        const XPlaneWindLayer layer = generate(metar, DecodedSynop(row.synopNm)).Winds[0];
        EXPECT_EQ(layer.Dir, row.direction);
        EXPECT_EQ(layer.Speed, row.speed);
        EXPECT_EQ(layer.ShearSpeed, row.shear);
        EXPECT_FLOAT_EQ(layer.Turbulence, row.speed / 30.0F);
    }
}

TEST_F(XPlaneRecord, ThinUpperAirIsAskedAtTwoHeights)
{
    const XPlaneWeather record = generate(DecodedMetar(kFair), {}, Grib());
    ASSERT_EQ(record.Winds.size(), 3U);
    EXPECT_NEAR(record.Winds[1].Alt, 9144.1F, 0.1F);
    EXPECT_NEAR(record.Winds[2].Alt, 15240.2F, 0.1F);
    EXPECT_EQ(record.Winds[2].Marker, -100.0F);
}

} // namespace

#include "weather/output/XPlaneRecord.h"

#include "tests/weather/output/CompositionFixture.h"
#include "weather/output/XPlaneFileText.h"

#include <gtest/gtest.h>

namespace {

using namespace aviation::weather;

const std::string kThunder = "EDDF 011150Z 27012G22KT 4500 +TSRA BR BKN014 OVC030CB 12/11 Q0998";
const std::string kFair = "EDDF 011150Z 09009KT 9999 FEW014 15/10 Q1013";
/// Wind 270/12 with a gust of 25, 25 km, 7 octas at 3333 feet, codes 5 4 1, 1 octa at 28000 feet.
const std::string kCloudySynop =
    "AAXX 01123 10637 11575 72712 10050 20020 40132 82541 333 81078 91125";
/// Moist up to 4780 feet, dry from 9881 feet on; tropopause at 37729 feet.
const Grib kGrib = [] {
    Grib grib(L"GRIB 00000 00000 99500 10085 99013 15050 26008 0000111 12002 27010 "
              L"9200762 10000 27020 8501457 05002 28025 7003012 03150 29035 "
              L"5005574 21150 30050 3009164 45350 31080 8811500 56355 30090 ");
    grib.Decode();
    return grib;
}();

/// The random numbers make a cirrus of 3 octas at 40000 feet.
class XPlaneRecordTest : public CompositionTest
{
protected:
    XPlaneRecordTest() { random.setNumbers({7000, 3}); }

    static Metar decodedMetar(const std::string& text) { return metarOf(text, 364); }
    static Metar withGroups(const std::string& groups)
    {
        return decodedMetar("EDDF 011150Z 09009KT " + groups + " 15/10 Q1013");
    }
    static Synop decodedSynop(double northNm, const std::string& text = kCloudySynop)
    {
        return synopOf(text, north(northNm));
    }
    XPlaneWeather generate(const Metar& metar, const Synop& synop = {}, const Grib& grib = kGrib)
    {
        XPlaneWeather record;
        record.Winds.resize(7); // whatever stood there is gone afterwards
        GenerateXPlaneWeather(metar, synop, grib, m_generation, record, context);
        return record;
    }

    XPlaneGeneration m_generation = XPlaneGeneration::Eleven;
};

void expectCloud(const XPlaneCloud& cloud, const XPlaneCloud& wanted)
{
    EXPECT_EQ(cloud.Type, wanted.Type);
    EXPECT_EQ(cloud.Coverage, wanted.Coverage);
    EXPECT_NEAR(cloud.Base, wanted.Base, 0.5F);
    EXPECT_NEAR(cloud.Top, wanted.Top, 0.5F);
}

TEST_F(XPlaneRecordTest, CoverageOfBothGenerations)
{
    options.generateCirrus = false;
    const std::tuple<const char*, XPlaneCloud, XPlaneCloud> rows[] = {
        {"FEW100", {1, 1.0F, 3159.0F, 3311.4F}, {2, 0.25F, 3159.0F, 3311.4F}},
        {"SCT100", {2, 3.0F, 3159.0F, 3311.4F}, {2, 0.5F, 3159.0F, 3311.4F}},
        {"BKN100", {3, 4.0F, 3159.0F, 3311.4F}, {2, 0.875F, 3159.0F, 3311.4F}},
        {"OVC100", {4, 5.0F, 3159.0F, 3311.4F}, {2, 1.0F, 3159.0F, 3311.4F}},
        {"OVC277", {1, 1.0F, 8554.0F, 8706.4F}, {0, 1.0F, 8554.0F, 8706.4F}}, // 28064 feet
        {"OVC276", {4, 5.0F, 8523.5F, 8675.9F}, {2, 1.0F, 8523.5F, 8675.9F}},
    };
    for (const auto& [group, eleven, twelve] : rows) {
        const Metar metar = withGroups(std::string("9999 ") + group);
        m_generation = XPlaneGeneration::Eleven;
        expectCloud(generate(metar).Clouds[0], eleven);
        m_generation = XPlaneGeneration::Twelve;
        expectCloud(generate(metar).Clouds[0], twelve);
    }
}

TEST_F(XPlaneRecordTest, TopsFollowHumidityAndRain)
{
    const std::pair<const char*, double> rows[] = {
        {"9999 BKN014", 4780.0},
        {"9999 BKN060", 6864.0}, // base in the moist air's level,
                                 // none above it
        {"9999 SHRA BKN014", 10364.0},
        {"9999 SN BKN120", 12864.0},
        {"9999 VCTS BKN014", 20364.0},
        {"9999 TSRA BKN275", 28364.0}, // high enough as it is
    };
    for (const auto& [groups, feet] : rows) { // above sea level
        EXPECT_NEAR(generate(withGroups(groups)).Clouds[0].Top, feet / 3.2808, 0.5) << feet;
    }
    // Without upper air a cloud is 500 feet thick.
    EXPECT_NEAR(generate(decodedMetar(kFair), {}, Grib()).Clouds[0].Top, 2264 / 3.2808, 0.5);
}

TEST_F(XPlaneRecordTest, VisibilityByReportsAndOptions)
{
    EXPECT_EQ(generate(decodedMetar(kFair)).Vis, 30000000.0F);
    EXPECT_EQ(generate(decodedMetar(kFair), decodedSynop(49.0)).Vis, 25000.0F);
    EXPECT_EQ(generate(decodedMetar(kFair), decodedSynop(51.0)).Vis, 30000000.0F);
    EXPECT_EQ(generate(decodedMetar(kThunder), decodedSynop(1.0)).Vis, 4500.0F);
    options.visMin = 6;
    EXPECT_EQ(generate(decodedMetar(kThunder)).Vis, 6000.0F);
    options.visMax = 40;
    EXPECT_EQ(generate(decodedMetar(kFair)).Vis, 40000.0F);
    options.vis9999 = 2147483647;
    EXPECT_EQ(generate(decodedMetar(kFair)).Vis, 40000.0F);
}

TEST_F(XPlaneRecordTest, SynopCirrusTakesThePlaceOfTheRandomOne)
{
    const XPlaneWeather near = generate(decodedMetar(kFair), decodedSynop(49.0));
    expectCloud(near.Clouds[1], {1, 1.0F, 8645.5F, 8797.9F});
    expectCloud(near.Clouds[2], {});
    const XPlaneWeather far = generate(decodedMetar(kFair), decodedSynop(51.0));
    expectCloud(far.Clouds[1], {1, 1.0F, 12191.0F, 12241.0F});
}

TEST_F(XPlaneRecordTest, CavokGetsACloudFromOptionsOrSynop)
{
    const Metar cavok = withGroups("CAVOK");
    m_generation = XPlaneGeneration::Twelve;
    // 5000 feet and twice the elevation.
    expectCloud(generate(cavok).Clouds[0], {2, 0.125F, 1745.9F, 1898.3F});
    EXPECT_EQ(generate(cavok, decodedSynop(99.0)).Clouds[0].Coverage, 0.625F);
    EXPECT_EQ(generate(cavok, decodedSynop(101.0)).Clouds[0].Coverage, 0.125F);
    const Synop nine = decodedSynop(60.0, "AAXX 01123 10637 11575 72712 82900");
    EXPECT_EQ(generate(cavok, nine).Clouds[0].Coverage, 0.125F) << "nine octas don't exist";
    options.cavokCover = 0;
    expectCloud(generate(cavok).Clouds[0], {0, 0.375F, 12191.0F, 12241.0F});
}

TEST_F(XPlaneRecordTest, FourthLayerIsDroppedAndLogged)
{
    generate(withGroups("9999 FEW010 SCT050 BKN060"));
    EXPECT_TRUE(logged.empty());
    EXPECT_EQ(generate(withGroups("9999 FEW010 SCT050 BKN060 OVC100")).Clouds[2].Type, 3);
    ASSERT_EQ(logged.size(), 1U);
    EXPECT_EQ(logged[0].first, "(Weather Converter) - XPlane clouds > 3");
}

TEST_F(XPlaneRecordTest, MistUnderAnEmptySky)
{
    options.generateStratus = true;
    const Metar mist = withGroups("5000 RA BR");
    expectCloud(generate(mist).Clouds[0], {5, 0.0F, 141.4F, 641.4F});
    for (const char* groups : {"5001 RA BR", "5000 BR"}) {
        EXPECT_NE(generate(withGroups(groups)).Clouds[0].Type, 5) << groups;
    }
    options.generateStratus = false;
    EXPECT_NE(generate(mist).Clouds[0].Type, 5);
}

TEST_F(XPlaneRecordTest, RainAndThunderByIntensity)
{
    const std::tuple<const char*, float, float> rows[] = {
        {"9999 -RA BKN014", 0.2F, 0.0F},  {"9999 SHSN BKN014", 0.25F, 0.0F},
        {"9999 +SN BKN014", 0.5F, 0.0F},  {"9999 -TSRA BKN014", 0.4F, 0.3F},
        {"9999 TSGR BKN014", 0.7F, 0.5F}, {"9999 +TSRA BKN014", 1.0F, 0.8F},
        {"9999 +DZ BKN014", 0.0F, 0.0F}};
    for (const auto& [groups, rain, thunder] : rows) {
        const XPlaneWeather record = generate(withGroups(groups));
        EXPECT_EQ(record.RainPercent, rain) << groups;
        EXPECT_EQ(record.ThunderstromPercent, thunder) << groups;
    }
}

TEST_F(XPlaneRecordTest, SurfaceWindAndItsShear)
{
    /// Wind of the METAR, miles to the SYNOP; direction, speed and shear.
    const std::tuple<Wind, double, float, float, float> rows[] = {
        {{90.0F, 9.0F, 0.0F, 0.0F}, 29.0, 90.0F, 9.0F, 16.0F}, // the SYNOP's gust of 25
        {{90.0F, 9.0F, 0.0F, 0.0F}, 31.0, 90.0F, 9.0F, 5.0F},
        {{90.0F, 9.0F, 15.0F, 0.0F}, 29.0, 90.0F, 9.0F, 6.0F},
        {{90.0F, 30.0F, 0.0F, 0.0F}, 29.0, 90.0F, 30.0F, 5.0F},
        {{0.0F, -1.0F, 0.0F, 0.0F}, 49.0, 270.0F, 12.0F, 13.0F},
        {{0.0F, -1.0F, 0.0F, 0.0F}, 51.0, 260.0F, 8.0F, 5.0F}, // surface wind of the upper air
    };
    for (const auto& [wind, synopNm, direction, speed, shear] : rows) {
        Metar metar = decodedMetar(kFair);
        metar.setWind(wind);
        const XPlaneWindLayer layer = generate(metar, decodedSynop(synopNm)).Winds[0];
        EXPECT_EQ(layer.Dir, direction);
        EXPECT_EQ(layer.Speed, speed);
        EXPECT_EQ(layer.ShearSpeed, shear);
        EXPECT_FLOAT_EQ(layer.Turbulence, speed / 30.0F);
    }
    options.gustySurfaceWind = false;
    EXPECT_EQ(generate(decodedMetar(kThunder)).Winds[0].Turbulence, 0.0F);
}

TEST_F(XPlaneRecordTest, ThinUpperAirIsAskedAtTwoHeights)
{
    const XPlaneWeather record = generate(decodedMetar(kFair), {}, Grib());
    ASSERT_EQ(record.Winds.size(), 3U);
    EXPECT_NEAR(record.Winds[1].Alt, 9144.1F, 0.1F);
    EXPECT_NEAR(record.Winds[2].Alt, 15240.2F, 0.1F);
    EXPECT_EQ(record.Winds[2].Marker, -100.0F);
}

TEST_F(XPlaneRecordTest, FileTextTakesFromANearSynopWhatTheMetarLacks)
{
    const Metar calm = decodedMetar("EDDF 011150Z /////KT 9999 05/M02 Q1021");
    const std::pair<double, const char*> rows[] = {
        {10.0, "27012G13KT 350V010 14SM  BKN033 FEW280CI  05/02 Q1021"}, // gust and visibility too
        {60.0, "27012G02KT 350V010 9999  BKN033 FEW280CI  05/02 Q1021"},
        {90.0, " 350V010 9999  BKN033 FEW280CI  05/02 Q1021"},
        {110.0, " 350V010 9999  FEW050 SCT121CI  05/02 Q1021"},
    };
    for (const auto& [synopNm, groups] : rows) {
        std::string text;
        XPlaneMetarText(calm, calm, decodedSynop(synopNm), {}, text, context);
        EXPECT_EQ(text, std::string("2019/07/01 12:30\nEDDF 011150Z ") + groups) << synopNm;
    }
}

} // namespace

#include "tests/weather/output/CompositionFixture.h"

#include <array>
#include <ostream>

using aviation::weather::Cloud;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

/// What a test says about a layer; prints itself when it differs.
struct Layer
{
    int lower = 0;
    int upper = 0;
    int type = 0;
    int topShape = 0;
    int turbulence = 1;
    int icing = 0;
    int precipType = 0;
    int precipRate = 0;

    bool operator==(const Layer&) const = default;
};

Layer layerOf(const CloudLayer& layer)
{
    return {layer.LowerAlt,   layer.UpperAlt, layer.Type,       layer.TopShape,
            layer.Turbulence, layer.Icing,    layer.PrecipType, layer.PrecipRate};
}

std::ostream& operator<<(std::ostream& stream, const Layer& layer)
{
    return stream << layer.lower << "-" << layer.upper << " type " << layer.type << " shape "
                  << layer.topShape << " turbulence " << layer.turbulence << " icing "
                  << layer.icing << " precipitation " << layer.precipType << "/"
                  << layer.precipRate;
}

class CompositionCloudsTest : public CompositionTest
{
protected:
    static Metar skyFrom(const std::string& groups, const std::string& temperatures = "15/08",
                         int elevation = 0)
    {
        return metarOf("EDDF 011220Z 27010KT 9999 " + groups + " " + temperatures + " Q1013",
                       elevation);
    }
    static Metar skyOf(const Cloud& cloud)
    {
        Metar metar = skyFrom("");
        metar.addCloud(cloud);
        return metar;
    }
    NewWeather cloudsOf(const Metar& metar, const Synop& synop = {}, const Grib& grib = {})
    {
        NewWeather record;
        EXPECT_EQ(composition::SetClouds(metar, synop, grib, record, context), 0);
        return record;
    }
};

TEST_F(CompositionCloudsTest, ShapesALayerByTheWeather)
{
    struct Row
    {
        const char* groups;
        const char* temperatures;
        Layer layer;
    };
    const Row rows[] = {
        {"FEW030", "15/08", {915, 1415, 9}},
        {"FEW030", "03/M01", {915, 1415, 9}},
        {"FEW030", "02/M01", {915, 1415, 9, 0, 1, 1}},
        {"-RA FEW030", "15/08", {915, 4915, 9, 0, 2, 0, 1, 1}},
        {"+DZ FEW030", "15/08", {915, 4915, 9, 0, 2, 0, 1, 3}},
        {"SN FEW030", "M05/M06", {915, 3915, 9, 0, 1, 2, 2, 2}},
        {"-SG FEW030", "M05/M06", {915, 3915, 9, 0, 1, 2, 2, 1}},
        {"SHRA FEW030", "15/08", {915, 6000, 9, 0, 1, 0, 1, 2}},
        {"SHRA FEW030", "00/M01", {915, 6000, 9, 0, 1, 1, 2, 2}},
        {"+TSRA FEW030", "15/08", {915, 10000, 10, 2, 3, 0, 1, 4}},
        {"TS FEW200", "15/08", {6096, 10000, 10, 2, 3, 0, 1, 3}},
        {"RA FEW099", "15/08", {3018, 7018, 9, 0, 2, 0, 1, 2}},
        {"RA FEW100", "15/08", {3048, 3548, 9}},
        {"FEW280", "15/08", {8535, 9035, 9}},
        {"TS FEW281", "15/08", {8565, 10000, 1, 2, 0, 0, 0, 3}},
        {"FEW030TCU", "15/08", {915, 4914, 9, 1, 3}},
        {"FEW030CB", "15/08", {915, 2914, 9, 2, 1}},
        {"TSRA FEW030CB", "15/08", {915, 2914, 9, 2, 1, 0, 1, 3}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.groups);
        const NewWeather record = cloudsOf(skyFrom(row.groups, row.temperatures));
        ASSERT_EQ(record.nCloudCtr, 1);
        EXPECT_EQ(layerOf(record.Cloud[0]), row.layer);
        EXPECT_EQ(record.Cloud[0].Cover, 2);
        EXPECT_EQ(record.Cloud[0].PrecipBase, 1);
        EXPECT_EQ(record.Cloud[0].Dev, 0);
    }
    EXPECT_EQ(layerOf(cloudsOf(skyOf({9, 3, 3000, -1, 0})).Cloud[0]), (Layer{915, 1914, 9, 1, 2}));
}

TEST_F(CompositionCloudsTest, FollowsTheOptions)
{
    options.turbulenceInCloud = false;
    options.icingInClouds = false;
    for (const char* groups : {"FEW030", "+TSRA FEW030", "SHSN FEW030", "FEW030TCU"}) {
        const NewWeather record = cloudsOf(skyFrom(groups, "M05/M06"));
        EXPECT_EQ(record.Cloud[0].Turbulence, 0) << groups;
        EXPECT_EQ(record.Cloud[0].Icing, 0) << groups;
    }
    for (const auto& [option, cover] : {std::pair(3, 3), std::pair(12, 8)}) {
        options.cavokCover = option; // of a cloud without coverage
        EXPECT_EQ(cloudsOf(skyOf({0, 0, 3000, -1, 0})).Cloud[0].Cover, cover);
    }
}

TEST_F(CompositionCloudsTest, PushesOverlappingLayersApart)
{
    const std::pair<const char*, std::vector<std::pair<int, int>>> rows[] = {
        {"FEW030 BKN035", {{915, 1064}, {1067, 1567}}},
        {"FEW030 SCT050", {{915, 1415}, {1524, 2024}}},
        {"FEW030 SCT030", {{915, 1015}, {1018, 1415}}},
        {"FEW030TCU SCT050", {{915, 1521}, {1524, 2024}}},
        // the upper layer ends up below the base it was moved to
        {"FEW030 SCT010 BKN005", {{915, 1015}, {1018, 1118}, {1121, 1221}}},
        {"BKN000 OVC000", {{0, 65533}, {0, 500}}},
    };
    for (const auto& [groups, expected] : rows) {
        const NewWeather record = cloudsOf(skyFrom(groups));
        std::vector<std::pair<int, int>> layers;
        for (std::size_t i = 0; i < static_cast<std::size_t>(record.nCloudCtr); ++i) {
            layers.emplace_back(record.Cloud[i].LowerAlt, record.Cloud[i].UpperAlt);
        }
        EXPECT_EQ(layers, expected) << groups;
        EXPECT_EQ(record.Cloud[layers.size()].LowerAlt, 0) << groups;
    }
}

TEST_F(CompositionCloudsTest, MeasuresLayersFromTheSea)
{
    const NewWeather high = cloudsOf(skyFrom("RA FEW030", "15/08", 5000));
    EXPECT_EQ(layerOf(high.Cloud[0]), (Layer{2439, 6439, 9, 0, 2, 0, 1, 2}));
    EXPECT_EQ(high.Cloud[0].PrecipBase, 1524);
    const NewWeather low = cloudsOf(skyFrom("FEW030", "15/08", -1266));
    EXPECT_EQ(layerOf(low.Cloud[0]), (Layer{529, 1029, 9}));
    EXPECT_EQ(low.Cloud[0].PrecipBase, -384);
    // above 9000 metres nothing falls
    EXPECT_EQ(cloudsOf(skyFrom("RA FEW099", "15/08", 20000)).Cloud[0].PrecipType, 0);
}

using CompositionCloudCodesTest = CompositionCloudsTest;

TEST_F(CompositionCloudCodesTest, ShapeLayersByTheWeatherAndAddSomeWithMixedClouds)
{
    struct Row
    {
        const char* groups;
        std::array<int, 3> codes; ///< low, middle, high
        Layer layer;
        int deviation;
        Layer extra = {}; ///< with mixed clouds; upper 0 for none
        int extraDeviation = 0;
        const char* temperatures = "15/08";
        int elevation = 0;
    };
    const Row rows[] = {
        {"FEW030", {0, 0, 0}, {915, 1214, 9, 0, 1, 0, 0, 2}, 0},
        {"FEW030", {1, 0, 0}, {915, 1214, 9, 0, 1, 0, 0, 2}, 0},
        {"FEW030", {2, 0, 0}, {915, 1914, 9, 0, 1, 0, 0, 2}, 0},
        {"FEW030", {3, 0, 0}, {915, 6914, 9, 1, 1, 0, 0, 2}, 0},
        {"FEW030", {4, 0, 0}, {915, 1414, 9, 1, 1, 0, 0, 2}, 0, {1115, 1415, 9, 1, 0, 0, 0, 2}, 0},
        {"FEW030", {5, 0, 0}, {915, 1165, 8, 0, 1, 0, 0, 2}, 0, {1166, 1416, 9, 1, 0, 0, 0, 2}, 50},
        {"FEW030", {6, 0, 0}, {915, 1914, 8, 0, 1, 0, 0, 2}, 0},
        {"FEW030", {7, 0, 0}, {915, 1114, 8, 0, 1, 0, 0, 2}, 0, {1115, 2115, 9, 0, 0, 0, 0, 2}, 0},
        {"FEW030",
         {8, 0, 0},
         {915, 1114, 8, 1, 1, 0, 0, 2},
         50,
         {1115, 2115, 9, 0, 0, 0, 0, 2},
         200},
        {"FEW030", {9, 0, 0}, {915, 3915, 9, 2, 3, 0, 0, 2}, 2000, {3916, 4216, 8, 2, 0}, 0},
        {"SCT100", {3, 0, 0}, {3048, 3548, 8}, 0},
        {"SCT100", {3, 1, 0}, {3048, 3548, 8}, 0},
        {"SCT100", {3, 2, 0}, {3048, 6048, 8}, 0},
        {"SCT100", {3, 3, 0}, {3048, 3548, 9}, 0},
        {"SCT100", {3, 6, 0}, {3048, 3548, 9}, 0},
        {"SCT100", {3, 7, 0}, {3048, 3548, 9}, 0, {3549, 4049, 8, 0, 0}, 0},
        {"SCT100", {3, 8, 0}, {3048, 4048, 9, 1}, 0},
        {"SCT100", {3, 9, 0}, {3048, 5048, 9, 1}, 0, {5049, 7049, 8, 0, 0}, 0},
        {"FEW300", {9, 9, 0}, {9144, 9194, 1, 0, 0}, 0},
        {"FEW300", {9, 9, 1}, {9144, 9194, 1, 0, 0}, 0},
        {"FEW300", {9, 9, 2}, {9144, 9444, 1, 0, 0}, 0},
        {"FEW300", {9, 9, 3}, {9144, 9744, 1, 0, 0}, 0},
        {"FEW300", {9, 9, 4}, {9144, 9244, 1, 0, 0}, 0},
        {"FEW300", {9, 9, 5}, {9144, 9444, 1, 0, 0}, 0},
        {"FEW300", {9, 9, 6}, {9144, 10144, 1, 0, 0}, 0},
        {"FEW300", {9, 9, 7}, {9144, 9244, 8, 0, 0}, 0},
        {"FEW300", {9, 9, 8}, {9144, 9244, 8, 0, 0}, 0},
        {"FEW300", {9, 9, 9}, {9144, 9444, 9, 0, 0}, 0},
        {"TS FEW290", {9, 9, 0}, {8840, 8890, 1, 0, 0, 0, 0, 3}, 0},
        {"-RA FEW030", {2, 0, 0}, {915, 2915, 9, 0, 2, 0, 1, 1}, 0},
        {"+DZ FEW030", {2, 0, 0}, {915, 6915, 9, 0, 2, 0, 1, 3}, 0},
        {"SN FEW030", {2, 0, 0}, {915, 4915, 9, 0, 1, 2, 2, 2}, 100, {}, 0, "M02/M03"},
        {"SG FEW030", {2, 0, 0}, {915, 1914, 9, 0, 1, 2, 0, 2}, 0, {}, 0, "M02/M03"},
        {"TS FEW030", {2, 0, 0}, {915, 6915, 10, 0, 3, 1, 1, 2}, 100, {}, 0, "01/M03"},
        {"TS FEW030", {2, 0, 0}, {915, 6915, 10, 0, 3, 1, 2, 2}, 100, {}, 0, "00/M03"},
        {"SHRA FEW030", {2, 0, 0}, {915, 4915, 9, 0, 1, 1, 2, 2}, 0, {}, 0, "00/M03"},
        {"RA FEW030", {2, 0, 0}, {3000, 7000, 9, 0, 2, 0, 1, 2}, 0, {}, 0, "15/08", 6840},
        // from 3001 metres on only the rate goes
        {"RA FEW030", {2, 0, 0}, {3001, 4000, 9, 0, 2, 0, 1, 0}, 0, {}, 0, "15/08", 6844},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.groups << testing::PrintToString(row.codes));
        const Metar sky = skyFrom(row.groups, row.temperatures, row.elevation);
        const Synop synop = cloudCodes(row.codes[0], row.codes[1], row.codes[2]);
        options.mixedClouds = false;
        const NewWeather plain = cloudsOf(sky, synop);
        ASSERT_EQ(plain.nCloudCtr, 1);
        EXPECT_EQ(layerOf(plain.Cloud[0]), row.layer);
        EXPECT_EQ(plain.Cloud[0].Dev, row.deviation);
        EXPECT_EQ(plain.Cloud[0].PrecipBase == 0, row.layer.lower <= 3000) << "low clouds only";
        options.mixedClouds = true;
        const NewWeather mixed = cloudsOf(sky, synop);
        ASSERT_EQ(mixed.nCloudCtr, row.extra.upper > 0 ? 2 : 1);
        if (row.extra.upper > 0) {
            EXPECT_EQ(layerOf(mixed.Cloud[1]), row.extra);
            EXPECT_EQ(mixed.Cloud[1].Dev, row.extraDeviation);
            EXPECT_EQ(mixed.Cloud[1].Cover, mixed.Cloud[0].Cover);
            EXPECT_EQ(mixed.Cloud[1].PrecipBase, 0);
        }
    }
}

TEST_F(CompositionCloudCodesTest, ChangesTheMainLayerOfSpreadOutCumulusOnlyWhenMixed)
{
    options.mixedClouds = true;
    const NewWeather record = cloudsOf(skyFrom("RA FEW030"), cloudCodes(4, 0, 0));
    // rain stays as the plain layer has it; the layer on top gets the fine adjustment
    EXPECT_EQ(layerOf(record.Cloud[0]), (Layer{915, 1114, 8, 0, 2, 0, 1, 2}));
    EXPECT_EQ(layerOf(record.Cloud[1]), (Layer{1115, 5115, 9, 1, 0, 0, 1, 2}));
    EXPECT_EQ(record.Cloud[0].PrecipBase, 1);
}

TEST_F(CompositionCloudCodesTest, ChoosesTheBandByTheBaseAndSparesThunderclouds)
{
    const Synop synop = cloudCodes(3, 1, 7);
    const std::tuple<Cloud, int, int> rows[] = {
        {{0, 2, 8000, -1, 0}, 9, 1},  {{0, 2, 8001, -1, 0}, 8, 0},   {{10, 2, 25000, -1, 0}, 9, 2},
        {{10, 2, 8000, -1, 0}, 9, 2}, {{10, 2, 25001, -1, 0}, 8, 0},
    };
    for (const auto& [cloud, type, topShape] : rows) {
        const NewWeather record = cloudsOf(skyOf(cloud), synop);
        EXPECT_EQ(record.Cloud[0].Type, type) << cloud.base;
        EXPECT_EQ(record.Cloud[0].TopShape, topShape) << cloud.base;
    }
    EXPECT_EQ(cloudsOf(skyOf({0, 2, 25000, -1, 0}), synop).Cloud[0].UpperAlt, 8120);
    EXPECT_EQ(cloudsOf(skyOf({0, 2, 25001, -1, 0}), synop).Cloud[0].UpperAlt, 7721);
}

TEST_F(CompositionCloudCodesTest, BelievesASynopUpToTwoHundredMiles)
{
    const auto typeAt = [this](double nm) {
        return cloudsOf(skyFrom("FEW030"), cloudCodes(6, 0, 0, north(nm))).Cloud[0].Type;
    };
    EXPECT_EQ(typeAt(199), 8);
    EXPECT_EQ(typeAt(201), 9);
    EXPECT_EQ(cloudsOf(skyFrom("FEW030"), cloudCodes(6, 0, 0, {})).Cloud[0].Type, 9);
}

TEST_F(CompositionCloudCodesTest, EndsLowCloudsWhereTheAirDries)
{
    const Grib grib = gribOf({{92, 800, "10004"}, {85, 1500, "08005"}, {70, 3100, "00160"}});
    EXPECT_EQ(cloudsOf(skyFrom("FEW030"), cloudCodes(2, 0, 0), grib).Cloud[0].UpperAlt, 1499);
    // a stratus is cut to 4000 metres after that
    const Grib moist = gribOf({{92, 800, "10004"}, {85, 1500, "08004"}, {50, 5600, "01204"}});
    EXPECT_EQ(cloudsOf(skyFrom("FEW030"), cloudCodes(6, 0, 0), moist).Cloud[0].UpperAlt, 4915);
    EXPECT_EQ(cloudsOf(skyFrom("FEW030"), cloudCodes(2, 0, 0), moist).Cloud[0].UpperAlt, 5599);
}

TEST_F(CompositionCloudsTest, CountsEightLayersAtMost)
{
    const Synop mixing = cloudCodes(5, 0, 0);
    const auto count = [&](int clouds, bool mixed) {
        options.mixedClouds = mixed;
        Metar metar = skyFrom("");
        for (int i = 0; i < clouds; ++i) {
            metar.addCloud({0, 2, 500 + i, -1, 0});
        }
        const NewWeather record = cloudsOf(metar, mixing);
        EXPECT_EQ(record.nUpperVisCtr, 0) << "what lies behind the clouds";
        return record.nCloudCtr;
    };
    EXPECT_EQ(count(8, false), 8);
    EXPECT_EQ(count(9, false), 8);
    EXPECT_EQ(count(4, true), 8);
    EXPECT_EQ(count(5, true), 8);
    EXPECT_EQ(count(40000, true), 8);
    options.generateCirrus = true;
    random.setNumbers({0, 4});
    EXPECT_EQ(count(9, false), 9);
}

TEST_F(CompositionCloudsTest, MakesUpACirrusUnlessTheSkyHasOne)
{
    random.setNumbers({21000, 11});
    const NewWeather made = cloudsOf(skyFrom("FEW030"));
    ASSERT_EQ(made.nCloudCtr, 2);
    EXPECT_EQ(layerOf(made.Cloud[1]), (Layer{10363, 10463, 1, 0, 0}));
    EXPECT_EQ(made.Cloud[1].Cover, 3);
    EXPECT_EQ(cloudsOf(skyFrom("FEW300"), cloudCodes(0, 0, 0)).nCloudCtr, 1);
    EXPECT_EQ(cloudsOf(skyFrom("FEW300")).nCloudCtr, 2); // unless no SYNOP says so
    random.setNumbers({21000, 8});
    EXPECT_EQ(cloudsOf(skyFrom("FEW030")).nCloudCtr, 1);
    random.setNumbers({21000, 11});
    options.generateCirrus = false;
    EXPECT_EQ(cloudsOf(skyFrom("FEW030")).nCloudCtr, 1);
}

TEST_F(CompositionCloudsTest, FillsFs2004FogWithStratus)
{
    const auto foggy = [this](const std::string& groups) {
        return cloudsOf(metarOf("EDDF 011220Z 00000KT " + groups + " 05/05 Q1013", 364));
    };
    options.simulator = aviation::fsid::kFs2004;
    options.generateStratus = true;
    const NewWeather fog = foggy("0800 FG FEW020");
    ASSERT_EQ(fog.nCloudCtr, 2);
    EXPECT_EQ(layerOf(fog.Cloud[0]), (Layer{111, 411, 8, 0, 0}));
    EXPECT_EQ(fog.Cloud[0].Cover, 8);
    EXPECT_EQ(fog.Cloud[1].LowerAlt, 721);
    EXPECT_EQ(foggy("1900 BR FEW010").nCloudCtr, 2);
    EXPECT_EQ(foggy("1900 BR FEW009").nCloudCtr, 1);
    EXPECT_EQ(foggy("2000 BR FEW010").nCloudCtr, 1);
    EXPECT_EQ(foggy("1900 HZ FEW010").nCloudCtr, 1);
    options.generateStratus = false;
    EXPECT_EQ(foggy("0800 FG FEW020").nCloudCtr, 1);
    options.generateStratus = true;
    options.simulator = aviation::fsid::kFsx;
    EXPECT_EQ(foggy("0800 FG FEW020").nCloudCtr, 1);
}

TEST_F(CompositionCloudsTest, KeepsCavokClearInRealAir)
{
    Metar metar = metarOf("EDDF 011220Z 27010KT CAVOK 40/M20 Q1013");
    EXPECT_EQ(cloudsOf(metar).nCloudCtr, 0);
    metar.setDewPoint(0.0F);
    metar.setTemperature(5000.0F);
    EXPECT_EQ(cloudsOf(metar).nCloudCtr, 0);
    metar.setTemperature(5001.0F);
    EXPECT_EQ(cloudsOf(metar).nCloudCtr, 1);
    options.cavokCover = 0;
    EXPECT_EQ(cloudsOf(metar).nCloudCtr, 0);
}

} // namespace

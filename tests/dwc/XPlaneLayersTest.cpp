#include "tests/dwc/ModelFixture.h"

using namespace dwctesting;
using aviation::weather::Metar;
using aviation::weather::Synop;
using aviation::weather::Wind;

namespace {

struct LayerCase
{
    const char* name = nullptr;
    Wind metar;
    Wind synop;
    double synopLatitude = 0.0; ///< the METAR stands at 50 degrees north
    bool gusty = false;
    float direction = 0.0F;
    float speed = 0.0F;
    float turbulence = 0.0F;
    float shearDirection = 0.0F;
    float shearSpeed = 0.0F;
};

/// An aircraft at 1327 feet, 999 above the station.
class XPlaneListTest : public ModelFixture
{
protected:
    void stepWith(const LayerCase& row)
    {
        m_settings.setGustySurfaceWind(row.gusty);
        Metar metar = metarOf(L"011220", row.metar, 328);
        metar.setPosition({50.0, 8.0});
        metar.setVariableLimits(200, 280);
        Synop synop = synopOf(L"0112", row.synop);
        synop.setPosition({row.synopLatitude, 8.0});
        synop.setElevation(328);
        m_model.setReports(metar, synop, {levelAt(10000, 120, 40), levelAt(5000, 100, 20)});
        setAircraft(1327, 999);
        m_model.StepXPlane();
        ASSERT_EQ(m_model.GetXPlaneLayers().size(), 3U);
    }
};

class XPlaneLayersTest : public XPlaneListTest, public ::testing::WithParamInterface<LayerCase>
{};

TEST_P(XPlaneLayersTest, TheGroundLayerFollowsTheReports)
{
    const LayerCase& row = GetParam();
    stepWith(row);
    const XPlaneWindLayer& ground = m_model.GetXPlaneLayers().front();
    EXPECT_FLOAT_EQ(ground.Alt, 99.97561F);
    EXPECT_EQ(ground.Dir, row.direction);
    EXPECT_EQ(ground.Speed, row.speed);
    EXPECT_FLOAT_EQ(ground.Turbulence, row.turbulence);
    EXPECT_EQ(ground.ShearDir, row.shearDirection);
    EXPECT_EQ(ground.ShearSpeed, row.shearSpeed);
    EXPECT_EQ(ground.Marker, -100.0F);
}

const LayerCase kGusts{"Gusts", {240, 15, 25, 0}, {}, 50.1, true, 240, 15, 0.5F, 80, 10};

INSTANTIATE_TEST_SUITE_P(
    Rows, XPlaneLayersTest,
    ::testing::Values(
        kGusts, LayerCase{"NoGustsWanted", {240, 15, 25, 0}, {}, 50.1, false, 240, 15, 0, 0, 0},
        LayerCase{"SmallGust", {240, 6, 10, 0}, {}, 50.1, true, 240, 6, 0.2F, 80, 1},
        LayerCase{"NearSynop", {240, 15, 0, 0}, {0, 0, 22, 0}, 50.4, true, 240, 15, 0.5F, 80, 7},
        LayerCase{"WeakSynop", {240, 15, 0, 0}, {0, 0, 15, 0}, 50.4, true, 240, 15, 0.5F, 80, 1},
        LayerCase{"At30Miles", {240, 15, 0, 0}, {0, 0, 22, 0}, 50.5, true, 240, 15, 0.5F, 80, 1},
        LayerCase{"NoWind", {0, -1, 0, 0}, {90, 12, 0, 0}, 50.8, true, 90, 12, 0.4F, 0, 1},
        LayerCase{"FarSynop", {0, -1, 0, 0}, {90, 12, 0, 0}, 50.85, false, 0, -1, 0, 0, 0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(XPlaneListTest, NearTheGroundTheAircraftsLayerIsLifted)
{
    stepWith(kGusts);
    const XPlaneWindLayer& aircraft = m_model.GetXPlaneLayers().at(1);
    EXPECT_FLOAT_EQ(aircraft.Dir, 105.308F); // 6327 ft
    EXPECT_EQ(aircraft.Turbulence + aircraft.ShearDir + aircraft.ShearSpeed, 0.0F);
    EXPECT_EQ(m_model.layersText(),
              QStringLiteral("(100):240.0/15.0 (1928):105.3/25.3 (3048):120.0/40.0"));
    setAircraft(1328, 1000);
    m_model.StepXPlane();
    EXPECT_FLOAT_EQ(m_model.GetXPlaneLayers().at(1).Alt, 404.77933F);
}

TEST_F(XPlaneListTest, OfTwoHighestLevelsTheLastIsTheTop)
{
    m_model.setReports(Metar(), Synop(), {levelAt(10000, 120, 40), levelAt(10000, 200, 60)});
    m_model.StepXPlane();
    EXPECT_EQ(m_model.GetXPlaneLayers().at(2).Dir, 200.0F);
}

TEST_F(XPlaneListTest, WithOneLevelTheListStays)
{
    m_model.setReports(Metar(), Synop(), {levelAt(5000, 100, 20)});
    m_model.StepXPlane();
    EXPECT_TRUE(m_model.GetXPlaneLayers().empty());
    stepWith(kGusts);
    m_model.setReports(Metar(), Synop(), {levelAt(5000, 100, 20)});
    m_model.StepXPlane();
    EXPECT_FLOAT_EQ(m_model.GetXPlaneLayers().at(2).Alt, 3048.037F);
}

} // namespace

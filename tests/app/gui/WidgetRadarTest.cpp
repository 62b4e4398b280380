#include "app/gui/WidgetRadar.h"

#include "tests/app/ControllerFixture.h"
#include "tests/app/gui/DlgTesting.h"

#include <QBrush>
#include <QCheckBox>
#include <QDial>
#include <QGraphicsRectItem>
#include <QGraphicsView>
#include <QPen>
#include <QPushButton>

#include <cmath>
#include <memory>
#include <numbers>

namespace {

TEST(RadarColour, GoesFromBlackOverGreenAndYellowToRed)
{
    const std::pair<int, QColor> rows[] = {
        {0, {0, 0, 0}},      {1, {0, 20, 0}},    {12, {0, 240, 0}},   {13, {130, 255, 0}},
        {25, {250, 255, 0}}, {26, {255, 0, 26}}, {255, {255, 0, 255}}};
    for (const auto& [density, colour] : rows) {
        EXPECT_EQ(RadarColour(static_cast<unsigned char>(density)), colour) << density;
    }
}

class Radar : public ControllerFixture
{
protected:
    void SetUp() override
    {
        ControllerFixture::SetUp();
        make();
        radar = std::make_unique<WidgetRadar>(*controller);
    }
    void TearDown() override
    {
        radar.reset();
        ControllerFixture::TearDown();
    }
    template <typename Widget>
    Widget& child(const char* name) const
    {
        return *radar->findChild<Widget*>(QString::fromLatin1(name));
    }
    QColor colour(std::size_t row, std::size_t column) const
    {
        return radar->cell(row, column).brush().color();
    }
    /// Where the picture's upward direction points to, degrees to the right of up.
    double turn() const
    {
        const QTransform turned = child<QGraphicsView>("graphicsView").transform();
        const double degrees = std::atan2(turned.m12(), turned.m11()) * 180.0 / std::numbers::pi;
        return degrees < 0.0 ? degrees + 360.0 : degrees;
    }

    std::unique_ptr<WidgetRadar> radar;
};

TEST_F(Radar, PaintsGridsOfAnyLengthRowByRow)
{
    EXPECT_EQ(radar->windowTitle(), "WeatherRadar"_q);
    std::vector<unsigned char> grid(65, 1);
    grid[64] = 12;
    radar->setCloudsRGB(grid);
    EXPECT_EQ(colour(0, 63), QColor(0, 20, 0));
    EXPECT_EQ(colour(1, 0), QColor(0, 240, 0));
    EXPECT_EQ(radar->cell(1, 0).pen().color(), QColor(0, 240, 0));
    EXPECT_EQ(colour(1, 1), QColor(0, 0, 0)) << "beyond the grid nothing changes";
    EXPECT_EQ(view.levelOf("max RGB:12"_q), 0);

    std::vector<unsigned char> tooLong(5000, 13);
    tooLong.back() = 200;
    radar->setCloudsRGB(tooLong);
    EXPECT_EQ(colour(63, 63), QColor(130, 255, 0));
    EXPECT_EQ(view.linesWith("max RGB:13"_q), 1) << "the rest is ignored";
    std::vector<unsigned char> nothing;
    radar->setCloudsRGB(nothing);
    EXPECT_EQ(colour(63, 63), QColor(130, 255, 0));

    const QRectF last = radar->cell(63, 63).rect();
    EXPECT_EQ(last.bottomRight(), QPointF(400.0, 400.0));
}

TEST_F(Radar, TurnsWithTheAircraftHoweverOftenAndAtAnySize)
{
    std::vector<unsigned char> grid(4096, 3);
    EXPECT_NEAR(turn(), 180.0, 1e-6);
    connectTo(4, 8);
    const std::pair<double, double> rows[] = {
        {90.0, 270.0}, {350.0, 170.0}, {0.0, 180.0}, {std::nan(""), 180.0}};
    for (const auto& [heading, expected] : rows) {
        simulator.answer([heading = heading](FakeSimulator::Answers& answers) {
            answers.aircraft.heading = heading;
        });
        flyAt(50.0, 8.5);
        radar->setCloudsRGB(grid);
        EXPECT_NEAR(turn(), expected, 1e-6);
        radar->resize(300, 900);
        EXPECT_NEAR(turn(), expected, 1e-6);
    }
}

TEST_F(Radar, AsksOnceOrAgainAndAgainWhileItIsShown)
{
    auto& refresh = child<QCheckBox>("checkBox_refreshClouds");
    auto& timer = child<QTimer>("timerRefresh");
    simulator.answer([](FakeSimulator::Answers& answers) { answers.clouds = {26}; });
    simulator.setResults("GetCloudState"_q, {simresult::kCloudReply});
    radar->show();
    EXPECT_TRUE(radar->hint().startsWith("Not connected"_q));
    connectTo(2, 3);
    EXPECT_TRUE(radar->hint().startsWith("No picture yet"_q));

    child<QDial>("dial_range").setValue(100);
    child<QDial>("dial_tilt").setValue(1000);
    EXPECT_EQ(child<QLabel>("label_valueRange").text(), "100"_q);
    child<QPushButton>("pushButton_request").click();
    settle();
    EXPECT_EQ(colour(0, 0), QColor(255, 0, 26));
    EXPECT_EQ(radar->hint(), QString());
    EXPECT_EQ(view.linesWith("Next Job ID: 30, Name: 100:1000"_q), 1);
    EXPECT_FALSE(timer.isActive());

    refresh.click();
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(timer.interval(), 2000);
    timer.start(0);
    ASSERT_TRUE(wait([this] { return simulator.calls("GetCloudState"_q).size() > 1; }));
    radar->hide();
    EXPECT_FALSE(timer.isActive());
    radar->show();
    EXPECT_TRUE(timer.isActive());
    refresh.click();
    EXPECT_FALSE(timer.isActive());
}

TEST_F(Radar, SaysWhyThereIsNoPicture)
{
    radar->show();
    connectTo(4, 8);
    child<QPushButton>("pushButton_request").click();
    settle();
    EXPECT_TRUE(radar->hint().contains("has no cloud map"_q));
    controller->OnConnectClicked();
    settle();
    EXPECT_TRUE(radar->hint().startsWith("Not connected"_q));
    connectTo(3, 3);
    simulator.setResults("GetCloudState"_q, {8});
    child<QPushButton>("pushButton_request").click();
    settle();
    EXPECT_TRUE(radar->hint().startsWith("The simulator gave no clouds: "_q));
    EXPECT_EQ(NamelessControls(*radar), QStringList());
}

} // namespace

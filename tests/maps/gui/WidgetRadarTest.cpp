#include "maps/gui/WidgetRadar.h"

#include "tests/support/NoteText.h"
#include "tests/support/Text.h"

#include <QBrush>
#include <QCheckBox>
#include <QDial>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLabel>
#include <QPen>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

TEST(RadarColourTest, GoesFromBlackOverGreenAndYellowToRed)
{
    const std::pair<int, QColor> rows[] = {
        {0, {0, 0, 0}},      {1, {0, 20, 0}},    {12, {0, 240, 0}},   {13, {130, 255, 0}},
        {25, {250, 255, 0}}, {26, {255, 0, 26}}, {255, {255, 0, 255}}};
    for (const auto& [density, colour] : rows) {
        EXPECT_EQ(radarColour(static_cast<unsigned char>(density)), colour) << density;
    }
}

class WidgetRadarTest : public testing::Test
{
protected:
    template <typename Widget>
    Widget& child(const char* name) const
    {
        return *radar.findChild<Widget*>(QString::fromLatin1(name));
    }
    const QGraphicsRectItem& cell(int row, int column) const
    {
        const double side = 400.0 / 64.0;
        const QPointF middle((column + 0.5) * side, (row + 0.5) * side);
        return *qgraphicsitem_cast<QGraphicsRectItem*>(
            child<QGraphicsView>("graphicsView").scene()->itemAt(middle, QTransform()));
    }
    QColor colour(int row, int column) const { return cell(row, column).brush().color(); }
    /// Where the picture's upward direction points to, degrees to the right of up.
    double turn() const
    {
        const QTransform turned = child<QGraphicsView>("graphicsView").transform();
        const double degrees = std::atan2(turned.m12(), turned.m11()) * 180.0 / std::numbers::pi;
        return degrees < 0.0 ? degrees + 360.0 : degrees;
    }
    QString note() const { return noteIn(radar); }
    QString lastLogLine() const { return log.isEmpty() ? QString() : log.last().at(0).toString(); }

    WidgetRadar radar;
    QSignalSpy requests{&radar, &WidgetRadar::sigRequestClouds};
    QSignalSpy log{&radar, &WidgetRadar::sigDebugString};
};

TEST_F(WidgetRadarTest, PaintsGridsOfAnyLengthRowByRow)
{
    EXPECT_EQ(radar.windowTitle(), "WeatherRadar"_q);
    std::vector<unsigned char> grid(65, 1);
    grid[64] = 12;
    radar.setCloudsRGB(grid);
    EXPECT_EQ(colour(0, 63), QColor(0, 20, 0));
    EXPECT_EQ(colour(1, 0), QColor(0, 240, 0));
    EXPECT_EQ(cell(1, 0).pen().color(), QColor(0, 240, 0));
    EXPECT_EQ(colour(1, 1), QColor(0, 0, 0)) << "beyond the grid nothing changes";
    EXPECT_EQ(lastLogLine(), "max RGB:12"_q);
    EXPECT_EQ(log.last().at(1).toInt(), 0);

    std::vector<unsigned char> tooLong(5000, 13);
    tooLong.back() = 200;
    radar.setCloudsRGB(tooLong);
    EXPECT_EQ(colour(63, 63), QColor(130, 255, 0));
    EXPECT_EQ(lastLogLine(), "max RGB:13"_q) << "the rest is ignored";
    std::vector<unsigned char> nothing;
    radar.setCloudsRGB(nothing);
    EXPECT_EQ(colour(63, 63), QColor(130, 255, 0));
    EXPECT_EQ(cell(63, 63).rect().bottomRight(), QPointF(400.0, 400.0));
}

TEST_F(WidgetRadarTest, TurnsWithTheAircraftHoweverOftenAndAtAnySize)
{
    std::vector<unsigned char> grid(4096, 3);
    EXPECT_NEAR(turn(), 180.0, 1e-6);
    const std::pair<double, double> rows[] = {
        {90.0, 270.0}, {350.0, 170.0}, {0.0, 180.0}, {std::nan(""), 180.0}};
    for (const auto& [heading, expected] : rows) {
        radar.setHeading(heading);
        radar.setCloudsRGB(grid);
        EXPECT_NEAR(turn(), expected, 1e-6);
        radar.resize(300, 900);
        EXPECT_NEAR(turn(), expected, 1e-6);
    }
}

TEST_F(WidgetRadarTest, AsksOnceOrAgainAndAgainWhileItIsShown)
{
    auto& refresh = child<QCheckBox>("checkBox_refreshClouds");
    auto& timer = child<QTimer>("timerRefresh");
    radar.show();
    child<QDial>("dial_range").setValue(100);
    child<QDial>("dial_tilt").setValue(1000);
    EXPECT_EQ(child<QLabel>("label_valueRange").text(), "100"_q);
    child<QPushButton>("pushButton_request").click();
    ASSERT_EQ(requests.size(), 1);
    EXPECT_EQ(requests.first(), QVariantList({100, 1000}));
    EXPECT_FALSE(timer.isActive());

    refresh.click();
    EXPECT_TRUE(timer.isActive());
    EXPECT_EQ(timer.interval(), 2000);
    timer.start(0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return requests.size() > 1; }, 10000));
    radar.hide();
    EXPECT_FALSE(timer.isActive());
    radar.show();
    EXPECT_TRUE(timer.isActive());
    refresh.click();
    EXPECT_FALSE(timer.isActive());
}

TEST_F(WidgetRadarTest, SaysWhyThereIsNoPicture)
{
    std::vector<unsigned char> grid(1, 26);
    radar.show();
    EXPECT_TRUE(note().startsWith("Not connected"_q));
    radar.setConnected(true);
    EXPECT_TRUE(note().startsWith("No picture yet"_q));
    radar.showNoCloudMap();
    EXPECT_TRUE(note().contains("has no cloud map"_q));
    radar.setCloudsRGB(grid);
    EXPECT_EQ(note(), QString());
    radar.showFailure("why"_q);
    EXPECT_EQ(note(), "The simulator gave no clouds: why"_q);
    radar.setConnected(true);
    EXPECT_EQ(note(), QString()) << "there is a picture";
    radar.setConnected(false);
    EXPECT_TRUE(note().startsWith("Not connected"_q));
}

} // namespace

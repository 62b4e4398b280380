#include "app/gui/RadarLink.h"

#include "maps/gui/WidgetRadar.h"
#include "tests/app/ControllerFixture.h"
#include "tests/app/gui/DlgTesting.h"

#include <QGraphicsView>
#include <QPushButton>

#include <memory>

namespace {

/// The radar over the whole simulator side.
class LinkedRadarTest : public ControllerFixture
{
protected:
    void SetUp() override
    {
        ControllerFixture::SetUp();
        make();
        radar = std::make_unique<WidgetRadar>();
        connectRadar(*radar, *controller);
    }
    void TearDown() override
    {
        radar.reset();
        ControllerFixture::TearDown();
    }
    void request()
    {
        radar->findChild<QPushButton*>("pushButton_request"_q)->click();
        settle();
    }
    QString note() const { return noteIn(*radar); }

    std::unique_ptr<WidgetRadar> radar;
};

TEST_F(LinkedRadarTest, GetsTheCloudsAndTheHeading)
{
    connectTo(2, 3);
    EXPECT_TRUE(note().startsWith("No picture yet"_q));
    simulator.answer([](FakeSimulator::Answers& answers) {
        answers.clouds = {26};
        answers.aircraft.heading = 90.0;
    });
    simulator.setResults("GetCloudState"_q, {simresult::kCloudReply});
    flyAt(50.0, 8.5);
    request();
    EXPECT_EQ(note(), QString());
    EXPECT_EQ(view.linesWith("Next Job ID: 30, Name: 40:4000"_q), 1);
    EXPECT_EQ(view.levelOf("max RGB:26"_q), 0);
    EXPECT_LT(radar->findChild<QGraphicsView*>()->transform().m12(), 0.0)
        << "turned by 270 degrees";
}

TEST_F(LinkedRadarTest, SaysWhyThereAreNone)
{
    EXPECT_TRUE(note().startsWith("Not connected"_q));
    request();
    EXPECT_TRUE(note().startsWith("Not connected"_q));
    connectTo(4, 8);
    request();
    EXPECT_TRUE(note().contains("has no cloud map"_q));
    controller->OnConnectClicked();
    settle();
    EXPECT_TRUE(note().startsWith("Not connected"_q));
    connectTo(3, 3);
    simulator.setResults("GetCloudState"_q, {8});
    request();
    EXPECT_TRUE(note().startsWith("The simulator gave no clouds: "_q));
    EXPECT_EQ(namelessControls(*radar), QStringList());
}

} // namespace

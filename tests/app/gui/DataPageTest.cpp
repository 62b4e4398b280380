#include "app/gui/AircraftTexts.h"
#include "app/gui/DockWidgetData.h"
#include "tests/support/Text.h"

#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

#include <clocale>

namespace {

TEST(AircraftTextsTest, VisibilityIsInKilometresOrUnlimited)
{
    const std::pair<float, const char*> rows[] = {{0.0F, "0 m"},
                                                  {9.9F, "9900 m"},
                                                  {10.0F, "10 km"},
                                                  {99999.0F, "99999 km"},
                                                  {10000000.0F, "unlimited"}};
    for (const auto& [kilometres, text] : rows) {
        EXPECT_EQ(aircrafttexts::visibilityText(kilometres).toStdString(), text);
    }
}

TEST(AircraftTextsTest, CoursesAreFoldedIntoTheCircle)
{
    const std::tuple<double, double, const char*> rows[] = {
        {90.0, 2.0, "090 T 088 Mag"},   {1.0, 3.0, "001 T 358 Mag"},
        {359.0, -2.0, "359 T 001 Mag"}, {359.7, 0.0, "000 T 000 Mag"},
        {-10.0, 0.0, "350 T 350 Mag"},
    };
    for (const auto& [course, variation, text] : rows) {
        EXPECT_EQ(aircrafttexts::courseText(course, variation).toStdString(), text);
    }
    aviation::structs::AircraftData data;
    data.heading = 100.0;
    data.magneticVariation = 4.0F;
    EXPECT_EQ(aircrafttexts::headingText(data).toStdString(), "104 T 100 Mag");
    data.headingMagnetic = 96.0;
    EXPECT_EQ(aircrafttexts::headingText(data).toStdString(), "100 T 096 Mag");
}

TEST(DataPageTest, ShowsTheAircraftAndEmptiesItself)
{
    std::setlocale(LC_ALL, "");
    DockWidgetData page;
    aviation::structs::AircraftData data;
    data.name = L"<b>Jet</b>";
    data.position = aviation::Position(44.5, -93.25);
    data.altitude = 34012;
    data.verticalSpeed = -120;
    data.totalWeight = 134220.4F;
    data.wind = {270.0F, 15.4F, -1.0F, 0.0F};
    data.magneticVariation = 5.0F;
    data.simTime = 86400;
    data.groundSpeed = 100;
    page.setAircraftData(data);
    const auto text = [&page](const char* name) {
        return page.findChild<QLabel*>(QString::fromLatin1(name))->text().toStdString();
    };
    EXPECT_EQ(page.findChild<QLabel*>("label_name"_q)->textFormat(), Qt::PlainText);
    const std::pair<const char*, const char*> rows[] = {
        {"label_name", "<b>Jet</b>"},
        {"label_latitude", "44.5"},
        {"label_longitude", "-93.25"},
        {"label_altitude", "34012 ft"},
        {"label_verticalspeed", "-120 ft/min"},
        {"label_weight", "134220 lbs"},
        {"label_wind", "270\u00B0/15kt  265\u00B0 Mag"},
        {"label_simtime", "1970.01.02 00:00:00"}};
    for (const auto& [name, shown] : rows) {
        EXPECT_EQ(text(name), shown);
    }
    data.position = aviation::Position(45.5, -93.25);
    page.setAircraftData(data);
    EXPECT_EQ(text("label_track"), "000 T 355 Mag");

    page.setDwcState("is not available for FS2020"_q, false);
    auto& wind = *page.findChild<QLineEdit*>("lineEdit_dwc_wind"_q);
    EXPECT_FALSE(wind.isEnabled());
    page.setTargetWind("(430):90.0/5.0 (10363):177.5/34.0 (30638):273.0/38.0"_q);
    EXPECT_EQ(wind.cursorPosition(), 0) << "what doesn't fit is cut at the end";
    page.clearData();
    EXPECT_EQ(text("label_altitude"), "");
    EXPECT_EQ(wind.text(), QString());
}

} // namespace

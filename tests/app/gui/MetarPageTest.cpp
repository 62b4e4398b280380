#include "app/gui/MainWidgetWeather.h"
#include "app/gui/UpperAirTable.h"
#include "app/gui/WidgetMetarUndock.h"
#include "tests/support/Text.h"

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <TestPaths.h>

namespace {

using aviation::weather::Metar;

Metar reportOf(const std::wstring& text, const std::wstring& name = L"Somewhere")
{
    Metar metar(text);
    metar.DecodeHeader();
    metar.Decode();
    metar.setIcao(text.substr(0, 4));
    metar.setName(name);
    metar.setPosition(aviation::Position(50.0, 8.5));
    return metar;
}

const std::wstring kFrankfurt = L"EDDF 251150Z 24012KT 9999 FEW020 09/04 Q1006";

class MetarPageTest : public ::testing::Test
{
protected:
    MetarPageTest() { page.OnEnableGetMetarButton(true); }

    QString text(int row) const { return list.item(row)->text(); }

    MainWidgetWeather page;
    QListWidget& list = *page.findChild<QListWidget*>("listWidget_metarRaw"_q);
    QLineEdit& line = *page.findChild<QLineEdit*>("lineEdit_GetMetar"_q);
    QPushButton& button = *page.findChild<QPushButton*>("pushButton_searchMetar"_q);
};

TEST_F(MetarPageTest, NewestReportIsOnTopAndTheSameTextStandsOnce)
{
    page.displayMetar(reportOf(kFrankfurt));
    page.displayMetar(reportOf(kFrankfurt));
    page.displayMetar(reportOf(L"KDEN 251153Z 18008KT 10SM CLR 02/M09 A3021"));
    page.displayMetar(reportOf(kFrankfurt));
    ASSERT_EQ(list.count(), 3);
    EXPECT_TRUE(text(0).startsWith("EDDF"_q));
    EXPECT_TRUE(text(1).startsWith("KDEN"_q));
    EXPECT_EQ(list.item(2)->background().color(), QColor(255, 255, 255));
    EXPECT_EQ(list.item(1)->background().color(), QColor(240, 240, 240));
    EXPECT_EQ(list.item(0)->background().color(), QColor(255, 255, 255));
    EXPECT_EQ(list.item(0)->foreground().color(), QColor(Qt::black));
}

TEST_F(MetarPageTest, RowsAndTheirTipsArePlainText)
{
    page.displayMetar(Metar(L"NO WEATHER"));
    EXPECT_EQ(text(0), "No metar found"_q);
    Metar metar = reportOf(kFrankfurt, L"<b>Main</b>");
    metar.setTafText(L"EDDF 251100Z\n 2512/2618\r\n\tCAVOK");
    metar.setVisFromSynop(4200);
    page.displayMetar(metar);
    EXPECT_EQ(text(0),
              QString::fromStdWString(kFrankfurt) + " \nTAF EDDF 251100Z 2512/2618  CAVOK"_q);
    const QString tip = list.item(0)->toolTip();
    EXPECT_TRUE(tip.contains("Wind: 240\u00B0/12kt"_q)) << tip.toStdString();
    EXPECT_TRUE(tip.contains("\nVis from Synop: 4200m"_q));
    EXPECT_TRUE(tip.contains("&lt;b&gt;Main"_q));
}

TEST_F(MetarPageTest, KeepsFiveHundredRows)
{
    for (int number = 0; number < 510; ++number) {
        page.displayMetar(reportOf(kFrankfurt + L" " + std::to_wstring(number)));
    }
    EXPECT_EQ(list.count(), 500);
    EXPECT_TRUE(text(0).endsWith(" 509"_q));
}

TEST_F(MetarPageTest, ClickAndReturnAskForTheUppercasedCode)
{
    QSignalSpy requests(&page, &MainWidgetWeather::OnMetarRequest);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(requests.isEmpty());
    line.setText("eddf"_q);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&line, Qt::Key_Return);
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests.at(0).at(0).toString(), "EDDF"_q);
    EXPECT_EQ(line.text(), "EDDF"_q);
}

TEST_F(MetarPageTest, UnknownCodeIsRedWithReadableText)
{
    const QColor usual = line.palette().color(QPalette::Base);
    page.OnBackgroundIcao("XXXX"_q, false);
    const QColor red = line.palette().color(QPalette::Base);
    EXPECT_GT(red.red(), 150);
    EXPECT_LT(red.green() + red.blue(), 100);
    EXPECT_GT(line.palette().color(QPalette::Text).lightness() - red.lightness(), 100);
    page.OnBackgroundIcao("XXXX"_q, true);
    EXPECT_EQ(line.palette().color(QPalette::Base), usual);
}

TEST_F(MetarPageTest, RowsOpenTheNewestReportOfTheirStation)
{
    page.displayMetar(reportOf(kFrankfurt));
    page.displayMetar(reportOf(L"LAND 251150Z 24012KT 9999 09/04 Q1006", L"10637"));
    page.displayMetar(reportOf(kFrankfurt + L" NOSIG"));
    const auto windowOf = [this](int row) {
        Q_EMIT list.itemDoubleClicked(list.item(row));
        const auto windows = page.findChildren<WidgetMetarUndock*>();
        return windows.isEmpty() ? nullptr : windows.last();
    };
    WidgetMetarUndock* frankfurt = windowOf(2);
    ASSERT_NE(frankfurt, nullptr);
    EXPECT_EQ(frankfurt->icao(), "EDDF"_q);
    EXPECT_TRUE(frankfurt->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(windowOf(0), frankfurt) << "one window for a station";
    EXPECT_EQ(windowOf(1)->icao(), "10637"_q);
}

TEST_F(MetarPageTest, UpperAirTableHasTheHighestLevelOnTop)
{
    QFile file(QStringLiteral(CIRRILON_TEST_DATA "/upperair/frankfurt.txt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    aviation::weather::Grib grib(QString::fromLatin1(file.readAll()).toStdWString());
    grib.DecodeHeader();
    grib.Decode();
    ASSERT_GT(grib.levels().size(), 2U);
    page.OnTableGribUpdate(grib);
    const auto& table = *page.findChild<UpperAirTable*>("tableWidget_upperair"_q);
    ASSERT_EQ(table.rowCount(), static_cast<int>(grib.levels().size()));
    const auto& lowest = grib.levels().front();
    const int last = table.rowCount() - 1;
    EXPECT_EQ(table.item(last, 0)->text(), QString::number(lowest.altitude));
    EXPECT_EQ(table.item(last, 3)->text(), QString::number(lowest.temperature));
    EXPECT_GT(table.item(0, 0)->text().toInt(), table.item(1, 0)->text().toInt());
}

} // namespace

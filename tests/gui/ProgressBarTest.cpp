#include "gui/ProgressBar.h"

#include "tests/support/Text.h"

#include <QLabel>
#include <QProgressBar>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

TEST(ProgressBarRulesTest, ShowsHidesAndIsBusy)
{
    ProgressBar widget;
    const auto& bar = *widget.findChild<QProgressBar*>("progressBar"_q);
    const std::tuple<qlonglong, qlonglong, QString, bool, int, int, QString> rows[] = {
        {0, 0, QString(), true, -1, 100, "%p%"_q},
        {10, 600, "Update"_q, false, 10, 600, "Update"_q},
        {900, 600, "Update"_q, false, 600, 600, "Update"_q},
        {0, 0, "Connecting"_q, false, -1, 0, "Connecting"_q},
        {0, 0, QString(), true, -1, 0, "Connecting"_q},
        {1, 2, "50 % of 2"_q, false, 1, 2, "50 \uFF05 of 2"_q},
    };
    for (const auto& [value, total, text, hidden, barValue, barTotal, format] : rows) {
        SCOPED_TRACE(qPrintable(text));
        widget.setProgress(value, total, text);
        EXPECT_EQ(bar.isHidden(), hidden);
        EXPECT_EQ(bar.maximum(), barTotal);
        EXPECT_EQ(bar.format(), format);
        EXPECT_TRUE(barValue < 0 || bar.value() == barValue) << bar.value();
    }
    widget.setProgress(3000000000LL, 6000000000LL, "Bytes"_q);
    EXPECT_FALSE(bar.isHidden());
    EXPECT_NEAR(static_cast<double>(bar.value()) / bar.maximum(), 0.5, 1e-6);
}

/// As the accessibility rules of the web reckon it, 1 to 21.
double contrast(const QColor& a, const QColor& b)
{
    const auto luminance = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF())
               + 0.0722 * part(colour.blueF());
    };
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

TEST(ProgressBarRulesTest, AnAlarmStandsInRedUntilItIsOver)
{
    QWidget window;
    ProgressBar widget(&window);
    const auto& status = *widget.findChild<QLabel*>("label_status"_q);
    for (const auto& [ground, text] : {std::pair(0xefefef, 0x000000), {0x353535, 0xffffff}}) {
        QPalette theme;
        theme.setColor(QPalette::Window, QColor(static_cast<QRgb>(ground)));
        theme.setColor(QPalette::WindowText, QColor(static_cast<QRgb>(text)));
        window.setPalette(theme);
        widget.setStatusText("before"_q);
        widget.setAlarm("lost"_q);
        widget.setStatusText("Weather download in 5min"_q);
        EXPECT_EQ(status.text(), "lost"_q);
        const QColor red = status.palette().color(QPalette::WindowText);
        EXPECT_GT(red.red(), red.blue() + 50);
        EXPECT_GT(red.red(), red.green() + 50);
        EXPECT_GT(contrast(red, QColor(static_cast<QRgb>(ground))), 4.5);
        QPalette other = theme;
        other.setColor(QPalette::Window, theme.color(QPalette::WindowText));
        other.setColor(QPalette::WindowText, theme.color(QPalette::Window));
        window.setPalette(other); // the desktop's theme is switched meanwhile
        EXPECT_NE(status.palette().color(QPalette::WindowText), red);
        widget.setAlarm(QString());
        EXPECT_EQ(status.text(), "Weather download in 5min"_q);
        EXPECT_EQ(status.palette().color(QPalette::WindowText), other.color(QPalette::WindowText));
    }
}

} // namespace

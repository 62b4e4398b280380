#include "gui/ProgressBar.h"

#include "tests/support/Text.h"

#include <QProgressBar>

#include <gtest/gtest.h>

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

} // namespace

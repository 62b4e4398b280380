#include "app/gui/ProgressBar.h"

#include <QProgressBar>

#include <gtest/gtest.h>

namespace {

TEST(ProgressBarRules, ShowsHidesAndIsBusy)
{
    ProgressBar widget;
    const auto& bar = *widget.findChild<QProgressBar*>(QStringLiteral("progressBar"));
    struct Row
    {
        qlonglong value;
        qlonglong total;
        const char* text;
        bool hidden;
        int barValue;
        int barTotal;
        const char* format;
    };
    const Row rows[] = {
        {0, 0, "", true, -1, 100, "%p%"},
        {10, 600, "Update", false, 10, 600, "Update"},
        {11, 600, "Update", false, 11, 600, "Update"},
        {900, 600, "Update", false, 600, 600, "Update"},
        {0, 0, "Connecting", false, 600, 0, "Connecting"},
        {0, 0, "", true, 600, 0, "Connecting"},
        {1, 2, "50 % of 2", false, 1, 2, "50 \uFF05 of 2"},
        {3000000000LL, 6000000000LL, "Bytes", false, 1500000000, 0, "Bytes"},
    };
    for (const Row& row : rows) {
        widget.setProgress(row.value, row.total, QString::fromUtf8(row.text));
        EXPECT_EQ(bar.isHidden(), row.hidden) << row.text;
        if (row.total > 2147483647LL) {
            EXPECT_NEAR(static_cast<double>(bar.value()) / bar.maximum(), 0.5, 1e-6);
            continue;
        }
        EXPECT_EQ(bar.maximum(), row.barTotal) << row.text;
        EXPECT_EQ(bar.format(), QString::fromUtf8(row.format));
        if (row.barTotal > 0 && !row.hidden) {
            EXPECT_EQ(bar.value(), row.barValue) << row.text;
        }
    }
}

} // namespace

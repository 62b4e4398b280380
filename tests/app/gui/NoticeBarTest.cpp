#include "app/gui/NoticeBar.h"

#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>

#include <gtest/gtest.h>

TEST(NoticeBarTest, StandsWhileALineIsUnsettled)
{
    NoticeBar bar;
    EXPECT_TRUE(bar.isHidden());
    bar.showNotice(Notice::Settings, QStringLiteral("first"));
    bar.showNotice(Notice::Download, QStringLiteral("second"));
    bar.showNotice(Notice::Download, QStringLiteral("third"));
    QStringList texts;
    for (const QLabel* label : bar.findChildren<QLabel*>()) {
        if (!label->text().isEmpty()) {
            texts << label->text();
        }
    }
    EXPECT_EQ(texts, QStringList({QStringLiteral("first"), QStringLiteral("third")}));
    bar.clearNotice(Notice::Settings);
    EXPECT_FALSE(bar.isHidden());
    bar.clearNotice(Notice::Download);
    EXPECT_TRUE(bar.isHidden());
}

TEST(NoticeBarTest, OffersToFetchAFailedDownloadAgain)
{
    NoticeBar bar;
    bar.showNotice(Notice::Download, QStringLiteral("failed"));
    QSignalSpy again(&bar, &NoticeBar::sigDownloadAgain);
    for (QToolButton* button : bar.findChildren<QToolButton*>()) {
        if (button->text() == QStringLiteral("Try again")) {
            button->click();
        }
    }
    EXPECT_EQ(again.size(), 1);
    EXPECT_TRUE(bar.isHidden());
}

#include "app/base/OutsideText.h"

#include <gtest/gtest.h>

TEST(OutsideTextTest, ForLogIsOneLineOfPlainText)
{
    EXPECT_EQ(outsidetext::forLog(QByteArray("@0005;\r\nA<b>\t\x1B[2J\xE2\x80\xA8")).toStdString(),
              "@0005;\\r\\nA&lt;b&gt;\t\\u001b[2J\\u2028");
    EXPECT_EQ(outsidetext::forLog(QByteArray(5000, '\n')).toStdString().substr(8190),
              "\\n ... (5000 bytes)");
}

TEST(OutsideTextTest, AQuoteIsShortAndATerminalIsNotSteered)
{
    EXPECT_EQ(outsidetext::quoted(" <b>\r\n\x1B[2J  end ").toStdString(), "<b> [2J end");
    EXPECT_EQ(outsidetext::quoted(QByteArray("\xC3\xA4").repeated(1000)), QString(80, QChar(0xE4)));
    EXPECT_EQ(outsidetext::forTerminal(QStringLiteral("a\n\x1B[2J\r")).toStdString(), "a\n?[2J?");
}

#include "app/base/IniFormat.h"

#include "app/base/IniText.h"
#include "tests/app/base/SettingsFixture.h"

#include <QBuffer>

namespace {

class IniFormatTest : public SettingsFixture
{
protected:
    static QSettings::SettingsMap values()
    {
        QSettings::SettingsMap map;
        map.insert(QStringLiteral("top"), QStringLiteral("1"));
        map.insert(QStringLiteral("General/x"), QStringLiteral("named as the default section"));
        map.insert(QStringLiteral("a b/c/d \u00e4\u0416%"), QStringLiteral("odd key"));
        map.insert(QStringLiteral("t/text"), QStringLiteral("x, \"y\" ; =\\ \u00e4\u20ac1 '?"));
        map.insert(QStringLiteral("t/space"), QStringLiteral(" both ends "));
        map.insert(QStringLiteral("t/at"), QStringLiteral("@home(1)"));
        map.insert(QStringLiteral("t/nul"), QString::fromUtf8("a\0b1", 4));
        map.insert(QStringLiteral("t/lines"), QStringLiteral("a\r\n\tb\v\f\a\b\x7f"
                                                             "0"));
        map.insert(QStringLiteral("t/empty"), QString());
        map.insert(QStringLiteral("t/bytes"), QByteArray("\0\1\xff"
                                                         "12ab;,\"",
                                                         10));
        map.insert(QStringLiteral("t/nobytes"), QByteArray());
        map.insert(QStringLiteral("t/invalid"), QVariant());
        return map;
    }
};

TEST_F(IniFormatTest, QtReadsWhatIsWritten)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSettings::SettingsMap map = values();
    map.insert(QStringLiteral("l/list"),
               QStringList({QString(), QStringLiteral("b, c"), QString()}));
    ASSERT_TRUE(writeIni(buffer, map));
    write(path("ours.ini"), buffer.data());
    const QSettings qt(path("ours.ini"), QSettings::IniFormat);
    EXPECT_EQ(qt.value(QStringLiteral("l/list")).toStringList(),
              QStringList({QString(), QStringLiteral("b, c"), QString()}));
    const QSettings::SettingsMap expected = values();
    EXPECT_EQ(qt.allKeys().size(), expected.size() + 1);
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        EXPECT_EQ(qt.value(it.key()), it.value()) << it.key().toStdString();
    }
}

TEST_F(IniFormatTest, ReadsHandWrittenTextAsQtDoes)
{
    // Comments, lines carried on, quotes in the middle, escapes cut short, keys twice.
    const QByteArray text =
        "; c\n  k1 = a b  ; note\nk2=\"x\ny\"z \nk3=a\\\r\nb\nk3=c\\\nd\r\nk4=\\x\n"
        "k5=\\x10041\\102\\q\\\"\n[ s ]\nnothing\nk=\"a\" , \n[GENERAL]\nk6=1=2\n"
        "#k7=7\n[%U0041%zz%4]\nb\\c%20=1\nend=\"open";
    write(path("hand.ini"), text);
    const QSettings qt(path("hand.ini"), QSettings::IniFormat);
    QSettings::SettingsMap map = initext::parse(text);
    EXPECT_EQ(map.take(QStringLiteral("s/k")).toStringList(),
              qt.value(QStringLiteral("s/k")).toStringList());
    EXPECT_EQ(map.size(), 9);
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        EXPECT_EQ(it.value(), qt.value(it.key())) << it.key().toStdString();
    }
}

} // namespace

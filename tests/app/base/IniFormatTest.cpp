#include "app/base/IniFormat.h"

#include "app/base/IniText.h"
#include "tests/app/base/SettingsFixture.h"

#include <QBuffer>

namespace {

using IniFormatTest = SettingsFixture;

TEST_F(IniFormatTest, QtReadsWhatIsWritten)
{
    const QStringList list{QString(), "b, c"_q, QString()};
    const QSettings::SettingsMap map{
        {"top"_q, "1"_q},
        {"General/x"_q, "named as the default section"_q},
        {"a b/c/d \u00e4\u0416%"_q, "odd key"_q},
        {"t/text"_q, "x, \"y\" ; =\\ \u00e4\u20ac1 '?"_q},
        {"t/space"_q, " both ends "_q},
        {"t/at"_q, "@home(1)"_q},
        {"t/nul"_q, "a\0b1"_q},
        {"t/lines"_q, "a\r\n\tb\v\f\a\b\1770"_q},
        {"t/empty"_q, QString()},
        {"t/bytes"_q, QByteArray("\0\1\37712ab;,\"", 10)},
        {"t/nobytes"_q, QByteArray()},
        {"t/invalid"_q, QVariant()},
        {"l/list"_q, list},
    };
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(writeIni(buffer, map));
    write(path("ours.ini"), buffer.data());
    const QSettings qt(path("ours.ini"), QSettings::IniFormat);
    EXPECT_EQ(qt.allKeys().size(), map.size());
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
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
    EXPECT_EQ(map.take("s/k"_q).toStringList(), qt.value("s/k"_q).toStringList());
    EXPECT_EQ(map.size(), 9);
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        EXPECT_EQ(it.value(), qt.value(it.key())) << it.key().toStdString();
    }
}

TEST_F(IniFormatTest, ReadAndWrittenAgainItIsTheSame)
{
    for (const char* text : {"[\\\\\n=", "[]\na=1", "[\\b]\na=1", "\\a=1", "[General\\b]\na=1",
                             "[a]\n=1", "=1", "[%25General]\na=1", "a=\"b\\t\""})
    {
        const QSettings::SettingsMap map = initext::parse(text);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        ASSERT_TRUE(writeIni(buffer, map));
        EXPECT_EQ(initext::parse(buffer.data()), map)
            << text << " -> " << buffer.data().constData();
    }
}

} // namespace

#include "app/base/IniFile.h"

#include "tests/app/base/SettingsFixture.h"

#include <QByteArrayList>
#include <QSettings>

#include <algorithm>

namespace {

using IniFileTest = SettingsFixture;
using Dialect = IniFile::Dialect;

/// Qt sorts keys on some platforms.
QByteArray sortedLines(const QByteArray& text)
{
    QByteArrayList lines = text.split('\n');
    std::sort(lines.begin(), lines.end());
    return lines.join('\n');
}

TEST_F(IniFileTest, QtReadsWhatIsWritten)
{
    const QStringList list{QString(), "b, c"_q, QString()};
    const QVector<QPair<QString, QVariant>> rows{
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
    IniFile file;
    for (const auto& [key, value] : rows) {
        file.setValue(key, value);
    }
    ASSERT_TRUE(file.write(path("new folder/ours.ini")));
    const QSettings qt(path("new folder/ours.ini"), QSettings::IniFormat);
    EXPECT_EQ(qt.allKeys().size(), rows.size());
    for (const auto& [key, value] : rows) {
        EXPECT_EQ(qt.value(key), value) << key.toStdString();
    }
}

TEST_F(IniFileTest, ReadsHandWrittenTextAsQtDoes)
{
    // Comments, lines carried on, quotes in the middle, escapes cut short, keys twice.
    const QByteArray text =
        "; c\n  k1 = a b  ; note\nk2=\"x\ny\"z \nk3=a\\\r\nb\nk3=c\\\nd\r\nk4=\\x\n"
        "k5=\\x10041\\102\\q\\\"\n[ s ]\nnothing\nk=\"a\" , \n[GENERAL]\nk6=1=2\n"
        "#k7=7\n[%U0041%zz%4]\nb\\c%20=1\nend=\"open";
    write(path("hand.ini"), text);
    const QSettings qt(path("hand.ini"), QSettings::IniFormat);
    IniFile file(text);
    EXPECT_EQ(file.list("s/k"_q), qt.value("s/k"_q).toStringList());
    file.remove("s/k"_q);
    EXPECT_EQ(file.keys().size(), 9);
    for (const QString& key : file.keys()) {
        EXPECT_EQ(file.value(key), qt.value(key)) << key.toStdString();
    }
}

TEST_F(IniFileTest, ReadAndWrittenAgainItIsTheSame)
{
    for (const char* text :
         {"[\\\\\n=", "[]\na=1", "[\\b]\na=1", "\\a=1", "[General\\b]\na=1", "[a]\n=1", "=1",
          "[%25General]\na=1", "a=\"b\\t\"", "[a]\nx=1\n[b]\nx=2\n[A]\nX=3\ny=@@\n"})
    {
        for (const Dialect dialect : {Dialect::Qt, Dialect::Simulator}) {
            const IniFile file(text, dialect);
            EXPECT_EQ(IniFile(file.toText()), file) << text << file.toText().constData();
        }
    }
}

TEST_F(IniFileTest, KeysAreAlikeInAnyCaseAndKeepTheirFirstSpelling)
{
    IniFile file("[Weights]\nEmptyWeight=1\nold=2\n[WEIGHTS]\nemptyweight=3\n");
    EXPECT_EQ(file.integer("weights/EMPTYWEIGHT"_q), 3);
    file.setValue("weights/emptyWeight"_q, 4);
    file.setValue("Other/x"_q, true);
    file.setValue("weights/New"_q, "n"_q);
    file.remove("WEIGHTS/OLD"_q);
    EXPECT_EQ(file.toText(), "[Weights]\nEmptyWeight=4\nNew=n\n\n[Other]\nx=true\n");
    EXPECT_EQ(file.sections(), QStringList({"Weights"_q, "Other"_q}));
    file.remove("weights"_q);
    EXPECT_EQ(file.keys(), QStringList("Other/x"_q));
}

TEST_F(IniFileTest, GroupsAndArraysAreThoseOfQt)
{
    // With and without a size given, nested, and without rows.
    const auto fill = [](auto& file) {
        file.setValue("Name"_q, "B 738"_q);
        file.beginWriteArray("Payload"_q);
        for (int row = 0; row < 11; ++row) {
            file.setArrayIndex(row);
            file.setValue("maxWeight"_q, row * 10);
        }
        file.endArray();
        file.beginGroup("Speeds"_q);
        file.setValue("maxAlt"_q, 41000);
        file.beginWriteArray("ClimbRates"_q, 1);
        file.setArrayIndex(0);
        file.setValue("height"_q, 5000);
        file.endArray();
        file.beginWriteArray("none"_q);
        file.endArray();
        file.endGroup();
        file.setValue("last"_q, 1);
    };
    IniFile ours;
    fill(ours);
    {
        QSettings qt(path("qt.ini"), QSettings::IniFormat);
        fill(qt);
    }
    EXPECT_EQ(sortedLines(ours.toText()), sortedLines(read(path("qt.ini"))));
    EXPECT_TRUE(ours.toText().endsWith("\nClimbRates\\1\\height=5000\nnone\\size=0\n"));

    EXPECT_EQ(ours.beginReadArray("payload"_q), 11);
    ours.setArrayIndex(10);
    EXPECT_EQ(ours.integer("MaxWeight"_q), 100);
    ours.endArray();
    ours.beginGroup("speeds"_q);
    EXPECT_EQ(ours.beginReadArray("none"_q), 0);
    ours.endArray();
    EXPECT_EQ(ours.integer("maxalt"_q), 41000);
    ours.remove(QString());
    ours.endGroup();
    EXPECT_EQ(ours.sections(), QStringList("Payload"_q));
    for (const char* size : {"-1", "x", ""}) {
        ours.setValue("Payload/size"_q, QLatin1String(size));
        EXPECT_EQ(ours.beginReadArray("Payload"_q), 0) << size;
        ours.endArray();
    }
    ours.setValue("Payload/size"_q, "2000000000"_q);
    EXPECT_LE(ours.beginReadArray("Payload"_q), 20);
}

TEST_F(IniFileTest, NumbersAreWholeValuesOrNothing)
{
    const std::tuple<const char*, int, double, bool> rows[] = {
        {"a=12", 12, 12, true},
        {"a=-7 ; note", -7, -7, true},
        {"a=12abc", 0, 0, true},
        {"a=1.5", 0, 1.5, true},
        {"a=1,5", 0, 0, true},
        {"a=", 0, 0, false},
        {"a=99999999999", 0, 1e11 - 1, true},
        {"a=inf", 0, 0, true},
        {"a=1e999", 0, 0, true},
        {"a=false", 0, 0, false},
        {"b=1", 5, 2.5, true},
    };
    for (const auto& [text, integer, number, flag] : rows) {
        const IniFile file(text);
        EXPECT_EQ(file.integer("a"_q, 5), integer) << text;
        EXPECT_EQ(file.number("a"_q, 2.5), number) << text;
        EXPECT_EQ(file.flag("a"_q, true), flag) << text;
    }
}

TEST_F(IniFileTest, ReadsFilesOfSimulators)
{
    const QByteArray longText(2000, 'x');
    const IniFile file(
        "\xEF\xBB\xBF// made by hand = yes\r\nversion\t=\t1 // first\r\n[FLTSIM.0]\r\n"
        "title = Wing \"A\" ; a\r\nPanel=..\\b738\\panel\r\nsize=17\"\r\n"
        "ui_createdby=\"http://a.test;b\"//c\r\n[General] // d\r\n"
        "atc_id=D\xDC\r\natc_model=D\xC3\x9C\r\n a=b=c\r\nstation_load.0 = 170, 1.2\r\n"
        "description="
            + longText + "\r\nno value\r\n[broken\r\nk=1\r\n",
        Dialect::Simulator);
    const std::pair<const char*, QString> rows[] = {
        {"version", "1"_q},
        {"fltsim.0/TITLE", "Wing \"A\""_q},
        {"fltsim.0/panel", "..\\b738\\panel"_q},
        {"fltsim.0/size", "17\""_q},
        {"fltsim.0/ui_createdby", "\"http://a.test;b\""_q},
        {"general/atc_id", "D\u00dc"_q},
        {"general/atc_model", "D\u00dc"_q},
        {"general/a", "b=c"_q},
        {"general/station_load.0", "170, 1.2"_q},
        {"general/description", QString::fromLatin1(longText)},
        {"broken/k", "1"_q},
    };
    for (const auto& [key, value] : rows) {
        EXPECT_EQ(file.value(QLatin1String(key)), value) << key;
    }
    EXPECT_EQ(file.keys().size(), 11);
}

TEST_F(IniFileTest, AFileThatCannotBeReadOrWrittenIsReported)
{
    IniFile file("a=1");
    EXPECT_EQ(file.read(path("missing.ini")), IniFile::ReadResult::Missing);
    EXPECT_TRUE(file.keys().isEmpty());
    EXPECT_EQ(file.read(path(".")), IniFile::ReadResult::Unreadable);
    write(path("a.ini"), "a=1\n");
    EXPECT_EQ(file.read(path("a.ini"), Dialect::Qt, 3), IniFile::ReadResult::Unreadable);
    EXPECT_EQ(file.read(path("a.ini"), Dialect::Qt, 4), IniFile::ReadResult::Done);
    EXPECT_FALSE(file.write(path("a.ini/b.ini")));
    EXPECT_EQ(read(path("a.ini")), "a=1\n");
}

} // namespace

#include "app/base/Settings.h"

#include "app/base/IniFile.h"
#include "tests/app/base/SettingsFixture.h"

#include <QSignalSpy>

#include <TestPaths.h>
#include <thread>
#include <vector>

namespace {

using SettingsTest = SettingsFixture;

bool other(bool value)
{
    return !value;
}

int other(int value)
{
    return value ^ 2; // within all bounds
}

QString other(const QString& value)
{
    return " \"%1\",; =\\@\n\t\u00e4\u0416a1 "_q.arg(value) + QChar(0xD83D) + QChar(0xDE00)
           + "f%2"_q;
}

QByteArray other(const QByteArray& /*value*/)
{
    QByteArray bytes(512, '\0');
    for (int i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i * 7);
    }
    return bytes;
}

TEST_F(SettingsTest, DefaultsAreWrittenInTheOrderOfTheTable)
{
    Settings settings(mainFile(), m_random);
    for (const char* name : {"main.ini", "profile.ini"}) {
        const QString file = name[0] == 'm' ? mainFile() : path("profiles/b738.ini");
        settings.save(file);
        QByteArray expected = read(CIRRILON_TEST_DATA "/settings/"_q + QLatin1String(name));
        expected.replace("@DOCUMENTS@", Settings::documentsFolder().toUtf8());
        EXPECT_EQ(read(file), expected);
    }
}

TEST_F(SettingsTest, EveryOptionComesBackFromItsFiles)
{
    Settings settings(mainFile(), m_random);
#define CIRRILON_SET(type, getter, Setter, key, value, optionClass)                                \
    settings.Setter(other(settings.getter()));
    CIRRILON_OPTIONS(CIRRILON_SET)
#undef CIRRILON_SET
    settings.setMapLastPos("-33.9:151.2"_q);
    settings.setWorkFolder(settings.workFolder() + QLatin1Char('/'));
    settings.save(mainFile());
    settings.save(path("night.INI"));

    const Settings again(mainFile(), m_random);
    EXPECT_EQ(optionsOf(again), optionsOf(settings));

    const Settings untouched(QString(), m_random);
    Settings profileOnly(QString(), m_random);
    profileOnly.load(path("night.INI"));
    EXPECT_EQ(optionsOf(profileOnly, Profile), optionsOf(settings, Profile));
    EXPECT_EQ(optionsOf(profileOnly, Main), optionsOf(untouched, Main));
}

TEST_F(SettingsTest, AProfileHasNoMainOptionsAndWhatItLacksIsDefaultAgain)
{
    write(mainFile(), "[weather]\nrange=55\nmode=1\n");
    const QByteArray text = "[paths]\nworkfolder=/elsewhere/\n[weather]\nrange=42\n";
    write(path("p.ini"), text);
    Settings settings(mainFile(), m_random);
    EXPECT_EQ(settings.range(), 55);
    settings.load(path("p.ini"));
    EXPECT_EQ(settings.workFolder(), Settings::documentsFolder() + "/CirrilonV3/"_q);
    EXPECT_EQ(settings.range(), 42);
    EXPECT_EQ(settings.weatherMode(), 0);
    settings.load(path("p.ini"), Settings::FileRole::Main);
    EXPECT_EQ(settings.workFolder(), "/elsewhere/"_q);
    EXPECT_EQ(read(path("p.ini")), text);
    settings.load(path("missing.ini"));
    EXPECT_EQ(settings.range(), 100);
    EXPECT_FALSE(QFile::exists(path("missing.ini")));
}

TEST_F(SettingsTest, WithoutAFileNothingIsReadOrWritten)
{
    Settings settings(QString(), m_random);
    settings.setRange(7);
    settings.load(QString());
    settings.save(QString());
    EXPECT_EQ(settings.range(), 7);
    EXPECT_TRUE(settings.takeEarlyLog().empty());
    EXPECT_TRUE(QDir(path(".")).isEmpty());
}

TEST_F(SettingsTest, OddValuesFallBack)
{
    const char kSomewhere[] = "51.3:13.5";
    const std::tuple<const char*, int, bool, const char*, const char*> rows[] = {
        {"[weather]\nrange=12abc\nsynopoff=abc\n[paths]\nsim=\n[map]\nlastpos=1:2:3\n", 100, true,
         "", kSomewhere},
        {"[weather]\nrange=99999999999\nsynopoff=0\n[map]\nlastpos=12.5\n", 100, false, "",
         kSomewhere},
        {"[weather]\nrange=@Invalid()\nsynopoff=@Invalid()\n[paths]\nsim=@Invalid()\n", 100, false,
         "", kSomewhere},
        {"[weather]\nrange=1, 2\n[paths]\nsim=a, b\n[map]\nlastpos=\"7 : x\"\n", 100, false, "",
         "7 : x"},
        {"[weather]\nrange=@ByteArray(5)\n[paths]\nsim=\"C:/\xC3\x9C,1\" ; note\n", 100, false,
         "C:/\xC3\x9C,1", kSomewhere},
        // A list of 2,147,483,647 values: unpacking it would take all memory.
        {"[weather]\nrange=75\n[paths]\nsim=@Variant(\\0\\0\\0\\x9\\x7f\\xff\\xff\\xff)\n", 75,
         false, "", kSomewhere},
        {"\xEF\xBB\xBF[weather]\r\nrange = 18 \r\nsynopoff=true", 18, true, "", kSomewhere},
        {"=\n[\n]\n[weather\nrange=33\n\\", 33, false, "", kSomewhere},
        {"<html>\nrange=3", 100, false, "", kSomewhere},
    };
    int number = 0;
    for (const auto& [text, range, synopOff, simPath, lastPos] : rows) {
        SCOPED_TRACE(text);
        const QString file = path("odd%1/cirrilon.ini").arg(++number);
        write(file, text);
        const Settings settings(file, m_random);
        EXPECT_EQ(settings.range(), range);
        EXPECT_EQ(settings.synopOff(), synopOff);
        EXPECT_EQ(settings.simPath(), QString::fromUtf8(simPath));
        EXPECT_EQ(settings.mapLastPos(), QString::fromUtf8(lastPos));
    }
}

TEST_F(SettingsTest, HugeFilesAndFoldersGiveDefaults)
{
    QByteArray nested = "[a]\nb=@Variant(";
    for (int i = 0; i < 80000; ++i) {
        nested += "\\0\\0\\0\\x9\\0\\0\\0\\x1";
    }
    const QByteArray texts[] = {nested + ")\n",
                                QByteArray(3 << 20, '\0'),
                                QByteArray(3 << 20, '['),
                                QByteArray(3 << 20, '"'),
                                "[weather]\nrange=" + QByteArray(2 << 20, '9'),
                                "[weather]\nrange=3\n" + QByteArray(5 << 20, 'x')};
    int number = 0;
    for (const QByteArray& text : texts) {
        const QString file = path("huge%1/cirrilon.ini").arg(++number);
        write(file, text);
        EXPECT_EQ(Settings(file, m_random).range(), 100) << number;
    }
    QDir().mkpath(mainFile());
    EXPECT_EQ(Settings(mainFile(), m_random).range(), 100);
}

TEST_F(SettingsTest, KeysOfOthersSurviveASave)
{
    write(mainFile(), "[url]\nwxdata1=https://one.test/wx\nlist=a, \"b, c\"\n"
                      "odd=@Variant(\\0\\0\\0\\x9\\x7f)\n[weather]\nrange=19\nnewer=x\n");
    Settings settings(mainFile(), m_random);
    settings.setRange(10);
    settings.save(mainFile());
    const QByteArray saved = read(mainFile());
    EXPECT_TRUE(saved.contains("range=10\n")) << saved.constData();
    EXPECT_TRUE(saved.contains("\nnewer=x\n")) << saved.constData();
    EXPECT_TRUE(saved.endsWith("\n[url]\nlist=a, \"b, c\"\nodd=@Variant(\\0\\0\\0\\t\\x7f)\n"
                               "wxdata1=https://one.test/wx\n"))
        << saved.constData();
}

/// The options that have bounds, as they are used.
std::vector<int> boundedOptions(const Settings& settings)
{
    return {settings.loggerLevel(),         settings.range(),
            settings.updateTime(),          settings.downloadUpdateTime(),
            settings.dwcDegreesPerSecond(), settings.dwcKnotsPerSecond(),
            settings.serverUpdateTimeMin(), settings.serverUpdateTimeMax()};
}

TEST_F(SettingsTest, ValuesOutOfBoundsAreUsedBounded)
{
    write(mainFile(), "[main]\nloggerlevel=9\n[paths]\nworkfolder=" + path("work").toUtf8()
                          + "\n[weather]\nrange=5000\nupdatetime=0\ndownloadupdatetime=999999\n"
                            "fswinddegreespersecond=0\nfswindknotspersecond=-3\n"
                            "[interface]\nserverupdatetimemin=0\n"
                            "serverupdatetimemax=2000000000\n");
    Settings settings(mainFile(), m_random);
    EXPECT_EQ(boundedOptions(settings), std::vector<int>({3, 1000, 10, 86400, 1, 1, 20, 60000}));
    EXPECT_EQ(settings.profilesFolder(), path("work/profiles/"));
    write(mainFile(), "[main]\nloggerlevel=-1\n[weather]\nrange=-5\nupdatetime=2147483647\n"
                      "downloadupdatetime=-1\nfswinddegreespersecond=400\n");
    settings.load(mainFile());
    EXPECT_EQ(boundedOptions(settings), std::vector<int>({0, 10, 86400, 10, 400, 1, 200, 1000}));
}

TEST_F(SettingsTest, ValuesOutOfBoundsStayInTheFileUntilTheyAreChanged)
{
    const QByteArray work = "workfolder=" + path("work").toUtf8();
    write(mainFile(), "[main]\nloggerlevel=9\n[paths]\n" + work
                          + "\n[weather]\nrange=5000\nupdatetime=0\nfswindknotspersecond=-3\n");
    Settings settings(mainFile(), m_random);
    settings.setUpdateTime(30);
    settings.save(mainFile());
    const QByteArray saved = read(mainFile());
    for (const QByteArray& line :
         {QByteArray("loggerlevel=9"), work, QByteArray("range=5000"), QByteArray("updatetime=30"),
          QByteArray("fswindknotspersecond=-3")})
    {
        EXPECT_TRUE(saved.contains('\n' + line + '\n')) << line.constData();
    }
}

TEST_F(SettingsTest, WhatCantBeUnderstoodIsPutAsideAndSavedAnew)
{
    QByteArray noise(20000, '\0');
    for (int i = 0; i < noise.size(); ++i) {
        noise[i] = static_cast<char>((i * 7919) >> 3);
    }
    const QByteArray texts[] = {QByteArray(4096, '\0'),
                                noise,
                                "a=\x01\x02\n",
                                "<html>\n<a href=\"x\">Log in</a>\n",
                                "{\"range\": \"a=1\"}",
                                QByteArray("\xFF\xFE[\0w\0]\0\n\0", 10),
                                "hello\n",
                                "[weather]\nrange=30\n" + QByteArray(int{kMaxIniBytes}, ';')};
    int number = 0;
    for (const QByteArray& text : texts) {
        SCOPED_TRACE(number);
        const QString file = path("bad%1/cirrilon.ini").arg(++number);
        write(file, text);
        write(Settings::damagedName(file), "an older one");
        Settings settings(file, m_random);
        EXPECT_EQ(settings.takeDamagedFiles(), QStringList(file));
        settings.setRange(70);
        settings.save(file);
        EXPECT_EQ(read(file + ".damaged"_q), text);
        EXPECT_EQ(Settings(file, m_random).range(), 70);
    }
}

TEST_F(SettingsTest, WhatIsOnlyPartlyUnderstoodIsNotDamaged)
{
    for (const char* text : {"", "\n; only a word\n", "[weather]\n", "[General]\nx=1\n",
                             "[weather]\nrange=70\n<html>\n\x01"})
    {
        write(mainFile(), text);
        EXPECT_EQ(Settings(mainFile(), m_random).takeDamagedFiles(), QStringList()) << text;
    }
}

TEST_F(SettingsTest, AFileThatWasLockedWhenItWasLoadedIsNotLostToDefaults)
{
    QDir().mkpath(path("cirrilon.ini/locked")); // can't be opened, whoever tries
    Settings settings(mainFile(), m_random);
    QDir(mainFile()).removeRecursively();
    const QByteArray good = "[weather]\nrange=42\n[url]\nwxdata1=http://a.example\n";
    write(mainFile(), good);
    EXPECT_TRUE(settings.save(mainFile()));
    EXPECT_EQ(read(mainFile() + ".damaged"_q), good);
    EXPECT_TRUE(read(mainFile()).contains("wxdata1=http://a.example\n"));
    settings.setRange(50);
    EXPECT_TRUE(settings.save(mainFile()));
    EXPECT_EQ(read(mainFile() + ".damaged"_q), good) << "once is enough";
}

TEST_F(SettingsTest, AFailedSaveIsLoggedAndLeavesTheFile)
{
    write(path("file"), "x");
    Settings settings(QString(), m_random);
    const QSignalSpy spy(&settings, &Settings::sigDebugString);
    EXPECT_FALSE(settings.save(path("file/cirrilon.ini")));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][1].toInt(), loglevel::kError);
    EXPECT_EQ(read(path("file")), "x");

    const QByteArray large =
        "[url]\nwxdata1=http://a.example\n" + QByteArray(int{kMaxIniBytes}, ';');
    write(path("large.ini"), large);
    write(path("large.ini.damaged/file"), "a folder is in the way");
    EXPECT_FALSE(settings.save(path("large.ini")));
    EXPECT_EQ(spy.count(), 2);
    EXPECT_EQ(read(path("large.ini")), large) << "what can't be put aside isn't replaced";
}

TEST_F(SettingsTest, ProfileChangeSavesTheOldOneAndLoadsTheNew)
{
    Settings settings(mainFile(), m_random);
    settings.setWorkFolder(path("work/"));
    write(path("work/profiles/a.ini"), "[weather]\nrange=21\n");
    write(path("work/profiles/B.INI"), "[weather]\nrange=22\n");
    write(path("work/profiles/note.txt"), "");
    EXPECT_EQ(settings.profiles(), QStringList({"B.INI"_q, "a.ini"_q}));

    settings.changeProfile("a.ini"_q);
    EXPECT_EQ(settings.range(), 21);
    settings.setRange(31);
    const QSignalSpy spy(&settings, &Settings::sigDebugString);
    settings.changeProfile("B.INI"_q);
    EXPECT_EQ(settings.range(), 22);
    EXPECT_EQ(settings.profile(), "B.INI"_q);
    EXPECT_TRUE(read(path("work/profiles/a.ini")).contains("range=31\n"));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][0].toString(), "(Main) - Profile selected: B.INI"_q);
    EXPECT_EQ(spy[0][1].toInt(), 1);
}

TEST_F(SettingsTest, AProfileLiesInItsFolder)
{
    const Settings settings(QString(), m_random);
    for (const char* name : {"../x.ini", "..", "a\\..\\b.ini", "", "/tmp/x.ini"}) {
        EXPECT_EQ(settings.profileFile(QLatin1String(name)), QString()) << name;
    }
}

TEST_F(SettingsTest, OptionsAreReadWhileTheyAreWritten)
{
    Settings settings(QString(), m_random);
    settings.setUrlExternMetar("0000"_q);
    std::atomic<bool> end{false};
    int torn = 0;
    std::thread reader([&] {
        while (!end) {
            const QString text = settings.urlExternMetar();
            torn += text.count(text[0]) == text.size() && settings.range() >= 0 ? 0 : 1;
        }
    });
    for (int i = 0; i < 20000; ++i) {
        settings.setUrlExternMetar(
            QString(4 + i % 5, QLatin1Char(static_cast<char>('0' + i % 10))));
        settings.setRange(i);
    }
    end = true;
    reader.join();
    EXPECT_EQ(torn, 0);
}

} // namespace

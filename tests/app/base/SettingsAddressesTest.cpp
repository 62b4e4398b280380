#include "app/base/ServerAddresses.h"
#include "app/base/UrlTemplate.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeClock.h"

#include <QSignalSpy>

namespace {

using SettingsAddressesTest = SettingsFixture;

TEST_F(SettingsAddressesTest, ServerTypeChoosesTheWeatherServer)
{
    const QString one = serveraddress::wxdata1();
    const QString two = serveraddress::wxdata2();
    const std::tuple<int, int, QString, bool> rows[] = {
        {0, 49, one, true},       {0, 1250, two, true},      {1, 99, one, false},
        {2, 0, two, false},       {3, 100, one, true},       {3, 99, two, true},
        {4, 0, QString(), false}, {-1, 0, QString(), false},
    };
    for (const auto& [type, drawn, server, draws] : rows) {
        const QString file = path("t%1_%2/cirrilon.ini").arg(type).arg(drawn);
        write(file, "[weather]\nwxservertype=" + QByteArray::number(type));
        FakeRandom random({drawn, -7});
        EXPECT_EQ(Settings(file, random).weatherServer(), server) << type;
        EXPECT_EQ(random.next(), draws ? -7 : drawn) << type;
    }
}

TEST_F(SettingsAddressesTest, AddressesComeFromTheMainFileUnderAnyProfile)
{
    Settings settings(mainFile(), m_random);
    EXPECT_EQ(settings.serverOne(), serveraddress::wxdata1());
    write(mainFile(), "[url]\nwxdata1=http://a.test\nfileinfo=http://i.test/\nhost=http://h.test\n"
                      "checklogin=/c?a=1&b=2\nwxdata2=\n");
    settings.load(path("profile.ini"));
    EXPECT_EQ(settings.serverOne(), "http://a.test"_q);
    EXPECT_EQ(settings.serverTwo(), serveraddress::wxdata2());
    EXPECT_EQ(settings.fileInfoUrl(), "http://i.test/"_q);
    EXPECT_EQ(settings.loginHost() + settings.checkLogin(), "http://h.test/c?a=1&b=2"_q);
}

TEST(UrlTemplateTest, FillsTheTokensButNotAtTheStart)
{
    const FakeClock clock(2026, 3, 7, 4, 5, 9);
    const std::pair<const char*, const char*> rows[] = {
        {"%Y/metar.txt", "%Y/metar.txt"},
        {"%d%d", "%d07"},
        {"h://t/%Y%m%d_%h%i%s.%y?%Y", "h://t/20260307_040509.26?2026"},
        {"x%%dy%", "x%07y%"},
        {"x%D%M%Z", "x%D%M%Z"},
    };
    for (const auto& [given, expected] : rows) {
        EXPECT_EQ(expandUrlTemplate(QLatin1String(given)), QLatin1String(expected)) << given;
    }
}

TEST_F(SettingsAddressesTest, MovesTheFilesOfTheWorkFolder)
{
    write(path("old/a.txt"), "a");
    write(path("old/sub/deep/%2.txt"), "b");
    write(path("old/taken.txt"), "mine");
    write(path("old/new/taken.txt"), "theirs");
    Settings settings(QString(), m_random);
    const QSignalSpy spy(&settings, &Settings::sigDebugString);
    settings.moveWorkFolder(path("old/"), path("old"));
    EXPECT_EQ(spy.count(), 0);
    settings.moveWorkFolder(path("old/"), path("old/new/"));
    EXPECT_EQ(read(path("old/new/a.txt")), "a");
    EXPECT_EQ(read(path("old/new/sub/deep/%2.txt")), "b");
    EXPECT_EQ(read(path("old/taken.txt")), "mine");
    EXPECT_EQ(read(path("old/new/taken.txt")), "theirs");
    EXPECT_FALSE(QFile::exists(path("old/a.txt")));
    ASSERT_EQ(spy.count(), 4);
    EXPECT_EQ(spy[3][0].toString(),
              "(Settings) - Error: can not move file %1/taken.txt to %1/new/taken.txt"_q.replace(
                  "%1"_q, path("old")));
    EXPECT_EQ(spy[3][1].toInt(), 3);
}

} // namespace

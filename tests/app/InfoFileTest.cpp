#include "app/InfoFile.h"

#include <gtest/gtest.h>

namespace {

const char kText[] = "[Version]\r\n"
                     "cirrilonv3=3.2.0\r\n"
                     "cirrilonv3min = 2.9.9\r\n"
                     "cirrilonv3beta=\"3.3.0\"\r\n"
                     "[UpdateInfo]\r\n"
                     "info=Faster, smaller <b>and</b> better\r\n"
                     "UrlStableVersionManually=https://example.org/get?a=1\r\n"
                     "UrlStableVersionAutomatic=http://example.org/setup.exe\r\n"
                     "UrlBetaVersionManually=file:///etc/passwd\r\n"
                     "UrlBetaVersionAutomatic=@Variant(\\0\\0\\0\\x7f)\r\n"
                     "[Serverload]\r\n"
                     "wxdata=2.01\r\n"
                     "wxdata2=nan\r\n";

TEST(InfoFile, ReadsItsKeys)
{
    const InfoFile info = InfoFile::Parse(kText);
    EXPECT_EQ(info.version, QStringLiteral("3.2.0"));
    EXPECT_EQ(info.minimumVersion, QStringLiteral("2.9.9"));
    EXPECT_EQ(info.betaVersion, QStringLiteral("3.3.0"));
    EXPECT_EQ(info.info, QStringLiteral("Faster, smaller <b>and</b> better"));
    EXPECT_EQ(info.stablePage, QStringLiteral("https://example.org/get?a=1"));
    EXPECT_EQ(info.stableInstaller, QStringLiteral("http://example.org/setup.exe"));
    EXPECT_TRUE(info.betaPage.isEmpty());
    EXPECT_TRUE(info.betaInstaller.isEmpty());
    EXPECT_DOUBLE_EQ(info.firstServerLoad, 2.01);
    EXPECT_DOUBLE_EQ(info.secondServerLoad, 0.0);
    EXPECT_TRUE(info.FirstServerBusy());
    EXPECT_FALSE(InfoFile::Parse("[Serverload]\nwxdata=2.0").FirstServerBusy());
    for (const char* other : {"", "<html>=</html>", "cirrilonv3=3.2.0"}) {
        EXPECT_FALSE(InfoFile::Parse(other).IsValid()) << other;
    }
}

TEST(InfoFile, ComparesVersionsAsWholeNumbers)
{
    const struct
    {
        const char* running;
        const char* minimum;
        const char* latest;
        const char* beta;
        bool betaWanted;
        VersionState state;
    } rows[] = {
        {"3.0.0", "3.0.0", "3.0.0", "3.0.0", true, VersionState::Current},
        {"3.0.0", "3.0.1", "3.2.0", "3.3.0", true, VersionState::Unsupported},
        {"3.0.0", "2.0.0", "3.0.1", "3.3.0", true, VersionState::Outdated},
        {"3.0.0", "2.0.0", "3.0.0", "3.0.1", true, VersionState::BetaAvailable},
        {"3.0.0", "2.0.0", "3.0.0", "3.0.1", false, VersionState::Current},
        {"3.0.0", "2.0.0", "3.0.0.1", "", false, VersionState::Outdated}, // 3001
        {"3.1", "", "3.0.10", "", false, VersionState::Outdated},         // 31 and 3010
        {"3.0.0", "", "four", "9999999999999999999999", true, VersionState::Current},
        {"3.0.0", "", "-400", "", true, VersionState::Current},
    };
    for (const auto& row : rows) {
        InfoFile info;
        info.minimumVersion = QLatin1String(row.minimum);
        info.version = QLatin1String(row.latest);
        info.betaVersion = QLatin1String(row.beta);
        EXPECT_EQ(JudgeVersion(QLatin1String(row.running), info, row.betaWanted), row.state)
            << row.running << ' ' << row.minimum << ' ' << row.latest << ' ' << row.beta;
    }
}

} // namespace

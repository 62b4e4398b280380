#include "app/download/InfoFile.h"

#include "tests/support/Text.h"

#include <gtest/gtest.h>

namespace {

const char kText[] = "[Version]\r\ncirrilonv3=3.2.0\r\ncirrilonv3min = 2.9.9\r\n"
                     "cirrilonv3beta=\"3.3.0\"\r\n"
                     "[UpdateInfo]\r\ninfo=Faster, smaller <b>and</b> better\r\n"
                     "UrlStableVersionManually=https://example.org/get?a=1\r\n"
                     "UrlStableVersionAutomatic=http://example.org/setup.exe\r\n"
                     "UrlBetaVersionManually=file:///etc/passwd\r\n"
                     "UrlBetaVersionAutomatic=@Variant(\\0\\0\\0\\x7f)\r\n"
                     "[Serverload]\r\nwxdata=2.01\r\nwxdata2=nan\r\n";

TEST(InfoFileTest, ReadsItsKeys)
{
    const InfoFile info = InfoFile::parse(kText);
    EXPECT_EQ(info.version, "3.2.0"_q);
    EXPECT_EQ(info.minimumVersion, "2.9.9"_q);
    EXPECT_EQ(info.betaVersion, "3.3.0"_q);
    EXPECT_EQ(info.info, "Faster, smaller <b>and</b> better"_q);
    EXPECT_EQ(info.stablePage, "https://example.org/get?a=1"_q);
    EXPECT_EQ(info.stableInstaller, "http://example.org/setup.exe"_q);
    EXPECT_TRUE(info.betaPage.isEmpty());
    EXPECT_TRUE(info.betaInstaller.isEmpty());
    EXPECT_DOUBLE_EQ(info.firstServerLoad, 2.01);
    EXPECT_DOUBLE_EQ(info.secondServerLoad, 0.0);
    EXPECT_TRUE(info.firstServerBusy());
    EXPECT_FALSE(InfoFile::parse("[Serverload]\nwxdata=2.0").firstServerBusy());
    for (const char* other : {"", "<html>=</html>", "cirrilonv3=3.2.0"}) {
        EXPECT_FALSE(InfoFile::parse(other).isValid()) << other;
    }
}

TEST(InfoFileTest, ComparesVersionsAsWholeNumbers)
{
    const std::tuple<QString, QString, QString, QString, bool, VersionState> rows[] = {
        {"3.0.0"_q, "3.0.0"_q, "3.0.0"_q, "3.0.0"_q, true, VersionState::Current},
        {"3.0.0"_q, "3.0.1"_q, "3.2.0"_q, "3.3.0"_q, true, VersionState::Unsupported},
        {"3.0.0"_q, "2.0.0"_q, "3.0.1"_q, "3.3.0"_q, true, VersionState::Outdated},
        {"3.0.0"_q, "2.0.0"_q, "3.0.0"_q, "3.0.1"_q, true, VersionState::BetaAvailable},
        {"3.0.0"_q, "2.0.0"_q, "3.0.0"_q, "3.0.1"_q, false, VersionState::Current},
        {"3.0.0"_q, "2.0.0"_q, "3.0.0.1"_q, ""_q, false, VersionState::Outdated}, // 3001
        {"3.1"_q, ""_q, "3.0.10"_q, ""_q, false, VersionState::Outdated},         // 31 and 3010
        {"3.0.0"_q, ""_q, "four"_q, "9999999999999999999999"_q, true, VersionState::Current},
        {"3.0.0"_q, ""_q, "-400"_q, ""_q, true, VersionState::Current},
    };
    for (const auto& [running, minimum, latest, beta, betaWanted, state] : rows) {
        InfoFile info;
        info.minimumVersion = minimum;
        info.version = latest;
        info.betaVersion = beta;
        EXPECT_EQ(judgeVersion(running, info, betaWanted), state)
            << qPrintable(running + " "_q + latest) << betaWanted;
    }
}

} // namespace

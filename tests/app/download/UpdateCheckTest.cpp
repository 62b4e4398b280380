#include "app/download/UpdateCheck.h"

#include "tests/app/download/ServerFixture.h"
#include "tests/support/FakeProcessRunner.h"

namespace {

class UpdateCheckTest : public ServerFixture
{
protected:
    void SetUp() override
    {
        ServerFixture::SetUp();
        settings->setCheckNewVersion(true);
        check = std::make_unique<UpdateCheck>(*settings, context(), processes, reporting());
        QObject::connect(check.get(), &UpdateCheck::sigCloseProgram, [this] { closed = true; });
    }
    void TearDown() override
    {
        check.reset();
        ServerFixture::TearDown();
    }
    void take(const QByteArray& answer)
    {
        write(path("info"), answer);
        settings->setWeatherServer(settings->serverOne());
        check->takeFile(path("info"), 0);
    }
    void checkKept(const QByteArray& answer)
    {
        write(settings->tmpFolder() + "cirrilon_v3_info.php"_q, answer);
        check->checkKeptFile();
    }

    FakeProcessRunner processes;
    std::unique_ptr<UpdateCheck> check;
    bool closed = false;
};

const QByteArray kLatest("[Version]\ncirrilonv3=9.0.0\n[UpdateInfo]\ninfo=<i>new</i>\n");

TEST_F(UpdateCheckTest, ANewVersionIsOfferedAndItsInstallerClosesTheProgram)
{
    dialogs.installer = "setup.exe"_q;
    processes.startError = "no <right>"_q;
    take(kLatest);
    EXPECT_EQ(view.levelOf("(Controller) - new Version 9.0.0 available"_q), 1);
    ASSERT_EQ(dialogs.offers.size(), 1);
    EXPECT_EQ(dialogs.offers.first().info, "<i>new</i>"_q);
    EXPECT_FALSE(dialogs.offers.first().mandatory);
    EXPECT_EQ(view.levelOf("can not start installer. ProcessError: no &lt;right&gt;, setup"_q), 3);
    EXPECT_EQ(processes.opened, QStringList(settings->tmpFolder()));

    processes.startError.clear();
    take(kLatest);
    EXPECT_FALSE(closed) << "by the first, or before the installer is up";
    ASSERT_TRUE(wait([this] { return closed; }));
    EXPECT_EQ(processes.started, QStringList({"setup.exe"_q, "setup.exe"_q}));

    settings->setCheckNewVersion(false);
    take(kLatest);
    EXPECT_EQ(dialogs.offers.size(), 2);
}

TEST_F(UpdateCheckTest, AServerUnderLoadIsLeft)
{
    for (const auto& [load, leaves] : {std::pair{"2.0", false}, {"2.1", true}}) {
        take(QByteArray("[Version]\ncirrilonv3=1.0.0\n[Serverload]\nwxdata=") + load);
        EXPECT_EQ(settings->weatherServer() == settings->serverTwo(), leaves) << load;
    }
    EXPECT_EQ(view.linesWith("(Controller) - Cirrilonv3 is up to date"_q), 2);
}

TEST_F(UpdateCheckTest, TheUsersQuestionIsAnsweredFromTheKeptFile)
{
    check->checkKeptFile();
    EXPECT_EQ(view.levelOf("The info file is downloaded at the start"_q), 3);
    checkKept(kLatest);
    EXPECT_EQ(dialogs.warnings().last(),
              "Cirrilon - New version|Please download new version 9.0.0.\n"_q);
    checkKept("[Version]\ncirrilonv3=9.0.0\ncirrilonv3min=8.0.0\n");
    EXPECT_TRUE(dialogs.warnings().last().endsWith(
        "|Please download new version 8.0.0\nThis version is no longer "
        "supported.\nCirrilon 3.0 is closed."_q));
    EXPECT_TRUE(dialogs.offers.isEmpty());
    ASSERT_TRUE(wait([this] { return closed; }));
}

TEST_F(UpdateCheckTest, AnAnswerThatIsNoInfoFileIsTold)
{
    checkKept("<html>not found</html>");
    take("<html>not found</html>");
    EXPECT_EQ(view.linesWith("The info server's answer tells no version"_q), 2);
    EXPECT_EQ(view.linesWith("is up to date"_q), 0);
    check->download();
    waitForLine("(Controller) - can not download fileinfo, Net-Error: 203"_q);
}

} // namespace

#include "app/WorkingFolders.h"

#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeMainView.h"

namespace {

class WorkingFoldersTest : public SettingsFixture
{
protected:
    void SetUp() override
    {
        SettingsFixture::SetUp();
        settings = std::make_unique<Settings>(mainFile(), m_random);
        settings->setWorkFolder(path("work/"));
    }

    FakeMainView view;
    LogFunction log = [this](const QString& text, int level) {
        view.OnOutputDebugstring(text, level);
    };
    std::unique_ptr<Settings> settings;
};

TEST_F(WorkingFoldersTest, MissingOnesAreCreatedAndTheTemporaryOneIsSwept)
{
    write(settings->tmpFolder() + "old.txt"_q, "x");
    write(settings->tmpFolder() + "old"_q, "x");
    EXPECT_TRUE(workingfolders::create(*settings, log));
    workingfolders::sweepTemporary(*settings, log);
    EXPECT_EQ(view.levelOf("(Main) - Folder founded: <a href=\""_q + settings->tmpFolder()), 1);
    EXPECT_EQ(view.linesWith("Folder created: <b>"_q), 9);
    EXPECT_TRUE(view.log.at(1).text.endsWith("<b>"_q + settings->workFolder() + "</b>"_q));
    EXPECT_TRUE(QDir(settings->backupsFolder()).exists());
    EXPECT_FALSE(QFile::exists(settings->tmpFolder() + "old.txt"_q));
    EXPECT_TRUE(QFile::exists(settings->tmpFolder() + "old"_q)) << "no dot, no match";
}

TEST_F(WorkingFoldersTest, OneThatCantBeCreatedIsTheLast)
{
    write(path("work/flights"), "a file in the way");
    EXPECT_FALSE(workingfolders::create(*settings, log));
    EXPECT_EQ(view.levelOf("(Main) -Cannot create folder: "_q + path("work/flights/")), 3);
    EXPECT_FALSE(QDir(settings->resFolder()).exists());
}

} // namespace

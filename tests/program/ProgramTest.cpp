#include "tests/app/base/SettingsFixture.h"
#include "tests/support/Text.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace {

constexpr int kLimitMs = 60000;

/// The window program itself, as a desktop starts it. Its home is a temporary folder.
class ProgramTest : public SettingsFixture
{
protected:
    std::unique_ptr<QProcess> start(const QString& folder, const QStringList& arguments = {},
                                    const QString& platform = "offscreen"_q,
                                    const QString& unattended = {}) const
    {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM"_q, platform);
        environment.remove("DISPLAY"_q);
        environment.remove("WAYLAND_DISPLAY"_q);
        if (!unattended.isEmpty()) {
            environment.insert("CIRRILON_UNATTENDED"_q, unattended);
        }
        process->setProcessEnvironment(environment);
        process->setWorkingDirectory(folder);
        process->start(QStringLiteral(CIRRILON_PROGRAM), arguments);
        EXPECT_TRUE(process->waitForStarted(kLimitMs));
        return process;
    }
    /// The settings as the first start would leave them, without a network.
    static QByteArray settings(const QString& work)
    {
        return "[paths]\nworkfolder=" + work.toUtf8()
               + "/\n[startup]\nnewversion=false\n[url]\nfileinfo=http://127.0.0.1:9/\n";
    }
    QString configFile() const { return path("Cirrilon/cirrilon.ini"); }
    /// Until the program's log has a line; false if that takes too long.
    static bool awaitLog(const QString& work, const QByteArray& line, const QProcess& process)
    {
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < kLimitMs && process.state() == QProcess::Running) {
            if (read(work + "/cirrilonv3.log"_q).contains(line)) {
                return true;
            }
            QThread::msleep(50);
        }
        return false;
    }
    static void end(QProcess& process)
    {
        process.terminate();
        EXPECT_TRUE(process.waitForFinished(kLimitMs));
    }
};

TEST_F(ProgramTest, AnswersWithoutADisplay)
{
    for (const char* argument : {"--help", "--version", "--nonsense"}) {
        const auto process = start(path("."), {QLatin1String(argument)},
                                   argument[2] == 'n' ? "offscreen"_q : "xcb"_q);
        ASSERT_TRUE(process->waitForFinished(kLimitMs));
        EXPECT_EQ(process->exitCode(), argument[2] == 'n' ? 2 : 0) << argument;
        const QByteArray said = process->readAll() + process->readAllStandardError();
        EXPECT_TRUE(said.contains(argument[2] == 'h'   ? "--portable"
                                  : argument[2] == 'v' ? "Cirrilon 3."
                                                       : "--nonsense"))
            << said.constData();
    }
}

TEST_F(ProgramTest, FindsTheUsersSettingsWhereverItIsStartedAndSavesAtSigterm)
{
    write(configFile(), settings(path("work")));
    const auto process = start("/"_q);
    ASSERT_TRUE(awaitLog(path("work"), "Expecting settings at " + configFile().toUtf8(), *process));
    ASSERT_TRUE(awaitLog(path("work"), "Weather stations:", *process));
    end(*process);
    EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process->exitCode(), 128 + SIGTERM);
    EXPECT_TRUE(read(configFile()).contains("windowgeometry="));
}

TEST_F(ProgramTest, SettingsOfTheStartFolderAndPortableOnesComeFirst)
{
    write(configFile(), settings(path("wrong")));
    write(path("here/cirrilon.ini"), settings(path("work")));
    QDir().mkpath(path("stick"));
    const auto here = start(path("here"));
    ASSERT_TRUE(awaitLog(path("work"), path("here/cirrilon.ini").toUtf8(), *here));
    const auto stick = start(path("stick"), {"--portable"_q});
    const QString documents = path("Documents/CirrilonV3");
    EXPECT_TRUE(awaitLog(documents, path("stick/cirrilon.ini").toUtf8(), *stick));
    end(*here);
    EXPECT_TRUE(awaitLog(documents, "Weather stations:", *stick));
    end(*stick);
    EXPECT_TRUE(QFile::exists(path("stick/cirrilon.ini")));
    EXPECT_FALSE(QDir(path("wrong")).exists());
}

TEST_F(ProgramTest, TheSecondStartEndsAndTheFirstGoesOn)
{
    write(configFile(), settings(path("work")));
    const auto first = start("/"_q);
    ASSERT_TRUE(awaitLog(path("work"), "Weather stations:", *first));
    const auto second = start(path("."));
    ASSERT_TRUE(second->waitForFinished(kLimitMs));
    EXPECT_EQ(second->exitCode(), 0);
    EXPECT_EQ(first->state(), QProcess::Running);
    EXPECT_FALSE(QFile::exists(path("work/cirrilonv3.1.log"))) << "the log isn't begun anew";
    const auto unattended = start("/"_q, {}, "offscreen"_q, path("window.png"));
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return QFile::exists(path("work/cirrilonv3.1.log")); }, kLimitMs))
        << "a run without a person isn't held up";
    EXPECT_TRUE(awaitLog(path("work"), "Weather stations:", *unattended));
    end(*unattended);
    first->kill(); // what a crash leaves
    ASSERT_TRUE(first->waitForFinished(kLimitMs));
    write(path("work/cirrilonv3.log"), "of the crash");
    const auto third = start("/"_q);
    EXPECT_TRUE(awaitLog(path("work"), "Weather stations:", *third));
    end(*third);
    EXPECT_EQ(read(path("work/cirrilonv3.1.log")), "of the crash");
}

} // namespace

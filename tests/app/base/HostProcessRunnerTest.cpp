#include "app/base/HostProcessRunner.h"

#include "app/base/StopFlag.h"
#include "tests/support/Text.h"

#include <QElapsedTimer>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace {

/// A command of the host's shell; the tests that need one are skipped without it.
class HostProcessRunnerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (m_shell.isEmpty()) {
            GTEST_SKIP() << "no shell";
        }
        m_timer.start();
    }
    ProcessResult run(const char* command, int timeoutMs)
    {
        return m_runner.runUnlessStopped(
            m_shell, {"-c"_q, QLatin1String(command)}, timeoutMs,
            [this](const QString& chunk) {
                m_output += chunk;
                if (m_stopAtOutput) {
                    m_stop.raise();
                }
            },
            m_stop);
    }

    const QString m_shell = QStandardPaths::findExecutable("sh"_q);
    HostProcessRunner m_runner;
    StopFlag m_stop;
    bool m_stopAtOutput = false;
    QString m_output;
    QElapsedTimer m_timer;
};

TEST_F(HostProcessRunnerTest, PassesBothChannelsAndTheExitCode)
{
    const ProcessResult result = run("echo out; echo err >&2; exit 3", 10000);
    EXPECT_TRUE(result.started && result.finished);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(m_output, "out\nerr\n"_q);
    EXPECT_TRUE(result.error.isEmpty());
}

TEST_F(HostProcessRunnerTest, EndsAProgramThatRunsOn)
{
    EXPECT_FALSE(run("sleep 30", 200).finished);
    EXPECT_FALSE(run("exec >&- 2>&-; sleep 30", 200).finished);
    m_stopAtOutput = true;
    const ProcessResult stopped = run("echo on; exec sleep 30", 60000);
    EXPECT_TRUE(stopped.started);
    EXPECT_FALSE(stopped.finished);
    EXPECT_FALSE(stopped.error.isEmpty());
    EXPECT_LT(m_timer.elapsed(), 5000);
}

TEST_F(HostProcessRunnerTest, SaysWhyAProgramDoesNotStart)
{
    HostProcessRunner runner([](const QString& path) { return path == "known"_q; });
    const QString missing = "/nowhere/installer.exe"_q;
    const ProcessResult result = runner.run(missing, {}, 1000, nullptr);
    EXPECT_FALSE(result.started);
    EXPECT_FALSE(result.error.isEmpty());
    QString error;
    EXPECT_FALSE(runner.startDetached(missing, error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(runner.open("known"_q));
    EXPECT_FALSE(HostProcessRunner().open("known"_q));
}

} // namespace

#include "app/base/JobThread.h"

#include "app/base/LogLevel.h"
#include "app/base/StopFlag.h"
#include "aviation/support/ScopedLock.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QTest>

#include <gtest/gtest.h>

#include <new>
#include <utility>
#include <vector>

namespace {

constexpr int kLimitMs = 5000;
constexpr int kFailure = 77;

enum JobId : int
{
    kPlain = 1,
    kWait,  ///< until it has to give way
    kLeave, ///< and leaves the queue
    kThrow,
    kRepeat, ///< the result of the job before it
};

class Worker final : public JobThread
{
public:
    explicit Worker(const StopFlag* flag = nullptr)
        : JobThread(QStringLiteral("Worker"), kFailure, flag, nullptr)
    {}
    ~Worker() override { end(); }

    using JobThread::addJob;
    void post(int id) { addJob(Job(id, QString())); }
    /// Ids and results of what has been done.
    std::vector<std::pair<int, int>> done()
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_done;
    }
    QStringList lines()
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_lines;
    }
    /// Called once, on the thread: in the course of a job, or when the thread is on its way out.
    void postOnceLate(bool atEnd)
    {
        m_postInJob = !atEnd;
        if (atEnd) {
            connect(
                this, &QThread::finished, this,
                [this] {
                    const aviation::ScopedLock lock(m_mutex);
                    if (!std::exchange(m_posted, true)) {
                        post(kPlain);
                    }
                },
                Qt::DirectConnection);
        }
    }

    QSemaphore waiting;

private:
    int perform(Job& job, int before) override
    {
        switch (job.id) {
        case kWait:
            waiting.release();
            while (!stopped()) {
                yieldCurrentThread();
            }
            return 0;
        case kThrow:
            throw std::bad_alloc();
        case kRepeat:
            return before;
        default:
            return job.id;
        }
    }
    void jobDone(const Job& job, int result) override
    {
        const aviation::ScopedLock lock(m_mutex);
        m_done.emplace_back(job.id, result);
        if (job.id == kLeave) {
            leaveQueue();
        }
        if (std::exchange(m_postInJob, false)) {
            post(kPlain);
        }
    }
    QString nameForLog(const Job& job) const override { return job.name.toUpper(); }
    void log(const QString& text, int level) override
    {
        const aviation::ScopedLock lock(m_mutex);
        m_lines.append(QStringLiteral("%1 ").arg(level) + text);
    }

    QMutex m_mutex; ///< guards all below
    std::vector<std::pair<int, int>> m_done;
    QStringList m_lines;
    bool m_posted = false;
    bool m_postInJob = false;
};

using Done = std::vector<std::pair<int, int>>;

TEST(JobThreadTest, AJobHasItsLineAndItsResult)
{
    Worker worker;
    worker.addJob(Job(kRepeat, QStringLiteral("a")));
    worker.post(kPlain);
    worker.post(kNoJob);
    worker.post(kRepeat);
    worker.post(kThrow);
    worker.post(kRepeat);
    worker.start();
    worker.join();
    EXPECT_EQ(worker.done(), (Done{{kRepeat, 0},
                                   {kPlain, kPlain},
                                   {kRepeat, kPlain},
                                   {kThrow, kFailure},
                                   {kRepeat, kFailure}}));
    const QStringList lines = worker.lines();
    ASSERT_EQ(lines.size(), 7);
    EXPECT_EQ(lines[0], QStringLiteral("0 (Worker) - Next Job ID: 5, Name: A"));
    EXPECT_EQ(lines[2], QStringLiteral("0 (Worker) - Next Job ID: -1, Name: "));
    EXPECT_TRUE(lines[5].startsWith(QStringLiteral("3 (Worker) - Job 4 failed: ")));
}

TEST(JobThreadTest, JobsPostedWhileItRunsAreDoneInOrder)
{
    Worker worker;
    constexpr int kJobs = 200;
    Done expected;
    for (int i = 0; i < kJobs; ++i) {
        const int id = kRepeat + 1 + i;
        worker.post(id);
        worker.start();
        expected.emplace_back(id, id);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return worker.done().size() == kJobs; }, kLimitMs));
    worker.join();
    EXPECT_EQ(worker.done(), expected);
}

// When a start has no effect: after the last look at the queue, and in the job that leaves it.
TEST(JobThreadTest, AJobPostedOnTheWayOutIsNotForgotten)
{
    for (const bool atEnd : {false, true}) {
        Worker worker;
        worker.postOnceLate(atEnd);
        worker.post(atEnd ? kPlain : kLeave);
        worker.start();
        EXPECT_TRUE(QTest::qWaitFor([&] { return worker.done().size() == 2; }, kLimitMs)) << atEnd;
        EXPECT_EQ(worker.queuedJobs(), 0);
    }
}

TEST(JobThreadTest, ALeftQueueWaitsForTheNextPost)
{
    Worker worker;
    worker.post(kLeave);
    worker.post(kPlain);
    worker.start();
    worker.join();
    QCoreApplication::processEvents();
    worker.join();
    EXPECT_EQ(worker.done(), (Done{{kLeave, kLeave}}));
    EXPECT_EQ(worker.queuedJobs(), 1);
    worker.post(kRepeat);
    worker.start();
    worker.join();
    EXPECT_EQ(worker.done(), (Done{{kLeave, kLeave}, {kPlain, kPlain}, {kRepeat, kPlain}}));
}

TEST(JobThreadTest, AStopMakesARunningJobGiveWayAndLeavesTheQueue)
{
    for (const bool byFlag : {false, true}) {
        StopFlag flag;
        Worker worker(&flag);
        worker.post(kWait);
        worker.post(kPlain);
        worker.start();
        ASSERT_TRUE(worker.waiting.tryAcquire(1, kLimitMs));
        if (byFlag) {
            flag.raise();
        } else {
            worker.stop();
        }
        ASSERT_TRUE(worker.wait(kLimitMs)) << byFlag;
        QCoreApplication::processEvents(); // nor does the end of the thread start it again
        worker.join();
        EXPECT_EQ(worker.done(), (Done{{kWait, 0}}));
        EXPECT_EQ(worker.queuedJobs(), 1);
    }
}

} // namespace

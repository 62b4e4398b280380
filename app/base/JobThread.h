#pragma once

#include "app/base/Job.h"
#include "app/base/JobQueue.h"

#include <QMutex>
#include <QString>
#include <QThread>

#include <atomic>
#include <cstddef>

class StopFlag;

/// A thread that works through a queue of jobs and ends when it is dry: whoever posts a job calls
/// start() afterwards. Created and destroyed on the main thread; a derived class calls end() in its
/// destructor, as long as its members are there for the running job.
class JobThread : public QThread
{
    Q_OBJECT
public:
    ~JobThread() override;

    /// Jobs that wait to be taken.
    int queuedJobs() const;
    /// Waits for the end of the thread. After it all that the thread wrote, also in slots that run
    /// on it, is the caller's; the thread sanitizer knows so, which it doesn't of wait().
    void join();
    /// Lets the running job end early and leaves undone what is queued; for the end of the program.
    void stop();

protected:
    /// `logName` is the worker's name in its lines, `failure` the result of a job that ran out of
    /// memory. A null `stopFlag` means that only stop() ends jobs early; it outlives the thread.
    JobThread(const QString& logName, int failure, const StopFlag* stopFlag, QObject* parent);

    /// Appends. Callable from any thread; never waits for a running job.
    void addJob(const Job& job);
    /// Stops and joins.
    void end();
    /// Whether a running job has to give way; callable from any thread.
    bool stopped() const;
    void sleepUnlessStopped(int milliseconds) const;
    /// Ends the run with the job that is being done. What is queued now waits for the next start();
    /// what is posted from now on has the thread started again. Called on the thread only.
    void leaveQueue();

    // On the thread, for each job in turn. The empty job is logged and nothing more.

    /// Returns the job's result; `before` is that of the job before it in this run, 0 for none.
    virtual int perform(Job& job, int before) = 0;
    virtual void jobDone(const Job& job, int result) = 0;
    virtual QString nameForLog(const Job& job) const;
    virtual void log(const QString& text, int level) = 0;

private:
    void run() final;
    void startAgain();
    void beginRun();
    int attempt(Job& job, int before);

    const QString m_logName;
    const int m_failure;
    const StopFlag* m_stopFlag;
    JobQueue m_queue; ///< guards itself
    /// Held for a moment at both ends of a run, so that the next run and whoever joins see all
    /// that this one wrote.
    QMutex m_runMutex;
    std::atomic<bool> m_stopping{false};
    std::atomic<std::size_t> m_leftBehind{0}; ///< jobs of leaveQueue, at the front of the queue
    bool m_leaving = false;                   ///< the thread's
};

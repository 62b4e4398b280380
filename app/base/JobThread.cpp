#include "app/base/JobThread.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/SlicedSleep.h"
#include "app/base/StopFlag.h"
#include "aviation/support/ScopedLock.h"

#include <exception>

using aviation::ScopedLock;

JobThread::JobThread(const QString& logName, int failure, const StopFlag* stopFlag, QObject* parent)
    : QThread(parent)
    , m_logName(logName)
    , m_failure(failure)
    , m_stopFlag(stopFlag)
{
    connect(this, &QThread::finished, this, &JobThread::startAgain);
    // The last that the thread does of its own; join takes the same lock and so comes after it.
    connect(
        this, &QThread::finished, this, [this] { const ScopedLock lock(m_runMutex); },
        Qt::DirectConnection);
}

JobThread::~JobThread()
{
    Q_ASSERT(!isRunning());
}

void JobThread::end()
{
    stop();
    join();
}

void JobThread::join()
{
    wait();
    const ScopedLock lock(m_runMutex);
}

/// The interruption is for code below the job that knows the thread only; it holds for one run.
void JobThread::stop()
{
    m_stopping = true;
    requestInterruption();
}

bool JobThread::stopped() const
{
    return m_stopping || (m_stopFlag != nullptr && m_stopFlag->raised());
}

void JobThread::sleepUnlessStopped(int milliseconds) const
{
    sleepUnless([this] { return stopped(); }, milliseconds);
}

void JobThread::addJob(const Job& job)
{
    m_queue.add(job);
}

int JobThread::queuedJobs() const
{
    return static_cast<int>(m_queue.size());
}

QString JobThread::nameForLog(const Job& job) const
{
    return job.name;
}

/// A job posted while the thread was on its way out, when start() has no effect, would lie until
/// the next post. What leaveQueue left behind does lie until then.
void JobThread::startAgain()
{
    if (m_queue.size() > m_leftBehind && !stopped()) {
        start();
    }
}

void JobThread::leaveQueue()
{
    m_leftBehind = m_queue.size();
    m_leaving = true;
}

void JobThread::beginRun()
{
    const ScopedLock lock(m_runMutex);
    m_leftBehind = 0;
    m_leaving = false;
}

void JobThread::run()
{
    beginRun();
    int result = 0;
    while (m_queue.size() > 0 && !stopped() && !m_leaving) {
        Job job = m_queue.takeFirst();
        log(QStringLiteral("(%1) - Next Job ID: %2, Name: %3")
                .arg(m_logName, QString::number(job.id), nameForLog(job)),
            loglevel::kDebug);
        if (job.id != kNoJob) {
            result = attempt(job, result);
            jobDone(job, result);
        }
    }
}

int JobThread::attempt(Job& job, int before)
{
    try {
        return perform(job, before);
    } catch (const std::exception& failure) { // out of memory is all that can arrive here
        log(QStringLiteral("(%1) - Job %2 failed: %3")
                .arg(m_logName, QString::number(job.id),
                     outsidetext::forLog(QString::fromLocal8Bit(failure.what()))),
            loglevel::kError);
        return m_failure;
    }
}

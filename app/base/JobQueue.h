#pragma once

#include "app/base/Job.h"

#include <QMutex>

#include <atomic>
#include <cstddef>
#include <vector>

/// The jobs that wait for a worker: strictly first in, first out, without priorities, and equal
/// jobs may wait side by side. All operations are callable from any thread.
class JobQueue
{
public:
    void add(const Job& job);
    /// Removes the first job and returns it; the empty job when none waits.
    Job takeFirst();
    /// Number of waiting jobs, read without waiting for the lock.
    std::size_t size() const { return m_size.load(std::memory_order_acquire); }

private:
    void dropTaken();

    QMutex m_mutex;                     ///< guards m_jobs and m_first
    std::vector<Job> m_jobs;            ///< the first m_first elements are taken already
    std::size_t m_first = 0;            ///< index of the next job
    std::atomic<std::size_t> m_size{0}; ///< written under the lock
};

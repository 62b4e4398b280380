#include "app/base/JobQueue.h"

#include "aviation/support/ScopedLock.h"

#include <utility>

void JobQueue::add(const Job& job)
{
    const aviation::ScopedLock lock(m_mutex);
    m_jobs.push_back(job);
    m_size.store(m_jobs.size() - m_first, std::memory_order_release);
}

Job JobQueue::takeFirst()
{
    const aviation::ScopedLock lock(m_mutex);
    if (m_first == m_jobs.size()) {
        return {};
    }
    Job job = std::move(m_jobs[m_first]);
    ++m_first;
    dropTaken();
    m_size.store(m_jobs.size() - m_first, std::memory_order_release);
    return job;
}

/// Taken jobs leave the vector when they are half of it, so a job is moved once on average.
void JobQueue::dropTaken()
{
    if (m_first * 2 >= m_jobs.size()) {
        using Difference = std::vector<Job>::difference_type;
        m_jobs.erase(m_jobs.begin(), m_jobs.begin() + static_cast<Difference>(m_first));
        m_first = 0;
    }
}

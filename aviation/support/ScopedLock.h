#pragma once

#include <QMutex>

// Qt defines __has_feature where the compiler has none, so GCC's own macro is asked first.
#if defined(__SANITIZE_THREAD__)
#define CIRRILON_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define CIRRILON_THREAD_SANITIZER 1
#endif
#endif

#ifdef CIRRILON_THREAD_SANITIZER
extern "C" {
void __tsan_acquire(void* address);
void __tsan_release(void* address);
}
#endif

namespace aviation {

/// Holds a QMutex for a scope and announces it to the thread sanitizer, which can't see into an
/// uninstrumented Qt and would report races on correctly locked data.
class ScopedLock
{
public:
    explicit ScopedLock(QMutex& mutex) : m_mutex(mutex)
    {
        m_mutex.lock();
#ifdef CIRRILON_THREAD_SANITIZER
        __tsan_acquire(&m_mutex);
#endif
    }
    ~ScopedLock()
    {
#ifdef CIRRILON_THREAD_SANITIZER
        __tsan_release(&m_mutex);
#endif
        m_mutex.unlock();
    }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    QMutex& m_mutex;
};

} // namespace aviation

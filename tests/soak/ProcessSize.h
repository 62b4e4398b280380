#pragma once

#include <QDir>
#include <QFile>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

/// What the host says of this process. -1 where it says nothing.
namespace processsize {

/// Keeps the C library from putting large buffers between small ones once one of them was freed:
/// the holes that they leave look like growth.
inline void keepLargeBuffersApart()
{
#if defined(__GLIBC__)
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
#endif
}

/// Memory pages in use, after what the allocator holds back was given to the host.
inline qint64 residentPages()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    return file.readAll().split(' ').value(1, "-1").toLongLong();
}

inline int threads()
{
    const QDir tasks(QStringLiteral("/proc/self/task"));
    return tasks.exists() ? static_cast<int>(tasks.count()) - 2 : -1; // without "." and ".."
}

} // namespace processsize

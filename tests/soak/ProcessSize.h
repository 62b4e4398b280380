#pragma once

#include <QDir>
#include <QFile>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

/// What the host says of this process. -1 where it says nothing.
namespace processsize {

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

#include "app/base/Platform.h"

#include <cstdio>
#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace platform {

void keepLargeBuffersApart()
{
#if defined(__GLIBC__)
    constexpr int kThresholdBytes = 128 * 1024; // where it starts; freeing would raise it
    mallopt(M_MMAP_THRESHOLD, kThresholdBytes);
#endif
}

void endProcess(int status)
{
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace platform

#include "app/base/Platform.h"

#include <QSocketNotifier>

#include <cstdio>
#include <cstdlib>
#include <utility>

#if defined(__GLIBC__)
#include <malloc.h>
#endif
#if !defined(_WIN32)
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace platform {

#if !defined(_WIN32)
namespace {

/// From the handler to the event loop: a signal may come in the middle of anything.
std::array<int, 2> requestPipe{-1, -1};

extern "C" void passRequest(int signalNumber)
{
    const int before = errno;
    const char byte = static_cast<char>(signalNumber);
    [[maybe_unused]] const ssize_t written = ::write(requestPipe[1], &byte, 1);
    errno = before;
}

void catchSignal(int signalNumber)
{
    struct sigaction now = {};
    if (::sigaction(signalNumber, nullptr, &now) != 0 || now.sa_handler == SIG_IGN) {
        return;
    }
    struct sigaction action = {};
    action.sa_handler = passRequest;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    ::sigemptyset(&action.sa_mask);
    ::sigaction(signalNumber, &action, nullptr);
}

} // namespace
#endif

void keepLargeBuffersApart()
{
#if defined(__GLIBC__)
    constexpr int kThresholdBytes = 128 * 1024; // where it starts; freeing would raise it
    mallopt(M_MMAP_THRESHOLD, kThresholdBytes);
#endif
}

#if defined(_WIN32)
void onEndRequest(QObject& /*context*/, std::function<void(int status)> /*end*/) {}
#else
void onEndRequest(QObject& context, std::function<void(int status)> end)
{
    if (::pipe(requestPipe.data()) != 0) {
        return;
    }
    for (const int descriptor : requestPipe) {
        ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    }
    auto* notifier = new QSocketNotifier(requestPipe[0], QSocketNotifier::Read, &context);
    QObject::connect(notifier, &QSocketNotifier::activated, &context, [end = std::move(end)] {
        constexpr int kSignalStatus = 128; // shells say so who ended a program
        char signalNumber = 0;
        if (::read(requestPipe[0], &signalNumber, 1) == 1) {
            end(kSignalStatus + signalNumber);
        }
    });
    for (const int signalNumber : {SIGTERM, SIGINT, SIGHUP}) {
        catchSignal(signalNumber);
    }
}
#endif

void endProcess(int status)
{
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace platform

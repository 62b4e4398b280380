#pragma once

#include <functional>

class QObject;

/// What differs from host to host and has no form in Qt.
namespace platform {

/// Keeps the C library from putting large buffers (reports, downloads) between small ones once one
/// of them was freed: the holes that they leave look like growth. Does nothing where the library
/// has no such habit. To be called once, before any thread starts.
void keepLargeBuffersApart();

/// Ends the process at once, with its output written. Qt would wait at its end for name look-ups
/// that no resolver answers; to be called when everything is saved.
[[noreturn]] void endProcess(int status);

/// Calls `end` from the event loop of the main thread when the system asks the program to end
/// (SIGTERM, SIGINT, SIGHUP), with the exit status that is usual for it. A second request ends the
/// program at once, in case the first one hangs. Signals that were ignored at the start stay so, as
/// after "nohup". On Windows a program with windows gets no such request; the end of the session
/// comes through Qt everywhere. To be called once, on the main thread; nothing is called any more
/// when `context` is gone.
void onEndRequest(QObject& context, std::function<void(int status)> end);

} // namespace platform

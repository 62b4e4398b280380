#pragma once

/// What differs from host to host and has no form in Qt.
namespace platform {

/// Keeps the C library from putting large buffers (reports, downloads) between small ones once one
/// of them was freed: the holes that they leave look like growth. Does nothing where the library
/// has no such habit. To be called once, before any thread starts.
void keepLargeBuffersApart();

/// Ends the process at once, with its output written. Qt would wait at its end for name look-ups
/// that no resolver answers; to be called when everything is saved.
[[noreturn]] void endProcess(int status);

} // namespace platform

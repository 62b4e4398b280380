#pragma once

// GCC 12 takes members of its own std::wregex for uninitialised when sanitizers change what it
// inlines. The code that it warns about is made at the end of the file, so nothing is popped.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include <regex>

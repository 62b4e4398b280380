#pragma once

#include <chrono>
#include <ctime>

/// CPU time that the process has taken, for benchmarks that time parts of a turn by hand. Unlike
/// the time of day it stands still while other programs have the core. Asking takes some tenths of
/// a microsecond, and the result steps by one: time some dozens of reports at once.
inline std::chrono::duration<double> cpuTime()
{
    return std::chrono::duration<double>(static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
}

#pragma once

/// Levels of a log line, the second argument of every sigDebugString.
namespace loglevel {
inline constexpr int kDebug = 0;
inline constexpr int kNotification = 1;
inline constexpr int kWarning = 2;
inline constexpr int kError = 3;
inline constexpr int kNothing = 4; ///< above all levels: the least level of who takes no line
} // namespace loglevel

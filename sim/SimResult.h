#pragma once

/// Result codes of simulator operations and of ConnectWorker's jobs; texts in FsInterfaceBase.cpp.
/// Plain integers, since they travel in signals and an interface may return others.
namespace simresult {
inline constexpr int kNone = 0;
inline constexpr int kNotConnected = 1;
inline constexpr int kAlreadyConnected = 2; ///< counts as connected
inline constexpr int kConnectionLost = 3;
inline constexpr int kWrongFsVersion = 4;
inline constexpr int kNoWeather = 5;  ///< nothing waits to be set
inline constexpr int kNotCreated = 6; ///< a weather station
inline constexpr int kCallFailed = 8;
inline constexpr int kWrongMessage = 10; ///< the bridge answered with another message type
inline constexpr int kRefused = 11;      ///< the bridge refused; also a weather job without a place
inline constexpr int kNotDelivered = 12; ///< a file didn't reach the bridge
inline constexpr int kTimeout = 13;      ///< ends the worker's run
inline constexpr int kNoInterface = 14;  ///< no interface object exists
inline constexpr int kFileNotOpened = 15; ///< a file couldn't be opened
inline constexpr int kWrongArguments = 17;
inline constexpr int kCloudRequest = 18;
inline constexpr int kPaused = 19;     ///< not treated as an error
inline constexpr int kCloudReply = 20; ///< the success of a cloud map request
inline constexpr int kWrongApiVersion = 100;
inline constexpr int kNotImplemented = 200; ///< base stubs
} // namespace simresult

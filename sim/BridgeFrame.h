#pragma once

#include <QByteArray>

#include <cstdint>

/// Commands of the bridge.
namespace bridgecommand {
inline constexpr std::uint8_t kHello = 1;
inline constexpr std::uint8_t kConnectedFs = 2;
inline constexpr std::uint8_t kFsState = 3;
inline constexpr std::uint8_t kRead = 4; ///< server pushes aircraft data by UDP
inline constexpr std::uint8_t kWrite = 5;
inline constexpr std::uint8_t kRequest = 6;
inline constexpr std::uint8_t kAnswer = 7;
inline constexpr std::uint8_t kRefuse = 8;
inline constexpr std::uint8_t kQuit = 9;
} // namespace bridgecommand

/// Message ids of the bridge. What a number means depends on the command.
namespace bridgemessage {
inline constexpr std::uint8_t kHello = 1;
inline constexpr std::uint8_t kAircraftData = 2;
inline constexpr std::uint8_t kFuel = 3;
inline constexpr std::uint8_t kPayload = 4;
inline constexpr std::uint8_t kWind = 6;
inline constexpr std::uint8_t kWeatherRecord = 7;
inline constexpr std::uint8_t kObservation = 8;
inline constexpr std::uint8_t kWeather = 9;
inline constexpr std::uint8_t kWeatherFileName = 10;
inline constexpr std::uint8_t kWeatherFile = 11;
inline constexpr std::uint8_t kWindLayers = 13;
inline constexpr std::uint8_t kGlobalWindFile = 14;
inline constexpr std::uint8_t kTurbulenceFile = 15;
inline constexpr std::uint8_t kActivateWeather = 16;
inline constexpr std::uint8_t kVisibility = 17;
inline constexpr std::uint8_t kRadios = 18;
inline constexpr std::uint8_t kText = 20;
inline constexpr std::uint8_t kClearWeather = 22;
inline constexpr std::uint8_t kDateTime = 23;
inline constexpr std::uint8_t kConfigFile = 24;
inline constexpr std::uint8_t kClientAddress = 25;
inline constexpr std::uint8_t kWeatherWx = 28;
inline constexpr std::uint8_t kIsFsConnected = 80;
inline constexpr std::uint8_t kFsConnected = 81;
} // namespace bridgemessage

/// One message of the bridge protocol, over TCP and UDP alike.
struct FsMessage
{
    std::uint8_t command = 0;
    std::uint8_t id = 0;
    std::int32_t dataLength = 0; ///< as announced on the wire; the data may be shorter or longer
    QByteArray data;
};

/// Bytes of a frame before its data.
inline constexpr int kFrameHeaderLength = 20;
/// No frame may announce more data than this.
inline constexpr int kLongestFrameData = 64 * 1024 * 1024;

/// "@%04i;%04i;%08i;" of command, id and the data's size, followed by the data.
QByteArray frameBytes(std::uint8_t command, std::uint8_t id, const QByteArray& data);

/// Reads a block as one frame; the data is all after the header, whatever length it announces. A
/// block that is too short or doesn't begin with "@" gives an empty message, a number that doesn't
/// fit its field 0. False for a block of 16 to 19 bytes, a header that broke off: it can't be read,
/// and `message` stays as it was.
bool parseFrame(const QByteArray& block, FsMessage& message);

/// What the beginning of a block says of its size.
enum class FrameProgress
{
    Partial,  ///< begins as a frame does, and more must come
    Complete, ///< a whole frame, or no frame at all
    TooLong   ///< announces more than kLongestFrameData
};
FrameProgress progressOf(const QByteArray& block);

/// "HELO" and so on; "NCMD" for 0 and any number without a name.
const char* commandName(int command);

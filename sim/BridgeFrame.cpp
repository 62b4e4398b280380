#include "sim/BridgeFrame.h"

#include "aviation/support/NumberText.h"

#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace {

constexpr char kFrameMark = '@';
constexpr int kCommandAt = 1;
constexpr int kIdAt = 6;
constexpr int kLengthAt = 11;
constexpr int kShortNumberLength = 4;
constexpr int kLongNumberLength = 8;
constexpr int kShortestFrame = 15; // up to half of the length field

/// The number in a field, which a short block may cut.
std::int32_t numberAt(const QByteArray& block, int at, int length)
{
    const QByteArray digits = block.mid(at, length);
    return aviation::integerFromText(aviation::widen(
        std::string_view(digits.constData(), static_cast<std::size_t>(digits.size()))));
}

std::uint8_t byteAt(const QByteArray& block, int at)
{
    const std::int32_t number = numberAt(block, at, kShortNumberLength);
    const bool fits = number >= 0 && number <= std::numeric_limits<std::uint8_t>::max();
    return fits ? static_cast<std::uint8_t>(number) : std::uint8_t{0};
}

} // namespace

QByteArray frameBytes(std::uint8_t command, std::uint8_t id, const QByteArray& data)
{
    const std::string header = kFrameMark + aviation::integerText(command, kShortNumberLength) + ";"
                               + aviation::integerText(id, kShortNumberLength) + ";"
                               + aviation::integerText(data.size(), kLongNumberLength) + ";";
    return QByteArray::fromStdString(header) + data;
}

bool parseFrame(const QByteArray& block, FsMessage& message)
{
    if (block.size() < kShortestFrame || block.at(0) != kFrameMark) {
        message = FsMessage();
        return true;
    }
    if (block.size() > kShortestFrame && block.size() < kFrameHeaderLength) {
        return false;
    }
    message.command = byteAt(block, kCommandAt);
    message.id = byteAt(block, kIdAt);
    message.dataLength = numberAt(block, kLengthAt, kLongNumberLength);
    message.data = block.mid(kFrameHeaderLength);
    return true;
}

FrameProgress progressOf(const QByteArray& block)
{
    if (block.isEmpty()) {
        return FrameProgress::Partial;
    }
    if (block.at(0) != kFrameMark) {
        return FrameProgress::Complete;
    }
    if (block.size() < kFrameHeaderLength) {
        return FrameProgress::Partial;
    }
    const std::int32_t length = numberAt(block, kLengthAt, kLongNumberLength);
    if (length > kLongestFrameData) {
        return FrameProgress::TooLong;
    }
    return block.size() - kFrameHeaderLength < length ? FrameProgress::Partial
                                                      : FrameProgress::Complete;
}

const char* commandName(int command)
{
    static constexpr std::array<const char*, 10> kNames{"NCMD", "HELO",    "COFS", "FSST", "READ",
                                                        "WRIT", "REQUEST", "ANSW", "NCMD", "QUIT"};
    const bool known = command >= 0 && static_cast<std::size_t>(command) < kNames.size();
    return known ? kNames[static_cast<std::size_t>(command)] : kNames[0];
}

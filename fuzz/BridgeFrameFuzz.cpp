#include "sim/BridgeDatagram.h"
#include "sim/BridgeFrame.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace

/// Any block is a message, an empty one, or can't be read; what is read keeps the data whole and
/// comes back from its frame. A datagram has an aircraft only if its frame is the right one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray block(reinterpret_cast<const char*>(data), static_cast<int>(size));
    FsMessage message;
    const bool readable = parseFrame(block, message);
    require(readable || (block.size() > 15 && block.size() < kFrameHeaderLength));
    require(message.data.size() <= block.size());
    require(message.data.isEmpty() || block.endsWith(message.data));

    const FrameProgress progress = progressOf(block);
    require(progress != FrameProgress::Complete || readable);
    require(progress != FrameProgress::TooLong || message.dataLength > kLongestFrameData);

    const QByteArray frame = frameBytes(message.command, message.id, message.data);
    FsMessage again;
    require(parseFrame(frame, again) && progressOf(frame) == FrameProgress::Complete);
    require(again.command == message.command && again.id == message.id);
    require(again.data == message.data && again.dataLength == message.data.size());

    const BridgeDatagram datagram = parseDatagram(block);
    require(!datagram.hasAircraft || datagram.command == bridgecommand::kRead
            || datagram.isAircraftAnswer());
    return 0;
}

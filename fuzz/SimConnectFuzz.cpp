#include "sim/SimConnectClient.h"
#include "tests/sim/ScriptedSimConnect.h"

#include <algorithm>
#include <cmath>
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

/// Messages one after the other, each with the two bytes of its length in front; the last one ends
/// where the data do.
std::deque<SimConnectScript::Bytes> messagesOf(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t kLengthBytes = 2;
    std::deque<SimConnectScript::Bytes> messages;
    while (size >= kLengthBytes) {
        const std::size_t told = data[0] + 256U * data[1];
        data += kLengthBytes;
        size -= kLengthBytes;
        const std::size_t length = std::min(told, size);
        messages.emplace_back(data, data + length);
        data += length;
        size -= length;
    }
    return messages;
}

void checkRecords(const SimConnectClient& client)
{
    const auto& aircraft = client.aircraft();
    require(std::isfinite(aircraft.position.latitude()) && std::isfinite(aircraft.heading));
    require(std::abs(aircraft.position.latitude()) <= 90.0 && aircraft.wind.Gust == -1.0F);
    require(std::isfinite(aircraft.temperature) && std::isfinite(aircraft.visibility));
    require(aircraft.name.size() <= 256 && aircraft.airline.size() <= 64);
    require(client.fuel().tanks.size() <= kSimConnectTanks);
    for (const auto& tank : client.fuel().tanks) {
        require(std::isfinite(tank.level) && tank.capacity > 0.0 && tank.id > 0);
    }
    require(client.payload().stations.size() <= static_cast<std::size_t>(kSimConnectStations));
    require(client.cloudState().size() <= 4096);
    require(client.observation().size() <= 2000);
    require(client.applicationName().size() <= 256);
}

} // namespace

/// Any messages leave bounded records with finite numbers, and each is taken once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SimConnectScript script;
    script.messages = messagesOf(data, size);
    SimConnectClient client(std::make_unique<ScriptedSimConnect>(script));
    require(client.open());
    while (!script.messages.empty()) {
        const std::size_t before = script.messages.size();
        client.Dispatch();
        require(script.messages.size() == before - 1);
        checkRecords(client);
    }
    require(client.Dispatch() == SimConnectReply::Nothing);
    return 0;
}

#pragma once

#include "sim/clients/SimConnectMessages.h"
#include "standins/simulator/Fault.h"

#include <cstdint>
#include <cstring>
#include <deque>
#include <vector>

namespace simulator {

/// Messages on their way to a SimConnect client. Used by one thread.
class SimConnectQueue
{
public:
    using Bytes = std::vector<std::uint8_t>;

    /// Fills the head's size, version and id, and sends the message with the data after it, as the
    /// fault says.
    template <class Body>
    void send(Body body, simconnect::MessageId id, const Bytes& data = {}, const Fault& fault = {})
    {
        body.size = static_cast<std::uint32_t>(sizeof(Body) + data.size());
        body.version = kVersion;
        body.id = static_cast<std::uint32_t>(id);
        Bytes message(sizeof(Body));
        std::memcpy(message.data(), &body, sizeof(Body));
        message.insert(message.end(), data.begin(), data.end());
        push(std::move(message), fault);
    }

    /// The next message that is due, valid until the next call; null when there is none.
    const Bytes* next();
    void clear();

private:
    static constexpr std::uint32_t kVersion = 4;

    struct Waiting
    {
        std::int64_t dueMs = 0; ///< on the process's clock
        Bytes message;
    };

    void push(Bytes message, const Fault& fault);
    void add(Bytes message, int afterMs);

    std::deque<Waiting> m_waiting; ///< bounded, the oldest goes first
    Bytes m_current;
};

} // namespace simulator

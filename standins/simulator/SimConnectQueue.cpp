#include "standins/simulator/SimConnectQueue.h"

#include "aviation/support/Clock.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

using Bytes = SimConnectQueue::Bytes;

constexpr std::size_t kMostWaiting = 4096;
constexpr std::size_t kRequestIdAt = sizeof(simconnect::Message);
constexpr std::size_t kMostGarbage = std::size_t{1024} * 1024;
constexpr std::uint32_t kOtherId = 0x5500;
constexpr std::uint32_t kHugeLength = 100000000;

std::uint32_t wordAt(const Bytes& message, std::size_t at)
{
    std::uint32_t word = 0;
    std::memcpy(&word, &message[at], sizeof(word));
    return word;
}

void setWord(Bytes& message, std::size_t at, std::uint32_t word)
{
    std::memcpy(&message[at], &word, sizeof(word));
}

bool isOpenMessage(const Bytes& message)
{
    return wordAt(message, offsetof(simconnect::Message, id))
           == static_cast<std::uint32_t>(simconnect::MessageId::Open);
}

/// What stays of an answer whose data are spoilt: the head and, where there is one, the request id.
Bytes beginningOf(const Bytes& message)
{
    const std::size_t bytes = kRequestIdAt + (isOpenMessage(message) ? 0 : sizeof(std::uint32_t));
    return {message.begin(), message.begin() + static_cast<std::ptrdiff_t>(bytes)};
}

/// The same bytes each time, of all values.
Bytes withGarbage(const Bytes& message, int number)
{
    Bytes spoilt = beginningOf(message);
    std::uint32_t state = 2463534242U;
    const auto bytes = std::min(static_cast<std::size_t>(std::max(0, number)), kMostGarbage);
    for (std::size_t i = 0; i < bytes; ++i) {
        state ^= state << 13U;
        state ^= state >> 17U;
        state ^= state << 5U;
        spoilt.push_back(static_cast<std::uint8_t>(state >> 24U));
    }
    setWord(spoilt, 0, static_cast<std::uint32_t>(spoilt.size()));
    return spoilt;
}

Bytes withHugeLength(const Bytes& message)
{
    Bytes spoilt = beginningOf(message);
    setWord(spoilt, 0, kHugeLength);
    return spoilt;
}

Bytes withOtherId(Bytes message)
{
    const std::size_t at =
        isOpenMessage(message) ? offsetof(simconnect::Message, id) : kRequestIdAt;
    setWord(message, at, wordAt(message, at) ^ kOtherId);
    return message;
}

Bytes cut(const Bytes& message, int number)
{
    const auto bytes = std::min(static_cast<std::size_t>(std::max(0, number)), message.size());
    return {message.begin(), message.begin() + static_cast<std::ptrdiff_t>(bytes)};
}

} // namespace

void SimConnectQueue::push(Bytes message, const Fault& fault)
{
    switch (fault.kind) {
    case FaultKind::Slow:
        add(std::move(message), fault.number);
        break;
    case FaultKind::WrongId:
        add(withOtherId(std::move(message)), 0);
        break;
    case FaultKind::Garbage:
        add(withGarbage(message, fault.number), 0);
        break;
    case FaultKind::HugeLength:
        add(withHugeLength(message), 0);
        break;
    case FaultKind::Cut:
        add(cut(message, fault.number), 0);
        if (fault.restAfterMs >= 0) {
            add(std::move(message), fault.restAfterMs);
        }
        break;
    default:
        add(std::move(message), 0);
        break;
    }
}

void SimConnectQueue::add(Bytes message, int afterMs)
{
    if (message.empty()) {
        return;
    }
    m_waiting.push_back({aviation::Clock::current().MonotonicMs() + afterMs, std::move(message)});
    if (m_waiting.size() > kMostWaiting) {
        m_waiting.pop_front();
    }
}

const Bytes* SimConnectQueue::next()
{
    const std::int64_t now = aviation::Clock::current().MonotonicMs();
    const auto due = std::find_if(m_waiting.begin(), m_waiting.end(),
                                  [now](const Waiting& waiting) { return waiting.dueMs <= now; });
    if (due == m_waiting.end()) {
        return nullptr;
    }
    m_current = std::move(due->message);
    m_waiting.erase(due);
    return &m_current;
}

void SimConnectQueue::clear()
{
    m_waiting.clear();
}

} // namespace simulator

#pragma once

#include <algorithm>
#include <initializer_list>

/// What one dispatch round found.
enum class SimConnectReply
{
    Nothing = 0, ///< no message waits
    Exception = 1,
    Open = 2,
    Aircraft = 3,
    Fuel = 4,
    Payload = 5,
    Radios = 6,
    Observation = 7,
    Paused = 8,  ///< the simulation doesn't run, as the simulator was asked
    Running = 9, ///< it does
    Other = 10,  ///< a message without news
    CloudState = 11,
    Failed = 12, ///< the call failed, or the library gave a message that isn't one
    Quit = 13    ///< the simulator ends
};

/// What some dispatch rounds found. Plain value.
class SimConnectReplies
{
public:
    void add(SimConnectReply reply)
    {
        m_kinds |= bitOf(reply);
        m_last = reply;
    }
    void add(const SimConnectReplies& later)
    {
        m_kinds |= later.m_kinds;
        m_last = later.m_last;
    }
    bool has(SimConnectReply reply) const { return (m_kinds & bitOf(reply)) != 0; }
    bool hasAnyOf(std::initializer_list<SimConnectReply> replies) const
    {
        return std::any_of(replies.begin(), replies.end(),
                           [this](SimConnectReply reply) { return has(reply); });
    }
    SimConnectReply last() const { return m_last; }

private:
    static constexpr unsigned bitOf(SimConnectReply reply)
    {
        return 1U << static_cast<unsigned>(reply);
    }

    unsigned m_kinds = 0;
    SimConnectReply m_last = SimConnectReply::Nothing;
};

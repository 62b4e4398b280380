#pragma once

#include "standins/faults/FaultOrder.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace simulator {

/// In the order of their table.
enum class FaultKind
{
    None,
    Silent,     ///< takes the message and doesn't answer
    Slow,       ///< answers after `number` milliseconds
    WrongId,    ///< answers with another message id
    Refuse,     ///< answers NCMD and keeps nothing of the message
    Cut,        ///< sends `number` bytes of the answer, the rest after `restAfterMs`, -1 never
    Garbage,    ///< answers with `number` bytes that aren't a frame
    Close,      ///< sends half of the answer and closes the connection
    Drop,       ///< closes the connection without an answer
    WrongApi,   ///< greets with the API version `text`
    HugeLength, ///< announces 100 MB of data that never come
    Result,     ///< the call gives the result `text`; nothing over the bridge
    UdpSilent,  ///< no datagrams
    UdpGarbage, ///< datagrams that aren't frames
    UdpForeign  ///< datagrams from another address, 127.0.0.2
};

/// How the stand-in misbehaves, until it is switched off or for the next `count` messages that it
/// concerns. Plain value.
struct Fault : faults::Order
{
    FaultKind kind = FaultKind::None;

    /// The number of Result, hexadecimal.
    std::uint32_t result() const { return text.toUInt(nullptr, 16); }
    bool isUdp() const { return kind >= FaultKind::UdpSilent; }
    /// A message with these numbers meets the fault.
    bool concerns(int ofCommand, int ofId) const;
    /// Counts one message; the fault is over when none is left.
    void countDown();
};

/// Reads an order of messages: "none", "silent", "slow:1500", "wrongid*2", "refuse:no room@5/11",
/// "cut:10", "cut:10,400" (rest after 400 ms), "garbage:30", "close", "drop", "wrongapi:3.1",
/// "huge", "result:C000014B", "udpsilent", "udpgarbage", "udpforeign". Nothing if it is none of
/// these.
std::optional<Fault> parseFault(const QString& text);
/// The same back, for people.
QString faultText(const Fault& fault);
/// All names with what they do, a line each, for the help.
QString faultHelp();

} // namespace simulator

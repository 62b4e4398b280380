#include "standins/simulator/Fault.h"

#include <array>

namespace simulator {

namespace {

using faults::Argument;
using faults::Kind;

/// In the order of FaultKind.
constexpr std::array kKinds{
    Kind{"none", Argument::None, 0, "behaves"},
    Kind{"silent", Argument::None, 0, "doesn't answer"},
    Kind{"slow", Argument::Number, 1000, "slow:MS answers late"},
    Kind{"wrongid", Argument::None, 0, "answers with another message id"},
    Kind{"refuse", Argument::Text, 0, "refuse:TEXT refuses"},
    Kind{"cut", Argument::NumberAndRest, 10,
         "cut:BYTES[,MS] cuts the answer, the rest follows after MS or never"},
    Kind{"garbage", Argument::Number, 40, "garbage:BYTES answers with no frame"},
    Kind{"close", Argument::None, 0, "closes in the middle of an answer"},
    Kind{"drop", Argument::None, 0, "closes instead of an answer"},
    Kind{"wrongapi", Argument::Text, 0, "wrongapi:TEXT greets with that version"},
    Kind{"huge", Argument::None, 0, "announces 100 MB of data that never come"},
    Kind{"result", Argument::Text, 0, "result:HEX a SimConnect or FSUIPC call gives that result"},
    Kind{"udpsilent", Argument::None, 0, "sends no datagrams"},
    Kind{"udpgarbage", Argument::Number, 40, "udpgarbage:BYTES sends datagrams without a frame"},
    Kind{"udpforeign", Argument::None, 0, "sends datagrams from another address"}};
static_assert(kKinds.size() == static_cast<std::size_t>(FaultKind::UdpForeign) + 1);

} // namespace

bool Fault::concerns(int ofCommand, int ofId) const
{
    return kind != FaultKind::None && concernsMessage(ofCommand, ofId);
}

void Fault::countDown()
{
    if (Order::countDown()) {
        *this = Fault{};
    }
}

std::optional<Fault> parseFault(const QString& text)
{
    QString reason;
    const std::optional<faults::Order> order =
        faults::parseOrder(text, kKinds, faults::Target::Message, reason);
    return order ? std::optional(Fault{*order, static_cast<FaultKind>(order->row)}) : std::nullopt;
}

QString faultText(const Fault& fault)
{
    return faults::orderText(fault, kKinds);
}

QString faultHelp()
{
    return faults::helpText(kKinds);
}

} // namespace simulator

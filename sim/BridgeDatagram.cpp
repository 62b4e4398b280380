#include "sim/BridgeDatagram.h"

#include "sim/BridgeFrame.h"
#include "sim/BridgeText.h"

bool BridgeDatagram::isAircraftAnswer() const
{
    return hasAircraft && command == bridgecommand::kAnswer && id == bridgemessage::kAircraftData;
}

BridgeDatagram parseDatagram(const QByteArray& datagram)
{
    BridgeDatagram result;
    FsMessage message;
    const int end = datagram.indexOf('\0');
    if (!parseFrame(end < 0 ? datagram : datagram.left(end), message)) {
        return result;
    }
    result.command = message.command;
    result.id = message.id;
    const bool carriesAircraft = message.command == bridgecommand::kRead
                                 || (message.command == bridgecommand::kAnswer
                                     && message.id == bridgemessage::kAircraftData);
    if (carriesAircraft && message.data.count(':') + 1 >= bridgetext::kAircraftFields) {
        result.hasAircraft = true;
        result.aircraft = bridgetext::aircraftFromText(message.data, &result.fault);
        fillMaximumWeights(result.aircraft);
    }
    return result;
}

std::uint16_t portFromText(const QString& text)
{
    constexpr int kMostDigits = 5;
    bool digitsOnly = !text.isEmpty() && text.size() <= kMostDigits;
    for (const QChar c : text) {
        digitsOnly = digitsOnly && c >= QLatin1Char('0') && c <= QLatin1Char('9');
    }
    // Conversion fails by itself above 65535.
    return digitsOnly ? text.toUShort() : std::uint16_t{0};
}

void fillMaximumWeights(aviation::structs::AircraftData& aircraft)
{
    if (aircraft.maxGrossWeight <= 0.0F) {
        return;
    }
    for (float* weight : {&aircraft.maxTakeOffWeight, &aircraft.maxRampWeight}) {
        if (*weight == 0.0F) {
            *weight = aircraft.maxGrossWeight;
        }
    }
}

#pragma once

#include "aviation/AircraftData.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

/// What a bridge server pushed in one datagram.
struct BridgeDatagram
{
    int command = 0;          ///< bridgecommand
    int id = 0;               ///< bridgemessage, the sub-command
    bool hasAircraft = false; ///< false: `aircraft` is a fresh record and means nothing
    aviation::structs::AircraftData aircraft;
    QString fault; ///< why the aircraft text broke off; empty without a fault

    /// The answer that stands for a finished poll of the aircraft data.
    bool isAircraftAnswer() const;
};

/// Reads the bytes up to the first zero as one message. Takes any bytes; what isn't a message has
/// command and id 0. An aircraft is only in a READ or an answer with an aircraft text.
BridgeDatagram parseDatagram(const QByteArray& datagram);

/// The port of the stream, in decimal digits, 1 to 65535; 0 for anything else.
std::uint16_t portFromText(const QString& text);

/// A bridge names the gross weight only: it stands for the other maximum weights that are missing.
void fillMaximumWeights(aviation::structs::AircraftData& aircraft);

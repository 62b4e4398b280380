#pragma once

#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"
#include "aviation/Wind.h"

#include <QByteArray>
#include <QString>

/// The text forms of the bridge's messages: "key=value" fields between ":", UTF-8, decimal points
/// in every locale. Readers skip a key by its length without a look at it. They are pure, take any
/// bytes and never throw: what stands before a fault is taken, `fault` (if given) gets a line
/// about it, and stays as it was without one.
namespace bridgetext {

/// Fields of an aircraft text that must be there; the eleven after them are optional.
inline constexpr int kAircraftFields = 17;

/// A fresh record for a text of fewer than kAircraftFields fields. A place beyond 90 degrees of
/// latitude or 360 of longitude is left unknown.
aviation::structs::AircraftData aircraftFromText(const QByteArray& text, QString* fault = nullptr);

/// "NumOfStation=%i:FuelWeight=%f" and ":StationID=%i|Name=%ls|Capacity=%f|Level=%f" a tank.
/// Delimiters in a name become blanks.
QByteArray fuelText(const aviation::structs::AircraftFuel& fuel);
aviation::structs::AircraftFuel fuelFromText(const QByteArray& text, QString* fault = nullptr);

/// "NumOfStation=%i" and ":StationName=%S|Type=%i|MaxWeight=%f|Weight=%f" a station. Read, the
/// total is the sum of the loads, and a type without a name is 0.
QByteArray payloadText(const aviation::structs::AircraftPayload& payload);
aviation::structs::AircraftPayload payloadFromText(const QByteArray& text,
                                                   QString* fault = nullptr);

/// "comm1active=%i:comm1standby=%i:...:adf=%i:transponder=%i".
QByteArray radioText(const aviation::structs::RadioFrequencys& radios);
aviation::structs::RadioFrequencys radioFromText(const QByteArray& text, QString* fault = nullptr);

/// Reads aviation::weather::windText.
aviation::weather::Wind windFromText(const QByteArray& text, QString* fault = nullptr);

/// Decimal digits up to the first other character; false without any or beyond the range.
bool longFromText(const QByteArray& text, qint64& value);

} // namespace bridgetext

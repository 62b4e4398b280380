#pragma once

#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"

#include <QByteArray>

#include <optional>

/// The aircraft's texts, as the simulator's side writes and reads them. Names are sent in UTF-8,
/// with the separators ":" and "|" in them replaced by blanks. Readers are strict: nothing for a
/// text with a mistake.
namespace simulator {

/// Message 2: 28 fields joined by ":". A client knows a field by its place and the length of its
/// key only, so that the keys are chosen for their lengths.
QByteArray aircraftText(const aviation::structs::AircraftData& aircraft);

/// Message 3.
QByteArray fuelText(const aviation::structs::AircraftFuel& fuel);
std::optional<aviation::structs::AircraftFuel> readFuel(const QByteArray& text);

/// Message 4.
QByteArray payloadText(const aviation::structs::AircraftPayload& payload);
std::optional<aviation::structs::AircraftPayload> readPayload(const QByteArray& text);

/// Message 18, the automatic direction finder before the transponder.
QByteArray radioText(const aviation::structs::RadioFrequencys& radios);
std::optional<aviation::structs::RadioFrequencys> readRadios(const QByteArray& text);

} // namespace simulator

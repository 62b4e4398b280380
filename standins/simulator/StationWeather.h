#pragma once

#include "aviation/Position.h"
#include "standins/simulator/SimulatorState.h"

#include <QString>

/// Weather of a place, as a simulator reports it by its stations.
namespace simulator {

/// Four letters or digits, then a blank or the "&" of an extension.
bool isObservation(const QString& text);

/// The last text of the nearest station of SimulatorState::stations that has one, else the last one
/// of "GLOB", else the last one of all; empty if there is none.
QString keptObservation(const SimulatorState& state, const aviation::Position& position);
/// The same, else a METAR of the nearest record, else one of "GLOB" from the air that was set; with
/// the time in seconds since 1970.
QString observationAt(const SimulatorState& state, const aviation::Position& position,
                      std::int64_t simTime);

} // namespace simulator

#pragma once

#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"

#include <functional>
#include <optional>
#include <string>

/// The simulation variables that SimConnect clients can ask for by name, and the units that they
/// can ask in, as the simulators' makers publish them. Names are compared without case.
namespace simulator {

class SimulatorModel;

/// The simulator at one moment.
struct SimSnapshot
{
    aviation::structs::AircraftData aircraft;
    aviation::structs::AircraftFuel fuel;
    aviation::structs::AircraftPayload payload;
    aviation::structs::RadioFrequencys radios;
    bool inCloud = false;
};
SimSnapshot snapshotOf(SimulatorModel& model);

/// A variable; it is either a number in its own unit or a text.
struct SimVariable
{
    std::string name; ///< upper case
    std::string unit; ///< empty for a text
    std::function<double(const SimSnapshot&, int index)> number;
    std::function<std::wstring(const SimSnapshot&, int index)> text;
    int firstIndex = -1; ///< of "NAME:index", -1 for a name without
    int lastIndex = -1;
    int tank = 0;           ///< id of the tank whose level this is, 0 none
    bool isStation = false; ///< weight of the payload station that the index names
    int message = 0;        ///< of the bridge that carries the same

    bool isText() const { return unit.empty(); }
    bool isSettable() const { return tank != 0 || isStation; }
};

struct SimVariableName
{
    const SimVariable* variable = nullptr;
    int index = 0;
};
/// "NAME" or "NAME:index"; nothing if there is no such variable.
std::optional<SimVariableName> findVariable(const std::string& name);

/// Nothing if one of the units isn't known or they don't measure the same.
std::optional<double> convertUnit(double value, const std::string& from, const std::string& to);

} // namespace simulator

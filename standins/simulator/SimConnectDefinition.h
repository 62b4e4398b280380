#pragma once

#include "sim/clients/SimConnectMessages.h"
#include "standins/simulator/SimVariables.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

class SimulatorModel;

/// What SimConnect would raise: a number of namespace exception and the argument after the handle
/// that was wrong, from 1.
struct SimConnectProblem
{
    std::uint32_t exception = 0;
    std::uint32_t index = 0;
};
using MaybeProblem = std::optional<SimConnectProblem>;

/// A data definition of a SimConnect client: data in the order in which they were added. Plain
/// value.
class SimConnectDefinition
{
public:
    /// Arguments as of SimConnect_AddToDataDefinition; a null unit is none. A datum with a problem
    /// isn't added.
    MaybeProblem add(const char* datumName, const char* unitsName, simconnect::DataType type);

    bool isEmpty() const { return m_data.empty(); }
    /// Number of data.
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_data.size()); }
    /// Bytes of the packed data.
    std::size_t size() const;
    /// The bridge's message that carries the same as the first datum.
    int message() const;

    /// The values without padding. Numbers are rounded and saturate in whole types, texts are UTF-8
    /// and cut so that a zero ends them.
    std::vector<std::uint8_t> pack(const SimSnapshot& now) const;
    /// Gives the model size() bytes of packed values. Tank levels are limited to 0 to 1, those of
    /// tanks that the aircraft hasn't are left. Nothing is set when there is a problem.
    MaybeProblem apply(const std::uint8_t* bytes, SimulatorModel& model) const;

private:
    struct Datum
    {
        SimVariableName name;
        std::string unit;
        simconnect::DataType type = simconnect::DataType::Invalid;
    };

    std::vector<Datum> m_data;
};

} // namespace simulator

#include "standins/simulator/SimConnectDefinition.h"

#include "standins/simulator/SimConnectExceptions.h"
#include "standins/simulator/SimulatorModel.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace simulator {

namespace {

using simconnect::DataType;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMostData = 1000;
constexpr std::uint32_t kDatumArgument = 2;
constexpr std::uint32_t kUnitArgument = 3;
constexpr std::uint32_t kTypeArgument = 4;
constexpr std::uint32_t kDataArgument = 6;

/// 0 for what is no type.
std::size_t sizeOf(DataType type)
{
    switch (type) {
    case DataType::Int32:
    case DataType::Float32:
        return 4;
    case DataType::Int64:
    case DataType::Float64:
    case DataType::String8:
        return 8;
    case DataType::String32:
        return 32;
    case DataType::String64:
        return 64;
    case DataType::String128:
        return 128;
    case DataType::String256:
        return 256;
    default:
        return 0;
    }
}

bool isText(DataType type)
{
    return type >= DataType::String8;
}

template <class Value>
void append(Bytes& bytes, Value value)
{
    const std::size_t at = bytes.size();
    bytes.resize(at + sizeof(value));
    std::memcpy(&bytes[at], &value, sizeof(value));
}

void appendNumber(Bytes& bytes, double number, DataType type)
{
    const double value = std::isfinite(number) ? number : 0.0;
    switch (type) {
    case DataType::Int32: {
        using Limits = std::numeric_limits<std::int32_t>;
        const double whole = std::clamp(std::round(value), static_cast<double>(Limits::min()),
                                        static_cast<double>(Limits::max()));
        append(bytes, static_cast<std::int32_t>(whole));
        break;
    }
    case DataType::Int64: {
        constexpr double kMost = 9.0e18;
        append(bytes, static_cast<std::int64_t>(std::clamp(std::round(value), -kMost, kMost)));
        break;
    }
    case DataType::Float32:
        append(bytes, static_cast<float>(value));
        break;
    default:
        append(bytes, value);
        break;
    }
}

void appendText(Bytes& bytes, const std::wstring& text, std::size_t size)
{
    const QByteArray narrow =
        QString::fromStdWString(text).toUtf8().left(static_cast<int>(size) - 1);
    bytes.insert(bytes.end(), narrow.begin(), narrow.end());
    bytes.resize(bytes.size() + size - static_cast<std::size_t>(narrow.size()));
}

template <class Value>
Value valueAt(const std::uint8_t* bytes)
{
    Value value{};
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

double numberAt(const std::uint8_t* bytes, DataType type)
{
    switch (type) {
    case DataType::Int32:
        return valueAt<std::int32_t>(bytes);
    case DataType::Int64:
        return static_cast<double>(valueAt<std::int64_t>(bytes));
    case DataType::Float32:
        return static_cast<double>(valueAt<float>(bytes));
    default:
        return valueAt<double>(bytes);
    }
}

/// The load as it becomes by one write.
struct Load
{
    aviation::structs::AircraftFuel fuel;
    aviation::structs::AircraftPayload payload;
    bool hasFuel = false;
    bool hasPayload = false;
};

void takeLevel(Load& load, int id, double share)
{
    load.hasFuel = true;
    for (aviation::structs::FuelTank& tank : load.fuel.tanks) {
        if (tank.id == id) {
            tank.level = std::clamp(share, 0.0, 1.0) * 100.0;
        }
    }
}

/// False if there is no such station.
bool takeStation(Load& load, int index, double pounds)
{
    auto& stations = load.payload.stations;
    if (index < 1 || index > static_cast<int>(stations.size())) {
        return false;
    }
    load.hasPayload = true;
    stations[static_cast<std::size_t>(index) - 1].weight = static_cast<float>(pounds);
    load.payload.totalWeight = 0.0;
    for (const aviation::structs::AircraftPayloadStation& station : stations) {
        load.payload.totalWeight += static_cast<double>(station.weight);
    }
    return true;
}

MaybeProblem take(Load& load, const SimVariableName& name, double value)
{
    constexpr double kMostPounds = 1.0e7;
    if (!name.variable->isSettable() || !std::isfinite(value)) {
        return SimConnectProblem{exception::kDataError, kDataArgument};
    }
    if (name.variable->tank != 0) {
        takeLevel(load, name.variable->tank, value);
        return std::nullopt;
    }
    const bool isTaken =
        value >= 0.0 && value <= kMostPounds && takeStation(load, name.index, value);
    return isTaken ? MaybeProblem() : SimConnectProblem{exception::kOutOfBounds, kDataArgument};
}

} // namespace

MaybeProblem SimConnectDefinition::add(const char* datumName, const char* unitsName, DataType type)
{
    const auto name = datumName == nullptr ? std::nullopt : findVariable(datumName);
    if (!name) {
        return SimConnectProblem{exception::kNameUnrecognized, kDatumArgument};
    }
    const SimVariable& variable = *name->variable;
    const std::string unit = unitsName == nullptr ? std::string() : unitsName;
    if (!variable.isText() && !convertUnit(0.0, variable.unit, unit)) {
        return SimConnectProblem{exception::kNameUnrecognized, kUnitArgument};
    }
    if (sizeOf(type) == 0 || isText(type) != variable.isText()) {
        return SimConnectProblem{exception::kInvalidDataType, kTypeArgument};
    }
    if (m_data.size() >= kMostData) {
        return SimConnectProblem{exception::kTooManyRequests, 0};
    }
    m_data.push_back({*name, unit, type});
    return std::nullopt;
}

std::size_t SimConnectDefinition::size() const
{
    std::size_t bytes = 0;
    for (const Datum& datum : m_data) {
        bytes += sizeOf(datum.type);
    }
    return bytes;
}

int SimConnectDefinition::message() const
{
    return m_data.empty() ? 0 : m_data.front().name.variable->message;
}

std::vector<std::uint8_t> SimConnectDefinition::pack(const SimSnapshot& now) const
{
    Bytes bytes;
    for (const Datum& datum : m_data) {
        const SimVariable& variable = *datum.name.variable;
        if (variable.isText()) {
            appendText(bytes, variable.text(now, datum.name.index), sizeOf(datum.type));
        } else {
            const double value = variable.number(now, datum.name.index);
            appendNumber(bytes, convertUnit(value, variable.unit, datum.unit).value_or(0.0),
                         datum.type);
        }
    }
    return bytes;
}

MaybeProblem SimConnectDefinition::apply(const std::uint8_t* bytes, SimulatorModel& model) const
{
    Load load{model.presentFuel(), model.state().payload};
    for (const Datum& datum : m_data) {
        const SimVariable& variable = *datum.name.variable;
        const double sent = variable.isText() ? 0.0 : numberAt(bytes, datum.type);
        const MaybeProblem problem =
            take(load, datum.name, convertUnit(sent, datum.unit, variable.unit).value_or(0.0));
        if (problem) {
            return problem;
        }
        bytes += sizeOf(datum.type);
    }
    if (load.hasFuel) {
        model.setFuel(load.fuel);
    }
    if (load.hasPayload) {
        model.setPayload(load.payload);
    }
    return std::nullopt;
}

} // namespace simulator

#include "sim/SimConnectDefinitions.h"

#include <array>

using simconnect::DataType;

namespace {

struct Tank
{
    const char* name;
    std::int32_t id; ///< as in aviation::structs::FuelTank
};

constexpr std::array<Tank, kSimConnectTanks> kTanks{{{"CENTER", 4},
                                                     {"CENTER2", 5},
                                                     {"CENTER3", 6},
                                                     {"LEFT MAIN", 3},
                                                     {"LEFT AUX", 2},
                                                     {"LEFT TIP", 1},
                                                     {"RIGHT MAIN", 7},
                                                     {"RIGHT AUX", 8},
                                                     {"RIGHT TIP", 9},
                                                     {"EXTERNAL1", 10},
                                                     {"EXTERNAL2", 11}}};

SimConnectDatum tankLevel(const Tank& tank)
{
    return {std::string("FUEL TANK ") + tank.name + " LEVEL", "Percent Over 100",
            DataType::Float64};
}

SimConnectDatum tankCapacity(const Tank& tank)
{
    return {std::string("FUEL TANK ") + tank.name + " CAPACITY", "Gallons", DataType::Float64};
}

SimConnectDefinition fuelDefinition()
{
    SimConnectDefinition fuel{simconnectid::kFuel.definition, {}};
    for (const Tank& tank : kTanks) {
        fuel.data.push_back(tankLevel(tank));
        fuel.data.push_back(tankCapacity(tank));
    }
    fuel.data.push_back({"FUEL WEIGHT PER GALLON", "Pounds", DataType::Float64});
    return fuel;
}

SimConnectDefinition fuelLevels()
{
    SimConnectDefinition levels{simconnectid::kFuelLevels, {}};
    for (const Tank& tank : kTanks) {
        levels.data.push_back(tankLevel(tank));
    }
    return levels;
}

SimConnectDefinition payloadDefinition()
{
    SimConnectDefinition payload{simconnectid::kPayload.definition,
                                 {{"PAYLOAD STATION COUNT", "Number", DataType::Int32}}};
    for (int station = 1; station <= kSimConnectStations; ++station) {
        const std::string number = std::to_string(station);
        payload.data.push_back({"PAYLOAD STATION NAME:" + number, nullptr, DataType::String256});
        payload.data.push_back({"PAYLOAD STATION WEIGHT:" + number, "Pounds", DataType::Int32});
    }
    return payload;
}

} // namespace

std::size_t simConnectDatumSize(DataType type)
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
    case DataType::Invalid:
        break;
    }
    return 0;
}

std::size_t SimConnectDefinition::packedSize() const
{
    std::size_t size = 0;
    for (const SimConnectDatum& datum : data) {
        size += simConnectDatumSize(datum.type);
    }
    return size;
}

const SimConnectDefinition& simConnectAircraftDefinition()
{
    static const SimConnectDefinition definition{
        simconnectid::kAircraft.definition,
        {{"PLANE ALTITUDE", "feet", DataType::Float64},
         {"Plane Latitude", "degrees", DataType::Float64},
         {"Plane Longitude", "degrees", DataType::Float64},
         {"PLANE ALT ABOVE GROUND", "feet", DataType::Float64},
         {"AIRSPEED TRUE", "knots", DataType::Float64},
         {"GROUND VELOCITY", "knots", DataType::Float64},
         {"VERTICAL SPEED", "Feet per second", DataType::Float64},
         {"AMBIENT WIND DIRECTION", "degrees", DataType::Float64},
         {"AMBIENT WIND VELOCITY", "knots", DataType::Float64},
         {"AMBIENT TEMPERATURE", "Celsius", DataType::Float64},
         {"MAGVAR", "degrees", DataType::Float64},
         {"AMBIENT VISIBILITY", "meters", DataType::Float64},
         {"PLANE HEADING DEGREES MAGNETIC", "Radians", DataType::Float64},
         {"SIM ON GROUND", "bool", DataType::Int32},
         {"AMBIENT IN CLOUD", "bool", DataType::Int32},
         {"BRAKE PARKING POSITION", "position", DataType::Float64},
         {"GENERAL ENG COMBUSTION:1", "bool", DataType::Float64},
         {"LIGHT LANDING", "bool", DataType::Float64},
         {"EXIT OPEN:0", "Percent Over 100", DataType::Float64},
         {"EXIT OPEN:1", "Percent Over 100", DataType::Float64},
         {"EXIT OPEN:2", "Percent Over 100", DataType::Float64},
         {"EXIT OPEN:3", "Percent Over 100", DataType::Float64},
         {"EXIT OPEN:4", "Percent Over 100", DataType::Float64},
         {"EXIT OPEN:5", "Percent Over 100", DataType::Float64},
         {"TITLE", nullptr, DataType::String256},
         {"ATC TYPE", nullptr, DataType::String32},
         {"ATC ID", nullptr, DataType::String32},
         {"ATC MODEL", nullptr, DataType::String32},
         {"ATC AIRLINE", nullptr, DataType::String64},
         {"ATC FLIGHT NUMBER", nullptr, DataType::String32},
         {"ESTIMATED FUEL FLOW", "Pounds per hour", DataType::Int32},
         {"EMPTY WEIGHT", "Pounds", DataType::Float32},
         {"MAX GROSS WEIGHT", "Pounds", DataType::Float32},
         {"TOTAL WEIGHT", "Pounds", DataType::Float32},
         {"ZULU TIME", "Seconds", DataType::Int64},
         {"ZULU DAY OF MONTH", "Number", DataType::Int32},
         {"ZULU MONTH OF YEAR", "Number", DataType::Int32},
         {"ZULU YEAR", "Number", DataType::Int32}}};
    return definition;
}

const SimConnectDefinition& simConnectFuelDefinition()
{
    static const SimConnectDefinition definition = fuelDefinition();
    return definition;
}

const SimConnectDefinition& simConnectFuelLevelsDefinition()
{
    static const SimConnectDefinition definition = fuelLevels();
    return definition;
}

const SimConnectDefinition& simConnectPayloadDefinition()
{
    static const SimConnectDefinition definition = payloadDefinition();
    return definition;
}

const SimConnectDefinition& simConnectRadioDefinition()
{
    static const SimConnectDefinition definition{
        simconnectid::kRadios.definition,
        {{"COM ACTIVE FREQUENCY:1", "MHz", DataType::Float32},
         {"COM STANDBY FREQUENCY:1", "MHz", DataType::Float32},
         {"COM ACTIVE FREQUENCY:2", "MHz", DataType::Float32},
         {"COM STANDBY FREQUENCY:2", "MHz", DataType::Float32},
         {"NAV ACTIVE FREQUENCY:1", "MHz", DataType::Float32},
         {"NAV STANDBY FREQUENCY:1", "MHz", DataType::Float32},
         {"NAV ACTIVE FREQUENCY:2", "MHz", DataType::Float32},
         {"NAV STANDBY FREQUENCY:2", "MHz", DataType::Float32},
         {"ADF ACTIVE FREQUENCY:1", "Hz", DataType::Float32},
         {"TRANSPONDER CODE:1", "BCO16", DataType::Int32}}};
    return definition;
}

std::int32_t simConnectTankId(std::size_t slot)
{
    return slot < kTanks.size() ? kTanks[slot].id : 0;
}

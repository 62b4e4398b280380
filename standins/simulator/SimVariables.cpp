#include "standins/simulator/SimVariables.h"

#include "aviation/Angles.h"
#include "standins/simulator/CloudGrid.h"
#include "standins/simulator/Messages.h"
#include "standins/simulator/SimulatorModel.h"

#include <QString>

#include <algorithm>
#include <chrono>
#include <unordered_map>
#include <vector>

namespace simulator {

namespace {

using aviation::structs::AircraftData;
using aviation::structs::RadioFrequencys;

constexpr double kMetresPerKilometre = 1000.0;
constexpr double kSecondsPerMinute = 60.0;
constexpr std::int64_t kSecondsPerDay = 86400;
constexpr int kMostStations = 99;
constexpr int kMostExits = 5;
constexpr int kEngines = 4;
constexpr int kMostRadios = 2;

double flag(bool value)
{
    return value ? 1.0 : 0.0;
}

/// Four digits as one digit in four bits each.
double binaryCoded(int digits)
{
    unsigned code = 0;
    unsigned shift = 0;
    for (int rest = digits; rest > 0 && shift < 16; rest /= 10, shift += 4) {
        code |= static_cast<unsigned>(rest % 10) << shift;
    }
    return code;
}

std::chrono::year_month_day dateOf(const AircraftData& aircraft)
{
    return std::chrono::floor<std::chrono::days>(
        std::chrono::sys_seconds(std::chrono::seconds(aircraft.simTime)));
}

/// Makes rows of aircraft values.
class AircraftRows
{
public:
    explicit AircraftRows(std::vector<SimVariable>& rows) : m_rows(rows) {}

    template <class Value>
    SimVariable& number(const char* name, const char* unit, Value value)
    {
        SimVariable row;
        row.name = name;
        row.unit = unit;
        row.number = [value](const SimSnapshot& now, int) {
            return static_cast<double>(value(now.aircraft));
        };
        return add(row);
    }
    void text(const char* name, std::wstring AircraftData::*field)
    {
        SimVariable row;
        row.name = name;
        row.text = [field](const SimSnapshot& now, int) {
            return now.aircraft.*field;
        };
        add(row);
    }

private:
    SimVariable& add(SimVariable& row)
    {
        row.message = message::kAircraft;
        m_rows.push_back(row);
        return m_rows.back();
    }

    std::vector<SimVariable>& m_rows;
};

void addFlight(AircraftRows rows)
{
    using Data = const AircraftData&;
    rows.number("PLANE ALTITUDE", "feet", [](Data a) { return a.altitude; });
    rows.number("PLANE LATITUDE", "degrees", [](Data a) { return a.position.latitude(); });
    rows.number("PLANE LONGITUDE", "degrees", [](Data a) { return a.position.longitude(); });
    rows.number("PLANE ALT ABOVE GROUND", "feet", [](Data a) { return a.heightAgl; });
    rows.number("AIRSPEED TRUE", "knots", [](Data a) { return a.tas; });
    rows.number("GROUND VELOCITY", "knots", [](Data a) { return a.groundSpeed; });
    rows.number("VERTICAL SPEED", "feet per second",
                [](Data a) { return a.verticalSpeed / kSecondsPerMinute; });
    rows.number("PLANE HEADING DEGREES MAGNETIC", "degrees",
                [](Data a) { return a.headingMagnetic; });
    rows.number("PLANE HEADING DEGREES TRUE", "degrees", [](Data a) {
        return aviation::Normalize360(a.headingMagnetic + static_cast<double>(a.magneticVariation));
    });
    rows.number("MAGVAR", "degrees", [](Data a) { return a.magneticVariation; });
    rows.number("SIM ON GROUND", "bool", [](Data a) { return flag(a.onGround); });
    rows.number("ZULU TIME", "seconds", [](Data a) { return a.simTime % kSecondsPerDay; });
    rows.number("ZULU DAY OF MONTH", "number",
                [](Data a) { return static_cast<unsigned>(dateOf(a).day()); });
    rows.number("ZULU MONTH OF YEAR", "number",
                [](Data a) { return static_cast<unsigned>(dateOf(a).month()); });
    rows.number("ZULU YEAR", "number", [](Data a) { return static_cast<int>(dateOf(a).year()); });
}

void addAir(AircraftRows rows)
{
    using Data = const AircraftData&;
    rows.number("AMBIENT WIND DIRECTION", "degrees", [](Data a) { return a.wind.Dir; });
    rows.number("AMBIENT WIND VELOCITY", "knots", [](Data a) { return a.wind.Speed; });
    rows.number("AMBIENT TEMPERATURE", "celsius", [](Data a) { return a.temperature; });
    rows.number("AMBIENT VISIBILITY", "meters",
                [](Data a) { return static_cast<double>(a.visibility) * kMetresPerKilometre; });
    rows.number("AMBIENT IN CLOUD", "bool", [](Data) { return 0.0; }).number =
        [](const SimSnapshot& now, int) {
            return flag(now.inCloud);
        };
}

void addIndexes(SimVariable& row, int first, int last)
{
    row.firstIndex = first;
    row.lastIndex = last;
}

void addSystems(AircraftRows rows)
{
    using Data = const AircraftData&;
    rows.number("BRAKE PARKING POSITION", "position", [](Data a) { return flag(a.parkingBrake); });
    addIndexes(
        rows.number("GENERAL ENG COMBUSTION", "bool", [](Data a) { return flag(!a.engineOff); }), 1,
        kEngines);
    rows.number("LIGHT LANDING", "bool", [](Data a) { return flag(a.landingLight); });
    SimVariable& exits =
        rows.number("EXIT OPEN", "percent over 100", [](Data a) { return flag(a.doorOpen); });
    addIndexes(exits, 0, kMostExits);
    exits.number = [](const SimSnapshot& now, int index) {
        return flag(index == 0 && now.aircraft.doorOpen); // people come through the first one
    };
    rows.number("ESTIMATED FUEL FLOW", "pounds per hour", [](Data a) { return a.fuelFlow; });
    rows.number("EMPTY WEIGHT", "pounds", [](Data a) { return a.emptyWeight; });
    rows.number("MAX GROSS WEIGHT", "pounds", [](Data a) { return a.maxGrossWeight; });
    rows.number("TOTAL WEIGHT", "pounds", [](Data a) { return a.totalWeight; });
    rows.text("TITLE", &AircraftData::name);
    rows.text("ATC TYPE", &AircraftData::type);
    rows.text("ATC ID", &AircraftData::registration);
    rows.text("ATC MODEL", &AircraftData::code);
    rows.text("ATC AIRLINE", &AircraftData::airline);
}

/// A pilot who hasn't given a flight number.
SimVariable flightNumber()
{
    SimVariable row;
    row.name = "ATC FLIGHT NUMBER";
    row.text = [](const SimSnapshot&, int) {
        return std::wstring();
    };
    row.message = message::kAircraft;
    return row;
}

double tankValue(const SimSnapshot& now, int id, double aviation::structs::FuelTank::*field)
{
    for (const aviation::structs::FuelTank& tank : now.fuel.tanks) {
        if (tank.id == id) {
            return tank.*field;
        }
    }
    return 0.0;
}

SimVariable fuelRow(const std::string& name, const char* unit,
                    const std::function<double(const SimSnapshot&, int)>& number)
{
    SimVariable row;
    row.name = name;
    row.unit = unit;
    row.number = number;
    row.message = message::kFuel;
    return row;
}

void addFuel(std::vector<SimVariable>& rows)
{
    using aviation::structs::FuelTank;
    constexpr int kTanks = 11;
    for (int id = 1; id <= kTanks; ++id) {
        const QString tank = QString::fromStdWString(aviation::structs::fuelTankName(id)).toUpper();
        const std::string name = "FUEL TANK " + tank.toStdString();
        rows.push_back(
            fuelRow(name + " LEVEL", "percent over 100", [id](const SimSnapshot& now, int) {
                return tankValue(now, id, &FuelTank::level) / 100.0;
            }));
        rows.back().tank = id;
        rows.push_back(fuelRow(name + " CAPACITY", "gallons", [id](const SimSnapshot& now, int) {
            return tankValue(now, id, &FuelTank::capacity);
        }));
    }
    rows.push_back(fuelRow("FUEL WEIGHT PER GALLON", "pounds",
                           [](const SimSnapshot& now, int) { return now.fuel.fuelWeight; }));
}

const aviation::structs::AircraftPayloadStation* stationAt(const SimSnapshot& now, int index)
{
    const auto& stations = now.payload.stations;
    const bool exists = index >= 1 && index <= static_cast<int>(stations.size());
    return exists ? &stations[static_cast<std::size_t>(index) - 1] : nullptr;
}

void addPayload(std::vector<SimVariable>& rows)
{
    SimVariable row;
    row.message = message::kPayload;
    row.name = "PAYLOAD STATION COUNT";
    row.unit = "number";
    row.number = [](const SimSnapshot& now, int) {
        return static_cast<double>(now.payload.stations.size());
    };
    rows.push_back(row);
    addIndexes(row, 1, kMostStations);
    row.name = "PAYLOAD STATION WEIGHT";
    row.unit = "pounds";
    row.isStation = true;
    row.number = [](const SimSnapshot& now, int index) {
        const auto* station = stationAt(now, index);
        return station == nullptr ? 0.0 : static_cast<double>(station->weight);
    };
    rows.push_back(row);
    row.name = "PAYLOAD STATION NAME";
    row.unit.clear();
    row.isStation = false;
    row.number = nullptr;
    row.text = [](const SimSnapshot& now, int index) {
        const auto* station = stationAt(now, index);
        return station == nullptr ? std::wstring() : station->name;
    };
    rows.push_back(row);
}

void addRadio(std::vector<SimVariable>& rows, const char* name, std::uint16_t RadioFrequencys::*one,
              std::uint16_t RadioFrequencys::*two)
{
    SimVariable row;
    row.message = message::kRadios;
    row.name = name;
    row.unit = "mhz";
    addIndexes(row, 1, kMostRadios);
    row.number = [one, two](const SimSnapshot& now, int index) {
        return (index == 1 ? now.radios.*one : now.radios.*two) / 100.0;
    };
    rows.push_back(row);
}

void addRadios(std::vector<SimVariable>& rows)
{
    using Radios = RadioFrequencys;
    addRadio(rows, "COM ACTIVE FREQUENCY", &Radios::comm1active, &Radios::comm2active);
    addRadio(rows, "COM STANDBY FREQUENCY", &Radios::comm1standby, &Radios::comm2standby);
    addRadio(rows, "NAV ACTIVE FREQUENCY", &Radios::nav1active, &Radios::nav2active);
    addRadio(rows, "NAV STANDBY FREQUENCY", &Radios::nav1standby, &Radios::nav2standby);
    SimVariable row;
    row.message = message::kRadios;
    addIndexes(row, 1, 1);
    row.name = "ADF ACTIVE FREQUENCY";
    row.unit = "khz";
    row.number = [](const SimSnapshot& now, int) {
        return static_cast<double>(now.radios.adf);
    };
    rows.push_back(row);
    row.name = "TRANSPONDER CODE";
    row.unit = "bco16";
    row.number = [](const SimSnapshot& now, int) {
        return binaryCoded(now.radios.transponder);
    };
    rows.push_back(row);
}

using VariableMap = std::unordered_map<std::string, SimVariable>;

VariableMap makeVariables()
{
    std::vector<SimVariable> rows;
    addFlight(AircraftRows(rows));
    addAir(AircraftRows(rows));
    addSystems(AircraftRows(rows));
    rows.push_back(flightNumber());
    addFuel(rows);
    addPayload(rows);
    addRadios(rows);
    VariableMap map;
    for (const SimVariable& row : rows) {
        map.emplace(row.name, row);
    }
    return map;
}

} // namespace

SimSnapshot snapshotOf(SimulatorModel& model)
{
    const SimulatorState state = model.state();
    SimSnapshot now{model.peekAircraft(), model.presentFuel(), state.payload, state.radios, false};
    const double altitude = now.aircraft.altitude;
    now.inCloud = cloudDensity(cloudsAt(state, now.aircraft.position), now.aircraft.position,
                               altitude, altitude)
                  > 0.0;
    return now;
}

std::optional<SimVariableName> findVariable(const std::string& name)
{
    static const VariableMap kVariables = makeVariables();
    const QString text = QString::fromLatin1(name.c_str()).trimmed().toUpper();
    const int colon = text.indexOf(QLatin1Char(':'));
    const auto found =
        kVariables.find((colon < 0 ? text : text.left(colon)).trimmed().toStdString());
    if (found == kVariables.end()) {
        return std::nullopt;
    }
    const SimVariable& variable = found->second;
    if (colon < 0) {
        return SimVariableName{&variable, std::max(0, variable.firstIndex)};
    }
    bool isNumber = false;
    const int index = text.mid(colon + 1).toInt(&isNumber);
    const bool exists = isNumber && index >= variable.firstIndex && index <= variable.lastIndex;
    return exists && variable.firstIndex >= 0
               ? std::optional<SimVariableName>(SimVariableName{&variable, index})
               : std::nullopt;
}

} // namespace simulator

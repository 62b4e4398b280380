#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace aviation::structs {

/// One fuel tank. Plain value.
struct FuelTank
{
    std::wstring name;
    std::int32_t id = 0;   ///< 1 to 11, see FuelTankName
    double level = 0.0;    ///< percent of the capacity
    double capacity = 0.0; ///< gallons
};

/// The tanks of an aircraft.
struct AircraftFuel
{
    std::vector<FuelTank> tanks;
    double fuelWeight = 0.0; ///< pounds per gallon, as every simulator interface fills it
};

/// The name of a tank: 1 "Left Tip" to 11 "External2"; empty for another id.
std::wstring fuelTankName(std::int32_t id);

/// A place for load: a seat row, a cargo hold.
class AircraftPayloadStation
{
public:
    AircraftPayloadStation() = default;
    AircraftPayloadStation(const std::wstring& stationName, float maximum, float load,
                           std::int32_t stationType)
        : name(stationName)
        , maxWeight(maximum)
        , weight(load)
        , type(stationType)
    {}
    AircraftPayloadStation(const AircraftPayloadStation&) = default;
    AircraftPayloadStation(AircraftPayloadStation&&) = default;
    AircraftPayloadStation& operator=(const AircraftPayloadStation&) = default;
    AircraftPayloadStation& operator=(AircraftPayloadStation&&) = default;
    virtual ~AircraftPayloadStation() = default;

    /// Spelled as stored files and simulators have it.
    std::vector<std::wstring> typeNames{L"Unknown",        L"Pilot", L"Passenger", L"Economy Class",
                                        L"Buisness Class", L"Cargo", L"Baggage"};
    std::wstring name = L"unknow";
    float maxWeight = 0.0F; ///< pounds
    float weight = 0.0F;    ///< present load, pounds
    std::int32_t type = 0;  ///< index into typeNames
};

/// The payload stations of an aircraft.
struct AircraftPayload
{
    std::vector<AircraftPayloadStation> stations;
    double totalWeight = 0.0; ///< pounds
};

} // namespace aviation::structs

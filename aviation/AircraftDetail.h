#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace aviation::structs {

/// One step of a climb or descent table.
struct RateEntry
{
    std::int32_t height = 0; ///< feet
    std::int32_t speed = 0;  ///< knots
    std::int32_t rate = 0;   ///< feet per minute
    float fuelflow = 0.0F;   ///< per hour
};

/// Names, weights and tables of an aircraft. Weights and fuel are in the unit of the configuration
/// file that they come from, pounds when they come from a simulator.
struct AircraftDetail
{
    std::wstring type = L"unknown";
    std::wstring registration = L"unknown";
    std::wstring code = L"unknown";
    std::wstring name = L"unknown"; ///< the simulator's aircraft title
    std::wstring manufacturer;
    std::wstring airline;
    std::wstring checklistPath;
    float maxTakeOffWeight = 0.0F;
    float maxLandingWeight = 0.0F;
    float maxRampWeight = 0.0F;
    float emptyWeight = 0.0F;
    float maxGrossWeight = 0.0F; ///< pounds, filled from the simulator only
    float fuelFlow = 0.0F;       ///< per hour
    float extraFuel = 0.0F;
    float taxiFuel = 0.0F;
    float holdingFuel = 0.0F;
    std::int32_t cruiseAlt = 0;   ///< feet
    std::int32_t cruiseSpeed = 0; ///< knots
    std::int32_t maxAlt = 0;      ///< feet
    std::vector<RateEntry> climbRates;
    std::vector<RateEntry> descentRates;
    bool paxAsWeight = true;
    std::int32_t paxWeight = 180;
};

} // namespace aviation::structs

#include "standins/simulator/SimulatorState.h"

namespace simulator {

SimulatorState freshState()
{
    constexpr int kLeftMain = 3;
    constexpr int kCenter = 4;
    constexpr int kRightMain = 7;
    SimulatorState state;
    for (const int id : {kLeftMain, kCenter, kRightMain}) {
        const bool isCenter = id == kCenter;
        state.fuel.tanks.push_back({aviation::structs::fuelTankName(id), id, isCenter ? 30.0 : 95.0,
                                    isCenter ? 4300.0 : 1288.0});
    }
    state.fuel.fuelWeight = 6.7;
    state.payload.stations = {
        {L"Pilot", 250.0F, 180.0F, 1},           {L"Copilot", 250.0F, 180.0F, 1},
        {L"Front cabin", 18000.0F, 12400.0F, 3}, {L"Rear cabin", 18000.0F, 11900.0F, 3},
        {L"Front hold", 7000.0F, 2500.0F, 5},    {L"Rear hold", 9000.0F, 3100.0F, 6}};
    for (const aviation::structs::AircraftPayloadStation& station : state.payload.stations) {
        state.payload.totalWeight += static_cast<double>(station.weight);
    }
    return state;
}

} // namespace simulator

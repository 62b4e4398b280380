#include "sim/clients/SimulatorClients.h"
#include "sim/clients/windows/FsuipcLibrary.h"
#include "sim/clients/windows/SimConnectLibrary.h"

std::unique_ptr<SimConnectApi> HostSimulatorClients::simConnect(const std::string& simulatorFolder,
                                                                std::string& problem)
{
    return SimConnectLibrary::load(simulatorFolder, problem);
}

std::unique_ptr<FsuipcApi> HostSimulatorClients::fsuipc(const std::string& simulatorFolder,
                                                        std::string& problem)
{
    return FsuipcLibrary::load(simulatorFolder, problem);
}

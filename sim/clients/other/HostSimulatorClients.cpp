#include "sim/clients/FsuipcApi.h"
#include "sim/clients/SimConnectApi.h"
#include "sim/clients/SimulatorClients.h"

namespace {

std::string onlyOnWindows(const char* name)
{
    return std::string(name)
           + " exists on Windows only. Choose the bridge as the interface in the settings and "
             "start a bridge server at the simulator.";
}

} // namespace

std::unique_ptr<SimConnectApi>
HostSimulatorClients::simConnect(const std::string& /*simulatorFolder*/, std::string& problem)
{
    problem = onlyOnWindows("SimConnect");
    return nullptr;
}

std::unique_ptr<FsuipcApi> HostSimulatorClients::fsuipc(const std::string& /*simulatorFolder*/,
                                                        std::string& problem)
{
    problem = onlyOnWindows("FSUIPC");
    return nullptr;
}

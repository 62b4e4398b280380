#pragma once

#include <memory>
#include <string>

class FsuipcApi;
class SimConnectApi;

/// Where the client libraries of the simulators come from: the computer's own, or a simulator in
/// memory in tests. Asked on ConnectWorker's thread; outlives what it gives.
class SimulatorClients
{
public:
    SimulatorClients() = default;
    SimulatorClients(const SimulatorClients&) = delete;
    SimulatorClients& operator=(const SimulatorClients&) = delete;
    virtual ~SimulatorClients() = default;

    /// A client that isn't connected yet. `simulatorFolder` (UTF-8, may be empty) is searched for
    /// the library besides the program's folder and the system. Null when there is none, with one
    /// plain sentence for the user in `problem`, UTF-8.
    virtual std::unique_ptr<SimConnectApi> simConnect(const std::string& simulatorFolder,
                                                      std::string& problem) = 0;
    virtual std::unique_ptr<FsuipcApi> fsuipc(const std::string& simulatorFolder,
                                              std::string& problem) = 0;
};

/// The client libraries of this computer, loaded at run time. Only Windows has them.
class HostSimulatorClients final : public SimulatorClients
{
public:
    std::unique_ptr<SimConnectApi> simConnect(const std::string& simulatorFolder,
                                              std::string& problem) override;
    std::unique_ptr<FsuipcApi> fsuipc(const std::string& simulatorFolder,
                                      std::string& problem) override;
};

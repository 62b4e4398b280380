#pragma once

#include "sim/clients/SimulatorClients.h"
#include "standins/simulator/FaultSwitch.h"
#include "standins/simulator/FsuipcMemory.h"
#include "standins/simulator/SimConnectHost.h"
#include "standins/simulator/SimulatorModel.h"

#include <QMutex>

#include <string>
#include <vector>

namespace simulator {

/// One simulator in memory with a way in by SimConnect and one by FSUIPC. What it hands out can be
/// freed and asked for anew; the simulator keeps its state. A bridge (SimulatorServer,
/// SimulatorThread) can stand before the same model. Everything is for any thread.
class SimulatorClientsInMemory final : public SimulatorClients
{
public:
    /// The simulator's time is now, and runs as the flight's speed says.
    explicit SimulatorClientsInMemory(SimulatedFlight flight = SimulatedFlight());

    std::unique_ptr<SimConnectApi> simConnect(const std::string& simulatorFolder,
                                              std::string& problem) override;
    std::unique_ptr<FsuipcApi> fsuipc(const std::string& simulatorFolder,
                                      std::string& problem) override;

    SimulatorModel& model() { return m_model; }
    FaultSwitch& faults() { return m_faults; }
    /// Version, failing calls and the book of calls.
    SimConnectHost& host() { return m_host; }

    void setSimConnectInstalled(bool isInstalled);
    void setFsuipcInstalled(bool isInstalled);
    /// Not running, nothing can be opened, and what is open has lost its simulator. The model keeps
    /// its state.
    void setRunning(bool isRunning);
    /// For what is handed out from now on; its isRunning isn't used, setRunning() decides.
    void setFsuipcOptions(const FsuipcOptions& options);
    /// The folder that was given last.
    std::string lastFolder() const;

private:
    class Fsuipc;
    void add(FsuipcMemory* memory);
    void remove(FsuipcMemory* memory);
    bool isInstalled(bool SimulatorClientsInMemory::*library, const std::string& folder,
                     const char* name, std::string& problem);

    SimulatorModel m_model;
    FaultSwitch m_faults;
    SimConnectHost m_host;

    mutable QMutex m_mutex; ///< guards all below
    bool m_hasSimConnect = true;
    bool m_hasFsuipc = true;
    FsuipcOptions m_fsuipcOptions;
    std::vector<FsuipcMemory*> m_memories; ///< those in use
    std::string m_lastFolder;
};

} // namespace simulator

#pragma once

#include "sim/BridgeSocket.h"
#include "sim/FsInterfaceFactory.h"

class Settings;
class SimulatorClients;
class StopFlag;

/// The interfaces of the program: FSUIPC, SimConnect, both together, the bridge client. Owned by
/// the program; used on ConnectWorker's thread.
class SimulatorInterfaces final : public FsInterfaceFactory
{
public:
    /// Server, port and the simulator's folder are read from the settings at each creation. All
    /// references must outlive the objects.
    SimulatorInterfaces(const Settings& settings, const StopFlag& stop, SimulatorClients& clients,
                        const BridgeTimeouts& timeouts = BridgeTimeouts());

    std::unique_ptr<FsInterfaceBase> create(int interfaceId) override;

private:
    const Settings& m_settings;
    const StopFlag& m_stop;
    SimulatorClients& m_clients;
    BridgeTimeouts m_timeouts;
};

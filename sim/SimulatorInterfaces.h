#pragma once

#include "sim/BridgeSocket.h"
#include "sim/FsInterfaceFactory.h"

class Settings;
class StopFlag;

/// The interfaces of the program: the bridge client, and for FSUIPC and SimConnect a stand-in that
/// says that they can't be reached. Owned by the program; used on ConnectWorker's thread.
class SimulatorInterfaces final : public FsInterfaceFactory
{
public:
    /// Server and port are read from the settings at each creation. Both must outlive the objects.
    SimulatorInterfaces(const Settings& settings, const StopFlag& stop,
                        const BridgeTimeouts& timeouts = BridgeTimeouts());

    std::unique_ptr<FsInterfaceBase> create(int interfaceId) override;

private:
    const Settings& m_settings;
    const StopFlag& m_stop;
    BridgeTimeouts m_timeouts;
};

#include "sim/SimulatorInterfaces.h"

#include "app/base/Settings.h"
#include "aviation/FsId.h"
#include "sim/FSInterfaceFSUIPC.h"
#include "sim/FsInterfaceFSUIPC_SimConnect.h"
#include "sim/FsInterfaceSimConnect.h"
#include "sim/FsInterfaceTcpClient.h"

SimulatorInterfaces::SimulatorInterfaces(const Settings& settings, const StopFlag& stop,
                                         SimulatorClients& clients, const BridgeTimeouts& timeouts)
    : m_settings(settings)
    , m_stop(stop)
    , m_clients(clients)
    , m_timeouts(timeouts)
{}

std::unique_ptr<FsInterfaceBase> SimulatorInterfaces::create(int interfaceId)
{
    switch (interfaceId) {
    case aviation::interfaceid::kFsuipc:
        return std::make_unique<FSInterfaceFSUIPC>(m_clients, m_settings.simPath(), m_stop);
    case aviation::interfaceid::kSimConnect:
        return std::make_unique<FsInterfaceSimConnect>(m_clients, m_settings.simPath(), m_stop);
    case aviation::interfaceid::kFsuipcSimConnect:
        return std::make_unique<FsInterfaceFSUIPC_SimConnect>(m_clients, m_settings.simPath(),
                                                              m_stop);
    case aviation::interfaceid::kBridge:
        return std::make_unique<FsInterfaceTcpClient>(
            m_settings.serverIp().trimmed(), m_settings.serverPort(),
            QStringLiteral("Cirrilon v.") + Settings::version(), m_stop, m_timeouts);
    default:
        return nullptr;
    }
}

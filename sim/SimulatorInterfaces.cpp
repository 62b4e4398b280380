#include "sim/SimulatorInterfaces.h"

#include "app/base/Settings.h"
#include "aviation/FsId.h"
#include "sim/FsInterfaceNotFound.h"
#include "sim/FsInterfaceTcpClient.h"

SimulatorInterfaces::SimulatorInterfaces(const Settings& settings, const StopFlag& stop,
                                         const BridgeTimeouts& timeouts)
    : m_settings(settings)
    , m_stop(stop)
    , m_timeouts(timeouts)
{}

std::unique_ptr<FsInterfaceBase> SimulatorInterfaces::create(int interfaceId)
{
    switch (interfaceId) {
    case aviation::interfaceid::kFsuipc:
    case aviation::interfaceid::kSimConnect:
    case aviation::interfaceid::kFsuipcSimConnect:
        return std::make_unique<FsInterfaceNotFound>(interfaceId);
    case aviation::interfaceid::kBridge:
        return std::make_unique<FsInterfaceTcpClient>(
            m_settings.serverIp().trimmed(), m_settings.serverPort(),
            QStringLiteral("Cirrilon v.") + Settings::version(), m_stop, m_timeouts);
    default:
        return nullptr;
    }
}

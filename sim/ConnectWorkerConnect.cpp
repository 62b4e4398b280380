#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "aviation/support/ScopedLock.h"
#include "sim/ConnectWorker.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceFactory.h"

#include <QDebug>

namespace {

bool isConnectedCode(int result)
{
    return result == simresult::kNone || result == simresult::kAlreadyConnected;
}

/// These simulators have SimConnect as well.
bool hasSimConnect(aviation::FsId id)
{
    return id >= aviation::fsid::kFsx && id <= aviation::fsid::kPrepar3dV4;
}

} // namespace

int ConnectWorker::connectSimulator(Job& /*job*/)
{
    if (!m_interface) {
        createInterface();
    }
    if (!m_interface) {
        log(QStringLiteral("(ConnectWorker) - Not Connected, Interface not selected (NULL)"),
            loglevel::kError);
        return simresult::kNotImplemented;
    }
    return connectObject();
}

/// Makes the object of an interface and listens to it; false leaves none.
bool ConnectWorker::adopt(int interfaceId)
{
    m_interface = m_interfaces.create(interfaceId);
    if (!m_interface) {
        return false;
    }
    // Direct, so that the lines of object and worker keep their order.
    connect(m_interface.get(), &FsInterfaceBase::sigDebugString, this,
            &ConnectWorker::OnDebugString, Qt::DirectConnection);
    connect(m_interface.get(), &FsInterfaceBase::sigDataReceived, this,
            &ConnectWorker::DataReceived, Qt::DirectConnection);
    return true;
}

void ConnectWorker::createInterface()
{
    Identity fresh = identity();
    fresh.interfaceId = m_settings.interfaceType();
    setIdentity(fresh);
    qDebug() << "Interface: " << fresh.interfaceId;
    if (fresh.interfaceId == aviation::interfaceid::kAuto) {
        detectInterface();
    } else {
        adopt(fresh.interfaceId);
    }
}

void ConnectWorker::detectInterface()
{
    if (adopt(aviation::interfaceid::kFsuipc)) {
        const int result = m_interface->Connect();
        if (result != simresult::kNone) {
            logNotFound(QStringLiteral("(ConnectWorker) - "), result);
            log(QStringLiteral("(ConnectWorker) - FSUIPC not found, try connect to SimConnect"),
                loglevel::kNotification);
            dropInterface();
            adopt(aviation::interfaceid::kSimConnect);
        } else {
            Identity found = identity();
            m_interface->GetFsVersion(found.fsVersion, found.fsName);
            setIdentity(found);
            if (hasSimConnect(found.fsVersion)) {
                tryBothInterfaces();
            }
        }
    }
    log(QStringLiteral("(ConnectWorker) - init client"), loglevel::kDebug);
}

void ConnectWorker::tryBothInterfaces()
{
    Identity found = identity();
    log(QStringLiteral("(ConnectWorker) - FSUIPC connected, FS = %1, try connect to SimConnect ")
            .arg(outsidetext::forLog(found.fsName)),
        loglevel::kNotification);
    m_interface->Disconnect();
    dropInterface();
    found.interfaceId = aviation::interfaceid::kFsuipcSimConnect;
    if (!adopt(found.interfaceId) || !isConnectedCode(m_interface->Connect())) {
        if (m_interface) {
            dropInterface();
        }
        found.interfaceId = aviation::interfaceid::kFsuipc;
        adopt(found.interfaceId);
    }
    setIdentity(found);
}

int ConnectWorker::connectObject()
{
    const int result = m_interface->Connect();
    m_connected = isConnectedCode(result);
    if (m_connected) {
        readIdentity();
    } else if (result == simresult::kNotConnected) {
        log(QStringLiteral("(ConnectWorker) - not connected, Sim not Found"), loglevel::kError);
        dropInterface();
    } else {
        logNotFound(QString(), result);
    }
    return result;
}

void ConnectWorker::readIdentity()
{
    log(QStringLiteral("(ConnectWorker) - Connected"), loglevel::kNotification);
    Identity found; // nothing of the simulator before, should this one not say who it is
    found.interfaceId = identity().interfaceId;
    m_interface->GetFsVersion(found.fsVersion, found.fsName);
    m_interface->GetInterface(found.interfaceId, found.interfaceName);
    const auto* const bridge = dynamic_cast<BridgeOperations*>(m_interface.get());
    found.ends = bridge != nullptr ? bridge->ends() : BridgeEnds();
    setIdentity(found);
    log(QStringLiteral("FS: %1, Interface: %2")
            .arg(outsidetext::forLog(found.fsName), outsidetext::forLog(found.interfaceName)),
        loglevel::kNotification);
}

void ConnectWorker::logNotFound(const QString& origin, int result)
{
    log(origin
            + QStringLiteral("FS or Server not found Error Code: %1 %2")
                  .arg(QString::number(result), errorText(result)),
        loglevel::kError);
}

int ConnectWorker::disconnectSimulator(Job& /*job*/)
{
    m_connected = false;
    if (!m_interface) {
        return simresult::kNoInterface;
    }
    const int result = m_interface->Disconnect();
    dropInterface();
    return result;
}

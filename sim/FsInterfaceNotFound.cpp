#include "sim/FsInterfaceNotFound.h"

#include "app/base/LogLevel.h"

FsInterfaceNotFound::FsInterfaceNotFound(int interfaceId, QObject* parent)
    : FsInterfaceBase(parent)
    , m_interfaceId(interfaceId)
{}

QString FsInterfaceNotFound::name() const
{
    QString fsuipc = QStringLiteral("FSUIPC");
    QString simConnect = QStringLiteral("SimConnect");
    switch (m_interfaceId) {
    case aviation::interfaceid::kFsuipc:
        return fsuipc;
    case aviation::interfaceid::kSimConnect:
        return simConnect;
    default:
        return fsuipc + QStringLiteral(" + ") + simConnect;
    }
}

int FsInterfaceNotFound::Connect()
{
    if (!m_said) {
        m_said = true;
        Q_EMIT sigDebugString(
            QStringLiteral("(Interface %1) - this build can't use %1. Choose the bridge as the "
                           "interface in the settings and start a bridge server at the simulator.")
                .arg(name()),
            loglevel::kError);
    }
    return simresult::kNotConnected;
}

int FsInterfaceNotFound::Disconnect()
{
    return simresult::kNone;
}

int FsInterfaceNotFound::GetFsVersion(aviation::FsId& /*id*/, QString& /*name*/)
{
    return simresult::kNotConnected;
}

int FsInterfaceNotFound::GetInterface(int& id, QString& name)
{
    id = m_interfaceId;
    name = this->name();
    return simresult::kNone;
}

int FsInterfaceNotFound::SendText(const std::string& /*text*/, int /*seconds*/)
{
    return simresult::kNotConnected;
}

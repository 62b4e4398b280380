#pragma once

#include "sim/FsInterfaceBase.h"

/// Stands for an interface that this build doesn't have. It never connects, and says once what to
/// do instead.
class FsInterfaceNotFound final : public FsInterfaceBase
{
    Q_OBJECT
public:
    /// `interfaceId`: aviation::interfaceid 1 to 3.
    explicit FsInterfaceNotFound(int interfaceId, QObject* parent = nullptr);

    int Connect() override;
    int Disconnect() override;
    int GetFsVersion(aviation::FsId& id, QString& name) override;
    int GetInterface(int& id, QString& name) override;
    int SendText(const std::string& text, int seconds) override;

private:
    QString name() const;

    int m_interfaceId;
    bool m_said = false;
};

#pragma once

#include "app/base/DownloadManager.h"
#include "app/gui/dialogs/SettingsPage.h"

class AddressEdit;

/// The source of the reports and the servers that they come from.
class SettingsPageServers : public SettingsPage
{
    Q_OBJECT
public:
    SettingsPageServers(const Settings& settings, NetworkFactory network,
                        QWidget* parent = nullptr);

private:
    void buildSource();
    void buildServers(const Settings& settings);
    void buildExternal();
    AddressEdit* addAddress(QFormLayout* form, const QString& label, const TextOption& option);
    QString listPath() const;
    bool usesExternal() const;

    NetworkFactory m_network;
    QComboBox* m_source = nullptr;
    QComboBox* m_type = nullptr;
    AddressEdit* m_metar = nullptr;
    AddressEdit* m_synop = nullptr;
    AddressEdit* m_grib = nullptr;
};

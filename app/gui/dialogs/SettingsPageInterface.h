#pragma once

#include "app/download/ConnectionProbe.h"
#include "app/gui/dialogs/SettingsPage.h"

class NoteLabel;
class QLabel;
class QPushButton;

/// How the simulator is reached.
class SettingsPageInterface : public SettingsPage
{
    Q_OBJECT
public:
    explicit SettingsPageInterface(const NetworkFactory& network, QWidget* parent = nullptr);

Q_SIGNALS:
    void sigTested(bool ok);

private:
    void buildInterface();
    void buildServer();
    void buildTest();
    void buildPolling();
    void proposeOwnAddress();
    void test();
    void onTested(bool ok, const QString& text);
    bool usesBridge() const;

    QComboBox* m_type = nullptr;
    QLineEdit* m_address = nullptr;
    QSpinBox* m_port = nullptr;
    QComboBox* m_ownAddress = nullptr;
    QLabel* m_proposal = nullptr;
    NoteLabel* m_note = nullptr;
    ConnectionProbe* m_probe;
};

/// True for an IPv4 address of four numbers and for an IPv6 address.
bool isIpAddress(const QString& text);
/// The interfaces with their names, as the setting numbers them.
SettingsPage::Choices interfaceChoices();

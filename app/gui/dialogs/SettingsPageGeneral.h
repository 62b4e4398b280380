#pragma once

#include "app/gui/dialogs/SettingsPage.h"

class QComboBox;

/// Start-up, the work folder and the profile.
class SettingsPageGeneral : public SettingsPage
{
    Q_OBJECT
public:
    explicit SettingsPageGeneral(QWidget* parent = nullptr);

    /// Fills the list of profiles and selects the one in use.
    void loadProfiles(const Settings& settings);
    /// File name of the selected profile, empty for none.
    QString profile() const;
    /// Adds a profile under a name that the user gave and selects it. Empty, or why it can't be.
    QString addProfile(const QString& name);
    QString workFolder() const { return m_workFolder->folder(); }

private:
    void buildStart();
    void buildProfile();
    void askForProfile();

    FolderEdit* m_workFolder = nullptr;
    QComboBox* m_profile = nullptr;
};

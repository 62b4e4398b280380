#pragma once

#include "app/gui/dialogs/SettingsPage.h"

#include <QCoreApplication>

/// The pages of the settings dialog that only show options, without logic of their own.
class SettingsPagesPlain
{
    Q_DECLARE_TR_FUNCTIONS(SettingsPagesPlain)

public:
    /// The group with the simulator's main folder.
    static void addSimulator(SettingsPage* page);
    static SettingsPage* paths(QWidget* parent);
    static SettingsPage* messages(QWidget* parent);
    static SettingsPage* recorder(QWidget* parent);
    static SettingsPage* units(QWidget* parent);
    static SettingsPage* map(QWidget* parent);
    static SettingsPage* airac(QWidget* parent);
    static SettingsPage* logging(QWidget* parent);
};

/// What a simulator's main folder looks like to the program; a text for the user.
QString simulatorFolderText(const QString& path);

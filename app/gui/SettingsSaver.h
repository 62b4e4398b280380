#pragma once

#include <QCoreApplication>
#include <QString>

class MainView;
class Settings;

/// Saves the settings and says in the window what goes wrong with their files. Main thread.
class SettingsSaver
{
    Q_DECLARE_TR_FUNCTIONS(SettingsSaver)
public:
    /// `file`: the main settings file. All three outlive this.
    SettingsSaver(Settings& settings, QString file, MainView& view);

    /// To the selected profile, if there is one, and to the main file. False if one of them wasn't
    /// written, which then stands in the window until a later save succeeds.
    bool save();
    /// After a load: what couldn't be understood is put aside and replaced by what holds now, so
    /// that the pilot's changes are saved again.
    void replaceDamaged();
    QString failureText() const;

private:
    Settings& m_settings;
    QString m_file;
    MainView& m_view;
    bool m_failed = false;
};

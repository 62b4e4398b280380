#pragma once

#include "app/base/DownloadManager.h"

#include <QWizard>

#include <vector>

class Settings;
class SettingsPage;
class SettingsPageInterface;

/// The assistant of the first run: how the simulator is reached, where it lies, where the weather
/// comes from, and what happens at the start. Its pages are made of the same controls and checks as
/// the settings dialog. Writes the settings when it is finished; the caller saves them on
/// sigSettingsChanged. Main thread.
class BasicSettings : public QWizard
{
    Q_OBJECT
public:
    /// The settings outlive the assistant.
    BasicSettings(Settings& settings, const NetworkFactory& network, QWidget* parent = nullptr);

    void accept() override;

Q_SIGNALS:
    void sigSettingsChanged();

private:
    void buildWelcome();
    void buildInterface(const NetworkFactory& network);
    void buildFolder();
    void buildWeather(const NetworkFactory& network);
    void buildStart();
    void addStep(SettingsPage* page, const QString& title, const QString& subTitle);

    Settings& m_settings;
    std::vector<SettingsPage*> m_pages;
};

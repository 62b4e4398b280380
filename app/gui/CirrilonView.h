#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "app/gui/BackendBase.h"
#include "app/gui/LogFile.h"
#include "app/gui/SettingsSaver.h"
#include "app/gui/SubWindows.h"
#include "app/gui/WindowDialogs.h"

#include <QString>

#include <functional>
#include <memory>

class Controller;
class FsInterfaceFactory;
class LanguageMenu;
class ProcessRunner;
class QSplashScreen;
class TrayIcon;

/// Makes the simulator interfaces for the window's settings; a waiting one looks at the flag.
using MakeInterfaces = std::function<std::unique_ptr<FsInterfaceFactory>(const Settings& settings,
                                                                         const StopFlag& stop)>;

/// What the window is given; all of it outlives the window.
struct WindowParts
{
    aviation::RandomSource& random;
    ProcessRunner& processes;
    MakeInterfaces interfaces;
    NetworkFactory network;
    DownloadLimits limits;
    QString settingsFile = QStringLiteral("cirrilon.ini"); ///< in the current folder
    LogFile::Mirror logMirror = {};                        ///< sees each line of the log
    bool settingsFolderFailed = false;                     ///< the user's own couldn't be made
};

/// The main window. It owns settings, log file, controller, tray icon and language menu, and saves
/// the settings when the program ends. Main thread.
class CirrilonView : public BackendBase
{
    Q_OBJECT
public:
    explicit CirrilonView(const WindowParts& parts);
    /// Ends the controller with its workers, within three seconds.
    ~CirrilonView() override;

    Controller& controller() { return *m_controller; }

    void OnOutputDebugstring(QString item, int level) override;
    void setupLanguage() override;
    void setSystrayMessage(QString text) override;
    void showSplashMessage(QString text) override;
    void closeSplash() override;
    void closeProgram() override;

    /// Closes the window as the pilot does, but with nothing to be answered: the system waits.
    void closeWithoutBoxes();

public Q_SLOTS:
    /// Brings the window to the front, out of the tray as well.
    void comeUp();
    /// Asks where the report for support goes, and writes it there.
    void OnSaveReport();
    void OnDlgAbout();
    void OnOpenOptionDlg();
    void OnOpenBasicSettings();
    void OnDialogAirportList();
    /// Brings up the weather radar.
    void OnTestFunction();
    void OnProfileIndexChanged(QString name);
    void on_actionExit_triggered();
    void OnOpenCirrilonFolder();
    void OnLanguageChanged(QAction* action);
    void onOpenChecklist(const QString& path);

Q_SIGNALS:
    /// The window was closed and the settings are saved: the program ends.
    void sigClosed();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void retranslateUi() override;

private:
    void createSplash();
    void createController(const WindowParts& parts);
    void connectControllerActions();
    void connectWindowActions();
    void addSubWindows();
    void createTray();
    void restoreWindow();
    void writeBanner();
    /// What the pilot has to do by hand, once everything is loaded.
    void writeNextSteps();
    bool saveSettings();
    void sessionEnds();
    void rejectBox();
    void sayHowSettingsWereRead(bool folderFailed);
    void writeReport(const QString& file);
    void settingsChanged();
    void updateSettingsViews();
    void openFolder(const QString& path);

    QString m_settingsFile;
    bool m_firstStart; ///< there was no settings file
    Settings m_settings;
    SettingsSaver m_saver;
    LogFile m_log;
    StopFlag m_stop; ///< for interfaces and dialogs; the controller has its own
    WindowDialogs m_dialogs;
    ProcessRunner& m_processes;
    NetworkFactory m_network;
    std::unique_ptr<FsInterfaceFactory> m_interfaces;
    std::unique_ptr<QSplashScreen> m_splash;
    std::unique_ptr<Controller> m_controller;
    TrayIcon* m_tray = nullptr;
    LanguageMenu* m_language = nullptr;
    SubWindows m_windows; ///< those that are open refer to settings and controller
    bool m_mayAsk = true; ///< the pilot ends the program, not the system
    bool m_closed = false;
};

#pragma once

#include <QObject>
#include <QSystemTrayIcon>

class QAction;
class QMenu;
class QMainWindow;
class Settings;

/// The tray icon and when the main window gives way to it. Where the desktop has no tray the window
/// is never hidden, since nothing could bring it back. Main thread, owned by the window.
class TrayIcon : public QObject
{
    Q_OBJECT
public:
    TrayIcon(QMainWindow& window, const Settings& settings);
    ~TrayIcon() override;

    /// The menu's own entries in their order; null stands for a separator.
    void setActions(const QList<QAction*>& actions);
    /// Called when the window has been minimised.
    void windowMinimised();
    /// Shows a text unless it was the last one, the icon is hidden or the user wants none.
    void setSystrayMessage(const QString& text);
    void showWindow();
    bool isIconVisible() const { return m_icon.isVisible(); }
    void retranslateUi();

    /// Whether a window that is minimised goes to the tray.
    static bool hidesWindow(bool trayAvailable, bool minimizeToTray);

private:
    void showMessage(const QString& text);
    void activated(QSystemTrayIcon::ActivationReason reason);

    QMainWindow& m_window;
    const Settings& m_settings;
    QSystemTrayIcon m_icon;
    QMenu* m_menu;
    QAction* m_show;
    QString m_lastMessage;
};

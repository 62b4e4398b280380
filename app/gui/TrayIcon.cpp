#include "app/gui/TrayIcon.h"

#include "app/base/Settings.h"
#include "gui/Icons.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QTimer>

namespace {

constexpr int kMessageMs = 10000;

} // namespace

TrayIcon::TrayIcon(QMainWindow& window, const Settings& settings)
    : QObject(&window)
    , m_window(window)
    , m_settings(settings)
    , m_menu(new QMenu(&window))
    , m_show(m_menu->addAction(Icons::appIcon(Icons::Name::ShowWindow), QString(), this,
                               &TrayIcon::showWindow))
{
    m_icon.setIcon(Icons::appIcon(Icons::Name::Application));
    m_icon.setContextMenu(m_menu);
    connect(&m_icon, &QSystemTrayIcon::activated, this, &TrayIcon::activated);
    retranslateUi();
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::setActions(const QList<QAction*>& actions)
{
    m_menu->addSeparator();
    for (QAction* action : actions) {
        if (action == nullptr) {
            m_menu->addSeparator();
        } else {
            m_menu->addAction(action);
        }
    }
}

bool TrayIcon::hidesWindow(bool trayAvailable, bool minimizeToTray)
{
    return trayAvailable && minimizeToTray;
}

void TrayIcon::windowMinimised()
{
    if (!hidesWindow(QSystemTrayIcon::isSystemTrayAvailable(), m_settings.minimizeToTray())) {
        return;
    }
    // The change of state is still being handled; hiding inside of it confuses window managers.
    QTimer::singleShot(0, &m_window, &QWidget::hide);
    m_icon.show();
    showMessage(
        tr("The program will keep running in the system tray.\nClick icon to show Cirrilon"));
}

void TrayIcon::setSystrayMessage(const QString& text)
{
    if (text == m_lastMessage || !m_icon.isVisible() || !m_settings.showSystemTrayMessage()) {
        return;
    }
    m_lastMessage = text;
    showMessage(text);
}

void TrayIcon::showMessage(const QString& text)
{
    m_icon.showMessage(QStringLiteral("Cirrilon"), text, QSystemTrayIcon::Information, kMessageMs);
}

void TrayIcon::activated(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::DoubleClick) {
        showWindow();
    }
}

void TrayIcon::showWindow()
{
    m_window.showNormal();
    m_window.activateWindow();
    m_icon.hide();
}

void TrayIcon::retranslateUi()
{
    m_show->setText(tr("Show Cirrilon"));
}

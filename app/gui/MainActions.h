#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;

/// The menus and actions of the main window with their names, texts, icons and shortcuts. Actions
/// whose function comes with a later version are disabled and say so.
class MainActions : public QObject
{
    Q_OBJECT
public:
    /// Puts the menus into the window's menu bar.
    explicit MainActions(QMainWindow& window);

    /// By object name; every name of the table has one.
    QAction& action(const char* objectName) const;
    QMenu& menu(const char* objectName) const;
    /// "Connect" or "Disconnect", in English or as the controller translates it; decides on the
    /// icon as well.
    void setConnectText(const QString& text);
    void retranslateUi();

private:
    void createMenus(QMainWindow& window);
    void createActions(QMainWindow& window);
    void showConnectState();

    QHash<QString, QAction*> m_actions;
    QHash<QString, QMenu*> m_menus;
    bool m_connected = false;
};

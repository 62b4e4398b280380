#pragma once

#include "app/base/DownloadManager.h"

#include <QDialog>
#include <QString>

#include <vector>

class NoteLabel;
class QAbstractButton;
class QListWidget;
class QPushButton;
class QScrollArea;
class QStackedWidget;
class Settings;
class SettingsPage;
class SettingsPageGeneral;

/// The options of the program on pages. Nothing is written before OK or Apply, and then only with
/// all values good: otherwise the page with the first bad one comes up with the reason. The caller
/// saves the settings to their files on sigSettingsChanged. Main thread.
class DlgSettings : public QDialog
{
    Q_OBJECT
public:
    /// The settings outlive the dialog.
    DlgSettings(Settings& settings, const NetworkFactory& network, QWidget* parent = nullptr);

    /// OK without closing. False if it was refused.
    bool apply();
    void accept() override;

Q_SIGNALS:
    void sigSettingsChanged();

private:
    void buildPages(const NetworkFactory& network);
    void addPage(SettingsPage* page, int icon, const QString& title);
    void buildLayout();
    void loadPages();
    bool checkPages();
    bool changeWorkFolder();
    void storePages();
    void changeProfile();
    void refuse(int page, QWidget* control, const QString& reason);
    void onEdited();

    Settings& m_settings;
    SettingsPageGeneral* m_general = nullptr;
    std::vector<SettingsPage*> m_pages;
    std::vector<QScrollArea*> m_areas;
    QListWidget* m_list;
    QStackedWidget* m_stack;
    NoteLabel* m_problem;
    QPushButton* m_apply = nullptr;
};

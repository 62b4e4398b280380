#pragma once

#include <QString>
#include <QStringList>
#include <QToolBar>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QToolButton;

/// The part of the tool bar that isn't actions: profile, aircraft with its checklist, and the
/// recorder's switch.
class MainToolBar : public QToolBar
{
    Q_OBJECT
public:
    explicit MainToolBar(QWidget* parent = nullptr);

    /// Adds the widgets after the actions that are there already.
    void addWidgets();
    /// The names after an empty entry, which stands for no profile; no signal.
    void setProfiles(const QStringList& names, const QString& selected);
    void setRecording(bool enabled);
    /// Does nothing while the title is the same.
    void SetAircraftName(const QString& title, const QString& checklist, bool found);

Q_SIGNALS:
    void sigProfileChosen(QString name);
    void sigRecordToggled(bool enabled);
    /// The path of the checklist, not empty.
    void sigOpenChecklist(QString path);

public Q_SLOTS:
    void OnClickedChecklistButton();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslateUi();

    QLabel* m_profileLabel;
    QComboBox* m_profile;
    QLineEdit* m_aircraft;
    QToolButton* m_checklist;
    QCheckBox* m_record;
    QToolButton* m_more = nullptr; ///< opens what doesn't fit; the tool bar's own
};

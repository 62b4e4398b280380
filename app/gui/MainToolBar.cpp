#include "app/gui/MainToolBar.h"

#include "gui/Icons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QToolButton>

namespace {

constexpr int kIconHeight = 20;
constexpr int kProfileCharacters = 10;
constexpr int kAircraftCharacters = 20;

} // namespace

MainToolBar::MainToolBar(QWidget* parent)
    : QToolBar(parent)
    , m_profileLabel(new QLabel(this))
    , m_profile(new QComboBox(this))
    , m_aircraft(new QLineEdit(this))
    , m_checklist(new QToolButton(this))
    , m_record(new QCheckBox(this))
{
    setObjectName(QStringLiteral("mainToolBar"));
    setIconSize(QSize(kIconHeight, kIconHeight));
    m_profile->setObjectName(QStringLiteral("comboBox_profile"));
    m_profile->setMinimumContentsLength(kProfileCharacters);
    m_profile->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_profile->setFocusPolicy(Qt::StrongFocus);
    m_profileLabel->setBuddy(m_profile);
    m_profileLabel->setMargin(fontMetrics().averageCharWidth() / 2);
    m_aircraft->setObjectName(QStringLiteral("lineEdit_aircraft"));
    m_aircraft->setReadOnly(true);
    m_aircraft->setMinimumWidth(fontMetrics().averageCharWidth() * kAircraftCharacters);
    m_checklist->setObjectName(QStringLiteral("toolButton_checklist"));
    m_checklist->setFocusPolicy(Qt::StrongFocus);
    m_checklist->setIcon(Icons::appIcon(Icons::Name::Search));
    m_checklist->setIconSize(QSize(kIconHeight, kIconHeight));
    m_record->setObjectName(QStringLiteral("checkBox_record"));
    connect(m_profile, QOverload<int>::of(&QComboBox::activated), this,
            [this] { Q_EMIT sigProfileChosen(m_profile->currentText()); });
    connect(m_checklist, &QToolButton::clicked, this, &MainToolBar::OnClickedChecklistButton);
    connect(m_record, &QCheckBox::toggled, this, &MainToolBar::sigRecordToggled);
    retranslateUi();
}

void MainToolBar::addWidgets()
{
    addSeparator();
    addWidget(m_profileLabel);
    addWidget(m_profile);
    addSeparator();
    addWidget(m_aircraft);
    addWidget(m_checklist);
    addSeparator();
    addWidget(m_record);
    // The style's own sign for what doesn't fit is dark in every palette.
    m_more = findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
    if (m_more != nullptr) {
        m_more->setIcon(Icons::appIcon(Icons::Name::Next));
    }
    retranslateUi();
}

void MainToolBar::setProfiles(const QStringList& names, const QString& selected)
{
    const QSignalBlocker blocked(m_profile);
    m_profile->clear();
    m_profile->addItem(QString());
    m_profile->addItems(names);
    m_profile->setCurrentText(selected);
    m_profile->setCurrentIndex(qMax(0, m_profile->findText(selected)));
}

void MainToolBar::setRecording(bool enabled)
{
    const QSignalBlocker blocked(m_record);
    m_record->setChecked(enabled);
}

void MainToolBar::SetAircraftName(const QString& title, const QString& checklist, bool found)
{
    if (title == m_aircraft->text()) {
        return;
    }
    m_aircraft->setText(title);
    m_aircraft->setCursorPosition(0);
    m_checklist->setToolTip(checklist);
    Icons::Name icon = Icons::Name::Search;
    if (found) {
        icon = checklist.isEmpty() ? Icons::Name::Ok : Icons::Name::Checklist;
    }
    m_checklist->setIcon(Icons::appIcon(icon));
}

void MainToolBar::OnClickedChecklistButton()
{
    if (!m_checklist->toolTip().isEmpty()) {
        Q_EMIT sigOpenChecklist(m_checklist->toolTip());
    }
}

void MainToolBar::changeEvent(QEvent* event)
{
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        retranslateUi();
    }
}

void MainToolBar::retranslateUi()
{
    setWindowTitle(tr("Tool bar"));
    m_profileLabel->setText(tr("Profile"));
    m_profile->setAccessibleName(tr("Profile"));
    m_profile->setToolTip(tr("Settings of a profile; the empty entry is none"));
    m_aircraft->setAccessibleName(tr("Aircraft"));
    m_aircraft->setPlaceholderText(tr("no aircraft"));
    m_aircraft->setToolTip(tr("The aircraft in the simulator"));
    m_checklist->setAccessibleName(tr("Open checklist"));
    if (m_more != nullptr) {
        m_more->setAccessibleName(tr("More"));
        m_more->setToolTip(tr("More"));
    }
    m_record->setText(tr("Record flight"));
    m_record->setToolTip(tr("Recording comes with a later version; the choice is kept"));
}

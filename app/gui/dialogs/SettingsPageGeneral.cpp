#include "app/gui/dialogs/SettingsPageGeneral.h"

#include "gui/Icons.h"
#include "gui/PlainButtons.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int kLongestProfileName = 60;

/// Letters, digits and a few marks that are good in a file name everywhere.
bool isProfileName(const QString& name)
{
    const auto isGood = [](QChar c) {
        return c.isLetterOrNumber() || c == QLatin1Char(' ') || c == QLatin1Char('-')
               || c == QLatin1Char('_');
    };
    return !name.isEmpty() && name.size() <= kLongestProfileName
           && std::all_of(name.begin(), name.end(), isGood);
}

} // namespace

SettingsPageGeneral::SettingsPageGeneral(QWidget* parent) : SettingsPage(parent)
{
    buildStart();
    QFormLayout* folder = addGroup(tr("Work folder"));
    m_workFolder =
        addFolder(folder, tr("&Folder:"), FolderEdit::Rule::Creatable, option::workFolder);
    addHint(folder, tr("Profiles, saved weather, charts and the log are kept here. A change takes "
                       "full effect at the next start."));
    buildProfile();
}

void SettingsPageGeneral::buildStart()
{
    QFormLayout* start = addGroup(tr("Start"));
    addCheck(start, tr("&Restore the window's place and size"), option::restoreWindowGeometry);
    addCheck(start, tr("&Download the weather"), option::downloadWxAtStart);
    addCheck(start, tr("C&onnect to the simulator"), option::autoConnect);
    auto* check = addCheck(start, tr("Look for a new &version"), option::checkNewVersion);
    auto* beta = addCheck(start, tr("Offer &beta versions as well"), option::checkNewVersionBeta);
    beta->setEnabled(false);
    connect(check, &QCheckBox::toggled, beta, &QWidget::setEnabled);
    QFormLayout* connecting = addGroup(tr("Connecting"));
    addCheck(connecting, tr("&Clear the simulator's weather"), option::clearWxOnConnect);
}

void SettingsPageGeneral::buildProfile()
{
    QFormLayout* form = addGroup(tr("Profile"));
    auto* row = new QWidget(form->parentWidget());
    m_profile = new QComboBox(row);
    m_profile->setObjectName(QLatin1String(option::profile.key));
    m_profile->setAccessibleName(tr("Profile"));
    auto* add = new QPushButton(Icons::appIcon(Icons::Name::Add), tr("&New..."), row);
    add->setAccessibleName(tr("New profile"));
    add->setAutoDefault(false);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(m_profile, 1);
    line->addWidget(add);
    row->setFocusProxy(m_profile);
    addLabelled(form, tr("&Profile:"), row);
    addHint(form, tr("A profile keeps its own weather, interface and path options. What is changed "
                     "in this window is kept in the profile used so far; then the chosen one is "
                     "loaded. A new profile begins with the present options."));
    connect(m_profile, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SettingsPage::sigEdited);
    connect(add, &QPushButton::clicked, this, &SettingsPageGeneral::askForProfile);
}

void SettingsPageGeneral::loadProfiles(const Settings& settings)
{
    m_profile->clear();
    m_profile->addItem(tr("(none)"), QString());
    QStringList names = settings.profiles();
    if (!settings.profile().isEmpty() && !names.contains(settings.profile())) {
        names << settings.profile();
    }
    for (const QString& name : names) {
        m_profile->addItem(name, name);
    }
    m_profile->setCurrentIndex(m_profile->findData(settings.profile()));
}

QString SettingsPageGeneral::profile() const
{
    return m_profile->currentData().toString();
}

QString SettingsPageGeneral::addProfile(const QString& name)
{
    const QString plain = name.trimmed();
    if (!isProfileName(plain)) {
        return tr("A name has letters, digits, blanks, \"-\" and \"_\", at most %1.")
            .arg(kLongestProfileName);
    }
    const QString file = plain + QStringLiteral(".ini");
    if (file.compare(QLatin1String("cirrilon.ini"), Qt::CaseInsensitive) == 0) {
        return tr("This name belongs to the main settings.");
    }
    if (m_profile->findText(file, Qt::MatchFixedString) >= 0) {
        return tr("A profile of this name exists.");
    }
    m_profile->addItem(file, file);
    m_profile->setCurrentIndex(m_profile->count() - 1);
    return QString();
}

void SettingsPageGeneral::askForProfile()
{
    QInputDialog question(this);
    question.setWindowTitle(tr("New profile"));
    question.setLabelText(tr("Name of the profile:")); // makes its buttons as well
    usePlainButtons(question);
    const bool accepted = question.exec() == QDialog::Accepted;
    const QString reason = accepted ? addProfile(question.textValue()) : QString();
    if (!reason.isEmpty()) {
        QMessageBox box(QMessageBox::Warning, tr("New profile"), reason, QMessageBox::Ok, this);
        usePlainButtons(box);
        box.exec();
    }
}

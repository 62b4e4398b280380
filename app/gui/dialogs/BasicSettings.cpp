#include "app/gui/dialogs/BasicSettings.h"

#include "app/base/Settings.h"
#include "app/gui/dialogs/SettingsPageInterface.h"
#include "app/gui/dialogs/SettingsPageServers.h"
#include "app/gui/dialogs/SettingsPagesPlain.h"
#include "gui/DialogSize.h"
#include "gui/NoteLabel.h"

#include <QFormLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWizardPage>

namespace {

constexpr int kWidth = 760;
constexpr int kHeight = 600;

/// A page of options as a step: it can be left only when its values are good.
class Step : public QWizardPage
{
public:
    explicit Step(SettingsPage* page) : m_page(page), m_note(new NoteLabel(this))
    {
        auto* area = new QScrollArea(this);
        area->setFrameShape(QFrame::NoFrame);
        area->setWidgetResizable(true);
        area->setFocusPolicy(Qt::NoFocus);
        area->setWidget(page);
        auto* column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(area, 1);
        column->addWidget(m_note);
        connect(page, &SettingsPage::sigEdited, m_note, &NoteLabel::clear);
    }

    bool validatePage() override
    {
        const SettingsFault fault = m_page->fault();
        if (fault.control != nullptr) {
            fault.control->setFocus();
            m_note->setNote(NoteLabel::Kind::Bad, fault.reason);
        }
        return fault.control == nullptr;
    }

private:
    SettingsPage* m_page;
    NoteLabel* m_note;
};

} // namespace

BasicSettings::BasicSettings(Settings& settings, const NetworkFactory& network, QWidget* parent)
    : QWizard(parent)
    , m_settings(settings)
{
    setWindowTitle(tr("Basic settings"));
    setWizardStyle(QWizard::ClassicStyle); // takes all colours from the palette
    setOption(QWizard::NoBackButtonOnStartPage);
    buildWelcome();
    buildInterface(network);
    buildFolder();
    buildWeather(network);
    buildStart();
    for (SettingsPage* page : m_pages) {
        page->load(m_settings);
    }
    resizeToScreen(*this, QSize(kWidth, kHeight));
}

void BasicSettings::addStep(SettingsPage* page, const QString& title, const QString& subTitle)
{
    auto* step = new Step(page);
    step->setTitle(title);
    step->setSubTitle(subTitle);
    addPage(step);
    m_pages.push_back(page);
}

void BasicSettings::buildWelcome()
{
    auto* page = new QWizardPage(this);
    page->setTitle(tr("Welcome to Cirrilon"));
    auto* text = new QLabel(
        tr("Cirrilon brings the real weather into your flight simulator.\n\nThe next pages ask how "
           "the simulator is reached, where the weather comes from and what is done at the start. "
           "Everything can be changed later in the settings."),
        page);
    text->setWordWrap(true);
    auto* column = new QVBoxLayout(page);
    column->addWidget(text);
    column->addStretch(1);
    addPage(page);
}

void BasicSettings::buildInterface(const NetworkFactory& network)
{
    addStep(new SettingsPageInterface(network), tr("Simulator"),
            tr("How the program reaches the simulator."));
}

void BasicSettings::buildFolder()
{
    auto* page = new SettingsPage;
    SettingsPagesPlain::addSimulator(page);
    addStep(page, tr("Folder of the simulator"),
            tr("Needed for a simulator on this computer that loads weather from files."));
}

void BasicSettings::buildWeather(const NetworkFactory& network)
{
    addStep(new SettingsPageServers(m_settings, network), tr("Weather"),
            tr("Where the reports come from."));
}

void BasicSettings::buildStart()
{
    auto* page = new SettingsPage;
    QFormLayout* form = page->addGroup(tr("Start"));
    page->addCheck(form, tr("&Download the weather"), option::downloadWxAtStart);
    page->addCheck(form, tr("C&onnect to the simulator"), option::autoConnect);
    page->addCheck(form, tr("Look for a new &version"), option::checkNewVersion);
    QFormLayout* connecting = page->addGroup(tr("Connecting"));
    page->addCheck(connecting, tr("Clear the &simulator's weather"), option::clearWxOnConnect);
    addStep(page, tr("Start of the program"), tr("What is done when the program starts."));
}

void BasicSettings::accept()
{
    for (SettingsPage* page : m_pages) {
        page->store(m_settings);
    }
    Q_EMIT sigSettingsChanged();
    QWizard::accept();
}

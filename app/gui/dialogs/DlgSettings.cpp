#include "app/gui/dialogs/DlgSettings.h"

#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"
#include "app/gui/dialogs/SettingsPageGeneral.h"
#include "app/gui/dialogs/SettingsPageInterface.h"
#include "app/gui/dialogs/SettingsPageServers.h"
#include "app/gui/dialogs/SettingsPageWeather.h"
#include "app/gui/dialogs/SettingsPagesPlain.h"
#include "gui/DialogSize.h"
#include "gui/Icons.h"
#include "gui/NoteLabel.h"
#include "gui/PlainButtons.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

constexpr int kWidth = 880;
constexpr int kHeight = 640;
constexpr int kIconEdge = 22;
constexpr int kListPadding = 12;

/// Folders of the settings end with a separator.
QString asFolder(const QString& path)
{
    const QString clean = QDir::cleanPath(QDir::fromNativeSeparators(path));
    return clean.endsWith(QLatin1Char('/')) ? clean : clean + QLatin1Char('/');
}

/// What becomes of the files when the work folder changes.
enum class Files
{
    Move,
    Leave,
    Cancel ///< change nothing at all
};

Files askFiles(QWidget* parent, const QString& from, const QString& to)
{
    QMessageBox box(QMessageBox::Question, DlgSettings::tr("Work folder"),
                    DlgSettings::tr("Move the files of the work folder?\n\nFrom: %1\nTo: %2")
                        .arg(QDir::toNativeSeparators(from), QDir::toNativeSeparators(to)),
                    QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    auto* move = box.addButton(DlgSettings::tr("&Move the files"), QMessageBox::YesRole);
    auto* leave = box.addButton(DlgSettings::tr("&Leave them there"), QMessageBox::NoRole);
    box.setDefaultButton(move);
    usePlainButtons(box);
    box.exec();
    if (box.clickedButton() == move) {
        return Files::Move;
    }
    return box.clickedButton() == leave ? Files::Leave : Files::Cancel;
}

} // namespace

DlgSettings::DlgSettings(Settings& settings, const NetworkFactory& network, QWidget* parent)
    : QDialog(parent)
    , m_settings(settings)
    , m_list(new QListWidget(this))
    , m_stack(new QStackedWidget(this))
    , m_problem(new NoteLabel(this))
{
    setWindowTitle(tr("Settings"));
    buildPages(network);
    buildLayout();
    loadPages();
    m_list->setCurrentRow(0);
    resizeToScreen(*this, QSize(kWidth, kHeight));
}

void DlgSettings::buildPages(const NetworkFactory& network)
{
    using Icons::Name;
    const auto add = [this](SettingsPage* page, Name icon, const QString& title) {
        addPage(page, static_cast<int>(icon), title);
    };
    m_general = new SettingsPageGeneral(this);
    add(m_general, Name::PageGeneral, tr("General"));
    add(new SettingsPageWeather(this), Name::PageWeather, tr("Weather"));
    add(new SettingsPageServers(m_settings, network, this), Name::PageServers, tr("Servers"));
    add(new SettingsPageInterface(network, this), Name::PageInterface, tr("Interface"));
    add(SettingsPagesPlain::paths(this), Name::PagePaths, tr("Folders"));
    add(SettingsPagesPlain::messages(this), Name::PageMessages, tr("Messages"));
    add(SettingsPagesPlain::recorder(this), Name::PageRecorder, tr("Recorder"));
    add(SettingsPagesPlain::units(this), Name::PageUnits, tr("Units"));
    add(SettingsPagesPlain::map(this), Name::PageMap, tr("Map"));
    add(SettingsPagesPlain::airac(this), Name::PageAirac, tr("AIRAC"));
    add(SettingsPagesPlain::logging(this), Name::PageLogging, tr("Logging"));
}

void DlgSettings::addPage(SettingsPage* page, int icon, const QString& title)
{
    auto* area = new QScrollArea(m_stack);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setAccessibleName(title);
    area->setWidget(page);
    m_stack->addWidget(area);
    m_pages.push_back(page);
    m_areas.push_back(area);
    m_list->addItem(new QListWidgetItem(Icons::appIcon(static_cast<Icons::Name>(icon)), title));
    connect(page, &SettingsPage::sigEdited, this, &DlgSettings::onEdited);
}

void DlgSettings::buildLayout()
{
    m_list->setAccessibleName(tr("Pages"));
    m_list->setIconSize(QSize(kIconEdge, kIconEdge));
    m_list->setUniformItemSizes(true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setFixedWidth(m_list->sizeHintForColumn(0)
                          + m_list->verticalScrollBar()->sizeHint().width() + kListPadding);
    connect(m_list, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    auto* buttons = new QDialogButtonBox(
        QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
    m_apply = buttons->button(QDialogButtonBox::Apply);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &DlgSettings::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DlgSettings::reject);
    connect(m_apply, &QPushButton::clicked, this, &DlgSettings::apply);
    auto* row = new QHBoxLayout;
    row->addWidget(m_list);
    row->addWidget(m_stack, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(row, 1);
    column->addWidget(m_problem);
    column->addWidget(buttons);
    usePlainButtons(*this);
}

void DlgSettings::loadPages()
{
    for (SettingsPage* page : m_pages) {
        page->load(m_settings);
    }
    m_general->loadProfiles(m_settings);
    onEdited();
}

void DlgSettings::onEdited()
{
    bool changed = m_general->profile() != m_settings.profile();
    for (const SettingsPage* page : m_pages) {
        changed = changed || page->isChanged();
    }
    if (m_apply != nullptr) {
        m_apply->setEnabled(changed);
    }
    m_problem->clear();
}

void DlgSettings::refuse(int page, QWidget* control, const QString& reason)
{
    m_list->setCurrentRow(page);
    m_areas[static_cast<std::size_t>(page)]->ensureWidgetVisible(control);
    control->setFocus();
    m_problem->setNote(NoteLabel::Kind::Bad, reason);
}

bool DlgSettings::checkPages()
{
    for (std::size_t page = 0; page < m_pages.size(); ++page) {
        const SettingsFault fault = m_pages[page]->fault();
        if (fault.control != nullptr) {
            refuse(static_cast<int>(page), fault.control, fault.reason);
            return false;
        }
    }
    return true;
}

bool DlgSettings::apply()
{
    if (!checkPages() || !changeWorkFolder()) {
        return false;
    }
    storePages();
    changeProfile();
    loadPages();
    Q_EMIT sigSettingsChanged();
    return true;
}

void DlgSettings::accept()
{
    if (apply()) {
        QDialog::accept();
    }
}

/// Before anything is stored, so that the user can still say no to all of it.
bool DlgSettings::changeWorkFolder()
{
    const QString before = m_settings.workFolder();
    const QString folder = asFolder(m_general->workFolder());
    if (folder == asFolder(before)) {
        return true;
    }
    const Files files = QDir(before).exists() ? askFiles(this, before, folder) : Files::Leave;
    if (files == Files::Cancel) {
        return false;
    }
    if (!QDir().mkpath(folder)) {
        refuse(0, m_general, tr("The work folder can not be made."));
        return false;
    }
    m_settings.setWorkFolder(folder);
    if (files == Files::Move) {
        m_settings.moveWorkFolder(before, folder);
    }
    return true;
}

void DlgSettings::storePages()
{
    const int serverBefore = m_settings.wxServerType();
    const QString folder = m_settings.workFolder();
    for (SettingsPage* page : m_pages) {
        page->store(m_settings);
    }
    m_settings.setWorkFolder(folder);
    const int server = m_settings.wxServerType();
    if (server != serverBefore && server == wxservertype::kFirst) {
        m_settings.setWeatherServer(m_settings.serverOne());
    } else if (server != serverBefore && server == wxservertype::kSecond) {
        m_settings.setWeatherServer(m_settings.serverTwo());
    }
}

void DlgSettings::changeProfile()
{
    const QString chosen = m_general->profile();
    if (chosen == m_settings.profile()) {
        return;
    }
    QDir().mkpath(m_settings.profilesFolder());
    const QString file = m_settings.profileFile(chosen);
    if (!file.isEmpty() && !QFile::exists(file)) {
        m_settings.save(file, Settings::FileRole::Profile);
    }
    m_settings.changeProfile(chosen);
}

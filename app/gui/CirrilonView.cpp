#include "app/gui/CirrilonView.h"

#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/ProcessRunner.h"
#include "app/gui/DockWidgetDebug.h"
#include "app/gui/LanguageMenu.h"
#include "app/gui/MainActions.h"
#include "app/gui/MainToolBar.h"
#include "app/gui/MainWidgetWeather.h"
#include "app/gui/NoticeBar.h"
#include "app/gui/TrayIcon.h"
#include "gui/Icons.h"
#include "planner/gui/MainWidgetFlightplanner.h"
#include "sim/FsInterfaceFactory.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFile>
#include <QMenu>
#include <QSplashScreen>
#include <QSysInfo>
#include <QTimer>

namespace {

using Id = MainActions::Id;

constexpr double kSplashOpacity = 0.9;
constexpr int kSplashFontSize = 10;
constexpr int kFirstStartDelayMs = 600; ///< later than the controller's own start

} // namespace

CirrilonView::CirrilonView(const WindowParts& parts)
    : m_settingsFile(parts.settingsFile)
    , m_firstStart(!QFile::exists(parts.settingsFile))
    , m_settings(parts.settingsFile, parts.random)
    , m_saver(m_settings, m_settingsFile, *this)
    , m_log(m_settings.workFolder())
    , m_dialogs(this, {&m_settings, parts.network, nullptr, &m_stop, parts.limits})
    , m_processes(parts.processes)
    , m_network(parts.network)
    , m_interfaces(parts.interfaces(m_settings, m_stop))
{
    m_log.setMirror(parts.logMirror);
    setupUi();
    updateSettingsViews();
    createSplash();
    createController(parts);
    connectControllerActions();
    connectWindowActions();
    addSubWindows();
    createTray();
    restoreWindow();
    setBuilt();
    setWindowTitle(windowTitle() + QStringLiteral(" - ") + QStringLiteral("64-Bit ")
                   + Settings::version());
    OnStatusbarStatus(tr("Weather not loaded"));
    writeBanner();
    setupLanguage();
    sayHowSettingsWereRead(parts.settingsFolderFailed);
    if (m_firstStart) {
        QTimer::singleShot(kFirstStartDelayMs, this, &CirrilonView::OnOpenBasicSettings);
    }
}

CirrilonView::~CirrilonView()
{
    m_stop.raise();
    m_controller.reset();
}

void CirrilonView::createSplash()
{
    m_splash = std::make_unique<QSplashScreen>(Icons::logo(devicePixelRatioF()));
    m_splash->setStyleSheet(QStringLiteral("background-color:white"));
    m_splash->setWindowOpacity(kSplashOpacity);
    m_splash->setFont(QFont(QStringLiteral("Times"), kSplashFontSize, QFont::Bold));
    m_splash->show();
    showSplashMessage(tr("Loading GUI"));
}

void CirrilonView::createController(const WindowParts& parts)
{
    m_controller = std::make_unique<Controller>(
        ControllerParts{m_settings, *this, m_dialogs, parts.random, parts.network, parts.processes,
                        *m_interfaces, parts.limits});
    connect(&m_settings, &Settings::sigDebugString, m_controller.get(), &Controller::OnDebugString);
    // Queued as the lines of the start are, so that the next steps stand below them.
    connect(m_controller.get(), &Controller::sigStarted, this, &CirrilonView::writeNextSteps,
            Qt::QueuedConnection);
    for (const Settings::LogLine& line : m_settings.takeEarlyLog()) {
        m_controller->OnDebugString(line.text, line.level);
    }
}

void CirrilonView::connectControllerActions()
{
    Controller* controller = m_controller.get();
    const auto on = [this, controller](Id id, auto slot) {
        connect(&actions().action(id), &QAction::triggered, controller, slot);
    };
    on(Id::DownloadWx, &Controller::OnDownloadWeather);
    connect(&noticeBar(), &NoticeBar::sigDownloadAgain, &actions().action(Id::DownloadWx),
            &QAction::trigger);
    on(Id::Connect, &Controller::OnConnectClicked);
    on(Id::SetWxIcao, &Controller::OnClickedSetWX);
    on(Id::ClearWx, &Controller::OnClearWX);
    on(Id::CheckNewVersion, &Controller::onCheckNewVersion);
    on(Id::ShowMetarStationsFailed, &Controller::OnShowMetarStationsFailed);
    on(Id::ShowSynopStationsFailed, &Controller::OnShowSynopStationsFailed);
    connect(&weatherWidget(), &MainWidgetWeather::OnMetarRequest, controller,
            &Controller::OnGetMetarClicked);
}

void CirrilonView::connectWindowActions()
{
    const auto on = [this](Id id, auto slot) {
        connect(&actions().action(id), &QAction::triggered, this, slot);
    };
    on(Id::Exit, &CirrilonView::on_actionExit_triggered);
    on(Id::OpenConfigfile, &CirrilonView::OnOpenCirrilonFolder);
    on(Id::TestFunc, &CirrilonView::OnTestFunction);
    on(Id::Flightplanner, &CirrilonView::OnOpenFlightplanner);
    connect(&debugDock(), &DockWidgetDebug::sigOpenFolder, this, &CirrilonView::openFolder);
    connect(&debugDock(), &DockWidgetDebug::sigReport, this, &CirrilonView::OnSaveReport);
    connect(&toolBar(), &MainToolBar::sigProfileChosen, this, &CirrilonView::OnProfileIndexChanged);
    connect(&toolBar(), &MainToolBar::sigOpenChecklist, this, &CirrilonView::onOpenChecklist);
    connect(&toolBar(), &MainToolBar::sigRecordToggled, this, [this](bool enabled) {
        m_settings.setRecorderEnable(enabled);
        saveSettings();
    });
    // The session may end without a word to the window.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &CirrilonView::saveSettings);
    connect(qApp, &QGuiApplication::commitDataRequest, this, &CirrilonView::sessionEnds);
    connect(qApp, &QGuiApplication::saveStateRequest, this, &CirrilonView::saveSettings);
}

void CirrilonView::createTray()
{
    m_tray = new TrayIcon(*this, m_settings);
    m_tray->setActions({&actions().action(Id::Connect), &actions().action(Id::Settings),
                        &actions().action(Id::DownloadWx), nullptr, &actions().action(Id::Exit)});
}

void CirrilonView::restoreWindow()
{
    if (!m_settings.restoreWindowGeometry()) {
        return;
    }
    restoreState(m_settings.windowState());
    noticeBar().showIfNeeded();
    restoreGeometry(m_settings.windowGeometry());
    flightplanner().restoreGeometry(m_settings.flightplannerWindowGeometry());
}

void CirrilonView::writeBanner()
{
    const auto write = [this](const QString& line) {
        m_controller->OnDebugString(line, loglevel::kNotification);
    };
    write(QStringLiteral("(Main) - Cirrilon %1, Qt %2, %3")
              .arg(Settings::version(), QString::fromLatin1(qVersion()),
                   QSysInfo::prettyProductName().toHtmlEscaped()));
    write(QStringLiteral("(Main) - Log file: %1").arg(m_log.path().toHtmlEscaped()));
}

void CirrilonView::writeNextSteps()
{
    const auto write = [this](const QString& line) {
        m_controller->OnDebugString(line, loglevel::kNotification);
    };
    if (!m_settings.downloadWxAtStart()) {
        write(QStringLiteral("(Main) - Next: \"Download WX\" fetches the weather"));
    }
    if (!m_settings.autoConnect()) {
        write(QStringLiteral("(Main) - Next: \"Connect\" reaches the simulator by the interface "
                             "that is chosen under \"Settings\""));
    }
}

void CirrilonView::setupLanguage()
{
    if (m_language == nullptr) {
        m_language = new LanguageMenu(actions().menu(MainActions::Menu::Language),
                                      LanguageMenu::defaultFolder());
        connect(m_language, &LanguageMenu::sigDebugString, m_controller.get(),
                &Controller::OnDebugString);
    }
    m_language->useSystemLocale();
}

void CirrilonView::OnLanguageChanged(QAction* action)
{
    m_language->OnLanguageChanged(action);
}

void CirrilonView::OnOutputDebugstring(QString item, int level)
{
    m_log.write(item, level);
    if (level >= m_settings.loggerLevel()) {
        debugDock().append(item, level);
    }
}

void CirrilonView::setSystrayMessage(QString text)
{
    if (m_tray != nullptr) {
        m_tray->setSystrayMessage(text);
    }
}

void CirrilonView::showSplashMessage(QString text)
{
    if (m_splash == nullptr) {
        return;
    }
    const QPoint centre = frameGeometry().center();
    m_splash->move(centre - m_splash->rect().center());
    m_splash->showMessage(text, Qt::AlignBottom | Qt::AlignHCenter, Qt::black);
}

void CirrilonView::closeSplash()
{
    m_splash.reset();
    if (!isMinimized() && !m_tray->isIconVisible()) {
        show();
    }
}

void CirrilonView::closeProgram()
{
    close();
}

void CirrilonView::on_actionExit_triggered()
{
    close();
}

void CirrilonView::OnProfileIndexChanged(QString name)
{
    if (name == m_settings.profile()) {
        return;
    }
    m_settings.changeProfile(name);
    m_saver.replaceDamaged();
    settingsChanged();
}

void CirrilonView::updateSettingsViews()
{
    toolBar().setProfiles(m_settings.profiles(), m_settings.profile());
    toolBar().setRecording(m_settings.recorderEnable());
}

void CirrilonView::openFolder(const QString& path)
{
    if (!m_processes.open(path)) {
        m_controller->OnDebugString(
            QStringLiteral("(Main) - can not open folder: %1").arg(path.toHtmlEscaped()),
            loglevel::kWarning);
    }
}

void CirrilonView::OnOpenCirrilonFolder()
{
    openFolder(m_settings.workFolder());
}

void CirrilonView::onOpenChecklist(const QString& path)
{
    const bool opened = m_processes.open(path);
    const QString text =
        opened ? QStringLiteral("Open Checklist ") : QStringLiteral("Can not open checklist ");
    m_controller->OnDebugString(text + path.toHtmlEscaped(),
                                opened ? loglevel::kNotification : loglevel::kWarning);
}

bool CirrilonView::saveSettings()
{
    if (m_closed) {
        return true;
    }
    m_settings.setFlightplannerWindowGeometry(flightplanner().saveGeometry());
    m_settings.setWindowState(saveState());
    m_settings.setWindowGeometry(saveGeometry());
    return m_saver.save();
}

void CirrilonView::changeEvent(QEvent* event)
{
    BackendBase::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isMinimized() && m_tray != nullptr) {
        m_tray->windowMinimised();
    }
    if (event->type() == QEvent::LocaleChange && m_language != nullptr) {
        m_language->useSystemLocale();
    }
}

void CirrilonView::closeEvent(QCloseEvent* event)
{
    event->accept();
    if (m_closed) {
        return;
    }
    flightplanner().close();
    m_windows.closeBeside();
    const bool saved = saveSettings();
    m_closed = true;
    // What waits in an event loop of its own would go on with its next step.
    m_stop.raise();
    m_controller->requestStop();
    if (!saved && m_mayAsk && !qApp->isSavingSession()) {
        m_dialogs.farewell(tr("Settings"), m_saver.failureText());
    }
    Q_EMIT sigClosed();
}

void CirrilonView::retranslateUi()
{
    BackendBase::retranslateUi();
    if (m_tray != nullptr) {
        m_tray->retranslateUi();
    }
}

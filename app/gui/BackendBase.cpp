#include "app/gui/BackendBase.h"

#include "aircraft/gui/DockWidgetLoadeditor.h"
#include "app/base/Settings.h"
#include "app/gui/AircraftTexts.h"
#include "app/gui/DockWidgetData.h"
#include "app/gui/DockWidgetDebug.h"
#include "app/gui/MainActions.h"
#include "app/gui/MainToolBar.h"
#include "app/gui/MainWidgetWeather.h"
#include "app/gui/NoticeBar.h"
#include "gui/Icons.h"
#include "gui/ProgressBar.h"
#include "planner/gui/MainWidgetFlightplanner.h"

#include <QAction>
#include <QEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QToolButton>

namespace {

constexpr int kUsualWidth = 1120;
constexpr int kUsualHeight = 720;
constexpr int kDebugPart = 4; ///< of the window's height, as a divisor

} // namespace

BackendBase::BackendBase(QWidget* parent) : QMainWindow(parent) {}

BackendBase::~BackendBase() = default;

void BackendBase::setupUi()
{
    setObjectName(QStringLiteral("CirrilonView"));
    setWindowTitle(QStringLiteral("Cirrilon"));
    setWindowIcon(Icons::appIcon(Icons::Name::Application));
    setDockNestingEnabled(true);
    m_actions = new MainActions(*this);
    createDocks();
    createToolBar();
    createNoticeBar();
    createStatusBar();
    retranslateToggles();
    // The menu bar's own button for what doesn't fit.
    if (auto* more = menuBar()->findChild<QToolButton*>(QStringLiteral("qt_menubar_ext_button"))) {
        more->setAccessibleName(tr("More"));
    }
    resize(QSize(kUsualWidth, kUsualHeight).boundedTo(screen()->availableSize()));
    resizeDocks({m_debug}, {height() / kDebugPart}, Qt::Vertical);
}

void BackendBase::createDocks()
{
    m_weather = new MainWidgetWeather(this);
    setCentralWidget(m_weather);
    m_debug = new DockWidgetDebug(this);
    addDockWidget(Qt::BottomDockWidgetArea, m_debug);
    m_flightplanner = new MainWidgetFlightplanner(this);
    addDockWidget(Qt::RightDockWidgetArea, m_flightplanner);
    m_flightplanner->setFloating(true);
    m_flightplanner->hide();
    m_data = new DockWidgetData(this);
    addDockWidget(Qt::RightDockWidgetArea, m_data);
    m_data->hide();
    m_loadeditor = new DockWidgetLoadeditor(this);
    addDockWidget(Qt::BottomDockWidgetArea, m_loadeditor);
    m_loadeditor->hide();

    using Icons::Name;
    m_debug->toggleViewAction()->setIcon(Icons::appIcon(Name::DebugOutput));
    m_flightplanner->toggleViewAction()->setIcon(Icons::appIcon(Name::FlightPlanner));
    m_data->toggleViewAction()->setIcon(Icons::appIcon(Name::DataPage));
    m_loadeditor->toggleViewAction()->setIcon(Icons::appIcon(Name::LoadEditor));
    m_debug->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("Ctrl+1")));
    m_data->toggleViewAction()->setShortcut(QKeySequence(QStringLiteral("Ctrl+2")));
    OnSetMenuView(m_debug->toggleViewAction());
    OnSetMenuView(m_flightplanner->toggleViewAction());
    OnSetMenuView(m_data->toggleViewAction());
}

void BackendBase::createToolBar()
{
    m_toolBar = new MainToolBar(this);
    addToolBar(m_toolBar);
    using Id = MainActions::Id;
    for (const Id id : {Id::Connect, Id::DownloadWx, Id::SetWxIcao, Id::Settings}) {
        m_toolBar->addAction(&m_actions->action(id));
    }
    // What the pilot looks for first stands there in words as well.
    auto* connectButton =
        qobject_cast<QToolButton*>(m_toolBar->widgetForAction(&m_actions->action(Id::Connect)));
    connectButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolBar->addAction(m_loadeditor->toggleViewAction());
    m_toolBar->addWidgets();
}

void BackendBase::createNoticeBar()
{
    m_notices = new NoticeBar(this);
    addToolBarBreak();
    addToolBar(m_notices);
}

void BackendBase::createStatusBar()
{
    m_progress = new ProgressBar(this);
    m_progress->setVersionText(Settings::version());
    statusBar()->addWidget(m_progress, 1);
}

void BackendBase::setConnectText(QString text, bool connected)
{
    m_actions->setConnectText(text, connected);
}

void BackendBase::OnStatusbarStatus(QString text)
{
    m_progress->setStatusText(text);
}

void BackendBase::showStatusAlarm(const QString& text)
{
    m_progress->setAlarm(text);
}

void BackendBase::showNotice(Notice about, const QString& text)
{
    m_notices->showNotice(about, text);
}

void BackendBase::clearNotice(Notice about)
{
    m_notices->clearNotice(about);
}

void BackendBase::OnProgressBar(qlonglong value, qlonglong total, QString text)
{
    if (m_built) {
        m_progress->setProgress(value, total, text);
    }
}

WeatherPage& BackendBase::pageWeather()
{
    return *m_weather;
}

DataPage& BackendBase::pageData()
{
    return *m_data;
}

void BackendBase::SetAircraftData(aviation::structs::AircraftData& aircraft)
{
    if (m_data->isVisible()) {
        m_data->setAircraftData(aircraft);
    }
}

void BackendBase::SetAircraftName(QString title, QString checklist, bool found)
{
    m_toolBar->SetAircraftName(title, checklist, found);
}

void BackendBase::SetFrequencys(aviation::structs::RadioFrequencys& frequencies)
{
    m_data->setFrequencys(frequencies);
}

void BackendBase::setSetWxAction(bool enabled, QString text, QString icao)
{
    QAction& action = m_actions->action(MainActions::Id::SetWxIcao);
    action.setEnabled(enabled);
    action.setText(text);
    action.setProperty("icao", icao);
}

void BackendBase::setFlightStatus(QString status, QColor background, QColor foreground)
{
    m_data->setFlightStatus(status, background, foreground);
}

void BackendBase::setFlightTime(QTime time)
{
    m_data->setFlightTime(time);
}

void BackendBase::SetTargetWind(aviation::weather::Wind wind)
{
    m_data->setTargetWind(QStringLiteral("%1\u00B0/%2kt")
                              .arg(static_cast<double>(wind.Dir), 3, 'f', 0, QLatin1Char('0'))
                              .arg(static_cast<double>(wind.Speed), 0, 'f', 0));
}

void BackendBase::SetTargetWind(QString text)
{
    m_data->setTargetWind(text);
}

void BackendBase::SetTargetWindTooltip(QString text)
{
    m_data->setTargetWindToolTip(text);
}

void BackendBase::OnSetMenuView(QAction* action)
{
    m_actions->menu(MainActions::Menu::View).addAction(action);
}

void BackendBase::OnOpenFlightplanner()
{
    m_flightplanner->show();
    m_flightplanner->raise();
}

void BackendBase::OnButtonSetPage()
{
    m_weather->setFocus();
}

void BackendBase::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_built) {
        retranslateUi();
    }
}

void BackendBase::retranslateUi()
{
    m_actions->retranslateUi();
    m_notices->retranslateUi();
    QAction& setWx = m_actions->action(MainActions::Id::SetWxIcao);
    const QString icao = setWx.property("icao").toString();
    if (!icao.isEmpty()) {
        setWx.setText(setWx.text() + QLatin1Char(' ') + icao);
    }
    retranslateToggles();
}

void BackendBase::retranslateToggles()
{
    const auto describe = [](QDockWidget& dock, const QString& tip) {
        dock.toggleViewAction()->setStatusTip(tip);
        dock.toggleViewAction()->setToolTip(tip);
    };
    describe(*m_debug, tr("Shows or hides the log"));
    describe(*m_flightplanner, tr("Shows or hides the flight planner"));
    describe(*m_data, tr("Shows or hides the data of aircraft and weather cycle"));
    describe(*m_loadeditor, tr("Shows or hides the load editor"));
}

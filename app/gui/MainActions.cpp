#include "app/gui/MainActions.h"

#include "app/Controller.h"
#include "gui/Icons.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <array>

namespace {

using Icons::Name;

struct MenuRow
{
    const char* name;
    const char* title;
};

enum class State
{
    Ready,
    Waits, ///< disabled until something else has happened
    Later  ///< its function comes with a later version
};

struct ActionRow
{
    const char* menu;
    const char* name; ///< null is a separator
    const char* text;
    const char* tip;
    Name icon;
    const char* shortcut;
    State state = State::Ready;
};

constexpr std::array kMenus{
    MenuRow{"menuCirrilon", QT_TRANSLATE_NOOP("MainActions", "&Cirrilon")},
    MenuRow{"menuView", QT_TRANSLATE_NOOP("MainActions", "&View")},
    MenuRow{"menuWindows", QT_TRANSLATE_NOOP("MainActions", "&Windows")},
    MenuRow{"menuTools", QT_TRANSLATE_NOOP("MainActions", "&Tools")},
    MenuRow{"menuDeveloper_Tools", QT_TRANSLATE_NOOP("MainActions", "&Developer Tools")},
    MenuRow{"menuInfo", QT_TRANSLATE_NOOP("MainActions", "&Info")},
    MenuRow{"menuLanguage", QT_TRANSLATE_NOOP("MainActions", "&Language")},
};

constexpr const char* kCirrilon = "menuCirrilon";
constexpr const char* kWindows = "menuWindows";
constexpr const char* kTools = "menuTools";
constexpr const char* kDeveloper = "menuDeveloper_Tools";
constexpr const char* kInfo = "menuInfo";

constexpr ActionRow Separator(const char* menu)
{
    return {menu, nullptr, nullptr, nullptr, Name::Info, nullptr};
}

// clang-format off
constexpr std::array kActions{
    ActionRow{kCirrilon, "actionConnect", QT_TRANSLATE_NOOP("MainActions", "Connect"),
              QT_TRANSLATE_NOOP("MainActions", "Connects to the simulator, or ends the connection"),
              Name::Connect, "Ctrl+K"},
    ActionRow{kCirrilon, "actionDownload_WX", QT_TRANSLATE_NOOP("MainActions", "Download WX"),
              QT_TRANSLATE_NOOP("MainActions", "Downloads the weather now"),
              Name::DownloadWeather, "Ctrl+D"},
    ActionRow{kCirrilon, "action_setWxIcao", QT_TRANSLATE_NOOP("MainActions", "Set WX"),
              QT_TRANSLATE_NOOP("MainActions", "Set weather for Airport"),
              Name::SetWeather, "Ctrl+U", State::Waits},
    ActionRow{kCirrilon, "actionClear_WX", QT_TRANSLATE_NOOP("MainActions", "Clear WX"),
              QT_TRANSLATE_NOOP("MainActions", "Clears the weather in the simulator"),
              Name::ClearWeather, nullptr},
    Separator(kCirrilon),
    ActionRow{kCirrilon, "action_loadwx", QT_TRANSLATE_NOOP("MainActions", "Load WX"),
              QT_TRANSLATE_NOOP("MainActions", "Loads stored weather"),
              Name::LoadWeather, nullptr, State::Later},
    ActionRow{kCirrilon, "action_savewx", QT_TRANSLATE_NOOP("MainActions", "Save WX"),
              QT_TRANSLATE_NOOP("MainActions", "Stores the present weather"),
              Name::SaveWeather, nullptr, State::Later},
    Separator(kCirrilon),
    ActionRow{kCirrilon, "actionSettings", QT_TRANSLATE_NOOP("MainActions", "Settings"),
              QT_TRANSLATE_NOOP("MainActions", "Opens the settings"),
              Name::Settings, "Ctrl+,"},
    ActionRow{kCirrilon, "actionBasic_Settings", QT_TRANSLATE_NOOP("MainActions", "Basic Settings"),
              QT_TRANSLATE_NOOP("MainActions", "The assistant opens by itself at the first start"),
              Name::BasicSettings, nullptr, State::Waits},
    Separator(kCirrilon),
    ActionRow{kCirrilon, "actionExit", QT_TRANSLATE_NOOP("MainActions", "Exit"),
              QT_TRANSLATE_NOOP("MainActions", "Ends the program"),
              Name::Exit, "Ctrl+Q"},

    ActionRow{kWindows, "actionFlightplanner", QT_TRANSLATE_NOOP("MainActions", "Flightplanner"),
              QT_TRANSLATE_NOOP("MainActions", "Plans a flight with the downloaded winds"),
              Name::FlightPlanner, nullptr, State::Later},
    ActionRow{kWindows, "action_weatheSearch", QT_TRANSLATE_NOOP("MainActions", "Weather search"),
              QT_TRANSLATE_NOOP("MainActions", "Searches the world for weather"),
              Name::WeatherSearch, nullptr, State::Later},
    ActionRow{kWindows, "action_weatherEvents", QT_TRANSLATE_NOOP("MainActions", "Weather Events"),
              QT_TRANSLATE_NOOP("MainActions", "Shows recorded weather events"),
              Name::WeatherEvents, nullptr, State::Later},
    ActionRow{kWindows, "action_flights", QT_TRANSLATE_NOOP("MainActions", "Flights"),
              QT_TRANSLATE_NOOP("MainActions", "Shows recorded flights"),
              Name::Flights, nullptr, State::Later},
    ActionRow{kWindows, "action_weatherRadar", QT_TRANSLATE_NOOP("MainActions", "Weather radar"),
              QT_TRANSLATE_NOOP("MainActions", "Shows the simulator's clouds around the aircraft"),
              Name::Radar, "Ctrl+R"},

    ActionRow{kTools, "actionAirport_List", QT_TRANSLATE_NOOP("MainActions", "Airport List"),
              QT_TRANSLATE_NOOP("MainActions", "Adds airports and changed ICAO codes"),
              Name::AirportList, "Ctrl+L"},
    ActionRow{kTools, "actionAircraft_Editor", QT_TRANSLATE_NOOP("MainActions", "Aircraft Editor"),
              QT_TRANSLATE_NOOP("MainActions", "Edits the aircraft configurations"),
              Name::AircraftEditor, nullptr, State::Later},
    ActionRow{kTools, "action_downloadHistoryWX",
              QT_TRANSLATE_NOOP("MainActions", "Download History WX"),
              QT_TRANSLATE_NOOP("MainActions", "Downloads weather of the past"),
              Name::DownloadHistory, nullptr, State::Later},
    Separator(kTools),
    ActionRow{kTools, "actionOpen_Configfile", QT_TRANSLATE_NOOP("MainActions", "Open Configfile"),
              QT_TRANSLATE_NOOP("MainActions", "Opens the work folder in the file browser"),
              Name::OpenFolder, nullptr},

    ActionRow{kDeveloper, "action_ShowMetarStationsFailed",
              QT_TRANSLATE_NOOP("MainActions", "Show metar stations failed"),
              QT_TRANSLATE_NOOP("MainActions", "Lists METARs whose station isn't known"),
              Name::MetarStationsFailed, nullptr},
    ActionRow{kDeveloper, "action_ShowSynopsStationFailed",
              QT_TRANSLATE_NOOP("MainActions", "Show synops stations failed"),
              QT_TRANSLATE_NOOP("MainActions", "Lists SYNOPs whose station isn't known"),
              Name::SynopStationsFailed, nullptr},
    Separator(kDeveloper),
    ActionRow{kDeveloper, "action_test_func", QT_TRANSLATE_NOOP("MainActions", "Test func"),
              QT_TRANSLATE_NOOP("MainActions", "Shows the weather radar"),
              Name::Radar, nullptr},
    ActionRow{kDeveloper, "actionTest", QT_TRANSLATE_NOOP("MainActions", "test"),
              QT_TRANSLATE_NOOP("MainActions", "Has no function"),
              Name::Test, nullptr, State::Waits},

    ActionRow{kInfo, "actionCheck_new_version",
              QT_TRANSLATE_NOOP("MainActions", "Check new version"),
              QT_TRANSLATE_NOOP("MainActions", "Asks the info server for a newer version"),
              Name::CheckVersion, nullptr},
    ActionRow{kInfo, "actionAbout", QT_TRANSLATE_NOOP("MainActions", "About"),
              QT_TRANSLATE_NOOP("MainActions", "Version and licences"),
              Name::About, "F1"},
};
// clang-format on

QString Translated(const char* text)
{
    return QCoreApplication::translate("MainActions", text);
}

QString Tip(const ActionRow& row)
{
    return row.state == State::Later
               ? MainActions::tr("%1 (comes with a later version)").arg(Translated(row.tip))
               : Translated(row.tip);
}

} // namespace

MainActions::MainActions(QMainWindow& window) : QObject(&window)
{
    createMenus(window);
    createActions(window);
    retranslateUi();
}

void MainActions::createMenus(QMainWindow& window)
{
    for (const MenuRow& row : kMenus) {
        QMenu* menu = window.menuBar()->addMenu(QString());
        menu->setObjectName(QString::fromLatin1(row.name));
        menu->setToolTipsVisible(true);
        m_menus.insert(menu->objectName(), menu);
    }
}

void MainActions::createActions(QMainWindow& window)
{
    for (const ActionRow& row : kActions) {
        QMenu& target = menu(row.menu);
        if (row.name == nullptr) {
            target.addSeparator();
            continue;
        }
        auto* action = new QAction(Icons::appIcon(row.icon), QString(), &window);
        action->setObjectName(QString::fromLatin1(row.name));
        action->setEnabled(row.state == State::Ready);
        action->setMenuRole(QAction::NoRole);
        if (row.shortcut != nullptr) {
            action->setShortcut(QKeySequence(QString::fromLatin1(row.shortcut)));
        }
        target.addAction(action);
        m_actions.insert(action->objectName(), action);
    }
}

QAction& MainActions::action(const char* objectName) const
{
    QAction* found = m_actions.value(QString::fromLatin1(objectName));
    Q_ASSERT(found != nullptr);
    return *found;
}

QMenu& MainActions::menu(const char* objectName) const
{
    QMenu* found = m_menus.value(QString::fromLatin1(objectName));
    Q_ASSERT(found != nullptr);
    return *found;
}

void MainActions::setConnectText(const QString& text)
{
    m_connected = text == QLatin1String("Disconnect") || text == Controller::tr("Disconnect");
    showConnectState();
}

void MainActions::showConnectState()
{
    QAction& connectAction = action("actionConnect");
    connectAction.setText(m_connected ? tr("Disconnect") : tr("Connect"));
    connectAction.setIcon(Icons::appIcon(m_connected ? Name::Disconnect : Name::Connect));
}

void MainActions::retranslateUi()
{
    for (const MenuRow& row : kMenus) {
        menu(row.name).setTitle(Translated(row.title));
    }
    for (const ActionRow& row : kActions) {
        if (row.name == nullptr) {
            continue;
        }
        QAction& target = action(row.name);
        target.setText(Translated(row.text));
        target.setStatusTip(Tip(row));
        target.setToolTip(Tip(row));
    }
    showConnectState();
}

#include "app/gui/MainActions.h"

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

using Id = MainActions::Id;
using Menu = MainActions::Menu;

struct MenuRow
{
    Menu id;
    const char* name; ///< the object name
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
    Menu menu = Menu();
    Id id = Id();
    const char* name = nullptr; ///< the object name; null is a separator
    const char* text = nullptr;
    const char* tip = nullptr;
    Name icon = Name::Info;
    const char* shortcut = nullptr;
    State state = State::Ready;
};

constexpr std::array kMenus{
    MenuRow{Menu::Cirrilon, "menuCirrilon", QT_TRANSLATE_NOOP("MainActions", "&Cirrilon")},
    MenuRow{Menu::View, "menuView", QT_TRANSLATE_NOOP("MainActions", "&View")},
    MenuRow{Menu::Windows, "menuWindows", QT_TRANSLATE_NOOP("MainActions", "&Windows")},
    MenuRow{Menu::Tools, "menuTools", QT_TRANSLATE_NOOP("MainActions", "&Tools")},
    MenuRow{Menu::DeveloperTools, "menuDeveloper_Tools",
            QT_TRANSLATE_NOOP("MainActions", "&Developer Tools")},
    MenuRow{Menu::Info, "menuInfo", QT_TRANSLATE_NOOP("MainActions", "&Info")},
    MenuRow{Menu::Language, "menuLanguage", QT_TRANSLATE_NOOP("MainActions", "&Language")},
};

constexpr ActionRow separator(Menu menu)
{
    return {menu, {}, nullptr, nullptr, nullptr, Name::Info, nullptr};
}

// clang-format off
constexpr std::array kActions{
    ActionRow{Menu::Cirrilon, Id::Connect, "actionConnect",
              QT_TRANSLATE_NOOP("MainActions", "Connect"),
              QT_TRANSLATE_NOOP("MainActions", "Connects to the simulator, or ends the connection"),
              Name::Connect, "Ctrl+K"},
    ActionRow{Menu::Cirrilon, Id::DownloadWx, "actionDownload_WX",
              QT_TRANSLATE_NOOP("MainActions", "Download WX"),
              QT_TRANSLATE_NOOP("MainActions", "Downloads the weather now"),
              Name::DownloadWeather, "Ctrl+D"},
    ActionRow{Menu::Cirrilon, Id::SetWxIcao, "action_setWxIcao",
              QT_TRANSLATE_NOOP("MainActions", "Set WX"),
              QT_TRANSLATE_NOOP("MainActions", "Set weather for Airport"),
              Name::SetWeather, "Ctrl+U", State::Waits},
    ActionRow{Menu::Cirrilon, Id::ClearWx, "actionClear_WX",
              QT_TRANSLATE_NOOP("MainActions", "Clear WX"),
              QT_TRANSLATE_NOOP("MainActions", "Clears the weather in the simulator"),
              Name::ClearWeather, nullptr},
    separator(Menu::Cirrilon),
    ActionRow{Menu::Cirrilon, Id::LoadWx, "action_loadwx",
              QT_TRANSLATE_NOOP("MainActions", "Load WX"),
              QT_TRANSLATE_NOOP("MainActions", "Loads stored weather"),
              Name::LoadWeather, nullptr, State::Later},
    ActionRow{Menu::Cirrilon, Id::SaveWx, "action_savewx",
              QT_TRANSLATE_NOOP("MainActions", "Save WX"),
              QT_TRANSLATE_NOOP("MainActions", "Stores the present weather"),
              Name::SaveWeather, nullptr, State::Later},
    separator(Menu::Cirrilon),
    ActionRow{Menu::Cirrilon, Id::Settings, "actionSettings",
              QT_TRANSLATE_NOOP("MainActions", "Settings"),
              QT_TRANSLATE_NOOP("MainActions", "Opens the settings"),
              Name::Settings, "Ctrl+,"},
    ActionRow{Menu::Cirrilon, Id::BasicSettings, "actionBasic_Settings",
              QT_TRANSLATE_NOOP("MainActions", "Basic Settings"),
              QT_TRANSLATE_NOOP("MainActions", "The assistant opens by itself at the first start"),
              Name::BasicSettings, nullptr, State::Waits},
    separator(Menu::Cirrilon),
    ActionRow{Menu::Cirrilon, Id::Exit, "actionExit",
              QT_TRANSLATE_NOOP("MainActions", "Exit"),
              QT_TRANSLATE_NOOP("MainActions", "Ends the program"),
              Name::Exit, "Ctrl+Q"},

    ActionRow{Menu::Windows, Id::Flightplanner, "actionFlightplanner",
              QT_TRANSLATE_NOOP("MainActions", "Flightplanner"),
              QT_TRANSLATE_NOOP("MainActions", "Plans a flight with the downloaded winds"),
              Name::FlightPlanner, nullptr, State::Later},
    ActionRow{Menu::Windows, Id::WeatherSearch, "action_weatheSearch",
              QT_TRANSLATE_NOOP("MainActions", "Weather search"),
              QT_TRANSLATE_NOOP("MainActions", "Searches the world for weather"),
              Name::WeatherSearch, nullptr, State::Later},
    ActionRow{Menu::Windows, Id::WeatherEvents, "action_weatherEvents",
              QT_TRANSLATE_NOOP("MainActions", "Weather Events"),
              QT_TRANSLATE_NOOP("MainActions", "Shows recorded weather events"),
              Name::WeatherEvents, nullptr, State::Later},
    ActionRow{Menu::Windows, Id::Flights, "action_flights",
              QT_TRANSLATE_NOOP("MainActions", "Flights"),
              QT_TRANSLATE_NOOP("MainActions", "Shows recorded flights"),
              Name::Flights, nullptr, State::Later},
    ActionRow{Menu::Windows, Id::WeatherRadar, "action_weatherRadar",
              QT_TRANSLATE_NOOP("MainActions", "Weather radar"),
              QT_TRANSLATE_NOOP("MainActions", "Shows the simulator's clouds around the aircraft"),
              Name::Radar, "Ctrl+R"},

    ActionRow{Menu::Tools, Id::AirportList, "actionAirport_List",
              QT_TRANSLATE_NOOP("MainActions", "Airport List"),
              QT_TRANSLATE_NOOP("MainActions", "Adds airports and changed ICAO codes"),
              Name::AirportList, "Ctrl+L"},
    ActionRow{Menu::Tools, Id::AircraftEditor, "actionAircraft_Editor",
              QT_TRANSLATE_NOOP("MainActions", "Aircraft Editor"),
              QT_TRANSLATE_NOOP("MainActions", "Edits the aircraft configurations"),
              Name::AircraftEditor, nullptr, State::Later},
    ActionRow{Menu::Tools, Id::DownloadHistoryWx, "action_downloadHistoryWX",
              QT_TRANSLATE_NOOP("MainActions", "Download History WX"),
              QT_TRANSLATE_NOOP("MainActions", "Downloads weather of the past"),
              Name::DownloadHistory, nullptr, State::Later},
    separator(Menu::Tools),
    ActionRow{Menu::Tools, Id::OpenConfigfile, "actionOpen_Configfile",
              QT_TRANSLATE_NOOP("MainActions", "Open Configfile"),
              QT_TRANSLATE_NOOP("MainActions", "Opens the work folder in the file browser"),
              Name::OpenFolder, nullptr},

    ActionRow{Menu::DeveloperTools, Id::ShowMetarStationsFailed, "action_ShowMetarStationsFailed",
              QT_TRANSLATE_NOOP("MainActions", "Show metar stations failed"),
              QT_TRANSLATE_NOOP("MainActions", "Lists METARs whose station isn't known"),
              Name::MetarStationsFailed, nullptr},
    ActionRow{Menu::DeveloperTools, Id::ShowSynopStationsFailed, "action_ShowSynopsStationFailed",
              QT_TRANSLATE_NOOP("MainActions", "Show synops stations failed"),
              QT_TRANSLATE_NOOP("MainActions", "Lists SYNOPs whose station isn't known"),
              Name::SynopStationsFailed, nullptr},
    separator(Menu::DeveloperTools),
    ActionRow{Menu::DeveloperTools, Id::TestFunc, "action_test_func",
              QT_TRANSLATE_NOOP("MainActions", "Test func"),
              QT_TRANSLATE_NOOP("MainActions", "Shows the weather radar"),
              Name::Radar, nullptr},
    ActionRow{Menu::DeveloperTools, Id::Test, "actionTest",
              QT_TRANSLATE_NOOP("MainActions", "test"),
              QT_TRANSLATE_NOOP("MainActions", "Has no function"),
              Name::Test, nullptr, State::Waits},

    ActionRow{Menu::Info, Id::CheckNewVersion, "actionCheck_new_version",
              QT_TRANSLATE_NOOP("MainActions", "Check new version"),
              QT_TRANSLATE_NOOP("MainActions", "Asks the info server for a newer version"),
              Name::CheckVersion, nullptr},
    ActionRow{Menu::Info, Id::About, "actionAbout",
              QT_TRANSLATE_NOOP("MainActions", "About"),
              QT_TRANSLATE_NOOP("MainActions", "Version and licences"),
              Name::About, "F1"},
};
// clang-format on

/// Every action and every menu has one row, so none is null.
constexpr bool hasOneRowEach()
{
    std::array<int, kActions.size()> rows{};
    for (const ActionRow& row : kActions) {
        if (row.name != nullptr) {
            ++rows[static_cast<std::size_t>(row.id)];
        }
    }
    for (std::size_t id = 0; id <= static_cast<std::size_t>(Id::About); ++id) {
        if (rows[id] != 1) {
            return false;
        }
    }
    return kMenus.size() == static_cast<std::size_t>(Menu::Language) + 1;
}
static_assert(hasOneRowEach());

QString translated(const char* text)
{
    return QCoreApplication::translate("MainActions", text);
}

QString tipOf(const ActionRow& row)
{
    return row.state == State::Later
               ? MainActions::tr("%1 (comes with a later version)").arg(translated(row.tip))
               : translated(row.tip);
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
        m_menus[static_cast<std::size_t>(row.id)] = menu;
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
        m_actions[static_cast<std::size_t>(row.id)] = action;
    }
}

void MainActions::setConnectText(const QString& text, bool connected)
{
    m_connected = connected;
    QAction& connectAction = action(Id::Connect);
    connectAction.setText(text);
    connectAction.setIcon(Icons::appIcon(connected ? Name::Disconnect : Name::Connect));
}

void MainActions::retranslateUi()
{
    for (const MenuRow& row : kMenus) {
        menu(row.id).setTitle(translated(row.title));
    }
    for (const ActionRow& row : kActions) {
        if (row.name == nullptr) {
            continue;
        }
        QAction& target = action(row.id);
        target.setText(translated(row.text));
        target.setStatusTip(tipOf(row));
        target.setToolTip(tipOf(row));
    }
    setConnectText(m_connected ? tr("Disconnect") : tr("Connect"), m_connected);
}

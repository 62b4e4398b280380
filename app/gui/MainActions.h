#pragma once

#include <QObject>
#include <QString>

#include <array>
#include <cstddef>

class QAction;
class QMainWindow;
class QMenu;

/// The menus and actions of the main window with their names, texts, icons and shortcuts. Actions
/// whose function comes with a later version are disabled and say so.
class MainActions : public QObject
{
    Q_OBJECT
public:
    enum class Menu
    {
        Cirrilon,
        View,
        Windows,
        Tools,
        DeveloperTools,
        Info,
        Language
    };
    enum class Id
    {
        Connect,
        DownloadWx,
        SetWxIcao,
        ClearWx,
        LoadWx,
        SaveWx,
        Settings,
        BasicSettings,
        Exit,
        Flightplanner,
        WeatherSearch,
        WeatherEvents,
        Flights,
        WeatherRadar,
        AirportList,
        AircraftEditor,
        DownloadHistoryWx,
        OpenConfigfile,
        ShowMetarStationsFailed,
        ShowSynopStationsFailed,
        TestFunc,
        Test,
        CheckNewVersion,
        About
    };

    /// Puts the menus into the window's menu bar.
    explicit MainActions(QMainWindow& window);

    QAction& action(Id id) const { return *m_actions[static_cast<std::size_t>(id)]; }
    QMenu& menu(Menu id) const { return *m_menus[static_cast<std::size_t>(id)]; }
    /// `text` is "Connect" or "Disconnect" in the user's language; the icon follows `connected`.
    void setConnectText(const QString& text, bool connected);
    void retranslateUi();

private:
    void createMenus(QMainWindow& window);
    void createActions(QMainWindow& window);

    static constexpr std::size_t kActionCount = static_cast<std::size_t>(Id::About) + 1;
    static constexpr std::size_t kMenuCount = static_cast<std::size_t>(Menu::Language) + 1;

    std::array<QAction*, kActionCount> m_actions{};
    std::array<QMenu*, kMenuCount> m_menus{};
    bool m_connected = false;
};

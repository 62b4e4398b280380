#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <vector>

/// The program's own drawings, SVG files on a grid of 24 x 24 under ":/images/". Main thread.
namespace Icons {

/// One drawing each; resourcePath says the file.
enum class Name
{
    // Actions of menus and tool bar
    DownloadWeather,
    Settings,
    Connect,
    Disconnect,
    Exit,
    AirportList,
    AircraftEditor,
    OpenFolder,
    FlightPlanner,
    About,
    CheckVersion,
    WeatherSearch,
    MetarStationsFailed,
    SynopStationsFailed,
    SetWeather,
    Test,
    Radar,
    Flights,
    DownloadHistory,
    ClearWeather,
    BasicSettings,
    LoadWeather,
    SaveWeather,
    WeatherEvents,
    ShowWindow,
    RecordFlight,
    Restart,
    Copy,
    NewWindowOnTop,
    Clear,
    LoadEditor,
    DebugOutput,
    DataPage,
    Language,
    // Buttons of dialogs
    Add,
    Edit,
    Remove,
    Save,
    Refresh,
    Previous,
    Next,
    TestConnection,
    // Pages of the settings
    PageGeneral,
    PageStartup,
    PageWeather,
    PageServers,
    PageInterface,
    PagePaths,
    PageMessages,
    PageRecorder,
    PageUnits,
    PageMap,
    PageAirac,
    PageLogging,
    // Status
    Search,
    Checklist,
    Ok,
    Warning,
    Error,
    Info,
    // The program itself
    Application
};

/// The icon for buttons, actions and lists. Its lines take the text colour of the application's
/// palette at each drawing, for the modes Normal, Active, Disabled and Selected, so that it is
/// readable in light and dark palettes and follows a change of the palette.
QIcon appIcon(Name name);

/// The same drawing for a label: `size` in logical pixels, sharp at `devicePixelRatio`.
QPixmap appPixmap(Name name, const QSize& size, qreal devicePixelRatio = 1.0);

/// The logo with the program's name for the splash screen and the about box, for a white or light
/// background; 440 x 150 logical pixels.
QPixmap logo(qreal devicePixelRatio = 1.0);

/// Path in the resources, ":/images/search" for Search; no suffix.
QString resourcePath(Name name);

/// Every drawing, in the order of Name.
const std::vector<Name>& all();

} // namespace Icons

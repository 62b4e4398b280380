#pragma once

#include "aviation/AircraftData.h"
#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/RadioFrequencys.h"
#include "aviation/Wind.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTime>

/// The weather page as the controller sees it. Main thread.
class WeatherPage
{
public:
    WeatherPage() = default;
    WeatherPage(const WeatherPage&) = delete;
    WeatherPage& operator=(const WeatherPage&) = delete;
    virtual ~WeatherPage() = default;

    /// Adds a report on top of the list; `metar` is decoded. The same text twice in a row is shown
    /// once.
    virtual void displayMetar(const aviation::weather::Metar& metar) = 0;
    /// Normal colours for a known station, a red line for an unknown one.
    virtual void OnBackgroundIcao(const QString& icao, bool known) = 0;
    /// The search button and the line beside it, usable once weather is loaded.
    virtual void OnEnableGetMetarButton(bool enabled) = 0;
    /// ICAO codes that the line completes, regardless of case.
    virtual void setCompleterList(const QStringList& icaos) = 0;
    /// Time of history weather; empty for the present.
    virtual void setWeatherTime(const QString& text) = 0;
    virtual void OnTableGribUpdate(const aviation::weather::Grib& grib) = 0;
};

/// The data page as the controller sees it. Main thread.
class DataPage
{
public:
    DataPage() = default;
    DataPage(const DataPage&) = delete;
    DataPage& operator=(const DataPage&) = delete;
    virtual ~DataPage() = default;

    virtual void setWeatherUpdateInterval(const QString& text) = 0; ///< label_weatherupdateinterval
    virtual void setInfo1(const QString& text) = 0;                 ///< label_info1
    virtual void setSimInterfaceInfo(const QString& text) = 0;      ///< label_sim_interface_info
    virtual void setJobsInfo(const QString& text) = 0;              ///< label_info_jobs
    /// The line of direct wind control: a text and whether it is in use.
    virtual void setDwcState(const QString& text, bool enabled) = 0;
    /// Empties all values of the aircraft and the line of direct wind control.
    virtual void clearData() = 0;
};

/// What a line in the bar at the top of the window is about. A newer line takes the place of an
/// older one about the same.
enum class Notice
{
    Download,   ///< weather that couldn't be fetched; offers to try again
    Export,     ///< reports that couldn't be written for other programs
    Weather,    ///< weather that couldn't be set in the simulator
    Connection, ///< the simulator, its bridge or its stream of aircraft data
    Settings,   ///< settings that couldn't be read or saved
};

/// What the controller needs of the main window; BackendBase and the tests implement it. Everything
/// runs on the main thread. Texts are plain unless said otherwise.
class MainView
{
public:
    MainView() = default;
    MainView(const MainView&) = delete;
    MainView& operator=(const MainView&) = delete;
    virtual ~MainView() = default;

    /// Text of the action Connect, "Connect" or "Disconnect" in the user's language, and whether a
    /// simulator is connected.
    virtual void setConnectText(QString text, bool connected) = 0;
    /// A line for log file and debug dock. `item` is rich text: parts from outside are escaped.
    virtual void OnOutputDebugstring(QString item, int level) = 0;
    virtual void OnStatusbarStatus(QString text) = 0;
    /// A text that stands in the status bar in red, whatever else is put there, until it is empty.
    virtual void showStatusAlarm(const QString& text) = 0;
    /// A line in the bar at the top of the window, in the user's language; it stands until the
    /// pilot closes it or the matter is settled.
    virtual void showNotice(Notice about, const QString& text) = 0;
    virtual void clearNotice(Notice about) = 0;
    /// 0 of 0 with an empty text hides the bar, with a text it is busy.
    virtual void OnProgressBar(qlonglong value, qlonglong total, QString text) = 0;
    /// Applies the user's language to the window.
    virtual void setupLanguage() = 0;
    virtual WeatherPage& pageWeather() = 0;
    virtual DataPage& pageData() = 0;

    virtual void SetAircraftData(aviation::structs::AircraftData& data) = 0;
    /// The aircraft's title, its checklist (may be empty) and whether a configuration was found.
    virtual void SetAircraftName(QString title, QString checklist, bool found) = 0;
    /// The line of direct wind control on the data page: the wind that the simulator gets, or a
    /// text such as the layers of X-Plane.
    virtual void SetTargetWind(aviation::weather::Wind wind) = 0;
    virtual void SetTargetWind(QString text) = 0;
    virtual void SetTargetWindTooltip(QString text) = 0;
    virtual void SetFrequencys(aviation::structs::RadioFrequencys& frequencies) = 0;
    virtual void setSystrayMessage(QString text) = 0;
    /// The action Set WX: whether it is usable, its text, and the ICAO that it carries.
    virtual void setSetWxAction(bool enabled, QString text, QString icao) = 0;
    /// The splash screen of the start, and its end, at which the main window comes up.
    virtual void showSplashMessage(QString text) = 0;
    virtual void closeSplash() = 0;
    /// Closes the window and with it the program.
    virtual void closeProgram() = 0;
};

#pragma once

#include "app/base/JobPosts.h"
#include "app/base/Reporting.h"
#include "aviation/Metar.h"
#include "aviation/Position.h"

#include <QString>

#include <functional>
#include <optional>

class GribSource;
class MainView;
class Settings;
class StopFlag;
class WeatherWorker;
class WeatherWrapper;

/// The reports that the user sees, on the weather page and on the simulator's screen: those near
/// the aircraft, and those of a station that was asked for. Main thread; owned by the controller.
class ReportDisplay
{
public:
    /// What it works with; all of it outlives it.
    struct Parts
    {
        const Settings& settings;
        MainView& view;
        WeatherWrapper& store;
        WeatherWorker& worker; ///< has the results of the searches
        GribSource& gribSource;
        const StopFlag& stop;
        LogFunction log;
        JobPosts posts;
        std::function<bool()> isConnected; ///< to a simulator
    };
    explicit ReportDisplay(Parts parts);

    /// The simulator's screen gets the same text once.
    void show(const aviation::weather::Metar& metar);
    /// The end of the periodic search, job 15; `aircraft` is where the aircraft is now.
    void showAtAircraft(const aviation::Position& aircraft);
    /// The end of the search for a request, job 14.
    void showRequested(const QString& icao, int error, const aviation::Position& aircraft);
    /// The user asks for a station. The event loop runs on while its upper-air data are fetched;
    /// the last request made meanwhile is served afterwards.
    void request(const QString& icao);

private:
    void serve(const QString& icao);
    void searchGribAt(const aviation::Position& position);

    const Parts m_parts;
    QString m_lastShownMetarText;
    std::optional<QString> m_requestedIcao; ///< the next request
    bool m_serving = false;
};

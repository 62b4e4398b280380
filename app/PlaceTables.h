#pragma once

#include "app/base/Reporting.h"
#include "nav/records/NavdataBase.h"

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

#include <memory>

class MainView;
class Settings;
class WeatherWrapper;

/// The places that reports are found by: airports, those of the user among them, and weather
/// stations. Loads them into the store at the start. Main thread; owned by the controller.
class PlaceTables
{
    Q_DECLARE_TR_FUNCTIONS(PlaceTables)
public:
    /// All of it outlives it.
    PlaceTables(const Settings& settings, WeatherWrapper& store, MainView& view, LogFunction log);

    /// Another source of airports than the built-in one; before load().
    void setNavdata(std::unique_ptr<NavdataBase> navdata);
    /// The source in use; null before load() where none was set.
    NavdataBase* navdata() const { return m_navdata.get(); }
    void load();
    /// Reads the user's airports again after they were edited.
    void readUserAirportsAgain();

private:
    QVector<QAirport> readAirports();
    QVector<QAirport> readAdditionalAirports() const;
    void loadAirports();
    void loadWeatherStations();

    const Settings& m_settings;
    WeatherWrapper& m_store;
    MainView& m_view;
    const LogFunction m_log;
    std::unique_ptr<NavdataBase> m_navdata;
    QStringList m_completion; ///< ICAO codes of all airports
};

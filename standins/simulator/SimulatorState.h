#pragma once

#include "aviation/AircraftLoad.h"
#include "aviation/Position.h"
#include "aviation/RadioFrequencys.h"
#include "aviation/Wind.h"
#include "weather/output/records/NewWeather.h"
#include "weather/output/records/XPlaneWeather.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace simulator {

/// A station whose weather the simulator keeps at its place.
struct WeatherStation
{
    QString icao;
    QString name;
    aviation::Position position;
    double elevation = 0.0; ///< feet
};

/// Everything that the stand-in was given. Plain value; lists are bounded, the oldest goes first.
struct SimulatorState
{
    QString clientName;
    QString clientApi;

    // Weather; cleared by "Clear Wx".
    QStringList weatherTexts;                    ///< in the order of their coming
    std::vector<NewWeather> weatherRecords;      ///< in the order of their coming
    std::optional<XPlaneWeather> weatherData;    ///< the last one
    bool weatherDataHasWx = false;               ///< weatherData came in the form with WX
    std::vector<XPlaneWindLayer> windLayers;     ///< the last ones, alone or with weatherData
    std::optional<aviation::weather::Wind> wind; ///< the last one for the aircraft's place
    bool windIsNewest = false;     ///< wind came after the last layers, so it is the one that blows
    std::optional<int> visibility; ///< metres

    QStringList screenTexts;
    QStringList themes;          ///< bare file names of "weather file" messages
    QMap<QString, qint64> files; ///< "weather", "global wind", "turbulence" with their last size
    QByteArray lastFile;         ///< bytes of the last file, at most kKeptFileBytes
    std::vector<WeatherStation> stations; ///< that clients created
    bool customWeather = false; ///< SimConnect's weather mode: observations are taken, else a theme
    int lostObservations = 0;   ///< those that came while a theme held
    QString flightPlan;         ///< path of the last one that was loaded
    int activations = 0;
    int clears = 0;
    int refreshes = 0; ///< FSUIPC's refresh command of FS2004

    aviation::structs::AircraftFuel fuel;
    aviation::structs::AircraftPayload payload;
    aviation::structs::RadioFrequencys radios;
};

inline constexpr int kKeptTexts = 2000;
inline constexpr int kLongestKeptText = 4096; ///< bytes; a longer weather text drops the others
inline constexpr int kKeptFileBytes = 1024 * 1024;

/// The load and the radios before a client changes them.
SimulatorState freshState();

/// A message as it came.
struct ReceivedMessage
{
    int command = 0;
    int id = 0;
    QByteArray data; ///< at most kKeptFileBytes of it
};

} // namespace simulator

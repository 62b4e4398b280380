#pragma once

#include "aviation/FsId.h"
#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "aviation/support/RandomSource.h"
#include "nav/records/QAirport.h"
#include "weather/output/CompositionOptions.h"
#include "weather/output/records/NewWeather.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVector>

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

class Settings;

namespace aviation::weather {
class WeatherManager;
struct StoreListener;
} // namespace aviation::weather

/// The weather of the program: owns the store, turns its wide strings into QString and back, passes
/// its progress and log lines on as signals, and composes records from what it finds. Lives as long
/// as the program on the main thread; the weather worker calls it from its own. The store guards
/// itself; GenerateWeather is for one thread at a time, since it draws random numbers. Signals are
/// emitted on the calling thread.
class WeatherWrapper : public QObject
{
    Q_OBJECT

public:
    /// Settings and random source are not owned and outlive this object.
    WeatherWrapper(const Settings& settings, aviation::RandomSource& random,
                   QObject* parent = nullptr);
    ~WeatherWrapper() override;

    /// Adds an airport of the navigation data to the table; its icao is the key.
    void addAirport(const QAirport& airport);
    void addAirports(const QVector<QAirport>& airports);
    /// Reads the whole table of weather stations: fixed columns, one row a line.
    void setWeatherStations(QStringView text);

    /// Takes a whole text: kind 1 METAR block, 2 SYNOP block, 3 upper-air text, 5 TAF block. False
    /// for an unknown kind, for upper-air text that is an error message, and for METARs or SYNOPs
    /// that are fewer than both `fewest` and those of before, which then stay.
    bool initializeWeather(const QString& text, int kind);
    bool initializeWeather(QStringView text, int kind, std::size_t fewest = 0);
    /// Removes SYNOPs older than the limit; returns how many.
    int deleteOldSynops(int maxAgeSeconds);

    /// False leaves `station` alone.
    bool getStation(const QString& icao, aviation::weather::Station& station) const;
    std::size_t airportCount() const;
    std::size_t stationCount() const;
    std::size_t metarCount() const;
    std::size_t synopCount() const;
    std::size_t tafCount() const;
    std::size_t gribCount() const;
    /// Copies in arrival order.
    std::vector<aviation::weather::Metar> getMetars() const;
    /// The TAF without its leading word; empty when there is none.
    QString GetTaf(const QString& icao) const;
    /// Identifiers of reports that no table places.
    QStringList failedMetarStations() const;
    QStringList failedSynopStations() const;

    /// The nearest reports, decoded; blank objects and false when there is none near enough (3000,
    /// 1000 and 250 NM).
    bool SearchMetar(const aviation::Position& position, aviation::weather::Metar& metar);
    bool SearchSynop(const aviation::Position& position, aviation::weather::Synop& synop);
    bool SearchGrib(const aviation::Position& position, aviation::weather::Grib& grib);
    /// Airports nearer than the range, nearest first.
    void StationsInRange(const aviation::Position& position, int rangeNm,
                         std::vector<aviation::weather::Station>& stations) const;
    /// The nearest airport within 20 NM; without one `station` stays as it is.
    void NearestAirport(const aviation::Position& position,
                        aviation::weather::Station& station) const;

    /// The least level of log lines that somebody takes, loglevel::kDebug at first. Long lines
    /// below it aren't even built; short ones are sent all the same. Callable from any thread.
    void setLeastLogLevel(int level);

    /// Composes a record with the options as they stand now and logs its text. The reports are
    /// decoded; `magneticVariation` in degrees is that of the place. `position` names the place and
    /// takes no part in composing. Returns 0.
    int GenerateWeather(const aviation::weather::Metar& metar,
                        const aviation::weather::Synop& synop, const aviation::weather::Grib& grib,
                        NewWeather& record, double magneticVariation,
                        const aviation::Position& position);
    /// The options as they stand now, the random source, and a log that ends in sigDebugString.
    /// Valid as long as this object.
    CompositionContext compositionContext();

    /// The simulator that weather is composed for. The main thread sets it at each connect, the
    /// composition reads it on any thread; kNone before the first connect, and a lost connection
    /// leaves it.
    void setSimulator(aviation::FsId simulator);
    aviation::FsId simulator() const;

Q_SIGNALS:
    /// 0 of 0 ends a row of progress texts.
    void sigProgress(qlonglong value, qlonglong total, QString text);
    /// A log line; the level as in loglevel.
    void sigDebugString(QString text, int level);

private:
    aviation::weather::StoreListener signalsAsListener();

    bool isLineTaken(int level) const;

    const Settings& m_settings;
    aviation::RandomSource& m_random;
    std::unique_ptr<aviation::weather::WeatherManager> m_store;
    std::atomic<aviation::FsId> m_simulator{aviation::fsid::kNone};
    std::atomic<int> m_leastLogLevel;
};

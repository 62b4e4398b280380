#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Station.h"
#include "aviation/Synop.h"
#include "weather/store/GribManager.h"
#include "weather/store/MetarManager.h"
#include "weather/store/StationTable.h"
#include "weather/store/SynopManager.h"
#include "weather/store/TafManager.h"

#include <QMutex>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace aviation::weather {

/// Kinds of text that WeatherManager::Initialize takes.
namespace storekind {
inline constexpr int kMetar = 1;
inline constexpr int kSynop = 2;
inline constexpr int kUpperAir = 3;
inline constexpr int kTaf = 5;
} // namespace storekind

/// What a store reports to; empty functions hear nothing. The texts go by value so that they may be
/// passed on.
struct StoreListener
{
    /// Progress of a long operation; 0 of 0 ends it.
    std::function<void(int value, int total, std::wstring text)> progress;
    /// A log line; `level` as in loglevel.
    std::function<void(std::wstring text, int level)> debug;
};

/// The weather store: airports and weather stations of the world and the current METAR, SYNOP, TAF
/// and upper-air reports.
///
/// Every operation may be called from any thread. Initialize builds the new table aside and swaps
/// it in, deleteOldSynops changes it in one go, so readers see the old table or the new one. Two
/// Initialize at the same time for the same kind are safe but the later swap wins; the weather
/// worker runs them one after the other. The memory of what went is given back with the lock free.
/// The listener is called on the calling thread and never under the store's lock, so it may ask the
/// store.
class WeatherManager
{
public:
    explicit WeatherManager(StoreListener listener = StoreListener());
    WeatherManager(const WeatherManager&) = delete;
    WeatherManager& operator=(const WeatherManager&) = delete;
    ~WeatherManager();

    /// Appends an airport to the table; its icao, blanks included, is the key.
    void addAirport(Station airport);
    void addAirports(std::vector<Station> airports);
    /// Appends the rows of the weather station resource (see parseStationRow).
    void setWeatherStations(std::wstring_view text);

    /// Takes a whole text of one kind (storekind): a METAR, SYNOP or TAF block replaces all earlier
    /// reports of its kind, upper-air records replace those of the same grid points. With
    /// `noaaFormat` the first METAR of a station stays, otherwise all do. False for an unknown
    /// kind, for upper-air text that is an error message, and for METARs or SYNOPs that are fewer
    /// than both `fewest` and those of before, which then stay.
    bool Initialize(std::wstring_view text, int kind, bool noaaFormat, std::size_t fewest = 0);
    /// Removes the SYNOPs older than the limit and those without a valid position or time. Returns
    /// how many.
    int deleteOldSynops(int maxAgeSeconds);

    std::size_t airportCount() const;
    std::size_t stationCount() const;
    std::size_t metarCount() const;
    std::size_t synopCount() const;
    std::size_t tafCount() const;
    std::size_t gribCount() const;

    /// The airport of that icao; false leaves `station` alone.
    bool getStation(std::wstring_view icao, Station& station) const;
    /// Copies of all METARs in arrival order.
    std::vector<Metar> getMetars() const;
    /// The report without its leading "TAF ", empty when there is none.
    std::wstring GetTaf(std::wstring_view icao) const;
    /// Identifiers of reports that no table places, in order of appearance, one each report.
    std::vector<std::wstring> failedMetarStations() const;
    std::vector<std::wstring> failedSynopStations() const;

    /// The nearest METAR within 3000 NM, decoded; a blank one when there is none. A report that the
    /// three-hour rule finds old is returned as well, and its entry in the store is flagged.
    bool SearchMetar(const Position& position, Metar& metar);
    /// The nearest SYNOP within 1000 NM, decoded; a blank one when there is none.
    bool SearchSynop(const Position& position, Synop& synop);
    /// The nearest upper-air record within 250 NM, decoded; see GribManager::Nearest. True for
    /// status 0.
    bool SearchGrib(const Position& position, Grib& grib);
    /// Replaces `stations` by the airports nearer than the range, nearest first.
    void StationsInRange(const Position& position, int rangeNm,
                         std::vector<Station>& stations) const;
    /// The nearest airport within 20 NM; without one `station` stays as it is.
    void NearestAirport(const Position& position, Station& station) const;

private:
    struct MetarRun;
    struct SynopRun;

    void progress(int value, int total, std::wstring text);
    void debug(std::wstring text, int level);
    bool isQuiet() const;
    void tell(std::size_t value, std::size_t total, std::wstring text);
    /// Progress "<text> <value> from <total>".
    void tellCount(const wchar_t* text, std::size_t value, std::size_t total);
    void tellEnd(const wchar_t* what, std::size_t count);
    /// The same unless the reports of before were kept; returns whether they weren't.
    bool tellReplaced(bool isKept, const wchar_t* what, std::size_t count);

    bool initializeMetars(std::wstring_view text, bool noaaFormat, std::size_t fewest);
    void addMetar(std::wstring_view line, bool noaaFormat, MetarRun& run);
    bool initializeSynops(std::wstring_view text, std::size_t fewest);
    void addSynop(std::wstring_view piece, SynopRun& run);
    bool initializeGribs(std::wstring_view text);
    void storeGribs(std::vector<Grib> gribs);
    void initializeTafs(std::wstring_view text);
    /// Copies a table entry into a report; false when the table has none for the key.
    bool placeReport(const StationTable& table, std::wstring_view key, WeatherBase& report);

    const StoreListener m_listener;
    mutable QMutex m_mutex; ///< guards all below
    mutable StationTable m_airports;
    StationTable m_stations;
    MetarManager m_metars;
    SynopManager m_synops;
    GribManager m_gribs;
    TafManager m_tafs;
    std::vector<std::wstring> m_failedMetars;
    std::vector<std::wstring> m_failedSynops;
};

} // namespace aviation::weather

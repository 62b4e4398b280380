#pragma once

#include "app/base/Settings.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/RandomSource.h"
#include "cli/CliOptions.h"
#include "weather/output/WeatherWrapper.h"

#include <iosfwd>
#include <mutex>
#include <set>

/// The program's objects for one call: settings, store and worker, filled from the store options.
/// Throws CliFailure when an input file is bad.
class CliSession
{
public:
    CliSession(const CliOptions& options, std::ostream& err);
    CliSession(const CliSession&) = delete;
    CliSession& operator=(const CliSession&) = delete;
    /// Says for how many stations there was no upper-air data.
    ~CliSession();

    /// Reads tables, weather file and upper-air text. Used once, before a command asks the store.
    void fillStore();

    /// Runs one job on the worker's thread and waits for its end. Returns the job's result.
    int runJob(const Job& job);
    /// Throws CliFailure with status 1 unless `result` is one of a good end.
    static void requireSuccess(int result);

    WeatherWrapper& store() { return m_store; }
    WeatherWorker& worker() { return m_worker; }
    Settings& settings() { return m_settings; }

private:
    void loadSettings();
    void connectLog();
    void printLog(const QString& text, int level);
    void noteMissingUpperAir(const QString& station);
    void fillAirports();
    void fillStations();
    void fillWeather();
    void fillUpperAir();

    const CliOptions& m_options;
    std::ostream& m_err;
    std::mutex m_errMutex;          ///< lines come from the worker's thread as well
    std::set<QString> m_missingAir; ///< places prepared without upper-air data
    aviation::SeededRandom m_random;
    Settings m_settings;
    WeatherWrapper m_store;
    WeatherWorker m_worker;
};

#pragma once

#include "app/base/GribSource.h"
#include "app/base/JobThread.h"
#include "app/download/WeatherList.h"
#include "aviation/AircraftData.h"
#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "weather/output/WeatherTheme.h"
#include "weather/output/records/NewWeather.h"
#include "weather/output/records/XPlaneWeather.h"

#include <QMutex>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

class Settings;
class WeatherWrapper;

/// The thread of all decoding, searching and preparing of weather. A job may last without limit
/// while it waits for upper-air data; nothing that the main thread calls waits for it but join.
/// The wait gives way when upper-air data are switched off, to giveWay, and to another source in
/// the settings. Created and destroyed on the main thread; the destructor lets a waiting job give
/// way and joins.
class WeatherWorker : public JobThread
{
    Q_OBJECT
public:
    /// Everything handed in must outlive the worker. A null `gribSource` means that there is no
    /// source of upper-air data: nothing waits for any. `roundMs` is the pause after each attempt
    /// to get them that was in vain.
    WeatherWorker(WeatherWrapper& store, const Settings& settings, GribSource* gribSource,
                  int roundMs = gribdownload::kRoundMs, QObject* parent = nullptr);
    ~WeatherWorker() override;

    /// Appends; the caller starts the thread afterwards. Never waits for a running job.
    void addJob(const Job& job);
    /// The user asks for something else: none of the jobs posted so far waits for upper-air data
    /// any longer. One that can't do without them ends with weathererror::kNoGrib. Callable from
    /// any thread.
    void giveWay();

    /// The weather file with its [METAR], [SYNOP] and [TAF] blocks, as job 1 finds it at its start.
    /// Never waits for a running job.
    void setWeatherList(const WeatherList& list);
    void setWeatherText(const QString& text) { setWeatherList({text}); }
    /// The aircraft as the prepare and search jobs see it; called by the main thread only.
    void setAircraftData(const aviation::structs::AircraftData& data);
    /// History weather isn't thinned out by age.
    void setHistoryMode(bool active);
    bool historyMode() const;

    static QString errorText(int error);

    /// What became of the list that was decoded last.
    DecodeOutcome decodeOutcome() const;
    /// Copies of the last results; valid after the finish signal of the job that made them.
    void GetSearchResult(aviation::weather::Metar& metar, aviation::weather::Synop& synop,
                         aviation::weather::Grib& grib) const;
    std::vector<NewWeather> fsuipcRecords() const;
    std::vector<QString> simConnectStrings() const;
    std::vector<QString> xplaneMetarLines() const;
    std::vector<QString> xplaneWindLines() const;
    XPlaneWeather xplaneRecord() const;
    /// Which file of the last theme couldn't be written and why; empty if both could.
    QString themeFault() const;

    /// Composes the record for one station: the nearest reports, labelled with the station's ICAO
    /// unless that is empty. Runs on the calling thread, which must be the worker's, or any while
    /// the worker doesn't run.
    void GenerateStationRecord(const aviation::weather::Station& station, NewWeather& record,
                               double magneticVariation = 0.0);

Q_SIGNALS:
    void sigDebugString(QString text, int level);
    void sigProgress(qlonglong value, qlonglong total, QString text);
    void sigFinishedJob(int job, QString jobname, int error);
    void sigFinishedDecodeWeatherData();
    void sigFinishedDecodeGribData();
    void sigMetarFromWeatherSearch(QString metar);
    /// A place is prepared without upper-air data, since there is none and no source of any.
    void sigUpperAirMissing(QString place);
    /// A job waits for upper-air data of a place: after each attempt that was in vain.
    void sigWaitsForUpperAir(QString place);
    void sigUpperAirWaitEnded();

private:
    /// The three reports that stand for a place, and whether each was found.
    struct Reports
    {
        aviation::weather::Metar metar;
        aviation::weather::Synop synop;
        aviation::weather::Grib grib;
        bool metarFound = false;
        bool synopFound = false;

        bool any() const { return metarFound || synopFound; }
    };
    struct Results
    {
        DecodeOutcome decode;
        std::vector<NewWeather> fsuipcRecords;
        std::vector<QString> simConnectStrings;
        std::vector<QString> xplaneMetarLines;
        std::vector<QString> xplaneWindLines;
        XPlaneWeather xplaneRecord;
        QString themeFault;
        aviation::weather::Metar metar;
        aviation::weather::Synop synop;
        aviation::weather::Grib grib;
    };
    using Stations = std::vector<aviation::weather::Station>;
    using StationStep = std::function<void(const aviation::weather::Station&)>;

    int perform(Job& job, int before) override;
    void jobDone(const Job& job, int result) override;
    void log(const QString& text, int level) override;

    WeatherList weatherList();
    int dispatch(const Job& job);
    int decodeWeather();
    bool takeList(const WeatherList& list);
    bool takeExternal(const WeatherList& list, QStringView metars, QStringView synops);
    bool isGood(const WeatherList& list) const;
    void keepForNextStart(const WeatherList& list);
    int decodeGrib();

    /// A METAR or SYNOP is near enough to the aircraft: without one weather would be invented.
    bool hasReportAtAircraft();
    int PrepareWeatherFSUIPC(const Job& job);
    int prepareFsuipcStation(const Job& job);
    int PrepareWeatherSimConnect(const Job& job);
    int prepareSimConnectStation(const Job& job);
    /// The stations of jobs 2 and 5, each handed to `step` with its progress text.
    void forEachStation(const Job& job, const QString& title, const StationStep& step);
    /// These two compose for one station; false if no report stands for it.
    bool stationRecord(const aviation::weather::Station& station, NewWeather& record,
                       double magneticVariation);
    bool prepareSimConnectString(const aviation::weather::Station& station);
    Reports reportsForStation(const aviation::weather::Station& station);

    int prepareXPlaneRecord(bool xplane12);
    Reports reportsForXPlane(const aviation::Position& position);
    int PrepareWeatherXPlane();
    void appendXPlaneLines(const aviation::weather::Station& station);

    int PrepareWeatherFile(const Job& job);
    ThemeStation themeStation(const aviation::Position& place, double magneticVariation);
    void logThemeSynopError(const Reports& reports);
    void logThemeGribError(const Reports& reports);

    int SearchNearstWeather(const Job& job);
    bool searchPosition(const Job& job, aviation::Position& position, int& result);
    int weatherSearch(const Job& job);

    /// Searches the upper-air record; with weather/griboff there never is one.
    bool searchGrib(const aviation::Position& position, aviation::weather::Grib& grib);
    /// Asks the source once.
    bool askForGrib(const aviation::Position& position, aviation::weather::Grib& grib);
    /// Asks the source until there is a record, the wait gives way, or there is no source.
    void waitForGrib(const aviation::Position& position, const QString& place,
                     aviation::weather::Grib& grib);
    bool mayDownloadGrib() const;
    /// Whether a job has to go on without the data that it asks for.
    bool mustGiveWay() const;
    bool mayWait() const { return mayDownloadGrib() && !mustGiveWay(); }
    /// Whether the running job goes on no further.
    bool isGivenUp() const { return m_gaveWay || stopped(); }
    /// What the settings say of where upper-air data come from; another text for another source.
    QString upperAirSource() const;

    aviation::structs::AircraftData aircraftData() const;

    WeatherWrapper& m_store;
    const Settings& m_settings;
    GribSource* m_gribSource;
    const int m_roundMs;
    std::atomic<std::uint64_t> m_posted{0};  ///< jobs
    std::atomic<std::uint64_t> m_giveWay{0}; ///< so many of them don't wait
    // The thread's, as long as a job runs.
    std::uint64_t m_taken = 0; ///< jobs, with the one that runs
    bool m_gaveWay = false;    ///< the running job
    QString m_askedSource;     ///< where upper-air data were asked for the last time
    QMutex m_textMutex;
    WeatherList m_weatherList; ///< guarded by m_textMutex
    QString m_gribText;        ///< what job 12 decodes; nothing fills it, downloads feed the store
    ThemeGrid m_previousGrid;  ///< of the last theme; touched by jobs only
    std::atomic<bool> m_historyMode{false};
    mutable QMutex m_aircraftMutex;
    aviation::structs::AircraftData m_aircraftData; ///< guarded by m_aircraftMutex
    mutable QMutex m_resultMutex;
    Results m_results; ///< guarded by m_resultMutex
};

#pragma once

#include "app/ControllerParts.h"
#include "app/base/JobPosts.h"
#include "app/base/NavdataProvider.h"
#include "app/base/Reporting.h"
#include "app/base/StopFlag.h"
#include "app/base/WeatherProvider.h"
#include "app/cycle/CycleCounters.h"
#include "app/cycle/LapClock.h"
#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

class AircraftDatagrams;
class ConnectJobLog;
class ConnectWorker;
class DirectWind;
class FlightState;
class GlobalWindDownload;
class GribDownload;
class PlaceTables;
class PreparedWeather;
class ReportDisplay;
class SimulatorLink;
class UpdateCheck;
class UpperAirWait;
class WeatherDownload;
class WeatherWorker;
class WeatherWrapper;
struct WeatherList;

/// The spine of the program: it decides when weather is downloaded, searched and set, and posts the
/// next job for every finished one; each download, dialogue and hand-over is an object of its own.
/// Main thread only; owned by the window or a test. Nothing is chained inside a worker: each result
/// comes back here as a signal.
class Controller : public QObject, public NavdataProvider, public WeatherProvider
{
    Q_OBJECT
public:
    /// Builds its parts, creates the working folders, sweeps the temporary one and schedules
    /// OnStart. Doesn't touch the network.
    explicit Controller(const ControllerParts& parts, QObject* parent = nullptr);
    /// Raises the stop flag, stops the timers and joins both workers: within three seconds whatever
    /// they wait for.
    ~Controller() override;

    ConnectWorker& connectWorker() { return *m_connectWorker; }
    WeatherWorker& weatherWorker() { return *m_weatherWorker; }
    WeatherWrapper& weather() { return *m_weather; }
    bool IsConnected() const;
    const aviation::structs::AircraftData& aircraft() const { return m_aircraftData; }

    /// Outlives the controller. Without one there is no phase that blocks, and no destination.
    void setFlightState(const FlightState& flight) { m_flight = &flight; }
    /// Another source of airports than the built-in one; before OnStart.
    void setNavdata(std::unique_ptr<NavdataBase> navdata);
    /// Makes everything that waits give way, as the destructor does, and nothing is posted any
    /// more. Callable from any thread; there is no way back.
    void requestStop() { m_stop.raise(); }

    /// Fetches the report file of a source (1 VATSIM, 2 IVAO, 3 NOAA) and starts the decode.
    void DownloadWeather(int source);
    /// Upper-air data around a position, as a GribSource fetches them.
    int DownloadGrib(const aviation::Position& position, bool single);
    /// After each X-Plane weather that is written as files.
    void DownloadXPlaneGlobalWind();
    void SwitchWeatherServer();
    void DoDisplayMetar(const aviation::weather::Metar& metar);
    NavdataBase* navdata() override;
    [[nodiscard]] int GetWeather(const aviation::Position& position,
                                 aviation::weather::Metar& metar, aviation::weather::Synop& synop,
                                 aviation::weather::Grib& grib) override;

public Q_SLOTS:
    void OnStart();
    void OnTimerOneSecond();
    void OnTimerWeather();
    /// Connects or disconnects. Deliberately waits on the main thread until the job is done.
    void OnConnectClicked();
    /// Forces a weather update at the next tick of the weather clock.
    void OnClickedSetWX();
    void OnClearWX();
    void OnDownloadWeather();
    void OnDownloadWeatherFinished(QString filename, int error);
    void OnDownloadError(int errNum, QString errStr);
    void OnGetMetarClicked(QString icao);
    void OnJobConnectWorkerFinished(int jobId, QString jobName, int error);
    void OnJobWeatherWorkerFinished(int job, QString jobname, int error);
    void OnJobWeatherWorkerFinishedDecodeWeatherdata();
    void OnNewJobConnectworker(Job job);
    void OnDebugString(QString item, int level);
    void OnProgressBar(qlonglong value, qlonglong total, QString text);
    void OnRadioChangedByUser(aviation::structs::RadioFrequencys freqs);
    void OnSendFlightplan(QString filename);
    /// Asks the simulator for the clouds around the aircraft: `range` from the middle to a corner
    /// in NM, `tilt` the height of what is looked at in feet. The answer is sigCloudsRGB.
    void OnRequestCloudsRGB(int range, int tilt);
    void onDownloadFileInfo();
    void OnDownloadFileInfoFinished(QString filename, int error);
    void OnDownloadFileInfoError(int errNum, QString errStr);
    void onCheckNewVersion();
    void udpReadReady();
    void OnShowMetarStationsFailed();
    void OnShowSynopStationsFailed();
    void OnTableGribUpdate(aviation::weather::Grib grib);
    /// Reads the user's airports again after they were edited.
    void onAirportListChanged();

Q_SIGNALS:
    void sigProgress(qlonglong value, qlonglong total, QString text);
    void sigDebugString(QString item, int level);
    void sigFinishedJob(int job, QString jobname);
    void sigFinishJobForAircraftEditor(int job, QString jobname, int error);
    void sigIsConnected(int interfaceType);
    /// Cloud densities as the simulator gives them, row by row; of any length.
    void sigCloudsRGB(const std::vector<unsigned char>& clouds);
    /// Resources are loaded and the window may be used.
    void sigStarted();

private:
    void makeWorkers(const ControllerParts& parts, const DownloadContext& context);
    void makeDownloads(const ControllerParts& parts, const DownloadContext& context);
    void makeJobParts(const ControllerParts& parts);
    void makeStream(const StreamTimes& times);
    void makeTimers();
    Reporting makeReporting();
    JobPosts makePosts();
    void LoadResources();

    // Weather cycle
    cycle::Simulator simulator() const;
    void beginDownload();
    void decodeWeatherList(const WeatherList& list);
    void goOnWithoutDownload();
    void startWeatherClock();
    void showTimes(double distanceNm);
    void downloadIfDue();
    void downloadWithoutAircraft();
    bool isAircraftThere();
    void stepDirectWind();
    bool isLowWindMissing() const;
    bool isUrgent();
    void searchNearestIfDue();
    bool approachBlocks();
    bool hasReports() const;
    void startUpdate();
    void updateGaveWay();
    void dropPrepared();
    void resumeWeatherClock();
    void waitsForUpperAir(const QString& place);
    void UpdateXPlaneVisibility();
    void UpdateDirectWindControl();
    void takeDirectWindReports(int error);
    void takePrepared(int job, const QString& name, int error);
    void goOnWithLastWeather();
    void exportMetarFile(bool isAsked);

    // Finished jobs of the simulator worker
    void handleConnectJob(int jobId, const QString& jobName, int error);
    void globalWindSent(int jobId, int error);
    void handleRecordJob(int jobId);
    void connected();
    void showConnection();
    void showDisconnected();
    QString streamAddress() const;
    void streamFellSilent();
    void takeDatagram(const aviation::structs::AircraftData& aircraft, bool isAnswer);
    void aircraftDataFinished();
    void stationCreated(const QString& text, int error);
    void simulatorMetar(const QString& text);
    void flightPlanSent(const QString& name, int error);

    Settings& m_settings;
    MainView& m_view;
    UserDialogs& m_dialogs;
    StopFlag m_stop;
    const Reporting m_reporting;
    const JobPosts m_posts;
    // In the order of need: each is given some of those above it.
    std::unique_ptr<WeatherWrapper> m_weather;
    std::unique_ptr<ConnectWorker> m_connectWorker;
    std::unique_ptr<GribDownload> m_gribDownload; ///< the weather worker calls it
    std::unique_ptr<WeatherWorker> m_weatherWorker;
    std::unique_ptr<WeatherDownload> m_weatherDownload;
    std::unique_ptr<GlobalWindDownload> m_globalWindDownload;
    std::unique_ptr<UpdateCheck> m_updateCheck;
    std::unique_ptr<AircraftDatagrams> m_datagrams;
    std::unique_ptr<SimulatorLink> m_link;
    std::unique_ptr<ConnectJobLog> m_connectJobLog;
    std::unique_ptr<DirectWind> m_directWind;
    std::unique_ptr<PreparedWeather> m_preparedWeather;
    std::unique_ptr<UpperAirWait> m_upperAirWait;
    std::unique_ptr<ReportDisplay> m_reportDisplay;
    std::unique_ptr<PlaceTables> m_placeTables;
    const FlightState* m_flight = nullptr;

    QTimer m_timerOneSecond{this}; ///< polls the simulator
    QTimer m_timerWeather{this};   ///< the weather clock, one second
    LapClock m_weatherClock;
    LapClock m_sinceDownload; ///< began, with a simulator or without
    CycleCounters m_counters;
    bool m_inWeatherTick = false;
    bool m_forceWeatherUpdate = false;
    bool m_updateOwed = false;       ///< one that gave way to something else
    bool m_clearedOnConnect = false; ///< and no weather was set since
    bool m_weatherDecoded = false;
    bool m_reportsMissing = false; ///< the last update found none; said already
    aviation::Position m_lastUpdatePosition;
    aviation::structs::AircraftData m_aircraftData;
    bool m_aircraftDataValid = false;
    QString m_aircraftTitle; ///< the last one that was shown
    aviation::structs::AircraftPayload m_aircraftPayload;
    aviation::structs::AircraftFuel m_aircraftFuel;
};

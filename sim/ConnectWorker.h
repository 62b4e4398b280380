#pragma once

#include "app/base/JobThread.h"
#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/FsId.h"
#include "aviation/RadioFrequencys.h"
#include "sim/FsInterfaceExtras.h"
#include "weather/output/records/NewWeather.h"

#include <QByteArray>
#include <QMutex>
#include <QString>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class FsInterfaceBase;
class FsInterfaceFactory;
class Settings;
class StopFlag;

/// The one thread that talks to a simulator. It owns the interface object and the last values that
/// came from it; every member that two threads use is guarded, and getters give copies. Created and
/// destroyed on the main thread; the destructor lets a waiting job give way and joins.
class ConnectWorker : public JobThread
{
    Q_OBJECT
public:
    /// Everything handed in must outlive the worker.
    ConnectWorker(const Settings& settings, FsInterfaceFactory& interfaces, const StopFlag& stop,
                  QObject* parent = nullptr);
    ~ConnectWorker() override;

    /// Appends; the caller starts the thread afterwards. Never waits for a running job.
    bool AddJob(const Job& job);

    bool IsConnected() const;
    /// Interface identifier after a connect (aviation::interfaceid, or a bridge server's 6 to 8).
    int interfaceType() const;
    aviation::FsId fsVersion() const;
    QString fsName() const;
    QString interfaceName() const;
    static QString errorText(int error);
    /// The addresses of the connection to a bridge server; null ones without it.
    BridgeEnds bridgeEnds() const;
    /// Whether the simulator's side has answered all writes of the last weather job.
    bool weatherAnswered() const { return m_weatherAnswered; }

    aviation::structs::AircraftData aircraftData() const;
    aviation::structs::AircraftFuel fuel() const;
    void setFuel(const aviation::structs::AircraftFuel& fuel);
    aviation::structs::AircraftPayload payload() const;
    void setPayload(const aviation::structs::AircraftPayload& payload);
    aviation::structs::RadioFrequencys radios() const;
    void setRadios(const aviation::structs::RadioFrequencys& radios);
    /// The last cloud map of SimConnect.
    std::vector<std::uint8_t> cloudState() const;

    /// The weather that waits to be set by jobs 13 and 17.
    void setWeatherRecords(const std::vector<NewWeather>& records);
    void setMetars(const std::vector<QString>& metars);
    void setWinds(const std::vector<QString>& winds);

public Q_SLOTS:
    /// Stored only.
    void SetEvent(int event);
    void DataReceived(const QByteArray& byteArray);
    void OnDebugString(const QString& item, int level);

Q_SIGNALS:
    /// `jobName` is the result text for the jobs that have one.
    void sigJobFinish(int jobId, QString jobName, int error);
    void sigOutputDebugString(QString item, int level);
    void sigProgressBar(qlonglong value, qlonglong total, QString text);
    void sigDataReceived(QByteArray byteArray);

private:
    using Work = int (ConnectWorker::*)(Job&);
    /// How a job is done.
    struct JobRow
    {
        int id;
        bool needsInterface; ///< without an interface it isn't begun
        Work work;
    };
    static const JobRow* rowOf(int jobId);

    /// What the interface said of itself at the last connect.
    struct Identity
    {
        int interfaceId = 0;
        QString interfaceName;
        aviation::FsId fsVersion = aviation::fsid::kNone;
        QString fsName;
        BridgeEnds ends;
    };
    /// Weather of jobs 13 and 17.
    struct WaitingWeather
    {
        std::vector<NewWeather> records;
        std::vector<QString> metars;
        std::vector<QString> winds;
    };

    int perform(Job& job, int before) override;
    void jobDone(const Job& job, int result) override;
    QString nameForLog(const Job& job) const override;
    void log(const QString& text, int level) override;
    void dropInterface();
    int confirmed(int result);
    bool goesOn(int result) const;
    void claimWeather(const QString& text);
    void tellWeatherDone(int result);

    int connectSimulator(Job& job);
    void createInterface();
    void detectInterface();
    void tryBothInterfaces();
    bool adopt(int interfaceId);
    int connectObject();
    void readIdentity();
    void logNotFound(const QString& origin, int result);
    int disconnectSimulator(Job& job);
    Identity identity() const;
    void setIdentity(const Identity& identity);

    int getAircraftData(Job& job);
    int getFuel(Job& job);
    int setFuelInSimulator(Job& job);
    int getPayload(Job& job);
    int setPayloadInSimulator(Job& job);
    int getRadioFrequencys(Job& job);
    int setRadioFrequencys(Job& job);
    int loadFlightPlan(Job& job);
    int sendText(Job& job);
    int getDateTime(Job& job);
    int requestServerConfig(Job& job);
    int announceAddress(Job& job);
    int notImplemented(Job& job);
    int checkLink(Job& job);
    int wrongVersion(Job& job);

    int setWaitingWeather(Job& job);
    int setTextBlock(const WaitingWeather& weather);
    int setObservations(const std::vector<QString>& metars);
    int setRecords(const std::vector<NewWeather>& records);
    void tellProgress(const QString& station, std::size_t done, std::size_t total);
    int setTheme(Job& job);
    int setXPlaneWeather(Job& job);
    int setWindLayers(Job& job);
    int setWindAtAircraft(Job& job);
    int setVisibility(Job& job);
    int setGlobalWind(Job& job);
    int setTurbulence(Job& job);
    int activateWeather(Job& job);
    int clearWeather(Job& job);
    int createStation(Job& job);
    int weatherAt(Job& job);
    int cloudMap(Job& job);

    const Settings& m_settings;
    FsInterfaceFactory& m_interfaces;
    std::unique_ptr<FsInterfaceBase> m_interface; ///< the thread's, or the owner's while none runs
    bool m_weatherTaken = false;   ///< by the simulator, some of what this job has sent
    int m_loggedAircraftError = 0; ///< as m_interface; a fault of every poll is said once
    std::atomic<int> m_event{0};
    std::atomic<bool> m_connected{false};
    std::atomic<bool> m_weatherAnswered{true};

    mutable QMutex m_stateMutex; ///< guards all below
    Identity m_identity;
    WaitingWeather m_weather;
    aviation::structs::AircraftData m_aircraftData;
    aviation::structs::AircraftPayload m_payload;
    aviation::structs::AircraftFuel m_fuel;
    aviation::structs::RadioFrequencys m_radios;
    std::vector<std::uint8_t> m_cloudState;
    QByteArray m_received; ///< the last data from the bridge
};

#pragma once

#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceExtras.h"
#include "sim/PollFailures.h"
#include "sim/SimConnectClient.h"

#include <cstdint>
#include <deque>
#include <initializer_list>
#include <memory>

class SimulatorClients;
class StopFlag;

/// FSX and its successors through SimConnect. Requests go out, and their answers are fetched by
/// polling for half a second at most. An operation of an object that isn't connected gives
/// simresult::kNotConnected; simresult::kTimeout says that the simulator ended, or that the
/// aircraft couldn't be read, or no weather text sent, five times in a row.
class FsInterfaceSimConnect final : public FsInterfaceBase, public SimConnectOperations
{
    Q_OBJECT
public:
    /// The library is loaded by the first Connect, also from `simulatorFolder`, which may be empty.
    /// `clients` and `stop` outlive the object.
    FsInterfaceSimConnect(SimulatorClients& clients, QString simulatorFolder, const StopFlag& stop,
                          QObject* parent = nullptr);
    ~FsInterfaceSimConnect() override;

    int Connect() override;
    int Disconnect() override;
    int ClearWeather() override;
    /// `id` is 0 when the simulator's version isn't known here.
    int GetFsVersion(aviation::FsId& id, QString& name) override;
    int GetInterface(int& id, QString& name) override;
    /// Cut to 1023 bytes.
    int SendText(const std::string& text, int seconds) override;
    /// The newest state: what came late for an earlier call is given where nothing newer comes.
    int GetAircraftData(aviation::structs::AircraftData& data) override;
    /// 0 also without an answer; the list stays then.
    int GetAircraftPayload(aviation::structs::AircraftPayload& payload) override;
    int SetAircraftPayload(const aviation::structs::AircraftPayload& payload) override;
    /// 0 also without an answer; the list stays then.
    int GetAircraftFuel(aviation::structs::AircraftFuel& fuel) override;
    int SetAircraftFuel(const aviation::structs::AircraftFuel& fuel) override;
    /// A text of 1024 or more bytes is refused.
    int SetWeatherText(const QString& text) override;
    int SetWeatherTheme(const std::string& name) override;
    /// 0 also without an answer; the observation stays then.
    int GetWeatherAt(QString& observation, double latitude, double longitude) override;
    int CreateStation(const std::string& icao, const std::string& name, float latitude,
                      float longitude, float elevation) override;
    int GetRadioFrequencys(aviation::structs::RadioFrequencys& radios) override;
    int LoadFlightPlan(const QString& path) override;

    int setCustomWeatherMode() override;
    int GetCloudState(const CloudArea& area, std::vector<std::uint8_t>& map) override;

    /// One dispatch round: fetches one message, if one waits. For the interface that has this one
    /// as a member.
    SimConnectReply Dispatch();
    /// Takes in what waits; the fifth in a row that can't be fetched ends the link. Says nothing of
    /// the polls: of a simulator that hangs nothing waits.
    int checkLink() override;

private:
    /// What came last, each whole.
    struct Answers
    {
        aviation::structs::AircraftData aircraft;
        aviation::structs::AircraftFuel fuel;
        aviation::structs::AircraftPayload payload;
        aviation::structs::RadioFrequencys radios;
        std::vector<std::uint8_t> cloudState;
    };

    /// A request for an observation whose answer is still to come.
    struct WeatherRequest
    {
        std::uint32_t packet;
        std::int64_t sentMs; ///< of the monotonic clock
    };

    bool openClient();
    static constexpr int kRounds = 10;
    static constexpr int kManyRounds = 50; ///< for what takes the simulator longer

    /// Fetches until one of these came, at most so many times with pauses between.
    SimConnectReplies WaitForMessages(std::initializer_list<SimConnectReply> awaited,
                                      int rounds = kRounds);
    /// Fetches all that waits. The newest of each kind counts.
    SimConnectReplies takeWaiting();
    void takeReply(SimConnectReply reply);
    void logException();
    void noteRefusal();
    void noteObservation();
    void noteWeatherRequest();
    int countWeather(simconnect::Result result, SimConnectReply fetched);
    /// The result, or that the simulator has ended.
    int unlessEnded(int result) const;
    int resultOf(const SimConnectReplies& came, SimConnectReply awaited) const;
    int pollAircraft(aviation::structs::AircraftData& data);
    int takeAircraft(aviation::structs::AircraftData& data);
    bool answersWhilePaused(const SimConnectReplies& late, const SimConnectReplies& came);
    void keepAircraft();
    void keepAnswers();
    /// False when the request couldn't be sent.
    bool sendRequest(const SimConnectRequest& request, const QString& name);
    void logSentId(const QString& name);
    bool isPaused();
    void sleepUnlessStopped(int milliseconds) const;
    void log(const QString& text, int level);

    SimulatorClients& m_clients;
    QString m_simulatorFolder;
    const StopFlag& m_stop;
    std::unique_ptr<SimConnectClient> m_client; ///< null until the library was found
    Answers m_answers;
    PollFailures m_polls;
    PollFailures m_checks;
    PollFailures m_weatherTexts;
    std::deque<WeatherRequest> m_weatherRequests;
    bool m_newAircraft = false;      ///< came, and was given to nobody yet
    std::int32_t m_landingRate = 0;  ///< the same of the landing, which is in one answer only
    int m_aircraftRequests = 0;      ///< since the last pause check
    bool m_toldFailure = false;      ///< said once until the aircraft is read again
    bool m_toldCloudFailure = false; ///< the same of the clouds
    bool m_toldClock = false;        ///< that the simulator's clock shows no time
};

#pragma once

#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceExtras.h"
#include "sim/FsuipcClient.h"
#include "sim/PollFailures.h"

#include <cstdint>

class SimulatorClients;
class StopFlag;

/// The simulator through FSUIPC: FS2004 and older ones alone, newer ones besides SimConnect. The
/// codes 0 and 1 of FSUIPC are success, those of a closed link become simresult::kTimeout, every
/// other simresult::kNotConnected, after a line in the log that says which. Five polls of the
/// aircraft that fail in a row give simresult::kTimeout as well.
class FSInterfaceFSUIPC final : public FsInterfaceBase, public FsuipcOperations
{
    Q_OBJECT
public:
    /// `clients` is asked for the library at Connect; `simulatorFolder` may be empty. Both
    /// references outlive the object.
    FSInterfaceFSUIPC(SimulatorClients& clients, const QString& simulatorFolder,
                      const StopFlag& stop, QObject* parent = nullptr);

    int Connect() override;
    int Disconnect() override;
    int ClearWeather() override;
    int GetFsVersion(aviation::FsId& id, QString& name) override;
    int GetInterface(int& id, QString& name) override;
    /// FSUIPC shows a text for five seconds, whatever is asked for.
    int SendText(const std::string& text, int seconds) override;
    /// simresult::kPaused while the simulator stands.
    int GetAircraftData(aviation::structs::AircraftData& data) override;
    /// What a station holds comes as its maximum.
    int GetAircraftPayload(aviation::structs::AircraftPayload& payload) override;
    /// Stations without a load keep theirs.
    int SetAircraftPayload(const aviation::structs::AircraftPayload& payload) override;
    int GetAircraftFuel(aviation::structs::AircraftFuel& fuel) override;
    int SetAircraftFuel(const aviation::structs::AircraftFuel& fuel) override;
    /// simresult::kRefused when the simulator didn't count the record within half a second.
    int SetWeatherRecord(const NewWeather& record) override;
    /// Does nothing with a wind that isn't known or faster than 200 knots.
    int SetWindAtAircraft(const aviation::weather::Wind& wind) override;
    /// At the aircraft, whatever place is asked for.
    int GetWeatherAt(QString& observation, double latitude, double longitude) override;
    int GetRadioFrequencys(aviation::structs::RadioFrequencys& radios) override;
    int SetRadioFrequencys(const aviation::structs::RadioFrequencys& radios) override;

    int writeWeatherCommand(std::uint16_t word) override;

private:
    bool load();
    /// Processes what is queued; a code of simresult.
    int process();
    int readAircraft(aviation::structs::AircraftData& data);
    int readTank(std::size_t index, aviation::structs::AircraftFuel& fuel);
    int awaitWeatherCount();
    void log(const QString& text, int level);

    SimulatorClients& m_clients;
    QString m_simulatorFolder;
    const StopFlag& m_stop;
    FsuipcClient m_client;
    PollFailures m_polls;
    bool m_saidMissing = false;       ///< that there is no library
    std::uint32_t m_loggedFault = 0;  ///< said once until the aircraft is read again
    bool m_weatherCountKnown = false; ///< since the first weather record
    std::uint32_t m_weatherCount = 0; ///< weather writes that the simulator had counted
};

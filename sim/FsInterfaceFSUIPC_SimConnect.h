#pragma once

#include "sim/FSInterfaceFSUIPC.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceExtras.h"
#include "sim/FsInterfaceSimConnect.h"

/// Both ways into one simulator: FSUIPC reads the aircraft and its load, SimConnect takes the
/// weather and the texts.
class FsInterfaceFSUIPC_SimConnect final : public FsInterfaceBase, public SimConnectOperations
{
    Q_OBJECT
public:
    /// As the two members take them.
    FsInterfaceFSUIPC_SimConnect(SimulatorClients& clients, const QString& simulatorFolder,
                                 const StopFlag& stop, QObject* parent = nullptr);

    /// Always tries both.
    int Connect() override;
    /// SimConnect's part is closed when the object is deleted.
    int Disconnect() override;
    int ClearWeather() override;
    int GetFsVersion(aviation::FsId& id, QString& name) override;
    int GetInterface(int& id, QString& name) override;
    int SendText(const std::string& text, int seconds) override;
    /// Looks after SimConnect's link as well.
    int GetAircraftData(aviation::structs::AircraftData& data) override;
    int GetAircraftPayload(aviation::structs::AircraftPayload& payload) override;
    int SetAircraftPayload(const aviation::structs::AircraftPayload& payload) override;
    int GetAircraftFuel(aviation::structs::AircraftFuel& fuel) override;
    int SetAircraftFuel(const aviation::structs::AircraftFuel& fuel) override;
    int SetWeatherText(const QString& text) override;
    int SetWeatherRecord(const NewWeather& record) override;
    int SetWeatherTheme(const std::string& name) override;
    int SetWindAtAircraft(const aviation::weather::Wind& wind) override;
    int GetWeatherAt(QString& observation, double latitude, double longitude) override;
    int CreateStation(const std::string& icao, const std::string& name, float latitude,
                      float longitude, float elevation) override;
    int GetRadioFrequencys(aviation::structs::RadioFrequencys& radios) override;
    int SetRadioFrequencys(const aviation::structs::RadioFrequencys& radios) override;
    int LoadFlightPlan(const QString& path) override;

    int setCustomWeatherMode() override;
    int GetCloudState(const CloudArea& area, std::vector<std::uint8_t>& map) override;

private:
    FSInterfaceFSUIPC m_fsuipc;
    FsInterfaceSimConnect m_simConnect;
};

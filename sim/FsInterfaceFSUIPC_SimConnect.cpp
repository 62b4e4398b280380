#include "sim/FsInterfaceFSUIPC_SimConnect.h"

namespace {

bool isConnectedCode(int result)
{
    return result == simresult::kNone || result == simresult::kAlreadyConnected;
}

/// But for the end of the link, which ends the worker's run.
int failedIfPositive(int result)
{
    return result > 0 && result != simresult::kTimeout ? simresult::kCallFailed : result;
}

} // namespace

FsInterfaceFSUIPC_SimConnect::FsInterfaceFSUIPC_SimConnect(SimulatorClients& clients,
                                                           const QString& simulatorFolder,
                                                           const StopFlag& stop, QObject* parent)
    : FsInterfaceBase(parent)
    , m_fsuipc(clients, simulatorFolder, stop)
    , m_simConnect(clients, simulatorFolder, stop)
{
    // Direct, so that the lines of both keep their order.
    connect(&m_fsuipc, &FsInterfaceBase::sigDebugString, this,
            &FsInterfaceFSUIPC_SimConnect::OnDebugString, Qt::DirectConnection);
    connect(&m_simConnect, &FsInterfaceBase::sigDebugString, this,
            &FsInterfaceFSUIPC_SimConnect::OnDebugString, Qt::DirectConnection);
}

int FsInterfaceFSUIPC_SimConnect::Connect()
{
    m_connected = false;
    const int fsuipc = m_fsuipc.Connect();
    const int simConnect = m_simConnect.Connect();
    if (!isConnectedCode(fsuipc)) {
        return fsuipc;
    }
    if (!isConnectedCode(simConnect)) {
        return simresult::kNotConnected;
    }
    m_connected = true;
    return simresult::kNone;
}

int FsInterfaceFSUIPC_SimConnect::Disconnect()
{
    m_connected = false;
    return m_fsuipc.Disconnect();
}

int FsInterfaceFSUIPC_SimConnect::ClearWeather()
{
    return m_fsuipc.ClearWeather();
}

int FsInterfaceFSUIPC_SimConnect::GetFsVersion(aviation::FsId& id, QString& name)
{
    const int result = m_fsuipc.GetFsVersion(id, name);
    m_fsVersion = id;
    return result;
}

int FsInterfaceFSUIPC_SimConnect::GetInterface(int& id, QString& name)
{
    QString fsuipc;
    QString simConnect;
    m_fsuipc.GetInterface(id, fsuipc);
    m_simConnect.GetInterface(id, simConnect);
    id = aviation::interfaceid::kFsuipcSimConnect;
    name = fsuipc + QStringLiteral(" + ") + simConnect;
    return simresult::kNone;
}

int FsInterfaceFSUIPC_SimConnect::SendText(const std::string& text, int seconds)
{
    return m_simConnect.SendText(text, seconds);
}

int FsInterfaceFSUIPC_SimConnect::GetAircraftData(aviation::structs::AircraftData& data)
{
    const int result = m_fsuipc.GetAircraftData(data);
    const int link = m_simConnect.checkLink();
    return link == simresult::kTimeout ? link : result;
}

int FsInterfaceFSUIPC_SimConnect::GetAircraftPayload(aviation::structs::AircraftPayload& payload)
{
    return m_fsuipc.GetAircraftPayload(payload);
}

int FsInterfaceFSUIPC_SimConnect::SetAircraftPayload(
    const aviation::structs::AircraftPayload& payload)
{
    return m_fsuipc.SetAircraftPayload(payload);
}

int FsInterfaceFSUIPC_SimConnect::GetAircraftFuel(aviation::structs::AircraftFuel& fuel)
{
    return m_fsuipc.GetAircraftFuel(fuel);
}

int FsInterfaceFSUIPC_SimConnect::SetAircraftFuel(const aviation::structs::AircraftFuel& fuel)
{
    return m_fsuipc.SetAircraftFuel(fuel);
}

int FsInterfaceFSUIPC_SimConnect::SetWeatherText(const QString& text)
{
    const int result = m_simConnect.SetWeatherText(text);
    m_simConnect.Dispatch();
    return result;
}

int FsInterfaceFSUIPC_SimConnect::SetWeatherRecord(const NewWeather& record)
{
    return m_fsuipc.SetWeatherRecord(record);
}

int FsInterfaceFSUIPC_SimConnect::SetWeatherTheme(const std::string& name)
{
    return failedIfPositive(m_simConnect.SetWeatherTheme(name));
}

int FsInterfaceFSUIPC_SimConnect::SetWindAtAircraft(const aviation::weather::Wind& wind)
{
    return m_fsuipc.SetWindAtAircraft(wind);
}

int FsInterfaceFSUIPC_SimConnect::GetWeatherAt(QString& observation, double latitude,
                                               double longitude)
{
    return failedIfPositive(m_simConnect.GetWeatherAt(observation, latitude, longitude));
}

int FsInterfaceFSUIPC_SimConnect::CreateStation(const std::string& icao, const std::string& name,
                                                float latitude, float longitude, float elevation)
{
    return m_simConnect.CreateStation(icao, name, latitude, longitude, elevation);
}

int FsInterfaceFSUIPC_SimConnect::GetRadioFrequencys(aviation::structs::RadioFrequencys& radios)
{
    return m_fsuipc.GetRadioFrequencys(radios);
}

int FsInterfaceFSUIPC_SimConnect::SetRadioFrequencys(
    const aviation::structs::RadioFrequencys& radios)
{
    return m_fsuipc.SetRadioFrequencys(radios);
}

int FsInterfaceFSUIPC_SimConnect::LoadFlightPlan(const QString& path)
{
    return m_simConnect.LoadFlightPlan(path);
}

int FsInterfaceFSUIPC_SimConnect::setCustomWeatherMode()
{
    return m_simConnect.setCustomWeatherMode();
}

int FsInterfaceFSUIPC_SimConnect::GetCloudState(const CloudArea& area,
                                                std::vector<std::uint8_t>& map)
{
    return m_simConnect.GetCloudState(area, map);
}

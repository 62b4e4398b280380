#pragma once

#include "sim/BridgeSocket.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceExtras.h"

class BridgeHandshake;
struct BridgeSimulator;

/// Mode of SetWeatherData that takes the text with WX.
inline constexpr int kWeatherTextWx = 13;

/// The client of a bridge server: X-Plane's plug-in, or a bridge on the simulator's computer. A
/// server that leaves two checked messages in a row without a reply has its connection ended, so
/// that a long series of them fails at once. One that swallows the other writes doesn't hold up
/// what comes after them.
class FsInterfaceTcpClient final : public FsInterfaceBase, public BridgeOperations
{
    Q_OBJECT
public:
    /// A port outside 1 to 65535 makes Connect fail. `stop` outlives the object.
    FsInterfaceTcpClient(const QString& address, int port, const QString& clientName,
                         const StopFlag& stop, const BridgeTimeouts& timeouts = BridgeTimeouts(),
                         QObject* parent = nullptr);

    int Connect() override;
    int Disconnect() override;
    int ClearWeather() override;
    int GetFsVersion(aviation::FsId& id, QString& name) override;
    int GetInterface(int& id, QString& name) override;
    int SendText(const std::string& text, int seconds) override;
    int GetAircraftData(aviation::structs::AircraftData& data) override;
    int GetAircraftPayload(aviation::structs::AircraftPayload& payload) override;
    int SetAircraftPayload(const aviation::structs::AircraftPayload& payload) override;
    int GetAircraftFuel(aviation::structs::AircraftFuel& fuel) override;
    int SetAircraftFuel(const aviation::structs::AircraftFuel& fuel) override;
    int GetDateTime(QDateTime& dateTime) override;
    int SetWeatherData(const XPlaneWeather& weather, int mode) override;
    int SetWeatherText(const QString& text) override;
    int SetWeatherRecord(const NewWeather& record) override;
    /// Sends the bare file name.
    int SetWeatherTheme(const std::string& name) override;
    int SetWindLayers(const std::vector<XPlaneWindLayer>& layers) override;
    int SetWindAtAircraft(const aviation::weather::Wind& wind) override;
    int SetVisibility(int metres) override;
    int SetGlobalWindFile(const QByteArray& contents) override;
    int SetTurbulenceWindFile(const QByteArray& contents) override;
    int ActivateWeather() override;
    int GetRadioFrequencys(aviation::structs::RadioFrequencys& radios) override;
    int SetRadioFrequencys(const aviation::structs::RadioFrequencys& radios) override;

    int SendWeatherFile(const std::string& path) override;
    int requestServerConfig(QByteArray& contents) override;
    int announceAddress(const QString& address, QString& port) override;
    BridgeEnds ends() const override;

    int checkLink() override;
    bool writeAnswered() const override { return m_writeAnswered; }

private:
    int greet();
    void logServerVersion(const BridgeHandshake& handshake);
    void takeSimulator(const BridgeSimulator& simulator);

    int request(std::uint8_t id, const QByteArray& text, QByteArray& answer);
    BridgeSocket::Reply readAnswer(std::uint8_t id);
    int readFileReply();
    /// Fails without a reply.
    int checkedWrite(std::uint8_t id, const QByteArray& data);
    /// Takes silence for success, and after two silent ones in a row waits for a moment only.
    int plainWrite(std::uint8_t id, const QByteArray& data);
    /// The code for a reply that can't be used, after a line in the log.
    int replyFault(const BridgeSocket::Reply& reply);
    void countSilence();
    void noteWrite(bool answered, int waitedMs);
    void heardWrite();
    void logParseFault(const QString& fault);
    void log(const QString& text, int level);

    QString m_address;
    int m_port;
    QString m_clientName;
    BridgeTimeouts m_timeouts;
    BridgeSocket m_socket;
    int m_silentReplies = 0; ///< checked messages in a row without a reply
    int m_silentWrites = 0;  ///< plain writes in a row without a reply; requests don't count
    int m_unheardMs = 0;     ///< waited for plain writes since the server was last heard
    bool m_writeAnswered = true;
    bool m_silentWritesLogged = false;
    QString m_parseFault; ///< of the last data, so that a fault of every poll is said once
    QString m_fsName;
    int m_interfaceId = aviation::interfaceid::kBridge;
    QString m_interfaceName;
};

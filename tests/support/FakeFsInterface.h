#pragma once

#include "aviation/support/ScopedLock.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceExtras.h"
#include "sim/FsInterfaceFactory.h"

#include <QMap>
#include <QMutex>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

/// The simulator behind the fake interfaces: what it answers, and the calls that it got. Outlives
/// the interface objects, which the worker makes and deletes. Callable from every thread.
class FakeSimulator
{
public:
    /// What the reading operations give; change it through `answer`.
    struct Answers
    {
        aviation::FsId fsVersion = aviation::fsid::kXPlaneId8;
        QString fsName = QStringLiteral("Fake simulator");
        int interfaceId = 0; ///< 0 stands for the number that the factory was asked for
        QString interfaceName = QStringLiteral("Fake interface");
        aviation::structs::AircraftData aircraft;
        aviation::structs::AircraftFuel fuel;
        aviation::structs::AircraftPayload payload;
        aviation::structs::RadioFrequencys radios;
        QDateTime dateTime = QDateTime::fromSecsSinceEpoch(0, Qt::UTC);
        QString weatherAt = QStringLiteral("EDDF 011150Z 24012KT 9999 Q1015");
        QByteArray serverConfig = QByteArrayLiteral("[main]");
        QString udpPort = QStringLiteral("0");
        std::vector<std::uint8_t> clouds;
        XPlaneWeather xplaneWeather; ///< set last
        bool writeAnswered = true;
        BridgeEnds ends;
    };

    void answer(const std::function<void(Answers&)>& change)
    {
        const aviation::ScopedLock lock(m_mutex);
        change(m_answers);
    }
    Answers answers() const
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_answers;
    }
    /// Codes that the next calls of an operation return, one a call; afterwards the last one stays.
    void setResults(const QString& operation, const std::vector<int>& codes)
    {
        const aviation::ScopedLock lock(m_mutex);
        m_results[operation] = codes;
    }
    /// Runs on the worker's thread at the start of each call, with the operation's name.
    void setHook(const std::function<void(const QString&)>& hook)
    {
        const aviation::ScopedLock lock(m_mutex);
        m_hook = hook;
    }
    /// "Operation" or "Operation argument ...", in the order of the calls. Polled values aren't
    /// distinguished.
    QStringList calls() const
    {
        const aviation::ScopedLock lock(m_mutex);
        return m_calls;
    }
    QStringList calls(const QString& prefix) const
    {
        QStringList found;
        for (const QString& call : calls()) {
            if (call.startsWith(prefix)) {
                found.append(call);
            }
        }
        return found;
    }
    void clearCalls()
    {
        const aviation::ScopedLock lock(m_mutex);
        m_calls.clear();
    }

    /// For the interface: records a call and gives its code.
    int call(const QString& operation, const QString& arguments = QString())
    {
        std::function<void(const QString&)> hook;
        int code = simresult::kNone;
        {
            const aviation::ScopedLock lock(m_mutex);
            m_calls.append(arguments.isEmpty() ? operation
                                               : operation + QLatin1Char(' ') + arguments);
            hook = m_hook;
            code = nextResult(operation);
        }
        if (hook) {
            hook(operation);
        }
        return code;
    }

private:
    int nextResult(const QString& operation)
    {
        std::vector<int>& codes = m_results[operation];
        if (codes.empty()) {
            return simresult::kNone;
        }
        const int code = codes.front();
        if (codes.size() > 1) {
            codes.erase(codes.begin());
        }
        return code;
    }

    mutable QMutex m_mutex; ///< guards all below
    Answers m_answers;
    QMap<QString, std::vector<int>> m_results;
    QStringList m_calls;
    std::function<void(const QString&)> m_hook;
};

/// An interface that only talks to a FakeSimulator; it has the extra operations of all kinds.
class FakeFsInterface final : public FsInterfaceBase,
                              public BridgeOperations,
                              public SimConnectOperations,
                              public FsuipcOperations
{
public:
    FakeFsInterface(FakeSimulator& simulator, int interfaceId)
        : m_simulator(simulator)
        , m_interfaceId(interfaceId)
    {}

    int Connect() override { return call("Connect"); }
    int Disconnect() override { return call("Disconnect"); }
    int ClearWeather() override { return call("ClearWeather"); }
    int GetFsVersion(aviation::FsId& id, QString& name) override
    {
        const FakeSimulator::Answers answers = m_simulator.answers();
        const int code = call("GetFsVersion");
        give(code, id, answers.fsVersion);
        return give(code, name, answers.fsName);
    }
    int GetInterface(int& id, QString& name) override
    {
        const FakeSimulator::Answers answers = m_simulator.answers();
        const int code = call("GetInterface");
        give(code, id, answers.interfaceId == 0 ? m_interfaceId : answers.interfaceId);
        return give(code, name, answers.interfaceName);
    }
    int SendText(const std::string& text, int seconds) override
    {
        return call("SendText", text, seconds);
    }
    int GetAircraftData(aviation::structs::AircraftData& data) override
    {
        return give(call("GetAircraftData"), data, m_simulator.answers().aircraft);
    }
    int GetAircraftPayload(aviation::structs::AircraftPayload& payload) override
    {
        return give(call("GetAircraftPayload"), payload, m_simulator.answers().payload);
    }
    int SetAircraftPayload(const aviation::structs::AircraftPayload& payload) override
    {
        m_simulator.answer([&payload](FakeSimulator::Answers& a) { a.payload = payload; });
        return call("SetAircraftPayload", payload.stations.size());
    }
    int GetAircraftFuel(aviation::structs::AircraftFuel& fuel) override
    {
        return give(call("GetAircraftFuel"), fuel, m_simulator.answers().fuel);
    }
    int SetAircraftFuel(const aviation::structs::AircraftFuel& fuel) override
    {
        m_simulator.answer([&fuel](FakeSimulator::Answers& a) { a.fuel = fuel; });
        return call("SetAircraftFuel", fuel.tanks.size());
    }
    int GetDateTime(QDateTime& dateTime) override
    {
        return give(call("GetDateTime"), dateTime, m_simulator.answers().dateTime);
    }
    int SetWeatherData(const XPlaneWeather& weather, int mode) override
    {
        m_simulator.answer([&weather](FakeSimulator::Answers& a) { a.xplaneWeather = weather; });
        return call("SetWeatherData", weather.Vis, mode);
    }
    int SetWeatherText(const QString& text) override { return call("SetWeatherText", text); }
    int SetWeatherRecord(const NewWeather& record) override
    {
        return call("SetWeatherRecord", record.icaoText());
    }
    int SetWeatherTheme(const std::string& name) override { return call("SetWeatherTheme", name); }
    int SetWindLayers(const std::vector<XPlaneWindLayer>& layers) override
    {
        return call("SetWindLayers", layers.size());
    }
    int SetWindAtAircraft(const aviation::weather::Wind& wind) override
    {
        return call("SetWindAtAircraft", windText(wind));
    }
    int SetVisibility(int metres) override { return call("SetVisibility", metres); }
    int SetGlobalWindFile(const QByteArray& contents) override
    {
        return call("SetGlobalWindFile", contents.size());
    }
    int SetTurbulenceWindFile(const QByteArray& contents) override
    {
        return call("SetTurbulenceWindFile", contents.size());
    }
    int ActivateWeather() override { return call("ActivateWeather"); }
    int GetWeatherAt(QString& observation, double latitude, double longitude) override
    {
        return give(call("GetWeatherAt", latitude, longitude), observation,
                    m_simulator.answers().weatherAt);
    }
    int CreateStation(const std::string& icao, const std::string& name, float latitude,
                      float longitude, float elevation) override
    {
        return call("CreateStation", icao, name, latitude, longitude, elevation);
    }
    int GetRadioFrequencys(aviation::structs::RadioFrequencys& radios) override
    {
        return give(call("GetRadioFrequencys"), radios, m_simulator.answers().radios);
    }
    int SetRadioFrequencys(const aviation::structs::RadioFrequencys& radios) override
    {
        m_simulator.answer([&radios](FakeSimulator::Answers& a) { a.radios = radios; });
        return call("SetRadioFrequencys", radios.comm1active);
    }
    int LoadFlightPlan(const QString& path) override { return call("LoadFlightPlan", path); }

    int SendWeatherFile(const std::string& path) override { return call("SendWeatherFile", path); }
    int requestServerConfig(QByteArray& contents) override
    {
        return give(call("RequestServerConfig"), contents, m_simulator.answers().serverConfig);
    }
    int announceAddress(const QString& address, QString& port) override
    {
        return give(call("AnnounceAddress", address), port, m_simulator.answers().udpPort);
    }
    BridgeEnds ends() const override { return m_simulator.answers().ends; }
    int checkLink() override { return call("CheckLink"); }
    bool writeAnswered() const override { return m_simulator.answers().writeAnswered; }
    int setCustomWeatherMode() override { return call("SetCustomWeatherMode"); }
    int GetCloudState(const CloudArea& area, std::vector<std::uint8_t>& map) override
    {
        const int code = call("GetCloudState", area.lowerAltitude, area.upperAltitude);
        if (code == simresult::kCloudReply) {
            map = m_simulator.answers().clouds;
        }
        return code;
    }
    int writeWeatherCommand(std::uint16_t word) override
    {
        return call("WriteWeatherCommand", word);
    }

private:
    static QString asText(const QString& text) { return text; }
    static QString asText(const std::string& text) { return QString::fromStdString(text); }
    static QString asText(float number) { return QString::number(static_cast<double>(number)); }
    template <typename Number>
    static QString asText(Number number)
    {
        return QString::number(number);
    }
    template <typename... Arguments>
    int call(const char* operation, const Arguments&... arguments)
    {
        const QStringList texts{asText(arguments)...};
        return m_simulator.call(QString::fromLatin1(operation), texts.join(QLatin1Char(' ')));
    }
    template <typename T>
    static int give(int code, T& out, const T& value)
    {
        if (code == simresult::kNone) {
            out = value;
        }
        return code;
    }

    FakeSimulator& m_simulator;
    int m_interfaceId;
};

/// Makes interfaces of one FakeSimulator for the numbers 1 to 4 and notes it there: "create 4".
class FakeInterfaceFactory final : public FsInterfaceFactory
{
public:
    explicit FakeInterfaceFactory(FakeSimulator& simulator) : m_simulator(simulator) {}

    std::unique_ptr<FsInterfaceBase> create(int interfaceId) override
    {
        m_simulator.call(QStringLiteral("create"), QString::number(interfaceId));
        if (interfaceId < aviation::interfaceid::kFsuipc
            || interfaceId > aviation::interfaceid::kBridge) {
            return nullptr;
        }
        return std::make_unique<FakeFsInterface>(m_simulator, interfaceId);
    }

private:
    FakeSimulator& m_simulator;
};

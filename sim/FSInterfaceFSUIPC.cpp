#include "sim/FSInterfaceFSUIPC.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/StopFlag.h"
#include "aviation/support/Clock.h"
#include "sim/FsuipcAircraft.h"
#include "sim/FsuipcOffsets.h"
#include "sim/SimValues.h"
#include "sim/clients/FsuipcApi.h"
#include "sim/clients/SimulatorClients.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace offset = fsuipcoffset;
using aviation::structs::AircraftFuel;
using aviation::structs::AircraftPayload;
using aviation::structs::AircraftPayloadStation;
using aviation::structs::FuelTank;
using aviation::structs::RadioFrequencys;

namespace {

constexpr double kFullTank = 8388608.0;
constexpr double kPercent = 100.0;

struct Radio
{
    std::uint32_t offset; ///< 2: BCD
    std::uint16_t RadioFrequencys::*value;
    std::uint16_t leadingOne; ///< what FSUIPC leaves out in front
};

constexpr std::uint16_t kFrequencyBase = 10000;
constexpr std::array kRadios{
    Radio{0x034E, &RadioFrequencys::comm1active, kFrequencyBase},
    Radio{0x3118, &RadioFrequencys::comm2active, kFrequencyBase},
    Radio{0x311A, &RadioFrequencys::comm1standby, kFrequencyBase},
    Radio{0x311C, &RadioFrequencys::comm2standby, kFrequencyBase},
    Radio{0x0350, &RadioFrequencys::nav1active, kFrequencyBase},
    Radio{0x0352, &RadioFrequencys::nav2active, kFrequencyBase},
    Radio{0x311E, &RadioFrequencys::nav1standby, kFrequencyBase},
    Radio{0x3120, &RadioFrequencys::nav2standby, kFrequencyBase},
    Radio{0x0354, &RadioFrequencys::transponder, 0},
    Radio{0x034C, &RadioFrequencys::adf, 0},
};

/// The text with its zero, cut where it is too long.
std::array<char, offset::kScreenTextBytes> screenText(const std::string& text)
{
    std::array<char, offset::kScreenTextBytes> bytes{};
    const std::string cut = simvalue::cutText(text, bytes.size() - 1);
    std::copy(cut.begin(), cut.end(), bytes.begin());
    return bytes;
}

bool canBeWritten(const aviation::weather::Wind& wind)
{
    constexpr float kUnknown = -1.0F;
    constexpr float kLargestSpeed = 200.0F;
    return std::isfinite(wind.Dir) && wind.Dir != kUnknown && wind.Speed >= 0.0F
           && wind.Speed <= kLargestSpeed;
}

struct RawStation
{
    std::array<char, offset::kStationNameBytes> name{};
    double weight = 0.0;
};

} // namespace

FSInterfaceFSUIPC::FSInterfaceFSUIPC(SimulatorClients& clients, const QString& simulatorFolder,
                                     const StopFlag& stop, QObject* parent)
    : FsInterfaceBase(parent)
    , m_clients(clients)
    , m_simulatorFolder(simulatorFolder)
    , m_stop(stop)
{}

void FSInterfaceFSUIPC::log(const QString& text, int level)
{
    Q_EMIT sigDebugString(QStringLiteral("(Interface FSUIPC) - ") + text, level);
}

/// Finds the library; says once if there is none.
bool FSInterfaceFSUIPC::load()
{
    if (m_client.hasApi()) {
        return true;
    }
    std::string problem;
    m_client.setApi(m_clients.fsuipc(m_simulatorFolder.toStdString(), problem));
    if (!m_client.hasApi() && !m_saidMissing) {
        m_saidMissing = true;
        log(outsidetext::forLog(QByteArray::fromStdString(problem)), loglevel::kError);
    }
    return m_client.hasApi();
}

int FSInterfaceFSUIPC::Connect()
{
    m_connected = false;
    m_polls = {};
    if (!load()) {
        return simresult::kNotConnected;
    }
    const std::uint32_t code = m_client.open();
    m_connected = FsuipcClient::isSuccess(code);
    if (!m_connected) {
        log(QStringLiteral("Connect FAILED, %1 : %2")
                .arg(QString::number(code), FsuipcClient::ErrorText(code)),
            loglevel::kError);
        return simresult::kNotConnected;
    }
    m_fsVersion = m_client.fsId();
    if (code == fsuipc::kOk) {
        log(m_client.fsName() + QStringLiteral(", ") + m_client.versionText(),
            loglevel::kNotification);
    }
    return simresult::kNone;
}

int FSInterfaceFSUIPC::Disconnect()
{
    m_connected = false;
    m_client.close();
    return simresult::kNone;
}

int FSInterfaceFSUIPC::process()
{
    const std::uint32_t code = m_client.process();
    if (FsuipcClient::isSuccess(code)) {
        return simresult::kNone;
    }
    if (code != m_loggedFault) {
        m_loggedFault = code;
        log(QStringLiteral("Request FAILED, %1 : %2")
                .arg(QString::number(code), FsuipcClient::ErrorText(code)),
            loglevel::kError);
    }
    return m_connected && FsuipcClient::isClosed(code) ? simresult::kTimeout
                                                       : simresult::kNotConnected;
}

int FSInterfaceFSUIPC::ClearWeather()
{
    return writeWeatherCommand(offset::kClearWeather);
}

int FSInterfaceFSUIPC::writeWeatherCommand(std::uint16_t word)
{
    m_client.write(offset::kWeather, word);
    return process();
}

int FSInterfaceFSUIPC::GetFsVersion(aviation::FsId& id, QString& name)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    id = m_client.fsId();
    name = m_client.fsName();
    return simresult::kNone;
}

int FSInterfaceFSUIPC::GetInterface(int& id, QString& name)
{
    id = aviation::interfaceid::kFsuipc;
    name = QStringLiteral("FSUIPC");
    return simresult::kNone;
}

int FSInterfaceFSUIPC::SendText(const std::string& text, int /*seconds*/)
{
    constexpr std::int16_t kSeconds = 5;
    m_client.write(offset::kScreenText, screenText(text));
    m_client.write(offset::kTextDuration, kSeconds);
    return process();
}

int FSInterfaceFSUIPC::GetAircraftData(aviation::structs::AircraftData& data)
{
    const int result = readAircraft(data);
    return m_connected ? m_polls.count(result) : result;
}

int FSInterfaceFSUIPC::readAircraft(aviation::structs::AircraftData& data)
{
    std::uint16_t pauseKey = 0;
    std::uint8_t menu = 0;
    m_client.read(offset::kPauseKey, pauseKey);
    m_client.read(offset::kMenu, menu);
    const int result = process();
    if (result != simresult::kNone) {
        return result;
    }
    if (pauseKey != 0 || menu != 0) {
        return simresult::kPaused;
    }
    FsuipcAircraft raw;
    raw.queueReads(m_client, m_fsVersion);
    const int read = process();
    if (read == simresult::kNone) {
        raw.fill(data, m_fsVersion);
        m_client.setSimTimeText(raw.timeText());
        m_loggedFault = fsuipc::kOk;
    }
    return read;
}

int FSInterfaceFSUIPC::GetAircraftPayload(AircraftPayload& payload)
{
    std::int32_t count = 0;
    m_client.read(offset::kPayloadCount, count);
    int result = process();
    if (result != simresult::kNone) {
        return result;
    }
    constexpr auto kMost = static_cast<std::int32_t>(offset::kMostStations);
    std::vector<RawStation> raw(static_cast<std::size_t>(std::clamp(count, 0, kMost)));
    for (std::size_t n = 0; n < raw.size(); ++n) {
        m_client.read(offset::stationName(n), raw[n].name);
        m_client.read(offset::stationWeight(n), raw[n].weight);
    }
    result = raw.empty() ? simresult::kNone : process();
    if (result == simresult::kNone) {
        payload.stations.clear();
        for (const RawStation& station : raw) {
            payload.stations.emplace_back(simvalue::textOf(station.name).toStdWString(),
                                          simvalue::singleOf(station.weight), 0.0F, 0);
        }
    }
    return result;
}

int FSInterfaceFSUIPC::SetAircraftPayload(const AircraftPayload& payload)
{
    int result = simresult::kNone;
    const std::size_t count = std::min(payload.stations.size(), offset::kMostStations);
    for (std::size_t n = 0; n < count && result == simresult::kNone; ++n) {
        const AircraftPayloadStation& station = payload.stations[n];
        if (station.weight != 0.0F) {
            m_client.write(offset::stationWeight(n), static_cast<double>(station.weight));
            result = process();
        }
    }
    return result;
}

/// Appends a tank, if the aircraft has it.
int FSInterfaceFSUIPC::readTank(std::size_t index, AircraftFuel& fuel)
{
    std::int32_t level = 0;
    std::int32_t capacity = 0;
    std::uint16_t weight = 0;
    m_client.read(offset::kTanks[index].level, level);
    m_client.read(offset::kTanks[index].capacity, capacity);
    m_client.read(offset::kFuelWeight, weight);
    const int result = process();
    if (result != simresult::kNone) {
        return result;
    }
    fuel.fuelWeight = weight / 256.0;
    if (capacity > 0) {
        const auto id = static_cast<std::int32_t>(index) + 1;
        fuel.tanks.push_back({aviation::structs::fuelTankName(id), id, level * kPercent / kFullTank,
                              static_cast<double>(capacity)});
    }
    return result;
}

int FSInterfaceFSUIPC::GetAircraftFuel(AircraftFuel& fuel)
{
    AircraftFuel read;
    for (std::size_t index = 0; index < offset::kTanks.size(); ++index) {
        const int result = readTank(index, read);
        if (result != simresult::kNone) {
            return result;
        }
    }
    fuel = read;
    return simresult::kNone;
}

int FSInterfaceFSUIPC::SetAircraftFuel(const AircraftFuel& fuel)
{
    for (const FuelTank& tank : fuel.tanks) {
        if (tank.id < 1 || tank.id > static_cast<std::int32_t>(offset::kTanks.size())) {
            continue;
        }
        m_client.write(offset::kTanks[static_cast<std::size_t>(tank.id) - 1].level,
                       simvalue::truncated(tank.level / kPercent * kFullTank));
        const int result = process();
        if (result != simresult::kNone) {
            return result;
        }
    }
    return simresult::kNone;
}

int FSInterfaceFSUIPC::SetWeatherRecord(const NewWeather& record)
{
    std::uint32_t count = 0;
    m_client.read(offset::kWeatherCounter, count);
    int result = process();
    if (result != simresult::kNone) {
        return result;
    }
    if (!m_weatherCountKnown) {
        m_weatherCountKnown = true;
        m_weatherCount = count;
    }
    m_client.write(offset::kWeather, record);
    result = process();
    return result == simresult::kNone ? awaitWeatherCount() : result;
}

/// Reads the counter until it differs from the last one, with which the next write is compared too.
int FSInterfaceFSUIPC::awaitWeatherCount()
{
    constexpr int kReads = 11;
    constexpr int kPauseMs = 50;
    for (int read = 0; read < kReads && !m_stop.raised(); ++read) {
        if (read > 0) {
            aviation::Clock::current().SleepMs(kPauseMs);
        }
        std::uint32_t count = m_weatherCount;
        m_client.read(offset::kWeatherCounter, count);
        const int result = process();
        if (result != simresult::kNone) {
            return result;
        }
        if (count != m_weatherCount) {
            m_weatherCount = count;
            return simresult::kNone;
        }
    }
    return simresult::kRefused;
}

int FSInterfaceFSUIPC::SetWindAtAircraft(const aviation::weather::Wind& wind)
{
    if (!canBeWritten(wind)) {
        return simresult::kNone;
    }
    m_client.write(offset::kWindDirection, static_cast<double>(wind.Dir));
    m_client.write(offset::kWindSpeed, static_cast<double>(wind.Speed));
    return process();
}

int FSInterfaceFSUIPC::GetWeatherAt(QString& observation, double /*latitude*/, double /*longitude*/)
{
    std::array<char, offset::kObservationBytes> text{};
    m_client.read(offset::kObservation, text);
    const int result = process();
    if (result == simresult::kNone) {
        observation = simvalue::textOf(text);
    }
    return result;
}

int FSInterfaceFSUIPC::GetRadioFrequencys(RadioFrequencys& radios)
{
    std::array<std::uint16_t, kRadios.size()> words{};
    for (std::size_t i = 0; i < words.size(); ++i) {
        m_client.read(kRadios[i].offset, words[i]);
    }
    const int result = process();
    for (std::size_t i = 0; i < words.size() && result == simresult::kNone; ++i) {
        const int number = simvalue::fromBcd(words[i]) + kRadios[i].leadingOne;
        radios.*kRadios[i].value = static_cast<std::uint16_t>(number);
    }
    return result;
}

int FSInterfaceFSUIPC::SetRadioFrequencys(const RadioFrequencys& radios)
{
    for (const Radio& radio : kRadios) {
        const int number = std::max(radios.*radio.value - radio.leadingOne, 0);
        m_client.write(radio.offset, simvalue::toBcd(static_cast<std::uint16_t>(number)));
    }
    return process();
}

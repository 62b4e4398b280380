#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "aviation/support/ScopedLock.h"
#include "sim/ConnectWorker.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceExtras.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

using aviation::ScopedLock;
namespace fsid = aviation::fsid;
namespace interfaceid = aviation::interfaceid;

namespace {

constexpr int kStationPauseMs = 100; // a stream of hundreds would flood the simulator
constexpr int kStationNameLength = 4;

bool hasSimConnect(int interfaceId)
{
    return interfaceId == interfaceid::kSimConnect || interfaceId == interfaceid::kFsuipcSimConnect;
}

int clampedInt(std::int64_t value)
{
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

/// A number of a job's name; false for anything else.
bool readNumber(const QString& text, double& number)
{
    bool readable = false;
    number = text.trimmed().toDouble(&readable);
    return readable && std::isfinite(number);
}

} // namespace

int ConnectWorker::setWaitingWeather(Job& /*job*/)
{
    m_weatherAnswered = true;
    m_weatherTaken = false;
    WaitingWeather weather;
    {
        // The lists are taken out, so what is handed in from now on waits for the next job. While
        // there are records the observations deliberately stay: this job sends no observation.
        const ScopedLock lock(m_stateMutex);
        weather.records.swap(m_weather.records);
        if (weather.records.empty()) {
            weather.metars.swap(m_weather.metars);
            weather.winds = m_weather.winds;
        }
    }
    if (!weather.records.empty()) {
        return setRecords(weather.records);
    }
    if (weather.metars.empty()) {
        log(QStringLiteral("(ConnectWorker) - Set Weather failed. Weather data is empty"),
            loglevel::kError);
        return simresult::kNoWeather;
    }
    const aviation::FsId id = fsVersion();
    const int result = id == fsid::kXPlaneId8 || id == fsid::kXPlaneId9
                           ? setTextBlock(weather)
                           : setObservations(weather.metars);
    tellWeatherDone(result);
    return result;
}

int ConnectWorker::setTextBlock(const WaitingWeather& weather)
{
    QString text = QStringLiteral("-----METAR-----\r\n");
    for (const QString& metar : weather.metars) {
        text += metar + QLatin1Char('\n');
    }
    text += QStringLiteral("-----WIND-----\r\n");
    for (const QString& wind : weather.winds) {
        text += wind + QLatin1Char('\n');
    }
    const int result = confirmed(m_interface->SetWeatherText(text));
    if (result != simresult::kNone) {
        log(QStringLiteral("(ConnectWorker) - Set Weather failed. "), loglevel::kError);
    } else {
        claimWeather(QStringLiteral("(ConnectWorker) - Set Weather "));
    }
    return result;
}

int ConnectWorker::setObservations(const std::vector<QString>& metars)
{
    auto* const simConnect = dynamic_cast<SimConnectOperations*>(m_interface.get());
    if (hasSimConnect(interfaceType()) && simConnect != nullptr) {
        simConnect->setCustomWeatherMode();
    }
    int result = simresult::kNone;
    for (std::size_t i = 0; goesOn(result) && i < metars.size(); ++i) {
        const QString station = metars[i].left(kStationNameLength);
        result = confirmed(m_interface->SetWeatherText(metars[i]));
        if (result != simresult::kNone) {
            log(QStringLiteral("(ConnectWorker) - Set Weather failed. ")
                    + outsidetext::forLog(metars[i]),
                loglevel::kError);
        } else {
            claimWeather(QStringLiteral("(ConnectWorker) - Set Weather ")
                         + outsidetext::forLog(station));
        }
        tellProgress(station, i + 1, metars.size());
        sleepUnlessStopped(kStationPauseMs);
    }
    return result;
}

int ConnectWorker::setRecords(const std::vector<NewWeather>& records)
{
    constexpr std::uint16_t kRefreshCommand = 256; // without it FS2004 keeps the old weather
    int result = simresult::kNone;
    for (std::size_t i = 0; goesOn(result) && i < records.size(); ++i) {
        const QString station = QString::fromStdString(records[i].icaoText());
        result = m_interface->SetWeatherRecord(records[i]);
        if (result != simresult::kNone) {
            log(QStringLiteral("Set Weather failed. ") + outsidetext::forLog(station),
                loglevel::kError);
        } else {
            m_weatherTaken = true;
            log(QStringLiteral("Set Weather ") + outsidetext::forLog(station),
                loglevel::kNotification);
        }
        tellProgress(station, i + 1, records.size());
        sleepUnlessStopped(kStationPauseMs);
    }
    tellWeatherDone(result);
    auto* const fsuipc = dynamic_cast<FsuipcOperations*>(m_interface.get());
    if (fsVersion() == fsid::kFs2004 && interfaceType() == interfaceid::kFsuipc && fsuipc != nullptr
        && result != simresult::kTimeout)
    {
        fsuipc->writeWeatherCommand(kRefreshCommand);
    }
    return result;
}

/// Whether a run of stations goes on. A failure doesn't stop it, but the end of the connection
/// does: all the others would fail as well.
bool ConnectWorker::goesOn(int result) const
{
    return result != simresult::kTimeout && !stopped();
}

/// Only for what the other end has answered: a bridge that swallows writes keeps the old weather.
void ConnectWorker::claimWeather(const QString& text)
{
    if (m_interface->writeAnswered()) {
        m_weatherTaken = true;
        log(text, loglevel::kNotification);
    } else {
        m_weatherAnswered = false;
    }
}

void ConnectWorker::tellWeatherDone(int result)
{
    const bool claimed = result != simresult::kTimeout && m_weatherAnswered && m_weatherTaken;
    Q_EMIT sigProgressBar(0, 0, claimed ? QStringLiteral("Set Weather success") : QString());
}

void ConnectWorker::tellProgress(const QString& station, std::size_t done, std::size_t total)
{
    Q_EMIT sigProgressBar(static_cast<qlonglong>(done), static_cast<qlonglong>(total),
                          QStringLiteral("Set Weather %1, %2/%3")
                              .arg(station, QString::number(done), QString::number(total)));
}

int ConnectWorker::setTheme(Job& job)
{
    m_weatherAnswered = true;
    const std::string file = job.name.toStdString();
    auto* const bridge = dynamic_cast<BridgeOperations*>(m_interface.get());
    const bool overBridge = m_settings.interfaceType() == interfaceid::kBridge && bridge != nullptr;
    const int result =
        overBridge ? bridge->SendWeatherFile(file) : m_interface->SetWeatherTheme(file);
    if (result != simresult::kNone) {
        log(QStringLiteral("(ConnectWorker) - Set Weather Theme failed. File: ")
                + outsidetext::forLog(job.name),
            loglevel::kError);
    } else {
        log(QStringLiteral("(ConnectWorker) - Set Weather Theme. File: ")
                + outsidetext::forLog(job.name),
            loglevel::kNotification);
    }
    return result;
}

int ConnectWorker::setXPlaneWeather(Job& job)
{
    m_weatherAnswered = true;
    const int result = confirmed(m_interface->SetWeatherData(job.xplaneWeather, fsVersion()));
    if (result != simresult::kNone) {
        log(QStringLiteral("(ConnectWorker) - Set Weather failed. "), loglevel::kError);
    } else {
        claimWeather(QStringLiteral("(ConnectWorker) - Set Weather "));
    }
    return result;
}

int ConnectWorker::setWindLayers(Job& job)
{
    return m_interface->SetWindLayers(job.windLayers);
}

int ConnectWorker::setWindAtAircraft(Job& job)
{
    constexpr double kLargestDirection = 360.0;
    constexpr double kLargestSpeed = 400.0;
    const QStringList parts = job.name.split(QLatin1Char(':'));
    double direction = 0.0;
    double speed = 0.0;
    if (parts.size() != 2 || !readNumber(parts[0], direction) || !readNumber(parts[1], speed)
        || direction < 0.0 || direction > kLargestDirection || speed < 0.0 || speed > kLargestSpeed)
    {
        return simresult::kWrongArguments;
    }
    constexpr float kNoGust = -1.0F;
    return m_interface->SetWindAtAircraft(
        {static_cast<float>(direction), static_cast<float>(speed), kNoGust, 0.0F});
}

int ConnectWorker::setVisibility(Job& job)
{
    bool readable = false;
    const int metres = job.name.trimmed().toInt(&readable);
    return readable ? m_interface->SetVisibility(metres) : simresult::kWrongArguments;
}

int ConnectWorker::setGlobalWind(Job& job)
{
    const int result = confirmed(m_interface->SetGlobalWindFile(job.data));
    if (result != simresult::kNone) {
        log(QStringLiteral("(ConnectWorker) - Set Global Wind File failed. "), loglevel::kError);
    } else {
        claimWeather(QStringLiteral("(ConnectWorker) - Set Global Wind File "));
    }
    return result;
}

int ConnectWorker::setTurbulence(Job& job)
{
    const int result = confirmed(m_interface->SetTurbulenceWindFile(job.data));
    if (result != simresult::kNone) {
        log(QStringLiteral("(ConnectWorker) - Set Turbulence Wind File failed. "),
            loglevel::kError);
    } else {
        claimWeather(QStringLiteral("(ConnectWorker) - Set Turbulence Wind File "));
    }
    return result;
}

int ConnectWorker::activateWeather(Job& /*job*/)
{
    return m_interface->ActivateWeather();
}

int ConnectWorker::clearWeather(Job& /*job*/)
{
    return m_interface->ClearWeather();
}

int ConnectWorker::createStation(Job& job)
{
    const QStringList parts = job.name.split(QLatin1Char(':'));
    if (parts.size() < 5) {
        return simresult::kNone; // deliberately no error
    }
    const int result =
        m_interface->CreateStation(parts[0].toStdString(), parts[1].toStdString(),
                                   parts[2].toFloat(), parts[3].toFloat(), parts[4].toFloat());
    if (result != simresult::kNone) {
        log(QStringLiteral("(ConnectWorker) Create Station Failed, ICAO: %1")
                .arg(outsidetext::forLog(parts[0])),
            loglevel::kError);
    }
    return result;
}

int ConnectWorker::weatherAt(Job& job)
{
    const QStringList parts = job.name.split(QLatin1Char(';'));
    if (parts.size() < 2) {
        return simresult::kRefused;
    }
    QString observation;
    const int result =
        m_interface->GetWeatherAt(observation, parts[0].toDouble(), parts[1].toDouble());
    job.name = observation;
    return result;
}

int ConnectWorker::cloudMap(Job& job)
{
    constexpr double kUpperBearing = 45.0;
    constexpr double kLowerBearing = 225.0;
    auto* const simConnect = dynamic_cast<SimConnectOperations*>(m_interface.get());
    const QStringList parts = job.name.split(QLatin1Char(':'));
    if (!hasSimConnect(interfaceType()) || simConnect == nullptr || parts.size() < 2) {
        return simresult::kNotImplemented;
    }
    const aviation::structs::AircraftData aircraft = aircraftData();
    const int range = parts[0].toInt();
    const int tilt = parts[1].toInt();
    CloudArea area;
    area.lower = aircraft.position;
    area.lower.MoveBy(kLowerBearing, range);
    area.lowerAltitude = clampedInt(std::int64_t{aircraft.altitude} - tilt / 2);
    area.upper = aircraft.position;
    area.upper.MoveBy(kUpperBearing, range);
    area.upperAltitude = clampedInt(std::int64_t{aircraft.altitude} + 2 + tilt);
    std::vector<std::uint8_t> map = cloudState();
    const int result = simConnect->GetCloudState(area, map);
    if (result == simresult::kCloudReply) {
        const ScopedLock lock(m_stateMutex);
        m_cloudState = map;
    }
    return result;
}

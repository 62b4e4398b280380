#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "aviation/support/Clock.h"
#include "sim/FsInterfaceSimConnect.h"
#include "sim/SimValues.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <utility>

using simconnect::kOk;
using simconnect::Result;

namespace {

/// The simulator takes texts of 1024 bytes with their zero.
constexpr std::size_t kLongestText = 1023;

/// An error of the pipe to the simulator, and not of a simulator that refuses what it was given.
bool isPipeError(Result result)
{
    constexpr int kSeverityShift = 30;
    constexpr std::uint32_t kSystemError = 3; // 0xC0000000 and above
    return static_cast<std::uint32_t>(result) >> kSeverityShift == kSystemError;
}

/// For the calls of which only 0 is a success.
int codeOf(Result result)
{
    return result == kOk ? simresult::kNone : simresult::kCallFailed;
}

QString errorLine(const QString& text)
{
    return QStringLiteral("(Interface SimConnect) - error: %1").arg(text);
}

} // namespace

int FsInterfaceSimConnect::SendText(const std::string& text, int seconds)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    std::string cut = simvalue::cutText(text, kLongestText);
    const Result result = m_client->api().SimConnect_Text(
        m_client->handle(), simconnect::kTextScrollWhite, static_cast<float>(seconds), 0,
        static_cast<std::uint32_t>(cut.size() + 1), cut.data());
    if (result < kOk) {
        log(errorLine(m_client->exceptionText()), loglevel::kError);
        return simresult::kCallFailed;
    }
    return simresult::kNone;
}

int FsInterfaceSimConnect::SetWeatherText(const QString& text)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    log(outsidetext::forLog(text), loglevel::kDebug);
    const std::string narrow = text.toStdString();
    if (narrow.size() > kLongestText) {
        log(errorLine(QStringLiteral("an observation of %1 characters is too long, at most %2")
                          .arg(narrow.size())
                          .arg(kLongestText)),
            loglevel::kError);
        return simresult::kCallFailed;
    }
    const Result result =
        m_client->api().SimConnect_WeatherSetObservation(m_client->handle(), 0, narrow.c_str());
    const SimConnectReply fetched = Dispatch();
    if (fetched == SimConnectReply::Exception) {
        log(errorLine(m_client->exceptionText()), loglevel::kError);
    }
    return unlessEnded(countWeather(result, fetched));
}

/// A link that was cut without a word would fail with each of hundreds of stations.
int FsInterfaceSimConnect::countWeather(Result result, SimConnectReply fetched)
{
    if (result >= kOk) {
        return m_weatherTexts.count(simresult::kNone);
    }
    const bool isCut = isPipeError(result) || fetched == SimConnectReply::Failed;
    return isCut ? m_weatherTexts.count(simresult::kCallFailed) : simresult::kCallFailed;
}

int FsInterfaceSimConnect::setCustomWeatherMode()
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    return codeOf(m_client->api().SimConnect_WeatherSetModeCustom(m_client->handle()));
}

int FsInterfaceSimConnect::ClearWeather()
{
    const int theme = SetWeatherTheme({});
    const int custom = setCustomWeatherMode();
    return theme != simresult::kNone ? theme : custom;
}

int FsInterfaceSimConnect::SetWeatherTheme(const std::string& name)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    const QString theme = QString::fromStdString(name);
    qDebug().noquote() << QStringLiteral("set weather ") + theme;
    return codeOf(m_client->api().SimConnect_WeatherSetModeTheme(
        m_client->handle(), QFile::encodeName(theme).constData()));
}

int FsInterfaceSimConnect::GetWeatherAt(QString& observation, double latitude, double longitude)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    takeWaiting(); // as in sendRequest
    const Result result = m_client->api().SimConnect_WeatherRequestObservationAtNearestStation(
        m_client->handle(), simconnectid::kObservationRequest, static_cast<float>(latitude),
        static_cast<float>(longitude));
    if (result != kOk) {
        return unlessEnded(codeOf(result));
    }
    noteWeatherRequest();
    // The answers carry no place: one that is still due for an earlier place comes first.
    SimConnectReplies came = WaitForMessages({SimConnectReply::Observation});
    while (came.has(SimConnectReply::Observation) && !m_weatherRequests.empty()) {
        came = WaitForMessages({SimConnectReply::Observation});
    }
    if (came.has(SimConnectReply::Observation)) {
        observation = m_client->observation();
    }
    return resultOf(came, SimConnectReply::Observation);
}

void FsInterfaceSimConnect::noteWeatherRequest()
{
    constexpr std::int64_t kLongestMs = 10000; // what hasn't come by then is lost
    const std::int64_t now = aviation::Clock::current().MonotonicMs();
    while (!m_weatherRequests.empty() && now - m_weatherRequests.front().sentMs > kLongestMs) {
        m_weatherRequests.pop_front();
    }
    m_weatherRequests.push_back({m_client->lastSentId(), now});
}

void FsInterfaceSimConnect::noteObservation()
{
    if (!m_weatherRequests.empty()) {
        m_weatherRequests.pop_front();
    }
}

void FsInterfaceSimConnect::noteRefusal()
{
    const std::uint32_t packet = m_client->exceptionPacket();
    m_weatherRequests.erase(
        std::remove_if(m_weatherRequests.begin(), m_weatherRequests.end(),
                       [packet](const WeatherRequest& each) { return each.packet == packet; }),
        m_weatherRequests.end());
}

int FsInterfaceSimConnect::CreateStation(const std::string& icao, const std::string& name,
                                         float latitude, float longitude, float elevation)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    const Result result = m_client->api().SimConnect_WeatherCreateStation(
        m_client->handle(), simconnectid::kStationRequest, icao.c_str(), name.c_str(), latitude,
        longitude, elevation);
    if (result < kOk) {
        return simresult::kCallFailed;
    }
    return result > kOk ? simresult::kNotCreated : simresult::kNone;
}

int FsInterfaceSimConnect::GetCloudState(const CloudArea& area, std::vector<std::uint8_t>& map)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    takeWaiting(); // as in sendRequest
    const Result result = m_client->api().SimConnect_WeatherRequestCloudState(
        m_client->handle(), simconnectid::kCloudRequest, static_cast<float>(area.lower.latitude()),
        static_cast<float>(area.lower.longitude()), static_cast<float>(area.lowerAltitude),
        static_cast<float>(area.upper.latitude()), static_cast<float>(area.upper.longitude()),
        static_cast<float>(area.upperAltitude), 0);
    if (result != kOk) {
        return simresult::kCloudRequest;
    }
    logSentId(QStringLiteral("Cloud state"));
    if (!WaitForMessages({SimConnectReply::CloudState}).has(SimConnectReply::CloudState)) {
        if (!std::exchange(m_toldCloudFailure, true)) { // asked for every other second
            log(QStringLiteral("(Interface SimConnect) - Get cloud state failed"),
                loglevel::kError);
        }
        return unlessEnded(simresult::kCallFailed);
    }
    m_toldCloudFailure = false;
    map = m_answers.cloudState;
    return simresult::kCloudReply;
}

int FsInterfaceSimConnect::LoadFlightPlan(const QString& path)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    const Result result = m_client->api().SimConnect_FlightPlanLoad(
        m_client->handle(), QFile::encodeName(path).constData());
    return result < kOk ? simresult::kCallFailed : simresult::kNone;
}

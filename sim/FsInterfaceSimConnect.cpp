#include "sim/FsInterfaceSimConnect.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/SlicedSleep.h"
#include "app/base/StopFlag.h"
#include "sim/clients/SimulatorClients.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

/// What starts every line of this interface.
QString logLine(const QString& text)
{
    return QStringLiteral("(Interface SimConnect) - ") + text;
}

/// Number of the simulator from "AppVersion=10.0.61259.0"; kNone for one that isn't known.
aviation::FsId fsIdOf(const QString& version)
{
    constexpr int kKeyLength = 11;
    const int major =
        version.mid(kKeyLength, version.indexOf(QLatin1Char('.')) - kKeyLength).toInt();
    switch (major) {
    case 2:
        return aviation::fsid::kPrepar3dV2;
    case 3:
        return aviation::fsid::kPrepar3dV3;
    case 4:
        return aviation::fsid::kPrepar3dV4;
    case 5:
    case 6:
        return aviation::fsid::kPrepar3dV5;
    case 10:
        return aviation::fsid::kFsx;
    case 11:
        return aviation::fsid::kFs2020;
    default:
        return aviation::fsid::kNone;
    }
}

} // namespace

FsInterfaceSimConnect::FsInterfaceSimConnect(SimulatorClients& clients, QString simulatorFolder,
                                             const StopFlag& stop, QObject* parent)
    : FsInterfaceBase(parent)
    , m_clients(clients)
    , m_simulatorFolder(std::move(simulatorFolder))
    , m_stop(stop)
{}

FsInterfaceSimConnect::~FsInterfaceSimConnect() = default;

void FsInterfaceSimConnect::log(const QString& text, int level)
{
    Q_EMIT sigDebugString(text, level);
}

void FsInterfaceSimConnect::sleepUnlessStopped(int milliseconds) const
{
    sleepUnless([this] { return m_stop.raised(); }, milliseconds);
}

int FsInterfaceSimConnect::Connect()
{
    if (m_connected) {
        return simresult::kAlreadyConnected;
    }
    if (!m_client) {
        std::string problem;
        auto api = m_clients.simConnect(m_simulatorFolder.toStdString(), problem);
        if (!api) {
            log(logLine(outsidetext::forLog(QString::fromStdString(problem))), loglevel::kError);
            return simresult::kNotConnected;
        }
        m_client = std::make_unique<SimConnectClient>(std::move(api));
    }
    m_polls = {};
    m_checks = {};
    m_weatherTexts = {};
    m_weatherRequests.clear();
    m_newAircraft = false;
    m_landingRate = 0;
    m_connected = openClient();
    if (!m_connected) {
        m_client->close();
        return simresult::kNotConnected;
    }
    return simresult::kNone;
}

bool FsInterfaceSimConnect::openClient()
{
    constexpr int kSettlingMs = 1000; // the simulator refuses definitions that come at once
    if (!m_client->open()) {
        log(logLine(QStringLiteral("Connect HRESULT FAILED")), loglevel::kError);
        return false;
    }
    sleepUnlessStopped(kSettlingMs);
    if (m_stop.raised()) {
        return false;
    }
    if (!m_client->define()) {
        log(logLine(QStringLiteral("Init HRESULT FAILED")), loglevel::kError);
        return false;
    }
    // Deliberately connects without the open message as well; the simulator stays unknown then.
    WaitForMessages({SimConnectReply::Open});
    if (m_client->hasQuit()) {
        return false;
    }
    m_fsVersion = fsIdOf(m_client->applicationVersion());
    return true;
}

int FsInterfaceSimConnect::Disconnect()
{
    m_connected = false;
    const bool closed = !m_client || m_client->close();
    return closed ? simresult::kNone : simresult::kCallFailed;
}

int FsInterfaceSimConnect::GetFsVersion(aviation::FsId& id, QString& name)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    m_fsVersion = fsIdOf(m_client->applicationVersion());
    id = m_fsVersion;
    name = m_client->applicationName();
    return simresult::kNone;
}

int FsInterfaceSimConnect::GetInterface(int& id, QString& name)
{
    id = aviation::interfaceid::kSimConnect;
    name = QStringLiteral("SimConnect");
    return simresult::kNone;
}

SimConnectReply FsInterfaceSimConnect::Dispatch()
{
    const SimConnectReply reply = m_connected ? m_client->Dispatch() : SimConnectReply::Nothing;
    if (reply == SimConnectReply::Exception) {
        noteRefusal(); // the caller says what was refused
    } else {
        takeReply(reply);
    }
    return reply;
}

SimConnectReplies FsInterfaceSimConnect::takeWaiting()
{
    constexpr int kMostMessages = 1000; // a simulator that floods doesn't hold the worker
    SimConnectReplies came;
    for (int message = 0; message < kMostMessages; ++message) {
        const SimConnectReply reply = m_client->Dispatch();
        takeReply(reply);
        came.add(reply);
        if (reply == SimConnectReply::Nothing || reply == SimConnectReply::Failed
            || reply == SimConnectReply::Quit)
        {
            break;
        }
    }
    return came;
}

SimConnectReplies
FsInterfaceSimConnect::WaitForMessages(std::initializer_list<SimConnectReply> awaited, int rounds)
{
    constexpr int kPauseMs = 50;
    SimConnectReplies came;
    for (int round = 0; round < rounds && !m_stop.raised(); ++round) {
        came.add(takeWaiting());
        if (came.hasAnyOf(awaited) || m_client->hasQuit()) {
            return came;
        }
        sleepUnlessStopped(kPauseMs);
    }
    if (came.last() == SimConnectReply::Failed) {
        log(logLine(QStringLiteral("Dispatch HRESULT FAILED")), loglevel::kError);
    }
    return came;
}

void FsInterfaceSimConnect::takeReply(SimConnectReply reply)
{
    switch (reply) {
    case SimConnectReply::Exception:
        logException();
        noteRefusal();
        break;
    case SimConnectReply::Open:
        log(logLine(m_client->openText(outsidetext::forLog(m_client->applicationName())).trimmed()),
            loglevel::kNotification);
        break;
    case SimConnectReply::Paused:
        m_aircraftRequests = 0; // asked again with the next one, so that its end is seen
        break;
    case SimConnectReply::Observation:
        noteObservation();
        break;
    case SimConnectReply::Aircraft:
        keepAircraft();
        break;
    case SimConnectReply::Fuel:
    case SimConnectReply::Payload:
    case SimConnectReply::Radios:
    case SimConnectReply::CloudState:
        keepAnswers();
        break;
    default:
        break;
    }
}

void FsInterfaceSimConnect::logException()
{
    log(logLine(m_client->exceptionText()), loglevel::kError);
    if (!m_client->refusedVariable().isEmpty()) {
        log(logLine(QStringLiteral("The simulator refuses the variable \"%1\". What is asked for "
                                   "together with it doesn't come.")
                        .arg(m_client->refusedVariable())),
            loglevel::kError);
    }
}

int FsInterfaceSimConnect::unlessEnded(int result) const
{
    return m_client->hasQuit() ? simresult::kTimeout : result;
}

/// Without an answer deliberately a success, unless fetching it failed.
int FsInterfaceSimConnect::resultOf(const SimConnectReplies& came, SimConnectReply awaited) const
{
    const bool failed = !came.has(awaited) && came.last() == SimConnectReply::Failed;
    return unlessEnded(failed ? simresult::kCallFailed : simresult::kNone);
}

int FsInterfaceSimConnect::checkLink()
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    const bool failed = takeWaiting().has(SimConnectReply::Failed);
    return unlessEnded(m_checks.count(failed ? simresult::kCallFailed : simresult::kNone));
}

void FsInterfaceSimConnect::keepAircraft()
{
    keepAnswers();
    m_newAircraft = true;
    const std::int32_t landingRate = m_answers.aircraft.landingRate;
    m_landingRate = landingRate != 0 ? landingRate : m_landingRate;
}

void FsInterfaceSimConnect::keepAnswers()
{
    m_answers = {m_client->aircraft(), m_client->fuel(), m_client->payload(), m_client->radios(),
                 m_client->cloudState()};
}

bool FsInterfaceSimConnect::sendRequest(const SimConnectRequest& request, const QString& name)
{
    takeWaiting(); // what comes late for an earlier request isn't taken for this one's
    if (!m_client->request(request)) {
        return false;
    }
    logSentId(name);
    return true;
}

void FsInterfaceSimConnect::logSentId(const QString& name)
{
    log(QStringLiteral("Request %1, SentId: %2").arg(name, QString::number(m_client->lastSentId())),
        loglevel::kDebug);
}

int FsInterfaceSimConnect::GetAircraftData(aviation::structs::AircraftData& data)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    aviation::structs::AircraftData aircraft;
    const int result = unlessEnded(m_polls.count(pollAircraft(aircraft)));
    if (result == simresult::kNone) {
        data = aircraft;
    }
    return result;
}

/// Asks only when no answer is under way: a simulator that is slower than the polls would fall
/// further behind with each.
int FsInterfaceSimConnect::pollAircraft(aviation::structs::AircraftData& data)
{
    using R = SimConnectReply;
    const SimConnectReplies late = takeWaiting();
    const bool isAsked = m_client->awaitsAircraft()
                         || sendRequest(simconnectid::kAircraft, QStringLiteral("Aircraft"));
    const SimConnectReplies came =
        isAsked ? WaitForMessages({R::Aircraft, R::Paused, R::CloudState}) : takeWaiting();
    if (came.has(R::Paused)
        || (m_client->isPausedByKey() && isAsked && answersWhilePaused(late, came))) {
        return simresult::kPaused;
    }
    // A late one is the newest where nothing comes in time: a slow simulator isn't a lost one.
    if (m_newAircraft) {
        return takeAircraft(data);
    }
    if (came.has(R::CloudState)) {
        return simresult::kCloudReply;
    }
    if (!std::exchange(m_toldFailure, true)) {
        log(logLine(QStringLiteral("Get Aircraft Data failed")), loglevel::kError);
    }
    return simresult::kCallFailed;
}

/// One that is paused may leave the aircraft unanswered; whether it hangs shows another question.
bool FsInterfaceSimConnect::answersWhilePaused(const SimConnectReplies& late,
                                               const SimConnectReplies& came)
{
    using R = SimConnectReply;
    if (came.has(R::Failed)) {
        return false;
    }
    const auto answers = {R::Aircraft, R::CloudState, R::Paused, R::Running};
    return late.hasAnyOf(answers) || came.hasAnyOf(answers)
           || (m_client->requestState() && WaitForMessages(answers).hasAnyOf(answers));
}

int FsInterfaceSimConnect::takeAircraft(aviation::structs::AircraftData& data)
{
    m_toldFailure = false;
    m_newAircraft = false;
    if (!m_client->hasClock() && !std::exchange(m_toldClock, true)) {
        log(logLine(QStringLiteral("The simulator's clock shows no time of the calendar. Its time "
                                   "isn't used.")),
            loglevel::kWarning);
    }
    data = m_answers.aircraft;
    if (m_aircraftRequests == 0 && isPaused()) {
        return simresult::kPaused;
    }
    data.landingRate = std::exchange(m_landingRate, 0);
    constexpr int kRequestsPerCheck = 11;
    m_aircraftRequests = (m_aircraftRequests + 1) % kRequestsPerCheck;
    return simresult::kNone;
}

bool FsInterfaceSimConnect::isPaused()
{
    return m_client->requestState()
           && WaitForMessages({SimConnectReply::Paused, SimConnectReply::Running})
                  .has(SimConnectReply::Paused);
}

int FsInterfaceSimConnect::GetAircraftFuel(aviation::structs::AircraftFuel& fuel)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    if (!sendRequest(simconnectid::kFuel, QStringLiteral("AircraftFuel"))) {
        return simresult::kCallFailed;
    }
    const SimConnectReplies came = WaitForMessages({SimConnectReply::Fuel}, kManyRounds);
    if (came.has(SimConnectReply::Fuel)) {
        fuel = m_answers.fuel;
    }
    return resultOf(came, SimConnectReply::Fuel);
}

int FsInterfaceSimConnect::GetAircraftPayload(aviation::structs::AircraftPayload& payload)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    if (!sendRequest(simconnectid::kPayload, QStringLiteral("AircraftPayload"))) {
        return simresult::kCallFailed;
    }
    const SimConnectReplies came = WaitForMessages({SimConnectReply::Payload}, kManyRounds);
    if (came.has(SimConnectReply::Payload)) {
        payload = m_answers.payload;
    }
    return resultOf(came, SimConnectReply::Payload);
}

int FsInterfaceSimConnect::GetRadioFrequencys(aviation::structs::RadioFrequencys& radios)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    if (!sendRequest(simconnectid::kRadios, QStringLiteral("RadioFrequencys"))
        || !WaitForMessages({SimConnectReply::Radios}, kManyRounds).has(SimConnectReply::Radios))
    {
        log(logLine(QStringLiteral("Get Radio Frequencys failed")), loglevel::kError);
        return unlessEnded(simresult::kCallFailed);
    }
    radios = m_answers.radios;
    return simresult::kNone;
}

int FsInterfaceSimConnect::SetAircraftPayload(const aviation::structs::AircraftPayload& payload)
{
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    int number = 0;
    for (const auto& station : payload.stations) {
        if (!m_client->setPayloadWeight(++number, static_cast<double>(station.weight))) {
            return simresult::kCallFailed;
        }
    }
    return simresult::kNone;
}

int FsInterfaceSimConnect::SetAircraftFuel(const aviation::structs::AircraftFuel& fuel)
{
    constexpr double kPercent = 100.0;
    if (!m_connected) {
        return simresult::kNotConnected;
    }
    std::array<double, kSimConnectTanks> levels = {};
    for (std::size_t slot = 0; slot < levels.size(); ++slot) {
        const std::int32_t id = simConnectTankId(slot);
        const auto tank =
            std::find_if(fuel.tanks.begin(), fuel.tanks.end(),
                         [id](const aviation::structs::FuelTank& each) { return each.id == id; });
        if (tank != fuel.tanks.end() && tank->capacity != 0.0) {
            levels[slot] = tank->level / kPercent;
        }
    }
    return m_client->setFuelLevels(levels) ? simresult::kNone : simresult::kCallFailed;
}

#include "sim/ConnectWorker.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "aviation/support/ScopedLock.h"
#include "sim/ConnectJobs.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceFactory.h"

#include <algorithm>
#include <array>

using aviation::ScopedLock;

ConnectWorker::ConnectWorker(const Settings& settings, FsInterfaceFactory& interfaces,
                             const StopFlag& stop, QObject* parent)
    : JobThread(QStringLiteral("ConnectWorker"), simresult::kWrongArguments, &stop, parent)
    , m_settings(settings)
    , m_interfaces(interfaces)
{}

ConnectWorker::~ConnectWorker()
{
    end();
    if (m_interface) {
        m_interface->disconnect(this);
    }
}

bool ConnectWorker::AddJob(const Job& job)
{
    addJob(job);
    return true;
}

bool ConnectWorker::IsConnected() const
{
    return m_connected;
}

ConnectWorker::Identity ConnectWorker::identity() const
{
    const ScopedLock lock(m_stateMutex);
    return m_identity;
}

void ConnectWorker::setIdentity(const Identity& identity)
{
    const ScopedLock lock(m_stateMutex);
    m_identity = identity;
}

int ConnectWorker::interfaceType() const
{
    return identity().interfaceId;
}

aviation::FsId ConnectWorker::fsVersion() const
{
    return identity().fsVersion;
}

QString ConnectWorker::fsName() const
{
    return identity().fsName;
}

QString ConnectWorker::interfaceName() const
{
    return identity().interfaceName;
}

QString ConnectWorker::errorText(int error)
{
    return FsInterfaceBase::ErrorText(error);
}

BridgeEnds ConnectWorker::bridgeEnds() const
{
    return identity().ends;
}

aviation::structs::AircraftData ConnectWorker::aircraftData() const
{
    const ScopedLock lock(m_stateMutex);
    return m_aircraftData;
}

aviation::structs::AircraftFuel ConnectWorker::fuel() const
{
    const ScopedLock lock(m_stateMutex);
    return m_fuel;
}

void ConnectWorker::setFuel(const aviation::structs::AircraftFuel& fuel)
{
    const ScopedLock lock(m_stateMutex);
    m_fuel = fuel;
}

aviation::structs::AircraftPayload ConnectWorker::payload() const
{
    const ScopedLock lock(m_stateMutex);
    return m_payload;
}

void ConnectWorker::setPayload(const aviation::structs::AircraftPayload& payload)
{
    const ScopedLock lock(m_stateMutex);
    m_payload = payload;
}

aviation::structs::RadioFrequencys ConnectWorker::radios() const
{
    const ScopedLock lock(m_stateMutex);
    return m_radios;
}

void ConnectWorker::setRadios(const aviation::structs::RadioFrequencys& radios)
{
    const ScopedLock lock(m_stateMutex);
    m_radios = radios;
}

std::vector<std::uint8_t> ConnectWorker::cloudState() const
{
    const ScopedLock lock(m_stateMutex);
    return m_cloudState;
}

void ConnectWorker::setWeatherRecords(const std::vector<NewWeather>& records)
{
    const ScopedLock lock(m_stateMutex);
    m_weather.records = records;
}

void ConnectWorker::setMetars(const std::vector<QString>& metars)
{
    const ScopedLock lock(m_stateMutex);
    m_weather.metars = metars;
}

void ConnectWorker::setWinds(const std::vector<QString>& winds)
{
    const ScopedLock lock(m_stateMutex);
    m_weather.winds = winds;
}

void ConnectWorker::SetEvent(int event)
{
    m_event = event;
}

void ConnectWorker::DataReceived(const QByteArray& byteArray)
{
    {
        const ScopedLock lock(m_stateMutex);
        m_received = byteArray;
    }
    Q_EMIT sigDataReceived(byteArray);
}

void ConnectWorker::OnDebugString(const QString& item, int level)
{
    log(item, level);
}

void ConnectWorker::log(const QString& text, int level)
{
    Q_EMIT sigOutputDebugString(text, level);
}

QString ConnectWorker::nameForLog(const Job& job) const
{
    return outsidetext::forLog(job.name);
}

void ConnectWorker::jobDone(const Job& job, int result)
{
    log(QStringLiteral("(ConnectWorker) - Job finished ID: %1, Name: %2")
            .arg(QString::number(job.id), outsidetext::forLog(job.name)),
        loglevel::kDebug);
    const bool lost = result == simresult::kTimeout && m_interface != nullptr;
    if (lost) { // first: what is posted as an answer to the signal isn't left behind
        leaveQueue();
    }
    Q_EMIT sigJobFinish(job.id, job.name, result);
    if (lost) {
        // The connected flag deliberately stays: the disconnect that follows clears it.
        m_interface->Disconnect();
        dropInterface();
    }
}

/// The objects live and die on this thread, so nobody else can still be using it.
void ConnectWorker::dropInterface()
{
    m_interface->disconnect(this);
    m_interface.reset();
    m_loggedAircraftError = simresult::kNone;
}

const ConnectWorker::JobRow* ConnectWorker::rowOf(int jobId)
{
    using W = ConnectWorker;
    namespace job = connectjob;
    static constexpr std::array kRows{
        JobRow{job::kConnect, false, &W::connectSimulator},
        JobRow{job::kDisconnect, false, &W::disconnectSimulator},
        JobRow{job::kAircraftData, true, &W::getAircraftData},
        JobRow{job::kEditorAircraftData, true, &W::getAircraftData},
        JobRow{job::kEditorAircraftDataAgain, true, &W::getAircraftData},
        JobRow{job::kGetFuel, true, &W::getFuel},
        JobRow{job::kSetFuel, true, &W::setFuelInSimulator},
        JobRow{job::kSetPayload, true, &W::setPayloadInSimulator},
        JobRow{job::kGetPayload, true, &W::getPayload},
        JobRow{job::kEditorGetPayload, true, &W::getPayload},
        JobRow{job::kSetPayloadAgain, true, &W::setPayloadInSimulator},
        JobRow{job::kSetWeather, true, &W::setWaitingWeather},
        JobRow{job::kSetTheme, true, &W::setTheme},
        JobRow{job::kSetXPlaneWeather, true, &W::setXPlaneWeather},
        JobRow{job::kSetXPlane12Weather, true, &W::setXPlaneWeather},
        JobRow{job::kSetXPlaneFiles, true, &W::setWaitingWeather},
        JobRow{job::kSetWindLayers, true, &W::setWindLayers},
        JobRow{job::kSetVisibility, true, &W::setVisibility},
        JobRow{job::kSetGlobalWind, true, &W::setGlobalWind},
        JobRow{job::kSetTurbulence, true, &W::setTurbulence},
        JobRow{job::kActivateWeather, true, &W::activateWeather},
        JobRow{job::kClearWeather, true, &W::clearWeather},
        JobRow{job::kCreateStation, true, &W::createStation},
        JobRow{job::kCreateStationAgain, true, &W::createStation},
        JobRow{job::kWeatherAt, true, &W::weatherAt},
        JobRow{job::kCloudMap, true, &W::cloudMap},
        JobRow{job::kLoadFlightPlan, true, &W::loadFlightPlan},
        JobRow{job::kSendText, true, &W::sendText},
        JobRow{job::kWindAtAircraft, true, &W::setWindAtAircraft},
        JobRow{job::kGetRadios, true, &W::getRadioFrequencys},
        JobRow{job::kSetRadios, true, &W::setRadioFrequencys},
        JobRow{job::kDateTime, true, &W::getDateTime},
        JobRow{job::kServerConfig, true, &W::requestServerConfig},
        JobRow{job::kAnnounceAddress, true, &W::announceAddress},
        JobRow{job::kNotImplemented, true, &W::notImplemented},
        JobRow{job::kWrongVersion42, true, &W::wrongVersion},
        JobRow{job::kWrongVersion43, true, &W::wrongVersion},
        JobRow{job::kWrongVersion44, true, &W::wrongVersion},
        JobRow{job::kCheckLink, false, &W::checkLink},
    };
    const auto* const row =
        std::find_if(kRows.begin(), kRows.end(),
                     [jobId](const JobRow& candidate) { return candidate.id == jobId; });
    return row == kRows.end() ? nullptr : row;
}

int ConnectWorker::perform(Job& job, int /*before*/)
{
    const JobRow* row = rowOf(job.id);
    if (row == nullptr) {
        return simresult::kNone;
    }
    if (row->needsInterface && !m_interface) {
        return simresult::kNoInterface;
    }
    return confirmed((this->*row->work)(job));
}

/// A result after a look at the connection. A write without a reply counts as a success, also where
/// the other end is gone.
int ConnectWorker::confirmed(int result)
{
    const bool doubtful =
        result == simresult::kNone && m_interface && !m_interface->writeAnswered();
    return doubtful ? m_interface->checkLink() : result;
}

int ConnectWorker::checkLink(Job& /*job*/)
{
    return m_interface ? m_interface->checkLink() : simresult::kNone;
}

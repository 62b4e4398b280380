#include "sim/ConnectWorker.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/SlicedSleep.h"
#include "app/base/StopFlag.h"
#include "aviation/support/ScopedLock.h"
#include "sim/ConnectJobs.h"
#include "sim/FsInterfaceBase.h"
#include "sim/FsInterfaceFactory.h"
#include "sim/LogText.h"

#include <algorithm>
#include <array>
#include <exception>

using aviation::ScopedLock;

ConnectWorker::ConnectWorker(const Settings& settings, FsInterfaceFactory& interfaces,
                             const StopFlag& stop, QObject* parent)
    : QThread(parent)
    , m_settings(settings)
    , m_interfaces(interfaces)
    , m_stop(stop)
{
    // A job posted while the thread was on its way out would lie until the next post. What a lost
    // connection left behind does lie until then.
    connect(this, &QThread::finished, this, [this] {
        if (m_queue.size() > m_leftBehind && !m_stop.raised()) {
            start();
        }
    });
    // The last that the thread does of its own; join takes the same lock and so comes after it.
    connect(
        this, &QThread::finished, this, [this] { const ScopedLock lock(m_runMutex); },
        Qt::DirectConnection);
}

ConnectWorker::~ConnectWorker()
{
    requestInterruption();
    join();
    if (m_interface) {
        m_interface->disconnect(this);
    }
}

void ConnectWorker::join()
{
    wait();
    const ScopedLock lock(m_runMutex);
}

bool ConnectWorker::AddJob(const Job& job)
{
    m_queue.add(job);
    return true;
}

int ConnectWorker::queuedJobs() const
{
    return static_cast<int>(m_queue.size());
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

bool ConnectWorker::stopped() const
{
    return m_stop.raised() || isInterruptionRequested();
}

void ConnectWorker::sleepUnlessStopped(int milliseconds) const
{
    SleepUnless([this] { return stopped(); }, milliseconds);
}

void ConnectWorker::run()
{
    {
        const ScopedLock lock(m_runMutex);
        m_leftBehind = 0;
    }
    while (m_queue.size() > 0 && !stopped()) {
        Job job = m_queue.takeFirst();
        log(QStringLiteral("(ConnectWorker) - Next Job ID: %1, Name: %2")
                .arg(QString::number(job.id), LogText(job.name)),
            loglevel::kDebug);
        if (job.id == kNoJob) {
            continue;
        }
        m_lastError = perform(job);
        log(QStringLiteral("(ConnectWorker) - Job finished ID: %1, Name: %2")
                .arg(QString::number(job.id), LogText(job.name)),
            loglevel::kDebug);
        const bool lost = m_lastError == simresult::kTimeout && m_interface != nullptr;
        if (lost) { // counted first: what is posted as an answer to the signal isn't left behind
            m_leftBehind = m_queue.size();
        }
        Q_EMIT sigJobFinish(job.id, job.name, m_lastError);
        if (lost) {
            // The connected flag deliberately stays: the disconnect that follows clears it.
            m_interface->Disconnect();
            dropInterface();
            return;
        }
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
    };
    const auto* const row =
        std::find_if(kRows.begin(), kRows.end(),
                     [jobId](const JobRow& candidate) { return candidate.id == jobId; });
    return row == kRows.end() ? nullptr : row;
}

int ConnectWorker::perform(Job& job)
{
    const JobRow* row = rowOf(job.id);
    if (row == nullptr) {
        return simresult::kNone;
    }
    if (row->needsInterface && !m_interface) {
        return simresult::kNoInterface;
    }
    try {
        return (this->*row->work)(job);
    } catch (const std::exception& failure) { // out of memory is all that can arrive here
        log(QStringLiteral("(ConnectWorker) - Job %1 failed: %2")
                .arg(QString::number(job.id), LogText(QString::fromLocal8Bit(failure.what()))),
            loglevel::kError);
        return simresult::kWrongArguments;
    }
}

#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "app/cycle/CycleRules.h"
#include "app/cycle/DirectWind.h"
#include "app/download/GlobalWindDownload.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/ConnectJobLog.h"
#include "app/jobs/PreparedWeather.h"
#include "app/jobs/SimulatorLink.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/AircraftDatagrams.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "sim/OwnAddress.h"
#include "sim/SimResult.h"
#include "weather/output/WeatherWrapper.h"

#include <QStringList>

void Controller::OnJobConnectWorkerFinished(int jobId, QString jobName, int error)
{
    if (m_stop.raised()) {
        return;
    }
    if (jobId == connectjob::kAircraftData && error == simresult::kPaused) {
        m_aircraftDataValid = false;
        m_connectJobLog->forget(jobId);
        return;
    }
    if (jobId == connectjob::kCloudMap && error == simresult::kCloudReply) {
        error = simresult::kNone; // how a cloud map says that it came
        Q_EMIT sigCloudsRGB(m_connectWorker->cloudState());
    }
    handleConnectJob(jobId, jobName, error);
    Q_EMIT sigFinishJobForAircraftEditor(jobId, jobName, error);
    m_connectJobLog->jobEnded(jobId, jobName, error);
    if (error == simresult::kTimeout) {
        m_link->takeLoss();
    }
}

void Controller::handleConnectJob(int jobId, const QString& jobName, int error)
{
    switch (jobId) {
    case connectjob::kConnect:
        m_link->takeConnectResult(error);
        break;
    case connectjob::kDisconnect:
        showDisconnected();
        break;
    case connectjob::kAircraftData:
        if (error == simresult::kNone) {
            aircraftDataFinished();
        }
        break;
    case connectjob::kSetWeather:
    case connectjob::kSetTheme:
    case connectjob::kSetXPlaneWeather:
    case connectjob::kSetXPlane12Weather:
    case connectjob::kSetXPlaneFiles:
        m_preparedWeather->takeSet(error);
        m_link->takeWeatherSet(error);
        m_timerWeather.start();
        break;
    case connectjob::kSetGlobalWind:
    case connectjob::kSetTurbulence:
        globalWindSent(jobId, error);
        break;
    case connectjob::kCreateStation:
        stationCreated(jobName, error);
        break;
    case connectjob::kWeatherAt:
        simulatorMetar(error == simresult::kNone ? jobName : QString());
        break;
    case connectjob::kLoadFlightPlan:
        flightPlanSent(jobName, error);
        break;
    case connectjob::kWindAtAircraft:
        m_directWind->windFinished(error);
        if (error != simresult::kNone) {
            m_reporting.log(QStringLiteral("(Controller) DWC-ErrorNum:%1").arg(error),
                            m_connectJobLog->levelOf(jobId, error));
        }
        break;
    case connectjob::kSetWindLayers:
        m_directWind->windFinished(error);
        break;
    case connectjob::kAnnounceAddress:
        if (error == simresult::kNone) {
            m_datagrams->bind(streamAddress(), jobName);
        }
        break;
    default:
        handleRecordJob(jobId);
        break;
    }
}

void Controller::globalWindSent(int jobId, int error)
{
    if (error != simresult::kNone) {
        m_globalWindDownload->sendFailed();
    }
    if (jobId == connectjob::kSetTurbulence) { // the second of the two files
        m_reporting.log(QStringLiteral("(ConnectWorker) Activate weather XPlane"),
                        loglevel::kNotification);
        m_posts.toSimulator(
            Job(connectjob::kActivateWeather, QStringLiteral("activate weather xplane")));
    }
}

/// Jobs whose result is a record of the worker.
void Controller::handleRecordJob(int jobId)
{
    switch (jobId) {
    case connectjob::kGetFuel:
        m_aircraftFuel = m_connectWorker->fuel();
        break;
    case connectjob::kGetPayload:
        m_aircraftPayload = m_connectWorker->payload();
        break;
    case connectjob::kGetRadios: {
        aviation::structs::RadioFrequencys radios = m_connectWorker->radios();
        m_view.SetFrequencys(radios);
        break;
    }
    default:
        break;
    }
}

void Controller::connected()
{
    constexpr int kMsPerSecond = 1000;
    m_connectJobLog->forgetAll();
    if (m_link->isAfterLoss() && m_counters.msSinceUpdate != cycle::kNever) {
        // Due at the next tick: a simulator that was started again has no weather.
        m_counters.msSinceUpdate = (m_settings.updateTime() + 1) * kMsPerSecond;
    }
    m_directWind->connected();
    m_aircraftDataValid = false; // what is known of the aircraft is of the last connection
    dropPrepared();
    m_preparedWeather->connected();
    const aviation::FsId fsId = m_connectWorker->fsVersion();
    m_view.setConnectText(tr("Disconnect"), true);
    m_view.pageData().setSimInterfaceInfo(m_connectWorker->fsName() + QStringLiteral(" - ")
                                          + m_connectWorker->interfaceName());
    m_weather->setSimulator(fsId);
    Q_EMIT sigIsConnected(m_connectWorker->interfaceType());
    if (m_settings.fsMessage()) {
        m_posts.toSimulator(Job(connectjob::kSendText,
                                QStringLiteral("Cirrilon %1 connected").arg(Settings::version())));
    }
    const char* const obstacle = cycle::dwcObstacle(fsId);
    m_view.pageData().setDwcState(obstacle != nullptr ? tr(obstacle) : QString(),
                                  obstacle == nullptr);
    if (m_settings.interfaceType() == aviation::interfaceid::kBridge) {
        m_posts.toSimulator(Job(connectjob::kAnnounceAddress, streamAddress()));
    }
    if (m_settings.clearWxOnConnect() && !m_link->isReconnect()) {
        OnClearWX();
        m_clearedOnConnect = true;
    }
    if (m_weatherDownload->isUnderWay() || m_weatherDecoded) {
        m_view.setSetWxAction(true, tr("Set WX"), QString());
    }
}

void Controller::showDisconnected()
{
    m_view.pageData().setSimInterfaceInfo(tr("not connected"));
    m_view.setConnectText(tr("Connect"), false);
    m_view.pageData().clearData();
    m_view.setSetWxAction(false, tr("Set WX"), QString());
    m_datagrams->close();
    // Nothing of the last flight is taken for one of the next simulator.
    m_aircraftDataValid = false;
    m_aircraftTitle.clear();
    m_view.SetAircraftName(QString(), QString(), false);
    Q_EMIT sigProgress(0, 0, QString());
    m_weatherWorker->giveWay();
    dropPrepared();
    resumeWeatherClock(); // the job that would do so may have gone with the connection
}

/// The own address for the bridge's stream, valid while connected.
QString Controller::streamAddress() const
{
    const BridgeEnds ends = m_connectWorker->bridgeEnds();
    return ownaddress::toAnnounce(m_settings.myIp(), ends.own, ends.server);
}

void Controller::streamFellSilent()
{
    m_view.showNotice(Notice::Connection,
                      tr("No aircraft data come from the bridge by themselves, so they are asked "
                         "for. Check \"Own IP address\" in the settings under Interface."));
    OnTimerOneSecond();
}

void Controller::showConnection()
{
    const bool isConnected = IsConnected();
    m_view.setConnectText(isConnected ? tr("Disconnect") : tr("Connect"), isConnected);
    if (!isConnected) {
        m_view.pageData().clearData();
    }
}

void Controller::udpReadReady()
{
    m_datagrams->readOne();
}

void Controller::takeDatagram(const aviation::structs::AircraftData& aircraft, bool isAnswer)
{
    m_aircraftData = aircraft;
    if (isAnswer) {
        OnJobConnectWorkerFinished(connectjob::kAircraftData,
                                   QStringLiteral("Aircraft data from UDP"), simresult::kNone);
    }
}

void Controller::aircraftDataFinished()
{
    m_aircraftDataValid = true;
    if (!m_datagrams->isStreaming()) { // else the datagram is newer than the answer
        m_aircraftData = m_connectWorker->aircraftData();
    }
    m_view.SetAircraftData(m_aircraftData);
    const QString title = QString::fromStdWString(m_aircraftData.name);
    if (title != m_aircraftTitle) {
        m_aircraftTitle = title;
        m_view.SetAircraftName(title, QString(), false);
    }
}

void Controller::stationCreated(const QString& text, int error)
{
    constexpr int kFields = 5;
    const int interfaceType = m_connectWorker->interfaceType();
    // FSUIPC can't create a station, but takes weather for any place.
    const bool unneeded =
        interfaceType == aviation::interfaceid::kFsuipc && error == simresult::kNotImplemented;
    if (error != simresult::kNone && !unneeded) {
        return; // the worker has said so
    }
    if (!unneeded) {
        m_reporting.log(
            QStringLiteral("(ConnectWorker) Station created: %1").arg(outsidetext::forLog(text)),
            loglevel::kNotification);
    }
    const QStringList fields = text.split(QLatin1Char(':'));
    if (fields.size() < kFields) {
        return;
    }
    switch (interfaceType) {
    case aviation::interfaceid::kSimConnect:
    case aviation::interfaceid::kFsuipcSimConnect:
        m_posts.toWeather(Job(weatherjob::kSimConnectStation, fields.front()));
        break;
    case aviation::interfaceid::kFsuipc:
        m_posts.toWeather(Job(weatherjob::kFsuipcStation, fields.front()));
        break;
    default:
        break;
    }
}

void Controller::simulatorMetar(const QString& text)
{
    constexpr int kIcaoLength = 4;
    if (text.size() >= kIcaoLength) {
        const QString icao = text.left(kIcaoLength);
        m_view.setSetWxAction(true, tr("Set WX") + QLatin1Char(' ') + icao, icao);
        m_reporting.log(QStringLiteral("(Controller) SimMetar: ") + outsidetext::forLog(text),
                        loglevel::kDebug);
    } else {
        m_view.setSetWxAction(false, tr("Set WX"), QString());
        m_reporting.log(QStringLiteral("(Controller) SimMetar: No Metar"), loglevel::kDebug);
    }
}

void Controller::flightPlanSent(const QString& name, int error)
{
    if (error != simresult::kNone) {
        m_reporting.log(QStringLiteral("(Flightplanner) - flight plan sent, Error:%1 - %2")
                            .arg(error)
                            .arg(ConnectWorker::errorText(error)),
                        loglevel::kError);
        return;
    }
    m_reporting.log(
        QStringLiteral("(Flightplanner) - flight plan sent: %1").arg(outsidetext::forLog(name)),
        loglevel::kNotification);
    m_posts.toSimulator(
        Job(connectjob::kSendText, QStringLiteral("Cirrilon: flight plan imported")));
}

void Controller::OnConnectClicked()
{
    m_link->switchByUser();
}

void Controller::OnClickedSetWX()
{
    m_forceWeatherUpdate = true;
}

void Controller::OnClearWX()
{
    if (IsConnected()) {
        const QString name = QStringLiteral("Clear WX");
        m_posts.toSimulator(Job(connectjob::kClearWeather, name));
        m_connectWorker->AddJob(Job(connectjob::kSendText, name)); // deliberately without a start
    }
}

void Controller::OnNewJobConnectworker(Job job)
{
    if (job.id == connectjob::kSetFuel) {
        m_connectWorker->setFuel(m_aircraftFuel);
    } else if (job.id == connectjob::kSetPayload) {
        m_connectWorker->setPayload(m_aircraftPayload);
    }
    m_posts.toSimulator(job);
}

void Controller::OnRadioChangedByUser(aviation::structs::RadioFrequencys freqs)
{
    m_connectWorker->setRadios(freqs);
    m_posts.toSimulator(Job(connectjob::kSetRadios, QStringLiteral("Set frequency data")));
}

void Controller::OnSendFlightplan(QString filename)
{
    m_posts.toSimulator(Job(connectjob::kLoadFlightPlan, filename));
}

void Controller::OnRequestCloudsRGB(int range, int tilt)
{
    if (m_connectWorker->queuedJobs() < cycle::kMostWaitingJobs) {
        m_posts.toSimulator(
            Job(connectjob::kCloudMap, QStringLiteral("%1:%2").arg(range).arg(tilt)));
    }
}

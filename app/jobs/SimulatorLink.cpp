#include "app/jobs/SimulatorLink.h"

#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "app/base/SlicedSleep.h"
#include "app/base/StopFlag.h"
#include "app/base/UserDialogs.h"
#include "app/cycle/CycleRules.h"
#include "aviation/FsId.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "sim/SimResult.h"

#include <utility>

SimulatorLink::SimulatorLink(Parts parts, QObject* parent)
    : QObject(parent)
    , m_parts(std::move(parts))
{
    m_timerReconnect.setObjectName(QStringLiteral("timerReconnect"));
    m_timerReconnect.setSingleShot(true);
    connect(&m_timerReconnect, &QTimer::timeout, this, &SimulatorLink::tryAgain);
    m_timerWatch.setObjectName(QStringLiteral("timerWatch"));
    m_timerWatch.setInterval(m_parts.watchMs);
    connect(&m_timerWatch, &QTimer::timeout, this, &SimulatorLink::watch);
    // Each job notices by itself that the connection has ended.
    connect(
        &m_parts.worker, &ConnectWorker::sigJobFinish, this,
        [this] {
            if (m_linked) {
                m_timerWatch.start();
            }
        },
        Qt::QueuedConnection);
}

void SimulatorLink::switchByUser()
{
    endReconnecting();
    clearFaults();
    m_byUser = m_connecting || !m_parts.worker.IsConnected();
    if (!m_connecting) {
        switchConnection();
    } else if (!m_parts.worker.IsConnected()) {
        waitForWorker(); // the attempt that is under way is the user's now
    }                    // else it has worked, which the window couldn't say yet
}

void SimulatorLink::connectAtStart()
{
    if (!m_parts.worker.IsConnected()) {
        switchConnection();
    }
}

void SimulatorLink::switchConnection()
{
    if (m_parts.worker.IsConnected()) {
        m_linked = false;
        m_timerWatch.stop();
        m_parts.postJob(Job(connectjob::kDisconnect, QStringLiteral("Disconnect")));
        Q_EMIT sigDisconnecting();
    } else {
        postConnect();
    }
    waitForWorker();
    Q_EMIT sigSwitched();
}

void SimulatorLink::postConnect()
{
    m_connecting = true;
    m_parts.postJob(Job(connectjob::kConnect, QStringLiteral("Connect")));
}

/// A job posted while the thread was on its way out is started here, since the event loop that
/// would do it stands.
void SimulatorLink::waitForWorker()
{
    constexpr int kStepMs = 500;
    const auto stopped = [this] {
        return m_parts.stop.raised();
    };
    do {
        sleepUnless(stopped, kStepMs);
        if (m_parts.worker.queuedJobs() > 0 && !stopped()) {
            m_parts.worker.start();
        }
    } while (m_parts.worker.isRunning() && !stopped());
}

void SimulatorLink::takeConnectResult(int error)
{
    m_connecting = false;
    const bool byUser = std::exchange(m_byUser, false);
    if (m_parts.worker.IsConnected()) {
        takeUp(byUser);
    } else if (m_linked) {
        takeLoss(); // a connect beside a connection that had ended unnoticed
    } else {
        takeFailure(error, byUser);
    }
}

void SimulatorLink::takeUp(bool byUser)
{
    if (std::exchange(m_linked, true)) {
        return; // the second of two connects
    }
    endReconnecting();
    clearFaults();
    m_timerWatch.start();
    m_comesBack = m_lost && !byUser;
    Q_EMIT sigConnected();
    m_lost = false;
    m_comesBack = false;
}

void SimulatorLink::takeFailure(int error, bool byUser)
{
    if (byUser && error == simresult::kWrongApiVersion) {
        m_parts.dialogs.critical(
            QStringLiteral("Cirrilon-Connection Error"),
            QStringLiteral("Not compatible Client-Server API Version!\nCheck the debug log."));
    }
    if (!std::exchange(m_noticed, true)) {
        showFault(error);
    }
    const bool first = m_reconnectDelayMs == 0;
    if (first && error != simresult::kWrongApiVersion
        && m_parts.settings.interfaceType() == aviation::interfaceid::kBridge)
    {
        logNoServer();
    }
    if (m_parts.settings.autoConnect()) {
        scheduleReconnect();
    } else {
        endReconnecting();
    }
}

void SimulatorLink::tryAgain()
{
    if (m_parts.settings.autoConnect() && !m_connecting) {
        postConnect();
    } else {
        endReconnecting(); // the user has switched it off meanwhile
    }
}

/// While no job is posted nobody would see that the other end has closed.
void SimulatorLink::watch()
{
    if (!m_linked) {
        m_timerWatch.stop();
    } else if (m_parts.worker.queuedJobs() == 0 && !m_parts.worker.isRunning()) {
        m_parts.postJob(Job(connectjob::kCheckLink, QStringLiteral("Check link")));
    }
}

void SimulatorLink::logNoServer()
{
    m_parts.log(QStringLiteral("(Controller) - No bridge server answers at %1:%2. Start the "
                               "simulator with its bridge, check address and port in the settings "
                               "under Interface, then press Connect.")
                    .arg(outsidetext::forLog(m_parts.settings.serverIp()))
                    .arg(m_parts.settings.serverPort()),
                loglevel::kWarning);
}

void SimulatorLink::takeWeatherSet(int error)
{
    if (error != simresult::kNone) {
        return; // said by the worker
    }
    if (!m_parts.worker.weatherAnswered()) {
        m_weatherNoticed = true;
        m_parts.view.showNotice(
            Notice::Weather,
            tr("The bridge doesn't answer when weather is sent to it: the simulator may keep its "
               "old weather. Check the bridge, or start it again."));
    } else if (std::exchange(m_weatherNoticed, false)) {
        m_parts.view.clearNotice(Notice::Weather);
    }
}

void SimulatorLink::takeLoss()
{
    const bool wasLinked = std::exchange(m_linked, false);
    m_timerWatch.stop();
    if (m_parts.worker.IsConnected()) {
        switchConnection();
    } else if (wasLinked) {
        Q_EMIT sigLost();
    }
    if (!wasLinked) {
        return; // a connect that failed, or the user has disconnected meanwhile
    }
    m_lost = true;
    clearFaults();
    if (m_parts.settings.autoConnect()) {
        scheduleReconnect();
    }
    showFault(simresult::kTimeout);
    m_noticed = true;
    logLoss();
}

void SimulatorLink::logLoss()
{
    m_parts.log(
        m_parts.settings.autoConnect()
            ? QStringLiteral("(Controller) - The connection to the simulator is lost. Cirrilon "
                             "tries to connect again by itself, first in 10 s, then at growing "
                             "intervals. Press Connect to try at once.")
            : QStringLiteral("(Controller) - The connection to the simulator is lost. Press "
                             "Connect when the simulator or its bridge server runs again."),
        loglevel::kWarning);
}

void SimulatorLink::scheduleReconnect()
{
    m_reconnectDelayMs = cycle::nextReconnectDelay(m_reconnectDelayMs);
    m_timerReconnect.start(m_reconnectDelayMs);
}

void SimulatorLink::endReconnecting()
{
    m_reconnectDelayMs = 0;
    m_timerReconnect.stop();
}

/// Says in the window what is wrong and what to do.
void SimulatorLink::showFault(int error)
{
    const bool again = m_parts.settings.autoConnect();
    QString text;
    if (error == simresult::kWrongApiVersion) {
        text = tr("The bridge is of another version. Update the bridge or Cirrilon.");
    } else if (m_lost) {
        const QString lost = tr("The connection to the simulator is lost.");
        m_parts.view.showStatusAlarm(lost);
        text = lost + QLatin1Char(' ') + whatToStart();
    } else {
        text = tr("No simulator answers.") + QLatin1Char(' ') + whatToStart();
    }
    text += QLatin1Char(' ')
            + (again ? tr("Cirrilon then connects by itself.") : tr("Then press Connect."));
    m_parts.view.showNotice(Notice::Connection, text);
}

void SimulatorLink::clearFaults()
{
    m_noticed = false;
    m_parts.view.showStatusAlarm(QString());
    m_parts.view.clearNotice(Notice::Connection);
    if (std::exchange(m_weatherNoticed, false)) {
        m_parts.view.clearNotice(Notice::Weather);
    }
}

QString SimulatorLink::whatToStart() const
{
    switch (m_parts.settings.interfaceType()) {
    case aviation::interfaceid::kBridge:
        return tr("Start the simulator with its bridge at %1:%2.")
            .arg(m_parts.settings.serverIp())
            .arg(m_parts.settings.serverPort());
    case aviation::interfaceid::kSimConnect:
        return tr("Start the simulator with SimConnect.");
    case aviation::interfaceid::kFsuipc:
        return tr("Start the simulator with FSUIPC.");
    case aviation::interfaceid::kFsuipcSimConnect:
        return tr("Start the simulator with FSUIPC and SimConnect.");
    default:
        return tr("Start the simulator.");
    }
}

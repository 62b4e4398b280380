#include "app/jobs/SimulatorLink.h"

#include "app/base/LogLevel.h"
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
    connect(&m_timerReconnect, &QTimer::timeout, this,
            [this] { m_parts.postJob(Job(connectjob::kConnect, QStringLiteral("Connect"))); });
}

void SimulatorLink::switchByUser()
{
    endReconnecting();
    switchConnection();
}

void SimulatorLink::switchConnection()
{
    if (m_parts.worker.IsConnected()) {
        m_linked = false;
        m_parts.postJob(Job(connectjob::kDisconnect, QStringLiteral("Disconnect")));
        Q_EMIT sigDisconnecting();
    } else {
        m_parts.postJob(Job(connectjob::kConnect, QStringLiteral("Connect")));
    }
    waitForWorker();
    Q_EMIT sigSwitched();
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
    if (m_parts.worker.IsConnected()) {
        m_linked = true;
        endReconnecting();
        Q_EMIT sigConnected();
    } else if (error == simresult::kWrongApiVersion) {
        endReconnecting(); // trying again won't help, and would bring the box again
        m_parts.dialogs.critical(
            QStringLiteral("Cirrilon-Connection Error"),
            QStringLiteral("Not compatible Client-Server API Version!\nCheck the debug log."));
    } else if (m_reconnectDelayMs > 0) {
        scheduleReconnect();
    } else if (m_parts.settings.interfaceType() == aviation::interfaceid::kBridge) {
        logNoServer();
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

void SimulatorLink::takeLoss()
{
    const bool wasLinked = std::exchange(m_linked, false);
    if (m_parts.worker.IsConnected()) {
        switchConnection();
    } else if (wasLinked) {
        Q_EMIT sigLost();
    }
    if (!wasLinked) {
        return; // a connect that failed, or the user has disconnected meanwhile
    }
    if (!m_parts.settings.autoConnect()) {
        m_parts.log(
            QStringLiteral("(Controller) - The connection to the simulator is lost. Press Connect "
                           "when the simulator or its bridge server runs again."),
            loglevel::kWarning);
        return;
    }
    scheduleReconnect();
    m_parts.log(
        QStringLiteral("(Controller) - The connection to the simulator is lost. Cirrilon tries to "
                       "connect again by itself, first in 10 s, then at growing intervals. Press "
                       "Connect to try at once."),
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

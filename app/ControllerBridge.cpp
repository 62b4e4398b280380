#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/cycle/CycleRules.h"
#include "sim/AircraftDatagrams.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "sim/SimResult.h"

#include <utility>

/// The worker has dropped its interface. What is left is to show it and, if the user wants to be
/// connected from the start of the program, to come back by itself.
void Controller::connectionLost()
{
    const bool wasLinked = std::exchange(m_linked, false);
    if (IsConnected()) {
        switchConnection();
    } else if (wasLinked) {
        showDisconnected();
    }
    if (!wasLinked) {
        return; // a connect that failed, or the user has disconnected meanwhile
    }
    if (!m_settings.autoConnect()) {
        log(QStringLiteral("(Controller) - The connection to the simulator is lost. Press Connect "
                           "when the simulator or its bridge server runs again."),
            loglevel::kWarning);
        return;
    }
    scheduleReconnect();
    log(QStringLiteral("(Controller) - The connection to the simulator is lost. Cirrilon tries to "
                       "connect again by itself, first in 10 s, then at growing intervals. Press "
                       "Connect to try at once."),
        loglevel::kWarning);
}

void Controller::scheduleReconnect()
{
    m_reconnectDelayMs = cycle::NextReconnectDelay(m_reconnectDelayMs);
    m_reconnectTimer.start(m_reconnectDelayMs);
}

void Controller::endReconnecting()
{
    m_reconnectDelayMs = 0;
    m_reconnectTimer.stop();
}

void Controller::udpReadReady()
{
    m_datagrams->readOne();
}

void Controller::takeDatagram(const aviation::structs::AircraftData& aircraft, bool isAnswer)
{
    aircraftData = aircraft;
    if (isAnswer) {
        OnJobConnectWorkerFinished(connectjob::kAircraftData,
                                   QStringLiteral("Aircraft data from UDP"), simresult::kNone);
    }
}

#pragma once

#include "app/base/JobPosts.h"
#include "app/base/Reporting.h"

#include <QObject>
#include <QTimer>

class ConnectWorker;
class Settings;
class StopFlag;
class UserDialogs;

/// The connection to the simulator: made and ended by the user's click, and after a loss taken up
/// again by itself, at growing intervals, if the user wants to be connected from the start of the
/// program. Main thread; owned by the controller.
class SimulatorLink : public QObject
{
    Q_OBJECT
public:
    /// What it works with; all of it outlives it.
    struct Parts
    {
        const Settings& settings;
        ConnectWorker& worker;
        UserDialogs& dialogs;
        const StopFlag& stop;
        LogFunction log;
        PostJob postJob; ///< to the simulator's worker
    };
    explicit SimulatorLink(Parts parts, QObject* parent = nullptr);

    /// Connects or disconnects. Deliberately waits on the main thread until the job is done.
    void switchByUser();
    /// The end of a connect job.
    void takeConnectResult(int error);
    /// The worker has dropped its interface. What is left is to show it and to come back.
    void takeLoss();
    /// No further attempt follows by itself.
    void endReconnecting();

Q_SIGNALS:
    void sigConnected();
    /// The disconnect job is posted.
    void sigDisconnecting();
    /// A click has had its effect, or the connection that was lost is given up.
    void sigSwitched();
    /// Lost, and there was nothing to disconnect.
    void sigLost();

private:
    void switchConnection();
    void waitForWorker();
    void scheduleReconnect();
    void logNoServer();

    const Parts m_parts;
    bool m_linked = false; ///< connected, and neither lost nor given up since
    QTimer m_timerReconnect{this};
    int m_reconnectDelayMs = 0; ///< 0 while nothing is tried again
};

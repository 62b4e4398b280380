#pragma once

#include "app/base/JobPosts.h"
#include "app/base/Reporting.h"

#include <QObject>
#include <QString>
#include <QTimer>

class ConnectWorker;
class MainView;
class Settings;
class StopFlag;
class UserDialogs;

/// The connection to the simulator: made and ended by the user's click. It is watched between the
/// jobs, and what is wrong with it stands in the window. If the user wants to be connected from the
/// start of the program, it is tried again by itself until a simulator comes, at growing intervals.
/// Main thread; owned by the controller.
class SimulatorLink : public QObject
{
    Q_OBJECT
public:
    /// What it works with; all of it outlives it.
    struct Parts
    {
        const Settings& settings;
        ConnectWorker& worker;
        MainView& view;
        UserDialogs& dialogs;
        const StopFlag& stop;
        LogFunction log;
        PostJob postJob; ///< to the simulator's worker
        int watchMs = 0; ///< without a job; then the connection is looked at
    };
    explicit SimulatorLink(Parts parts, QObject* parent = nullptr);

    /// Connects or disconnects. Deliberately waits on the main thread until the job is done.
    void switchByUser();
    /// The connect of the program's start, which waits in the same way.
    void connectAtStart();
    /// The end of a connect job.
    void takeConnectResult(int error);
    /// The end of a job that sets weather.
    void takeWeatherSet(int error);
    /// The worker has dropped its interface. What is left is to show it and to come back.
    void takeLoss();
    /// A connection that was lost is up again without the user having asked for it. Holds in
    /// sigConnected.
    bool isReconnect() const { return m_comesBack; }
    /// No further attempt follows by itself.
    void endReconnecting();
    /// While sigConnected is emitted: the connection before this one was lost, and the simulator
    /// may be a new one without weather.
    bool isAfterLoss() const { return m_lost; }

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
    void postConnect();
    void waitForWorker();
    void takeUp(bool byUser);
    void takeFailure(int error, bool byUser);
    void tryAgain();
    void watch();
    void scheduleReconnect();
    void logNoServer();
    void logLoss();
    void showFault(int error);
    void clearFaults();
    QString whatToStart() const;

    const Parts m_parts;
    bool m_linked = false;     ///< connected, and neither lost nor given up since
    bool m_connecting = false; ///< a connect job is under way
    bool m_byUser = false;     ///< and the user waits for it
    bool m_lost = false;       ///< and not given up, until the next connection
    bool m_comesBack = false;  ///< by itself, while sigConnected is emitted
    bool m_noticed = false;    ///< what is wrong was shown; the user may have closed it
    bool m_weatherNoticed = false;
    QTimer m_timerReconnect{this};
    QTimer m_timerWatch{this};
    int m_reconnectDelayMs = 0; ///< 0 while nothing is tried again
};

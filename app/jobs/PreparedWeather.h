#pragma once

#include "app/base/JobPosts.h"
#include "app/base/Reporting.h"
#include "app/cycle/CycleRules.h"

#include <QObject>
#include <QString>

#include <functional>

class ConnectWorker;
class MainView;
class Settings;
class StopFlag;
class WeatherWorker;

/// Hands the weather that the weather worker has prepared to the simulator: as a job for its
/// worker, or as files of an X-Plane on this computer. Main thread, which goes on while written
/// files settle; owned by the controller.
class PreparedWeather : public QObject
{
    Q_OBJECT
public:
    /// What it works with; all of it outlives it.
    struct Parts
    {
        const Settings& settings;
        MainView& view;
        const WeatherWorker& prepared;
        ConnectWorker& simulator;
        const StopFlag& stop; ///< raised: nothing more is posted
        LogFunction log;
        PostJob postJob;                       ///< to the simulator's worker
        std::function<bool()> directWindSends; ///< the low wind of X-Plane can be left to it
        int settleMs = 0; ///< written files rest before the simulator is asked to load them
    };
    explicit PreparedWeather(Parts parts, QObject* parent = nullptr);

    /// A job goes to the weather worker. It ends with jobEnded, after take.
    void jobPosted(int job);
    void jobEnded(int job);
    /// The end of a prepare job of weatherjob, with its name and result. Other jobs are left alone.
    void take(int job, const QString& name, int error);
    /// There is no job that prepares weather for the simulator that is connected.
    void takeNone(const cycle::Simulator& simulator);
    /// The end of a job of connectjob that sets prepared weather.
    void takeSet(int error);
    /// Another connection: what failed with the last one says nothing of it.
    void connected();
    /// The connection is another one, or ends: what is being prepared for it goes nowhere. True if
    /// that is anything.
    bool drop();
    /// Surface visibility of the last X-Plane record, metres; cycle::kNoVisibility without one.
    float baseVisibility() const { return m_xplaneBaseVisibility; }
    /// The simulator has an X-Plane record whose low wind was left to direct wind control, or may
    /// have it: until it takes other weather.
    bool isLowWindLeft() const { return m_lowWindLeft; }

Q_SIGNALS:
    /// The simulator has taken weather, or its files are written.
    void sigSet();
    /// X-Plane's weather files are written or on their way; the global wind follows them.
    void sigFilesSet();
    /// The update has ended without a job that would say so: with the weather set in files, or
    /// without weather, in which case the next update tries again.
    void sigEnded();
    /// The update gave way while it waited for upper-air data; it is still owed.
    void sigGaveWay();

private:
    template <typename Step>
    void afterSettling(const Step& step);
    void post(const Job& job, bool lowWindLeft = false);
    void showUpdate();
    void setFsuipc();
    void setSimConnect();
    void setXPlaneRecord(bool xplane12);
    void sendXPlaneRecord(bool xplane12);
    void setXPlaneFiles();
    bool hasLocalXPlane() const;
    void sendXPlaneFiles();
    void writeXPlaneFiles();
    void setTheme(const QString& name);
    void failToPrepare(int job, int error);
    void fail(const QString& line, int level, const QString& notice);
    void succeed();

    const Parts m_parts;
    QString m_lastFault; ///< the line that was logged last, if nothing was set since
    float m_xplaneBaseVisibility = cycle::kNoVisibility;
    bool m_lowWindLeft = false;
    bool m_lowWindOfPosted = false; ///< left, in the weather that was posted last
    // Jobs end in the order in which they were posted.
    int m_preparing = 0; ///< prepare jobs that were posted and haven't ended
    int m_dropped = 0;   ///< so many of them, the first ones
    int m_settling = 0;
    int m_connection = 0; ///< counted by drop
};

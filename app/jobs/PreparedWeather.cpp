#include "app/jobs/PreparedWeather.h"

#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "app/jobs/XPlaneFiles.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "sim/SimResult.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

/// The layer that leaves the low wind of X-Plane to direct wind control.
XPlaneWindLayer emptyWindLayer()
{
    XPlaneWindLayer layer;
    layer.Speed = -1.0F;
    layer.Marker = -100.0F;
    return layer;
}

int goodEnd(int job)
{
    return job == weatherjob::kThemeFile ? weathererror::kThemeWritten : weathererror::kNone;
}

} // namespace

PreparedWeather::PreparedWeather(Parts parts, QObject* parent)
    : QObject(parent)
    , m_parts(std::move(parts))
{}

void PreparedWeather::jobPosted(int job)
{
    m_preparing += weatherjob::isPrepare(job) ? 1 : 0;
}

void PreparedWeather::jobEnded(int job)
{
    if (weatherjob::isPrepare(job) && m_preparing > 0) {
        --m_preparing;
        m_dropped = std::max(0, m_dropped - 1);
    }
}

bool PreparedWeather::drop()
{
    const bool isAny = m_preparing > m_dropped || m_settling > 0;
    m_dropped = m_preparing;
    m_settling = 0;
    ++m_connection;
    return isAny;
}

void PreparedWeather::take(int job, const QString& name, int error)
{
    if (!weatherjob::isPrepare(job)) {
        return;
    }
    if (m_dropped > 0) {
        m_parts.log(QStringLiteral("(Controller) - The weather isn't set: the connection that it "
                                   "was prepared for has ended."),
                    loglevel::kDebug);
        return;
    }
    if (error == weathererror::kNoGrib) {
        m_parts.log(QStringLiteral("(Controller) - The weather isn't set yet: the wait for "
                                   "upper-air data has given way."),
                    loglevel::kNotification);
        Q_EMIT sigGaveWay();
        return;
    }
    if (error != goodEnd(job)) {
        failToPrepare(job, error);
        return;
    }
    switch (job) {
    case weatherjob::kFsuipcAll:
    case weatherjob::kFsuipcStation:
    case weatherjob::kFsuipcStationAgain:
        setFsuipc();
        break;
    case weatherjob::kSimConnectAll:
    case weatherjob::kSimConnectStation:
    case weatherjob::kSimConnectStationAgain:
        setSimConnect();
        break;
    case weatherjob::kXPlaneRecord:
    case weatherjob::kXPlane12Record:
        setXPlaneRecord(job == weatherjob::kXPlane12Record);
        break;
    case weatherjob::kXPlaneFiles:
        setXPlaneFiles();
        break;
    case weatherjob::kThemeFile:
        setTheme(name);
        break;
    default:
        break;
    }
}

template <typename Step>
void PreparedWeather::afterSettling(const Step& step)
{
    ++m_settling;
    QTimer::singleShot(m_parts.settleMs, this, [this, step, connection = m_connection] {
        if (connection == m_connection && !m_parts.stop.raised()) {
            --m_settling;
            step();
        }
    });
}

void PreparedWeather::failToPrepare(int job, int error)
{
    if (job == weatherjob::kThemeFile) {
        fail(QStringLiteral("(Controller) - The weather theme isn't set. Check the simulator's "
                            "folder in the settings, then choose \"Download WX\"."),
             loglevel::kError,
             tr("The weather theme can't be written. Check the simulator's folder in the "
                "settings."));
    } else {
        fail(QStringLiteral("(Controller) - The weather isn't set: %1 (error %2).")
                 .arg(WeatherWorker::errorText(error))
                 .arg(error),
             loglevel::kError, tr("The weather can't be prepared (error %1).").arg(error));
    }
}

/// The weather clock goes on, and with it all else; the next update tries again. Until one
/// succeeds the same line is a detail of the log.
void PreparedWeather::fail(const QString& line, int level, const QString& notice)
{
    m_parts.log(line, line == m_lastFault ? loglevel::kDebug : level);
    m_lastFault = line;
    m_parts.view.showNotice(Notice::Weather, notice);
    Q_EMIT sigEnded();
}

void PreparedWeather::succeed()
{
    m_lastFault.clear();
    m_parts.view.clearNotice(Notice::Weather);
}

void PreparedWeather::connected()
{
    succeed();
}

void PreparedWeather::takeNone(const cycle::Simulator& simulator)
{
    fail(QStringLiteral("(Controller) - The connected simulator takes no weather from this "
                        "version (interface %1, simulator %2).")
             .arg(simulator.interfaceType)
             .arg(simulator.fsId),
         loglevel::kWarning, tr("The connected simulator takes no weather from this version."));
}

/// The simulator's worker has logged what failed; the end of its job starts the weather clock. That
/// the simulator is gone is said elsewhere.
void PreparedWeather::takeSet(int error)
{
    switch (error) {
    case simresult::kNone:
        m_lowWindLeft = m_lowWindOfPosted;
        succeed();
        Q_EMIT sigSet();
        break;
    case simresult::kTimeout:
    case simresult::kNoInterface:
        break;
    case simresult::kNoWeather:
        m_parts.view.showNotice(Notice::Weather,
                                tr("No weather is set: there is no station in range."));
        break;
    default:
        m_parts.view.showNotice(
            Notice::Weather, tr("The simulator hasn't taken the weather (error %1).").arg(error));
        break;
    }
}

/// Even a job that fails may have brought its record to the simulator.
void PreparedWeather::post(const Job& job, bool lowWindLeft)
{
    m_lowWindOfPosted = lowWindLeft;
    m_lowWindLeft = m_lowWindLeft || lowWindLeft;
    m_parts.postJob(job);
}

void PreparedWeather::showUpdate()
{
    m_parts.view.setSystrayMessage(tr("update weather in FS"));
}

void PreparedWeather::setFsuipc()
{
    m_parts.log(QStringLiteral("(WeatherManager)  Weather FSUIPC created"),
                loglevel::kNotification);
    showUpdate();
    m_parts.simulator.setWeatherRecords(m_parts.prepared.fsuipcRecords());
    post(Job(connectjob::kSetWeather, QStringLiteral("Set FSUIPC Weather")));
}

void PreparedWeather::setSimConnect()
{
    m_parts.log(QStringLiteral("(WeatherManager)  Weather SimConnect created"),
                loglevel::kNotification);
    m_parts.simulator.setMetars(m_parts.prepared.simConnectStrings());
    showUpdate();
    post(Job(connectjob::kSetWeather, QStringLiteral("Set SimConnect Weather")));
}

void PreparedWeather::setXPlaneRecord(bool xplane12)
{
    showUpdate();
    m_parts.log(xplane12 ? QStringLiteral("(WeatherManager)  Weather XPlane12 created")
                         : QStringLiteral("(WeatherManager)  Weather Xplane created"),
                loglevel::kNotification);
    afterSettling([this, xplane12] { sendXPlaneRecord(xplane12); });
}

void PreparedWeather::sendXPlaneRecord(bool xplane12)
{
    XPlaneWeather record = m_parts.prepared.xplaneRecord();
    const bool lowWindLeft = m_parts.directWindSends() && record.Winds.size() > 1;
    if (lowWindLeft) {
        record.Winds[1] = emptyWindLayer();
    }
    m_xplaneBaseVisibility = record.Vis;
    post(xplane12 ? Job(connectjob::kSetXPlane12Weather, record, QStringLiteral("Set XPWeather12"))
                  : Job(connectjob::kSetXPlaneWeather, record, QStringLiteral("Set XPWeather")),
         lowWindLeft);
}

void PreparedWeather::setXPlaneFiles()
{
    showUpdate();
    m_parts.log(QStringLiteral("(WeatherManager)  Weather Xplane created"),
                loglevel::kNotification);
    afterSettling([this] {
        if (hasLocalXPlane()) {
            writeXPlaneFiles();
        } else {
            sendXPlaneFiles();
        }
    });
}

bool PreparedWeather::hasLocalXPlane() const
{
    constexpr int kShortestPath = 3;
    const QString path = m_parts.settings.simPath();
    const QFileInfo folder(path);
    return path.size() >= kShortestPath && folder.isDir() && folder.isWritable();
}

void PreparedWeather::sendXPlaneFiles()
{
    m_parts.simulator.setMetars(m_parts.prepared.xplaneMetarLines());
    m_parts.simulator.setWinds(m_parts.prepared.xplaneWindLines());
    post(Job(connectjob::kSetXPlaneFiles, QStringLiteral("Set XPWeather")));
    m_xplaneBaseVisibility = cycle::kNoVisibility;
    Q_EMIT sigFilesSet();
}

void PreparedWeather::writeXPlaneFiles()
{
    QString folder = m_parts.settings.simPath();
    if (m_parts.simulator.fsVersion() == aviation::fsid::kXPlane12) {
        folder += QStringLiteral("/Output/real weather");
    }
    const XPlaneFilesResult result = saveXPlaneFiles(folder, m_parts.prepared.xplaneMetarLines(),
                                                     m_parts.prepared.xplaneWindLines());
    if (!result.written) {
        fail(QStringLiteral("(WeatherManager)  Weather Xplane: Can not open File: ")
                 + result.failedFile.toHtmlEscaped(),
             loglevel::kError,
             tr("The weather can't be written: %1. Check the simulator's folder in the settings.")
                 .arg(result.failedFile));
        return;
    }
    succeed();
    m_lowWindLeft = false;
    m_xplaneBaseVisibility = cycle::kNoVisibility;
    Q_EMIT sigSet();
    Q_EMIT sigEnded();    // first: a wind that stalls must not hold up the weather clock
    Q_EMIT sigFilesSet(); // the event loop runs on meanwhile
}

void PreparedWeather::setTheme(const QString& name)
{
    showUpdate();
    m_parts.log(QStringLiteral("(WeatherManager)  Weather Model File created"),
                loglevel::kNotification);
    afterSettling(
        [this, name] { post(Job(connectjob::kSetTheme, name + QStringLiteral(".WTB"))); });
}

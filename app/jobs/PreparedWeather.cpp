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

#include <QFileInfo>
#include <QTimer>

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

} // namespace

PreparedWeather::PreparedWeather(Parts parts, QObject* parent)
    : QObject(parent)
    , m_parts(std::move(parts))
{}

void PreparedWeather::take(int job, const QString& name, int error)
{
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
        setTheme(name, error);
        break;
    default:
        return;
    }
    m_lowWindLeft = false; // a record that has settled may leave it again
}

template <typename Step>
void PreparedWeather::afterSettling(const Step& step)
{
    QTimer::singleShot(m_parts.settleMs, this, [this, step] {
        if (!m_parts.stop.raised()) {
            step();
        }
    });
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
    m_parts.postJob(Job(connectjob::kSetWeather, QStringLiteral("Set FSUIPC Weather")));
}

void PreparedWeather::setSimConnect()
{
    m_parts.log(QStringLiteral("(WeatherManager)  Weather SimConnect created"),
                loglevel::kNotification);
    m_parts.simulator.setMetars(m_parts.prepared.simConnectStrings());
    showUpdate();
    m_parts.postJob(Job(connectjob::kSetWeather, QStringLiteral("Set SimConnect Weather")));
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
    m_lowWindLeft = m_parts.directWindSends() && record.Winds.size() > 1;
    if (m_lowWindLeft) {
        record.Winds[1] = emptyWindLayer();
    }
    m_xplaneBaseVisibility = record.Vis;
    m_parts.postJob(
        xplane12 ? Job(connectjob::kSetXPlane12Weather, record, QStringLiteral("Set XPWeather12"))
                 : Job(connectjob::kSetXPlaneWeather, record, QStringLiteral("Set XPWeather")));
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
    m_parts.postJob(Job(connectjob::kSetXPlaneFiles, QStringLiteral("Set XPWeather")));
    Q_EMIT sigFilesSet();
    m_xplaneBaseVisibility = cycle::kNoVisibility;
}

/// Where a file can't be written the weather clock stays stopped until the next download: the next
/// tick would only fail in the same folder again. Of the files only METAR.rwx says so.
void PreparedWeather::writeXPlaneFiles()
{
    QString folder = m_parts.settings.simPath();
    if (m_parts.simulator.fsVersion() == aviation::fsid::kXPlane12) {
        folder += QStringLiteral("/Output/real weather");
    }
    const XPlaneFilesResult result = saveXPlaneFiles(folder, m_parts.prepared.xplaneMetarLines(),
                                                     m_parts.prepared.xplaneWindLines());
    if (result.written) {
        Q_EMIT sigFilesSet(); // the event loop runs on meanwhile
        Q_EMIT sigWeatherSet();
    } else if (result.failedFile.endsWith(QStringLiteral("/METAR.rwx"))) {
        m_parts.log(QStringLiteral("(WeatherManager)  Weather Xplane: Can not open File: ")
                        + result.failedFile.toHtmlEscaped(),
                    loglevel::kError);
    }
}

/// Without a file there is nothing to set. The weather clock stays stopped until the next download:
/// the next tick would only fail in the same folder again.
void PreparedWeather::setTheme(const QString& name, int error)
{
    if (error != weathererror::kThemeWritten) {
        m_parts.log(
            QStringLiteral("(Controller) - The weather theme isn't set. Check the simulator's "
                           "folder in the settings, then choose \"Download WX\"."),
            loglevel::kError);
        return;
    }
    showUpdate();
    m_parts.log(QStringLiteral("(WeatherManager)  Weather Model File created"),
                loglevel::kNotification);
    afterSettling([this, name] {
        m_parts.postJob(Job(connectjob::kSetTheme, name + QStringLiteral(".WTB")));
    });
}

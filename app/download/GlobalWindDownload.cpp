#include "app/download/GlobalWindDownload.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "app/download/DownloadReport.h"
#include "app/download/GlobalWindFile.h"
#include "aviation/support/Clock.h"
#include "sim/ConnectJobs.h"

#include <QSaveFile>
#include <QScopedValueRollback>

#include <utility>

namespace {

QString writeFile(const QString& name, const QByteArray& bytes)
{
    QSaveFile file(name);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? QString() : file.errorString();
}

} // namespace

GlobalWindDownload::GlobalWindDownload(DownloadContext context, Reporting reporting,
                                       PostJob postJob)
    : m_context(std::move(context))
    , m_reporting(std::move(reporting))
    , m_postJob(std::move(postJob))
{}

void GlobalWindDownload::download()
{
    const GlobalWindFile run = GlobalWindFile::at(aviation::Clock::current().NowUtc());
    const QString first = m_context.settings->weatherUrl(QStringLiteral("global_turbulence.grib"));
    if (m_context.stop->raised() || m_underWay) {
        return;
    }
    if (first == m_url) {
        m_reporting.log(QStringLiteral("(ConnectWorker) Activate weather XPlane"),
                        loglevel::kNotification);
        m_postJob(Job(connectjob::kActivateWeather, QStringLiteral("activate weather xplane")));
        return;
    }
    // The server prepares the files of this run under fixed names.
    m_reporting.log(
        QStringLiteral("(Controller) - XPlane global wind: %1 of %2").arg(run.name, run.date),
        loglevel::kDebug);
    const QScopedValueRollback<bool> fetching(m_underWay, true);
    m_url = first;
    QByteArray turbulence;
    QByteArray wind;
    m_failed = !fetch(turbulence, wind) || !send(turbulence, wind);
    if (m_failed) {
        postActivation(); // for the weather itself, which is written already
    }
}

void GlobalWindDownload::tryFailedAgain()
{
    if (m_failed && !m_underWay) {
        m_failed = false;
        m_url.clear();
    }
}

void GlobalWindDownload::postActivation()
{
    if (!m_context.stop->raised()) {
        m_postJob(Job(connectjob::kActivateWeather, QStringLiteral("Activate weather xplane")));
    }
}

bool GlobalWindDownload::fetch(QByteArray& turbulence, QByteArray& wind)
{
    DownloadManager manager(m_context);
    downloadreport::showProgress(manager, m_reporting.progress);
    m_reporting.log(QStringLiteral("(Controller) - Download XPlane Turbulence grib"),
                    loglevel::kNotification);
    int error = manager.getToBytes(m_url, turbulence);
    if (error != 0 && !m_context.stop->raised()) {
        m_reporting.log(QStringLiteral("(Controller) - Download XPlane Turbulence grib Error: %1")
                            .arg(downloadreport::failureText(error, manager.lastErrorText())),
                        loglevel::kError);
    }
    m_reporting.log(QStringLiteral("(Controller) - Download XPlane global wind grib"),
                    loglevel::kNotification);
    error = manager.getToBytes(m_context.settings->weatherUrl(QStringLiteral("global_wind.grib")),
                               wind);
    if (error != 0 && !m_context.stop->raised()) {
        m_reporting.log(QStringLiteral("(Controller) - Download XPlane Global grib Error: %1")
                            .arg(downloadreport::failureText(error, manager.lastErrorText())),
                        loglevel::kError);
    }
    m_reporting.progress(0, 0, QString());
    return error == 0;
}

bool GlobalWindDownload::send(const QByteArray& turbulence, const QByteArray& wind)
{
    constexpr int kShortestPath = 3; // anything shorter: the simulator runs on another machine
    const QString simulator = m_context.settings->simPath();
    if (simulator.size() >= kShortestPath) {
        const bool written = writeWind(simulator, wind);
        if (written) {
            postActivation();
        }
        return written;
    }
    m_postJob(Job(connectjob::kSetGlobalWind, QStringLiteral("Set global wind"), wind));
    if (turbulence.isEmpty()) {
        return false;
    }
    // Job 24 follows the end of this one.
    m_postJob(Job(connectjob::kSetTurbulence, QStringLiteral("Set turbulence wind"), turbulence));
    return true;
}

bool GlobalWindDownload::writeWind(const QString& simulator, const QByteArray& wind)
{
    const QString name = simulator + QStringLiteral("/global_winds.grib");
    const QString error = writeFile(name, wind);
    if (!error.isEmpty()) {
        m_reporting.log(
            QStringLiteral("(Controller) - can not write %1: %2. Check the simulator's folder "
                           "in the settings.")
                .arg(name.toHtmlEscaped(), error.toHtmlEscaped()),
            loglevel::kError);
    }
    return error.isEmpty();
}

#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/ProcessRunner.h"
#include "app/base/Settings.h"
#include "app/base/UrlTemplate.h"
#include "app/download/GlobalWindFile.h"
#include "app/download/ServerAnswer.h"
#include "app/download/Wgrib.h"
#include "aviation/support/Clock.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ScopedLock.h"
#include "sim/ConnectJobs.h"
#include "weather/output/WeatherWrapper.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QSaveFile>
#include <QScopedValueRollback>
#include <QThread>

#include <memory>
#include <utility>

using aviation::ScopedLock;

namespace {

constexpr int kServerExternal = 3; ///< of weather/wxservertype
constexpr int kShortestGribUrl = 6;
constexpr int kUpperAirKind = 3; ///< of WeatherWrapper::initializeWeather
constexpr int kWgribTimeoutMs = 100000;
constexpr int kRawPauseMs = 60000; ///< the same raw address isn't asked more often

QString TwoDecimals(double value)
{
    return QString::fromStdString(aviation::FixedText(value, 2));
}

/// What a failed download is told as.
QString FailureText(int error, const QString& reason)
{
    return QString::number(error) + QStringLiteral(", ") + serveranswer::forLog(reason)
           + QStringLiteral(". ") + serveranswer::advice(error);
}

QString WriteFile(const QString& name, const QByteArray& bytes)
{
    QSaveFile file(name);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return written ? QString() : file.errorString();
}

bool IsWritableFolder(const QString& path)
{
    const QFileInfo folder(path);
    return folder.isDir() && folder.isWritable();
}

} // namespace

int Controller::DownloadGrib(const aviation::Position& position, bool single)
{
    if (m_stop.raised()) {
        return gribdownload::kFailed;
    }
    const bool onMainThread = QThread::currentThread() == thread();
    if (onMainThread && m_gribOnMainThread) {
        log(QStringLiteral("(WeatherManager) - upper-air data are being downloaded already"),
            loglevel::kDebug);
        return gribdownload::kFailed;
    }
    if (onMainThread) {
        m_gribOnMainThread = true;
    }
    const bool raw = m_settings.wxServerType() == kServerExternal
                     && m_settings.urlExternGrib().size() >= kShortestGribUrl;
    const int result = raw ? downloadGribRaw() : downloadGribText(position, single);
    if (onMainThread) {
        m_gribOnMainThread = false;
    }
    if (!m_stop.raised()) {
        Q_EMIT sigProgress(0, 0, QString());
    }
    return result;
}

void Controller::logGribFault(const QString& kind, const QString& text, int level)
{
    bool isRepeated = false;
    {
        const ScopedLock lock(m_gribMutex);
        isRepeated = kind == m_gribFault;
        m_gribFault = kind;
    }
    if (!m_stop.raised()) {
        log(text, isRepeated ? loglevel::kDebug : level);
    }
}

bool Controller::gribFailedBefore()
{
    const ScopedLock lock(m_gribMutex);
    return !m_gribFault.isEmpty();
}

int Controller::downloadGribText(const aviation::Position& position, bool single)
{
    // A worker that waits for upper-air data asks on and on; that is told once.
    const int level = gribFailedBefore() ? loglevel::kDebug : loglevel::kNotification;
    log(QStringLiteral("(WeatherManager) Download Grib, position: %1, %2")
            .arg(TwoDecimals(position.latitude()), TwoDecimals(position.longitude())),
        level);
    Q_EMIT sigProgress(0, 0, tr("Download Grib"));
    DownloadManager manager(downloadContext());
    showDownloadProgress(manager);
    QString text;
    const int error = manager.getToString(m_settings.gribUrl(position, single), text);
    if (error != 0) {
        logGribFault(QString::number(error),
                     QStringLiteral("(WeatherManager) Download Grib - Network Error %1")
                         .arg(FailureText(error, manager.lastErrorText())),
                     loglevel::kError);
        return gribdownload::kFailed;
    }
    log(QStringLiteral("(Controller Weather) Decoding Grib"), level);
    return takeGribText(position, text);
}

int Controller::takeGribText(const aviation::Position& position, const QString& text)
{
    const QString prefix = QStringLiteral("(Controller Weather) - ");
    const QString advice = serveranswer::advice(0);
    if (serveranswer::isErrorText(text)) {
        logGribFault(QStringLiteral("Error"), prefix + serveranswer::forLog(text),
                     loglevel::kError);
        return gribdownload::kFailed;
    }
    const QString fault = serveranswer::fault(text.left(serveranswer::kHeadSize).toUtf8());
    if (!fault.isEmpty()) {
        logGribFault(fault,
                     prefix
                         + QStringLiteral("The upper-air answer can't be used: %1. %2")
                               .arg(serveranswer::forLog(fault), advice),
                     loglevel::kError);
        return gribdownload::kFailed;
    }
    aviation::weather::Grib grib;
    const bool taken = m_weather->initializeWeather(text, kUpperAirKind);
    if (!taken || !m_weather->SearchGrib(position, grib)) {
        logGribFault(QStringLiteral("elsewhere"),
                     prefix
                         + QStringLiteral("The upper-air answer has no data near %1, %2. %3")
                               .arg(TwoDecimals(position.latitude()),
                                    TwoDecimals(position.longitude()), advice),
                     loglevel::kError);
        return gribdownload::kFailed;
    }
    log(QStringLiteral("(WeatherManager) Grib decoded"), loglevel::kNotification);
    const ScopedLock lock(m_gribMutex);
    m_gribFault.clear();
    return gribdownload::kDone;
}

/// The table that comes of it is for others: no part of the program reads it.
int Controller::downloadGribRaw()
{
    const QString address = m_settings.urlExternGrib();
    const std::int64_t now = aviation::Clock::Current().MonotonicMs();
    {
        const ScopedLock lock(m_gribMutex);
        if (address == m_rawGribUrl && m_rawGribAsked && now - *m_rawGribAsked < kRawPauseMs) {
            return gribdownload::kFailed;
        }
        m_rawGribUrl = address;
        m_rawGribAsked = now;
    }
    Q_EMIT sigProgress(0, 0, tr("Download Grib"));
    const QString gribFile = m_settings.tmpFolder() + QStringLiteral("grib.grib");
    DownloadManager manager(downloadContext());
    showDownloadProgress(manager);
    const int error = manager.getToFile(expandUrlTemplate(address), gribFile);
    if (error != 0) {
        logGribFault(QString::number(error),
                     QStringLiteral("(Controller Weather) - Download GribRaw Error: ")
                         + serveranswer::forLog(manager.lastErrorText()) + QStringLiteral(". ")
                         + serveranswer::advice(error),
                     loglevel::kError);
        return gribdownload::kFailed;
    }
    Q_EMIT sigProgress(0, 0, tr("Parse grib file"));
    runWgrib(gribFile);
    return gribdownload::kDone;
}

void Controller::runWgrib(const QString& gribFile)
{
    const QString program = wgrib::findProgram();
    if (program.isEmpty()) {
        logGribFault(QStringLiteral("wgrib2"),
                     QStringLiteral("(Controller) - wgrib2 is needed for the external GRIB address "
                                    "and isn't installed. Put it into the folder %1 or on the "
                                    "PATH, or clear the GRIB address in the settings.")
                         .arg(QDir::currentPath().toHtmlEscaped()),
                     loglevel::kError);
        return;
    }
    const ProcessResult result = runOutsideProgram(
        program, wgrib::arguments(gribFile, m_settings.tmpFolder() + QStringLiteral("grib.csv")));
    if (!result.finished && !m_stop.raised()) {
        log(QStringLiteral("(Controller) - ") + serveranswer::forLog(result.error),
            loglevel::kError);
    }
    logGribFault(QStringLiteral("raw"),
                 QStringLiteral("(Controller) - The table of the external GRIB address isn't used "
                                "for the weather itself. If the weather waits for upper-air data, "
                                "switch them off or clear the GRIB address in the settings."),
                 loglevel::kWarning);
}

/// On the main thread the event loop runs on meanwhile, or the program couldn't be ended.
ProcessResult Controller::runOutsideProgram(const QString& program, const QStringList& arguments)
{
    QMutex mutex;
    ProcessResult result;
    const auto run = [&] {
        ProcessResult ended = m_processes.runUnlessStopped(
            program, arguments, kWgribTimeoutMs,
            [this](const QString& output) {
                log(QStringLiteral("(Controller) - ") + serveranswer::forLog(output),
                    loglevel::kDebug);
            },
            m_stop);
        const ScopedLock lock(mutex);
        result = std::move(ended);
    };
    if (QThread::currentThread() != thread()) {
        run();
        return result;
    }
    const std::unique_ptr<QThread> helper(QThread::create(run));
    QEventLoop loop;
    connect(helper.get(), &QThread::finished, &loop, &QEventLoop::quit);
    helper->start();
    loop.exec();
    if (!helper->isFinished()) { // all loops of the thread were ended
        m_stop.raise();
    }
    helper->wait();
    const ScopedLock lock(mutex);
    return result;
}

void Controller::DownloadXPlaneGlobalWind()
{
    const GlobalWindFile run = GlobalWindFile::At(aviation::Clock::Current().NowUtc());
    const QString first = m_settings.weatherUrl(QStringLiteral("global_turbulence.grib"));
    if (m_stop.raised() || m_fetchingGlobalWind) {
        return;
    }
    if (first == m_globalWindUrl) {
        log(QStringLiteral("(ConnectWorker) Activate weather XPlane"), loglevel::kNotification);
        postConnectJob(
            Job(connectjob::kActivateWeather, QStringLiteral("activate weather xplane")));
        return;
    }
    // The server prepares the files of this run under fixed names.
    log(QStringLiteral("(Controller) - XPlane global wind: %1 of %2").arg(run.name, run.date),
        loglevel::kDebug);
    const QScopedValueRollback<bool> fetching(m_fetchingGlobalWind, true);
    m_globalWindUrl = first;
    QByteArray turbulence;
    QByteArray wind;
    if (fetchGlobalWind(turbulence, wind)) {
        setGlobalWind(turbulence, wind);
    } else {
        m_globalWindUrl.clear(); // so that the next weather asks again
    }
}

bool Controller::fetchGlobalWind(QByteArray& turbulence, QByteArray& wind)
{
    DownloadManager manager(downloadContext());
    showDownloadProgress(manager);
    log(QStringLiteral("(Controller) - Download XPlane Turbulence grib"), loglevel::kNotification);
    int error = manager.getToBytes(m_globalWindUrl, turbulence);
    if (error != 0 && !m_stop.raised()) {
        log(QStringLiteral("(Controller) - Download XPlane Turbulence grib Error: %1")
                .arg(FailureText(error, manager.lastErrorText())),
            loglevel::kError);
    }
    log(QStringLiteral("(Controller) - Download XPlane global wind grib"), loglevel::kNotification);
    error = manager.getToBytes(m_settings.weatherUrl(QStringLiteral("global_wind.grib")), wind);
    if (error != 0 && !m_stop.raised()) {
        log(QStringLiteral("(Controller) - Download XPlane Global grib Error: %1")
                .arg(FailureText(error, manager.lastErrorText())),
            loglevel::kError);
    }
    Q_EMIT sigProgress(0, 0, QString());
    return error == 0;
}

void Controller::setGlobalWind(const QByteArray& turbulence, const QByteArray& wind)
{
    constexpr int kShortestPath = 3; // anything shorter: the simulator runs on another machine
    const Job activate(connectjob::kActivateWeather, QStringLiteral("Activate weather xplane"));
    const QString simulator = m_settings.simPath();
    if (simulator.size() < kShortestPath) {
        postConnectJob(Job(connectjob::kSetGlobalWind, QStringLiteral("Set global wind"), wind));
        // Job 24 follows the end of job 23; without a file for that it follows at once.
        postConnectJob(turbulence.isEmpty()
                           ? activate
                           : Job(connectjob::kSetTurbulence, QStringLiteral("Set turbulence wind"),
                                 turbulence));
        return;
    }
    if (IsWritableFolder(m_settings.flightplanPathXPlane())) {
        const QString name = simulator + QStringLiteral("/global_winds.grib");
        const QString error = WriteFile(name, wind);
        if (!error.isEmpty()) {
            log(QStringLiteral("(Controller) - can not write %1: %2. Check the simulator's folder "
                               "in the settings.")
                    .arg(name.toHtmlEscaped(), error.toHtmlEscaped()),
                loglevel::kError);
        }
    }
    postConnectJob(activate);
}

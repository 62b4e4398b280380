#include "app/download/GribDownload.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/ProcessRunner.h"
#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"
#include "app/base/StopFlag.h"
#include "app/base/UrlTemplate.h"
#include "app/download/DownloadReport.h"
#include "app/download/ServerAnswer.h"
#include "app/download/Wgrib.h"
#include "aviation/support/Clock.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ScopedLock.h"
#include "weather/output/WeatherWrapper.h"

#include <QDir>
#include <QEventLoop>
#include <QScopedValueRollback>
#include <QThread>

#include <memory>
#include <utility>

using aviation::ScopedLock;

namespace {

constexpr int kUpperAirKind = 3; ///< of WeatherWrapper::initializeWeather

QString twoDecimals(double value)
{
    return QString::fromStdString(aviation::fixedText(value, 2));
}

} // namespace

GribDownload::GribDownload(DownloadContext context, StopFlag& stop, ProcessRunner& processes,
                           WeatherWrapper& store, Reporting reporting)
    : m_context(std::move(context))
    , m_stop(stop)
    , m_processes(processes)
    , m_store(store)
    , m_reporting(std::move(reporting))
    , m_mainThread(QThread::currentThread())
    , m_workerStop([this] { return m_stop.raised() || (m_workerGivesWay && m_workerGivesWay()); })
{}

void GribDownload::giveWayWhen(const std::function<bool()>& condition)
{
    m_workerGivesWay = condition;
}

bool GribDownload::onMainThread() const
{
    return QThread::currentThread() == m_mainThread;
}

const StopFlag& GribDownload::stopOfCall() const
{
    return onMainThread() ? m_stop : m_workerStop;
}

DownloadContext GribDownload::contextOfCall() const
{
    DownloadContext context = m_context;
    context.stop = &stopOfCall();
    return context;
}

int GribDownload::DownloadGrib(const aviation::Position& position, bool single)
{
    if (m_stop.raised()) {
        return gribdownload::kFailed;
    }
    if (!onMainThread()) {
        return download(position, single);
    }
    if (m_mainThreadWaits) {
        m_reporting.log(
            QStringLiteral("(WeatherManager) - upper-air data are being downloaded already"),
            loglevel::kDebug);
        return gribdownload::kFailed;
    }
    const QScopedValueRollback<bool> waiting(m_mainThreadWaits, true);
    return download(position, single);
}

int GribDownload::download(const aviation::Position& position, bool single)
{
    constexpr int kShortestUrl = 6;
    const bool raw = m_context.settings->wxServerType() == wxservertype::kExternal
                     && m_context.settings->urlExternGrib().size() >= kShortestUrl;
    const int result = raw ? downloadRaw() : downloadText(position, single);
    if (!m_stop.raised()) {
        m_reporting.progress(0, 0, QString());
    }
    return result;
}

void GribDownload::logFault(const QString& kind, const QString& text, int level)
{
    if (stopOfCall().raised()) {
        return; // what was ended from here hasn't failed
    }
    bool isRepeated = false;
    {
        const ScopedLock lock(m_mutex);
        isRepeated = kind == m_fault;
        m_fault = kind;
    }
    m_reporting.log(text, isRepeated ? loglevel::kDebug : level);
}

bool GribDownload::failedBefore()
{
    const ScopedLock lock(m_mutex);
    return !m_fault.isEmpty();
}

int GribDownload::downloadText(const aviation::Position& position, bool single)
{
    // A worker that waits for upper-air data asks on and on: one notification will do.
    const int level = failedBefore() ? loglevel::kDebug : loglevel::kNotification;
    m_reporting.log(QStringLiteral("(WeatherManager) Download Grib, position: %1, %2")
                        .arg(twoDecimals(position.latitude()), twoDecimals(position.longitude())),
                    level);
    m_reporting.progress(0, 0, tr("Download Grib"));
    DownloadManager manager(contextOfCall());
    downloadreport::showProgress(manager, m_reporting.progress);
    QString text;
    const int error = manager.getToString(m_context.settings->gribUrl(position, single), text);
    if (error != 0) {
        logFault(QString::number(error),
                 QStringLiteral("(WeatherManager) Download Grib - Network Error %1")
                     .arg(downloadreport::failureText(error, manager.lastErrorText())),
                 loglevel::kError);
        return gribdownload::kFailed;
    }
    m_reporting.log(QStringLiteral("(Controller Weather) Decoding Grib"), level);
    return takeText(position, text);
}

int GribDownload::takeText(const aviation::Position& position, const QString& text)
{
    const QString prefix = QStringLiteral("(Controller Weather) - ");
    const QString advice = serveranswer::advice(0);
    if (serveranswer::isErrorText(text)) {
        logFault(QStringLiteral("Error"), prefix + outsidetext::forLog(text.trimmed()),
                 loglevel::kError);
        return gribdownload::kFailed;
    }
    const QString fault = serveranswer::fault(text.left(serveranswer::kHeadSize).toUtf8());
    if (!fault.isEmpty()) {
        logFault(fault,
                 prefix
                     + QStringLiteral("The upper-air answer can't be used: %1. %2")
                           .arg(outsidetext::forLog(fault.trimmed()), advice),
                 loglevel::kError);
        return gribdownload::kFailed;
    }
    aviation::weather::Grib grib;
    const bool taken = m_store.initializeWeather(text, kUpperAirKind);
    if (!taken || !m_store.SearchGrib(position, grib)) {
        logFault(QStringLiteral("elsewhere"),
                 prefix
                     + QStringLiteral("The upper-air answer has no data near %1, %2. %3")
                           .arg(twoDecimals(position.latitude()), twoDecimals(position.longitude()),
                                advice),
                 loglevel::kError);
        return gribdownload::kFailed;
    }
    m_reporting.log(QStringLiteral("(WeatherManager) Grib decoded"), loglevel::kNotification);
    const ScopedLock lock(m_mutex);
    m_fault.clear();
    return gribdownload::kDone;
}

/// The same address isn't asked more than once a minute.
bool GribDownload::mayAskRaw(const QString& address)
{
    constexpr int kPauseMs = 60000;
    const std::int64_t now = aviation::Clock::current().MonotonicMs();
    const ScopedLock lock(m_mutex);
    if (address == m_rawUrl && m_rawAsked && now - *m_rawAsked < kPauseMs) {
        return false;
    }
    m_rawUrl = address;
    m_rawAsked = now;
    return true;
}

/// The table that comes of it is for others: no part of the program reads it.
int GribDownload::downloadRaw()
{
    const QString address = m_context.settings->urlExternGrib();
    if (!mayAskRaw(address)) {
        return gribdownload::kFailed;
    }
    m_reporting.progress(0, 0, tr("Download Grib"));
    const QString gribFile = m_context.settings->tmpFolder() + QStringLiteral("grib.grib");
    DownloadManager manager(contextOfCall());
    downloadreport::showProgress(manager, m_reporting.progress);
    const int error = manager.getToFile(expandUrlTemplate(address), gribFile);
    if (error != 0) {
        logFault(QString::number(error),
                 QStringLiteral("(Controller Weather) - Download GribRaw Error: ")
                     + outsidetext::forLog(manager.lastErrorText().trimmed()) + QStringLiteral(". ")
                     + serveranswer::advice(error),
                 loglevel::kError);
        return gribdownload::kFailed;
    }
    m_reporting.progress(0, 0, tr("Parse grib file"));
    runWgrib(gribFile);
    return gribdownload::kDone;
}

void GribDownload::runWgrib(const QString& gribFile)
{
    const QString program = wgrib::findProgram();
    if (program.isEmpty()) {
        logFault(QStringLiteral("wgrib2"),
                 QStringLiteral("(Controller) - wgrib2 is needed for the external GRIB address "
                                "and isn't installed. Put it into the folder %1 or on the "
                                "PATH, or clear the GRIB address in the settings.")
                     .arg(QDir::currentPath().toHtmlEscaped()),
                 loglevel::kError);
        return;
    }
    const QString table = m_context.settings->tmpFolder() + QStringLiteral("grib.csv");
    const ProcessResult result = runOutsideProgram(program, wgrib::arguments(gribFile, table));
    if (!result.finished && !stopOfCall().raised()) {
        m_reporting.log(QStringLiteral("(Controller) - ")
                            + outsidetext::forLog(result.error.trimmed()),
                        loglevel::kError);
    }
    logFault(QStringLiteral("raw"),
             QStringLiteral("(Controller) - The table of the external GRIB address isn't used "
                            "for the weather itself. If the weather waits for upper-air data, "
                            "switch them off or clear the GRIB address in the settings."),
             loglevel::kWarning);
}

/// On the main thread the event loop runs on meanwhile, or the program couldn't be ended.
ProcessResult GribDownload::runOutsideProgram(const QString& program, const QStringList& arguments)
{
    constexpr int kTimeoutMs = 100000;
    QMutex mutex;
    ProcessResult result;
    const StopFlag& stop = stopOfCall();
    const auto run = [&] {
        ProcessResult ended = m_processes.runUnlessStopped(
            program, arguments, kTimeoutMs,
            [this](const QString& output) {
                m_reporting.log(QStringLiteral("(Controller) - ")
                                    + outsidetext::forLog(output.trimmed()),
                                loglevel::kDebug);
            },
            stop);
        const ScopedLock lock(mutex);
        result = std::move(ended);
    };
    if (!onMainThread()) {
        run();
        return result;
    }
    const std::unique_ptr<QThread> helper(QThread::create(run));
    QEventLoop loop;
    QObject::connect(helper.get(), &QThread::finished, &loop, &QEventLoop::quit);
    helper->start();
    loop.exec();
    if (!helper->isFinished()) { // all loops of the thread were ended
        m_stop.raise();
    }
    helper->wait();
    const ScopedLock lock(mutex);
    return result;
}

#include "app/base/HostProcessRunner.h"

#include "app/base/StopFlag.h"

#include <QDeadlineTimer>
#include <QProcess>

#include <utility>

namespace {

constexpr int kSliceMs = 50;
constexpr int kClosedOutputMs = 10;
constexpr int kKillWaitMs = 500;

void passOutput(QProcess& process, const std::function<void(const QString&)>& output)
{
    const QByteArray chunk = process.readAll();
    if (!chunk.isEmpty() && output) {
        output(QString::fromLocal8Bit(chunk));
    }
}

QString unfinished(const StopFlag& stop, int timeoutMs)
{
    return stop.raised() ? QStringLiteral("stopped, since the program ends")
                         : QStringLiteral("still running after %1 s").arg(timeoutMs / 1000);
}

} // namespace

HostProcessRunner::HostProcessRunner(Opener opener) : m_opener(std::move(opener)) {}

ProcessResult HostProcessRunner::run(const QString& program, const QStringList& arguments,
                                     int timeoutMs,
                                     const std::function<void(const QString&)>& output)
{
    return runUnlessStopped(program, arguments, timeoutMs, output, StopFlag());
}

ProcessResult HostProcessRunner::runUnlessStopped(const QString& program,
                                                  const QStringList& arguments, int timeoutMs,
                                                  const std::function<void(const QString&)>& output,
                                                  const StopFlag& stop)
{
    // Another program takes real time, whatever clock this one was given.
    const QDeadlineTimer deadline(timeoutMs);
    ProcessResult result;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    result.started = process.waitForStarted(timeoutMs);
    while (result.started && process.state() != QProcess::NotRunning && !stop.raised()
           && !deadline.hasExpired())
    {
        if (!process.waitForReadyRead(kSliceMs)) {
            process.waitForFinished(kClosedOutputMs); // it may have closed its output and run on
        }
        passOutput(process, output);
    }
    passOutput(process, output);
    result.finished = result.started && process.state() == QProcess::NotRunning;
    if (!result.started) {
        result.error = process.errorString();
    } else if (!result.finished) {
        result.error = unfinished(stop, timeoutMs);
        process.kill();
        process.waitForFinished(kKillWaitMs);
    } else if (process.exitStatus() == QProcess::CrashExit) {
        result.error = process.errorString();
    }
    result.exitCode = process.exitCode();
    return result;
}

bool HostProcessRunner::startDetached(const QString& program, QString& error)
{
    QProcess process;
    process.setProgram(program);
    const bool started = process.startDetached();
    if (!started) {
        error = process.errorString();
    }
    return started;
}

bool HostProcessRunner::open(const QString& path)
{
    return m_opener && m_opener(path);
}

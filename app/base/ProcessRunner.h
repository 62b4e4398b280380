#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class StopFlag;

/// How an outside program ended.
struct ProcessResult
{
    bool started = false;
    bool finished = false; ///< false: not started, or still running at the end of the wait
    int exitCode = 0;
    QString error; ///< why it didn't start or finish; empty otherwise
};

/// The one way to outside programs and to the host's file browser.
class ProcessRunner
{
public:
    ProcessRunner() = default;
    ProcessRunner(const ProcessRunner&) = delete;
    ProcessRunner& operator=(const ProcessRunner&) = delete;
    virtual ~ProcessRunner() = default;

    /// Runs a program and waits, at most `timeoutMs`; one that runs on is killed. Each chunk of its
    /// output (both channels) goes to `output`. Callable from any thread.
    virtual ProcessResult run(const QString& program, const QStringList& arguments, int timeoutMs,
                              const std::function<void(const QString&)>& output) = 0;
    /// The same; gives way within 100 ms once the flag is raised. A runner that can't be stopped
    /// waits as run does.
    virtual ProcessResult runUnlessStopped(const QString& program, const QStringList& arguments,
                                           int timeoutMs,
                                           const std::function<void(const QString&)>& output,
                                           const StopFlag& /*stop*/)
    {
        return run(program, arguments, timeoutMs, output);
    }
    /// Starts a program that outlives this one. `error` says why it failed.
    virtual bool startDetached(const QString& program, QString& error) = 0;
    /// Opens a folder or file with what the host has for it.
    virtual bool open(const QString& path) = 0;
};
